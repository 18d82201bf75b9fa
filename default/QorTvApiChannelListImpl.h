/** The channel lists: services, transport streams, satellites, networks, BISS keys, favourites. */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiChannelList.h>

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_handle;
using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;

/**
 * Each method calls the middleware function of its name without the prefix `a_hidl_`. Records are
 * passed on as bytes, without a look at their fields. There is no state: any number of threads may
 * call at a time. The methods of a family are in QorTvApiChannelListImpl<Family>.cpp.
 */
class QorTvApiChannelListImpl : public IQorTvApiChannelList {
  public:
    // The database lock: holds the lists still while a client makes several calls.
    Return<int32_t> a_hidl_a_qortvapi_channellist_lock_database(uint32_t svl_id,
                                                                uint32_t flags) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_unlock_database(uint32_t svl_id,
                                                                  uint32_t flags) override;

    // Single channels: by id, by handle, the current one; selection.
    Return<void> a_hidl_a_qortvapi_channellist_get_channel_by_id(
            uint32_t channel_id, uint16_t svl_id,
            a_hidl_a_qortvapi_channellist_get_channel_by_id_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_get_current_chan_id() override;
    Return<void> a_hidl_a_qortvapi_channellist_get_svl_rec_by_channel_id(
            uint16_t svl_id, uint32_t channel_id,
            a_hidl_a_qortvapi_channellist_get_svl_rec_by_channel_id_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_channellist_get_current_channel(
            a_hidl_a_qortvapi_channellist_get_current_channel_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_set_current_channel(uint32_t channel_id) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_delete_channel_without_lcn(
            uint16_t svl_id, uint16_t svl_rec_id) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_slide_for_one_part_channel_id(
            uint16_t svl_id, uint32_t channel_id, uint32_t new_channel_id) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_set_current_channel_by_svlId(
            uint16_t svl_id, uint32_t channel_id) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_set_2nd_current_channel_by_svlId(
            uint16_t svl_id, uint32_t channel_id) override;
    Return<void> a_hidl_a_qortvapi_channellist_get_current_channel_from_nav(
            uint8_t window,
            a_hidl_a_qortvapi_channellist_get_current_channel_from_nav_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_get_channel_number(uint32_t channel_id) override;

    // List handles and bulk reads into shared memory; record writes.
    Return<void> a_hidl_a_qortvapi_channellist_get_svl_handle_by_svl_id(
            uint16_t svl_id,
            a_hidl_a_qortvapi_channellist_get_svl_handle_by_svl_id_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_channellist_get_tsl_handle_by_svl_id(
            uint16_t svl_id,
            a_hidl_a_qortvapi_channellist_get_tsl_handle_by_svl_id_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_handle(
            uint32_t svl_handle, uint32_t tsl_handle, uint16_t index,
            a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_handle_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_handle_ex(
            uint32_t svl_handle, uint32_t tsl_handle, uint16_t count, const hidl_handle& svl_region,
            const hidl_handle& tsl_region,
            a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_handle_ex_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_index_ex(
            uint16_t svl_id, uint32_t lock_svl_id, uint32_t lock_flags, uint8_t fav_list,
            uint32_t mask, uint32_t mask_value, uint32_t start, uint16_t count, uint16_t wrap,
            const hidl_handle& svl_region, const hidl_handle& tsl_region) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info(
            uint32_t svl_id, uint32_t flags, uint16_t tsl_id, uint32_t svl_handle,
            uint32_t tsl_handle, uint32_t operation, const hidl_vec<uint8_t>& svl_rec,
            const hidl_vec<uint8_t>& tsl_rec) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_get_channel_rf_info(uint16_t svl_id,
                                                                      uint32_t channel_id,
                                                                      uint32_t item) override;
    Return<void> a_hidl_a_qortvapi_channellist_get_svl_info_by_brdcast_medium(
            uint8_t brdcst_medium,
            a_hidl_a_qortvapi_channellist_get_svl_info_by_brdcast_medium_cb _hidl_cb) override;

    // Order, favourites and filtered lists.
    Return<int32_t> a_hidl_a_qortvapi_channellist_swap_channels(uint32_t channel_id,
                                                                uint32_t other_channel_id,
                                                                uint16_t svl_id) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_swap_favorites(uint8_t fav_list,
                                                                 uint32_t channel_id,
                                                                 uint32_t other_channel_id,
                                                                 uint16_t svl_id) override;
    Return<void> a_hidl_a_qortvapi_channellist_set_favorites_by_id(
            uint8_t fav_list, uint32_t svl_id, uint32_t channel_id, uint32_t position,
            uint8_t window, bool favourite,
            a_hidl_a_qortvapi_channellist_set_favorites_by_id_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type(
            uint32_t svl_id, uint32_t flags, uint32_t brdcst_type, uint32_t start_index,
            uint32_t count, const hidl_handle& svl_region, const hidl_handle& tsl_region,
            a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_filter(
            int32_t svl_id, int32_t flags, int32_t channel_id, bool wrap, int32_t filter,
            int32_t prev_count, int32_t next_count, const hidl_handle& svl_region,
            const hidl_handle& tsl_region,
            a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_filter_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_get_number_by_filter(uint32_t svl_id,
                                                                       uint32_t filter) override;
    Return<void> a_hidl_a_qortvapi_channellist_get_prev_channel_id_by_filter(
            uint32_t svl_id, uint32_t filter, uint32_t channel_id, uint32_t steps,
            a_hidl_a_qortvapi_channellist_get_prev_channel_id_by_filter_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_favoritelist_get_crnt_fav_lst_by_filter(
            a_hidl_a_qortvapi_favoritelist_get_crnt_fav_lst_by_filter_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_favoritelist_add_favoritelist_channel() override;
    Return<int32_t> a_hidl_a_qortvapi_favoritelist_add_favoritelist_channel_by_index(
            uint16_t index) override;
    Return<int32_t>
    a_hidl_a_qortvapi_favoritelist_remove_favoritelist_channel_by_index_without_show_fav_icon(
            uint16_t index) override;
    Return<int32_t> a_hidl_a_qortvapi_favoritelist_remove_favoritelist_channel(
            uint16_t index) override;
    Return<int32_t> a_hidl_a_qortvapi_favoritelist_fs_store() override;
    Return<int32_t> a_hidl_a_qortvapi_favoritelist_swap_favoritelist_by_index(
            uint16_t index, uint16_t other_index) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info_without_notify(
            uint32_t svl_id, uint32_t flags, uint16_t tsl_id, uint32_t svl_handle,
            uint32_t tsl_handle, uint32_t operation, const hidl_vec<uint8_t>& svl_rec,
            const hidl_vec<uint8_t>& tsl_rec) override;

    // Queries by block, mask, name, broadcast type; deletion.
    Return<int32_t> a_hidl_a_qortvapi_channellist_interface(uint32_t operation,
                                                            const hidl_vec<uint8_t>& block,
                                                            uint32_t argument, uint64_t data,
                                                            uint32_t data_size) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_get_channel_number_by_query_info(
            uint32_t svl_id, uint32_t query_type, uint16_t tsl_id,
            const hidl_vec<uint8_t>& query_info) override;
    Return<void> a_hidl_a_qortvapi_channellist_get_channellist_by_query_info(
            uint32_t svl_id, uint32_t query_type, uint16_t tsl_id,
            const hidl_vec<uint8_t>& query_info, uint32_t index, uint64_t data,
            a_hidl_a_qortvapi_channellist_get_channellist_by_query_info_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_svl_tsl_lol_clean(uint16_t svl_id, bool clean_tsl,
                                                                    bool clean_lol) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_and_ts_lol_del_by_brdcst(
            uint16_t svl_id, uint8_t brdcst_type) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_get_number_by_mask(uint32_t svl_id,
                                                                     uint32_t flags, uint32_t mask,
                                                                     uint32_t mask_value,
                                                                     uint32_t attr_mask,
                                                                     uint32_t attr_value) override;
    Return<void> a_hidl_a_qortvapi_channellist_get_svl_rec_by_index(
            uint32_t svl_id, uint32_t mask, uint32_t mask_value, uint32_t index,
            a_hidl_a_qortvapi_channellist_get_svl_rec_by_index_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_get_number_by_name(
            uint32_t svl_id, uint32_t mask, uint32_t mask_value, const hidl_string& name) override;
    Return<void> a_hidl_a_qortvapi_channellist_get_index_by_channel(
            uint32_t svl_id, uint32_t mask, uint32_t mask_value, uint32_t channel_id,
            a_hidl_a_qortvapi_channellist_get_index_by_channel_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_channellist_get_svl_rec_by_index_and_name(
            uint32_t svl_id, uint32_t mask, uint32_t mask_value, const hidl_string& name,
            uint32_t index,
            a_hidl_a_qortvapi_channellist_get_svl_rec_by_index_and_name_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_mask(
            uint32_t svl_id, uint32_t flags, uint32_t channel_id, uint32_t mask,
            uint32_t mask_value, uint32_t attr_mask, uint32_t attr_value, int32_t direction,
            uint32_t start_index, uint32_t count, const hidl_handle& svl_region,
            const hidl_handle& tsl_region) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_delete_by_brdcst(uint16_t svl_id,
                                                                   uint8_t brdcst_type) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_delete_by_satl(uint16_t svl_id,
                                                                 uint32_t satl_rec_id,
                                                                 bool keep_favourites) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_clean_lol(uint16_t lol_id) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_and_ts_del_by_brdcst(
            uint16_t svl_id, uint8_t brdcst_type) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_is_exist_by_channel_number(
            uint16_t svl_id, uint32_t channel_number) override;

    // Snapshots of a list, records by record id.
    Return<void> a_hidl_a_qortvapi_channellist_create_snapshot(
            uint16_t svl_id, a_hidl_a_qortvapi_channellist_create_snapshot_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_restore_snapshot(int32_t snapshot_id) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_free_snapshot(int32_t snapshot_id) override;
    Return<void> a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_svl_rec_id(
            uint16_t svl_id, uint16_t svl_rec_id,
            a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_svl_rec_id_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_del_tsl_svl_rec_by_tsl_rec_id(
            uint16_t svl_id, uint16_t tsl_rec_id) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_del_tsl_svl_rec_by_satl_rec_id(
            uint16_t svl_id, uint16_t satl_rec_id, bool keep_favourites) override;

    // Questions of the system's TV provider.
    Return<void> a_hidl_a_qortvapi_tvprovider_get_all_svlid(
            const hidl_handle& id_region, uint16_t count,
            a_hidl_a_qortvapi_tvprovider_get_all_svlid_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_tvprovider_get_all_svlid_count(
            a_hidl_a_qortvapi_tvprovider_get_all_svlid_count_cb _hidl_cb) override;

    // Favourite lists.
    Return<void> a_hidl_a_qortvapi_favorite_list_get_svl_handle_by_favorite_list_idx(
            uint16_t svl_id, uint8_t fav_list,
            a_hidl_a_qortvapi_favorite_list_get_svl_handle_by_favorite_list_idx_cb _hidl_cb)
            override;
    Return<int32_t> a_hidl_a_qortvapi_favorite_list_add_tail(uint16_t svl_id, uint8_t fav_list,
                                                             uint32_t channel_id) override;
    Return<int32_t> a_hidl_a_qortvapi_favorite_list_add_all(uint16_t svl_id, uint8_t fav_list,
                                                            uint32_t mask,
                                                            uint32_t mask_value) override;
    Return<int32_t> a_hidl_a_qortvapi_favorite_list_delete(uint16_t svl_id, uint8_t fav_list,
                                                           uint32_t channel_id) override;
    Return<int32_t> a_hidl_a_qortvapi_favorite_list_del_all(uint16_t svl_id, uint8_t fav_list,
                                                            uint32_t mask,
                                                            uint32_t mask_value) override;
    Return<int32_t> a_hidl_a_qortvapi_favorite_list_swap_by_channel_id(
            uint16_t svl_id, uint8_t fav_list, uint32_t channel_id,
            uint32_t other_channel_id) override;
    Return<int32_t> a_hidl_a_qortvapi_favorite_list_number_by_mask(uint16_t svl_id,
                                                                   uint8_t fav_list, uint32_t mask,
                                                                   uint32_t mask_value) override;
    Return<void> a_hidl_a_qortvapi_favorite_list_get_svl_rec_by_index(
            uint16_t svl_id, uint8_t fav_list, uint32_t mask, uint32_t mask_value, uint32_t index,
            a_hidl_a_qortvapi_favorite_list_get_svl_rec_by_index_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_favorite_list_get_svl_tsl_rec_by_index(
            uint16_t svl_id, uint8_t fav_list, uint32_t mask, uint32_t mask_value, uint32_t index,
            a_hidl_a_qortvapi_favorite_list_get_svl_tsl_rec_by_index_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_favorite_list_get_index_by_channel(
            uint16_t svl_id, uint8_t fav_list, uint32_t mask, uint32_t mask_value,
            uint32_t channel_id,
            a_hidl_a_qortvapi_favorite_list_get_index_by_channel_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_favorite_list_insert_move(uint16_t svl_id, uint8_t fav_list,
                                                                uint32_t mask, uint32_t mask_value,
                                                                uint32_t channel_id,
                                                                uint32_t position) override;

    // Further handles, the one-list mode, the channel pump.
    Return<void> a_hidl_a_qortvapi_channellist_get_satl_handle_by_satl_id(
            uint16_t satl_id,
            a_hidl_a_qortvapi_channellist_get_satl_handle_by_satl_id_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_channellist_get_lol_handle_by_lol_id(
            uint16_t lol_id,
            a_hidl_a_qortvapi_channellist_get_lol_handle_by_lol_id_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_get_num_by_mask_and_brdcst(
            uint32_t svl_id, uint32_t mask, uint32_t mask_value, uint8_t brdcst_type) override;
    Return<void> a_hidl_a_qortvapi_channellist_get_svl_rec_by_mask_and_brdcst(
            uint32_t svl_id, uint32_t mask, uint32_t mask_value, uint32_t index,
            uint8_t brdcst_type,
            a_hidl_a_qortvapi_channellist_get_svl_rec_by_mask_and_brdcst_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_one_channellist_arrange_before(uint16_t svl_id,
                                                                     uint16_t position) override;
    Return<void> a_hidl_a_qortvapi_channellist_getChannelListMode(
            a_hidl_a_qortvapi_channellist_getChannelListMode_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_channellist_getChannelPumpVer(
            int32_t svl_id, a_hidl_a_qortvapi_channellist_getChannelPumpVer_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_setChannelPumpVer(uint32_t svl_id,
                                                                    uint32_t version) override;
    Return<int32_t> a_hidl_a_qortvapi_one_channellist_add_channel_to_max(
            uint16_t svl_id, uint16_t svl_rec_id) override;

    // Channel ids: composing them and taking them apart. No list is read.
    Return<int32_t> a_hidl_a_qortvapi_channellist_gen_channel_id(uint32_t major, uint32_t minor,
                                                                 uint32_t index) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_gen_one_part_channel_id(uint32_t number,
                                                                          uint32_t index) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_gen_non_psip_channel_id(uint32_t physical,
                                                                          uint32_t program,
                                                                          uint32_t index) override;
    Return<int32_t> a_hidl_a_qortvapi_is_one_part_channel_id(uint32_t channel_id) override;
    Return<int32_t> a_hidl_a_qortvapi_is_non_psip_channel_id(uint32_t channel_id) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_get_major_channel_num(
            uint32_t channel_id) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_get_minor_channel_num(
            uint32_t channel_id) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_get_channel_index(uint32_t channel_id) override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_max_channel_index() override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_get_ntsc_cable_last_channel() override;
    Return<int32_t> a_hidl_a_qortvapi_channellist_get_cqam_scan_last_channel() override;

    // Raw records by list handle.
    Return<void> a_hidl_c_svl_get_rec(uint32_t svl_handle, uint16_t svl_rec_id,
                                      a_hidl_c_svl_get_rec_cb _hidl_cb) override;
    Return<void> a_hidl_c_tsl_get_rec(uint32_t tsl_handle, uint16_t tsl_rec_id,
                                      a_hidl_c_tsl_get_rec_cb _hidl_cb) override;

    // Satellite list.
    Return<int32_t> a_hidl_a_qortvapi_satllist_lock_database(uint16_t satl_id) override;
    Return<int32_t> a_hidl_a_qortvapi_satllist_unlock_database(uint16_t satl_id) override;
    Return<int32_t> a_hidl_a_qortvapi_satllist_read_lock_database(uint16_t satl_id) override;
    Return<int32_t> a_hidl_a_qortvapi_satllist_read_unlock_database(uint16_t satl_id) override;
    Return<int32_t> a_hidl_a_qortvapi_satllist_clean(uint16_t satl_id) override;
    Return<void> a_hidl_a_qortvapi_satllist_get_rec(
            uint16_t satl_id, uint16_t satl_rec_id,
            a_hidl_a_qortvapi_satllist_get_rec_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_satllist_update_rec(uint16_t satl_id,
                                                          const hidl_vec<uint8_t>& satl_rec,
                                                          bool force) override;
    Return<void> a_hidl_a_qortvapi_satllist_get_num_recs(
            uint16_t satl_id, a_hidl_a_qortvapi_satllist_get_num_recs_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_satllist_qry_rec_id(
            int16_t satl_id, int8_t index,
            a_hidl_a_qortvapi_satllist_qry_rec_id_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_satllist_del_rec(uint16_t satl_id,
                                                       uint16_t satl_rec_id) override;
    Return<void> a_hidl_a_qortvapi_satllist_get_rec_by_rec_idx(
            uint16_t satl_id, uint16_t index,
            a_hidl_a_qortvapi_satllist_get_rec_by_rec_idx_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_satllist_create_snapshot(
            uint16_t satl_id, a_hidl_a_qortvapi_satllist_create_snapshot_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_satllist_restore_snapshot(uint32_t snapshot_id) override;
    Return<int32_t> a_hidl_a_qortvapi_satllist_free_snapshot(uint32_t snapshot_id) override;

    // BISS keys.
    Return<void> a_hidl_a_qortvapi_bisskey_get_bsl_handle_by_bsl_id(
            uint16_t bsl_id,
            a_hidl_a_qortvapi_bisskey_get_bsl_handle_by_bsl_id_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_bisskey_lock_database(uint32_t bsl_handle) override;
    Return<int32_t> a_hidl_a_qortvapi_bisskey_unlock_database(uint32_t bsl_handle) override;
    Return<void> a_hidl_a_qortvapi_bisskey_get_recs_number(
            uint32_t bsl_handle, a_hidl_a_qortvapi_bisskey_get_recs_number_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_bisskey_get_bsl_rec_by_bsl_rec_id(
            uint32_t bsl_handle, uint16_t bsl_rec_id,
            a_hidl_a_qortvapi_bisskey_get_bsl_rec_by_bsl_rec_id_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_bisskey_get_bsl_rec_by_idx(
            uint32_t bsl_handle, uint16_t index,
            a_hidl_a_qortvapi_bisskey_get_bsl_rec_by_idx_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_bisskey_get_recs_number_by_header(
            uint32_t bsl_handle, const hidl_vec<uint8_t>& header,
            a_hidl_a_qortvapi_bisskey_get_recs_number_by_header_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_bisskey_get_bsl_rec_by_header(
            uint32_t bsl_handle, const hidl_vec<uint8_t>& header, uint16_t index,
            a_hidl_a_qortvapi_bisskey_get_bsl_rec_by_header_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_bisskey_set_bsl_rec_info(
            uint32_t bsl_handle, uint32_t operation, const hidl_vec<uint8_t>& bsl_rec,
            a_hidl_a_qortvapi_bisskey_set_bsl_rec_info_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_bisskey_clean(uint32_t bsl_handle) override;
    Return<int32_t> a_hidl_a_qortvapi_bisskey_is_same_record(
            const hidl_vec<uint8_t>& bsl_rec, const hidl_vec<uint8_t>& other_bsl_rec) override;
    Return<void> a_hidl_a_qortvapi_bisskey_get_default_record(
            a_hidl_a_qortvapi_bisskey_get_default_record_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_bisskey_set_key_for_current_channel() override;

    // Transport-stream list.
    Return<int32_t> a_hidl_a_qortvapi_tsl_clean(uint16_t tsl_id) override;
    Return<int32_t> a_hidl_a_qortvapi_tsl_del_rec(uint16_t tsl_id, uint16_t tsl_rec_id) override;
    Return<void> a_hidl_a_qortvapi_tsl_qry_rec_id(
            uint16_t tsl_id, uint8_t index, a_hidl_a_qortvapi_tsl_qry_rec_id_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id(
            uint16_t tsl_id, uint16_t satl_rec_id, uint16_t start, uint16_t count, uint16_t total,
            a_hidl_a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_tsl_get_tsl_num_rec_by_satl_rec_id(
            uint16_t tsl_id, uint16_t satl_rec_id,
            a_hidl_a_qortvapi_tsl_get_tsl_num_rec_by_satl_rec_id_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_tsl_get_rec(uint16_t tsl_id, uint16_t tsl_rec_id,
                                               a_hidl_a_qortvapi_tsl_get_rec_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_tsl_update_rec(uint16_t tsl_id,
                                                     const hidl_vec<uint8_t>& tsl_rec,
                                                     bool force) override;
    Return<void> a_hidl_a_qortvapi_tsl_get_num_recs(
            uint16_t tsl_id, a_hidl_a_qortvapi_tsl_get_num_recs_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_tsl_get_rec_by_rec_idx(
            uint16_t tsl_id, uint16_t index,
            a_hidl_a_qortvapi_tsl_get_rec_by_rec_idx_cb _hidl_cb) override;

    // Network list.
    Return<int32_t> a_hidl_a_qortvapi_nwl_clean(uint16_t nwl_id) override;
    Return<int32_t> a_hidl_a_qortvapi_nwl_del_rec(uint16_t nwl_id, uint16_t nwl_rec_id) override;
    Return<void> a_hidl_a_qortvapi_nwl_qry_rec_id(
            uint16_t nwl_id, uint8_t index, a_hidl_a_qortvapi_nwl_qry_rec_id_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id(
            uint16_t nwl_id, uint16_t satl_rec_id, uint16_t start, uint16_t count, uint16_t total,
            a_hidl_a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_nwl_get_nwl_num_rec_by_satl_rec_id(
            uint16_t nwl_id, uint16_t satl_rec_id,
            a_hidl_a_qortvapi_nwl_get_nwl_num_rec_by_satl_rec_id_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_nwl_get_rec(uint16_t nwl_id, uint16_t nwl_rec_id,
                                               a_hidl_a_qortvapi_nwl_get_rec_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_nwl_update_rec(uint16_t nwl_id,
                                                     const hidl_vec<uint8_t>& nwl_rec,
                                                     bool force) override;
    Return<void> a_hidl_a_qortvapi_nwl_get_num_recs(
            uint16_t nwl_id, a_hidl_a_qortvapi_nwl_get_num_recs_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_nwl_get_rec_by_rec_idx(
            uint16_t nwl_id, uint16_t index,
            a_hidl_a_qortvapi_nwl_get_rec_by_rec_idx_cb _hidl_cb) override;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
