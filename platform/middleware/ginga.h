/** Ginga interactive television. Part of the TV middleware client library. */
#pragma once

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Update types of a_qortvapi_ginga_nfy_fct. pv_arg1 to pv_arg3: 0. */
enum { GINGA_NFY_STARTED = 1, GINGA_NFY_STOPPED = 2 };
/** An application or its state changed. */
typedef void (*a_qortvapi_ginga_nfy_fct)(int32_t i4_update_type, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3);
int32_t a_qortvapi_ginga_register_callback(a_qortvapi_ginga_nfy_fct pf_callback, void* pv_tag);

/** An application asks for a volume change. */
typedef void (*a_qortvapi_ginga_volume_nfy_fct)(int32_t i4_volume_type, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3);
int32_t a_qortvapi_ginga_volume_register_callback(a_qortvapi_ginga_volume_nfy_fct pf_callback, void* pv_tag);

/** The application list was updated. */
typedef void (*a_qortvapi_ginga_update_nfy_fct)(int32_t i4_update_type, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3);
int32_t a_qortvapi_ginga_update_register_callback(a_qortvapi_ginga_update_nfy_fct pf_callback, void* pv_tag);

/*
 * The streams carry no applications: the list is empty and no application can be started. Functions
 * that need Ginga return TV_BUSY while it is stopped.
 */
int32_t a_qortvapi_ginga_startApplication(const char* ps_app_id);
int32_t a_qortvapi_ginga_stopApplication(const char* ps_app_id);
int32_t a_qortvapi_ginga_getApplicationInfo(void);
int32_t a_qortvapi_ginga_startGinga(void);
int32_t a_qortvapi_ginga_stopGinga(void);
int32_t a_qortvapi_ginga_warning_start_cc(bool b_start);
int32_t a_qortvapi_ginga_warning_start_ginga_app(bool b_start);
int32_t a_qortvapi_ginga_getApplicationNum(uint32_t* pui4_count);
int32_t a_qortvapi_ginga_getApplicationInfo_ex(void* pv_records, uint32_t* pui4_count);
int32_t a_qortvapi_ginga_is_enable_screen_mode(bool b_query, uint8_t* pb_enabled);

#ifdef __cplusplus
}
#endif
