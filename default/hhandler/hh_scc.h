/**
 * The stream components of the process: their handles, which all clients share, and the handler of
 * a video plane's source detection. Any thread.
 */
#pragma once

#include <hidl/HidlSupport.h>

#include <cstdint>
#include <functional>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;

/** Reports a detected source to the clients; passed to the middleware with the request. Returns 0.
 */
int32_t _inps_detect_cb(uint32_t h_comp, int32_t i4_cond, void* pv_tag, int32_t i4_data,
                        int32_t i4_data2);

/**
 * Opens the component of a `type` from 0 to 2 on the main or the sub display, which any beginning
 * of "snk_MainDisp" and of "snk_SubDisp" names, the first where both do; `code` and `data` are a
 * command of the client. Calls `answer` exactly once: (handle, 0) for a component that is open now;
 * (handle, -1) for one that was open already, and whose handle may be used; (0, -1) where there is
 * no such component; (0, the middleware's result) where it cannot be opened.
 */
void hh_c_scc_comp_open(uint32_t type, const hidl_string& sink, uint32_t code,
                        const hidl_vec<uint8_t>& data,
                        const std::function<void(uint32_t, int32_t)>& answer);

/** The component stays open for the other clients. Returns 0. */
int32_t hh_c_scc_comp_close(uint32_t h_comp);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
