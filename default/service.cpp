/** The TV API service: connects to the TV middleware and offers it to the applications. */
#include <hidl/HidlTransportSupport.h>

#include "startup.h"

int main() {
    using namespace vendor::corvanta::tv::qortvapi::V1_0::implementation;
    Services services = startServices();  // NOLINT: read after the join
    ::android::hardware::joinRpcThreadpool();
    // Not reached while the service works.
    releaseInReverse(services);
    return 0;
}
