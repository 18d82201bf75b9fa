// Maps of the runtime, one of each for the process. They are made on first use and never destroyed,
// because the static constructors and destructors of generated code use them.
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

// The functions that make the stub (Bn) or the passthrough wrapper (Bs) of an object, by name of
// the object's interface. Their argument is the object as a pointer to that interface.
using BnConstructorMap = ConcurrentMap<std::string, std::function<sp<IBinder>(void*)>>;
using BsConstructorMap =
        ConcurrentMap<std::string, std::function<sp<::android::hidl::base::V1_0::IBase>(void*)>>;
BnConstructorMap& getBnConstructorMap();
BsConstructorMap& getBsConstructorMap();

struct SchedPrio {
    int sched_policy;
    int prio;
};

// A pointer to a T that is made on first use and never destroyed.
template <typename T>
class ImmortalPointer {
  public:
    T* operator->() const {
        static T* const object = new T();
        return object;
    }
};

// By object: the scheduling asked for its calls, whether it wants its callers' security identity,
// and the stub of a local object that has one (weak: a stub lives as long as it is referred to).
using IBase = ::android::hidl::base::V1_0::IBase;
inline const ImmortalPointer<ConcurrentMap<wp<IBase>, SchedPrio>> gServicePrioMap;
inline const ImmortalPointer<ConcurrentMap<wp<IBase>, bool>> gServiceSidMap;
inline const ImmortalPointer<ConcurrentMap<const IBase*, wp<BHwBinder>>> gBnMap;

}  // namespace hardware::details
}  // namespace android
