#include "bridge.h"

#include <android/log.h>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

void* zeroedMemory(int64_t count, size_t size) {
    if (count < 0 || static_cast<uint64_t>(count) > UINT32_MAX / size) return nullptr;
    const uint64_t bytes = static_cast<uint64_t>(count) * size + 1;
    return bytes <= UINT32_MAX ? calloc(bytes, 1) : nullptr;
}

void endForLackOfMemory(int64_t count, size_t size, const char* method) {
    __android_log_assert("array != nullptr", "qortvapi-service",
                         "%s: no memory for %lld elements of %zu bytes", method,
                         static_cast<long long>(count), size);
}

void refuseOversizedImage(size_t length, size_t size, const char* method) {
    __android_log_assert("length <= size", "qortvapi-service",
                         "%s: bounded copy of %zu bytes into a block of %zu", method, length, size);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
