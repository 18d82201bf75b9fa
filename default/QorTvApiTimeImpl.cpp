#define LOG_TAG "QorTvApiTimeImpl(service)"

#include "QorTvApiTimeImpl.h"

#include <cstring>

#include "bridge.h"
#include "log.h"
#include "middleware/time.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

DTG_T toMiddleware(const HIDL_DTG_T& date_time) {
    DTG_T result = {};
    result.ui2_year = date_time.year;
    result.ui1_month = date_time.month;
    result.ui1_day = date_time.day;
    result.ui1_day_of_week = date_time.day_of_week;
    result.ui1_hour = date_time.hour;
    result.ui1_minute = date_time.minute;
    result.ui1_second = date_time.second;
    result.b_gmt = date_time.gmt;
    result.b_dst = date_time.dst;
    return result;
}

HIDL_DTG_T toInterface(const DTG_T& date_time) {
    HIDL_DTG_T result{};
    result.year = date_time.ui2_year;
    result.month = date_time.ui1_month;
    result.day = date_time.ui1_day;
    result.day_of_week = date_time.ui1_day_of_week;
    result.hour = date_time.ui1_hour;
    result.minute = date_time.ui1_minute;
    result.second = date_time.ui1_second;
    result.gmt = date_time.b_gmt;
    result.dst = date_time.b_dst;
    return result;
}

DT_BRDCST_STATUS_T toMiddleware(const HIDL_DT_BRDCST_STATUS_T& status) {
    DT_BRDCST_STATUS_T result = {};
    // The flags are copied as bytes: a client may have sent values other than 0 and 1.
    static_assert(sizeof(status.tdt_received) == 1 && sizeof(status.tot_received) == 1);
    memcpy(&result.b_tdt_received, &status.tdt_received, 1);
    memcpy(&result.b_tot_received, &status.tot_received, 1);
    result.i8_utc = status.utc;
    result.i8_next_change = status.next_change;
    result.i4_offset = status.offset;
    result.i4_next_offset = status.next_offset;
    return result;
}

HIDL_DT_BRDCST_STATUS_T toInterface(const DT_BRDCST_STATUS_T& status) {
    HIDL_DT_BRDCST_STATUS_T result{};
    result.tdt_received = status.b_tdt_received != 0;
    result.tot_received = status.b_tot_received != 0;
    result.utc = status.i8_utc;
    result.next_change = status.i8_next_change;
    result.offset = status.i4_offset;
    result.next_offset = status.i4_next_offset;
    return result;
}

/**
 * Calls `function` with `inputs` and `record`, which it may rewrite, and hands the record and the
 * returned value to `callback`.
 */
template <typename Callback, typename Function, typename Record, typename... Inputs>
Return<void> answerRecord(const Callback& callback, Function function, Record record,
                          const Inputs&... inputs) {
    const auto result = function(inputs..., &record);
    callback(toInterface(record), result);
    return Void();
}

}  // namespace

QorTvApiTimeImpl::QorTvApiTimeImpl() {
    TVAPI_DEBUG("QorTvApiTimeImpl");
}

// Clock and broadcast.

Return<void> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_get_utc_time(
        uint16_t source, a_hidl_a_qortvapi_time_get_utc_time_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    const int64_t seconds = a_qortvapi_time_get_utc_time(&source);
    _hidl_cb(source, seconds);
    return Void();
}

Return<void> QorTvApiTimeImpl::a_hidl_a_qortvapi_utc_sec_to_dtg(
        int64_t seconds, const HIDL_DTG_T& date_time,
        a_hidl_a_qortvapi_utc_sec_to_dtg_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answerRecord(_hidl_cb, a_qortvapi_utc_sec_to_dtg, toMiddleware(date_time), seconds);
}

Return<void> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_get_broadcast_time_ex(
        const HIDL_DTG_T& date_time, a_hidl_a_qortvapi_time_get_broadcast_time_ex_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answerRecord(_hidl_cb, a_qortvapi_time_get_broadcast_time_ex, toMiddleware(date_time));
}

Return<void> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_convert(
        uint16_t conversion, const HIDL_DTG_T& date_time,
        a_hidl_a_qortvapi_time_convert_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    const DTG_T input = toMiddleware(date_time);
    return answerRecord(_hidl_cb, a_qortvapi_time_convert, DTG_T{}, conversion, &input);
}

Return<void> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_get_brdcst_raw_data(
        const HIDL_DT_BRDCST_STATUS_T& status,
        a_hidl_a_qortvapi_time_get_brdcst_raw_data_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answerRecord(_hidl_cb, a_qortvapi_time_get_brdcst_raw_data, toMiddleware(status));
}

Return<void> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_set_utc_time(int64_t seconds) {
    TVAPI_DEBUG("Enter.");
    a_qortvapi_time_set_utc_time(seconds);
    return Void();
}

Return<bool> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_is_time_editable() {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_time_is_time_editable() != 0;
}

// Time zone and offset.

Return<int64_t> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_get_time_zone() {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_time_get_time_zone();
}

Return<void> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_set_time_zone(int64_t seconds) {
    TVAPI_DEBUG("Enter.");
    a_qortvapi_time_set_time_zone(seconds);
    return Void();
}

Return<bool> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_is_time_zone_editable() {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_time_is_time_zone_editable() != 0;
}

Return<int64_t> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_get_time_offset() {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_time_get_time_offset();
}

Return<void> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_set_time_offset(int64_t seconds) {
    TVAPI_DEBUG("Enter.");
    a_qortvapi_time_set_time_offset(seconds);
    return Void();
}

Return<bool> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_is_time_offset_editable() {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_time_is_time_offset_editable() != 0;
}

Return<bool> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_has_received_tot() {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_time_has_received_tot() != 0;
}

Return<void> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_convert_millis_to_local_time(
        int64_t milliseconds, const HIDL_DTG_T& date_time,
        a_hidl_a_qortvapi_time_convert_millis_to_local_time_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    DTG_T converted = toMiddleware(date_time);
    a_qortvapi_time_convert_millis_to_local_time(milliseconds, &converted);
    _hidl_cb(toInterface(converted));
    return Void();
}

Return<int64_t> QorTvApiTimeImpl::a_hidl_a_qortvapi_dtg_to_sec(const HIDL_DTG_T& date_time) {
    TVAPI_DEBUG("Enter.");
    const DTG_T input = toMiddleware(date_time);
    return a_qortvapi_dtg_to_sec(&input);
}

Return<int64_t> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_convert_local_time_to_millis(
        const HIDL_DTG_T& date_time) {
    TVAPI_DEBUG("Enter.");
    const DTG_T input = toMiddleware(date_time);
    int64_t milliseconds = 0;
    a_qortvapi_time_convert_local_time_to_millis(&input, &milliseconds);
    return milliseconds;
}

Return<void> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_get_sync_source(
        a_hidl_a_qortvapi_time_get_sync_source_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answer(_hidl_cb, a_qortvapi_time_get_sync_source);
}

Return<int32_t> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_set_sync_source(uint32_t source) {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_time_set_sync_source(source);
}

Return<int32_t> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_update_local_time(
        const hidl_string& date, const hidl_string& time) {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_time_update_local_time(date.c_str(), time.c_str());
}

// Sleep timer.

Return<int32_t> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_get_sleep_timer() {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_time_get_sleep_timer();
}

Return<int32_t> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_get_sleep_timer_reverse() {
    TVAPI_DEBUG("Enter.");
    return a_qortvapi_time_get_sleep_timer_reverse();
}

Return<void> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_set_sleep_timer(int32_t minutes) {
    TVAPI_DEBUG("Enter.");
    a_qortvapi_time_set_sleep_timer(minutes);
    return Void();
}

Return<void> QorTvApiTimeImpl::a_hidl_a_qortvapi_time_get_sleep_timer_remaining_time(
        a_hidl_a_qortvapi_time_get_sleep_timer_remaining_time_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answer(_hidl_cb, a_qortvapi_time_get_sleep_timer_remaining_time);
}

// The date-and-time library.

Return<void> QorTvApiTimeImpl::a_hidl_c_dt_utc_sec_to_loc_dtg(
        int64_t seconds, const HIDL_DTG_T& date_time, a_hidl_c_dt_utc_sec_to_loc_dtg_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answerRecord(_hidl_cb, c_dt_utc_sec_to_loc_dtg, toMiddleware(date_time), seconds);
}

Return<void> QorTvApiTimeImpl::a_hidl_c_dt_get_utc(uint16_t status, int32_t milliseconds,
                                                   a_hidl_c_dt_get_utc_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    // Unlike in time_get_utc_time, the client gets back the status that it sent: clients rely on
    // that.
    uint16_t status_for_middleware = status;
    const int64_t seconds = c_dt_get_utc(&status_for_middleware, &milliseconds);
    _hidl_cb(status, milliseconds, seconds);
    return Void();
}

Return<void> QorTvApiTimeImpl::a_hidl_c_dt_conv_utc_local(const HIDL_DTG_T& date_time,
                                                          a_hidl_c_dt_conv_utc_local_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    const DTG_T input = toMiddleware(date_time);
    return answerRecord(_hidl_cb, c_dt_conv_utc_local, DTG_T{}, &input);
}

Return<void> QorTvApiTimeImpl::a_hidl_c_dt_mjd_to_dtg(uint32_t mjd,
                                                      a_hidl_c_dt_mjd_to_dtg_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    return answerRecord(_hidl_cb, c_dt_mjd_to_dtg, DTG_T{}, mjd);
}

Return<int64_t> QorTvApiTimeImpl::a_hidl_c_dt_dtg_to_sec(const HIDL_DTG_T& date_time) {
    TVAPI_DEBUG("Enter.");
    const DTG_T input = toMiddleware(date_time);
    return c_dt_dtg_to_sec(&input);
}

Return<void> QorTvApiTimeImpl::a_hidl_c_dt_dtg_to_mjd_bcd(const HIDL_DTG_T& date_time,
                                                          a_hidl_c_dt_dtg_to_mjd_bcd_cb _hidl_cb) {
    TVAPI_DEBUG("Enter.");
    const DTG_T input = toMiddleware(date_time);
    return answer(_hidl_cb, c_dt_dtg_to_mjd_bcd, &input);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
