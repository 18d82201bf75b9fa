/** High-level TV control: start and stop, third-party applications, questions to the applications. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** An event of TV control; the meaning of the arguments depends on the code. */
typedef void (*a_qortvapi_highlevel_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_highlevel_register_callback(a_qortvapi_highlevel_nfy_fct pf_callback, void* pv_tag);


/** Asks the applications a question. The answer goes into `pui4_result` and, if it has data, into `pv_buffer`, which holds `ui4_length` bytes. */
typedef void (*a_qortvapi_highlevel_android_responser_fct)(uint32_t ui4_code, void* pv_tag, uint32_t ui4_attribute, uint32_t* pui4_result, void* pv_buffer, uint32_t ui4_length);
int32_t a_qortvapi_highlevel_register_android_responser(a_qortvapi_highlevel_android_responser_fct pf_responser, void* pv_tag);

#ifdef __cplusplus
}
#endif
