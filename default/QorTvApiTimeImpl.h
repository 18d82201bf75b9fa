/** Date and time as the television keeps them. */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiTime.h>

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;

/**
 * Each method calls the middleware function of its name without the prefix `a_hidl_`. A method
 * without a result drops that of its function. There is no state: any number of threads may call at
 * a time.
 */
class QorTvApiTimeImpl : public IQorTvApiTime {
  public:
    QorTvApiTimeImpl();

    // Clock and broadcast. A record that the middleware does not write is answered as the client
    // sent it; for conversions from a record or a day it is zero.
    /** Answers with `source` as the middleware left it. */
    Return<void> a_hidl_a_qortvapi_time_get_utc_time(
            uint16_t source, a_hidl_a_qortvapi_time_get_utc_time_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_utc_sec_to_dtg(
            int64_t seconds, const HIDL_DTG_T& date_time,
            a_hidl_a_qortvapi_utc_sec_to_dtg_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_time_get_broadcast_time_ex(
            const HIDL_DTG_T& date_time,
            a_hidl_a_qortvapi_time_get_broadcast_time_ex_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_time_convert(
            uint16_t conversion, const HIDL_DTG_T& date_time,
            a_hidl_a_qortvapi_time_convert_cb _hidl_cb) override;
    /** The middleware gets the flags of `status` as they were sent; in the answer a flag other than
     * 0 is true. */
    Return<void> a_hidl_a_qortvapi_time_get_brdcst_raw_data(
            const HIDL_DT_BRDCST_STATUS_T& status,
            a_hidl_a_qortvapi_time_get_brdcst_raw_data_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_time_set_utc_time(int64_t seconds) override;
    Return<bool> a_hidl_a_qortvapi_time_is_time_editable() override;

    // Time zone and offset, in seconds east of Greenwich.
    Return<int64_t> a_hidl_a_qortvapi_time_get_time_zone() override;
    Return<void> a_hidl_a_qortvapi_time_set_time_zone(int64_t seconds) override;
    Return<bool> a_hidl_a_qortvapi_time_is_time_zone_editable() override;
    Return<int64_t> a_hidl_a_qortvapi_time_get_time_offset() override;
    Return<void> a_hidl_a_qortvapi_time_set_time_offset(int64_t seconds) override;
    Return<bool> a_hidl_a_qortvapi_time_is_time_offset_editable() override;
    Return<bool> a_hidl_a_qortvapi_time_has_received_tot() override;
    Return<void> a_hidl_a_qortvapi_time_convert_millis_to_local_time(
            int64_t milliseconds, const HIDL_DTG_T& date_time,
            a_hidl_a_qortvapi_time_convert_millis_to_local_time_cb _hidl_cb) override;
    Return<int64_t> a_hidl_a_qortvapi_dtg_to_sec(const HIDL_DTG_T& date_time) override;
    /** Returns 0 if the middleware writes nothing. */
    Return<int64_t> a_hidl_a_qortvapi_time_convert_local_time_to_millis(
            const HIDL_DTG_T& date_time) override;
    Return<void> a_hidl_a_qortvapi_time_get_sync_source(
            a_hidl_a_qortvapi_time_get_sync_source_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_time_set_sync_source(uint32_t source) override;
    Return<int32_t> a_hidl_a_qortvapi_time_update_local_time(const hidl_string& date,
                                                             const hidl_string& time) override;

    // Sleep timer, in minutes; its remaining time in seconds.
    Return<int32_t> a_hidl_a_qortvapi_time_get_sleep_timer() override;
    Return<int32_t> a_hidl_a_qortvapi_time_get_sleep_timer_reverse() override;
    Return<void> a_hidl_a_qortvapi_time_set_sleep_timer(int32_t minutes) override;
    Return<void> a_hidl_a_qortvapi_time_get_sleep_timer_remaining_time(
            a_hidl_a_qortvapi_time_get_sleep_timer_remaining_time_cb _hidl_cb) override;

    // The date-and-time library.
    Return<void> a_hidl_c_dt_utc_sec_to_loc_dtg(
            int64_t seconds, const HIDL_DTG_T& date_time,
            a_hidl_c_dt_utc_sec_to_loc_dtg_cb _hidl_cb) override;
    /** Answers with `status` as the client sent it, not as the middleware left it. */
    Return<void> a_hidl_c_dt_get_utc(uint16_t status, int32_t milliseconds,
                                     a_hidl_c_dt_get_utc_cb _hidl_cb) override;
    Return<void> a_hidl_c_dt_conv_utc_local(const HIDL_DTG_T& date_time,
                                            a_hidl_c_dt_conv_utc_local_cb _hidl_cb) override;
    Return<void> a_hidl_c_dt_mjd_to_dtg(uint32_t mjd, a_hidl_c_dt_mjd_to_dtg_cb _hidl_cb) override;
    Return<int64_t> a_hidl_c_dt_dtg_to_sec(const HIDL_DTG_T& date_time) override;
    Return<void> a_hidl_c_dt_dtg_to_mjd_bcd(const HIDL_DTG_T& date_time,
                                            a_hidl_c_dt_dtg_to_mjd_bcd_cb _hidl_cb) override;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
