/** Over-the-air download. Part of the TV middleware client library. */
#pragma once

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * States of the download, which are also the codes of the notification; its text names the state.
 * i4_progress: per cent; ui1_flag: 1 for an automatic download; i4_arg: 0.
 */
enum { OAD_STATE_IDLE = 0, OAD_STATE_DETECTING = 1, OAD_STATE_DETECTED = 2, OAD_STATE_NOT_DETECTED = 3, OAD_STATE_DOWNLOADING = 4, OAD_STATE_DOWNLOADED = 5, OAD_STATE_FLASHING = 6, OAD_STATE_FLASHED = 7, OAD_STATE_RESTART_ACCEPTED = 8, OAD_STATE_POSTPONED = 9 };
/** Items of a_qortvapi_oad_get_datainfo. */
enum { OAD_INFO_PACKAGE = 0, OAD_INFO_STATE = 1 };
/** Progress or result of a download; the text is valid during the call. */
typedef void (*a_qortvapi_oad_nfy_fct)(int32_t i4_code, void* pv_tag, const char* ps_info, int32_t i4_progress, uint8_t ui1_flag, int32_t i4_arg);
int32_t a_qortvapi_oad_register_callback(a_qortvapi_oad_nfy_fct pf_callback, void* pv_tag);

/*
 * A detection finds a package if a_qortvapi_set_pkg_pathname has named a file that can be read; the
 * file is not used otherwise. A step that is not possible in the present state returns TV_BUSY.
 * get_power_on_status returns the state.
 */
int32_t a_qortvapi_oad_start_manual_detect(void);
int32_t a_qortvapi_oad_get_scheduleinfo(char* ps_schedule, uint32_t ui4_size);
int32_t a_qortvapi_oad_get_datainfo(int32_t i4_item, char* ps_info, uint32_t ui4_size);
int32_t a_qortvapi_oad_stop_manual_detect(void);
int32_t a_qortvapi_oad_start_download(void);
int32_t a_qortvapi_oad_stop_download(void);
int32_t a_qortvapi_oad_set_auto_download(bool b_enable);
int32_t a_qortvapi_oad_start_flash(void);
int32_t a_qortvapi_oad_accept_restart(void);
int32_t a_qortvapi_oad_remind_me_later(void);
int32_t a_qortvapi_oad_accept_schedule(void);
int32_t a_qortvapi_oad_start_jump_channel(void);
int32_t a_qortvapi_oad_get_power_on_status(void);
int32_t a_qortvapi_set_pkg_pathname(const char* ps_path);
int32_t a_qortvapi_oad_clear_version(void);

#ifdef __cplusplus
}
#endif
