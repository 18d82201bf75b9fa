#define LOG_TAG "QorTvApiChannelListImpl(service)"

#include "QorTvApiChannelListImpl.h"

#include "bridge.h"
#include "hhandler/hh_qortvapi_channellist.h"
#include "log.h"
#include "middleware/channellist.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

// The database lock: holds the lists still while a client makes several calls.

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_lock_database(
        uint32_t svl_id, uint32_t flags) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_lock_database(svl_id, flags);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_unlock_database(
        uint32_t svl_id, uint32_t flags) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_unlock_database(svl_id, flags);
}

// Single channels: by id, by handle, the current one; selection.

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_channel_by_id(
        uint32_t channel_id, uint16_t svl_id,
        a_hidl_a_qortvapi_channellist_get_channel_by_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_channel_by_id, channel_id, svl_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_current_chan_id() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_get_current_chan_id();
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_svl_rec_by_channel_id(
        uint16_t svl_id, uint32_t channel_id,
        a_hidl_a_qortvapi_channellist_get_svl_rec_by_channel_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_svl_rec_by_channel_id, svl_id, channel_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_current_channel(
        a_hidl_a_qortvapi_channellist_get_current_channel_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_current_channel);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_set_current_channel(
        uint32_t channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_set_current_channel(channel_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_delete_channel_without_lcn(
        uint16_t svl_id, uint16_t svl_rec_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_delete_channel_without_lcn(svl_id, svl_rec_id);
}

Return<int32_t>
QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_slide_for_one_part_channel_id(
        uint16_t svl_id, uint32_t channel_id, uint32_t new_channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_slide_for_one_part_channel_id(svl_id, channel_id, new_channel_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_set_current_channel_by_svlId(
        uint16_t svl_id, uint32_t channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_set_current_channel_by_svlId(svl_id, channel_id);
}

Return<int32_t>
QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_set_2nd_current_channel_by_svlId(
        uint16_t svl_id, uint32_t channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_set_2nd_current_channel_by_svlId(svl_id, channel_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_current_channel_from_nav(
        uint8_t window, a_hidl_a_qortvapi_channellist_get_current_channel_from_nav_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_current_channel_from_nav, window);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_channel_number(
        uint32_t channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_get_channel_number(channel_id);
}

// List handles and bulk reads into shared memory; record writes.

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_svl_handle_by_svl_id(
        uint16_t svl_id, a_hidl_a_qortvapi_channellist_get_svl_handle_by_svl_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_svl_handle_by_svl_id, svl_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_tsl_handle_by_svl_id(
        uint16_t svl_id, a_hidl_a_qortvapi_channellist_get_tsl_handle_by_svl_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_tsl_handle_by_svl_id, svl_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_handle(
        uint32_t svl_handle, uint32_t tsl_handle, uint16_t index,
        a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_handle_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_svl_tsl_rec_by_handle, svl_handle,
                  tsl_handle, index);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_handle_ex(
        uint32_t svl_handle, uint32_t tsl_handle, uint16_t count, const hidl_handle& svl_region,
        const hidl_handle& tsl_region,
        a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_handle_ex_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_channellist_get_svl_tsl_rec_by_handle_ex(svl_handle, tsl_handle, count,
                                                           svl_region, tsl_region, _hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_index_ex(
        uint16_t svl_id, uint32_t lock_svl_id, uint32_t lock_flags, uint8_t fav_list, uint32_t mask,
        uint32_t mask_value, uint32_t start, uint16_t count, uint16_t wrap,
        const hidl_handle& svl_region, const hidl_handle& tsl_region) {
    TVAPI_DEBUG("%s", __func__);
    return hh_a_qortvapi_channellist_get_svl_tsl_rec_by_index_ex(
            svl_id, lock_svl_id, lock_flags, fav_list, mask, mask_value, start, count, wrap,
            svl_region, tsl_region);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info(
        uint32_t svl_id, uint32_t flags, uint16_t tsl_id, uint32_t svl_handle, uint32_t tsl_handle,
        uint32_t operation, const hidl_vec<uint8_t>& svl_rec, const hidl_vec<uint8_t>& tsl_rec) {
    TVAPI_DEBUG("%s", __func__);
    return hh_a_qortvapi_channellist_set_svl_tsl_rec_info(
            svl_id, flags, tsl_id, svl_handle, tsl_handle, operation,
            InputImage<SVL_REC_T>(svl_rec), InputImage<TSL_REC_T>(tsl_rec));
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_channel_rf_info(
        uint16_t svl_id, uint32_t channel_id, uint32_t item) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_get_channel_rf_info(svl_id, channel_id, item);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_svl_info_by_brdcast_medium(
        uint8_t brdcst_medium,
        a_hidl_a_qortvapi_channellist_get_svl_info_by_brdcast_medium_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_svl_info_by_brdcast_medium, brdcst_medium);
}

// Order, favourites and filtered lists.

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_swap_channels(
        uint32_t channel_id, uint32_t other_channel_id, uint16_t svl_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_swap_channels(channel_id, other_channel_id, svl_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_swap_favorites(
        uint8_t fav_list, uint32_t channel_id, uint32_t other_channel_id, uint16_t svl_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_swap_favorites(fav_list, channel_id, other_channel_id, svl_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_set_favorites_by_id(
        uint8_t fav_list, uint32_t svl_id, uint32_t channel_id, uint32_t position, uint8_t window,
        bool favourite, a_hidl_a_qortvapi_channellist_set_favorites_by_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_set_favorites_by_id, fav_list, svl_id,
                  channel_id, position, window, favourite);
}

Return<void>
QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type(
        uint32_t svl_id, uint32_t flags, uint32_t brdcst_type, uint32_t start_index, uint32_t count,
        const hidl_handle& svl_region, const hidl_handle& tsl_region,
        a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type(
            svl_id, flags, brdcst_type, start_index, count, svl_region, tsl_region, _hidl_cb);
    return Void();
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_filter(
        int32_t svl_id, int32_t flags, int32_t channel_id, bool wrap, int32_t filter,
        int32_t prev_count, int32_t next_count, const hidl_handle& svl_region,
        const hidl_handle& tsl_region,
        a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_filter_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_channellist_get_svl_tsl_recs_by_filter(svl_id, flags, channel_id, wrap, filter,
                                                         prev_count, next_count, svl_region,
                                                         tsl_region, _hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_number_by_filter(
        uint32_t svl_id, uint32_t filter) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_get_number_by_filter(svl_id, filter);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_prev_channel_id_by_filter(
        uint32_t svl_id, uint32_t filter, uint32_t channel_id, uint32_t steps,
        a_hidl_a_qortvapi_channellist_get_prev_channel_id_by_filter_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_prev_channel_id_by_filter, svl_id, filter,
                  channel_id, steps);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favoritelist_get_crnt_fav_lst_by_filter(
        a_hidl_a_qortvapi_favoritelist_get_crnt_fav_lst_by_filter_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_favoritelist_get_crnt_fav_lst_by_filter);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favoritelist_add_favoritelist_channel() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favoritelist_add_favoritelist_channel();
}

Return<int32_t>
QorTvApiChannelListImpl::a_hidl_a_qortvapi_favoritelist_add_favoritelist_channel_by_index(
        uint16_t index) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favoritelist_add_favoritelist_channel_by_index(index);
}

Return<int32_t> QorTvApiChannelListImpl::
        a_hidl_a_qortvapi_favoritelist_remove_favoritelist_channel_by_index_without_show_fav_icon(
                uint16_t index) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favoritelist_remove_favoritelist_channel_by_index_without_show_fav_icon(
            index);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favoritelist_remove_favoritelist_channel(
        uint16_t index) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favoritelist_remove_favoritelist_channel(index);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favoritelist_fs_store() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favoritelist_fs_store();
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favoritelist_swap_favoritelist_by_index(
        uint16_t index, uint16_t other_index) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favoritelist_swap_favoritelist_by_index(index, other_index);
}

Return<int32_t>
QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info_without_notify(
        uint32_t svl_id, uint32_t flags, uint16_t tsl_id, uint32_t svl_handle, uint32_t tsl_handle,
        uint32_t operation, const hidl_vec<uint8_t>& svl_rec, const hidl_vec<uint8_t>& tsl_rec) {
    TVAPI_DEBUG("%s", __func__);
    return hh_a_qortvapi_channellist_set_svl_tsl_rec_info_without_notify(
            svl_id, flags, tsl_id, svl_handle, tsl_handle, operation,
            InputImage<SVL_REC_T>(svl_rec), InputImage<TSL_REC_T>(tsl_rec));
}

// Queries by block, mask, name, broadcast type; deletion.

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_interface(
        uint32_t operation, const hidl_vec<uint8_t>& block, uint32_t argument, uint64_t data,
        uint32_t data_size) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_interface(operation, InputImage<CHANNEL_IF_BLOCK_T>(block),
                                            argument, data, data_size);
}

Return<int32_t>
QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_channel_number_by_query_info(
        uint32_t svl_id, uint32_t query_type, uint16_t tsl_id,
        const hidl_vec<uint8_t>& query_info) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_get_channel_number_by_query_info(
            svl_id, query_type, tsl_id, InputImage<CHANNEL_QUERY_T>(query_info));
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_channellist_by_query_info(
        uint32_t svl_id, uint32_t query_type, uint16_t tsl_id, const hidl_vec<uint8_t>& query_info,
        uint32_t index, uint64_t data,
        a_hidl_a_qortvapi_channellist_get_channellist_by_query_info_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_channellist_by_query_info, svl_id,
                  query_type, tsl_id, InputImage<CHANNEL_QUERY_T>(query_info), index, data);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_svl_tsl_lol_clean(
        uint16_t svl_id, bool clean_tsl, bool clean_lol) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_svl_tsl_lol_clean(svl_id, clean_tsl, clean_lol);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_and_ts_lol_del_by_brdcst(
        uint16_t svl_id, uint8_t brdcst_type) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_and_ts_lol_del_by_brdcst(svl_id, brdcst_type);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_number_by_mask(
        uint32_t svl_id, uint32_t flags, uint32_t mask, uint32_t mask_value, uint32_t attr_mask,
        uint32_t attr_value) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_get_number_by_mask(svl_id, flags, mask, mask_value, attr_mask,
                                                     attr_value);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_svl_rec_by_index(
        uint32_t svl_id, uint32_t mask, uint32_t mask_value, uint32_t index,
        a_hidl_a_qortvapi_channellist_get_svl_rec_by_index_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_svl_rec_by_index, svl_id, mask, mask_value,
                  index);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_number_by_name(
        uint32_t svl_id, uint32_t mask, uint32_t mask_value, const hidl_string& name) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_get_number_by_name(svl_id, mask, mask_value, name.c_str());
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_index_by_channel(
        uint32_t svl_id, uint32_t mask, uint32_t mask_value, uint32_t channel_id,
        a_hidl_a_qortvapi_channellist_get_index_by_channel_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_index_by_channel, svl_id, mask, mask_value,
                  channel_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_svl_rec_by_index_and_name(
        uint32_t svl_id, uint32_t mask, uint32_t mask_value, const hidl_string& name,
        uint32_t index, a_hidl_a_qortvapi_channellist_get_svl_rec_by_index_and_name_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_svl_rec_by_index_and_name, svl_id, mask,
                  mask_value, name.c_str(), index);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_mask(
        uint32_t svl_id, uint32_t flags, uint32_t channel_id, uint32_t mask, uint32_t mask_value,
        uint32_t attr_mask, uint32_t attr_value, int32_t direction, uint32_t start_index,
        uint32_t count, const hidl_handle& svl_region, const hidl_handle& tsl_region) {
    TVAPI_DEBUG("%s", __func__);
    return hh_a_qortvapi_channellist_get_svl_tsl_recs_by_mask(
            svl_id, flags, channel_id, mask, mask_value, attr_mask, attr_value, direction,
            start_index, count, svl_region, tsl_region);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_delete_by_brdcst(
        uint16_t svl_id, uint8_t brdcst_type) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_delete_by_brdcst(svl_id, brdcst_type);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_delete_by_satl(
        uint16_t svl_id, uint32_t satl_rec_id, bool keep_favourites) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_delete_by_satl(svl_id, satl_rec_id, keep_favourites);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_clean_lol(uint16_t lol_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_clean_lol(lol_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_and_ts_del_by_brdcst(
        uint16_t svl_id, uint8_t brdcst_type) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_and_ts_del_by_brdcst(svl_id, brdcst_type);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_is_exist_by_channel_number(
        uint16_t svl_id, uint32_t channel_number) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_is_exist_by_channel_number(svl_id, channel_number);
}

// Snapshots of a list, records by record id.

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_create_snapshot(
        uint16_t svl_id, a_hidl_a_qortvapi_channellist_create_snapshot_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_create_snapshot, svl_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_restore_snapshot(
        int32_t snapshot_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_restore_snapshot(snapshot_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_free_snapshot(
        int32_t snapshot_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_free_snapshot(snapshot_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_svl_rec_id(
        uint16_t svl_id, uint16_t svl_rec_id,
        a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_svl_rec_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_svl_tsl_rec_by_svl_rec_id, svl_id,
                  svl_rec_id);
}

Return<int32_t>
QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_del_tsl_svl_rec_by_tsl_rec_id(
        uint16_t svl_id, uint16_t tsl_rec_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_del_tsl_svl_rec_by_tsl_rec_id(svl_id, tsl_rec_id);
}

Return<int32_t>
QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_del_tsl_svl_rec_by_satl_rec_id(
        uint16_t svl_id, uint16_t satl_rec_id, bool keep_favourites) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_del_tsl_svl_rec_by_satl_rec_id(svl_id, satl_rec_id,
                                                                 keep_favourites);
}

// What the TV provider of the system asks for.

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_tvprovider_get_all_svlid(
        const hidl_handle& id_region, uint16_t count,
        a_hidl_a_qortvapi_tvprovider_get_all_svlid_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_tvprovider_get_all_svlid(id_region, count, _hidl_cb);
    return Void();
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_tvprovider_get_all_svlid_count(
        a_hidl_a_qortvapi_tvprovider_get_all_svlid_count_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_tvprovider_get_all_svlid_count);
}

// Favourite lists.

Return<void>
QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_get_svl_handle_by_favorite_list_idx(
        uint16_t svl_id, uint8_t fav_list,
        a_hidl_a_qortvapi_favorite_list_get_svl_handle_by_favorite_list_idx_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_favorite_list_get_svl_handle_by_favorite_list_idx, svl_id,
                  fav_list);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_add_tail(
        uint16_t svl_id, uint8_t fav_list, uint32_t channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favorite_list_add_tail(svl_id, fav_list, channel_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_add_all(
        uint16_t svl_id, uint8_t fav_list, uint32_t mask, uint32_t mask_value) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favorite_list_add_all(svl_id, fav_list, mask, mask_value);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_delete(
        uint16_t svl_id, uint8_t fav_list, uint32_t channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favorite_list_delete(svl_id, fav_list, channel_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_del_all(
        uint16_t svl_id, uint8_t fav_list, uint32_t mask, uint32_t mask_value) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favorite_list_del_all(svl_id, fav_list, mask, mask_value);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_swap_by_channel_id(
        uint16_t svl_id, uint8_t fav_list, uint32_t channel_id, uint32_t other_channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favorite_list_swap_by_channel_id(svl_id, fav_list, channel_id,
                                                       other_channel_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_number_by_mask(
        uint16_t svl_id, uint8_t fav_list, uint32_t mask, uint32_t mask_value) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favorite_list_number_by_mask(svl_id, fav_list, mask, mask_value);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_get_svl_rec_by_index(
        uint16_t svl_id, uint8_t fav_list, uint32_t mask, uint32_t mask_value, uint32_t index,
        a_hidl_a_qortvapi_favorite_list_get_svl_rec_by_index_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_favorite_list_get_svl_rec_by_index, svl_id, fav_list, mask,
                  mask_value, index);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_get_svl_tsl_rec_by_index(
        uint16_t svl_id, uint8_t fav_list, uint32_t mask, uint32_t mask_value, uint32_t index,
        a_hidl_a_qortvapi_favorite_list_get_svl_tsl_rec_by_index_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_favorite_list_get_svl_tsl_rec_by_index, svl_id, fav_list,
                  mask, mask_value, index);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_get_index_by_channel(
        uint16_t svl_id, uint8_t fav_list, uint32_t mask, uint32_t mask_value, uint32_t channel_id,
        a_hidl_a_qortvapi_favorite_list_get_index_by_channel_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_favorite_list_get_index_by_channel, svl_id, fav_list, mask,
                  mask_value, channel_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_insert_move(
        uint16_t svl_id, uint8_t fav_list, uint32_t mask, uint32_t mask_value, uint32_t channel_id,
        uint32_t position) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favorite_list_insert_move(svl_id, fav_list, mask, mask_value, channel_id,
                                                position);
}

// Further handles, the one-list mode, the channel pump.

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_satl_handle_by_satl_id(
        uint16_t satl_id, a_hidl_a_qortvapi_channellist_get_satl_handle_by_satl_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_satl_handle_by_satl_id, satl_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_lol_handle_by_lol_id(
        uint16_t lol_id, a_hidl_a_qortvapi_channellist_get_lol_handle_by_lol_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_lol_handle_by_lol_id, lol_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_num_by_mask_and_brdcst(
        uint32_t svl_id, uint32_t mask, uint32_t mask_value, uint8_t brdcst_type) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_get_num_by_mask_and_brdcst(svl_id, mask, mask_value, brdcst_type);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_svl_rec_by_mask_and_brdcst(
        uint32_t svl_id, uint32_t mask, uint32_t mask_value, uint32_t index, uint8_t brdcst_type,
        a_hidl_a_qortvapi_channellist_get_svl_rec_by_mask_and_brdcst_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_svl_rec_by_mask_and_brdcst, svl_id, mask,
                  mask_value, index, brdcst_type);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_one_channellist_arrange_before(
        uint16_t svl_id, uint16_t position) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_one_channellist_arrange_before(svl_id, position);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_getChannelListMode(
        a_hidl_a_qortvapi_channellist_getChannelListMode_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_getChannelListMode);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_getChannelPumpVer(
        int32_t svl_id, a_hidl_a_qortvapi_channellist_getChannelPumpVer_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_getChannelPumpVer, svl_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_setChannelPumpVer(
        uint32_t svl_id, uint32_t version) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_setChannelPumpVer(svl_id, version);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_one_channellist_add_channel_to_max(
        uint16_t svl_id, uint16_t svl_rec_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_one_channellist_add_channel_to_max(svl_id, svl_rec_id);
}

// Channel ids: making them and taking them apart. No list is read.

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_gen_channel_id(
        uint32_t major, uint32_t minor, uint32_t index) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_gen_channel_id(major, minor, index);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_gen_one_part_channel_id(
        uint32_t number, uint32_t index) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_gen_one_part_channel_id(number, index);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_gen_non_psip_channel_id(
        uint32_t physical, uint32_t program, uint32_t index) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_gen_non_psip_channel_id(physical, program, index);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_is_one_part_channel_id(
        uint32_t channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_is_one_part_channel_id(channel_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_is_non_psip_channel_id(
        uint32_t channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_is_non_psip_channel_id(channel_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_major_channel_num(
        uint32_t channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_get_major_channel_num(channel_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_minor_channel_num(
        uint32_t channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_get_minor_channel_num(channel_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_channel_index(
        uint32_t channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_get_channel_index(channel_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_max_channel_index() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_max_channel_index();
}

Return<int32_t>
QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_ntsc_cable_last_channel() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_get_ntsc_cable_last_channel();
}

Return<int32_t>
QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_cqam_scan_last_channel() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_get_cqam_scan_last_channel();
}

// Raw records by list handle.

Return<void> QorTvApiChannelListImpl::a_hidl_c_svl_get_rec(uint32_t svl_handle, uint16_t svl_rec_id,
                                                           a_hidl_c_svl_get_rec_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, c_svl_get_rec, svl_handle, svl_rec_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_c_tsl_get_rec(uint32_t tsl_handle, uint16_t tsl_rec_id,
                                                           a_hidl_c_tsl_get_rec_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, c_tsl_get_rec, tsl_handle, tsl_rec_id);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
