/** Recording. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The state of a recording changed. */
typedef void (*a_qortvapi_record_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2);
int32_t a_qortvapi_record_pvr_register_callback(a_qortvapi_record_nfy_fct pf_callback, void* pv_tag);

#ifdef __cplusplus
}
#endif
