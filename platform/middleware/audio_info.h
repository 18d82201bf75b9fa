/** Audio of the current service. Part of the TV middleware client library. */
#pragma once

#include <assert.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Notification codes. pv_arg1: channel id; pv_arg2: index of the current track; pv_arg3: number of
 * tracks.
 */
enum { AUDIO_INFO_NFY_TRACKS_CHANGED = 1, AUDIO_INFO_NFY_TRACK_SELECTED = 2 };
/** Ids of values. TRACK and COUNT can only be read. */
enum { AUDIO_INFO_VALUE_TRACK = 1, AUDIO_INFO_VALUE_COUNT = 2, AUDIO_INFO_VALUE_DESCRIPTION_ON = 3 };
/** Audio types of tracks, as in the language descriptor. */
enum { AUDIO_TYPE_UNDEFINED = 0, AUDIO_TYPE_CLEAN = 1, AUDIO_TYPE_HEARING_IMPAIRED = 2, AUDIO_TYPE_VISUALLY_IMPAIRED = 3 };
/** Audio tracks, language or format changed. */
typedef void (*a_qortvapi_audio_info_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_audio_info_register_callback(a_qortvapi_audio_info_nfy_fct pf_callback, void* pv_tag);

/** One audio track. */
typedef struct QORTVAPI_AUDIO_RECORD_T {
    uint32_t ui4_index;
    uint32_t ui4_encoding;
    uint32_t ui4_channels;
    uint32_t ui4_sample_rate;     /**< Hz */
    uint32_t ui4_bit_rate;        /**< bits per second */
    uint16_t ui2_pid;
    uint8_t ui1_audio_type;       /**< as in the language descriptor: 3 for the visually impaired */
    uint8_t ui1_mix_type;
    char s_language[4];
    char s_name[16];
} QORTVAPI_AUDIO_RECORD_T;

/** A text of the audio presentation (APD), NUL-terminated. */
typedef struct QORTVAPI_AUDIO_APD_TEXT_T {
    char s_text[257];
} QORTVAPI_AUDIO_APD_TEXT_T;

/*
 * Tracks count from 0 in the order of the program map. get_available_record writes at most
 * `*pui4_count` records and then the number written there; without an array it writes the number of
 * all tracks there. The audio of external inputs is not known: the inputsource functions, and also
 * set_data and get_data, return TV_NOT_SUPPORTED. get_audio_apd_text writes the name of a track
 * and, as value, its audio type. get_current_ad_info reads the track for the visually impaired.
 */
int32_t a_qortvapi_audio_info_get_current_lanuage(char* ps_language, uint32_t ui4_length);
int32_t a_qortvapi_audio_info_set_next_lanuage(void);
int32_t a_qortvapi_audio_info_get_available_record(QORTVAPI_AUDIO_RECORD_T* pt_records, uint32_t* pui4_count);
int32_t a_qortvapi_get_current_audio_info(QORTVAPI_AUDIO_RECORD_T* pt_audio_info);
int32_t a_qortvapi_get_audio_apd_text(uint8_t ui1_index, QORTVAPI_AUDIO_APD_TEXT_T* pt_text, int32_t* pi4_value);
int32_t a_qortvapi_get_current_ad_info(QORTVAPI_AUDIO_RECORD_T* pt_audio_info);
int32_t a_qortvapi_select_audio(uint32_t ui4_index);
int32_t a_qortvapi_select_main_sub_audio(uint32_t ui4_main_index, uint32_t ui4_sub_index);
int32_t a_qortvapi_select_default_audio(const char* ps_window);
int32_t a_qortvapi_audio_info_get_inputsource_available_record(QORTVAPI_AUDIO_RECORD_T* pt_records, uint32_t* pui4_count);
int32_t a_qortvapi_get_inputsource_current_audio_info(QORTVAPI_AUDIO_RECORD_T* pt_audio_info);
int32_t a_qortvapi_audio_info_set_value(uint32_t ui4_id, uint32_t ui4_value);
int32_t a_qortvapi_audio_info_get_value(uint32_t ui4_id, uint32_t* pui4_value);
int32_t a_qortvapi_audio_info_set_data(uint32_t ui4_id, const void* pv_data, uint32_t ui4_size);
int32_t a_qortvapi_audio_info_get_data(uint32_t ui4_id, void* pv_data, uint32_t ui4_size);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(QORTVAPI_AUDIO_RECORD_T) == 44, "audio_info record");
static_assert(sizeof(QORTVAPI_AUDIO_APD_TEXT_T) == 257, "audio_info record");
