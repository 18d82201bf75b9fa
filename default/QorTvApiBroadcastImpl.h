/** Broadcast channels: selection, tuning, signal, banner, channel numbers. */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiBroadcast.h>

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;

/**
 * Each method calls the middleware function of its name without the prefix `a_hidl_`. There is no
 * state: any number of threads may call at a time.
 */
class QorTvApiBroadcastImpl : public IQorTvApiBroadcast {
  public:
    QorTvApiBroadcastImpl();

    // Channel selection. With `reselect` the channel is tuned again if it is the current one.
    Return<int32_t> a_hidl_a_qortvapi_broadcast_select_channel(uint16_t svl_id, uint16_t svl_rec_id,
                                                               uint32_t channel_id,
                                                               bool reselect) override;
    Return<int32_t> a_hidl_a_qortvapi_broadcast_select_channel_by_focusid(
            uint16_t svl_id, uint16_t svl_rec_id, uint32_t channel_id, bool reselect,
            uint16_t focus_id) override;
    Return<int32_t> a_hidl_a_qortvapi_broadcast_select_channel_by_chan_num(uint32_t major,
                                                                           uint32_t minor,
                                                                           bool reselect) override;
    Return<int32_t> a_hidl_a_qortvapi_broadcast_select_channel_by_chan_id(uint32_t channel_id,
                                                                          bool reselect) override;
    Return<int32_t> a_hidl_a_qortvapi_broadcast_select_channel_by_prog_no(
            uint8_t medium, uint16_t program_number) override;
    Return<int32_t> a_hidl_a_qortvapi_broadcast_select_channel_silently(uint8_t focus_id,
                                                                        uint16_t svl_id,
                                                                        uint16_t svl_rec_id,
                                                                        uint32_t channel_id,
                                                                        uint32_t flags) override;
    Return<int32_t> a_hidl_a_qortvapi_broadcast_set_banner_visibility(bool visible) override;

    // Tuning, keys, CAM and number queries.
    Return<void> a_hidl_a_qortvapi_broadcast_get_tuning_status(
            a_hidl_a_qortvapi_broadcast_get_tuning_status_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_broadcast_get_tuning_error(
            a_hidl_a_qortvapi_broadcast_get_tuning_error_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_broadcast_key_handler(uint32_t key_code) override;
    Return<int32_t> a_hidl_a_qortvapi_broadcast_switch_input_to_tv() override;
    Return<void> a_hidl_a_qortvapi_broadcast_is_cam_installed(
            a_hidl_a_qortvapi_broadcast_is_cam_installed_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_broadcast_is_additional_service_available(
            a_hidl_a_qortvapi_broadcast_is_additional_service_available_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_broadcast_is_support_4_digits_chan_no(
            a_hidl_a_qortvapi_broadcast_is_support_4_digits_chan_no_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_broadcast_is_digits_key_handled(
            a_hidl_a_qortvapi_broadcast_is_digits_key_handled_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_broadcast_is_channel_number_valid(
            uint32_t major, uint32_t minor, bool exact,
            a_hidl_a_qortvapi_broadcast_is_channel_number_valid_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_broadcast_set_favorite_icon_on_banner(bool shown) override;
    Return<int32_t> a_hidl_a_qortvapi_broadcast_reset_digits_key_handled() override;
    Return<void> a_hidl_a_qortvapi_broadcast_get_target_region_num(
            uint16_t level, a_hidl_a_qortvapi_broadcast_get_target_region_num_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_broadcast_get_target_regions(
            uint16_t level, uint16_t parent, uint16_t index,
            a_hidl_a_qortvapi_broadcast_get_target_regions_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_broadcast_get_max_possible_major_chan_no(
            uint16_t tuner_type,
            a_hidl_a_qortvapi_broadcast_get_max_possible_major_chan_no_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_broadcast_get_max_possible_minor_chan_no(
            uint16_t tuner_type,
            a_hidl_a_qortvapi_broadcast_get_max_possible_minor_chan_no_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_broadcast_get_max_possible_major_digits(
            uint16_t tuner_type,
            a_hidl_a_qortvapi_broadcast_get_max_possible_major_digits_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_broadcast_get_max_possible_minor_digits(
            uint16_t tuner_type,
            a_hidl_a_qortvapi_broadcast_get_max_possible_minor_digits_cb _hidl_cb) override;
    /** Asks for at most 64 characters. A larger `length` is logged, whether debugging is on or not.
     */
    Return<void> a_hidl_a_qortvapi_broadcast_get_cam_operator_name(
            uint32_t length,
            a_hidl_a_qortvapi_broadcast_get_cam_operator_name_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_broadcast_get_mheg_input_event_mask(
            uint8_t mask,
            a_hidl_a_qortvapi_broadcast_get_mheg_input_event_mask_cb _hidl_cb) override;

    // Service contexts. The middleware's names of them have at most five characters: the rest of a
    // longer name is cut off.
    Return<int32_t> a_hidl_a_qortvapi_broadcast_sync_stop(const hidl_string& context,
                                                          bool block) override;
    /** Returns true also if the middleware fails. */
    Return<bool> a_hidl_a_qortvapi_broadcast_is_signal_loss() override;
    Return<int32_t> a_hidl_a_qortvapi_broadcast_get_signal_level() override;
    Return<int32_t> a_hidl_a_qortvapi_broadcast_get_signal_quality() override;
    Return<void> a_hidl_a_qortvapi_broadcast_strm_is_orig_scramble(
            const hidl_string& context, HIDL_QORTVAPI_STREAM_TYPE_T stream_type,
            a_hidl_a_qortvapi_broadcast_strm_is_orig_scramble_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_broadcast_change_freq(
            const hidl_string& context, const HIDL_QORTVAPI_FREQ_INFO_T& frequency) override;
    Return<int32_t> a_hidl_a_qortvapi_broadcast_ana_channel_fine_tune(const hidl_string& context,
                                                                      int32_t offset,
                                                                      bool tune_now) override;
    /** The value is -1 if the middleware writes none. */
    Return<void> a_hidl_a_qortvapi_broadcast_get_connect_attr(
            const hidl_string& context, int32_t attribute,
            a_hidl_a_qortvapi_broadcast_get_connect_attr_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_broadcast_transfer_external_ui_status(
            const HIDL_QORTVAPI_EXTERNAL_UI_STATUS_T& status) override;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
