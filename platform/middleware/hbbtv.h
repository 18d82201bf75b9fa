/** HbbTV. Part of the TV middleware client library. */
#pragma once

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A message with `i4_count` integers, which are valid during the call. */
typedef void (*a_qortvapi_hbbtv_msg_nfy_fct)(int32_t i4_code, void* pv_tag, const int32_t* pi4_data, int32_t i4_count);
int32_t a_qortvapi_hbbtv_reg_msg_callback(a_qortvapi_hbbtv_msg_nfy_fct pf_callback, void* pv_tag);

/*
 * Streams are the audio tracks of the main window's service. The default languages, of three
 * letters or none, are those in which a service starts; they are kept over a restart. The type is
 * ignored. No application runs that data could be exchanged with: TV_NOT_SUPPORTED.
 */
int32_t c_hbbtv_stm_set_audio(uint16_t ui2_index);
int32_t c_hbbtv_stm_get_audio(uint16_t* pui2_index);
int32_t c_hbbtv_stm_get_audio_lang(uint16_t ui2_index, char* ps_language);
int32_t c_hbbtv_stm_get_audio_num(uint16_t* pui2_count);
int32_t c_hbbtv_set_default_subtitle_lang(const char* ps_language, int32_t i4_type);
int32_t c_hbbtv_set_default_audio_lang(const char* ps_language);
int32_t c_hbbtv_set_audio_desc(bool b_enable);
int32_t a_qortvapi_hbbtv_exchange_data(uint32_t* pui4_data, uint32_t ui4_words);

#ifdef __cplusplus
}
#endif
