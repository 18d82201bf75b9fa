/** The handler of a video plane's source detection. */
#pragma once

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

/** Reports a detected source to the clients; passed to the middleware with the request. Returns 0.
 */
int32_t _inps_detect_cb(uint32_t h_comp, int32_t i4_cond, void* pv_tag, int32_t i4_data,
                        int32_t i4_data2);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
