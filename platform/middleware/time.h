/** Date, time, sleep timer. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Codes of date and time. A second passed; pv_arg1: seconds since 1970-01-01 00:00 UTC, low 32 bits. Slow handlers get fewer. */
enum { TIME_NFY_SECOND = 1 };

/** The date or time changed. */
typedef void (*a_qortvapi_time_dt_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1);
int32_t a_qortvapi_time_register_dt_event_callback(a_qortvapi_time_dt_nfy_fct pf_callback, void* pv_tag);

/** The sleep timer is about to end, or ended. */
typedef void (*a_qortvapi_time_sleep_timer_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1);
int32_t a_qortvapi_time_register_sleep_timer_callback(a_qortvapi_time_sleep_timer_nfy_fct pf_callback, void* pv_tag);

/** The source that the clock follows changed. */
typedef void (*a_qortvapi_time_sync_source_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1);
int32_t a_qortvapi_time_register_sync_source_callback(a_qortvapi_time_sync_source_nfy_fct pf_callback, void* pv_tag);

#ifdef __cplusplus
}
#endif
