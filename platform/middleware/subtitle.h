/** Subtitles. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Codes of subtitles. pv_arg1: channel id; pv_arg2: track that plays, from 1, 0 none; pv_arg3: number of tracks. */
enum { SUBTITLE_NFY_TRACKS_CHANGED = 1, SUBTITLE_NFY_TRACK_SELECTED = 2 };
/** What a_qortvapi_subtitle_get_loop writes: the number of tracks, the one that plays, then each track's language, three letters in the lower bytes from the lowest up. */
enum { SUBTITLE_LOOP_COUNT = 0, SUBTITLE_LOOP_CURRENT = 1, SUBTITLE_LOOP_LANGUAGES = 2 };
/** The subtitle tracks or their state changed. */
typedef void (*a_qortvapi_subtitle_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_subtitle_reg_callback(a_qortvapi_subtitle_nfy_fct pf_callback, void* pv_tag);

int32_t a_qortvapi_subtitle_get_loop(int32_t* pi4_values, uint32_t ui4_count);
/* Tracks count from 1; play(0) turns subtitles off. set_next goes from the last one to off, and answers the track. */
int32_t a_qortvapi_subtitle_play(uint8_t ui1_track);
int32_t a_qortvapi_subtitle_set_next(void);

#ifdef __cplusplus
}
#endif
