/** The sleep timer: notifies handlers when a set would switch itself off. This one stays on. */
#pragma once

#include <cstdint>
#include <mutex>

#include "television/core/clock.h"
#include "television/core/notifier.h"

namespace television {

/** Counts elapsed time, so that setting the clock does not move its end. Any thread; its lock is
 * held while notifications are queued, not while they are delivered. */
class SleepTimer {
  public:
    /** Both outlive this. */
    SleepTimer(const Clock& clock, Notifier& notifier) : mClock(clock), mNotifier(notifier) {}

    /** Starts the timer anew, or stops it with 0. Returns TV_OK, or TV_INVALID_ARGUMENT for a
     * negative time or one beyond SLEEP_TIMER_MOST_MINUTES. */
    int32_t set(int32_t minutes);
    /** The time that was set; 0 when the timer does not run. */
    int32_t minutes() const;
    /** The remaining time in seconds, rounded up; 0 when the timer does not run. */
    uint32_t remaining() const;
    /** The smallest choice of the menu that is not less than the remaining time, in minutes. */
    int32_t step() const;

    /** Notifies handlers of the last minute and of the end when they are due. */
    void tick();

  private:
    uint32_t remainingLocked() const;
    void notify(int32_t code, uint32_t seconds);

    const Clock& mClock;
    Notifier& mNotifier;
    mutable std::mutex mMutex;
    int32_t mMinutes = 0;  // guarded by mMutex, as all below
    int64_t mEnd = 0;      // in milliseconds of Clock::elapsedMilliseconds
    bool mWarned = false;  // the last minute has been notified
};

}  // namespace television
