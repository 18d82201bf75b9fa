/** Emergency alert system. Part of the TV middleware client library. */
#pragma once

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Status of the emergency alert system. */
enum { EAS_STATUS_IDLE = 0 };
/** An emergency alert began, changed or ended. */
typedef void (*a_qortvapi_eas_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_eas_reg_callback(a_qortvapi_eas_nfy_fct pf_callback, void* pv_tag);

int32_t a_qortvapi_eas_get_status(int32_t* pi4_status, int32_t* pi4_arg1, int32_t* pi4_arg2, int32_t* pi4_arg3);
int32_t a_qortvapi_eas_set_android_launch_status(bool b_launched);
int32_t a_qortvapi_eas_get_android_launch_status(void);
int32_t a_qortvapi_eas_set_android_exit_eas_no_change_channel_status(bool b_keep_channel);

#ifdef __cplusplus
}
#endif
