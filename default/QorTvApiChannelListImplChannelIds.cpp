// Channel ids: composing them and taking them apart. No list is read.
#define LOG_TAG "QorTvApiChannelListImpl(service)"

#include "QorTvApiChannelListImpl.h"

#include "bridge.h"
#include "log.h"
#include "middleware/channellist.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

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

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
