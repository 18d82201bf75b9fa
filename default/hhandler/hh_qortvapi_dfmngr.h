/** The request handler of the data-file manager: the file of a channel logo. Any thread. */
#pragma once

#include <hidl/HidlSupport.h>

#include <cstdint>
#include <functional>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;

/** Answers with the path of the logo's file, not its contents, and the result. */
void hh_a_qortvapi_load_ch_logo(uint16_t original_network_id, uint16_t service_id,
                                uint32_t frequency,
                                const std::function<void(const hidl_string&, int32_t)>& answer);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
