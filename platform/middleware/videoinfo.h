/** Video of the current service. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Format, resolution or state of the video changed. */
typedef void (*a_qortvapi_videoinfo_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4, void* pv_arg5, void* pv_arg6);
int32_t a_qortvapi_videoinfo_reg_common_nfy(a_qortvapi_videoinfo_nfy_fct pf_callback, void* pv_tag);

#ifdef __cplusplus
}
#endif
