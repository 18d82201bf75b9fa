/** Wake locks that the middleware asks the system for. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Asks to acquire (`ui1_acquire` non-zero) or release the wake lock of that name, a NUL-terminated
 * text that is valid during the call.
 */
typedef void (*a_qortvapi_wakelock_nfy_fct)(void* pv_tag, uint8_t ui1_acquire, const char* ps_name);
int32_t a_qortvapi_wakelock_reg_callback(a_qortvapi_wakelock_nfy_fct pf_callback, void* pv_tag);

#ifdef __cplusplus
}
#endif
