/** The thread on which the television calls the handlers, and the queue in front of it. */
#pragma once

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

#include "registrations.h"

namespace television {

/** One notification: small integers that go to every handler of one registration. */
struct Event {
    RegistrationKey to;
    int32_t code = 0;
    std::array<uint32_t, 4> arguments = {};
    /** Does the call itself, for handlers that take more than small integers or that answer. Only
     * the last of a registration waits when the queue is full. */
    std::function<void()> call = {};

    /** Whether one can stand for the other. */
    bool operator==(const Event& other) const {
        return to == other.to && code == other.code && arguments == other.arguments && !call &&
               !other.call;
    }
};

/**
 * Delivers events in the order in which they were posted, and does what is due at every tick in
 * between. The handlers may take their time and call the television: no lock is held. When they are
 * so slow that the queue is full, updates of one registration melt into one that says "everything";
 * ticks are left out.
 */
class Notifier {
  public:
    static constexpr size_t kMostPending = 256;

    explicit Notifier(const Registrations& registrations) : mRegistrations(registrations) {}
    ~Notifier() { stop(); }

    /** Lets `act` run on the thread at every tick, before the handlers of date and time hear of it.
     * Before `start`. */
    void onTick(std::function<void()> act) { mOnTick.push_back(std::move(act)); }

    /** Starts the thread; `tick` is the time between two ticks. */
    void start(std::chrono::milliseconds tick);
    /** Waits for the handler that is running, if any, and ends the thread. Not from a handler. */
    void stop();

    /** Queues an event, unless its registration's last one that waits is the same. Never waits. Any
     * thread. */
    void post(const Event& event);
    /** Queues an event after a time. */
    void postLater(std::chrono::milliseconds delay, const Event& event);

  private:
    void run(std::chrono::milliseconds tick);
    void add(const Event& event);
    void makeRoom();
    void deliver(const Event& event) const;

    const Registrations& mRegistrations;
    std::vector<std::function<void()>> mOnTick;  // not changed while the thread runs
    std::mutex mMutex;
    std::condition_variable mChanged;
    std::deque<Event> mPending;                                          // guarded by mMutex
    std::multimap<std::chrono::steady_clock::time_point, Event> mLater;  // guarded by mMutex
    bool mStop = false;                                                  // guarded by mMutex
    std::thread mThread;
};

}  // namespace television
