/**
 * The request handlers of the MHEG-5 engine. Any thread.
 *
 * Each calls the middleware function of its name with the client's arguments. An `answer` is called
 * exactly once, before the function returns, with the outputs and then the middleware's result.
 */
#pragma once

#include <hidl/HidlSupport.h>

#include <cstdint>
#include <functional>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;

/** Answers with the id of the service list and all bytes of both records of the channel. */
void hh_a_qortvapi_mheg5_get_current_channel(
        const std::function<void(uint16_t, const hidl_vec<uint8_t>&, const hidl_vec<uint8_t>&,
                                 int32_t)>& answer);
void hh_a_qortvapi_mheg5_get_pfg_info_len(const std::function<void(uint32_t, int32_t)>& answer);
/** Answers with a text of at most `length` bytes and whether to show it. Ends the process if there
 * is no memory for the text. */
void hh_a_qortvapi_mheg5_get_pfg_info(
        uint32_t length, const std::function<void(const hidl_string&, bool, int32_t)>& answer);
void hh_a_qortvapi_mheg5_get_internal_scrn(const std::function<void(bool, int32_t)>& answer);
int32_t hh_a_qortvapi_mheg5_set_pfg_result(bool right);
int32_t hh_a_qortvapi_mheg5_set_hbbtv_status(uint32_t id, bool success);
int32_t hh_a_qortvapi_mheg5_enabled();
int32_t hh_a_qortvapi_mheg5_disabled();
int32_t hh_a_qortvapi_mheg5_set_mheg5_status(int32_t type, int32_t arg1, int32_t arg2,
                                             int32_t arg3);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
