/** Parental ratings (V-chip). Part of the TV middleware client library. */
#pragma once

#include <assert.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#include "middleware/event.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Notification codes. SETTING_CHANGED: pv_arg1: RATING_SYSTEM_…; pv_arg2: its new value.
 * BLOCK_CHANGED: the main window's programme is blocked (pv_arg1 1) or no longer blocked (pv_arg1
 * 0), because of a setting, another channel or another programme.
 */
enum { RATING_NFY_SETTING_CHANGED = 1, RATING_NFY_BLOCK_CHANGED = 2 };

/**
 * Rating systems. The value in RATING_NFY_SETTING_CHANGED is, for ALL: bit 0 whether ratings block
 * at all, bit 1 whether unrated programmes are blocked; for US_TV: a bit for each byte of the
 * record, the lowest bit for the first byte; for OPEN: region * 256 + dimension; for ISDB: the age
 * in the lowest 8 bits, the contents above; for the others: the setting.
 */
enum { RATING_SYSTEM_ALL = 0, RATING_SYSTEM_US_TV = 1, RATING_SYSTEM_US_MOVIE = 2, RATING_SYSTEM_CAN_ENG = 3, RATING_SYSTEM_CAN_FRE = 4, RATING_SYSTEM_OPEN = 5, RATING_SYSTEM_ISDB = 6, RATING_SYSTEM_DVB = 7 };

/**
 * The greatest values of settings. 0 blocks nothing. US_MOVIE, CAN_ENG and CAN_FRE number the
 * ratings of a system from 1, the mildest; the rating that is set and all stricter ones are
 * blocked. Contents are bits. An age is the highest age rating that is not blocked.
 */
enum { RATING_US_MOVIE_MAX = 6, RATING_CAN_ENG_MAX = 6, RATING_CAN_FRE_MAX = 5, RATING_ISDB_CONTENT_MAX = 7, RATING_AGE_MAX = 18 };

/** The most dimensions of rating tables for which settings are stored. */
enum { RATING_OPEN_VCHIP_COUNT = 64 };

/**
 * The blocked ratings of US television: a byte for each, not 0 if it is blocked; it is read back as
 * 1.
 */
typedef struct US_TV_RATING_BLOCK_T {
    uint8_t ab_rating[16];
    uint8_t ab_all[4];
} US_TV_RATING_BLOCK_T;

/** A level of a dimension of a rating table. */
typedef struct OPEN_VCHIP_KEY_PARAM_T {
    uint32_t ui4_region;
    uint16_t ui2_dimension;
    uint8_t ui1_level;
} OPEN_VCHIP_KEY_PARAM_T;

/** The blocked levels of one dimension of a rating table. */
typedef struct OPEN_VCHIP_BLOCK_DATA_T {
    uint8_t ui1_region;
    uint8_t ui1_dimension;
    uint8_t ui1_level_count;
    uint8_t aui1_blocked[255];
} OPEN_VCHIP_BLOCK_DATA_T;

/** A value in a dimension of a rating table. */
typedef struct RatingListEntry {
    uint16_t ui2_dimension;
    uint16_t ui2_value;
} RatingListEntry;

/**
 * The ratings of one region. The ratings of a programme are a list of these. All memory belongs to
 * the caller.
 */
typedef struct RatingListNode {
    uint16_t ui2_region;
    uint16_t ui2_count;
    const char* s_name;               /**< null for none */
    const RatingListEntry* at_entry;  /**< ui2_count entries */
    const struct RatingListNode* pt_next;
} RatingListNode;

/** A block or a rating setting changed. */
typedef void (*a_qortvapi_rating_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_rating_op_vchip_reg_callback(a_qortvapi_rating_nfy_fct pf_callback, void* pv_tag);

/*
 * This television receives DVB. While ratings are enabled, a programme of the guide is blocked if
 * its age rating is above the DVB age setting, or if it has no rating and unrated programmes are
 * blocked. The settings of the other systems are stored, but block nothing. All settings are kept
 * over a restart. TV_INVALID_ARGUMENT for a setting above the greatest value.
 */

/* United States and Canada. */
int32_t a_qortvapi_rating_get_us_tv_setting_info(US_TV_RATING_BLOCK_T* pt_block);
int32_t a_qortvapi_rating_set_us_tv_setting_info(const US_TV_RATING_BLOCK_T* pt_block);
int32_t a_qortvapi_rating_get_us_movie_setting_info(uint8_t* pui1_rating);
int32_t a_qortvapi_rating_set_us_movie_setting_info(uint8_t ui1_rating);
int32_t a_qortvapi_rating_get_can_eng_setting_info(uint8_t* pui1_rating);
int32_t a_qortvapi_rating_set_can_eng_setting_info(uint8_t ui1_rating);
int32_t a_qortvapi_rating_get_can_fre_setting_info(uint8_t* pui1_rating);
int32_t a_qortvapi_rating_set_can_fre_setting_info(uint8_t ui1_rating);
int32_t a_qortvapi_rating_get_block_unrated(uint8_t* pui1_blocked);
int32_t a_qortvapi_rating_set_block_unrated(bool b_blocked);
/* 1 or 0; the default is 1. */
int32_t a_qortvapi_rating_get_enable(uint8_t* pui1_enabled);
/* Writes 0: each rating is blocked by itself. */
int32_t a_qortvapi_rating_get_us_tv_group_by_child(uint8_t* pui1_grouped);
int32_t a_qortvapi_rating_set_enable(uint8_t ui1_enabled);

/*
 * Rating tables. DVB broadcasts none: applications define them. To set the block data of a region's
 * dimension with levels stores it, to set it without levels (ui1_level_count 0) removes it; TV_FULL
 * beyond RATING_OPEN_VCHIP_COUNT. avail: 1 while there is one. TV_NOT_FOUND for a dimension that is
 * not stored.
 */
int32_t a_qortvapi_rating_get_op_vchip_avail(uint8_t* pui1_available);
/*
 * Fills the 64 bytes of pui1_info: region, dimension, number of levels, 1 if the key's level is
 * blocked, then a text with its NUL. Levels count from 0.
 */
int32_t a_qortvapi_rating_get_op_vchip_info(const OPEN_VCHIP_KEY_PARAM_T* pt_key, uint8_t* pui1_info);
int32_t a_qortvapi_rating_get_op_vchip_setting_info(OPEN_VCHIP_BLOCK_DATA_T* pt_block);
int32_t a_qortvapi_rating_set_op_vchip_setting_info(const OPEN_VCHIP_BLOCK_DATA_T* pt_block);

/* ISDB and DVB. */
int32_t a_qortvapi_rating_get_isdb_content_setting_info(uint8_t* pui1_setting);
int32_t a_qortvapi_rating_set_isdb_content_setting_info(uint8_t ui1_setting);
int32_t a_qortvapi_rating_get_isdb_age_setting_info(uint8_t* pui1_age);
int32_t a_qortvapi_rating_set_isdb_age_setting_info(uint8_t ui1_age);
int32_t a_qortvapi_rating_get_dvb_age_setting_info(uint8_t* pui1_age);
int32_t a_qortvapi_rating_set_dvb_age_setting_info(uint8_t ui1_age);

/* Ratings of programmes. */
/*
 * Writes the names of the regions (or "region N"), their dimensions, and the values of these in the
 * same order, separated by ", " and cut to the size of the fields. Of several nodes of a region the
 * first one counts. TV_NOT_FOUND for an empty list; TV_INVALID_ARGUMENT for a list of more than a
 * million nodes, or if entries are missing.
 */
int32_t a_qortvapi_rating_convert_rating_info(const RatingListNode* pt_list, RATING_MAP_T* pt_rating_map);
/*
 * Whether rating tables of ATSC broadcasts are to be stored. Only the flag is stored: there are no
 * such broadcasts.
 */
int32_t a_qortvapi_rating_atsc_storage(bool b_stored);
/* The same as a_qortvapi_event_get_rating_map for the main window's programme. */
int32_t a_qortvapi_rating_get_crnt_rating_info(RATING_MAP_T* pt_rating_map);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(US_TV_RATING_BLOCK_T) == 20, "rating record");
static_assert(sizeof(OPEN_VCHIP_KEY_PARAM_T) == 8 && offsetof(OPEN_VCHIP_KEY_PARAM_T, ui2_dimension) == 4 && offsetof(OPEN_VCHIP_KEY_PARAM_T, ui1_level) == 6, "rating record");
static_assert(sizeof(OPEN_VCHIP_BLOCK_DATA_T) == 258, "rating record");
static_assert(sizeof(RatingListEntry) == 4, "rating record");
/* The middleware's own layout, with pointers of four bytes, and the natural one of eight. */
static_assert(sizeof(void*) != 4 || (offsetof(RatingListNode, s_name) == 4 && offsetof(RatingListNode, at_entry) == 8 && offsetof(RatingListNode, pt_next) == 12 && sizeof(RatingListNode) == 16), "rating record");
static_assert(sizeof(void*) != 8 || (offsetof(RatingListNode, s_name) == 8 && offsetof(RatingListNode, at_entry) == 16 && offsetof(RatingListNode, pt_next) == 24 && sizeof(RatingListNode) == 32), "rating record");
