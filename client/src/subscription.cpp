#include "qortv/subscription.h"

#include <algorithm>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <thread>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApi.h>

#include "relay.h"

namespace qortv {

using android::sp;
using android::wp;
using android::hidl::base::V1_0::IBase;
using std::chrono::milliseconds;
using vendor::corvanta::tv::qortvapi::V1_0::IQorTvApi;

namespace {

constexpr milliseconds kFirstReconnectPause{50};
constexpr milliseconds kLongestReconnectPause{2000};

/**
 * State of the connection, shared by the runtime's threads, which report the death of the service,
 * and the thread that reconnects. The runtime may report a death after the subscription was
 * destroyed; it keeps this object alive until then.
 */
class DeathWatch : public android::hardware::hidl_death_recipient {
  public:
    /** @param cookie the registration that was lost; ignored if it is not the current one */
    void serviceDied(uint64_t cookie, const wp<IBase>&) override {
        std::lock_guard lock(mMutex);
        if (cookie != mRegistration) return;
        mAlive = false;
        mChanged.notify_all();
    }

    /** Starts a new registration and returns its cookie. */
    uint64_t begin() {
        std::lock_guard lock(mMutex);
        mAlive = true;
        mRegistered = false;
        return ++mRegistration;
    }

    /** Marks the current registration as complete. */
    void complete() {
        std::lock_guard lock(mMutex);
        mRegistered = true;
    }

    /** Ends the waiting of the thread that reconnects. */
    void stop() {
        std::lock_guard lock(mMutex);
        mStopped = true;
        mChanged.notify_all();
    }

    /** Waits until the service of the current registration dies. Returns false when stopped. */
    bool waitForDeath() {
        std::unique_lock lock(mMutex);
        mChanged.wait(lock, [&] { return mStopped || !mAlive; });
        return !mStopped;
    }

    /** Waits for the duration. Returns false when stopped. */
    bool pause(milliseconds duration) {
        std::unique_lock lock(mMutex);
        return !mChanged.wait_for(lock, duration, [&] { return mStopped; });
    }

    bool connected() {
        std::lock_guard lock(mMutex);
        return mAlive && mRegistered;
    }

  private:
    std::mutex mMutex;
    std::condition_variable mChanged;
    uint64_t mRegistration = 0;
    bool mAlive = false;
    bool mRegistered = false;
    bool mStopped = false;
};

}  // namespace

class Subscription::Impl {
  public:
    Impl(Listener& listener, milliseconds timeout) : mRelay(new Relay(listener)) {
        try {
            registerListener(timeout);
            mThread = std::thread([this] { keepRegistered(); });
        } catch (...) {
            mRelay->close();  // the service may have registered it before the failure
            throw;
        }
    }

    ~Impl() {
        mWatch->stop();
        mThread.join();
        mRelay->close();
    }

    bool connected() const { return mWatch->connected(); }

  private:
    // Links to the death of the service first, so that its death between the two calls is noticed.
    void registerListener(milliseconds timeout) {
        mProxy = connect<IQorTvApi>(timeout);
        const uint64_t registration = mWatch->begin();
        if (!valueOf(mProxy->linkToDeath(mWatch, registration), "linkToDeath")) {
            throw Error(Error::Kind::kLost, "the service died as it was found");
        }
        check(mProxy->setCallback(mRelay), "setCallback");
        mWatch->complete();
    }

    /** Returns false when stopped. */
    bool reconnect() {
        auto wait = kFirstReconnectPause;
        while (mWatch->pause(wait)) {
            try {
                registerListener(milliseconds{0});
                return true;
            } catch (const Error&) {
                // The service is not there yet or has died again.
                wait = std::min(wait * 2, kLongestReconnectPause);
            }
        }
        return false;
    }

    void keepRegistered() {
        while (mWatch->waitForDeath()) {
            mRelay->pass(&Listener::onDisconnected);
            if (!reconnect()) return;
            mRelay->pass(&Listener::onConnected);
        }
    }

    const sp<Relay> mRelay;
    const sp<DeathWatch> mWatch = new DeathWatch;
    sp<IQorTvApi> mProxy;
    std::thread mThread;
};

Subscription::Subscription(Listener& listener, milliseconds timeout)
    : mImpl(std::make_unique<Impl>(listener, timeout)) {}

Subscription::~Subscription() = default;

bool Subscription::connected() const {
    return mImpl->connected();
}

}  // namespace qortv
