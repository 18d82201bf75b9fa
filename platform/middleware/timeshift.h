/** Time-shifted playback. Part of the TV middleware client library. */
#pragma once

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Notification codes. */
enum {
    TIMESHIFT_NFY_RECORD_STATUS = 1,   /**< pv_arg1: TIMESHIFT_RECORD_… */
    TIMESHIFT_NFY_PLAY_STATUS = 2,     /**< pv_arg1: speed in hundredths, 0 while paused */
    TIMESHIFT_NFY_END_REACHED = 3,     /**< playback reached the broadcast (pv_arg1 1) or the start of the buffer (0) */
    TIMESHIFT_NFY_DEVICE = 4           /**< pv_arg1: TIMESHIFT_DEVICE_… */
};

/**
 * Values of get_device_status. FULL: the buffer is full, and its start moves.
 * get_registerdevice_schedule returns the progress of the registration in per cent.
 */
enum { TIMESHIFT_DEVICE_NONE = 0, TIMESHIFT_DEVICE_READY = 1, TIMESHIFT_DEVICE_FULL = 2 };

/** Values of get_record_status. */
enum { TIMESHIFT_RECORD_STOPPED = 0, TIMESHIFT_RECORD_STARTED = 1 };

/** Values of get_error_id. */
enum { TIMESHIFT_ERROR_NONE = 0, TIMESHIFT_ERROR_NO_DEVICE = 1, TIMESHIFT_ERROR_NO_SIGNAL = 2, TIMESHIFT_ERROR_WRITE = 3 };

/**
 * Flags of stop_ex. KEEP_BUFFER: the buffer can still be played. CHANNEL_CHANGE: automatic
 * recording, if it is on, starts again. stop does the same as NORMAL.
 */
enum { TIMESHIFT_STOP_NORMAL = 0, TIMESHIFT_STOP_KEEP_BUFFER = 1, TIMESHIFT_STOP_CHANNEL_CHANGE = 2 };
typedef uint32_t TIMESHIFT_STOP_FLAG;

/** The time-shift state or position changed. */
typedef void (*a_qortvapi_timeshift_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2);
int32_t a_qortvapi_timeshift_register_callback(a_qortvapi_timeshift_nfy_fct pf_callback, void* pv_tag);

/*
 * For the channel in the main window; a change of channel ends the recording. Positions and
 * durations are milliseconds: the duration is that of the buffer, the position counts from its
 * start; current and start position are times since 1970-01-01 00:00 UTC. If nothing is recorded,
 * they are 0 and the present time. TV_BUSY: there is no buffer, or it is being recorded already.
 */
int32_t a_qortvapi_timeshift_get_registerdevice_schedule(void);
int64_t a_qortvapi_timeshift_get_duration(void);
int64_t a_qortvapi_timeshift_get_position(void);
/*
 * ps_path: a folder that can be written to; i8_size: size of the buffer in bytes, from 1000000;
 * 1000000 bytes count as a second. Kept over a restart.
 */
int32_t a_qortvapi_timeshift_registerDevice(const char* ps_path, int64_t i8_size);
int32_t a_qortvapi_timeshift_start(void);
int32_t a_qortvapi_timeshift_stop(void);
int32_t a_qortvapi_timeshift_play(void);
int32_t a_qortvapi_timeshift_pause(void);
/* Seeks to a position in seconds from the start of the buffer; beyond its end is the broadcast. */
int32_t a_qortvapi_timeshift_seek(int32_t i4_seconds);
/*
 * i4_speed: hundredths of normal speed, negative for backwards, at most 6400; 0 pauses. At the
 * start of the buffer, and at the broadcast, playback continues at normal speed.
 */
int32_t a_qortvapi_timeshift_trickplay(int32_t i4_speed);
int32_t a_qortvapi_timeshift_get_device_status(void);
int32_t a_qortvapi_timeshift_get_error_id(void);
int32_t a_qortvapi_timeshift_get_record_status(void);
int64_t a_qortvapi_timeshift_get_current_position(void);
int64_t a_qortvapi_timeshift_get_start_position(void);
/*
 * Automatic recording: starts at once, on a change of channel, and when playback is paused. Kept
 * over a restart.
 */
int32_t a_qortvapi_timeshift_set_auto_record(bool b_enabled);
/*
 * Whether paused playback resumes when the buffer is full, before the next part of it is lost.
 * Otherwise it remains paused, and that part is lost. Kept over a restart.
 */
int32_t a_qortvapi_timeshift_set_play_before_full(bool b_enabled);
int32_t a_qortvapi_timeshift_stop_ex(TIMESHIFT_STOP_FLAG e_flag);

#ifdef __cplusplus
}
#endif
