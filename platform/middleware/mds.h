/** Metadata service. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A metadata message: NUL-terminated, alive for the call. */
typedef void (*a_qortvapi_mds_nfy_fct)(void* pv_tag, const char* pc_nfy_data, uint32_t ui4_data_len);
int32_t a_qortvapi_mds_reg_msg_callback(a_qortvapi_mds_nfy_fct pf_callback, void* pv_tag);

#ifdef __cplusplus
}
#endif
