/** MHEG-5. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The state of the MHEG-5 engine changed. */
typedef void (*a_qortvapi_mheg5_nfy_fct)(int32_t i4_callback_type, void* pv_tag, int32_t i4_arg1, int32_t i4_arg2, int32_t i4_arg3);
int32_t a_qortvapi_mheg5_register_msg_callback(a_qortvapi_mheg5_nfy_fct pf_callback, void* pv_tag);


/** Asks for an HbbTV application to be launched at a location, a NUL-terminated text that lives for the call. */
typedef void (*a_qortvapi_mheg5_launch_hbbtv_fct)(const char* ps_location, void* pv_tag, int32_t i4_arg1);
int32_t a_qortvapi_mheg5_reg_launch_hbbtv_nfy(int32_t i4_index, a_qortvapi_mheg5_launch_hbbtv_fct pf_launch, void* pv_tag);

/** Asks whether a MIME type is supported; the answer (0 or 1) goes into `pb_supported`, which holds the default. */
typedef void (*a_qortvapi_mheg5_is_mime_type_support_fct)(const char* ps_mime_type, uint8_t* pb_supported, void* pv_tag, int32_t i4_arg1);
int32_t a_qortvapi_mheg5_reg_is_mime_type_support_fct(int32_t i4_index, a_qortvapi_mheg5_is_mime_type_support_fct pf_is_support, void* pv_tag);

#ifdef __cplusplus
}
#endif
