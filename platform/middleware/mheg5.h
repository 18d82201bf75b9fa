/** MHEG-5. Part of the TV middleware client library. */
#pragma once

#include <stdbool.h>
#include <stdint.h>

#include "middleware/records.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Callback types of MHEG-5; i4_arg1: 1 enabled, 0 disabled. */
enum { MHEG5_NFY_ENABLED = 1 };
/** The state of the MHEG-5 engine changed. */
typedef void (*a_qortvapi_mheg5_nfy_fct)(int32_t i4_callback_type, void* pv_tag, int32_t i4_arg1, int32_t i4_arg2, int32_t i4_arg3);
int32_t a_qortvapi_mheg5_register_msg_callback(a_qortvapi_mheg5_nfy_fct pf_callback, void* pv_tag);

/**
 * Asks for an HbbTV application to be launched at a location, a NUL-terminated text that is valid
 * during the call.
 */
typedef void (*a_qortvapi_mheg5_launch_hbbtv_fct)(const char* ps_location, void* pv_tag, int32_t i4_arg1);
int32_t a_qortvapi_mheg5_reg_launch_hbbtv_nfy(int32_t i4_index, a_qortvapi_mheg5_launch_hbbtv_fct pf_launch, void* pv_tag);

/**
 * Asks whether a MIME type is supported; the answer (0 or 1) is written to `pb_supported`, which
 * holds the default before.
 */
typedef void (*a_qortvapi_mheg5_is_mime_type_support_fct)(const char* ps_mime_type, uint8_t* pb_supported, void* pv_tag, int32_t i4_arg1);
int32_t a_qortvapi_mheg5_reg_is_mime_type_support_fct(int32_t i4_index, a_qortvapi_mheg5_is_mime_type_support_fct pf_is_support, void* pv_tag);

int32_t a_qortvapi_mheg5_get_current_channel(uint16_t* pui2_svl_id, SVL_REC_T* pt_svl_rec, TSL_REC_T* pt_tsl_rec);
/*
 * No application asks for parental guidance (PFG): its text is empty, and set_pfg_result returns
 * TV_BUSY. set_hbbtv_status and set_mheg5_status only store the status.
 */
int32_t a_qortvapi_mheg5_get_pfg_info_len(uint32_t* pui4_length);
int32_t a_qortvapi_mheg5_get_pfg_info(char* ps_info, uint32_t* pui4_length, uint8_t* pb_show);
int32_t a_qortvapi_mheg5_get_internal_scrn(uint8_t* pb_internal);
int32_t a_qortvapi_mheg5_set_pfg_result(bool b_right);
int32_t a_qortvapi_mheg5_set_hbbtv_status(uint32_t ui4_id, bool b_success);
int32_t a_qortvapi_mheg5_enabled(void);
int32_t a_qortvapi_mheg5_disabled(void);
int32_t a_qortvapi_mheg5_set_mheg5_status(int32_t i4_type, int32_t i4_arg1, int32_t i4_arg2, int32_t i4_arg3);

#ifdef __cplusplus
}
#endif
