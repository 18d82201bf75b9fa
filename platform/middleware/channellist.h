/**
 * Channel lists: services (SVL), transport streams (TSL), satellites, networks, BISS keys,
 * favourites. Part of the TV middleware client library.
 *
 * Every function returns 0, or the number, id or index asked for, or a negative code of
 * middleware/result_codes.h. Outputs are written on success only. Record pointers belong to the
 * caller and are not kept. Records are in the order of their channel numbers; indexes into a list
 * count from 0.
 *
 * Masks: a channel matches when (ui4_nw_mask & mask) == mask_value and, where there are attribute
 * arguments, (ui4_option_mask & attr_mask) == attr_value. A filter is a mask of which all bits must
 * be set in ui4_nw_mask; with 0 every channel matches.
 *
 * Any thread may call. Handlers are called on the television's own thread, which holds no lock
 * then.
 */
#pragma once

#include <stdbool.h>
#include <stdint.h>

#include "middleware/records.h"
#include "middleware/result_codes.h"

#ifdef __cplusplus
extern "C" {
#endif

/** The ids of the satellite list and the BISS-key list, of which there is one each. */
enum { SATL_ID_MAIN = SVL_ID_SATELLITE, BSL_ID_MAIN = 1 };

/**
 * Codes of channel-list and TV-provider updates. pv_arg1: the list, 0 for all lists; pv_arg2: the
 * channels in it now; pv_arg3: the channel id concerned, 0 for several; pv_arg4: 0.
 */
enum {
    CHANNEL_LIST_NFY_LOADED = 1,     /**< the lists were read from the streams */
    CHANNEL_LIST_NFY_CHANGED = 2,    /**< a record was changed */
    CHANNEL_LIST_NFY_DELETED = 3,    /**< channels were deleted */
    CHANNEL_LIST_NFY_MOVED = 4,      /**< channels changed places */
    CHANNEL_LIST_NFY_FAVOURITES = 5, /**< a favourite list changed */
    CHANNEL_LIST_NFY_RESTORED = 6    /**< a snapshot was restored */
};

/**
 * The channel list changed. The first handler is notified at once if the lists are loaded already.
 */
typedef void (*a_qortvapi_channellist_update_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_channellist_register_callback(a_qortvapi_channellist_update_nfy_fct pf_callback, void* pv_tag);

/** The list that the TV provider mirrors changed. */
typedef void (*a_qortvapi_channellist_tvprovider_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_tvprovider_channellist_register_callback(a_qortvapi_channellist_tvprovider_nfy_fct pf_callback, void* pv_tag);

/**
 * The code of service-list and transport-stream-list updates. pv_arg1: the list id; the other
 * arguments are 0.
 */
enum { CHANNEL_LIST_ID_NFY_CURRENT = 1 };

/** Another service list became the current one. */
typedef void (*a_qortvapi_channellist_svlid_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_svlid_update_register_callback(a_qortvapi_channellist_svlid_nfy_fct pf_callback, void* pv_tag);

/** Another transport-stream list became the current one. */
typedef void (*a_qortvapi_channellist_tslid_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_tslid_update_register_callback(a_qortvapi_channellist_tslid_nfy_fct pf_callback, void* pv_tag);

/** The list mode changed. */
typedef void (*a_qortvapi_channellist_listmode_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2);
int32_t a_qortvapi_listMode_update_register_callback(a_qortvapi_channellist_listmode_nfy_fct pf_callback, void* pv_tag);

/** Scan information of the operator channel list. */
typedef void (*a_qortvapi_channellist_ocl_scaninfo_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2);
int32_t a_qortvapi_ocl_scanInfo_register_callback(a_qortvapi_channellist_ocl_scaninfo_nfy_fct pf_callback, void* pv_tag);

/**
 * Codes of BISS-key and satellite-list updates. pv_arg1: the list; pv_arg2: the records in it;
 * pv_arg3: the record concerned, 0 for several.
 */
enum { BISSKEY_NFY_KEYS_CHANGED = 1, BISSKEY_NFY_SATELLITES_CHANGED = 2 };

/** The BISS-key list changed; satellite-list changes come through the same registration. */
typedef void (*a_qortvapi_channellist_bisskey_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_bisskey_register_callback(a_qortvapi_channellist_bisskey_nfy_fct pf_callback, void* pv_tag);

/** A field of the records that the application is concerned with changed. */
typedef void (*a_qortvapi_channellist_concerncolumn_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_concerncolumn_channellist_register_callback(a_qortvapi_channellist_concerncolumn_nfy_fct pf_callback, void* pv_tag);

/** The code of network-list updates; arguments as for the BISS keys. */
enum { NETWORK_LIST_NFY_CHANGED = 1 };

/** The network list changed. */
typedef void (*a_qortvapi_channellist_nwl_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_nwl_update_register_callback(a_qortvapi_channellist_nwl_nfy_fct pf_callback, void* pv_tag);

/*
 * The database lock: keeps the television from reloading the lists while a client makes several
 * calls. It is a counter, so that locks can be nested and held by several clients at a time. The
 * arguments are ignored. The television waits at most 2 s for it. An unlock without a lock is
 * TV_BUSY.
 */
int32_t a_qortvapi_channellist_lock_database(uint32_t ui4_svl_id, uint32_t ui4_flags);
int32_t a_qortvapi_channellist_unlock_database(uint32_t ui4_svl_id, uint32_t ui4_flags);

/*
 * Single channels: by id, by handle, the current one; selection. ui1_window: 0 main, 1 sub. Where a
 * function has two record pointers, one may be null if that record is not wanted.
 */
int32_t a_qortvapi_channellist_get_channel_by_id(uint32_t ui4_channel_id, uint16_t ui2_svl_id, SVL_REC_T* pt_svl_rec, TSL_REC_T* pt_tsl_rec);
int32_t a_qortvapi_channellist_get_current_chan_id(void);
int32_t a_qortvapi_channellist_get_svl_rec_by_channel_id(uint16_t ui2_svl_id, uint32_t ui4_channel_id, SVL_REC_T* pt_svl_rec);
int32_t a_qortvapi_channellist_get_current_channel(uint16_t* pui2_svl_id, SVL_REC_T* pt_svl_rec, TSL_REC_T* pt_tsl_rec);
int32_t a_qortvapi_channellist_set_current_channel(uint32_t ui4_channel_id);
int32_t a_qortvapi_channellist_delete_channel_without_lcn(uint16_t ui2_svl_id, uint16_t ui2_svl_rec_id);
int32_t a_qortvapi_channellist_slide_for_one_part_channel_id(uint16_t ui2_svl_id, uint32_t ui4_channel_id, uint32_t ui4_new_channel_id);
int32_t a_qortvapi_channellist_set_current_channel_by_svlId(uint16_t ui2_svl_id, uint32_t ui4_channel_id);
int32_t a_qortvapi_channellist_set_2nd_current_channel_by_svlId(uint16_t ui2_svl_id, uint32_t ui4_channel_id);
int32_t a_qortvapi_channellist_get_current_channel_from_nav(uint8_t ui1_window, uint16_t* pui2_svl_id, SVL_REC_T* pt_svl_rec, TSL_REC_T* pt_tsl_rec);
int32_t a_qortvapi_channellist_get_channel_number(uint32_t ui4_channel_id);

/** Items of a channel's reception parameters. */
enum { RF_INFO_FREQUENCY_KHZ = 0, RF_INFO_SYMBOL_RATE = 1, RF_INFO_BANDWIDTH_HZ = 2, RF_INFO_MODULATION = 3, RF_INFO_POLARIZATION = 4, RF_INFO_FEC_INNER = 5 };

/**
 * Which records are written. Of a service, found by its channel id: name, number, option mask and
 * the active, guide and visible bits. Of a multiplex, found by its record id: the network name.
 */
enum { CHANNEL_WRITE_BOTH = 0, CHANNEL_WRITE_SERVICE = 1, CHANNEL_WRITE_MULTIPLEX = 2 };

/*
 * List handles and bulk reads into shared memory; record writes. By handle, ui2_index is an index
 * into the list. To write a channel number that is in use is TV_BUSY. A handle of 0 in a write
 * stands for the handle of the list.
 */
int32_t a_qortvapi_channellist_get_svl_handle_by_svl_id(uint16_t ui2_svl_id, uint32_t* pui4_svl_handle);
int32_t a_qortvapi_channellist_get_tsl_handle_by_svl_id(uint16_t ui2_svl_id, uint32_t* pui4_tsl_handle);
int32_t a_qortvapi_channellist_get_svl_tsl_rec_by_handle(uint32_t ui4_svl_handle, uint32_t ui4_tsl_handle, uint16_t ui2_index, uint32_t* pui4_svl_version, uint32_t* pui4_tsl_version, SVL_REC_T* pt_svl_rec, TSL_REC_T* pt_tsl_rec);
int32_t a_qortvapi_channellist_set_svl_tsl_rec_info(uint32_t ui4_svl_id, uint32_t ui4_flags, uint16_t ui2_tsl_id, uint32_t ui4_svl_handle, uint32_t ui4_tsl_handle, uint32_t ui4_operation, const SVL_REC_T* pt_svl_rec, const TSL_REC_T* pt_tsl_rec);
int32_t a_qortvapi_channellist_get_channel_rf_info(uint16_t ui2_svl_id, uint32_t ui4_channel_id, uint32_t ui4_item);
int32_t a_qortvapi_channellist_get_svl_info_by_brdcast_medium(uint8_t ui1_brdcst_medium, uint16_t* pui2_svl_id, uint16_t* pui2_tsl_id, uint32_t* pui4_svl_handle);

/*
 * Order, favourites and filtered lists. Two channels that are swapped exchange their numbers.
 *
 * Bulk reads write a service and its multiplex at the same index of both arrays, at most as many as
 * asked for, and do not touch the rest of the arrays. An array that cannot be written (null, or
 * MAP_FAILED) or a count above 65,535 is TV_INVALID_ARGUMENT; a count of 0 is valid.
 *
 * By broadcast type (0: any): reads ui4_count matching channels from the one at ui4_start_index on.
 * Writes how many were read, and how many match in all.
 *
 * By filter: reads up to i4_prev_count channels before i4_channel_id (0: the first channel), then
 * up to i4_next_count from it on, one after another in list order. With b_wrap the list is a ring;
 * no channel is read twice, and if there are too few for both parts, the second one is filled
 * first.
 *
 * get_prev_channel_id_by_filter goes ui4_steps back from a channel, always around the ring.
 *
 * favoritelist_… functions act on favourite list 0 of the current channel's service list, with
 * indexes from 0. set_favorites_by_id has positions from 1: position 0, or one beyond the end,
 * appends. It writes the position of the channel, 0 if it was removed.
 */
int32_t a_qortvapi_channellist_swap_channels(uint32_t ui4_channel_id, uint32_t ui4_other_channel_id, uint16_t ui2_svl_id);
int32_t a_qortvapi_channellist_swap_favorites(uint8_t ui1_fav_list, uint32_t ui4_channel_id, uint32_t ui4_other_channel_id, uint16_t ui2_svl_id);
int32_t a_qortvapi_channellist_set_favorites_by_id(uint8_t ui1_fav_list, uint32_t ui4_svl_id, uint32_t ui4_channel_id, uint32_t ui4_position, uint8_t ui1_window, bool b_favourite, uint32_t* pui4_fav_index);
int32_t a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type(uint32_t ui4_svl_id, uint32_t ui4_flags, uint32_t ui4_brdcst_type, uint32_t ui4_start_index, uint32_t ui4_count, SVL_REC_T* pt_svl_recs, TSL_REC_T* pt_tsl_recs, uint32_t* pui4_filled, uint32_t* pui4_total);
int32_t a_qortvapi_channellist_get_svl_tsl_recs_by_filter(int32_t i4_svl_id, int32_t i4_flags, int32_t i4_channel_id, bool b_wrap, int32_t i4_filter, int32_t i4_prev_count, int32_t i4_next_count, SVL_REC_T* pt_svl_recs, TSL_REC_T* pt_tsl_recs, uint32_t* pui4_prev_filled, uint32_t* pui4_next_filled);
int32_t a_qortvapi_channellist_get_number_by_filter(uint32_t ui4_svl_id, uint32_t ui4_filter);
int32_t a_qortvapi_channellist_get_prev_channel_id_by_filter(uint32_t ui4_svl_id, uint32_t ui4_filter, uint32_t ui4_channel_id, uint32_t ui4_steps, uint32_t* pui4_prev_channel_id);
int32_t a_qortvapi_favoritelist_get_crnt_fav_lst_by_filter(FAV_LIST_T* pt_fav_list);
int32_t a_qortvapi_favoritelist_add_favoritelist_channel(void);
int32_t a_qortvapi_favoritelist_add_favoritelist_channel_by_index(uint16_t ui2_index);
int32_t a_qortvapi_favoritelist_remove_favoritelist_channel_by_index_without_show_fav_icon(uint16_t ui2_index);
int32_t a_qortvapi_favoritelist_remove_favoritelist_channel(uint16_t ui2_index);
int32_t a_qortvapi_favoritelist_fs_store(void);
int32_t a_qortvapi_favoritelist_swap_favoritelist_by_index(uint16_t ui2_index, uint16_t ui2_other_index);
int32_t a_qortvapi_channellist_set_svl_tsl_rec_info_without_notify(uint32_t ui4_svl_id, uint32_t ui4_flags, uint16_t ui2_tsl_id, uint32_t ui4_svl_handle, uint32_t ui4_tsl_handle, uint32_t ui4_operation, const SVL_REC_T* pt_svl_rec, const TSL_REC_T* pt_tsl_rec);

/*
 * Queries by block, mask, name, broadcast type; deletion. A name matches if it contains the given
 * text; case is ignored. A query counts the channels that match, or reads the one at ui4_index.
 *
 * By mask, with a channel id of 0: reads the matching channels from the one at ui4_start_index on.
 * Otherwise reads the channels after the given one in list order (direction 0 or more), or those
 * before it, nearest first (direction below 0), and skips the first ui4_start_index of them.
 * Returns how many were written.
 *
 * A deleted channel stays deleted until its multiplex leaves the streams and comes back, or an
 * earlier snapshot is restored. The numbers of other channels do not change. The lists of logical
 * channels (LOL) are part of the service lists: to clean one alone has no effect.
 */
int32_t a_qortvapi_channellist_interface(uint32_t ui4_operation, const CHANNEL_IF_BLOCK_T* pt_block, uint32_t ui4_argument, uint64_t ui8_data, uint32_t ui4_data_size);
int32_t a_qortvapi_channellist_get_channel_number_by_query_info(uint32_t ui4_svl_id, uint32_t ui4_query_type, uint16_t ui2_tsl_id, const CHANNEL_QUERY_T* pt_query_info);
int32_t a_qortvapi_channellist_get_channellist_by_query_info(uint32_t ui4_svl_id, uint32_t ui4_query_type, uint16_t ui2_tsl_id, const CHANNEL_QUERY_T* pt_query_info, uint32_t ui4_index, uint64_t ui8_data, SVL_REC_T* pt_svl_rec, TSL_REC_T* pt_tsl_rec);
int32_t a_qortvapi_channellist_svl_tsl_lol_clean(uint16_t ui2_svl_id, bool b_clean_tsl, bool b_clean_lol);
int32_t a_qortvapi_channellist_and_ts_lol_del_by_brdcst(uint16_t ui2_svl_id, uint8_t ui1_brdcst_type);
int32_t a_qortvapi_channellist_get_number_by_mask(uint32_t ui4_svl_id, uint32_t ui4_flags, uint32_t ui4_mask, uint32_t ui4_mask_value, uint32_t ui4_attr_mask, uint32_t ui4_attr_value);
int32_t a_qortvapi_channellist_get_svl_rec_by_index(uint32_t ui4_svl_id, uint32_t ui4_mask, uint32_t ui4_mask_value, uint32_t ui4_index, SVL_REC_T* pt_svl_rec);
int32_t a_qortvapi_channellist_get_number_by_name(uint32_t ui4_svl_id, uint32_t ui4_mask, uint32_t ui4_mask_value, const char* ps_name);
int32_t a_qortvapi_channellist_get_index_by_channel(uint32_t ui4_svl_id, uint32_t ui4_mask, uint32_t ui4_mask_value, uint32_t ui4_channel_id, uint32_t* pui4_index);
int32_t a_qortvapi_channellist_get_svl_rec_by_index_and_name(uint32_t ui4_svl_id, uint32_t ui4_mask, uint32_t ui4_mask_value, const char* ps_name, uint32_t ui4_index, SVL_REC_T* pt_svl_rec);
int32_t a_qortvapi_channellist_get_svl_tsl_recs_by_mask(uint32_t ui4_svl_id, uint32_t ui4_flags, uint32_t ui4_channel_id, uint32_t ui4_mask, uint32_t ui4_mask_value, uint32_t ui4_attr_mask, uint32_t ui4_attr_value, int32_t i4_direction, uint32_t ui4_start_index, uint32_t ui4_count, SVL_REC_T* pt_svl_recs, TSL_REC_T* pt_tsl_recs);
int32_t a_qortvapi_channellist_delete_by_brdcst(uint16_t ui2_svl_id, uint8_t ui1_brdcst_type);
int32_t a_qortvapi_channellist_delete_by_satl(uint16_t ui2_svl_id, uint32_t ui4_satl_rec_id, bool b_keep_favourites);
int32_t a_qortvapi_channellist_clean_lol(uint16_t ui2_lol_id);
int32_t a_qortvapi_channellist_and_ts_del_by_brdcst(uint16_t ui2_svl_id, uint8_t ui1_brdcst_type);
int32_t a_qortvapi_channellist_is_exist_by_channel_number(uint16_t ui2_svl_id, uint32_t ui4_channel_number);

/*
 * Snapshots of a list (at most 16 at a time, lost when the television stops); records by record id.
 */
int32_t a_qortvapi_channellist_create_snapshot(uint16_t ui2_svl_id, int32_t* pi4_snapshot_id);
int32_t a_qortvapi_channellist_restore_snapshot(int32_t i4_snapshot_id);
int32_t a_qortvapi_channellist_free_snapshot(int32_t i4_snapshot_id);
int32_t a_qortvapi_channellist_get_svl_tsl_rec_by_svl_rec_id(uint16_t ui2_svl_id, uint16_t ui2_svl_rec_id, SVL_REC_T* pt_svl_rec, TSL_REC_T* pt_tsl_rec);
int32_t a_qortvapi_channellist_del_tsl_svl_rec_by_tsl_rec_id(uint16_t ui2_svl_id, uint16_t ui2_tsl_rec_id);
int32_t a_qortvapi_channellist_del_tsl_svl_rec_by_satl_rec_id(uint16_t ui2_svl_id, uint16_t ui2_satl_rec_id, bool b_keep_favourites);

/* Questions of the system's TV provider: the ids of the service lists that have channels. */
int32_t a_qortvapi_tvprovider_get_all_svlid(uint16_t* pui2_svl_ids, uint16_t ui2_count, uint16_t* pui2_filled);
int32_t a_qortvapi_tvprovider_get_all_svlid_count(uint16_t* pui2_count);

/*
 * Favourite lists of a service list: ui1_fav_list is less than FAV_LIST_COUNT. Indexes and
 * positions count the channels that match the mask. insert_move also adds a channel that is not in
 * the list.
 */
int32_t a_qortvapi_favorite_list_get_svl_handle_by_favorite_list_idx(uint16_t ui2_svl_id, uint8_t ui1_fav_list, uint32_t* pui4_svl_handle);
int32_t a_qortvapi_favorite_list_add_tail(uint16_t ui2_svl_id, uint8_t ui1_fav_list, uint32_t ui4_channel_id);
int32_t a_qortvapi_favorite_list_add_all(uint16_t ui2_svl_id, uint8_t ui1_fav_list, uint32_t ui4_mask, uint32_t ui4_mask_value);
int32_t a_qortvapi_favorite_list_delete(uint16_t ui2_svl_id, uint8_t ui1_fav_list, uint32_t ui4_channel_id);
int32_t a_qortvapi_favorite_list_del_all(uint16_t ui2_svl_id, uint8_t ui1_fav_list, uint32_t ui4_mask, uint32_t ui4_mask_value);
int32_t a_qortvapi_favorite_list_swap_by_channel_id(uint16_t ui2_svl_id, uint8_t ui1_fav_list, uint32_t ui4_channel_id, uint32_t ui4_other_channel_id);
int32_t a_qortvapi_favorite_list_number_by_mask(uint16_t ui2_svl_id, uint8_t ui1_fav_list, uint32_t ui4_mask, uint32_t ui4_mask_value);
int32_t a_qortvapi_favorite_list_get_svl_rec_by_index(uint16_t ui2_svl_id, uint8_t ui1_fav_list, uint32_t ui4_mask, uint32_t ui4_mask_value, uint32_t ui4_index, SVL_REC_T* pt_svl_rec);
int32_t a_qortvapi_favorite_list_get_svl_tsl_rec_by_index(uint16_t ui2_svl_id, uint8_t ui1_fav_list, uint32_t ui4_mask, uint32_t ui4_mask_value, uint32_t ui4_index, SVL_REC_T* pt_svl_rec, TSL_REC_T* pt_tsl_rec);
int32_t a_qortvapi_favorite_list_get_index_by_channel(uint16_t ui2_svl_id, uint8_t ui1_fav_list, uint32_t ui4_mask, uint32_t ui4_mask_value, uint32_t ui4_channel_id, uint32_t* pui4_index);
int32_t a_qortvapi_favorite_list_insert_move(uint16_t ui2_svl_id, uint8_t ui1_fav_list, uint32_t ui4_mask, uint32_t ui4_mask_value, uint32_t ui4_channel_id, uint32_t ui4_position);

/** List modes. This television always has one list for each medium. */
enum { CHANNEL_LIST_MODE_BY_MEDIUM = 0 };

/*
 * Further handles; the mode with one list for all media, which this television does not have; the
 * version of the channel pump, a number that the application keeps for each list.
 */
int32_t a_qortvapi_channellist_get_satl_handle_by_satl_id(uint16_t ui2_satl_id, uint32_t* pui4_satl_handle);
int32_t a_qortvapi_channellist_get_lol_handle_by_lol_id(uint16_t ui2_lol_id, uint32_t* pui4_lol_handle);
int32_t a_qortvapi_channellist_get_num_by_mask_and_brdcst(uint32_t ui4_svl_id, uint32_t ui4_mask, uint32_t ui4_mask_value, uint8_t ui1_brdcst_type);
int32_t a_qortvapi_channellist_get_svl_rec_by_mask_and_brdcst(uint32_t ui4_svl_id, uint32_t ui4_mask, uint32_t ui4_mask_value, uint32_t ui4_index, uint8_t ui1_brdcst_type, SVL_REC_T* pt_svl_rec);
int32_t a_qortvapi_one_channellist_arrange_before(uint16_t ui2_svl_id, uint16_t ui2_position);
int32_t a_qortvapi_channellist_getChannelListMode(uint16_t* pui2_mode);
int32_t a_qortvapi_channellist_getChannelPumpVer(int32_t i4_svl_id, uint32_t* pui4_version);
int32_t a_qortvapi_channellist_setChannelPumpVer(uint32_t ui4_svl_id, uint32_t ui4_version);
int32_t a_qortvapi_one_channellist_add_channel_to_max(uint16_t ui2_svl_id, uint16_t ui2_svl_rec_id);

/*
 * Channel ids: composing them and taking them apart. No list is read. A two-part id has a major and
 * a minor number (0 to 1023), a one-part id one number (0 to 1,048,575), a non-PSIP id a physical
 * channel (0 to 255) and a program (0 to 4095); each has an index from 0 to max_channel_index. The
 * gen functions return the id, or TV_INVALID_ARGUMENT. A one-part id has its number as major number
 * and 0 as minor number, a non-PSIP id its physical channel and its program.
 */
int32_t a_qortvapi_channellist_gen_channel_id(uint32_t ui4_major, uint32_t ui4_minor, uint32_t ui4_index);
int32_t a_qortvapi_channellist_gen_one_part_channel_id(uint32_t ui4_number, uint32_t ui4_index);
int32_t a_qortvapi_channellist_gen_non_psip_channel_id(uint32_t ui4_physical, uint32_t ui4_program, uint32_t ui4_index);
int32_t a_qortvapi_is_one_part_channel_id(uint32_t ui4_channel_id);
int32_t a_qortvapi_is_non_psip_channel_id(uint32_t ui4_channel_id);
int32_t a_qortvapi_channellist_get_major_channel_num(uint32_t ui4_channel_id);
int32_t a_qortvapi_channellist_get_minor_channel_num(uint32_t ui4_channel_id);
int32_t a_qortvapi_channellist_get_channel_index(uint32_t ui4_channel_id);
int32_t a_qortvapi_channellist_max_channel_index(void);
int32_t a_qortvapi_channellist_get_ntsc_cable_last_channel(void);
int32_t a_qortvapi_channellist_get_cqam_scan_last_channel(void);

/* Raw records by list handle. */
int32_t c_svl_get_rec(uint32_t ui4_svl_handle, uint16_t ui2_svl_rec_id, SVL_REC_T* pt_svl_rec, uint32_t* pui4_version);
int32_t c_tsl_get_rec(uint32_t ui4_tsl_handle, uint16_t ui2_tsl_rec_id, TSL_REC_T* pt_tsl_rec, uint32_t* pui4_version);

/*
 * Satellite list (SATL_ID_MAIN). qry_rec_id writes the record id at an index. An update of a record
 * that does not exist is TV_NOT_FOUND, or adds it if b_force is set. Its locks are counters like
 * the database lock. All this holds for the lists below, too. Transport-stream and network lists
 * have the ids of the service lists; what the streams carry is added to them again with the next
 * load.
 */
int32_t a_qortvapi_satllist_lock_database(uint16_t ui2_satl_id);
int32_t a_qortvapi_satllist_unlock_database(uint16_t ui2_satl_id);
int32_t a_qortvapi_satllist_read_lock_database(uint16_t ui2_satl_id);
int32_t a_qortvapi_satllist_read_unlock_database(uint16_t ui2_satl_id);
int32_t a_qortvapi_satllist_clean(uint16_t ui2_satl_id);
int32_t a_qortvapi_satllist_get_rec(uint16_t ui2_satl_id, uint16_t ui2_satl_rec_id, SATL_REC_T* pt_satl_rec);
int32_t a_qortvapi_satllist_update_rec(uint16_t ui2_satl_id, const SATL_REC_T* pt_satl_rec, bool b_force);
int32_t a_qortvapi_satllist_get_num_recs(uint16_t ui2_satl_id, uint16_t* pui2_count);
int32_t a_qortvapi_satllist_qry_rec_id(int32_t i4_satl_id, int8_t i1_index, uint16_t* pui2_satl_rec_id);
int32_t a_qortvapi_satllist_del_rec(uint16_t ui2_satl_id, uint16_t ui2_satl_rec_id);
int32_t a_qortvapi_satllist_get_rec_by_rec_idx(uint16_t ui2_satl_id, uint16_t ui2_index, SATL_REC_T* pt_satl_rec);
int32_t a_qortvapi_satllist_create_snapshot(uint16_t ui2_satl_id, uint32_t* pui4_snapshot_id);
int32_t a_qortvapi_satllist_restore_snapshot(uint32_t ui4_snapshot_id);
int32_t a_qortvapi_satllist_free_snapshot(uint32_t ui4_snapshot_id);

/** Operations of set_bsl_rec_info. An added record gets a new id. */
enum { BISSKEY_ADD = 0, BISSKEY_MODIFY = 1, BISSKEY_DELETE = 2 };

/*
 * BISS keys. A header field of 0 matches everything. is_same_record returns 1 or 0.
 * set_key_for_current_channel looks for the key of the current channel.
 */
int32_t a_qortvapi_bisskey_get_bsl_handle_by_bsl_id(uint16_t ui2_bsl_id, uint32_t* pui4_bsl_handle);
int32_t a_qortvapi_bisskey_lock_database(uint32_t ui4_bsl_handle);
int32_t a_qortvapi_bisskey_unlock_database(uint32_t ui4_bsl_handle);
int32_t a_qortvapi_bisskey_get_recs_number(uint32_t ui4_bsl_handle, uint16_t* pui2_count, uint32_t* pui4_version);
int32_t a_qortvapi_bisskey_get_bsl_rec_by_bsl_rec_id(uint32_t ui4_bsl_handle, uint16_t ui2_bsl_rec_id, BSL_REC_T* pt_bsl_rec, uint32_t* pui4_version);
int32_t a_qortvapi_bisskey_get_bsl_rec_by_idx(uint32_t ui4_bsl_handle, uint16_t ui2_index, BSL_REC_T* pt_bsl_rec, uint32_t* pui4_version);
int32_t a_qortvapi_bisskey_get_recs_number_by_header(uint32_t ui4_bsl_handle, const BSL_HEADER_T* pt_header, uint16_t* pui2_count, uint32_t* pui4_version);
int32_t a_qortvapi_bisskey_get_bsl_rec_by_header(uint32_t ui4_bsl_handle, const BSL_HEADER_T* pt_header, uint16_t ui2_index, BSL_REC_T* pt_bsl_rec, uint32_t* pui4_version);
int32_t a_qortvapi_bisskey_set_bsl_rec_info(uint32_t ui4_bsl_handle, uint32_t ui4_operation, const BSL_REC_T* pt_bsl_rec, uint32_t* pui4_bsl_rec_id);
int32_t a_qortvapi_bisskey_clean(uint32_t ui4_bsl_handle);
int32_t a_qortvapi_bisskey_is_same_record(const BSL_REC_T* pt_bsl_rec, const BSL_REC_T* pt_other_bsl_rec);
int32_t a_qortvapi_bisskey_get_default_record(BSL_REC_T* pt_bsl_rec);
int32_t a_qortvapi_bisskey_set_key_for_current_channel(void);

/*
 * Transport-stream list. Array reads write at most ui2_count records from index ui2_start on, and
 * none at index ui2_total or above.
 */
int32_t a_qortvapi_tsl_clean(uint16_t ui2_tsl_id);
int32_t a_qortvapi_tsl_del_rec(uint16_t ui2_tsl_id, uint16_t ui2_tsl_rec_id);
int32_t a_qortvapi_tsl_qry_rec_id(uint16_t ui2_tsl_id, uint8_t ui1_index, uint16_t* pui2_tsl_rec_id);
int32_t a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id(uint16_t ui2_tsl_id, uint16_t ui2_satl_rec_id, uint16_t ui2_start, uint16_t ui2_count, uint16_t ui2_total, TSL_REC_T* pt_tsl_recs);
int32_t a_qortvapi_tsl_get_tsl_num_rec_by_satl_rec_id(uint16_t ui2_tsl_id, uint16_t ui2_satl_rec_id, uint16_t* pui2_count);
int32_t a_qortvapi_tsl_get_rec(uint16_t ui2_tsl_id, uint16_t ui2_tsl_rec_id, TSL_REC_T* pt_tsl_rec);
int32_t a_qortvapi_tsl_update_rec(uint16_t ui2_tsl_id, const TSL_REC_T* pt_tsl_rec, bool b_force);
int32_t a_qortvapi_tsl_get_num_recs(uint16_t ui2_tsl_id, uint16_t* pui2_count);
int32_t a_qortvapi_tsl_get_rec_by_rec_idx(uint16_t ui2_tsl_id, uint16_t ui2_index, TSL_REC_T* pt_tsl_rec);

/* Network list. */
int32_t a_qortvapi_nwl_clean(uint16_t ui2_nwl_id);
int32_t a_qortvapi_nwl_del_rec(uint16_t ui2_nwl_id, uint16_t ui2_nwl_rec_id);
int32_t a_qortvapi_nwl_qry_rec_id(uint16_t ui2_nwl_id, uint8_t ui1_index, uint16_t* pui2_nwl_rec_id);
int32_t a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id(uint16_t ui2_nwl_id, uint16_t ui2_satl_rec_id, uint16_t ui2_start, uint16_t ui2_count, uint16_t ui2_total, NWL_REC_T* pt_nwl_recs);
int32_t a_qortvapi_nwl_get_nwl_num_rec_by_satl_rec_id(uint16_t ui2_nwl_id, uint16_t ui2_satl_rec_id, uint16_t* pui2_count);
int32_t a_qortvapi_nwl_get_rec(uint16_t ui2_nwl_id, uint16_t ui2_nwl_rec_id, NWL_REC_T* pt_nwl_rec);
int32_t a_qortvapi_nwl_update_rec(uint16_t ui2_nwl_id, const NWL_REC_T* pt_nwl_rec, bool b_force);
int32_t a_qortvapi_nwl_get_num_recs(uint16_t ui2_nwl_id, uint16_t* pui2_count);
int32_t a_qortvapi_nwl_get_rec_by_rec_idx(uint16_t ui2_nwl_id, uint16_t ui2_index, NWL_REC_T* pt_nwl_rec);

#ifdef __cplusplus
}
#endif
