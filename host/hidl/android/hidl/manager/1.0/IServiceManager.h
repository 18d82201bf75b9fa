// The registry of services, as far as generated code and tools use it.
#pragma once

#include <functional>

#include <android/hidl/base/1.0/IBase.h>
#include <android/hidl/manager/1.0/IServiceNotification.h>

namespace android::hidl::manager::V1_0 {

struct IServiceManager : public ::android::hidl::base::V1_0::IBase {
    using list_cb = std::function<void(const ::android::hardware::hidl_vec<
                                       ::android::hardware::hidl_string>& fqInstanceNames)>;

    // All names "package@1.0::IFoo/instance" whose process is alive.
    virtual ::android::hardware::Return<void> list(list_cb _hidl_cb) = 0;

    // Tells `callback` of every registration of `fqName` ("package@1.0::IFoo") with instance `name`
    // (empty: any), of present ones too. The registry keeps `callback` for the process's life.
    // False if it is null, the name is empty, or the runtime folder cannot be watched.
    virtual ::android::hardware::Return<bool> registerForNotifications(
            const ::android::hardware::hidl_string& fqName,
            const ::android::hardware::hidl_string& name,
            const ::android::sp<IServiceNotification>& callback) = 0;
};

}  // namespace android::hidl::manager::V1_0
