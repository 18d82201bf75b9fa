/** The request handler of the advertising-insertion module, which this television does not have.
 * Any thread. */
#pragma once

#include <hidl/HidlSupport.h>

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_vec;

/** Writes a log line, whether debugging is on or not. There is no answer to the client. */
void hh_c_dai_tvapi_exchange_data(const hidl_vec<uint8_t>& data);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
