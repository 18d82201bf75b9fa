/** Date, time, sleep timer. Part of the TV middleware client library. */
#pragma once

#include <assert.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Codes of date and time. SECOND: a second passed. pv_arg1: seconds since 1970-01-01 00:00 UTC, low
 * 32 bits. A slow handler is called less often.
 */
enum { TIME_NFY_SECOND = 1 };

/** Codes of the sleep timer. pv_arg1: remaining seconds. */
enum { SLEEP_TIMER_NFY_SET = 1, SLEEP_TIMER_NFY_MINUTE_LEFT = 2, SLEEP_TIMER_NFY_ENDED = 3 };
/** The longest sleep timer, in minutes. */
enum { SLEEP_TIMER_MOST_MINUTES = 240 };

/**
 * Returned by conversions to seconds if there is no such date or time of day. It is not a result
 * code, since the seconds before 1970 are negative.
 */
#define TIME_NO_SUCH_TIME INT64_MIN

/** Codes of the source of the time. pv_arg1: TIME_SYNC_SOURCE_… */
enum { SYNC_SOURCE_NFY_CHANGED = 1 };

/** Sources of the time, which the clock follows. */
enum { TIME_SYNC_SOURCE_BROADCAST = 0, TIME_SYNC_SOURCE_SYSTEM = 1, TIME_SYNC_SOURCE_USER = 2 };

/** Conversions of time_convert. */
enum { TIME_CONVERT_UTC_TO_LOCAL = 0, TIME_CONVERT_LOCAL_TO_UTC = 1 };

/** Date and time of day. */
typedef struct DTG_T {
    uint16_t ui2_year;
    uint8_t ui1_month;        /**< 1 to 12 */
    uint8_t ui1_day;          /**< 1 to 31 */
    uint8_t ui1_day_of_week;  /**< 0 Sunday to 6 Saturday */
    uint8_t ui1_hour;
    uint8_t ui1_minute;
    uint8_t ui1_second;
    uint8_t b_gmt;            /**< 1 for UTC, 0 for local time */
    uint8_t b_dst;            /**< 1 if it includes summer time */
} DTG_T;

/** The last time and time offset that were broadcast. Aligned to four bytes. */
typedef struct __attribute__((packed, aligned(4))) DT_BRDCST_STATUS_T {
    uint8_t b_tdt_received;   /**< a time table was received */
    uint8_t b_tot_received;   /**< a time offset table was received */
    uint8_t aui1_pad[2];
    int64_t i8_utc;           /**< the last time received, seconds */
    int64_t i8_next_change;   /**< the time at which the offset changes, seconds; 0 for never */
    int32_t i4_offset;        /**< local time minus UTC, seconds */
    int32_t i4_next_offset;   /**< offset after the change, seconds */
} DT_BRDCST_STATUS_T;

/** The date or time changed. */
typedef void (*a_qortvapi_time_dt_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1);
int32_t a_qortvapi_time_register_dt_event_callback(a_qortvapi_time_dt_nfy_fct pf_callback, void* pv_tag);

/** The sleep timer is about to end, or ended. */
typedef void (*a_qortvapi_time_sleep_timer_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1);
int32_t a_qortvapi_time_register_sleep_timer_callback(a_qortvapi_time_sleep_timer_nfy_fct pf_callback, void* pv_tag);

/** The source that the clock follows changed. */
typedef void (*a_qortvapi_time_sync_source_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1);
int32_t a_qortvapi_time_register_sync_source_callback(a_qortvapi_time_sync_source_nfy_fct pf_callback, void* pv_tag);

/*
 * Clock and broadcast. pui2_source: the TIME_SYNC_SOURCE_… from which the time comes at present. If
 * the broadcast is the source but carries no time, this is the system, and the broadcast's time is
 * TV_NOT_FOUND. time_convert depends on the conversion, not on b_gmt; b_dst of a local time selects
 * one of the two moments if a change of the offset makes it occur twice. The time can be set while
 * the source is TIME_SYNC_SOURCE_USER, otherwise TV_BUSY.
 */
int64_t a_qortvapi_time_get_utc_time(uint16_t* pui2_source);
uint32_t a_qortvapi_utc_sec_to_dtg(int64_t i8_seconds, DTG_T* pt_date_time);
int64_t a_qortvapi_time_get_broadcast_time_ex(DTG_T* pt_date_time);
uint32_t a_qortvapi_time_convert(uint16_t ui2_conversion, const DTG_T* pt_date_time, DTG_T* pt_converted);
uint32_t a_qortvapi_time_get_brdcst_raw_data(DT_BRDCST_STATUS_T* pt_status);
int32_t a_qortvapi_time_set_utc_time(int64_t i8_seconds);
int32_t a_qortvapi_time_is_time_editable(void);

/*
 * Time zone and offset, in seconds east of Greenwich, up to fifteen hours. The zone is without
 * summer time; the offset is the present difference between local time and UTC. To set the zone
 * also sets the offset. Neither can be set while the source is the broadcast: TV_BUSY. dtg_to_sec
 * converts the fields as they are, whether they are UTC or local time. update_local_time takes
 * "YYYY-MM-DD" and "HH:MM:SS".
 */
int64_t a_qortvapi_time_get_time_zone(void);
int32_t a_qortvapi_time_set_time_zone(int64_t i8_seconds);
int32_t a_qortvapi_time_is_time_zone_editable(void);
int64_t a_qortvapi_time_get_time_offset(void);
int32_t a_qortvapi_time_set_time_offset(int64_t i8_seconds);
int32_t a_qortvapi_time_is_time_offset_editable(void);
int32_t a_qortvapi_time_has_received_tot(void);
int32_t a_qortvapi_time_convert_millis_to_local_time(int64_t i8_milliseconds, DTG_T* pt_date_time);
int64_t a_qortvapi_dtg_to_sec(const DTG_T* pt_date_time);
int32_t a_qortvapi_time_convert_local_time_to_millis(const DTG_T* pt_date_time, int64_t* pi8_milliseconds);
int32_t a_qortvapi_time_get_sync_source(uint32_t* pui4_source);
int32_t a_qortvapi_time_set_sync_source(uint32_t ui4_source);
int32_t a_qortvapi_time_update_local_time(const char* ps_date, const char* ps_time);

/*
 * Sleep timer: the minutes that were set, 0 for none; the remaining time in seconds.
 * get_sleep_timer_reverse returns the step of a menu: the smallest of 0, 10, 20, 30, 60, 90, 120,
 * 180 and 240 minutes that is not less than the remaining time.
 */
int32_t a_qortvapi_time_get_sleep_timer(void);
int32_t a_qortvapi_time_get_sleep_timer_reverse(void);
int32_t a_qortvapi_time_set_sleep_timer(int32_t i4_minutes);
int32_t a_qortvapi_time_get_sleep_timer_remaining_time(uint32_t* pui4_seconds);

/*
 * The date-and-time library. pui2_status: as pui2_source above; pi4_milliseconds: of the second, 0
 * to 999. conv_utc_local converts in the direction that b_gmt of its input demands. The Modified
 * Julian Date of mjd_bcd has sixteen bits: 1858-11-17 to 2038-04-22.
 */
int32_t c_dt_utc_sec_to_loc_dtg(int64_t i8_seconds, DTG_T* pt_date_time);
int64_t c_dt_get_utc(uint16_t* pui2_status, int32_t* pi4_milliseconds);
int32_t c_dt_conv_utc_local(const DTG_T* pt_date_time, DTG_T* pt_converted);
int32_t c_dt_mjd_to_dtg(uint32_t ui4_mjd, DTG_T* pt_date_time);
int64_t c_dt_dtg_to_sec(const DTG_T* pt_date_time);
int32_t c_dt_dtg_to_mjd_bcd(const DTG_T* pt_date_time, uint16_t* pui2_mjd, uint16_t* pui2_hours_minutes, uint8_t* pui1_seconds);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(DTG_T) == 10 && offsetof(DTG_T, b_gmt) == 8, "date and time");
static_assert(sizeof(DT_BRDCST_STATUS_T) == 28 && offsetof(DT_BRDCST_STATUS_T, i8_utc) == 4 && offsetof(DT_BRDCST_STATUS_T, i8_next_change) == 12 && offsetof(DT_BRDCST_STATUS_T, i4_offset) == 20, "broadcast time status");
