/** The request handlers of the warning announcements. Any thread. */
#pragma once

#include <hidl/HidlSupport.h>

#include <cstdint>
#include <functional>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_vec;

using EwspaAnswer = std::function<void(const hidl_vec<int32_t>&, int32_t)>;

/** Both hand the middleware a copy of `values`, and answer with the copy as the middleware left it
 * and the result. */
void hh_a_qortvapi_ewspa_set(uint8_t type, uint32_t id, const hidl_vec<int32_t>& values,
                             const EwspaAnswer& answer);
void hh_a_qortvapi_ewspa_get(uint8_t type, uint32_t id, const hidl_vec<int32_t>& values,
                             const EwspaAnswer& answer);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
