/** Text to speech. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A text to speak, NUL-terminated and valid during the call. */
typedef void (*a_qortvapi_tts_nfy_fct)(void* pv_tag, const char* pc_nfy_data, uint32_t ui4_data_len);
int32_t a_qortvapi_tts_reg_msg_callback(a_qortvapi_tts_nfy_fct pf_callback, void* pv_tag);

#ifdef __cplusplus
}
#endif
