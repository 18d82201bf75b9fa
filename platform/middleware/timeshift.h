/** Time-shifted playback. Part of the TV middleware client library. */
#pragma once

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Codes of time shift. */
enum {
    TIMESHIFT_NFY_RECORD_STATUS = 1,   /**< pv_arg1: TIMESHIFT_RECORD_… */
    TIMESHIFT_NFY_PLAY_STATUS = 2,     /**< pv_arg1: speed in hundredths, 0 while paused */
    TIMESHIFT_NFY_END_REACHED = 3,     /**< playback reached the broadcast (pv_arg1 1) or the start of the buffer (0) */
    TIMESHIFT_NFY_DEVICE = 4           /**< pv_arg1: TIMESHIFT_DEVICE_… */
};

/** What get_device_status answers; FULL: the buffer holds what it can, and its start moves. get_registerdevice_schedule: per cent of the registration. */
enum { TIMESHIFT_DEVICE_NONE = 0, TIMESHIFT_DEVICE_READY = 1, TIMESHIFT_DEVICE_FULL = 2 };

/** What get_record_status answers. */
enum { TIMESHIFT_RECORD_STOPPED = 0, TIMESHIFT_RECORD_STARTED = 1 };

/** What get_error_id answers. */
enum { TIMESHIFT_ERROR_NONE = 0, TIMESHIFT_ERROR_NO_DEVICE = 1, TIMESHIFT_ERROR_NO_SIGNAL = 2, TIMESHIFT_ERROR_WRITE = 3 };

/** Flags of stop_ex. KEEP_BUFFER: what was recorded can still be played. CHANNEL_CHANGE: automatic recording, if it is on, begins anew. stop is NORMAL. */
enum { TIMESHIFT_STOP_NORMAL = 0, TIMESHIFT_STOP_KEEP_BUFFER = 1, TIMESHIFT_STOP_CHANNEL_CHANGE = 2 };
typedef uint32_t TIMESHIFT_STOP_FLAG;

/** The time-shift state or position changed. */
typedef void (*a_qortvapi_timeshift_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2);
int32_t a_qortvapi_timeshift_register_callback(a_qortvapi_timeshift_nfy_fct pf_callback, void* pv_tag);

/* Of the channel in the main window; another one there ends the recording. Positions and durations are milliseconds: duration of what the buffer holds, position from its start; current and start position are times since 1970-01-01 00:00 UTC. Nothing recorded: 0, and the time now. TV_BUSY: there is no buffer, or it is recorded already. */
int32_t a_qortvapi_timeshift_get_registerdevice_schedule(void);
int64_t a_qortvapi_timeshift_get_duration(void);
int64_t a_qortvapi_timeshift_get_position(void);
/* ps_path: a folder that can be written; i8_size: bytes of the buffer, from 1000000, each 1000000 a second. Remembered. */
int32_t a_qortvapi_timeshift_registerDevice(const char* ps_path, int64_t i8_size);
int32_t a_qortvapi_timeshift_start(void);
int32_t a_qortvapi_timeshift_stop(void);
int32_t a_qortvapi_timeshift_play(void);
int32_t a_qortvapi_timeshift_pause(void);
/* To so many seconds from the start of the buffer; beyond its end is the broadcast. */
int32_t a_qortvapi_timeshift_seek(int32_t i4_seconds);
/* Hundredths of normal speed, negative backwards, 6400 at most; 0 pauses. At the start of the buffer, and at the broadcast, normal playback goes on. */
int32_t a_qortvapi_timeshift_trickplay(int32_t i4_speed);
int32_t a_qortvapi_timeshift_get_device_status(void);
int32_t a_qortvapi_timeshift_get_error_id(void);
int32_t a_qortvapi_timeshift_get_record_status(void);
int64_t a_qortvapi_timeshift_get_current_position(void);
int64_t a_qortvapi_timeshift_get_start_position(void);
/* Records by itself: at once, on a new channel, and when playback is paused. Remembered. */
int32_t a_qortvapi_timeshift_set_auto_record(bool b_enabled);
/* Whether paused playback goes on when the buffer is full, before it loses what comes next; else it loses it, and stays paused. Remembered. */
int32_t a_qortvapi_timeshift_set_play_before_full(bool b_enabled);
int32_t a_qortvapi_timeshift_stop_ex(TIMESHIFT_STOP_FLAG e_flag);

#ifdef __cplusplus
}
#endif
