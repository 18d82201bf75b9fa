// Descriptor of a fast message queue. This runtime has no queues; generated code needs the type.
#pragma once

#include <hidl/HidlSupport.h>

namespace android::hardware {

enum MQFlavor : uint32_t { kSynchronizedReadWrite = 0x01, kUnsynchronizedWrite = 0x02 };

template <typename T, MQFlavor flavor>
struct MQDescriptor {
  private:
    hidl_vec<uint8_t> mGrantors;
    details::hidl_pointer<native_handle_t> mHandle;
    uint32_t mQuantum = 0;
    uint32_t mFlags = flavor;
};
static_assert(sizeof(MQDescriptor<char, kSynchronizedReadWrite>) == 32, "wrong size");

}  // namespace android::hardware
