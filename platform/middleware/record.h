/** Recording. Part of the TV middleware client library. */
#pragma once

#include <assert.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Notification codes. pv_arg1: handle of the recording, unless a code says otherwise; pv_arg2
 * depends on the code.
 */
enum {
    RECORD_NFY_STARTED = 1,           /**< pv_arg2: channel id */
    RECORD_NFY_STOPPED = 2,           /**< pv_arg2: RECORD_STOP_… */
    RECORD_NFY_FAILED = 3,            /**< pv_arg2: RECORD_ERROR_… */
    RECORD_NFY_SCHEDULE_CHANGED = 4,  /**< pv_arg1: id; pv_arg2: SCHEDULE_STATE_… */
    RECORD_NFY_EVENT = 5              /**< an application's own event; pv_arg1: event; pv_arg2: argument */
};

/*
 * A start is notified as STARTED or as FAILED. The end of a recording that was started is notified
 * as STOPPED; if an error ended it, as FAILED and then STOPPED.
 */

/** Sources of a recording: the window whose channel is recorded. */
enum { RECORD_SOURCE_MAIN = 0, RECORD_SOURCE_SUB = 1 };

/** Values of record_pvr_get_status. */
enum { RECORD_STATUS_IDLE = 0, RECORD_STATUS_RECORDING = 1, RECORD_STATUS_STOPPED = 2, RECORD_STATUS_FAILED = 3 };

/**
 * Why a recording ended. SCHEDULE: the end of its schedule, or of the length of
 * RECORD_MODE_LIMITED. CLOSED: its handle was closed, or the television was switched off. UNKNOWN:
 * it could not be written, or the television ended before it could store the reason.
 */
enum { RECORD_STOP_UNKNOWN = 0, RECORD_STOP_USER = 1, RECORD_STOP_SCHEDULE = 2, RECORD_STOP_DISK_FULL = 3, RECORD_STOP_NO_SIGNAL = 4, RECORD_STOP_CLOSED = 5 };

/**
 * Values of record_pvr_get_error_id, for the handle's last recording. NO_SIGNAL: nothing plays, or
 * the stream has no packets of the service, or no more of them. SCRAMBLED: scrambled services are
 * not recorded.
 */
enum { RECORD_ERROR_NONE = 0, RECORD_ERROR_NO_DISK = 1, RECORD_ERROR_DISK_FULL = 2, RECORD_ERROR_NO_SIGNAL = 3, RECORD_ERROR_SCRAMBLED = 4, RECORD_ERROR_WRITE = 5 };

/**
 * Modes of record_pvr_set_mode, which is possible also during a recording. RECORD_MODE_LIMITED:
 * i4_value is the length in seconds, from 1. All other arguments are 0.
 */
enum { RECORD_MODE_NORMAL = 0, RECORD_MODE_LIMITED = 1 };

/**
 * Operations of set_schedule_record, which returns 0; the notification SCHEDULE_CHANGED has the id.
 * TV_INVALID_ARGUMENT if the schedule is over already, unless it repeats. While a schedule runs,
 * only title, duration and repetition can be changed; TV_BUSY for other changes.
 */
enum { SCHEDULE_ADD = 0, SCHEDULE_CHANGE = 1 };

/**
 * Types, repetitions and states of schedules. A schedule that starts late records the rest; one
 * that could not be recorded, or was over before the television was switched on, is FAILED. One
 * that repeats (every 24 hours, every seven days) is then WAITING again. A reminder runs without
 * recording. Schedules that are over remain in the list until they are deleted, or the list needs
 * the space.
 */
enum { SCHEDULE_TYPE_RECORD = 0, SCHEDULE_TYPE_REMIND = 1 };
enum { SCHEDULE_REPEAT_ONCE = 0, SCHEDULE_REPEAT_DAILY = 1, SCHEDULE_REPEAT_WEEKLY = 2 };
enum { SCHEDULE_STATE_WAITING = 0, SCHEDULE_STATE_RUNNING = 1, SCHEDULE_STATE_DONE = 2, SCHEDULE_STATE_FAILED = 3, SCHEDULE_STATE_DELETED = 4 };

/** One schedule. */
typedef struct SCHEDULE_RECORD_T {
    uint32_t ui4_id;          /**< chosen by the television, from 1; 0 in a record to be added. The list is in the order of ids */
    uint32_t ui4_channel_id;
    int64_t i8_start_time;    /**< seconds since 1970-01-01 00:00 UTC */
    uint32_t ui4_duration;    /**< seconds, from 1 to a week */
    uint16_t ui2_event_id;    /**< 0 for none */
    uint8_t ui1_type;         /**< SCHEDULE_TYPE_… */
    uint8_t ui1_repeat;       /**< SCHEDULE_REPEAT_… */
    uint8_t ui1_state;        /**< SCHEDULE_STATE_… */
    uint8_t aui1_pad[3];
    char s_title[128];        /**< UTF-8, NUL-terminated; empty: the title in the guide at the start */
    uint8_t aui1_reserved[92];
} SCHEDULE_RECORD_T;

/**
 * What a recording needs. There is one tuner for recordings: two of them conflict if they overlap
 * in time and need different multiplexes, and to start one of another multiplex than the one that
 * is being recorded is TV_BUSY.
 */
typedef struct RECORD_SOURCE_T {
    uint32_t ui4_channel_id;  /**< 0 in pt_other_source: any recording or schedule */
    uint32_t ui4_duration;    /**< seconds; 0: until the recording is stopped */
    int64_t i8_start_time;    /**< seconds since 1970-01-01 00:00 UTC; 0 for now */
    uint8_t aui1_reserved[56];
} RECORD_SOURCE_T;

/** How a disk is used. Aligned to four bytes. */
typedef struct __attribute__((packed, aligned(4))) RECORD_DEV_PARAM_T {
    uint64_t ui8_size;        /**< bytes that recordings may use; 0 for the whole disk */
    uint64_t ui8_timeshift_size;
    uint32_t ui4_flags;
} RECORD_DEV_PARAM_T;

/** The state of a recording changed. */
typedef void (*a_qortvapi_record_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2);
int32_t a_qortvapi_record_pvr_register_callback(a_qortvapi_record_nfy_fct pf_callback, void* pv_tag);

/*
 * Events of recordings: an application's own, notified as RECORD_NFY_EVENT with the first argument.
 */
int32_t a_qortvapi_pvr_set_event(uint32_t ui4_event, uint32_t ui4_argument);
int32_t a_qortvapi_pvr_set_event_extra(uint32_t ui4_event, uint32_t ui4_argument1, uint32_t ui4_argument2, const char* ps_text);
int32_t a_qortvapi_pvr_get_booking_count(void);

/* Files and disk. Sizes are MiB, rounded down. There is one disk, 0: a folder. */
/*
 * pc_name has room for 256 bytes; at most ui4_length of them are written, with the NUL. The name is
 * without folder: before the start the name that was set, later that of the file.
 */
int32_t a_qortvapi_record_pvr_get_recording_file_name(uint32_t ui4_recording, char* pc_name, uint32_t ui4_length);
/*
 * ps_path: the folder of a disk, in which a file marks the disk as registered. check_register_file
 * returns TV_NOT_FOUND if it is not.
 */
int32_t a_qortvapi_record_create_register_file(const char* ps_path);
int32_t a_qortvapi_record_check_register_file(const char* ps_path, bool* pb_registered);
int32_t a_qortvapi_record_pvr_get_error_id(uint32_t ui4_recording);
int32_t a_qortvapi_record_pvr_get_disk_total_size(uint32_t ui4_disk);
int32_t a_qortvapi_record_pvr_get_disk_free_size(uint32_t ui4_disk);
int32_t a_qortvapi_record_pvr_get_recording_file_size(uint32_t ui4_recording);
int32_t a_qortvapi_del_schedule_record(int32_t i4_id);
/* Returns the seconds of the service that are recorded so far. */
int32_t a_qortvapi_get_recording_position(uint32_t ui4_recording);

/*
 * Recordings. Handles are numbers from 1; their number is limited (TV_FULL). TV_BUSY: the handle
 * records already, or does not record.
 */
int32_t a_qortvapi_record_pvr_set_mode(uint32_t ui4_recording, int32_t i4_mode, uint32_t ui4_argument, int32_t i4_value);
int32_t a_qortvapi_record_pvr_get_mode(uint32_t ui4_recording);
/*
 * Writes a file of i4_size MiB (1 to 64) into a folder (empty: that of the disk) and deletes it.
 * Returns MiB per second.
 */
int32_t a_qortvapi_record_hdd_speed_test(const char* ps_path, int32_t i4_size);
/*
 * ps_name: without folder, at most 84 bytes before the ending ".ts", and only characters that a
 * file name may have. If the file exists, a number is added.
 */
int32_t a_qortvapi_record_pvr_set_recording_file_name(uint32_t ui4_recording, const char* ps_name);
int32_t a_qortvapi_record_pvr_open(int32_t i4_source);
int32_t a_qortvapi_record_pvr_close(uint32_t ui4_recording);
int32_t a_qortvapi_record_pvr_start(uint32_t ui4_recording);
int32_t a_qortvapi_record_pvr_stop(uint32_t ui4_recording);
int32_t a_qortvapi_record_pvr_get_status(uint32_t ui4_recording);
int32_t a_qortvapi_record_pvr_get_source_type(uint32_t ui4_recording);
/* Returns the handle that started to record last; TV_NOT_FOUND if none records. */
int32_t a_qortvapi_record_pvr_get_current_handle(void);
/* pc_path has room for ui4_length characters and a NUL. */
int32_t a_qortvapi_record_pvr_get_disk(uint32_t ui4_disk, char* pc_path, uint32_t ui4_length);

/* Schedules: records of 248 bytes. */
int32_t a_qortvapi_set_schedule_record(const SCHEDULE_RECORD_T* pt_record, int32_t i4_operation);
int32_t a_qortvapi_get_schedule_record(int32_t i4_index, SCHEDULE_RECORD_T* pt_record);
int32_t a_qortvapi_record_pvr_chk_src_conflict(const RECORD_SOURCE_T* pt_source, const RECORD_SOURCE_T* pt_other_source);
/*
 * ps_path: a folder that can be written to, at most 160 bytes. Kept over a restart. TV_BUSY while a
 * recording runs.
 */
int32_t a_qortvapi_record_pvr_set_disk(uint32_t ui4_disk, const char* ps_path, const RECORD_DEV_PARAM_T* pt_parameter);
/* All recordings run in the background: b_background has no effect. */
int32_t a_qortvapi_record_pvr_open_ex(int32_t i4_source, bool b_background);
/* ui2_svl_id: the channel's list, or 0. */
int32_t a_qortvapi_record_pvr_select_svc(uint32_t ui4_recording, uint32_t ui4_channel_id, uint16_t ui2_svl_id);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(SCHEDULE_RECORD_T) == 248 && offsetof(SCHEDULE_RECORD_T, s_title) == 28, "schedule record");
static_assert(sizeof(RECORD_SOURCE_T) == 72, "source of a recording");
static_assert(sizeof(RECORD_DEV_PARAM_T) == 20, "disk parameters");
