/** The programme guide. */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiEvent.h>

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;

/**
 * Each method calls the middleware function of its name without the prefix `a_hidl_`. There is no
 * state: any number of threads may call at a time.
 *
 * A read whose size the client chooses is not answered if there is no memory for it. A block of
 * bytes is answered with exactly that size. It is not zeroed, which the contract allows: the bytes
 * that the middleware does not write have whatever value this process left in its memory.
 */
class QorTvApiEventImpl : public IQorTvApiEvent {
  public:
    QorTvApiEventImpl();

    // The active window: the channels that a guide shows, and the span of time.
    /** Returns -1, without calling the middleware, if `channel_ids` is empty or does not have
     * `count` elements. */
    Return<int32_t> a_hidl_a_qortvapi_event_setCurrentActiveWindow(
            const hidl_vec<uint32_t>& channel_ids, int64_t time, uint16_t count) override;
    /** Returns -1 under the same conditions. */
    Return<int32_t> a_hidl_a_qortvapi_event_setCurrentActiveWindow_Ex(
            const hidl_vec<uint32_t>& channel_ids, int64_t start_time, int64_t end_time,
            uint16_t count) override;
    Return<int32_t> a_hidl_a_qortvapi_event_clear_active_win() override;
    /** Answers with the number of events that the middleware reports, and at most `maximum` ids. */
    Return<void> a_hidl_a_qortvapi_event_query_event_id_by_range(
            uint32_t channel_id, int64_t start_time, int64_t end_time, uint16_t maximum,
            a_hidl_a_qortvapi_event_query_event_id_by_range_cb _hidl_cb) override;

    // Properties of an event.
    Return<void> a_hidl_a_qortvapi_event_get_details_info(
            uint32_t channel_id, uint32_t event_id, uint32_t size,
            a_hidl_a_qortvapi_event_get_details_info_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_event_get_guidance_info(
            uint32_t channel_id, uint32_t event_id, uint32_t size,
            a_hidl_a_qortvapi_event_get_guidance_info_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_event_get_details_extend_info(
            uint32_t channel_id, uint32_t event_id, uint32_t size,
            a_hidl_a_qortvapi_event_get_details_extend_info_cb _hidl_cb) override;
    Return<bool> a_hidl_a_qortvapi_event_check_block(uint32_t channel_id,
                                                     uint32_t event_id) override;
    Return<void> a_hidl_a_qortvapi_event_get_active_win_channel_num(
            a_hidl_a_qortvapi_event_get_active_win_channel_num_cb _hidl_cb) override;
    /** Answers with `count` ids in any case; those that the middleware does not write are 0. */
    Return<void> a_hidl_a_qortvapi_event_get_active_win_list(
            uint16_t count, a_hidl_a_qortvapi_event_get_active_win_list_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_event_get_pf_event_id(
            uint32_t channel_id, bool following,
            a_hidl_a_qortvapi_event_get_pf_event_id_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_event_get_group_info(
            uint32_t channel_id, uint32_t event_id, uint32_t size,
            a_hidl_a_qortvapi_event_get_group_info_cb _hidl_cb) override;
    /** Calls the function of get_details_extend_info: the middleware has no function for series. */
    Return<void> a_hidl_a_qortvapi_event_get_series_info(
            uint32_t channel_id, uint32_t event_id, uint32_t size,
            a_hidl_a_qortvapi_event_get_series_info_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_event_get_rating_map(
            uint32_t channel_id, uint32_t event_id,
            a_hidl_a_qortvapi_event_get_rating_map_cb _hidl_cb) override;

    // Queries.
    Return<int32_t> a_hidl_a_qortvapi_event_set_query_parameter(
            const HIDL_QORTVAPI_EVENT_QUERY_PARAMETER_T& parameter) override;
    /** Answers as query_event_id_by_range does. A genre count that leads beyond the end of the
     * filter record ends the process. */
    Return<void> a_hidl_a_qortvapi_event_query_event_id_by_filter(
            uint32_t channel_id, const HIDL_QORTVAPI_QUERY_FILTER_INFORMATION_T& filter,
            uint16_t maximum,
            a_hidl_a_qortvapi_event_query_event_id_by_filter_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_event_get_general_info(
            uint32_t channel_id, uint32_t event_id,
            a_hidl_a_qortvapi_event_get_general_info_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_event_get_rating_list(
            uint32_t channel_id, uint32_t event_id, uint32_t size,
            a_hidl_a_qortvapi_event_get_rating_list_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_event_get_content_identifier(
            uint32_t channel_id, uint32_t event_id, uint32_t size,
            a_hidl_a_qortvapi_event_get_content_identifier_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_event_get_audio_comp_info(
            uint32_t channel_id, uint32_t event_id, uint32_t size,
            a_hidl_a_qortvapi_event_get_audio_comp_info_cb _hidl_cb) override;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
