/** Channel scan. Part of the TV middleware client library. */
#pragma once

#include <assert.h>
#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Codes of a scan. */
enum {
    SCAN_NFY_STARTED = 1,   /**< pv_arg1: medium, or 0 for all; pv_arg2: multiplexes to search */
    SCAN_NFY_PROGRESS = 2,  /**< pv_arg1: per cent; pv_arg2: television services so far; pv_arg3: radio services; pv_arg4: frequency in kHz, or 0 */
    SCAN_NFY_COMPLETED = 3, /**< pv_arg1: services found; pv_arg2: television; pv_arg3: radio; pv_arg4: multiplexes */
    SCAN_NFY_CANCELLED = 4, /**< the lists are as they were; pv_arg1: per cent */
    SCAN_NFY_FAILED = 5     /**< pv_arg1: the code */
};

/** Kinds of scan. */
enum { SCAN_TYPE_FULL = 0, SCAN_TYPE_UPDATE = 1 };

/** Where the set was sold. */
enum { MARKET_REGION_US = 0, MARKET_REGION_EU = 1, MARKET_REGION_CN = 2, MARKET_REGION_SA = 3 };

/** What to search in ATSC. */
typedef struct AP_SB_ATSC_SCAN_DATA_T {
    uint32_t ui4_first_channel;
    uint32_t ui4_last_channel;
    uint32_t ui4_modulation;
    uint32_t ui4_options;
} AP_SB_ATSC_SCAN_DATA_T;

/** What to search in ISDB. */
typedef struct AP_SB_ISDB_SCAN_DATA_T {
    uint32_t ui4_first_channel;
    uint32_t ui4_last_channel;
    uint32_t ui4_options;
} AP_SB_ISDB_SCAN_DATA_T;

/** What to search in NTSC. */
typedef struct AP_SB_NTSC_SCAN_DATA_T {
    uint32_t ui4_first_channel;
    uint32_t ui4_last_channel;
} AP_SB_NTSC_SCAN_DATA_T;

/** Scan progress, results or the end of a scan. */
typedef void (*a_qortvapi_scan_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_scan_reg_callback(a_qortvapi_scan_nfy_fct pf_callback, void* pv_tag);

/* Control. */
int32_t a_qortvapi_scan_select_crnt_or_first_channel(bool b_first);
int32_t a_qortvapi_is_scan_active(void);
int32_t a_qortvapi_start_scan(int32_t i4_medium, int32_t i4_scan_type, bool b_clear);
int32_t a_qortvapi_cancel_scan(void);
int32_t a_qortvapi_get_market_region(void);

/* Parameters of the next scan. */
int32_t a_qortvapi_set_atsc_scan_param(int32_t i4_medium, int32_t i4_scan_type, const AP_SB_ATSC_SCAN_DATA_T* pt_data);
int32_t a_qortvapi_set_isdb_scan_param(int32_t i4_medium, int32_t i4_scan_type, const AP_SB_ISDB_SCAN_DATA_T* pt_data);
int32_t a_qortvapi_set_ntsc_scan_param(int32_t i4_medium, int32_t i4_scan_type, const AP_SB_NTSC_SCAN_DATA_T* pt_data);

/* Exchange of numbers with the scan engine of a delivery system: as many come back as were sent. */
int32_t a_qortvapi_atsc_exchange_data(int32_t* pi4_data, uint32_t ui4_count);
int32_t a_qortvapi_isdb_exchange_data(int32_t* pi4_data, uint32_t ui4_count);
int32_t a_scan_ce_exchange_data(int32_t* pi4_data, uint32_t ui4_count);
int32_t a_scan_dtmb_exchange_data(int32_t* pi4_data, uint32_t ui4_count);
int32_t a_scan_pal_secam_exchange_data(int32_t* pi4_data, uint32_t ui4_count);
int32_t a_scan_dvbs_exchange_data(int32_t* pi4_data, uint32_t ui4_count);
/* Reads and writes pc_message, which has room for ui4_length characters and a NUL. */
int32_t a_qortvapi_get_user_message(char* pc_message, uint32_t ui4_length);
int32_t a_scan_dvbc_exchange_data(int32_t* pi4_data, uint32_t ui4_count);
/* As get_user_message. */
int32_t a_qortvapi_scan_dvbc_get_str_data(int32_t i4_type, char* pc_text, int32_t i4_length);
int32_t a_scan_dvbt_exchange_data(int32_t* pi4_data, uint32_t ui4_count);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(AP_SB_ATSC_SCAN_DATA_T) == 16, "scan record");
static_assert(sizeof(AP_SB_ISDB_SCAN_DATA_T) == 12, "scan record");
static_assert(sizeof(AP_SB_NTSC_SCAN_DATA_T) == 8, "scan record");
