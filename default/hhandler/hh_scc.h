/**
 * The stream components of the process: the request handlers, which keep the components' handles
 * for all clients, and the notification handler of a video plane's source detection. Any thread.
 */
#pragma once

#include <hidl/HidlSupport.h>

#include <cstdint>
#include <functional>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;

/** Passes a detected source on to the clients. The middleware gets this handler with the request
 * for source detection. Returns 0. */
int32_t _inps_detect_cb(uint32_t h_comp, int32_t i4_cond, void* pv_tag, int32_t i4_data,
                        int32_t i4_data2);

/**
 * Opens the component of a `type` from 0 to 2 on the main or the sub display. Any prefix of
 * "snk_MainDisp" names the main display, any other prefix of "snk_SubDisp" the sub display. `code`
 * and `data` are a command of the client. Calls `answer` exactly once: with (handle, 0) if the
 * component is open now; with (handle, -1) if it was open before, and its handle may be used; with
 * (0, -1) if there is no such component; with (0, the middleware's result) if it cannot be opened.
 */
void hh_c_scc_comp_open(uint32_t type, const hidl_string& sink, uint32_t code,
                        const hidl_vec<uint8_t>& data,
                        const std::function<void(uint32_t, int32_t)>& answer);

/** Has no effect: the component stays open for the other clients. Returns 0. */
int32_t hh_c_scc_comp_close(uint32_t h_comp);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
