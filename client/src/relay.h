/** The callback object that the service calls: forwards every call to a listener. */
#pragma once

#include <mutex>
#include <utility>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiCallback.h>

#include "qortv/listener.h"

namespace qortv {

/**
 * Forwards each callback to the method of the listener that has its name.
 *
 * The service keeps a callback until this process ends, so this object may outlive the subscription
 * and its listener; after close() it ignores what it receives. Its mutex is held while the listener
 * is called: the calls come one at a time, and close() waits for one that is running.
 */
class Relay : public vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiCallback {
  public:
    template <typename T>
    using Return = android::hardware::Return<T>;
    using hidl_string = android::hardware::hidl_string;

    /** @param listener must live until close() has returned */
    explicit Relay(Listener& listener) : mListener(&listener) {}

    /**
     * Ends the calls of the listener. May be called by any thread except, as it would wait for
     * itself, the one that is calling the listener.
     */
    void close() {
        std::lock_guard lock(mMutex);
        mListener = nullptr;
    }

    /** Calls a method of the listener that has no result. Any thread. */
    template <typename... A, typename... B>
    Return<void> pass(void (Listener::*method)(A...), B&&... arguments) {
        std::lock_guard lock(mMutex);
        if (mListener != nullptr) (mListener->*method)(std::forward<B>(arguments)...);
        return {};
    }

    Return<void> queryAndroid(uint32_t code, uint64_t tag, uint32_t attribute,
                              queryAndroid_cb _hidl_cb) override;
    Return<void> isMheg5MimeTypeSupported(const hidl_string& mime_type, uint64_t tag, int32_t arg1,
                                          isMheg5MimeTypeSupported_cb _hidl_cb) override;

    // All other callbacks.
#define QORTV_CALLBACK(method, ...) pass(&Listener::method, __VA_ARGS__)
#include "callback_overrides.inc"
#undef QORTV_CALLBACK

  private:
    /** Calls a method of the listener and returns its answer; after close(), the default answer,
     * which declines. */
    template <typename R, typename... A, typename... B>
    R ask(R (Listener::*method)(A...), B&&... arguments) {
        std::lock_guard lock(mMutex);
        return mListener == nullptr ? R{} : (mListener->*method)(std::forward<B>(arguments)...);
    }

    std::mutex mMutex;
    Listener* mListener;  ///< null after close(); guarded by mMutex
};

}  // namespace qortv
