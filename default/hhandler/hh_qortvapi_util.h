/** The requests of the utility module that need buffers of their clients' sizes. Any thread. */
#pragma once

#include <hidl/HidlSupport.h>

#include <cstdint>
#include <functional>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;

/**
 * Reads a value of at most `size` bytes, of which the low 32 bits count. The whole of `data` is
 * copied to the start of the buffer without a check: it must not be longer than `size`. Answers the
 * middleware's size, all bytes of the buffer and the result; where memory is short `size`, no bytes
 * and -1.
 */
void hh_a_qortvapi_util_get(
        const hidl_string& name, int32_t kind, const hidl_vec<uint8_t>& data, uint64_t size,
        const std::function<void(uint64_t, const hidl_vec<uint8_t>&, int32_t)>& answer);

/**
 * Reads the factory diagnosis of the tuner into two buffers of `size` bytes. The middleware counts
 * in entries of 32 bytes and takes 8 bits of that count. Answers the result and both buffers, -1
 * and no bytes where memory is short; returns the result.
 */
int32_t hh_a_qortvapi_util_tuner_fac_query_diag(
        bool flag, uint64_t size,
        const std::function<void(int32_t, const hidl_vec<uint8_t>&, const hidl_vec<uint8_t>&)>&
                answer);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
