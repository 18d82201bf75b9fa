/** Channel scan. Part of the TV middleware client library. */
#pragma once

#include <assert.h>
#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Notification codes. Each scan that was started sends STARTED first, PROGRESS after each
 * multiplex, and at its end one of COMPLETED, CANCELLED and FAILED, when the next scan can be
 * started already.
 */
enum {
    SCAN_NFY_STARTED = 1,   /**< pv_arg1: medium, or 0 for all; pv_arg2: multiplexes to search */
    SCAN_NFY_PROGRESS = 2,  /**< pv_arg1: per cent, 100 only after the last multiplex; pv_arg2: television services so far; pv_arg3: radio services so far; pv_arg4: frequency in kHz, 0 if nothing of the medium was found */
    SCAN_NFY_COMPLETED = 3, /**< the lists have changed; pv_arg1: services found; pv_arg2: television; pv_arg3: radio; pv_arg4: multiplexes */
    SCAN_NFY_CANCELLED = 4, /**< the lists have not changed; pv_arg1: per cent */
    SCAN_NFY_FAILED = 5     /**< the lists have not changed; pv_arg1: the result code, as 32 bits */
};

/**
 * Types of scan. A full scan removes the services that are no longer broadcast. With `clear` it
 * also discards the changes that viewers and applications made to the medium's channels: names,
 * numbers, visibility, option bits, deletions, favourites; record and channel ids do not change. An
 * update adds and refreshes services: those that are no longer broadcast remain in the lists,
 * without streams, until the streams are loaded again, and `clear` is ignored. The services of a
 * file that exists but cannot be read do not change in either type.
 */
enum { SCAN_TYPE_FULL = 0, SCAN_TYPE_UPDATE = 1 };

/**
 * Commands of the exchange arrays. An array has the command, its argument if there is one, then
 * room for the answer.
 */
enum {
    SCAN_EXCHANGE_MULTIPLEX_COUNT = 0,     /**< [0] becomes [0, multiplexes in the list]; DVB */
    SCAN_EXCHANGE_SERVICES = 1,            /**< [1, index] becomes [1, index, television services, radio services, all services] of the multiplex; DVB */
    SCAN_EXCHANGE_FREQUENCY = 2,           /**< [2, index] becomes [2, index, frequency in kHz] of the multiplex; DVB */
    SCAN_EXCHANGE_PROGRESS = 3,            /**< [3] becomes [3, 1 while a scan runs, per cent, television services, radio services] of that scan, else of the last one; DVB */
    SCAN_EXCHANGE_PARAMETERS = 4,          /**< [4] becomes [4, medium, kind of scan, fields of the record...] as set; ATSC and ISDB */
    SCAN_EXCHANGE_ANALOGUE_PARAMETERS = 5  /**< the same of NTSC; ATSC */
};

/** Market regions: where the television was sold. */
enum { MARKET_REGION_US = 0, MARKET_REGION_EU = 1, MARKET_REGION_CN = 2, MARKET_REGION_SA = 3 };

/** Parameters of an ATSC scan. */
typedef struct AP_SB_ATSC_SCAN_DATA_T {
    uint32_t ui4_first_channel;
    uint32_t ui4_last_channel;
    uint32_t ui4_modulation;
    uint32_t ui4_options;
} AP_SB_ATSC_SCAN_DATA_T;

/** Parameters of an ISDB scan. */
typedef struct AP_SB_ISDB_SCAN_DATA_T {
    uint32_t ui4_first_channel;
    uint32_t ui4_last_channel;
    uint32_t ui4_options;
} AP_SB_ISDB_SCAN_DATA_T;

/** Parameters of an NTSC scan. */
typedef struct AP_SB_NTSC_SCAN_DATA_T {
    uint32_t ui4_first_channel;
    uint32_t ui4_last_channel;
} AP_SB_NTSC_SCAN_DATA_T;

/** Scan progress, results or the end of a scan. */
typedef void (*a_qortvapi_scan_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_scan_reg_callback(a_qortvapi_scan_nfy_fct pf_callback, void* pv_tag);

/* Control. */
/*
 * Tunes the main window to its channel. If there is none, or `first` is set, tunes to the first
 * visible channel of the medium scanned last, otherwise of any medium.
 */
int32_t a_qortvapi_scan_select_crnt_or_first_channel(bool b_first);
/* Returns 1 or 0. */
int32_t a_qortvapi_is_scan_active(void);
/*
 * i4_medium: BRDCST_MEDIUM_…, 0 for all. Returns at once. TV_BUSY while a scan runs, TV_NOT_FOUND
 * without a folder of streams.
 */
int32_t a_qortvapi_start_scan(int32_t i4_medium, int32_t i4_scan_type, bool b_clear);
/* Returns at once. TV_NOT_FOUND while no scan runs, TV_BUSY once the lists are being changed. */
int32_t a_qortvapi_cancel_scan(void);
/* Returns MARKET_REGION_…. */
int32_t a_qortvapi_get_market_region(void);

/*
 * Parameters of the next scan. This television receives DVB only: the parameters are stored, and
 * can be read through the exchange arrays.
 */
int32_t a_qortvapi_set_atsc_scan_param(int32_t i4_medium, int32_t i4_scan_type, const AP_SB_ATSC_SCAN_DATA_T* pt_data);
int32_t a_qortvapi_set_isdb_scan_param(int32_t i4_medium, int32_t i4_scan_type, const AP_SB_ISDB_SCAN_DATA_T* pt_data);
int32_t a_qortvapi_set_ntsc_scan_param(int32_t i4_medium, int32_t i4_scan_type, const AP_SB_NTSC_SCAN_DATA_T* pt_data);

/*
 * Exchange of numbers with the scan engine of a delivery system: SCAN_EXCHANGE_…. The array keeps
 * its size. TV_INVALID_ARGUMENT if the answer does not fit, TV_NOT_FOUND if there is no such
 * multiplex or there are no parameters, TV_NOT_SUPPORTED for a command that the engine does not
 * have; the array does not change then.
 */
int32_t a_qortvapi_atsc_exchange_data(int32_t* pi4_data, uint32_t ui4_count);
int32_t a_qortvapi_isdb_exchange_data(int32_t* pi4_data, uint32_t ui4_count);
int32_t a_scan_ce_exchange_data(int32_t* pi4_data, uint32_t ui4_count);
int32_t a_scan_dtmb_exchange_data(int32_t* pi4_data, uint32_t ui4_count);
int32_t a_scan_pal_secam_exchange_data(int32_t* pi4_data, uint32_t ui4_count);
int32_t a_scan_dvbs_exchange_data(int32_t* pi4_data, uint32_t ui4_count);
/*
 * Writes a text for the viewer about the scan that runs or ran last to pc_message, which has room
 * for ui4_length bytes and a NUL; its previous contents are ignored.
 */
int32_t a_qortvapi_get_user_message(char* pc_message, uint32_t ui4_length);
int32_t a_scan_dvbc_exchange_data(int32_t* pi4_data, uint32_t ui4_count);
/*
 * Writes the name of a cable operator: of the network at index i4_type of the cable list. Room as
 * for get_user_message.
 */
int32_t a_qortvapi_scan_dvbc_get_str_data(int32_t i4_type, char* pc_text, int32_t i4_length);
int32_t a_scan_dvbt_exchange_data(int32_t* pi4_data, uint32_t ui4_count);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(AP_SB_ATSC_SCAN_DATA_T) == 16, "scan record");
static_assert(sizeof(AP_SB_ISDB_SCAN_DATA_T) == 12, "scan record");
static_assert(sizeof(AP_SB_NTSC_SCAN_DATA_T) == 8, "scan record");
