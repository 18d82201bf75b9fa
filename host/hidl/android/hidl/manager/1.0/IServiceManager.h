// The registry of services: the part that generated code and tools use.
#pragma once

#include <functional>

#include <android/hidl/base/1.0/IBase.h>
#include <android/hidl/manager/1.0/IServiceNotification.h>

namespace android::hidl::manager::V1_0 {

struct IServiceManager : public ::android::hidl::base::V1_0::IBase {
    using list_cb = std::function<void(const ::android::hardware::hidl_vec<
                                       ::android::hardware::hidl_string>& fqInstanceNames)>;

    // Returns all names "package@1.0::IFoo/instance" whose process is alive.
    virtual ::android::hardware::Return<void> list(list_cb _hidl_cb) = 0;

    // Notifies `callback` of each registration of `fqName` ("package@1.0::IFoo") with instance
    // `name` (empty: any), of present ones too. The registry keeps `callback` as long as the
    // process lives. Returns false if it is null, `fqName` is empty, or the runtime folder cannot
    // be watched.
    virtual ::android::hardware::Return<bool> registerForNotifications(
            const ::android::hardware::hidl_string& fqName,
            const ::android::hardware::hidl_string& name,
            const ::android::sp<IServiceNotification>& callback) = 0;
};

}  // namespace android::hidl::manager::V1_0
