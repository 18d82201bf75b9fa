/**
 * The core TV interface, and the two things of the process that hang on it: the connection to the
 * middleware, brought up by the constructor, and the registry of the clients' callbacks.
 */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>
#include <utils/StrongPointer.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApi.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiCallback.h>

#include <cstdint>
#include <mutex>
#include <unordered_map>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::sp;
using ::android::wp;
using ::android::hardware::Return;

/** Drops a client from the registry when its process dies. One object serves every client. */
struct ClientDeathRecipient : public ::android::hardware::hidl_death_recipient {
    /** Called on a transport thread with the cookie that the client was registered under. */
    void serviceDied(uint64_t cookie, const wp<::android::hidl::base::V1_0::IBase>& who) override;
};

class QorTvApiImpl : public IQorTvApi {
  public:
    using CallbackHandlers = std::unordered_map<uint64_t, sp<IQorTvApiCallback>>;

    /**
     * Waits until the middleware is ready (at most some 90 seconds), connects to it and registers
     * the notification handlers. A failure is logged and leaves a service without a middleware.
     */
    QorTvApiImpl();

    /** The mutex of the registry. Held by every notification handler while it calls the clients. */
    static std::mutex& getCallbackMutex();
    /** The registered clients by cookie. The caller holds the mutex while it uses the map. */
    static CallbackHandlers& getCallbackHandlers();

    Return<void> setCallback(const sp<IQorTvApiCallback>& callback) override;

  private:
    Return<void> initRPC();
    Return<void> initCallback();

    sp<ClientDeathRecipient> mDeathRecipient;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
