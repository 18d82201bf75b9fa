/** Data-file manager: channel logos. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A channel logo arrived or changed. */
typedef void (*a_qortvapi_ch_logo_nfy_fct)(int32_t i4_callback_type, void* pv_tag, int32_t i4_arg1, int32_t i4_arg2, int32_t i4_arg3, int32_t i4_arg4);
int32_t a_qortvapi_ch_logo_reg_callback(a_qortvapi_ch_logo_nfy_fct pf_callback, void* pv_tag);

/* The streams carry no logos: TV_NOT_FOUND. */
int32_t a_qortvapi_load_ch_logo(uint16_t ui2_original_network_id, uint16_t ui2_service_id, uint32_t ui4_frequency, char* ps_path);

#ifdef __cplusplus
}
#endif
