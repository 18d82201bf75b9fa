#include "notifier.h"

#include <algorithm>

#include "handler_shapes.h"
#include "log.h"
#include "middleware/channellist.h"

namespace television {
namespace {

/** Whether the single updates of a registration can be put together into one. */
bool isListUpdate(RegistrationKey to) {
    return to == registration<&a_qortvapi_channellist_register_callback>() ||
           to == registration<&a_qortvapi_tvprovider_channellist_register_callback>() ||
           to == registration<&a_qortvapi_bisskey_register_callback>() ||
           to == registration<&a_qortvapi_nwl_update_register_callback>();
}

/** What a registration is told when the single updates do not fit any more. */
Event everythingChanged(RegistrationKey to, int32_t lastCode) {
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

void Notifier::post(const Event& event) {
    if (!event.call && mRegistrations.empty(event.to)) return;
    std::lock_guard<std::mutex> lock(mMutex);
    add(event);
}

void Notifier::postLater(std::chrono::milliseconds delay, const Event& event) {
    std::lock_guard<std::mutex> lock(mMutex);
    mLater.emplace(std::chrono::steady_clock::now() + delay, event);
    mChanged.notify_all();
}

/** With the lock held. */
void Notifier::add(const Event& event) {
    const auto last = std::find_if(mPending.rbegin(), mPending.rend(),
                                   [&](const Event& e) { return e.to == event.to; });
    if (last != mPending.rend() && *last == event) return;
    if (mPending.size() >= kMostPending) makeRoom();
    mPending.push_back(event);
    mChanged.notify_all();
}

/** Melts the list updates of each registration into one, and keeps the last of all others. */
void Notifier::makeRoom() {
    LOG_TV_WARN("{} notifications wait for slow handlers: they are put together", mPending.size());
    std::deque<Event> melted;
    for (auto event = mPending.rbegin(); event != mPending.rend(); ++event) {
        const bool known = std::any_of(melted.begin(), melted.end(),
                                       [&](const Event& e) { return e.to == event->to; });
        if (known) continue;
        melted.push_front(isListUpdate(event->to) ? everythingChanged(event->to, event->code)
                                                  : *event);
    }
    mPending = std::move(melted);
}

void Notifier::run(std::chrono::milliseconds tick) {
    using Clock = std::chrono::steady_clock;
    auto nextTick = Clock::now() + tick;
    std::unique_lock<std::mutex> lock(mMutex);
    while (!mStop) {
        const auto next = mLater.empty() ? nextTick : std::min(nextTick, mLater.begin()->first);
        if (mPending.empty()) mChanged.wait_until(lock, next);
        if (mStop) break;
        while (!mLater.empty() && mLater.begin()->first <= Clock::now()) {
            add(mLater.begin()->second);
            mLater.erase(mLater.begin());
        }
        const bool due = Clock::now() >= nextTick;
        std::deque<Event> events;
        events.swap(mPending);
        lock.unlock();
        for (const Event& event : events) deliver(event);
        if (due) {
            for (const auto& act : mOnTick) act();
            nextTick += tick;
            // Handlers that take longer than a tick get fewer, not all of them at once.
            if (nextTick <= Clock::now()) nextTick = Clock::now() + tick;
        }
        lock.lock();
    }
}

void Notifier::deliver(const Event& event) const {
    if (event.call) {
        event.call();
    } else {
        callHandlers(mRegistrations, event);
    }
}

}  // namespace television
