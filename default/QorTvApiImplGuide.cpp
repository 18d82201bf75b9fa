// What a programme guide shows: ATSC events, channel logos, the metadata service.
#define LOG_TAG "QorTvApiImpl(service)"

#include "QorTvApiImpl.h"

#include "bridge.h"
#include "hhandler/hh_qortvapi_dfmngr.h"
#include "hhandler/hh_qortvapi_event_atsc.h"
#include "log.h"
#include "middleware/event_atsc.h"
#include "middleware/mds.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

// ATSC events.

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_event_atsc_load_events(
        uint32_t channel_id, int64_t start_time, uint32_t count,
        a_hidl_a_qortvapi_event_atsc_load_events_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const CallerArray<uint32_t> events(count);
    const int32_t result =
            a_qortvapi_event_atsc_load_events(channel_id, start_time, events.data(), count);
    _hidl_cb(borrowedVector(events.data(), count), result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_event_atsc_get_details_info(
        uint32_t event, uint32_t size, a_hidl_a_qortvapi_event_atsc_get_details_info_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const CallerArray<char> details(size);  // the NUL is one of them
    const int32_t result = a_qortvapi_event_atsc_get_details_info(event, details.data(), size);
    _hidl_cb(borrowedText(details.data()), result);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_event_atsc_freeEvent(uint32_t event) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_event_atsc_freeEvent(event);
}

Return<bool> QorTvApiImpl::a_hidl_a_qortvapi_event_atsc_check_block(uint32_t channel_id,
                                                                    uint32_t event) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_event_atsc_check_block(channel_id, event) != 0;
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_event_atsc_load_events_by_EIT(
        uint32_t channel_id, uint16_t eit,
        a_hidl_a_qortvapi_event_atsc_load_events_by_EIT_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_event_atsc_load_events_by_EIT, channel_id, eit);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_event_atsc_get_event_number_in_EIT(
        uint32_t event_list, a_hidl_a_qortvapi_event_atsc_get_event_number_in_EIT_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_event_atsc_get_event_number_in_EIT, event_list);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_event_atsc_get_detail_info_by_index(
        uint32_t event_list, uint16_t index, uint32_t length,
        a_hidl_a_qortvapi_event_atsc_get_detail_info_by_index_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const CallerText details(length);
    const int32_t result = a_qortvapi_event_atsc_get_detail_info_by_index(event_list, index,
                                                                          details.data(), length);
    _hidl_cb(details.forClient(), result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_event_atsc_check_EIT_status(
        uint32_t channel_id, uint8_t groups,
        a_hidl_a_qortvapi_event_atsc_check_EIT_status_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const CallerArray<uint32_t> status(groups, CallerArray<uint32_t>::kOptional);
    if (status.data() == nullptr) {
        TVAPI_LOG("peit_group_status_array Alloc memory fail!!!!\n");
        return Void();
    }
    uint8_t reported = groups;
    uint32_t event_list = 0;
    const int32_t result = a_qortvapi_event_atsc_check_EIT_status(channel_id, status.data(),
                                                                  &reported, &event_list);
    _hidl_cb(borrowedVector(status.data(), status.held(reported)), reported, event_list, result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_event_atsc_getEvent_detail_len_by_index(
        uint32_t event_list, uint16_t index,
        a_hidl_a_qortvapi_event_atsc_getEvent_detail_len_by_index_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_event_atsc_getEvent_detail_len_by_index, event_list, index);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_event_atsc_getEvent_general(
        uint32_t event, a_hidl_a_qortvapi_event_atsc_getEvent_general_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    QORTVAPI_EVENT_ATSC_INFO_T info{};
    QORTVAPI_EVENT_ATSC_TEXT_T text{};
    const int32_t result = a_qortvapi_event_atsc_getEvent_general(event, &info, &text);
    _hidl_cb(toInterface(info, text), result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_event_atsc_getEvent_general_by_index(
        uint32_t event_list, uint16_t index,
        a_hidl_a_qortvapi_event_atsc_getEvent_general_by_index_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    QORTVAPI_EVENT_ATSC_INFO_T info{};
    QORTVAPI_EVENT_ATSC_TEXT_T text{};
    const int32_t result =
            a_qortvapi_event_atsc_getEvent_general_by_index(event_list, index, &info, &text);
    _hidl_cb(toInterface(info, text), result);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_event_atsc_get_rating_map_by_index(
        uint32_t event_list, uint16_t index, const HIDL_T_RATING_MAP_TO_G& rating_map,
        a_hidl_a_qortvapi_event_atsc_get_rating_map_by_index_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    QORTVAPI_EVENT_ATSC_RATING_MAP_T record = toMiddleware(rating_map);
    const int32_t result =
            a_qortvapi_event_atsc_get_rating_map_by_index(event_list, index, &record);
    _hidl_cb(toInterface(record), result);
    return Void();
}

// Channel logo.

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_load_ch_logo(
        uint16_t original_network_id, uint16_t service_id, uint32_t frequency,
        a_hidl_a_qortvapi_load_ch_logo_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_load_ch_logo(original_network_id, service_id, frequency, _hidl_cb);
    return Void();
}

// Metadata service.

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_mds_fvpMtdtOperator(const hidl_string& message) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_mds_fvpMtdtOperator(message.c_str());
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_mds_getValue(
        const hidl_string& message, int32_t item, a_hidl_a_qortvapi_mds_getValue_cb _hidl_cb) {
    TVAPI_DEBUG("Enter a_hidl_a_qortvapi_mds_getValue ,s_msg_data :%s", message.c_str());
    const CallerArray<char> value(5120);
    const int32_t result = a_qortvapi_mds_getValue(message.c_str(), item, value.data());
    _hidl_cb(borrowedText(value.data()), result);
    TVAPI_DEBUG("s_getValue = %s, i4_ret = %d\n", value.data(), result);
    return Void();
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
