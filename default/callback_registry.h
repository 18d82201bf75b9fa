/**
 * The registry of the clients' callbacks: which applications receive the middleware's
 * notifications. There is one for the process.
 */
#pragma once

#include <hidl/HidlSupport.h>
#include <utils/StrongPointer.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiCallback.h>

#include <cstdint>
#include <mutex>
#include <unordered_map>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::sp;
using ::android::wp;

/** Drops a client from the registry when its process dies. One object serves every client. */
struct ClientDeathRecipient : public ::android::hardware::hidl_death_recipient {
    /** Called on a transport thread with the cookie that the client was registered under. */
    void serviceDied(uint64_t cookie, const wp<::android::hidl::base::V1_0::IBase>& who) override;
};

/** The registered clients by cookie: 0, 1, 2 and so on in the order of registration. */
using CallbackHandlers = std::unordered_map<uint64_t, sp<IQorTvApiCallback>>;

/** The mutex of the registry. Held by every notification handler while it calls the clients. */
std::mutex& getCallbackMutex();

/** The map of the registry. The caller holds the mutex while it uses the map. */
CallbackHandlers& getCallbackHandlers();

/**
 * Registers `callback` under the next cookie and links its process to `death_recipient`. An object
 * that is registered twice has two entries. There is no way to take an entry back: it leaves the
 * registry when its process dies. Takes the mutex. Any thread.
 */
void setCallback(const sp<IQorTvApiCallback>& callback,
                 const sp<ClientDeathRecipient>& death_recipient);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
