#include "qortv/connect.h"

#include <algorithm>

#include <hidl/Services.h>
#include <transport/Registry.h>

namespace qortv {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

namespace {

// A new name in the folder ends a pause immediately. The limit is for changes that the folder does
// not show, for example when a full service can accept one more process again.
constexpr milliseconds kLongestWatch{500};

/** Returns the message for a service that was not found: where it was looked for, and the process
 * of that name if there is or was one. */
std::string notFound(const std::string& descriptor, const std::string& instance) {
    std::string text = "no service: nothing is registered as ";
    text.append(descriptor).append("/").append(instance).append(" in ").append(runtimeFolder());
    for (const auto& service : android::hardware::listServices()) {
        if (service.interface != descriptor || service.instance != instance) continue;
        text.append(" (process ").append(std::to_string(service.pid));
        text.append(service.alive ? " is, but does not let this process connect)"
                                  : " was, and is gone)");
    }
    return text;
}

}  // namespace

std::string runtimeFolder() {
    return android::hardware::transport::Registry::folder();
}

void waitForService(const std::string& descriptor, const std::string& instance,
                    milliseconds timeout, const std::function<bool()>& attempt) {
    const auto deadline = steady_clock::now() + timeout;
    android::hardware::transport::RegistryWatch watch(runtimeFolder());
    while (!attempt()) {
        const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
        if (left <= milliseconds{0}) {
            throw Error(Error::Kind::kNoService, notFound(descriptor, instance));
        }
        watch.wait(static_cast<int>(std::min(left, kLongestWatch).count()));
    }
}

void check(const android::hardware::details::return_status& status, const char* method) {
    if (status.isOk()) return;
    if (status.isDeadObject()) {
        throw Error(Error::Kind::kLost, std::string("the service went away during ") + method);
    }
    throw Error(Error::Kind::kTransport,
                std::string("the call of ") + method + " failed: " + status.description());
}

}  // namespace qortv
