/** Over-the-air download. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Progress or result of a download; the text is the middleware's and lives for the call. */
typedef void (*a_qortvapi_oad_nfy_fct)(int32_t i4_code, void* pv_tag, const char* ps_info, int32_t i4_progress, uint8_t ui1_flag, int32_t i4_arg);
int32_t a_qortvapi_oad_register_callback(a_qortvapi_oad_nfy_fct pf_callback, void* pv_tag);

#ifdef __cplusplus
}
#endif
