// What comes with a service: captions, warnings, subtitles, events, tracks, teletext, metadata.
#define LOG_TAG "QorTvApiImpl(service)"

#include <algorithm>
#include <functional>

#include "QorTvApiImpl.h"
#include "bridge.h"
#include "hhandler/hh_qortvapi_dfmngr.h"
#include "hhandler/hh_qortvapi_event_atsc.h"
#include "hhandler/hh_qortvapi_ews_pa.h"
#include "hhandler/hh_qortvapi_teletext.h"
#include "log.h"
#include "middleware/audio_info.h"
#include "middleware/cc.h"
#include "middleware/dfmngr.h"
#include "middleware/eas.h"
#include "middleware/event_atsc.h"
#include "middleware/ewspa.h"
#include "middleware/mds.h"
#include "middleware/subtitle.h"
#include "middleware/teletext.h"
#include "middleware/videoinfo.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

/** Reads the audio records of which the middleware takes a count and reports it back; with a count
 * of 0 only the report is asked for. */
void answerAudioRecords(
        const std::function<void(const hidl_vec<uint8_t>&, uint32_t, int32_t)>& callback,
        int32_t (*function)(QORTVAPI_AUDIO_RECORD_T*, uint32_t*), uint32_t count,
        const char* method = __builtin_FUNCTION()) {
    uint32_t reported = count;
    if (count == 0) {
        const int32_t result = function(nullptr, &reported);
        callback({}, reported, result);
        return;
    }
    const CallerArray<QORTVAPI_AUDIO_RECORD_T> records(
            count, CallerArray<QORTVAPI_AUDIO_RECORD_T>::kRequired, method);
    const int32_t result = function(records.data(), &reported);
    callback(
            borrowedBytes(records.data(), records.held(reported) * sizeof(QORTVAPI_AUDIO_RECORD_T)),
            reported, result);
}

/** Reads a value of `size` bytes; the middleware finds in the buffer what fits of `data`. */
void answerData(const std::function<void(const hidl_vec<uint8_t>&, int32_t)>& callback,
                int32_t (*function)(uint32_t, void*, uint32_t), uint32_t id, uint32_t size,
                const hidl_vec<uint8_t>& data, const char* method = __builtin_FUNCTION()) {
    const CallerArray<uint8_t> buffer(size, CallerArray<uint8_t>::kRequired, method);
    std::copy_n(data.data(), std::min<size_t>(size, data.size()), buffer.data());
    const int32_t result = function(id, buffer.data(), size);
    callback(borrowedVector(buffer.data(), size), result);
}

}  // namespace

// Closed captions.

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_isdbcc_enable(bool enable) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_isdbcc_enable(enable);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_isdbcc_next_stream() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_isdbcc_next_stream();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_isdbcc_get_CCString() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_isdbcc_get_CCString();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_atsccc_enable(bool enable) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_atsccc_enable(enable);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_atsccc_next_stream() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_atsccc_next_stream();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_atsccc_get_CCString() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_atsccc_get_CCString();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_atsccc_set_visible(bool visible) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_atsccc_set_visible(visible);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_atsccc_demo_set(int32_t item, int32_t value) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_atsccc_demo_set(item, value);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_analogcc_enable(bool enable) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_analogcc_enable(enable);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_analogcc_next_stream() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_analogcc_next_stream();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_analogcc_get_CCString() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_analogcc_get_CCString();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_analogcc_set_visible(bool visible) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_analogcc_set_visible(visible);
}

// Emergency alerts and warning announcements.

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_eas_get_status(
        a_hidl_a_qortvapi_eas_get_status_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_eas_get_status);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_eas_set_android_launch_status(bool launched) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_eas_set_android_launch_status(launched);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_eas_get_android_launch_status() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_eas_get_android_launch_status();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_eas_set_android_exit_eas_no_change_channel_status(
        bool keep_channel) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_eas_set_android_exit_eas_no_change_channel_status(keep_channel);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_ewspa_set(uint8_t type, uint32_t id,
                                                       const hidl_vec<int32_t>& values,
                                                       a_hidl_a_qortvapi_ewspa_set_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_ewspa_set(type, id, values, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_ewspa_get(uint8_t type, uint32_t id,
                                                       const hidl_vec<int32_t>& values,
                                                       a_hidl_a_qortvapi_ewspa_get_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_ewspa_get(type, id, values, _hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_ewspa_create_monitor_inst(uint8_t type) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ewspa_create_monitor_inst(type);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_ewspa_delete_monitor_inst(uint8_t type) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ewspa_delete_monitor_inst(type);
}

// Channel logo, subtitles.

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_load_ch_logo(
        uint16_t original_network_id, uint16_t service_id, uint32_t frequency,
        a_hidl_a_qortvapi_load_ch_logo_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_load_ch_logo(original_network_id, service_id, frequency, _hidl_cb);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_subtitle_get_loop(
        const hidl_vec<int32_t>& values, a_hidl_a_qortvapi_subtitle_get_loop_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const auto count = static_cast<uint32_t>(values.size());
    const CallerArray<int32_t> loop(count);
    std::copy_n(values.data(), count, loop.data());
    const int32_t result = a_qortvapi_subtitle_get_loop(loop.data(), count);
    _hidl_cb(borrowedVector(loop.data(), count), result);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_subtitle_play(uint8_t track) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_subtitle_play(track);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_subtitle_set_next() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_subtitle_set_next();
}

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

// Audio of the current service.

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_audio_info_get_current_lanuage(
        uint32_t length, a_hidl_a_qortvapi_audio_info_get_current_lanuage_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const CallerText language(length);
    const int32_t result = a_qortvapi_audio_info_get_current_lanuage(language.data(), length);
    _hidl_cb(language.forClient(), result);
    return Void();
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_audio_info_set_next_lanuage() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_audio_info_set_next_lanuage();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_audio_info_get_available_record(
        uint32_t count, a_hidl_a_qortvapi_audio_info_get_available_record_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    answerAudioRecords(_hidl_cb, a_qortvapi_audio_info_get_available_record, count);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_get_current_audio_info(
        a_hidl_a_qortvapi_get_current_audio_info_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_get_current_audio_info);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_get_audio_apd_text(
        uint8_t index, a_hidl_a_qortvapi_get_audio_apd_text_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_get_audio_apd_text, index);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_get_current_ad_info(
        a_hidl_a_qortvapi_get_current_ad_info_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_get_current_ad_info);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_select_audio(uint32_t index) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_select_audio(index);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_select_main_sub_audio(uint32_t main_index,
                                                                      uint32_t sub_index) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_select_main_sub_audio(main_index, sub_index);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_select_default_audio(const hidl_string& window) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_select_default_audio(window.c_str());
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_audio_info_get_inputsource_available_record(
        uint32_t count, a_hidl_a_qortvapi_audio_info_get_inputsource_available_record_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    answerAudioRecords(_hidl_cb, a_qortvapi_audio_info_get_inputsource_available_record, count);
    return Void();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_get_inputsource_current_audio_info(
        a_hidl_a_qortvapi_get_inputsource_current_audio_info_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_get_inputsource_current_audio_info);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_audio_info_set_value(uint32_t id, uint32_t value) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_audio_info_set_value(id, value);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_audio_info_get_value(
        uint32_t id, a_hidl_a_qortvapi_audio_info_get_value_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_audio_info_get_value, id);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_audio_info_set_data(uint32_t id,
                                                                    const hidl_vec<uint8_t>& data,
                                                                    uint32_t size) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_audio_info_set_data(id, SentArray(data, size).data(), size);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_audio_info_get_data(
        uint32_t id, uint32_t size, const hidl_vec<uint8_t>& data,
        a_hidl_a_qortvapi_audio_info_get_data_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    answerData(_hidl_cb, a_qortvapi_audio_info_get_data, id, size, data);
    return Void();
}

// Video of the current service.

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_videoinfo_set_value(uint32_t id, uint32_t value) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_videoinfo_set_value(id, value);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_videoinfo_get_value(
        uint32_t id, a_hidl_a_qortvapi_videoinfo_get_value_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_videoinfo_get_value, id);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_videoinfo_set_data(uint32_t id,
                                                                   const hidl_vec<uint8_t>& data,
                                                                   uint32_t size) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_videoinfo_set_data(id, SentArray(data, size).data(), size);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_videoinfo_get_data(
        uint32_t id, uint32_t size, const hidl_vec<uint8_t>& data,
        a_hidl_a_qortvapi_videoinfo_get_data_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    answerData(_hidl_cb, a_qortvapi_videoinfo_get_data, id, size, data);
    return Void();
}

// Teletext.

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_teletext_get_cur_page(
        a_hidl_a_qortvapi_teletext_get_cur_page_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_teletext_get_cur_page);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_teletext_set_page(
        const HIDL_QORTVAPI_TTX_PAGE_ADDR_T& page) {
    TVAPI_DEBUG("%s", __func__);
    const QORTVAPI_TTX_PAGE_ADDR_T address = toMiddleware(page);
    return a_qortvapi_teletext_set_page(&address);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_teletext_is_top_stream() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_teletext_is_top_stream();
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_teletext_top_get_block_content(
        a_hidl_a_qortvapi_teletext_top_get_block_content_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_teletext_top_get_block_content);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_teletext_top_get_group_content(
        const HIDL_QORTVAPI_TTX_PAGE_ADDR_T& page,
        a_hidl_a_qortvapi_teletext_top_get_group_content_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const QORTVAPI_TTX_PAGE_ADDR_T address = toMiddleware(page);
    return answer(_hidl_cb, a_qortvapi_teletext_top_get_group_content, &address);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_teletext_top_get_page_content(
        const HIDL_QORTVAPI_TTX_PAGE_ADDR_T& page,
        a_hidl_a_qortvapi_teletext_top_get_page_content_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const QORTVAPI_TTX_PAGE_ADDR_T address = toMiddleware(page);
    return answer(_hidl_cb, a_qortvapi_teletext_top_get_page_content, &address);
}

Return<int32_t> QorTvApiImpl::a_hidl_a_qortvapi_teletext_get_ttx_rating_on() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_teletext_get_ttx_rating_on();
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
