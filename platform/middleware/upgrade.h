/** Software upgrade. Part of the TV middleware client library. */
#pragma once

#include <assert.h>
#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Delivery types of a firmware. TV_NOT_SUPPORTED for a type that the television does not have; this
 * one has the file system (disk or USB stick) and the internet.
 */
enum { UPGRADE_DELIVERY_FILE_SYS = 0, UPGRADE_DELIVERY_INTERNET = 1, UPGRADE_DELIVERY_BROADCAST = 2 };
/** States of an upgrade. i4_progress of the handler is in per cent. */
enum { UPGRADE_STATE_IDLE = 0, UPGRADE_STATE_DOWNLOADING = 1, UPGRADE_STATE_DOWNLOADED = 2, UPGRADE_STATE_CANCELLED = 3, UPGRADE_STATE_REBOOT_REQUESTED = 4 };
/** Values of query_upgrade_result: the result of the download of a delivery type. */
enum { UPGRADE_RESULT_NONE = 0, UPGRADE_RESULT_RUNNING = 1, UPGRADE_RESULT_DOWNLOADED = 2, UPGRADE_RESULT_CANCELLED = 3 };
/** Progress of an upgrade. */
typedef void (*a_qortvapi_upgrade_nfy_fct)(int32_t i4_type, int32_t i4_state, int32_t i4_progress, void* pv_tag);
int32_t a_qortvapi_upgrade_register_callback(a_qortvapi_upgrade_nfy_fct pf_callback, void* pv_tag);
int32_t a_qortvapi_upgrade_unregister_callback(a_qortvapi_upgrade_nfy_fct pf_callback, void* pv_tag);

typedef uint32_t QORTVAPI_UPGRADE_DLIVRY_TYPE_T;
typedef uint32_t QORTVAPI_UPGRADE_SET_TYPE_T;

/** The firmware that an upgrade would bring. */
typedef struct QORTVAPI_UPGRADE_FW_INFO_T {
    uint32_t ui4_version;
    uint32_t ui4_size;            /**< bytes */
    uint32_t ui4_release_time;    /**< seconds since 1970-01-01 UTC */
    uint32_t ui4_item_count;
    char s_version_text[32];
    char s_model[36];
    char s_description[144];
} QORTVAPI_UPGRADE_FW_INFO_T;

/** One part of a firmware. */
typedef struct QORTVAPI_UPGRADE_ITEM_T {
    uint32_t ui4_index;
    uint32_t ui4_version;
    uint32_t ui4_size;            /**< bytes */
    char s_name[72];
    char s_path[128];
} QORTVAPI_UPGRADE_ITEM_T;

/*
 * Nothing is ever fetched, written or restarted: a download only goes through its states, in half a
 * second. One download at a time, otherwise TV_BUSY. start and trigger download without a URL.
 * check_update returns 1 while nothing is downloaded and 0 afterwards. start_reboot_upgrade
 * requires a download.
 */
int32_t a_qortvapi_upgrade_start(QORTVAPI_UPGRADE_DLIVRY_TYPE_T e_type, bool b_force);
int32_t a_qortvapi_upgrade_trigger(QORTVAPI_UPGRADE_DLIVRY_TYPE_T e_type);
int32_t a_qortvapi_upgrade_get_firmware_info(QORTVAPI_UPGRADE_FW_INFO_T* pt_info);
int32_t a_qortvapi_upgrade_get_item_info(uint32_t ui4_index, QORTVAPI_UPGRADE_ITEM_T* pt_item);
int32_t a_qortvapi_upgrade_start_download_firmware(QORTVAPI_UPGRADE_DLIVRY_TYPE_T e_type, const char* ps_url, const char* ps_path);
int32_t a_qortvapi_upgrade_cancel_download_firmware(QORTVAPI_UPGRADE_DLIVRY_TYPE_T e_type);
int32_t a_qortvapi_upgrade_start_reboot_upgrade(QORTVAPI_UPGRADE_DLIVRY_TYPE_T e_type);
int32_t a_qortvapi_upgrade_query_upgrade_result(QORTVAPI_UPGRADE_DLIVRY_TYPE_T e_type);
int32_t a_qortvapi_upgrade_is_supported(QORTVAPI_UPGRADE_DLIVRY_TYPE_T e_type, uint8_t* pb_supported);
int32_t a_qortvapi_upgrade_check_update(QORTVAPI_UPGRADE_DLIVRY_TYPE_T e_type);
int32_t a_qortvapi_upgrade_set(QORTVAPI_UPGRADE_SET_TYPE_T e_type, const uint32_t* pui4_ids, uint32_t ui4_count, const uint32_t* pui4_values);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(QORTVAPI_UPGRADE_FW_INFO_T) == 228, "upgrade record");
static_assert(sizeof(QORTVAPI_UPGRADE_ITEM_T) == 212, "upgrade record");
