/** Emergency warning system, announcements. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A warning began, changed or ended. */
typedef void (*a_qortvapi_ewspa_nfy_fct)(int32_t i4_callback_type, void* pv_tag);
int32_t a_qortvapi_ewspa_reg_msg_callback(a_qortvapi_ewspa_nfy_fct pf_callback, void* pv_tag);

/** The number of types of warnings, and the most values that a warning can have. */
enum { EWSPA_TYPE_COUNT = 4, EWSPA_VALUES_MAX = 32 };
/*
 * A type has at most one monitor (TV_BUSY for a second one). The values of an id are kept as long
 * as the monitor exists; values that were never set are 0.
 */
int32_t a_qortvapi_ewspa_set(uint8_t ui1_type, uint32_t ui4_id, int32_t* pi4_values, uint32_t ui4_count);
int32_t a_qortvapi_ewspa_get(uint8_t ui1_type, uint32_t ui4_id, int32_t* pi4_values, uint32_t ui4_count);
int32_t a_qortvapi_ewspa_create_monitor_inst(uint8_t ui1_type);
int32_t a_qortvapi_ewspa_delete_monitor_inst(uint8_t ui1_type);

#ifdef __cplusplus
}
#endif
