// The records of services and transport streams: list handles, reads one by one and in bulk into
// shared memory, writes.
#define LOG_TAG "QorTvApiChannelListImpl(service)"

#include "QorTvApiChannelListImpl.h"

#include "bridge.h"
#include "hhandler/hh_qortvapi_channellist.h"
#include "log.h"
#include "middleware/channellist.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

// List handles.

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

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_svl_info_by_brdcast_medium(
        uint8_t brdcst_medium,
        a_hidl_a_qortvapi_channellist_get_svl_info_by_brdcast_medium_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_svl_info_by_brdcast_medium, brdcst_medium);
}

// Reads.

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

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_svl_rec_id(
        uint16_t svl_id, uint16_t svl_rec_id,
        a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_svl_rec_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_svl_tsl_rec_by_svl_rec_id, svl_id,
                  svl_rec_id);
}

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

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_channel_rf_info(
        uint16_t svl_id, uint32_t channel_id, uint32_t item) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_get_channel_rf_info(svl_id, channel_id, item);
}

// Writes.

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info(
        uint32_t svl_id, uint32_t flags, uint16_t tsl_id, uint32_t svl_handle, uint32_t tsl_handle,
        uint32_t operation, const hidl_vec<uint8_t>& svl_rec, const hidl_vec<uint8_t>& tsl_rec) {
    TVAPI_DEBUG("%s", __func__);
    return hh_a_qortvapi_channellist_set_svl_tsl_rec_info(
            svl_id, flags, tsl_id, svl_handle, tsl_handle, operation,
            InputImage<SVL_REC_T>(svl_rec), InputImage<TSL_REC_T>(tsl_rec));
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

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
