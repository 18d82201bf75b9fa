// Wraps local objects for use without a transport ("passthrough").
#pragma once

#include <hidl/HidlSupport.h>
#include <utils/StrongPointer.h>

namespace android::hardware::details {

// Returns the passthrough wrapper of a local object. Proxies, wrappers and null are returned as
// they are.
sp<::android::hidl::base::V1_0::IBase> wrapPassthroughInternal(
        sp<::android::hidl::base::V1_0::IBase> iface);

template <typename IType,
          typename = std::enable_if_t<std::is_same<i_tag, typename IType::_hidl_tag>::value>>
sp<IType> wrapPassthrough(sp<IType> iface) {
    if (iface == nullptr) return nullptr;
    return static_cast<IType*>(wrapPassthroughInternal(iface).get());
}

}  // namespace android::hardware::details
