// Single channels and their order, the database lock, the list mode, the TV provider.
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

// Single channels: by id, the current one, selection.

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_channel_by_id(
        uint32_t channel_id, uint16_t svl_id,
        a_hidl_a_qortvapi_channellist_get_channel_by_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_channel_by_id, channel_id, svl_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_svl_rec_by_channel_id(
        uint16_t svl_id, uint32_t channel_id,
        a_hidl_a_qortvapi_channellist_get_svl_rec_by_channel_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_svl_rec_by_channel_id, svl_id, channel_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_channel_number(
        uint32_t channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_get_channel_number(channel_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_current_chan_id() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_get_current_chan_id();
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_current_channel(
        a_hidl_a_qortvapi_channellist_get_current_channel_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_current_channel);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_get_current_channel_from_nav(
        uint8_t window, a_hidl_a_qortvapi_channellist_get_current_channel_from_nav_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_get_current_channel_from_nav, window);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_set_current_channel(
        uint32_t channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_set_current_channel(channel_id);
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

// Order of the channels.

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_swap_channels(
        uint32_t channel_id, uint32_t other_channel_id, uint16_t svl_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_swap_channels(channel_id, other_channel_id, svl_id);
}

Return<int32_t>
QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_slide_for_one_part_channel_id(
        uint16_t svl_id, uint32_t channel_id, uint32_t new_channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_slide_for_one_part_channel_id(svl_id, channel_id, new_channel_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_one_channellist_arrange_before(
        uint16_t svl_id, uint16_t position) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_one_channellist_arrange_before(svl_id, position);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_one_channellist_add_channel_to_max(
        uint16_t svl_id, uint16_t svl_rec_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_one_channellist_add_channel_to_max(svl_id, svl_rec_id);
}

// The list mode and the version of the channel pump.

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

// Questions of the system's TV provider.

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

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
