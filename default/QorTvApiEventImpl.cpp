#define LOG_TAG "QorTvApiEventImpl(service)"

#include "QorTvApiEventImpl.h"

#include <cstring>
#include <functional>
#include <memory>
#include <new>

#include "bridge.h"
#include "hhandler/hh_qortvapi_event.h"
#include "log.h"
#include "middleware/event.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

/** Writes a failure line for `method`, whether debugging is on or not. */
void logFailure(const char* text, const char* method, int line) {
    __android_log_print(ANDROID_LOG_DEBUG, LOG_TAG, "<%s:%d> %s\n", method, line, text);
}

/** Returns whether there are channels, and as many as the client says; otherwise logs the reason
 * for `method`. */
bool isWindow(const hidl_vec<uint32_t>& channel_ids, uint16_t count,
              const char* method = __builtin_FUNCTION(), int line = __builtin_LINE()) {
    if (channel_ids.size() == 0) {
        logFailure("Alloc memory fail!!!!", method, line);
        return false;
    }
    if (channel_ids.size() != count) {
        logFailure("channel id number not match!!!!", method, line);
        return false;
    }
    return true;
}

using BlockAnswer = std::function<void(const hidl_vec<uint8_t>&, int32_t)>;

/**
 * Answers with the `size` bytes that `function` writes about an event. The block is deliberately
 * not zeroed: the client knows from the layout which bytes the middleware wrote, and by the
 * contract the bytes after those have no defined value. If memory is short, that is logged for
 * `method` and there is no answer.
 */
Return<void> answerBlock(const BlockAnswer& callback,
                         int32_t (*function)(uint32_t, uint32_t, uint8_t*, uint32_t),
                         uint32_t channel_id, uint32_t event_id, uint32_t size,
                         const char* method = __builtin_FUNCTION(), int line = __builtin_LINE()) {
    const std::unique_ptr<uint8_t[]> block(new (std::nothrow) uint8_t[size]);
    if (block == nullptr) {
        logFailure("allocte memory fail !!!!", method, line);
        return Void();
    }
    const int32_t result = function(channel_id, event_id, block.get(), size);
    callback(borrowedVector(block.get(), size), result);
    return Void();
}

QORTVAPI_EVENT_QUERY_PARAMETER_T toMiddleware(
        const HIDL_QORTVAPI_EVENT_QUERY_PARAMETER_T& parameter) {
    QORTVAPI_EVENT_QUERY_PARAMETER_T result = {};
    result.ui4_sources = parameter.sources;
    result.ui4_days = parameter.days;
    result.ui4_language = parameter.language;
    result.ui4_options = parameter.options;
    return result;
}

/**
 * Copies as many bytes from the first genre on as the client counts genres, even if these are more
 * than the eight places: both records have the same layout, so that the fields after the genres are
 * copied to the same fields. A count that leads beyond the end of the records ends the process.
 */
QORTVAPI_QUERY_FILTER_INFORMATION_T toMiddleware(
        const HIDL_QORTVAPI_QUERY_FILTER_INFORMATION_T& filter, const char* method) {
    QORTVAPI_QUERY_FILTER_INFORMATION_T result = {};
    result.ui2_mask = filter.mask;
    result.ui4_minimum_duration = filter.minimum_duration;
    result.i8_start_time = filter.start_time;
    result.i8_end_time = filter.end_time;
    result.ui1_running_status = filter.running_status;
    result.ui1_genre_count = filter.genre_count;
    constexpr size_t kGenres = offsetof(QORTVAPI_QUERY_FILTER_INFORMATION_T, aui1_genres);
    static_assert(kGenres == offsetof(HIDL_QORTVAPI_QUERY_FILTER_INFORMATION_T, genres) &&
                  sizeof(result) == sizeof(filter));
    boundedCopy(
            reinterpret_cast<uint8_t*>(&result) + kGenres, sizeof(result) - kGenres,
            borrowedBytes(reinterpret_cast<const uint8_t*>(&filter) + kGenres, filter.genre_count),
            method);
    result.ui1_maximum_age = filter.maximum_age;
    return result;
}

}  // namespace

QorTvApiEventImpl::QorTvApiEventImpl() {
    TVAPI_DEBUG("QorTvApiEventImpl");
}

// The active window: the channels that a guide shows, and the span of time.

Return<int32_t> QorTvApiEventImpl::a_hidl_a_qortvapi_event_setCurrentActiveWindow(
        const hidl_vec<uint32_t>& channel_ids, int64_t time, uint16_t count) {
    if (!isWindow(channel_ids, count)) return -1;
    return a_qortvapi_event_setCurrentActiveWindow(channel_ids.data(), count, time);
}

Return<int32_t> QorTvApiEventImpl::a_hidl_a_qortvapi_event_setCurrentActiveWindow_Ex(
        const hidl_vec<uint32_t>& channel_ids, int64_t start_time, int64_t end_time,
        uint16_t count) {
    if (!isWindow(channel_ids, count)) return -1;
    return a_qortvapi_event_setCurrentActiveWindow_Ex(channel_ids.data(), count, start_time,
                                                      end_time);
}

Return<int32_t> QorTvApiEventImpl::a_hidl_a_qortvapi_event_clear_active_win() {
    return a_qortvapi_event_clear_active_win();
}

Return<void> QorTvApiEventImpl::a_hidl_a_qortvapi_event_query_event_id_by_range(
        uint32_t channel_id, int64_t start_time, int64_t end_time, uint16_t maximum,
        a_hidl_a_qortvapi_event_query_event_id_by_range_cb _hidl_cb) {
    const CallerArray<uint16_t> event_ids(maximum, CallerArray<uint16_t>::kOptional);
    if (event_ids.data() == nullptr) {
        TVAPI_LOG("event_id_array Alloc memory fail!!!!\n");
        return Void();
    }
    uint16_t count = maximum;
    const int32_t result = a_qortvapi_event_query_event_id_by_range(
            channel_id, start_time, end_time, &count, event_ids.data());
    _hidl_cb(count, borrowedVector(event_ids.data(), event_ids.held(count)), result);
    return Void();
}

// Properties of an event.

Return<void> QorTvApiEventImpl::a_hidl_a_qortvapi_event_get_details_info(
        uint32_t channel_id, uint32_t event_id, uint32_t size,
        a_hidl_a_qortvapi_event_get_details_info_cb _hidl_cb) {
    return answerBlock(_hidl_cb, a_qortvapi_event_get_details_info, channel_id, event_id, size);
}

Return<void> QorTvApiEventImpl::a_hidl_a_qortvapi_event_get_guidance_info(
        uint32_t channel_id, uint32_t event_id, uint32_t size,
        a_hidl_a_qortvapi_event_get_guidance_info_cb _hidl_cb) {
    return answerBlock(_hidl_cb, a_qortvapi_event_get_guidance_info, channel_id, event_id, size);
}

Return<void> QorTvApiEventImpl::a_hidl_a_qortvapi_event_get_details_extend_info(
        uint32_t channel_id, uint32_t event_id, uint32_t size,
        a_hidl_a_qortvapi_event_get_details_extend_info_cb _hidl_cb) {
    return answerBlock(_hidl_cb, a_qortvapi_event_get_details_extend_info, channel_id, event_id,
                       size);
}

Return<bool> QorTvApiEventImpl::a_hidl_a_qortvapi_event_check_block(uint32_t channel_id,
                                                                    uint32_t event_id) {
    return a_qortvapi_event_check_block(channel_id, event_id) != 0;
}

Return<void> QorTvApiEventImpl::a_hidl_a_qortvapi_event_get_active_win_channel_num(
        a_hidl_a_qortvapi_event_get_active_win_channel_num_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_event_get_active_win_channel_num);
}

Return<void> QorTvApiEventImpl::a_hidl_a_qortvapi_event_get_active_win_list(
        uint16_t count, a_hidl_a_qortvapi_event_get_active_win_list_cb _hidl_cb) {
    const auto read = [&](uint32_t* channel_ids) {
        int64_t start_time = 0;
        int64_t end_time = 0;
        const int32_t result =
                a_qortvapi_event_get_active_win_list(channel_ids, count, &start_time, &end_time);
        _hidl_cb(borrowedVector(channel_ids, count), start_time, end_time, result);
    };
    if (count == 0) {
        read(nullptr);
        return Void();
    }
    const CallerArray<uint32_t> channel_ids(count, CallerArray<uint32_t>::kOptional);
    if (channel_ids.data() == nullptr) {
        TVAPI_LOG("allocte memory fail !!!!\n");
        return Void();
    }
    read(channel_ids.data());
    return Void();
}

Return<void> QorTvApiEventImpl::a_hidl_a_qortvapi_event_get_pf_event_id(
        uint32_t channel_id, bool following, a_hidl_a_qortvapi_event_get_pf_event_id_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_event_get_pf_event_id, channel_id, following);
}

Return<void> QorTvApiEventImpl::a_hidl_a_qortvapi_event_get_group_info(
        uint32_t channel_id, uint32_t event_id, uint32_t size,
        a_hidl_a_qortvapi_event_get_group_info_cb _hidl_cb) {
    return answerBlock(_hidl_cb, a_qortvapi_event_get_group_info, channel_id, event_id, size);
}

Return<void> QorTvApiEventImpl::a_hidl_a_qortvapi_event_get_series_info(
        uint32_t channel_id, uint32_t event_id, uint32_t size,
        a_hidl_a_qortvapi_event_get_series_info_cb _hidl_cb) {
    return answerBlock(_hidl_cb, a_qortvapi_event_get_details_extend_info, channel_id, event_id,
                       size);
}

Return<void> QorTvApiEventImpl::a_hidl_a_qortvapi_event_get_rating_map(
        uint32_t channel_id, uint32_t event_id,
        a_hidl_a_qortvapi_event_get_rating_map_cb _hidl_cb) {
    RATING_MAP_T rating_map = {};
    const int32_t result = a_qortvapi_event_get_rating_map(channel_id, event_id, &rating_map);
    _hidl_cb(toInterface(rating_map), result);
    return Void();
}

// Queries.

Return<int32_t> QorTvApiEventImpl::a_hidl_a_qortvapi_event_set_query_parameter(
        const HIDL_QORTVAPI_EVENT_QUERY_PARAMETER_T& parameter) {
    const QORTVAPI_EVENT_QUERY_PARAMETER_T record = toMiddleware(parameter);
    return a_qortvapi_event_set_query_parameter(&record);
}

Return<void> QorTvApiEventImpl::a_hidl_a_qortvapi_event_query_event_id_by_filter(
        uint32_t channel_id, const HIDL_QORTVAPI_QUERY_FILTER_INFORMATION_T& filter,
        uint16_t maximum, a_hidl_a_qortvapi_event_query_event_id_by_filter_cb _hidl_cb) {
    const CallerArray<uint16_t> event_ids(maximum, CallerArray<uint16_t>::kOptional);
    if (event_ids.data() == nullptr) {
        TVAPI_LOG("event allocte memory fail !!!!\n");
        return Void();
    }
    const CallerArray<uint32_t> values(maximum, CallerArray<uint32_t>::kOptional);
    if (values.data() == nullptr) {
        TVAPI_LOG("event allocte memory fail !!!!\n");
        return Void();
    }
    const QORTVAPI_QUERY_FILTER_INFORMATION_T record = toMiddleware(filter, __func__);
    uint16_t count = maximum;
    const int32_t result = a_qortvapi_event_query_event_id_by_filter(
            channel_id, &record, &count, event_ids.data(), values.data());
    _hidl_cb(count, borrowedVector(event_ids.data(), event_ids.held(count)),
             borrowedVector(values.data(), values.held(count)), result);
    return Void();
}

Return<void> QorTvApiEventImpl::a_hidl_a_qortvapi_event_get_general_info(
        uint32_t channel_id, uint32_t event_id,
        a_hidl_a_qortvapi_event_get_general_info_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_event_get_general_info, channel_id, event_id);
}

Return<void> QorTvApiEventImpl::a_hidl_a_qortvapi_event_get_rating_list(
        uint32_t channel_id, uint32_t event_id, uint32_t size,
        a_hidl_a_qortvapi_event_get_rating_list_cb _hidl_cb) {
    return answerBlock(_hidl_cb, a_qortvapi_event_get_rating_list, channel_id, event_id, size);
}

Return<void> QorTvApiEventImpl::a_hidl_a_qortvapi_event_get_content_identifier(
        uint32_t channel_id, uint32_t event_id, uint32_t size,
        a_hidl_a_qortvapi_event_get_content_identifier_cb _hidl_cb) {
    return answerBlock(_hidl_cb, a_qortvapi_event_get_content_identifier, channel_id, event_id,
                       size);
}

Return<void> QorTvApiEventImpl::a_hidl_a_qortvapi_event_get_audio_comp_info(
        uint32_t channel_id, uint32_t event_id, uint32_t size,
        a_hidl_a_qortvapi_event_get_audio_comp_info_cb _hidl_cb) {
    return answerBlock(_hidl_cb, a_qortvapi_event_get_audio_comp_info, channel_id, event_id, size);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
