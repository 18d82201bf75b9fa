/** The channel scan. */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiScan.h>

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;

/**
 * Each method calls the middleware function of its name without the prefix `a_hidl_`. There is no
 * state: any number of threads may call at a time.
 */
class QorTvApiScanImpl : public IQorTvApiScan {
  public:
    QorTvApiScanImpl();

    // Control.
    Return<int32_t> a_hidl_a_qortvapi_scan_select_crnt_or_first_channel(bool first) override;
    /** Returns true if the middleware returns 1, false for any other value. */
    Return<bool> a_hidl_a_qortvapi_is_scan_active() override;
    Return<int32_t> a_hidl_a_qortvapi_start_scan(int32_t medium, int32_t scan_type,
                                                 bool clear) override;
    Return<int32_t> a_hidl_a_qortvapi_cancel_scan() override;
    Return<int32_t> a_hidl_a_qortvapi_get_market_region() override;

    // Parameters of the next scan.
    Return<int32_t> a_hidl_a_qortvapi_set_atsc_scan_param(
            int32_t medium, int32_t scan_type, const HIDL_AP_SB_ATSC_SCAN_DATA_T& data) override;
    Return<int32_t> a_hidl_a_qortvapi_set_isdb_scan_param(
            int32_t medium, int32_t scan_type, const HIDL_AP_SB_ISDB_SCAN_DATA_T& data) override;
    Return<int32_t> a_hidl_a_qortvapi_set_ntsc_scan_param(
            int32_t medium, int32_t scan_type, const HIDL_AP_SB_NTSC_SCAN_DATA_T& data) override;

    // Exchange of numbers with the scan engine of a delivery system. The answer has as many numbers
    // as the client sent, even if the engine fails.
    Return<void> a_hidl_a_qortvapi_atsc_exchange_data(
            const hidl_vec<int32_t>& data,
            a_hidl_a_qortvapi_atsc_exchange_data_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_isdb_exchange_data(
            const hidl_vec<int32_t>& data,
            a_hidl_a_qortvapi_isdb_exchange_data_cb _hidl_cb) override;
    Return<void> a_hidl_a_scan_ce_exchange_data(
            const hidl_vec<int32_t>& data, a_hidl_a_scan_ce_exchange_data_cb _hidl_cb) override;
    Return<void> a_hidl_a_scan_dtmb_exchange_data(
            const hidl_vec<int32_t>& data, a_hidl_a_scan_dtmb_exchange_data_cb _hidl_cb) override;
    Return<void> a_hidl_a_scan_pal_secam_exchange_data(
            const hidl_vec<int32_t>& data,
            a_hidl_a_scan_pal_secam_exchange_data_cb _hidl_cb) override;

    // Exchange as above, but with no numbers in the answer if the engine fails; and texts that the
    // middleware rewrites. See hhandler/hh_qortvapi_scan.h.
    Return<void> a_hidl_a_scan_dvbs_exchange_data(
            const hidl_vec<int32_t>& data, a_hidl_a_scan_dvbs_exchange_data_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_get_user_message(
            const hidl_string& message, uint32_t length,
            a_hidl_a_qortvapi_get_user_message_cb _hidl_cb) override;
    Return<void> a_hidl_a_scan_dvbc_exchange_data(
            const hidl_vec<int32_t>& data, a_hidl_a_scan_dvbc_exchange_data_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_scan_dvbc_get_str_data(
            int32_t type, const hidl_string& text, int32_t length,
            a_hidl_a_qortvapi_scan_dvbc_get_str_data_cb _hidl_cb) override;
    Return<void> a_hidl_a_scan_dvbt_exchange_data(
            const hidl_vec<int32_t>& data, a_hidl_a_scan_dvbt_exchange_data_cb _hidl_cb) override;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
