/** The TV application. Part of the TV middleware client library. */
#pragma once

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The state of the TV application changed. */
typedef void (*a_qortvapi_apptv_nfy_fct)(int32_t i4_callback_type, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_apptv_register_callback(a_qortvapi_apptv_nfy_fct pf_callback, void* pv_tag);

/**
 * Callback types: the state of the application or of a window changed. pv_arg1: status; pv_arg2: 0
 * main, 1 sub window.
 */
enum { APPTV_NFY_SYS_STATUS = 1, APPTV_NFY_STARTED = 2, APPTV_NFY_STOPPED = 3, APPTV_NFY_VIDEO_MUTE = 4 };
/**
 * Items of get_capability_ex: the number of windows, the number of tuners. A window is named "main"
 * or "sub"; any other name is refused.
 */
enum { APPTV_CAPABILITY_WINDOWS = 0, APPTV_CAPABILITY_TUNERS = 1 };
typedef uint32_t QORTVAPI_APPTV_SYS_STATUS_T;

int32_t a_qortvapi_apptv_save_timestamp(const char* ps_name);
int32_t a_qortvapi_apptv_set_tv_started(bool b_started);
int32_t a_qortvapi_apptv_unlock_service(const char* ps_window);
int32_t a_qortvapi_apptv_get_matched_channel(int16_t i2_svl_id, bool b_one_part, int32_t i4_major, int32_t i4_minor);
int32_t a_qortvapi_apptv_nav_update_sys_status_by_win(const char* ps_window, QORTVAPI_APPTV_SYS_STATUS_T e_status);
int32_t a_qortvapi_apptv_update_sys_status(QORTVAPI_APPTV_SYS_STATUS_T e_status);
int32_t a_qortvapi_apptv_start_tv(void);
int32_t a_qortvapi_apptv_stop_all(void);
int32_t a_qortvapi_apptv_get_current_channel_svc_text_len(void);
int32_t a_qortvapi_apptv_get_current_channel_svc_text(char* ps_text, int32_t i4_length);
int32_t a_qortvapi_apptv_unblock_svc(const char* ps_window, bool b_unblock);
int32_t a_qortvapi_apptv_swap_tmp_unlock_info(int32_t i4_info);
int32_t a_qortvapi_apptv_set_video_mute(const char* ps_window, bool b_mute);
int32_t a_qortvapi_apptv_get_capability_ex(int32_t i4_item, uint32_t* pui4_capability);
int32_t a_qortvapi_apptv_get_video_mute(const char* ps_window);

#ifdef __cplusplus
}
#endif
