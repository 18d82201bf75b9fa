/** Three-dimensional display modes. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The 3D mode changed. */
typedef void (*a_qortvapi_3dmode_nfy_fct)(int32_t i4_callback_type, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_3dmode_register_callback(a_qortvapi_3dmode_nfy_fct pf_callback, void* pv_tag);

#ifdef __cplusplus
}
#endif
