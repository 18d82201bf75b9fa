/** Utilities: keys that nobody used, factory diagnosis, native applications. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A remote-control key that the middleware did not use. */
typedef void (*a_qortvapi_util_nousedkey_nfy_fct)(int32_t i4_keycode, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_util_register_nousedkey_callback(a_qortvapi_util_nousedkey_nfy_fct pf_callback, void* pv_tag);

#ifdef __cplusplus
}
#endif
