/**
 * The notification handler of the input and output manager's devices, and the request handlers
 * whose data are in a client's shared region. Any thread.
 */
#pragma once

#include <hidl/HidlSupport.h>

#include <cstdint>
#include <functional>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_handle;
using ::android::hardware::hidl_string;

/** Passes the bytes that a device sent on to the clients. The middleware gets this handler when a
 * device is opened. */
void _iom_nfy_fct(void* pv_tag, uint32_t ui4_cond, const uint8_t* pui1_data, uint32_t ui4_length);

/**
 * Opens a serial device with the 16 bytes of settings in `region`. Answers with its handle and the
 * result, or with (0, -1) if the region cannot be mapped. The low 32 bits of `tag` come back with
 * each notification. An empty `answer` is not called.
 */
void hh_c_iom_open(uint16_t device, uint16_t port, const hidl_string& name,
                   const hidl_handle& region, uint64_t tag,
                   const std::function<void(uint32_t, int32_t)>& answer);

/**
 * Lets the middleware write into `region`, of which `size` bytes are mapped; only the low 32 bits
 * of `size` count. Answers with the size that the middleware reports and the result, or with
 * (`size`, -1) if the region has no descriptor. The middleware gets a null pointer if mapping
 * fails.
 */
void hh_c_iom_get(uint32_t h_iom, uint16_t type, const hidl_handle& region, uint64_t size,
                  const std::function<void(uint64_t, int32_t)>& answer);

/** Returns the middleware's result, or -1 if the region cannot be mapped. */
int32_t hh_c_iom_set(uint32_t h_iom, uint16_t type, const hidl_handle& region, uint64_t size);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
