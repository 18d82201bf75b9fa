#include "television/core/notifier.h"

#include <algorithm>

#include "middleware/channellist.h"
#include "television/base/log.h"
#include "television/core/handler_shapes.h"

namespace television {
namespace {

/** Whether the notifications of a registration are updates of a list, of which one can stand for
 * several. */
bool isListUpdate(RegistrationKey to) {
    return to == registration<&a_qortvapi_channellist_register_callback>() ||
           to == registration<&a_qortvapi_tvprovider_channellist_register_callback>() ||
           to == registration<&a_qortvapi_bisskey_register_callback>() ||
           to == registration<&a_qortvapi_nwl_update_register_callback>();
}

/** The notification that stands for several updates of a list. `lastCode`: that of the last one. */
Notification everythingChanged(RegistrationKey to, int32_t lastCode) {
    const bool channels =
            to == registration<&a_qortvapi_channellist_register_callback>() ||
            to == registration<&a_qortvapi_tvprovider_channellist_register_callback>();
    return {to, channels ? int32_t{CHANNEL_LIST_NFY_LOADED} : lastCode, {}};
}

}  // namespace

void Notifier::start(std::chrono::milliseconds tick) {
    mStop = false;
    mThread = std::thread([this, tick] { run(tick); });
}

void Notifier::stop() {
    if (!mThread.joinable()) return;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        mStop = true;
        mChanged.notify_all();
    }
    mThread.join();
    mPending.clear();
    mLater.clear();
}

void Notifier::post(const Notification& notification) {
    if (!notification.call && mRegistrations.empty(notification.to)) return;
    std::lock_guard<std::mutex> lock(mMutex);
    add(notification);
}

void Notifier::postLater(std::chrono::milliseconds delay, const Notification& notification) {
    std::lock_guard<std::mutex> lock(mMutex);
    mLater.emplace(std::chrono::steady_clock::now() + delay, notification);
    mChanged.notify_all();
}

/** Appends a notification to the queue. With mMutex held. */
void Notifier::add(const Notification& notification) {
    const auto last = std::find_if(mPending.rbegin(), mPending.rend(),
                                   [&](const Notification& n) { return n.to == notification.to; });
    if (last != mPending.rend() && *last == notification) return;
    if (mPending.size() >= kMostPending) makeRoom();
    mPending.push_back(notification);
    mChanged.notify_all();
}

/** Keeps one notification of each registration. With mMutex held. */
void Notifier::makeRoom() {
    LOG_TV_WARN("{} notifications wait for slow handlers: they are put together", mPending.size());
    std::deque<Notification> kept;
    for (auto last = mPending.rbegin(); last != mPending.rend(); ++last) {
        const bool known = std::any_of(kept.begin(), kept.end(),
                                       [&](const Notification& n) { return n.to == last->to; });
        if (known) continue;
        kept.push_front(isListUpdate(last->to) ? everythingChanged(last->to, last->code) : *last);
    }
    mPending = std::move(kept);
}

void Notifier::run(std::chrono::milliseconds tick) {
    using SteadyClock = std::chrono::steady_clock;
    auto nextTick = SteadyClock::now() + tick;
    std::unique_lock<std::mutex> lock(mMutex);
    while (!mStop) {
        const auto next = mLater.empty() ? nextTick : std::min(nextTick, mLater.begin()->first);
        if (mPending.empty()) mChanged.wait_until(lock, next);
        if (mStop) break;
        while (!mLater.empty() && mLater.begin()->first <= SteadyClock::now()) {
            add(mLater.begin()->second);
            mLater.erase(mLater.begin());
        }
        const bool due = SteadyClock::now() >= nextTick;
        std::deque<Notification> notifications;
        notifications.swap(mPending);
        lock.unlock();
        for (const Notification& notification : notifications) deliver(notification);
        if (due) {
            for (const auto& act : mOnTick) act();
            nextTick += tick;
            // When handlers take longer than a tick, the ticks they missed are left out.
            if (nextTick <= SteadyClock::now()) nextTick = SteadyClock::now() + tick;
        }
        lock.lock();
    }
}

void Notifier::deliver(const Notification& notification) const {
    if (notification.call) {
        notification.call();
    } else {
        callHandlers(mRegistrations, notification);
    }
}

}  // namespace television
