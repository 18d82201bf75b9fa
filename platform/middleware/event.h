/** Programme events (guide). Part of the TV middleware client library. */
#pragma once

#include <assert.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Notification codes: events were added, changed or removed. pv_arg1: channel id, or 0 for all;
 * pv_arg2: EVENT_UPDATE_…
 */
enum { EVENT_NFY_UPDATED = 1 };
enum { EVENT_UPDATE_PRESENT_FOLLOWING = 1 << 0, EVENT_UPDATE_SCHEDULE = 1 << 1 };

/** One event: get_general_info. Texts are UTF-8, NUL-terminated. */
typedef struct EVENT_GENERAL_INFO_T {
    uint32_t ui4_channel_id;
    uint16_t ui2_event_id;
    uint8_t ui1_running_status;   /**< as in the event information table, by the clock: 4 running, 1 not running */
    uint8_t ui1_free_ca_mode;     /**< 1 when scrambled */
    int64_t i8_start_time;        /**< seconds since 1970-01-01 00:00 UTC */
    uint32_t ui4_duration;        /**< seconds */
    uint8_t ui1_content;          /**< content descriptor: both nibbles of the first genre; 0 when there is none */
    uint8_t ui1_minimum_age;      /**< the highest of its ratings; 0 when not rated */
    uint8_t ui1_has_details;      /**< 1 when there are extended details */
    uint8_t ui1_table_version;
    char s_language[4];           /**< ISO 639-2 of the texts */
    char s_title[256];
    char s_text[256];             /**< the start of the details */
    uint8_t aui1_reserved[244];
} EVENT_GENERAL_INFO_T;

/** One entry of get_rating_list. */
typedef struct EVENT_RATING_T {
    char s_country[4];            /**< ISO 3166, three letters */
    uint8_t ui1_minimum_age;
    uint8_t aui1_reserved[3];
} EVENT_RATING_T;

/** One entry of get_content_identifier. */
typedef struct EVENT_CONTENT_IDENTIFIER_T {
    uint8_t ui1_type;             /**< as in the content identifier descriptor */
    char s_text[63];
} EVENT_CONTENT_IDENTIFIER_T;

/** One entry of get_audio_comp_info. */
typedef struct EVENT_AUDIO_COMPONENT_T {
    uint8_t ui1_stream_content;   /**< as in the component descriptor */
    uint8_t ui1_component_type;
    uint8_t ui1_component_tag;
    char s_language[4];
    char s_text[57];
} EVENT_AUDIO_COMPONENT_T;

/** Three texts that name a rating. */
typedef struct RATING_MAP_T {
    char s_region[65];
    char s_dimension[33];
    char s_rating[256];
} RATING_MAP_T;

/** What queries consider. A field of 0 means everything. */
typedef struct QORTVAPI_EVENT_QUERY_PARAMETER_T {
    uint32_t ui4_sources;         /**< EVENT_UPDATE_… */
    uint32_t ui4_days;            /**< from now */
    uint32_t ui4_language;        /**< three letters of ISO 639-2, the first in the highest of the lower 24 bits */
    uint32_t ui4_options;
} QORTVAPI_EVENT_QUERY_PARAMETER_T;

/** Bits of QORTVAPI_QUERY_FILTER_INFORMATION_T::ui2_mask: the fields that count. */
enum { EVENT_FILTER_RUNNING = 1 << 0, EVENT_FILTER_TIME = 1 << 1, EVENT_FILTER_GENRES = 1 << 2, EVENT_FILTER_MAXIMUM_AGE = 1 << 3, EVENT_FILTER_DURATION = 1 << 4 };

/** A filter for events. */
typedef struct QORTVAPI_QUERY_FILTER_INFORMATION_T {
    uint16_t ui2_mask;            /**< EVENT_FILTER_… */
    uint32_t ui4_minimum_duration;/**< seconds */
    int64_t i8_start_time __attribute__((aligned(8)));
    int64_t i8_end_time;
    uint8_t ui1_running_status;
    uint8_t ui1_genre_count;
    uint8_t aui1_genres[8];       /**< first nibbles of content descriptors */
    uint8_t ui1_maximum_age;
} QORTVAPI_QUERY_FILTER_INFORMATION_T;

/** Events of the guide were added, changed or removed. */
typedef void (*a_qortvapi_event_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_event_register_callback(a_qortvapi_event_nfy_fct pf_callback, void* pv_tag);

/** The length of an active window that is given by its start alone. */
enum { EVENT_ACTIVE_WINDOW_SECONDS = 10800 };

/*
 * The active window: the channels that a guide shows (at most 1024, which must exist), and the span
 * of time. Its list is TV_NOT_FOUND if there is no window.
 */
int32_t a_qortvapi_event_setCurrentActiveWindow(const uint32_t* pui4_channel_ids, uint16_t ui2_count, int64_t i8_time);
int32_t a_qortvapi_event_setCurrentActiveWindow_Ex(const uint32_t* pui4_channel_ids, uint16_t ui2_count, int64_t i8_start_time, int64_t i8_end_time);
int32_t a_qortvapi_event_clear_active_win(void);
/*
 * pui2_count: in, the size of the array; out, the number of events written, the first ones if not
 * all fit. An event counts if it is on at any time from the start to before the end. Events are in
 * the order of their start.
 */
int32_t a_qortvapi_event_query_event_id_by_range(uint32_t ui4_channel_id, int64_t i8_start_time, int64_t i8_end_time, uint16_t* pui2_count, uint16_t* pui2_event_ids);

/* Properties of an event. */
/*
 * Texts are UTF-8, cut so that a NUL remains at the end; lists have whole records only. The rest of
 * a buffer of up to 64 KiB is filled with zeros. Details are the short text, which may be empty;
 * extended details are the items and the long text; guidance is the highest age rating and its
 * countries; the group is the identifier of the series. TV_NOT_FOUND if the event has none of the
 * last three.
 */
int32_t a_qortvapi_event_get_details_info(uint32_t ui4_channel_id, uint32_t ui4_event_id, uint8_t* pui1_details, uint32_t ui4_size);
int32_t a_qortvapi_event_get_guidance_info(uint32_t ui4_channel_id, uint32_t ui4_event_id, uint8_t* pui1_guidance, uint32_t ui4_size);
int32_t a_qortvapi_event_get_details_extend_info(uint32_t ui4_channel_id, uint32_t ui4_event_id, uint8_t* pui1_details, uint32_t ui4_size);
/*
 * Returns 1 if the rating settings (rating.h) block the event, otherwise 0, also if it is unknown.
 * By default only a DVB age setting other than 0 blocks.
 */
int32_t a_qortvapi_event_check_block(uint32_t ui4_channel_id, uint32_t ui4_event_id);
int32_t a_qortvapi_event_get_active_win_channel_num(uint16_t* pui2_count);
int32_t a_qortvapi_event_get_active_win_list(uint32_t* pui4_channel_ids, uint16_t ui2_count, int64_t* pi8_start_time, int64_t* pi8_end_time);
int32_t a_qortvapi_event_get_pf_event_id(uint32_t ui4_channel_id, bool b_following, uint16_t* pui2_event_id);
int32_t a_qortvapi_event_get_group_info(uint32_t ui4_channel_id, uint32_t ui4_event_id, uint8_t* pui1_group, uint32_t ui4_size);
/*
 * Writes the country, "DVB" and "age N" of the highest rating; TV_NOT_FOUND if the event is not
 * rated.
 */
int32_t a_qortvapi_event_get_rating_map(uint32_t ui4_channel_id, uint32_t ui4_event_id, RATING_MAP_T* pt_rating_map);

/* Queries. */
int32_t a_qortvapi_event_set_query_parameter(const QORTVAPI_EVENT_QUERY_PARAMETER_T* pt_parameter);
/*
 * pui2_count as for query_event_id_by_range. pui4_values: the start time of each event, low 32
 * bits.
 */
int32_t a_qortvapi_event_query_event_id_by_filter(uint32_t ui4_channel_id, const QORTVAPI_QUERY_FILTER_INFORMATION_T* pt_filter, uint16_t* pui2_count, uint16_t* pui2_event_ids, uint32_t* pui4_values);
int32_t a_qortvapi_event_get_general_info(uint32_t ui4_channel_id, uint32_t ui4_event_id, EVENT_GENERAL_INFO_T* pt_info);
int32_t a_qortvapi_event_get_rating_list(uint32_t ui4_channel_id, uint32_t ui4_event_id, uint8_t* pui1_ratings, uint32_t ui4_size);
int32_t a_qortvapi_event_get_content_identifier(uint32_t ui4_channel_id, uint32_t ui4_event_id, uint8_t* pui1_identifiers, uint32_t ui4_size);
int32_t a_qortvapi_event_get_audio_comp_info(uint32_t ui4_channel_id, uint32_t ui4_event_id, uint8_t* pui1_components, uint32_t ui4_size);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(EVENT_GENERAL_INFO_T) == 784 && offsetof(EVENT_GENERAL_INFO_T, i8_start_time) == 8 && offsetof(EVENT_GENERAL_INFO_T, s_title) == 28, "event record");
static_assert(sizeof(EVENT_RATING_T) == 8, "event record");
static_assert(sizeof(EVENT_CONTENT_IDENTIFIER_T) == 64, "event record");
static_assert(sizeof(EVENT_AUDIO_COMPONENT_T) == 64, "event record");
static_assert(sizeof(RATING_MAP_T) == 354 && offsetof(RATING_MAP_T, s_dimension) == 65 && offsetof(RATING_MAP_T, s_rating) == 98, "rating map");
static_assert(sizeof(QORTVAPI_EVENT_QUERY_PARAMETER_T) == 16, "event query");
static_assert(offsetof(QORTVAPI_QUERY_FILTER_INFORMATION_T, ui4_minimum_duration) == 4 && offsetof(QORTVAPI_QUERY_FILTER_INFORMATION_T, i8_start_time) == 8 && offsetof(QORTVAPI_QUERY_FILTER_INFORMATION_T, i8_end_time) == 16 && offsetof(QORTVAPI_QUERY_FILTER_INFORMATION_T, ui1_genre_count) == 25 && offsetof(QORTVAPI_QUERY_FILTER_INFORMATION_T, aui1_genres) == 26 && offsetof(QORTVAPI_QUERY_FILTER_INFORMATION_T, ui1_maximum_age) == 34 && sizeof(QORTVAPI_QUERY_FILTER_INFORMATION_T) == 40, "event filter");
