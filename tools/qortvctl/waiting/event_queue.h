/** Events of the service on their way from the runtime's threads to the main thread. */
#pragma once

#include <deque>
#include <mutex>
#include <optional>
#include <utility>

#include "qortvctl/waiting/wake_up.h"

namespace qortvctl {

/** Filled by listeners on the runtime's threads, emptied by the main thread. */
template <typename Event>
class EventQueue {
  public:
    /** @param wakeUp woken by push() and setDisconnected(); must outlive this object */
    explicit EventQueue(const WakeUp& wakeUp) : mWakeUp(wakeUp) {}

    void push(const Event& event) {
        const std::lock_guard lock(mMutex);
        mEvents.push_back(event);
        mWakeUp.wake();
    }

    /** Notes that the service died. Events that came before can still be taken. */
    void setDisconnected() {
        const std::lock_guard lock(mMutex);
        mDisconnected = true;
        mWakeUp.wake();
    }

    /** Removes the oldest event; nothing when the queue is empty. */
    std::optional<Event> take() {
        const std::lock_guard lock(mMutex);
        if (mEvents.empty()) return std::nullopt;
        auto event = std::move(mEvents.front());
        mEvents.pop_front();
        return event;
    }

    void clear() {
        const std::lock_guard lock(mMutex);
        mEvents.clear();
    }

    /** Whether the service died since this queue was made. */
    bool disconnected() {
        const std::lock_guard lock(mMutex);
        return mDisconnected;
    }

  private:
    const WakeUp& mWakeUp;
    std::mutex mMutex;
    std::deque<Event> mEvents;
    bool mDisconnected = false;
};

}  // namespace qortvctl
