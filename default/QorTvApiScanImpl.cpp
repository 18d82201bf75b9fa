#define LOG_TAG "QorTvApiScanImpl(service)"

#include "QorTvApiScanImpl.h"

#include "bridge.h"
#include "hhandler/hh_qortvapi_scan.h"
#include "log.h"
#include "middleware/scan.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

AP_SB_ATSC_SCAN_DATA_T toMiddleware(const HIDL_AP_SB_ATSC_SCAN_DATA_T& data) {
    static_assert(sizeof(HIDL_AP_SB_ATSC_SCAN_DATA_T) == sizeof(AP_SB_ATSC_SCAN_DATA_T));
    AP_SB_ATSC_SCAN_DATA_T record{};
    record.ui4_first_channel = data.first_channel;
    record.ui4_last_channel = data.last_channel;
    record.ui4_modulation = data.modulation;
    record.ui4_options = data.options;
    return record;
}

AP_SB_ISDB_SCAN_DATA_T toMiddleware(const HIDL_AP_SB_ISDB_SCAN_DATA_T& data) {
    AP_SB_ISDB_SCAN_DATA_T record{};
    record.ui4_first_channel = data.first_channel;
    record.ui4_last_channel = data.last_channel;
    record.ui4_options = data.options;
    return record;
}

AP_SB_NTSC_SCAN_DATA_T toMiddleware(const HIDL_AP_SB_NTSC_SCAN_DATA_T& data) {
    AP_SB_NTSC_SCAN_DATA_T record{};
    record.ui4_first_channel = data.first_channel;
    record.ui4_last_channel = data.last_channel;
    return record;
}

using ScanEngine = int32_t (*)(int32_t*, uint32_t);

/** Answers with the copy of `data` that `engine` worked on, whether it failed or not, then logs its
 * result for `method`. */
template <typename Callback>
Return<void> exchange(const Callback& callback, ScanEngine engine, const hidl_vec<int32_t>& data,
                      const char* method = __builtin_FUNCTION(), int line = __builtin_LINE()) {
    const CallerArray<int32_t> numbers(data, method);
    const int32_t result = engine(numbers.data(), data.size());
    callback(borrowedVector(numbers.data(), data.size()), result);
    if (mTvApiDebug != 0) {
        __android_log_print(ANDROID_LOG_DEBUG, LOG_TAG, "<%s:%d> i4_ret:%d\n", method, line,
                            result);
    }
    return Void();
}

}  // namespace

QorTvApiScanImpl::QorTvApiScanImpl() {
    TVAPI_DEBUG("QorTvApiScanImpl");
}

// Control.

Return<int32_t> QorTvApiScanImpl::a_hidl_a_qortvapi_scan_select_crnt_or_first_channel(bool first) {
    return a_qortvapi_scan_select_crnt_or_first_channel(first);
}

Return<bool> QorTvApiScanImpl::a_hidl_a_qortvapi_is_scan_active() {
    return a_qortvapi_is_scan_active() == 1;
}

Return<int32_t> QorTvApiScanImpl::a_hidl_a_qortvapi_start_scan(int32_t medium, int32_t scan_type,
                                                               bool clear) {
    return a_qortvapi_start_scan(medium, scan_type, clear);
}

Return<int32_t> QorTvApiScanImpl::a_hidl_a_qortvapi_cancel_scan() {
    return a_qortvapi_cancel_scan();
}

Return<int32_t> QorTvApiScanImpl::a_hidl_a_qortvapi_get_market_region() {
    return a_qortvapi_get_market_region();
}

// Parameters of the next scan.

Return<int32_t> QorTvApiScanImpl::a_hidl_a_qortvapi_set_atsc_scan_param(
        int32_t medium, int32_t scan_type, const HIDL_AP_SB_ATSC_SCAN_DATA_T& data) {
    const auto record = toMiddleware(data);
    return a_qortvapi_set_atsc_scan_param(medium, scan_type, &record);
}

Return<int32_t> QorTvApiScanImpl::a_hidl_a_qortvapi_set_isdb_scan_param(
        int32_t medium, int32_t scan_type, const HIDL_AP_SB_ISDB_SCAN_DATA_T& data) {
    const auto record = toMiddleware(data);
    return a_qortvapi_set_isdb_scan_param(medium, scan_type, &record);
}

Return<int32_t> QorTvApiScanImpl::a_hidl_a_qortvapi_set_ntsc_scan_param(
        int32_t medium, int32_t scan_type, const HIDL_AP_SB_NTSC_SCAN_DATA_T& data) {
    const auto record = toMiddleware(data);
    return a_qortvapi_set_ntsc_scan_param(medium, scan_type, &record);
}

// Exchange of numbers with the scan engine of a delivery system, and texts.

Return<void> QorTvApiScanImpl::a_hidl_a_qortvapi_atsc_exchange_data(
        const hidl_vec<int32_t>& data, a_hidl_a_qortvapi_atsc_exchange_data_cb _hidl_cb) {
    return exchange(_hidl_cb, a_qortvapi_atsc_exchange_data, data);
}

Return<void> QorTvApiScanImpl::a_hidl_a_qortvapi_isdb_exchange_data(
        const hidl_vec<int32_t>& data, a_hidl_a_qortvapi_isdb_exchange_data_cb _hidl_cb) {
    return exchange(_hidl_cb, a_qortvapi_isdb_exchange_data, data);
}

Return<void> QorTvApiScanImpl::a_hidl_a_scan_ce_exchange_data(
        const hidl_vec<int32_t>& data, a_hidl_a_scan_ce_exchange_data_cb _hidl_cb) {
    return exchange(_hidl_cb, a_scan_ce_exchange_data, data);
}

Return<void> QorTvApiScanImpl::a_hidl_a_scan_dtmb_exchange_data(
        const hidl_vec<int32_t>& data, a_hidl_a_scan_dtmb_exchange_data_cb _hidl_cb) {
    return exchange(_hidl_cb, a_scan_dtmb_exchange_data, data);
}

Return<void> QorTvApiScanImpl::a_hidl_a_scan_pal_secam_exchange_data(
        const hidl_vec<int32_t>& data, a_hidl_a_scan_pal_secam_exchange_data_cb _hidl_cb) {
    return exchange(_hidl_cb, a_scan_pal_secam_exchange_data, data);
}

Return<void> QorTvApiScanImpl::a_hidl_a_scan_dvbs_exchange_data(
        const hidl_vec<int32_t>& data, a_hidl_a_scan_dvbs_exchange_data_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_scan_dvbs_exchange_data(data, _hidl_cb);
    return Void();
}

Return<void> QorTvApiScanImpl::a_hidl_a_qortvapi_get_user_message(
        const hidl_string& message, uint32_t length,
        a_hidl_a_qortvapi_get_user_message_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_get_user_message(message, length, _hidl_cb);
    return Void();
}

Return<void> QorTvApiScanImpl::a_hidl_a_scan_dvbc_exchange_data(
        const hidl_vec<int32_t>& data, a_hidl_a_scan_dvbc_exchange_data_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_scan_dvbc_exchange_data(data, _hidl_cb);
    return Void();
}

Return<void> QorTvApiScanImpl::a_hidl_a_qortvapi_scan_dvbc_get_str_data(
        int32_t type, const hidl_string& text, int32_t length,
        a_hidl_a_qortvapi_scan_dvbc_get_str_data_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_scan_dvbc_get_str_data(type, text, length, _hidl_cb);
    return Void();
}

Return<void> QorTvApiScanImpl::a_hidl_a_scan_dvbt_exchange_data(
        const hidl_vec<int32_t>& data, a_hidl_a_scan_dvbt_exchange_data_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_scan_dvbt_exchange_data(data, _hidl_cb);
    return Void();
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
