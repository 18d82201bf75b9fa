// The transport-stream and network lists.
#define LOG_TAG "QorTvApiChannelListImpl(service)"

#include "QorTvApiChannelListImpl.h"

#include "bridge.h"
#include "hhandler/hh_qortvapi_channellist.h"
#include "log.h"
#include "middleware/channellist.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

// Transport-stream list.

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_tsl_clean(uint16_t tsl_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_tsl_clean(tsl_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_tsl_del_rec(uint16_t tsl_id,
                                                                       uint16_t tsl_rec_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_tsl_del_rec(tsl_id, tsl_rec_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_tsl_qry_rec_id(
        uint16_t tsl_id, uint8_t index, a_hidl_a_qortvapi_tsl_qry_rec_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_tsl_qry_rec_id, tsl_id, index);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id(
        uint16_t tsl_id, uint16_t satl_rec_id, uint16_t start, uint16_t count, uint16_t total,
        a_hidl_a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id(tsl_id, satl_rec_id, start, count, total,
                                                  _hidl_cb);
    return Void();
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_tsl_get_tsl_num_rec_by_satl_rec_id(
        uint16_t tsl_id, uint16_t satl_rec_id,
        a_hidl_a_qortvapi_tsl_get_tsl_num_rec_by_satl_rec_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_tsl_get_tsl_num_rec_by_satl_rec_id, tsl_id, satl_rec_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_tsl_get_rec(
        uint16_t tsl_id, uint16_t tsl_rec_id, a_hidl_a_qortvapi_tsl_get_rec_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_tsl_get_rec, tsl_id, tsl_rec_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_tsl_update_rec(
        uint16_t tsl_id, const hidl_vec<uint8_t>& tsl_rec, bool force) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_tsl_update_rec(tsl_id, InputImage<TSL_REC_T>(tsl_rec), force);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_tsl_get_num_recs(
        uint16_t tsl_id, a_hidl_a_qortvapi_tsl_get_num_recs_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_tsl_get_num_recs, tsl_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_tsl_get_rec_by_rec_idx(
        uint16_t tsl_id, uint16_t index, a_hidl_a_qortvapi_tsl_get_rec_by_rec_idx_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_tsl_get_rec_by_rec_idx, tsl_id, index);
}

// Network list.

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_nwl_clean(uint16_t nwl_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_nwl_clean(nwl_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_nwl_del_rec(uint16_t nwl_id,
                                                                       uint16_t nwl_rec_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_nwl_del_rec(nwl_id, nwl_rec_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_nwl_qry_rec_id(
        uint16_t nwl_id, uint8_t index, a_hidl_a_qortvapi_nwl_qry_rec_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_nwl_qry_rec_id, nwl_id, index);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id(
        uint16_t nwl_id, uint16_t satl_rec_id, uint16_t start, uint16_t count, uint16_t total,
        a_hidl_a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id(nwl_id, satl_rec_id, start, count, total,
                                                  _hidl_cb);
    return Void();
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_nwl_get_nwl_num_rec_by_satl_rec_id(
        uint16_t nwl_id, uint16_t satl_rec_id,
        a_hidl_a_qortvapi_nwl_get_nwl_num_rec_by_satl_rec_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_nwl_get_nwl_num_rec_by_satl_rec_id, nwl_id, satl_rec_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_nwl_get_rec(
        uint16_t nwl_id, uint16_t nwl_rec_id, a_hidl_a_qortvapi_nwl_get_rec_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_nwl_get_rec, nwl_id, nwl_rec_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_nwl_update_rec(
        uint16_t nwl_id, const hidl_vec<uint8_t>& nwl_rec, bool force) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_nwl_update_rec(nwl_id, InputImage<NWL_REC_T>(nwl_rec), force);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_nwl_get_num_recs(
        uint16_t nwl_id, a_hidl_a_qortvapi_nwl_get_num_recs_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_nwl_get_num_recs, nwl_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_nwl_get_rec_by_rec_idx(
        uint16_t nwl_id, uint16_t index, a_hidl_a_qortvapi_nwl_get_rec_by_rec_idx_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_nwl_get_rec_by_rec_idx, nwl_id, index);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
