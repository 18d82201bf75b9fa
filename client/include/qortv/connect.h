/** Connects to the interfaces of the television, and turns failed calls into exceptions. */
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>

#include "qortv/error.h"

namespace qortv {

/** How long connect() waits for a service that is not registered (yet). */
constexpr std::chrono::milliseconds kConnectTimeout{5000};

/**
 * Returns the folder in which services are registered: $QORTV_RUNTIME_DIR, else
 * $XDG_RUNTIME_DIR/qortv, else /run/qortv.
 */
std::string runtimeFolder();

/**
 * Calls `attempt` until it returns true: immediately, then whenever a service registers, and at
 * least twice a second.
 *
 * @throws Error kNoService when `timeout` has passed; the message names the interface and the
 *     folder that was searched
 */
void waitForService(const std::string& descriptor, const std::string& instance,
                    std::chrono::milliseconds timeout, const std::function<bool()>& attempt);

/**
 * Returns the proxy of interface `I` (any interface of vendor.corvanta.tv.qortvapi@1.0). Waits for
 * the service when it is not running yet. A timeout of 0 tries once.
 *
 * The proxy may be used by many threads at once. It stays unusable after the service has died: its
 * calls fail, for which check() throws Error kLost. Call connect() again for a new proxy.
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
 * @param method name of the method that was called, for the message
 * @throws Error kLost or kTransport
 */
void check(const android::hardware::details::return_status& status, const char* method);

/** Returns the value that a call returned, after check(). */
template <typename T>
T valueOf(const android::hardware::Return<T>& result, const char* method) {
    check(result, method);
    return result;
}

}  // namespace qortv
