/**
 * Utilities: keys that nobody used, factory diagnosis, native applications. Part of the TV
 * middleware client library.
 */
#pragma once

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A remote-control key that the middleware did not use. */
typedef void (*a_qortvapi_util_nousedkey_nfy_fct)(int32_t i4_keycode, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_util_register_nousedkey_callback(a_qortvapi_util_nousedkey_nfy_fct pf_callback, void* pv_tag);

/** Kinds of a_qortvapi_util_get_sys_version; the text has at most 100 bytes with its NUL. */
enum { SYS_VERSION_SOFTWARE = 0, SYS_VERSION_MIDDLEWARE = 1, SYS_VERSION_MODEL = 2 };
/**
 * a_qortvapi_util_set stores up to UTIL_VALUE_COUNT values of up to UTIL_VALUE_MAX bytes, each
 * under a name of up to UTIL_NAME_MAX bytes and a kind; they are kept over a restart. An empty
 * value removes the stored one. a_qortvapi_util_get writes at most `*pui4_size` bytes of a value
 * and then its whole size there.
 */
enum { UTIL_VALUE_COUNT = 64, UTIL_VALUE_MAX = 4096, UTIL_NAME_MAX = 64 };
/**
 * The size of an entry of the tuner's diagnosis: query_diag writes up to `ui1_entries` names and as
 * many values, each a text of UTIL_DIAG_ENTRY_SIZE bytes.
 */
enum { UTIL_DIAG_ENTRY_SIZE = 32 };
int32_t a_qortvapi_util_set(const char* ps_name, int32_t i4_kind, const void* pv_data, uint64_t ui8_size);
int32_t a_qortvapi_util_get(const char* ps_name, int32_t i4_kind, void* pv_data, uint32_t* pui4_size);
int32_t a_qortvapi_util_get_sys_version(int32_t i4_kind, char* ps_version);
int32_t a_qortvapi_util_tuner_fac_open_diag(bool b_flag, uint8_t* pui1_tuner, uint16_t* pui2_version);
int32_t a_qortvapi_util_tuner_fac_close_diag(bool b_flag);
int32_t a_qortvapi_util_tuner_fac_query_diag(bool b_flag, uint8_t ui1_entries, void* pv_names, void* pv_values);
int32_t a_qortvapi_util_set_android_osd_opacity(uint32_t ui4_opacity);
int32_t a_qortvapi_util_start_native_app(uint8_t ui1_app);
int32_t a_qortvapi_freeze_set_freeze(const char* ps_window, bool b_freeze);
int32_t a_qortvapi_freeze_is_freeze(const char* ps_window);

#ifdef __cplusplus
}
#endif
