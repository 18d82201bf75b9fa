/** Finding the television's interfaces, and making calls on them without losing an error. */
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>

#include "qortv/error.h"

namespace qortv {

/** How long connect() waits for a service that is not there (yet). */
constexpr std::chrono::milliseconds kConnectTimeout{5000};

/**
 * The folder that services are looked for in: $QORTV_RUNTIME_DIR, else $XDG_RUNTIME_DIR/qortv, else
 * /run/qortv.
 */
std::string runtimeFolder();

/**
 * Calls `attempt` until it returns true: first at once, then whenever a service registers, and
 * twice a second in between.
 *
 * @throws Error kNoService when `timeout` has passed; the message names the interface and the
 *     folder that was searched
 */
void waitForService(const std::string& descriptor, const std::string& instance,
                    std::chrono::milliseconds timeout, const std::function<bool()>& attempt);

/**
 * The proxy of interface `I` (any interface of vendor.corvanta.tv.qortvapi@1.0), waiting for the
 * service to appear when it is not running yet. A timeout of 0 tries once.
 *
 * The proxy may be used by many threads at once. It does not come back to life when the service
 * dies: its calls then fail with Error kLost through check() below, and connect() gives a new one.
 *
 * @throws Error kNoService
 */
template <typename I>
android::sp<I> connect(std::chrono::milliseconds timeout = kConnectTimeout,
                       const std::string& instance = "default") {
    android::sp<I> proxy;
    waitForService(I::descriptor, instance, timeout, [&] {
        proxy = I::tryGetService(instance);
        return proxy != nullptr;
    });
    return proxy;
}

/**
 * Throws if a call did not reach the service or its answer did not come back.
 *
 * @param method what was called, for the message
 * @throws Error kLost or kTransport
 */
void check(const android::hardware::details::return_status& status, const char* method);

/** The plain result of a call that has one, after check(). */
template <typename T>
T valueOf(const android::hardware::Return<T>& result, const char* method) {
    check(result, method);
    return result;
}

}  // namespace qortv
