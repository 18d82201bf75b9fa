#include "bridge.h"

#include <android/log.h>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

void refuseOversizedImage(size_t length, size_t size, const char* method) {
    __android_log_assert("length <= size", "qortvapi-service",
                         "%s: bounded copy of %zu bytes into a block of %zu", method, length, size);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
