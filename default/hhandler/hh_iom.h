/** The handler of the input and output manager's devices. */
#pragma once

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

/** Reports what a device sent to the clients; passed to the middleware when a device is opened. */
void _iom_nfy_fct(void* pv_tag, uint32_t ui4_cond, const uint8_t* pui1_data, uint32_t ui4_length);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
