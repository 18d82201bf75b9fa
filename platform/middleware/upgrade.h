/** Software upgrade. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Progress of an upgrade. */
typedef void (*a_qortvapi_upgrade_nfy_fct)(int32_t i4_type, int32_t i4_state, int32_t i4_progress, void* pv_tag);
int32_t a_qortvapi_upgrade_register_callback(a_qortvapi_upgrade_nfy_fct pf_callback, void* pv_tag);
int32_t a_qortvapi_upgrade_unregister_callback(a_qortvapi_upgrade_nfy_fct pf_callback, void* pv_tag);

#ifdef __cplusplus
}
#endif
