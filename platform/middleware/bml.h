/** BML data broadcasting. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** States of BML. */
enum { BML_STATE_STOPPED = 0 };
/** A message with `i4_count` integers, which are valid during the call. */
typedef void (*a_qortvapi_bml_msg_nfy_fct)(int32_t i4_code, void* pv_tag, const int32_t* pi4_data, int32_t i4_count);
int32_t a_qortvapi_bml_reg_msg_callback(a_qortvapi_bml_msg_nfy_fct pf_callback, void* pv_tag);

int32_t a_qortvapi_bml_get_current_state(void);

#ifdef __cplusplus
}
#endif
