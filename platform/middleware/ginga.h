/** Ginga interactive television. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** An application or its state changed. */
typedef void (*a_qortvapi_ginga_nfy_fct)(int32_t i4_update_type, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3);
int32_t a_qortvapi_ginga_register_callback(a_qortvapi_ginga_nfy_fct pf_callback, void* pv_tag);

/** An application asks for a volume change. */
typedef void (*a_qortvapi_ginga_volume_nfy_fct)(int32_t i4_volume_type, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3);
int32_t a_qortvapi_ginga_volume_register_callback(a_qortvapi_ginga_volume_nfy_fct pf_callback, void* pv_tag);

/** The application list was updated. */
typedef void (*a_qortvapi_ginga_update_nfy_fct)(int32_t i4_update_type, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3);
int32_t a_qortvapi_ginga_update_register_callback(a_qortvapi_ginga_update_nfy_fct pf_callback, void* pv_tag);

#ifdef __cplusplus
}
#endif
