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

constexpr milliseconds kFirstPause{50};
constexpr milliseconds kLongestPause{2000};

/**
 * What the runtime's threads and the reconnecting thread share. The runtime may report a death
 * after the subscription is gone, so the recipient itself holds the state.
 */
class DeathWatch : public android::hardware::hidl_death_recipient {
  public:
    /** @param cookie the registration that died: an old one says nothing about the present one */
    void serviceDied(uint64_t cookie, const wp<IBase>&) override {
        std::lock_guard lock(mMutex);
        if (cookie != mRegistration) return;
        mAlive = false;
        mChanged.notify_all();
    }

    /** A new registration begins; returns its cookie. */
    uint64_t begin() {
        std::lock_guard lock(mMutex);
        mAlive = true;
        mRegistered = false;
        return ++mRegistration;
    }

    /** The registration that was begun is complete. */
    void complete() {
        std::lock_guard lock(mMutex);
        mRegistered = true;
    }

    void stop() {
        std::lock_guard lock(mMutex);
        mStopped = true;
        mChanged.notify_all();
    }

    /** Waits for the death of the present registration; false when stopped instead. */
    bool waitForDeath() {
        std::unique_lock lock(mMutex);
        mChanged.wait(lock, [&] { return mStopped || !mAlive; });
        return !mStopped;
    }

    /** Sleeps; false when stopped. */
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
            join(timeout);
            mThread = std::thread([this] { keepJoined(); });
        } catch (...) {
            mRelay->close();  // a service that failed half-way may have kept it
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
    // Links first: a service that dies between the two calls is noticed.
    void join(milliseconds timeout) {
        mProxy = connect<IQorTvApi>(timeout);
        const uint64_t registration = mWatch->begin();
        if (!valueOf(mProxy->linkToDeath(mWatch, registration), "linkToDeath")) {
            throw Error(Error::Kind::kLost, "the service died as it was found");
        }
        check(mProxy->setCallback(mRelay), "setCallback");
        mWatch->complete();
    }

    bool joinAgain() {
        auto wait = kFirstPause;
        while (mWatch->pause(wait)) {
            try {
                join(milliseconds{0});
                return true;
            } catch (const Error&) {
                // Not there yet, or gone again: both are what the pauses are for.
                wait = std::min(wait * 2, kLongestPause);
            }
        }
        return false;
    }

    void keepJoined() {
        while (mWatch->waitForDeath()) {
            mRelay->pass(&Listener::onDisconnected);
            if (!joinAgain()) return;
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
