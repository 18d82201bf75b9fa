// Process-wide maps of the runtime. They are made on first use and never destroyed, because the
// generated code's static constructors and destructors use them.
#pragma once

#include <functional>
#include <string>

#include <hidl/ConcurrentMap.h>
#include <hwbinder/IBinder.h>
#include <utils/RefBase.h>

namespace android {

namespace hidl::base::V1_0 {
struct IBase;
}

namespace hardware::details {

// Makes the stub (Bn) or the passthrough wrapper (Bs) of an object, by name of its interface. The
// argument is the object as a pointer to that interface.
using BnConstructorMap = ConcurrentMap<std::string, std::function<sp<IBinder>(void*)>>;
using BsConstructorMap =
        ConcurrentMap<std::string, std::function<sp<::android::hidl::base::V1_0::IBase>(void*)>>;
BnConstructorMap& getBnConstructorMap();
BsConstructorMap& getBsConstructorMap();

struct SchedPrio {
    int sched_policy;
    int prio;
};

// Looks like a pointer to a T that is made on first use and never destroyed.
template <typename T>
class ImmortalPointer {
  public:
    T* operator->() const {
        static T* const object = new T();
        return object;
    }
};

// Scheduling wished for an object's calls, whether it wants its callers' security identity, and the
// stub of each local object that has one (weak: a stub lives while somebody refers to it).
using IBase = ::android::hidl::base::V1_0::IBase;
inline const ImmortalPointer<ConcurrentMap<wp<IBase>, SchedPrio>> gServicePrioMap;
inline const ImmortalPointer<ConcurrentMap<wp<IBase>, bool>> gServiceSidMap;
inline const ImmortalPointer<ConcurrentMap<const IBase*, wp<BHwBinder>>> gBnMap;

}  // namespace hardware::details
}  // namespace android
