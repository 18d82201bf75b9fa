// The process's thread pool, settings for the calls of an object, and casts between interfaces.
#pragma once

#include <cstdint>
#include <string>

#include <android/hidl/base/1.0/IBase.h>
#include <hidl/HidlBinderSupport.h>
#include <hidl/HidlSupport.h>
#include <hidl/HidlTransportUtils.h>

namespace android::hardware {

// Limits the threads that serve calls to `maxThreads` (at least 1). callerWillJoin: the calling
// thread is one of them, because it is going to call joinRpcThreadpool. Threads are started as
// calls need them. To be called before the first service is registered or callback passed.
void configureRpcThreadpool(size_t maxThreads, bool callerWillJoin);

// Makes the calling thread serve calls; does not return.
[[noreturn]] void joinRpcThreadpool();

// Sets a scheduling policy and priority for the object's stub. This runtime keeps them without
// applying them. Returns false for an object that has a stub already, or values that no thread can
// have.
bool setMinSchedulerPolicy(const sp<::android::hidl::base::V1_0::IBase>& service, int policy,
                           int priority);

// Notes that the object wants its callers' security identity. Returns false for an object that has
// a stub already.
bool setRequestingSid(const sp<::android::hidl::base::V1_0::IBase>& service, bool requesting);

// Whether both are the same local object, or proxies of the same remote object.
bool interfacesEqual(const sp<::android::hidl::base::V1_0::IBase>& left,
                     const sp<::android::hidl::base::V1_0::IBase>& right);

namespace details {

// Returns the process id that getDebugInfo() tells.
int32_t getPidIfSharable();

// Returns `parent` as an IChild; null if it is none. Asks a remote object over the transport, so it
// can fail as a call can. emitError: log a refused cast, and return the status of a failed call
// instead of null.
template <typename IChild, typename IParent, typename BpChild>
Return<sp<IChild>> castInterface(sp<IParent> parent, const char* childIndicator, bool emitError) {
    if (parent == nullptr) return sp<IChild>();
    Return<bool> canCast = canCastInterface(parent.get(), childIndicator, emitError);
    if (!canCast.isOk()) {
        if (emitError) return StatusOf<bool, sp<IChild>>(canCast);
        return sp<IChild>();
    }
    if (!canCast) return sp<IChild>();
    if (parent->isRemote()) return sp<IChild>(new BpChild(getOrCreateCachedBinder(parent.get())));
    return sp<IChild>(static_cast<IChild*>(parent.get()));
}

}  // namespace details
}  // namespace android::hardware
