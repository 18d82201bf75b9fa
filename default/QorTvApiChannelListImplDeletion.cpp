// Deletion of channels and of whole lists, and the snapshots that bring back what was deleted.
#define LOG_TAG "QorTvApiChannelListImpl(service)"

#include "QorTvApiChannelListImpl.h"

#include "bridge.h"
#include "log.h"
#include "middleware/channellist.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

// Single channels.

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_delete_channel_without_lcn(
        uint16_t svl_id, uint16_t svl_rec_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_delete_channel_without_lcn(svl_id, svl_rec_id);
}

// The channels of a broadcast type, a satellite or a transport stream.

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

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_and_ts_lol_del_by_brdcst(
        uint16_t svl_id, uint8_t brdcst_type) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_and_ts_lol_del_by_brdcst(svl_id, brdcst_type);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_and_ts_del_by_brdcst(
        uint16_t svl_id, uint8_t brdcst_type) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_and_ts_del_by_brdcst(svl_id, brdcst_type);
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

// Whole lists.

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_svl_tsl_lol_clean(
        uint16_t svl_id, bool clean_tsl, bool clean_lol) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_svl_tsl_lol_clean(svl_id, clean_tsl, clean_lol);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_clean_lol(uint16_t lol_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_clean_lol(lol_id);
}

// Snapshots of a list.

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

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
