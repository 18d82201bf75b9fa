// Questions about an object's interface chain.
#pragma once

#include <string>
#include <vector>

#include <android/hidl/base/1.0/IBase.h>
#include <hidl/Status.h>

namespace android::hardware::details {

// Whether `interface` is an object of the interface `castTo` or of a child of it. A remote object
// is asked over the transport; a failed call is the Return's status. emitError: log a refusal.
Return<bool> canCastInterface(::android::hidl::base::V1_0::IBase* interface, const char* castTo,
                              bool emitError = false);

// Name of the object's own interface; empty if a remote one does not answer.
std::string getDescriptor(::android::hidl::base::V1_0::IBase* interface);

// Names from the object's own interface up to IBase; empty if a remote one does not answer.
std::vector<std::string> getInterfaceChain(::android::hidl::base::V1_0::IBase* interface);

}  // namespace android::hardware::details
