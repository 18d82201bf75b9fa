/** Emergency warning system, announcements. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A warning began, changed or ended. */
typedef void (*a_qortvapi_ewspa_nfy_fct)(int32_t i4_callback_type, void* pv_tag);
int32_t a_qortvapi_ewspa_reg_msg_callback(a_qortvapi_ewspa_nfy_fct pf_callback, void* pv_tag);

#ifdef __cplusplus
}
#endif
