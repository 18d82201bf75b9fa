#define LOG_TAG "QorTvApiBroadcastImpl(service)"

#include "QorTvApiBroadcastImpl.h"

#include "bridge.h"
#include "hhandler/record_text.h"
#include "log.h"
#include "middleware/broadcast.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

/** The name of a service context, cut to the five characters of the middleware's names. */
class ContextName {
  public:
    explicit ContextName(const hidl_string& name) { setText(mName, name); }
    operator const char*() const { return mName; }

  private:
    char mName[6] = {};
};

QORTVAPI_FREQ_INFO_T toMiddleware(const HIDL_QORTVAPI_FREQ_INFO_T& frequency) {
    static_assert(sizeof(HIDL_QORTVAPI_FREQ_INFO_T) == sizeof(QORTVAPI_FREQ_INFO_T));
    QORTVAPI_FREQ_INFO_T record{};
    record.ui4_frequency_khz = frequency.frequency_khz;
    record.ui4_symbol_rate = frequency.symbol_rate;
    record.ui4_bandwidth_hz = frequency.bandwidth_hz;
    record.ui1_brdcst_medium = frequency.brdcst_medium;
    record.ui1_modulation = frequency.modulation;
    record.ui1_polarization = frequency.polarization;
    record.ui1_fec_inner = frequency.fec_inner;
    record.ui4_upper_khz = frequency.upper_khz;
    record.ui4_lower_khz = frequency.lower_khz;
    record.i4_offset_khz = frequency.offset_khz;
    record.ui2_color_system = frequency.color_system;
    record.ui2_audio_system = frequency.audio_system;
    return record;
}

QORTVAPI_EXTERNAL_UI_STATUS_T toMiddleware(const HIDL_QORTVAPI_EXTERNAL_UI_STATUS_T& status) {
    QORTVAPI_EXTERNAL_UI_STATUS_T record{};
    record.ui4_ui_id = status.ui_id;
    record.ui1_visible = status.visible;
    return record;
}

/** The name refers to the record, which must outlive the result. */
HIDL_QORTVAPI_SB_DVB_REGION_T toInterface(const QORTVAPI_SB_DVB_REGION_T& record) {
    HIDL_QORTVAPI_SB_DVB_REGION_T region{};
    region.depth = record.ui1_depth;
    region.primary = record.ui2_primary;
    region.secondary = record.ui2_secondary;
    region.tertiary = record.ui2_tertiary;
    region.name = textOf(record.s_name);
    return region;
}

}  // namespace

QorTvApiBroadcastImpl::QorTvApiBroadcastImpl() {
    TVAPI_DEBUG("QorTvApiBroadcastImpl");
}

// Channel selection.

Return<int32_t> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_select_channel(
        uint16_t svl_id, uint16_t svl_rec_id, uint32_t channel_id, bool reselect) {
    TVAPI_DEBUG("ARG=[%d,%d,%d,%d]", svl_id, svl_rec_id, channel_id, reselect);
    return a_qortvapi_broadcast_select_channel(svl_id, svl_rec_id, channel_id, reselect);
}

Return<int32_t> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_select_channel_by_focusid(
        uint16_t svl_id, uint16_t svl_rec_id, uint32_t channel_id, bool reselect,
        uint16_t focus_id) {
    TVAPI_DEBUG("ARG=[%d,%d,%d,%d, %d]", svl_id, svl_rec_id, channel_id, reselect, focus_id);
    return a_qortvapi_broadcast_select_channel_by_focusid(svl_id, svl_rec_id, channel_id, reselect,
                                                          focus_id);
}

Return<int32_t> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_select_channel_by_chan_num(
        uint32_t major, uint32_t minor, bool reselect) {
    TVAPI_DEBUG("ARG=[%d,%d,%d]", major, minor, reselect);
    return a_qortvapi_broadcast_select_channel_by_chan_num(major, minor, reselect);
}

Return<int32_t> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_select_channel_by_chan_id(
        uint32_t channel_id, bool reselect) {
    TVAPI_DEBUG("ARG=[%d,%d]", channel_id, reselect);
    return a_qortvapi_broadcast_select_channel_by_chan_id(channel_id, reselect);
}

Return<int32_t> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_select_channel_by_prog_no(
        uint8_t medium, uint16_t program_number) {
    TVAPI_DEBUG("ARG=[%d,%d]", medium, program_number);
    return a_qortvapi_broadcast_select_channel_by_prog_no(medium, program_number);
}

Return<int32_t> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_select_channel_silently(
        uint8_t focus_id, uint16_t svl_id, uint16_t svl_rec_id, uint32_t channel_id,
        uint32_t flags) {
    TVAPI_DEBUG("ARG=[%d,%d,%d,%d]", focus_id, svl_id, svl_rec_id, channel_id);
    return a_qortvapi_broadcast_select_channel_silently(focus_id, svl_id, svl_rec_id, channel_id,
                                                        flags);
}

Return<int32_t> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_set_banner_visibility(
        bool visible) {
    TVAPI_DEBUG("ARG=[%d]", visible);
    return a_qortvapi_broadcast_set_banner_visibility(visible);
}

// Tuning, keys, CAM and number queries.

Return<void> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_get_tuning_status(
        a_hidl_a_qortvapi_broadcast_get_tuning_status_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answer(_hidl_cb, a_qortvapi_broadcast_get_tuning_status);
}

Return<void> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_get_tuning_error(
        a_hidl_a_qortvapi_broadcast_get_tuning_error_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answer(_hidl_cb, a_qortvapi_broadcast_get_tuning_error);
}

Return<int32_t> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_key_handler(uint32_t key_code) {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_broadcast_key_handler(key_code);
}

Return<int32_t> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_switch_input_to_tv() {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_broadcast_switch_input_to_tv();
}

Return<void> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_is_cam_installed(
        a_hidl_a_qortvapi_broadcast_is_cam_installed_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answerFlag(_hidl_cb, a_qortvapi_broadcast_is_cam_installed);
}

Return<void> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_is_additional_service_available(
        a_hidl_a_qortvapi_broadcast_is_additional_service_available_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answerFlag(_hidl_cb, a_qortvapi_broadcast_is_additional_service_available);
}

Return<void> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_is_support_4_digits_chan_no(
        a_hidl_a_qortvapi_broadcast_is_support_4_digits_chan_no_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answerFlag(_hidl_cb, a_qortvapi_broadcast_is_support_4_digits_chan_no);
}

Return<void> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_is_digits_key_handled(
        a_hidl_a_qortvapi_broadcast_is_digits_key_handled_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answerFlag(_hidl_cb, a_qortvapi_broadcast_is_digits_key_handled);
}

Return<void> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_is_channel_number_valid(
        uint32_t major, uint32_t minor, bool exact,
        a_hidl_a_qortvapi_broadcast_is_channel_number_valid_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answerFlag(_hidl_cb, a_qortvapi_broadcast_is_channel_number_valid, major, minor, exact);
}

Return<int32_t> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_set_favorite_icon_on_banner(
        bool shown) {
    return a_qortvapi_broadcast_set_favorite_icon_on_banner(shown);
}

Return<int32_t> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_reset_digits_key_handled() {
    return a_qortvapi_broadcast_reset_digits_key_handled();
}

Return<void> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_get_target_region_num(
        uint16_t level, a_hidl_a_qortvapi_broadcast_get_target_region_num_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answer(_hidl_cb, a_qortvapi_broadcast_get_target_region_num, level);
}

Return<void> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_get_target_regions(
        uint16_t level, uint16_t parent, uint16_t index,
        a_hidl_a_qortvapi_broadcast_get_target_regions_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    QORTVAPI_SB_DVB_REGION_T record{};
    const int32_t result = a_qortvapi_broadcast_get_target_regions(level, parent, index, &record);
    _hidl_cb(toInterface(record), result);
    return Void();
}

Return<void> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_get_max_possible_major_chan_no(
        uint16_t tuner_type,
        a_hidl_a_qortvapi_broadcast_get_max_possible_major_chan_no_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answer(_hidl_cb, a_qortvapi_broadcast_get_max_possible_major_chan_no, tuner_type);
}

Return<void> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_get_max_possible_minor_chan_no(
        uint16_t tuner_type,
        a_hidl_a_qortvapi_broadcast_get_max_possible_minor_chan_no_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answer(_hidl_cb, a_qortvapi_broadcast_get_max_possible_minor_chan_no, tuner_type);
}

Return<void> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_get_max_possible_major_digits(
        uint16_t tuner_type,
        a_hidl_a_qortvapi_broadcast_get_max_possible_major_digits_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answer(_hidl_cb, a_qortvapi_broadcast_get_max_possible_major_digits, tuner_type);
}

Return<void> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_get_max_possible_minor_digits(
        uint16_t tuner_type,
        a_hidl_a_qortvapi_broadcast_get_max_possible_minor_digits_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answer(_hidl_cb, a_qortvapi_broadcast_get_max_possible_minor_digits, tuner_type);
}

Return<void> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_get_cam_operator_name(
        uint32_t length, a_hidl_a_qortvapi_broadcast_get_cam_operator_name_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    FixedText<64> name;
    if (length > name.size()) {
        TVAPI_LOG("ui4_length=%d > 64, cut!!\n", length);
        length = name.size();
    }
    const int32_t result = a_qortvapi_broadcast_get_cam_operator_name(length, name.data());
    _hidl_cb(name.forClient(), result);
    return Void();
}

Return<void> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_get_mheg_input_event_mask(
        uint8_t mask, a_hidl_a_qortvapi_broadcast_get_mheg_input_event_mask_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answerFlag(_hidl_cb, a_qortvapi_broadcast_get_mheg_input_event_mask, mask);
}

// Service contexts.

Return<int32_t> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_sync_stop(
        const hidl_string& context, bool block) {
    return a_qortvapi_broadcast_sync_stop(ContextName(context), block);
}

Return<bool> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_is_signal_loss() {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_broadcast_is_signal_loss() != 0;
}

Return<int32_t> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_get_signal_level() {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_broadcast_get_signal_level();
}

Return<int32_t> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_get_signal_quality() {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_broadcast_get_signal_quality();
}

Return<void> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_strm_is_orig_scramble(
        const hidl_string& context, HIDL_QORTVAPI_STREAM_TYPE_T stream_type,
        a_hidl_a_qortvapi_broadcast_strm_is_orig_scramble_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answerFlag(_hidl_cb, a_qortvapi_broadcast_strm_is_orig_scramble, ContextName(context),
                      static_cast<QORTVAPI_STREAM_TYPE_T>(stream_type));
}

Return<int32_t> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_change_freq(
        const hidl_string& context, const HIDL_QORTVAPI_FREQ_INFO_T& frequency) {
    TVAPI_DEBUG("Enter.");
    const QORTVAPI_FREQ_INFO_T record = toMiddleware(frequency);
    return a_qortvapi_broadcast_change_freq(ContextName(context), &record);
}

Return<int32_t> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_ana_channel_fine_tune(
        const hidl_string& context, int32_t offset, bool tune_now) {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_broadcast_ana_channel_fine_tune(ContextName(context), offset, tune_now);
}

Return<void> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_get_connect_attr(
        const hidl_string& context, int32_t attribute,
        a_hidl_a_qortvapi_broadcast_get_connect_attr_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    int32_t value = -1;
    const int32_t result =
            a_qortvapi_broadcast_get_connect_attr(ContextName(context), attribute, &value);
    _hidl_cb(value, result);
    return Void();
}

Return<int32_t> QorTvApiBroadcastImpl::a_hidl_a_qortvapi_broadcast_transfer_external_ui_status(
        const HIDL_QORTVAPI_EXTERNAL_UI_STATUS_T& status) {
    TVAPI_DEBUG("Enter.");
    const QORTVAPI_EXTERNAL_UI_STATUS_T record = toMiddleware(status);
    return a_qortvapi_broadcast_transfer_external_ui_status(&record);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
