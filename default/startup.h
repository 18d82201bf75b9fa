/** The start-up of the service up to the moment when only remote calls remain to be served. */
#pragma once

#include <android/hidl/base/1.0/IBase.h>
#include <utils/StrongPointer.h>

#include <vector>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

/** The implementations in the order of their registration. The service holds them until it ends. */
using Services = std::vector<::android::sp<::android::hidl::base::V1_0::IBase>>;

/**
 * Sets the size of the pool of RPC threads, which the caller has to join, reads the debug level,
 * and creates and registers each implementation in turn. A failed registration ends the process.
 */
Services startServices();

/** Drops the references, the last one first. */
void releaseInReverse(Services& services);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
