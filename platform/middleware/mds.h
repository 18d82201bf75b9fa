/** Metadata service. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A metadata message, NUL-terminated and valid during the call. */
typedef void (*a_qortvapi_mds_nfy_fct)(void* pv_tag, const char* pc_nfy_data, uint32_t ui4_data_len);
int32_t a_qortvapi_mds_reg_msg_callback(a_qortvapi_mds_nfy_fct pf_callback, void* pv_tag);

/* There is no metadata service: TV_NOT_SUPPORTED. */
int32_t a_qortvapi_mds_fvpMtdtOperator(const char* ps_message);
int32_t a_qortvapi_mds_getValue(const char* ps_message, int32_t i4_item, char* ps_value);

#ifdef __cplusplus
}
#endif
