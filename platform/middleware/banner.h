/** Channel banner. Part of the TV middleware client library. */
#pragma once

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Items of the banner of the main window. Each has one index, 0. */
enum { BANNER_ITEM_CHANNEL_NUMBER = 1, BANNER_ITEM_CHANNEL_NAME = 2, BANNER_ITEM_PROVIDER = 3, BANNER_ITEM_NETWORK = 4, BANNER_ITEM_AUDIO_LANGUAGE = 5, BANNER_ITEM_LAST = 5 };
/**
 * Notification codes: all items changed. pv_arg1: channel id, 0 if nothing plays; the others are 0.
 */
enum { BANNER_NFY_CHANGED = 1 };
/** An item of the banner changed. */
typedef void (*a_qortvapi_banner_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_banner_register_callback(a_qortvapi_banner_nfy_fct pf_callback, void* pv_tag);

/*
 * An item is visible if it has content. Its id is its number. Contents are UTF-8, cut to the length
 * at the end of a character; lengths count the NUL.
 */
int32_t a_qortvapi_banner_get_item_state(int32_t i4_item, int32_t i4_index, uint8_t* pb_visible);
int32_t a_qortvapi_banner_get_item_id(int32_t i4_item, int32_t i4_index, int32_t* pi4_id);
int32_t a_qortvapi_banner_get_item_content(int32_t i4_item, int32_t i4_index, char* ps_content, uint32_t ui4_length);
int32_t a_qortvapi_banner_get_item_content_len(int32_t i4_item, int32_t i4_index, uint32_t* pui4_length);

#ifdef __cplusplus
}
#endif
