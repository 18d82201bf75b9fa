// The type of a handle in HIDL interfaces.
#pragma once

#include <cstddef>
#include <cstdint>

#include <cutils/native_handle.h>
#include <hidl/HidlInternal.h>

namespace android::hardware {

// A pointer to a native_handle_t (descriptors and integers). If it owns the handle, it closes the
// descriptors and deletes the handle in the end.
struct hidl_handle {
    hidl_handle();
    ~hidl_handle();
    // Without ownership.
    hidl_handle(const native_handle_t* handle);  // NOLINT: implicit
    // Duplicates the descriptors and owns the copies.
    hidl_handle(const hidl_handle& other);
    hidl_handle(hidl_handle&& other) noexcept;
    hidl_handle& operator=(const hidl_handle& other);
    hidl_handle& operator=(const native_handle_t* handle);
    hidl_handle& operator=(hidl_handle&& other) noexcept;

    void setTo(native_handle_t* handle, bool shouldOwn = false);
    const native_handle_t* operator->() const { return mHandle; }
    operator const native_handle_t*() const { return mHandle; }  // NOLINT: implicit
    const native_handle_t* getNativeHandle() const { return mHandle; }

    static const size_t kOffsetOfNativeHandle = 0;

  private:
    friend struct ReceivedTypes;
    void freeHandle();

    details::hidl_pointer<const native_handle_t> mHandle;
    bool mOwnsHandle;
    uint8_t mPad[7];
};
static_assert(sizeof(hidl_handle) == 16, "wrong size");

}  // namespace android::hardware
