/** Warning messages. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A warning is to be shown or removed. */
typedef void (*a_qortvapi_warning_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_warning_register_msg_callback(a_qortvapi_warning_nfy_fct pf_callback, void* pv_tag);

#ifdef __cplusplus
}
#endif
