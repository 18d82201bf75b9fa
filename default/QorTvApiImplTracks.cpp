// The audio and video of the current service.
#define LOG_TAG "QorTvApiImpl(service)"

#include "QorTvApiImpl.h"

#include <algorithm>
#include <functional>

#include "bridge.h"
#include "log.h"
#include "middleware/audio_info.h"
#include "middleware/videoinfo.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

/** Answers with at most `count` audio records that `function` writes, and with the number of
 * records that it reports. With a `count` of 0 only that number is asked for. */
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

/** Answers with the `size` bytes that `function` writes. Its buffer holds the beginning of `data`
 * before, as far as that fits. */
void answerData(const std::function<void(const hidl_vec<uint8_t>&, int32_t)>& callback,
                int32_t (*function)(uint32_t, void*, uint32_t), uint32_t id, uint32_t size,
                const hidl_vec<uint8_t>& data, const char* method = __builtin_FUNCTION()) {
    const CallerArray<uint8_t> buffer(size, CallerArray<uint8_t>::kRequired, method);
    std::copy_n(data.data(), std::min<size_t>(size, data.size()), buffer.data());
    const int32_t result = function(id, buffer.data(), size);
    callback(borrowedVector(buffer.data(), size), result);
}

}  // namespace

// Audio.

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

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_audio_info_get_inputsource_available_record(
        uint32_t count, a_hidl_a_qortvapi_audio_info_get_inputsource_available_record_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    answerAudioRecords(_hidl_cb, a_qortvapi_audio_info_get_inputsource_available_record, count);
    return Void();
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

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_get_current_audio_info(
        a_hidl_a_qortvapi_get_current_audio_info_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_get_current_audio_info);
}

Return<void> QorTvApiImpl::a_hidl_a_qortvapi_get_inputsource_current_audio_info(
        a_hidl_a_qortvapi_get_inputsource_current_audio_info_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_get_inputsource_current_audio_info);
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

// Video.

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

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
