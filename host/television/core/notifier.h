/** The thread on which the television calls the handlers, and the queue in front of it. */
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include "television/core/notification.h"
#include "television/core/registrations.h"

namespace television {

/**
 * Delivers notifications in the order in which they were posted, and runs the actions of every tick
 * in between. Handlers may take their time and call the television: no lock is held. When they are
 * so slow that the queue is full, the list updates of a registration are replaced by one that says
 * that everything changed, and of the notifications of every other registration the last one is
 * kept; ticks that are late are left out.
 */
class Notifier {
  public:
    static constexpr size_t kMostPending = 256;  ///< length of the queue

    /** `registrations` must outlive this. */
    explicit Notifier(const Registrations& registrations) : mRegistrations(registrations) {}
    ~Notifier() { stop(); }

    /** Lets `act` run on the notifier's thread at every tick. To be called before `start`. */
    void onTick(std::function<void()> act) { mOnTick.push_back(std::move(act)); }

    /** Starts the thread; `tick` is the time between two ticks. */
    void start(std::chrono::milliseconds tick);
    /** Waits for the handler that is running, if any, ends the thread and drops what waits. Not to
     * be called from a handler. */
    void stop();

    /** Queues a notification, unless it is equal to the last one of its registration in the queue.
     * Never waits for handlers. Any thread. */
    void post(const Notification& notification);
    /** Posts a notification after a time. Any thread. */
    void postLater(std::chrono::milliseconds delay, const Notification& notification);

  private:
    void run(std::chrono::milliseconds tick);
    void add(const Notification& notification);
    void makeRoom();
    void deliver(const Notification& notification) const;

    const Registrations& mRegistrations;
    std::vector<std::function<void()>> mOnTick;  // not changed while the thread runs
    std::mutex mMutex;
    std::condition_variable mChanged;
    std::deque<Notification> mPending;                                          // guarded by mMutex
    std::multimap<std::chrono::steady_clock::time_point, Notification> mLater;  // guarded by mMutex
    bool mStop = false;                                                         // guarded by mMutex
    std::thread mThread;
};

}  // namespace television
