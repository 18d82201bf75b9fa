// The type of a piece of shared memory in HIDL interfaces.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include <hidl/HidlHandle.h>
#include <hidl/HidlString.h>

namespace android::hardware {

// A piece of shared memory: a handle, its size in bytes, and the name of its allocator's kind.
struct hidl_memory {
    hidl_memory() : mSize(0) {}
    hidl_memory(const hidl_string& name, hidl_handle&& handle, size_t size)
        : mHandle(std::move(handle)), mSize(size), mName(name) {}

    const native_handle_t* handle() const { return mHandle; }
    const hidl_string& name() const { return mName; }
    uint64_t size() const { return mSize; }
    bool valid() const { return mHandle != nullptr; }

    static const size_t kOffsetOfHandle = 0;
    static const size_t kOffsetOfName = 24;

  private:
    friend struct ReceivedTypes;
    hidl_handle mHandle;
    uint64_t mSize;
    hidl_string mName;
};
static_assert(sizeof(hidl_memory) == 40, "wrong size");

}  // namespace android::hardware
