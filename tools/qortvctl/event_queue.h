/** What a listener hears, kept until the main thread asks for it. */
#pragma once

#include <deque>
#include <mutex>
#include <optional>
#include <utility>

#include "wake_up.h"

namespace qortvctl {

/** Filled by the runtime's threads, emptied by the main thread. */
template <typename Event>
class EventQueue {
  public:
    /** @param wakeUp rung when there is something; the caller's */
    explicit EventQueue(const WakeUp& wakeUp) : mWakeUp(wakeUp) {}

    void push(const Event& event) {
        const std::lock_guard lock(mMutex);
        mEvents.push_back(event);
        mWakeUp.ring();
    }

    /** The service died: what it said before is still to be had. */
    void lose() {
        const std::lock_guard lock(mMutex);
        mLost = true;
        mWakeUp.ring();
    }

    /** The oldest event that was not taken yet. */
    std::optional<Event> take() {
        const std::lock_guard lock(mMutex);
        if (mEvents.empty()) return std::nullopt;
        auto event = std::move(mEvents.front());
        mEvents.pop_front();
        return event;
    }

    void forget() {
        const std::lock_guard lock(mMutex);
        mEvents.clear();
    }

    /** Whether the service died. */
    bool lost() {
        const std::lock_guard lock(mMutex);
        return mLost;
    }

  private:
    const WakeUp& mWakeUp;
    std::mutex mMutex;
    std::deque<Event> mEvents;
    bool mLost = false;
};

}  // namespace qortvctl
