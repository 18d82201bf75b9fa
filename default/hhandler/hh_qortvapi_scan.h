/**
 * The request handlers of the scan, whose answers depend on the middleware's result. Any thread. An
 * `answer` is called before the function returns.
 */
#pragma once

#include <hidl/HidlSupport.h>

#include <cstdint>
#include <functional>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;

using ScanExchangeAnswer = std::function<void(const hidl_vec<int32_t>&, int32_t)>;

/** Each hands its engine a copy of `data`. Answers with the copy as the engine left it and 0, or
 * with no numbers and the result of a failure. */
void hh_a_scan_dvbs_exchange_data(const hidl_vec<int32_t>& data, const ScanExchangeAnswer& answer);
void hh_a_scan_dvbc_exchange_data(const hidl_vec<int32_t>& data, const ScanExchangeAnswer& answer);
void hh_a_scan_dvbt_exchange_data(const hidl_vec<int32_t>& data, const ScanExchangeAnswer& answer);

// Texts. The middleware rewrites a buffer of `length` bytes and a NUL, which begins with the bytes
// of the client's text, as far as they fit, and is filled up with zeros. The process ends, as if
// memory were short, if `length` is below -1 or does not fit in 32 bits together with the NUL.

/** Answers with the buffer, `length` and 0, or with the buffer, 0 and the result of a failure. A
 * failure is logged, whether debugging is on or not. */
void hh_a_qortvapi_get_user_message(
        const hidl_string& message, uint32_t length,
        const std::function<void(const hidl_string&, uint32_t, int32_t)>& answer);

/** Answers with the buffer, `length` and 0. A failure is logged, whether debugging is on or not,
 * and not answered. */
void hh_a_qortvapi_scan_dvbc_get_str_data(
        int32_t type, const hidl_string& text, int32_t length,
        const std::function<void(const hidl_string&, int32_t, int32_t)>& answer);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
