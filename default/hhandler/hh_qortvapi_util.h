/** The request handlers of the utility module, with buffers of the size that a client names. Any
 * thread. */
#pragma once

#include <hidl/HidlSupport.h>

#include <cstdint>
#include <functional>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;

/**
 * Reads a value of at most `size` bytes; only the low 32 bits of `size` count. The buffer begins
 * with all bytes of `data`, for which there is room even if they are more than `size`. Answers with
 * the size that the middleware reports, `size` bytes of the buffer and the result; with `size`, no
 * bytes and -1 if memory is short.
 */
void hh_a_qortvapi_util_get(
        const hidl_string& name, int32_t kind, const hidl_vec<uint8_t>& data, uint64_t size,
        const std::function<void(uint64_t, const hidl_vec<uint8_t>&, int32_t)>& answer);

/**
 * Reads the factory diagnosis of the tuner into two buffers of `size` bytes. The middleware is told
 * the number of entries, of 32 bytes each, as 8 bits. Answers with the result and both buffers, or
 * with -1 and no bytes if memory is short. Returns the result.
 */
int32_t hh_a_qortvapi_util_tuner_fac_query_diag(
        bool flag, uint64_t size,
        const std::function<void(int32_t, const hidl_vec<uint8_t>&, const hidl_vec<uint8_t>&)>&
                answer);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
