/** The sleep timer: tells when a set would switch itself off. This one stays on. */
#pragma once

#include <cstdint>
#include <mutex>

#include "clock.h"
#include "notifier.h"

namespace television {

/** Runs by the time that passes, whatever happens to the time of day. Any thread; its lock is held
 * while notifications are queued, not while they are delivered. */
class SleepTimer {
  public:
    /** Both outlive this. */
    SleepTimer(const Clock& clock, Notifier& notifier) : mClock(clock), mNotifier(notifier) {}

    /** Starts it anew, or stops it with 0. TV_INVALID_ARGUMENT beyond SLEEP_TIMER_MOST_MINUTES. */
    int32_t set(int32_t minutes);
    /** As it was set; 0 when it does not run. */
    int32_t minutes() const;
    /** What remains, in seconds, rounded up. */
    uint32_t remaining() const;
    /** The smallest step of the menu that is not less than what remains, in minutes. */
    int32_t step() const;

    /** Tells what is due. */
    void tick();

  private:
    uint32_t left() const;
    void tell(int32_t code, uint32_t seconds);

    const Clock& mClock;
    Notifier& mNotifier;
    mutable std::mutex mMutex;
    int32_t mMinutes = 0;  // guarded by mMutex, as all below
    int64_t mEnd = 0;      // elapsed milliseconds
    bool mWarned = false;
};

}  // namespace television
