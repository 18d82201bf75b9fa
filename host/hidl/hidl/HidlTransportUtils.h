// Questions about an object's interface chain.
#pragma once

#include <string>
#include <vector>

#include <android/hidl/base/1.0/IBase.h>
#include <hidl/Status.h>

namespace android::hardware::details {

// Whether `interface` is an object of the interface `castTo` or of a child of it. Asks a remote
// object over the transport; the status of a failed call is the Return's. emitError: log a refusal.
Return<bool> canCastInterface(::android::hidl::base::V1_0::IBase* interface, const char* castTo,
                              bool emitError = false);

// Returns the name of the object's own interface; empty if the call of a remote one fails.
std::string getDescriptor(::android::hidl::base::V1_0::IBase* interface);

// Returns the names of the object's own interface and its ancestors up to IBase; empty if the call
// of a remote one fails.
std::vector<std::string> getInterfaceChain(::android::hidl::base::V1_0::IBase* interface);

}  // namespace android::hardware::details
