/** Programme events of ATSC (PSIP). Part of the TV middleware client library. */
#pragma once

#include <assert.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** An event or an event table changed. */
typedef void (*a_qortvapi_event_atsc_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_event_atsc_register_callback(a_qortvapi_event_atsc_nfy_fct pf_callback, void* pv_tag);

/** A programme event. */
typedef struct QORTVAPI_EVENT_ATSC_INFO_T {
    int64_t i8_start_time;        /**< seconds since 1970-01-01 UTC */
    uint32_t ui4_event_id;
    uint32_t ui4_channel_id;
    uint32_t ui4_duration;        /**< seconds */
    uint16_t ui2_source_id;
    uint16_t ui2_etm_location;
    uint8_t ui1_caption;
    uint8_t ui1_blocked;
    uint8_t ui1_rating_region_count;
    uint8_t ui1_audio_count;
    char s_title[300];
} QORTVAPI_EVENT_ATSC_INFO_T;

/** The rating of a programme event as a text. */
typedef struct QORTVAPI_EVENT_ATSC_TEXT_T {
    char s_rating[96];
} QORTVAPI_EVENT_ATSC_TEXT_T;

/** Texts that name a rating. */
typedef struct QORTVAPI_EVENT_ATSC_RATING_MAP_T {
    char s_region[16];
    char s_dimension[16];
    char s_rating[16];
} QORTVAPI_EVENT_ATSC_RATING_MAP_T;

/*
 * The streams are DVB streams without ATSC events: every list is empty (load_events,
 * get_event_number_in_EIT of handle 0), and every single event is TV_NOT_FOUND.
 */
int32_t a_qortvapi_event_atsc_load_events(uint32_t ui4_channel_id, int64_t i8_start_time, uint32_t* pui4_events, uint32_t ui4_count);
int32_t a_qortvapi_event_atsc_get_details_info(uint32_t ui4_event, char* ps_details, uint32_t ui4_size);
int32_t a_qortvapi_event_atsc_freeEvent(uint32_t ui4_event);
int32_t a_qortvapi_event_atsc_check_block(uint32_t ui4_channel_id, uint32_t ui4_event);
int32_t a_qortvapi_event_atsc_load_events_by_EIT(uint32_t ui4_channel_id, uint16_t ui2_eit, uint32_t* pui4_event_list);
int32_t a_qortvapi_event_atsc_get_event_number_in_EIT(uint32_t ui4_event_list, uint32_t* pui4_count);
int32_t a_qortvapi_event_atsc_get_detail_info_by_index(uint32_t ui4_event_list, uint16_t ui2_index, char* ps_details, uint32_t ui4_length);
int32_t a_qortvapi_event_atsc_check_EIT_status(uint32_t ui4_channel_id, uint32_t* pui4_group_status, uint8_t* pui1_groups, uint32_t* pui4_event_list);
int32_t a_qortvapi_event_atsc_getEvent_detail_len_by_index(uint32_t ui4_event_list, uint16_t ui2_index, uint32_t* pui4_length);
int32_t a_qortvapi_event_atsc_getEvent_general(uint32_t ui4_event, QORTVAPI_EVENT_ATSC_INFO_T* pt_info, QORTVAPI_EVENT_ATSC_TEXT_T* pt_text);
int32_t a_qortvapi_event_atsc_getEvent_general_by_index(uint32_t ui4_event_list, uint16_t ui2_index, QORTVAPI_EVENT_ATSC_INFO_T* pt_info, QORTVAPI_EVENT_ATSC_TEXT_T* pt_text);
int32_t a_qortvapi_event_atsc_get_rating_map_by_index(uint32_t ui4_event_list, uint16_t ui2_index, QORTVAPI_EVENT_ATSC_RATING_MAP_T* pt_rating_map);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(QORTVAPI_EVENT_ATSC_INFO_T) == 328, "event_atsc record");
static_assert(offsetof(QORTVAPI_EVENT_ATSC_INFO_T, s_title) == 28, "event_atsc record");
static_assert(sizeof(QORTVAPI_EVENT_ATSC_TEXT_T) == 96, "event_atsc record");
static_assert(sizeof(QORTVAPI_EVENT_ATSC_RATING_MAP_T) == 48, "event_atsc record");
