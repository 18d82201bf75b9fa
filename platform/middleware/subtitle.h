/** Subtitles. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Notification codes. pv_arg1: channel id; pv_arg2: current track, from 1, 0 if none; pv_arg3:
 * number of tracks.
 */
enum { SUBTITLE_NFY_TRACKS_CHANGED = 1, SUBTITLE_NFY_TRACK_SELECTED = 2 };
/**
 * Indexes of the values of a_qortvapi_subtitle_get_loop: the number of tracks, the current track,
 * then the language of each track, three letters in the lower three bytes, the first letter in the
 * lowest.
 */
enum { SUBTITLE_LOOP_COUNT = 0, SUBTITLE_LOOP_CURRENT = 1, SUBTITLE_LOOP_LANGUAGES = 2 };
/** The subtitle tracks or their state changed. */
typedef void (*a_qortvapi_subtitle_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_subtitle_reg_callback(a_qortvapi_subtitle_nfy_fct pf_callback, void* pv_tag);

int32_t a_qortvapi_subtitle_get_loop(int32_t* pi4_values, uint32_t ui4_count);
/*
 * Tracks count from 1; play(0) turns subtitles off. set_next goes on from the last track to off,
 * and returns the track.
 */
int32_t a_qortvapi_subtitle_play(uint8_t ui1_track);
int32_t a_qortvapi_subtitle_set_next(void);

#ifdef __cplusplus
}
#endif
