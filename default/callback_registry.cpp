// Logs under the tag of the core interface, through which the clients register.
#define LOG_TAG "QorTvApiImpl(service)"

#include "callback_registry.h"

#include <hidl/Status.h>

#include <atomic>
#include <iterator>

#include "log.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

using ::android::hardware::Return;

CallbackHandlers sCallbackHandlers;  // guarded by sCallbackMutex
std::mutex sCallbackMutex;
std::atomic<uint64_t> sNextCookie{0};  // written under sCallbackMutex, logged without it

unsigned long long printableCookie(uint64_t cookie) {
    return cookie;
}

}  // namespace

std::mutex& getCallbackMutex() {
    return sCallbackMutex;
}

CallbackHandlers& getCallbackHandlers() {
    return sCallbackHandlers;
}

void setCallback(const sp<IQorTvApiCallback>& callback,
                 const sp<ClientDeathRecipient>& death_recipient) {
    TVAPI_DEBUG(".%p %llu", static_cast<void*>(callback.get()), printableCookie(sNextCookie));
    if (callback == nullptr) {
        TVAPI_LOG("a client sent no callback object");
        return;
    }
    std::lock_guard<std::mutex> lock(sCallbackMutex);
    const uint64_t cookie = sNextCookie;
    sCallbackHandlers[cookie] = callback;
    const Return<bool> linked = callback->linkToDeath(death_recipient, cookie);
    // The entry stays: every notification to a client that is dead already fails from now on.
    if (!linked.isOk() || !linked)
        TVAPI_LOG("linkToDeath failed for %llu", printableCookie(cookie));
    ++sNextCookie;
}

void ClientDeathRecipient::serviceDied(uint64_t cookie,
                                       const wp<::android::hidl::base::V1_0::IBase>&) {
    TVAPI_LOG("serviceDied %llu", printableCookie(cookie));
    std::lock_guard<std::mutex> lock(sCallbackMutex);
    for (auto entry = sCallbackHandlers.begin(); entry != sCallbackHandlers.end();) {
        entry = entry->first == cookie ? sCallbackHandlers.erase(entry) : std::next(entry);
    }
    for (const auto& entry : sCallbackHandlers)
        TVAPI_DEBUG("cblist %llu\n", printableCookie(entry.first));
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
