// Registers services and finds them, by names of the form "package@1.0::IFoo/instance".
#pragma once

#include <string>

#include <android/hidl/base/1.0/IBase.h>
#include <android/hidl/manager/1.0/IServiceManager.h>
#include <hidl/HidlTransportSupport.h>
#include <hwbinder/IBinder.h>

namespace android::hardware {

// Returns the registry of services. Never null.
sp<::android::hidl::manager::V1_0::IServiceManager> defaultServiceManager();

namespace details {

// Registers the object under the names of all interfaces of its chain but IBase, and starts to
// serve. Returns OK, or after a log line NAME_NOT_FOUND without a usable runtime folder,
// ALREADY_EXISTS if another living process has one of the names, BAD_VALUE for an unusable name.
status_t registerAsServiceInternal(const sp<::android::hidl::base::V1_0::IBase>& service,
                                   const std::string& name);

// Returns the binder of a service, of one in this process its stub; null if there is none (retry:
// waits until there is).
sp<IBinder> getServiceBinder(const char* descriptor, const std::string& instance, bool retry);

// Returns a service to generated code. getStub asks for an implementation in a library of the
// process: this runtime has none and returns null.
template <typename BpType, typename IType = typename BpType::Pure>
sp<IType> getServiceInternal(const std::string& instance, bool retry, bool getStub) {
    if (getStub) return nullptr;
    sp<IBinder> binder = getServiceBinder(IType::descriptor, instance, retry);
    return fromBinder<IType, BpType, void>(binder);
}

}  // namespace details
}  // namespace android::hardware
