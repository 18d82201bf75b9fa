/**
 * The requests of the scan whose answer depends on the middleware's result. Any thread; an `answer`
 * is called before the function returns.
 */
#pragma once

#include <hidl/HidlSupport.h>

#include <cstdint>
#include <functional>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;

using ScanExchangeAnswer = std::function<void(const hidl_vec<int32_t>&, int32_t)>;

/** Each hands its engine a copy of `data`, and answers what the engine left there and 0, or nothing
 * and the result of a failure. */
void hh_a_scan_dvbs_exchange_data(const hidl_vec<int32_t>& data, const ScanExchangeAnswer& answer);
void hh_a_scan_dvbc_exchange_data(const hidl_vec<int32_t>& data, const ScanExchangeAnswer& answer);
void hh_a_scan_dvbt_exchange_data(const hidl_vec<int32_t>& data, const ScanExchangeAnswer& answer);

// Texts. The middleware gets a buffer of `length` bytes and a NUL to rewrite, which begins with the
// bytes of the client's text; where there are fewer of those than `length`, zeros follow. A length
// below -1, or one that 32 bits cannot say with the NUL, ends the process as if memory were short.

/** Answers the buffer, `length` and 0, or the buffer, 0 and the result of a failure, which is
 * always logged. */
void hh_a_qortvapi_get_user_message(
        const hidl_string& message, uint32_t length,
        const std::function<void(const hidl_string&, uint32_t, int32_t)>& answer);

/** Answers the buffer, `length` and 0. A failure is always logged and not answered. */
void hh_a_qortvapi_scan_dvbc_get_str_data(
        int32_t type, const hidl_string& text, int32_t length,
        const std::function<void(const hidl_string&, int32_t, int32_t)>& answer);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
