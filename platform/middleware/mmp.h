/** The browser of recordings. Part of the TV middleware client library. */
#pragma once

#include <assert.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** One recording. Texts are UTF-8, NUL-terminated. */
typedef struct PVR_BROWSER_ITEM_T {
    uint32_t ui4_channel_id;
    int32_t i4_channel_major;
    int32_t i4_channel_minor;
    uint32_t ui4_duration;      /**< seconds */
    int64_t i8_start_time;      /**< seconds since 1970-01-01 00:00 UTC */
    uint64_t ui8_size;          /**< bytes */
    int32_t i4_stop_reason;     /**< RECORD_STOP_… */
    int32_t i4_first_rating;    /**< minimum age; 0 when not rated */
    int32_t i4_retention;       /**< days that it is kept; 0 for ever */
    uint8_t ui1_recording;      /**< 1 while it is being recorded */
    uint8_t aui1_pad[3];
    char s_path[257];
    char s_channel_name[129];
    char s_program_name[257];
    char s_date[16];            /**< local, "2026-11-21" */
    char s_time[16];            /**< local, "20:15:00" */
    char s_week_day[6];         /**< "Sat" */
    uint8_t aui1_reserved[103];
} PVR_BROWSER_ITEM_T;

/** The recording that is being made, otherwise the last one; TV_NOT_FOUND if there is none. */
typedef struct PVR_RECORDING_FILE_INFO_T {
    uint64_t ui8_size;          /**< bytes */
    uint32_t ui4_duration;      /**< seconds */
    uint32_t ui4_channel_id;
    char s_path[257];
    char s_program_name[247];
} PVR_RECORDING_FILE_INFO_T;

/*
 * The recordings in the folder of the disk, in the order of their start. An index remains valid
 * until a recording is added, deleted or renamed. A file that the television did not record has its
 * modification time as start and its name as program; all else is 0 or empty. Minor numbers are 0.
 * recording_file_num and recording_file_name (without folder) are for the recordings that are being
 * made; to delete one of these is TV_BUSY. The buffers for texts by path, and for paths and names,
 * have room for 257 bytes; those for date and time by index for 16, for the week day by index for
 * 6.
 */
int32_t a_qortvapi_mmp_get_pvr_browser_channelid_by_path(const char* ps_path, int32_t* pi4_channel_id);
int32_t a_qortvapi_mmp_get_pvr_browser_channelname_by_path(const char* ps_path, char* pc_name);
int32_t a_qortvapi_mmp_get_pvr_browser_duration_by_path(const char* ps_path, uint32_t* pui4_duration);
int32_t a_qortvapi_mmp_get_pvr_browser_stop_reason_by_path(const char* ps_path, uint32_t* pui4_reason);
int32_t a_qortvapi_mmp_get_pvr_browser_programname_by_path(const char* ps_path, char* pc_name);
int32_t a_qortvapi_mmp_get_pvr_browser_start_time_by_path(const char* ps_path, int32_t* pi4_start_time);
int32_t a_qortvapi_mmp_get_pvr_browser_item_path_by_index(int32_t i4_index, char* pc_path);
int32_t a_qortvapi_mmp_get_pvr_browser_channelmajornumber_by_index(int32_t i4_index, int32_t* pi4_number);
int32_t a_qortvapi_mmp_get_pvr_browser_channelminornumber_by_index(int32_t i4_index, int32_t* pi4_number);
int32_t a_qortvapi_mmp_get_pvr_browser_channelname_by_index(int32_t i4_index, char* pc_name);
int32_t a_qortvapi_mmp_get_pvr_browser_duration_by_index(int32_t i4_index, int32_t* pi4_duration);
int32_t a_qortvapi_mmp_get_pvr_browser_stop_reason_by_index(int32_t i4_index, int32_t* pi4_reason);
int32_t a_qortvapi_mmp_get_pvr_browser_start_time_by_index(int32_t i4_index, int32_t* pi4_start_time);
int32_t a_qortvapi_mmp_get_pvr_browser_programname_by_index(int32_t i4_index, char* pc_name);
int32_t a_qortvapi_mmp_get_pvr_browser_date_by_index(int32_t i4_index, char* pc_date);
int32_t a_qortvapi_mmp_get_pvr_browser_time_by_index(int32_t i4_index, char* pc_time);
int32_t a_qortvapi_mmp_get_pvr_browser_channelid_by_index(int32_t i4_index, int32_t* pi4_channel_id);
int32_t a_qortvapi_mmp_get_pvr_browser_week_by_index(int32_t i4_index, char* pc_week_day);
int32_t a_qortvapi_mmp_get_pvr_browser_recording_file_num(uint32_t* pui4_count);
int32_t a_qortvapi_mmp_get_pvr_browser_recording_file_name(int32_t i4_index, char* pc_name);
int32_t a_qortvapi_mmp_get_pvr_browser_item_by_path(const char* ps_path, PVR_BROWSER_ITEM_T* pt_item);
int32_t a_qortvapi_mmp_get_pvr_browser_item_by_index(int32_t i4_index, PVR_BROWSER_ITEM_T* pt_item);
int32_t a_qortvapi_mmp_get_pvr_browser_item_count(uint16_t* pui2_count);
int32_t a_qortvapi_mmp_get_pvr_browser_recording_file_info(PVR_RECORDING_FILE_INFO_T* pt_info);
int32_t a_qortvapi_mmp_pvr_browser_delete_file_by_index(uint32_t ui4_index);
int32_t a_qortvapi_mmp_get_pvr_browser_channelmajornumber_by_path(const char* ps_path, int32_t* pi4_number);
int32_t a_qortvapi_mmp_get_pvr_browser_channelminornumber_by_path(const char* ps_path, int32_t* pi4_number);
int32_t a_qortvapi_mmp_get_pvr_browser_date_by_path(const char* ps_path, char* pc_date);
int32_t a_qortvapi_mmp_get_pvr_browser_week_by_path(const char* ps_path, char* pc_week_day);
int32_t a_qortvapi_mmp_get_pvr_browser_time_by_path(const char* ps_path, char* pc_time);
int32_t a_qortvapi_mmp_get_pvr_browser_first_rating_by_index(int32_t i4_index, int32_t* pi4_rating);
int32_t a_qortvapi_mmp_get_pvr_browser_first_rating_by_path(const char* ps_path, int32_t* pi4_rating);
int32_t a_qortvapi_mmp_get_pvr_browser_retention_by_index(int32_t i4_index, int32_t* pi4_retention);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(PVR_BROWSER_ITEM_T) == 832 && offsetof(PVR_BROWSER_ITEM_T, s_path) == 48, "recording");
static_assert(sizeof(PVR_RECORDING_FILE_INFO_T) == 520, "recording file");
