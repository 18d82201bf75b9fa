/** HTML agent. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A message with `i4_count` integers, which are valid during the call. */
typedef void (*a_qortvapi_html_agent_nfy_fct)(int32_t i4_code, void* pv_tag, const int32_t* pi4_data, int32_t i4_count);
int32_t a_qortvapi_html_agent_reg_callback(a_qortvapi_html_agent_nfy_fct pf_callback, void* pv_tag);

/* There is no HTML agent: TV_NOT_SUPPORTED, with the data unchanged. */
int32_t a_qortvapi_html_agent_exchange_data(uint32_t* pui4_data, uint32_t ui4_words);

#ifdef __cplusplus
}
#endif
