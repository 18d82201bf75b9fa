// Finding services and being found: names of the form "package@1.0::IFoo/instance".
#pragma once

#include <string>

#include <android/hidl/base/1.0/IBase.h>
#include <android/hidl/manager/1.0/IServiceManager.h>
#include <hidl/HidlTransportSupport.h>
#include <hwbinder/IBinder.h>

namespace android::hardware {

// The registry. Never null.
sp<::android::hidl::manager::V1_0::IServiceManager> defaultServiceManager();

namespace details {

// Publishes the object under all names of its interface chain (but IBase's) and starts to serve.
// NAME_NOT_FOUND: no runtime folder; ALREADY_EXISTS: another living process has one of the names;
// BAD_VALUE: unusable instance name. Each with a log line.
status_t registerAsServiceInternal(const sp<::android::hidl::base::V1_0::IBase>& service,
                                   const std::string& name);

// The binder of a service, null if there is none (retry: wait until there is). A service of this
// process gives its stub.
sp<IBinder> getServiceBinder(const char* descriptor, const std::string& instance, bool retry);

// A service as generated code asks for it. getStub (the in-process library) is not served: null.
template <typename BpType, typename IType = typename BpType::Pure>
sp<IType> getServiceInternal(const std::string& instance, bool retry, bool getStub) {
    if (getStub) return nullptr;
    sp<IBinder> binder = getServiceBinder(IType::descriptor, instance, retry);
    return fromBinder<IType, BpType, void>(binder);
}

}  // namespace details
}  // namespace android::hardware
