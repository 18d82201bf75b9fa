// Queries of the channel lists: which channels match, how many, and their records.
#define LOG_TAG "QorTvApiChannelListImpl(service)"

#include "QorTvApiChannelListImpl.h"

#include "bridge.h"
#include "hhandler/hh_qortvapi_channellist.h"
#include "log.h"
#include "middleware/channellist.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

// By filter.

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

// By mask.

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

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_index_by_channel(
        uint32_t svl_id, uint32_t mask, uint32_t mask_value, uint32_t channel_id,
        a_hidl_a_qortvapi_channellist_get_index_by_channel_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_index_by_channel, svl_id, mask, mask_value,
                  channel_id);
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

// By broadcast type.

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

// By name or number.

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_number_by_name(
        uint32_t svl_id, uint32_t mask, uint32_t mask_value, const hidl_string& name) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_get_number_by_name(svl_id, mask, mask_value, name.c_str());
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_svl_rec_by_index_and_name(
        uint32_t svl_id, uint32_t mask, uint32_t mask_value, const hidl_string& name,
        uint32_t index, a_hidl_a_qortvapi_channellist_get_svl_rec_by_index_and_name_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_svl_rec_by_index_and_name, svl_id, mask,
                  mask_value, name.c_str(), index);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_is_exist_by_channel_number(
        uint16_t svl_id, uint32_t channel_number) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_is_exist_by_channel_number(svl_id, channel_number);
}

// By a block of conditions.

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

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
