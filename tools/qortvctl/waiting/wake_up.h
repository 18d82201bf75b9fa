/** Waking the main thread, which waits for several things at once. */
#pragma once

#include <chrono>

namespace qortvctl {

/** Wakes the main thread from waitUntil() or poll(), from any thread and from signal handlers. */
class WakeUp {
  public:
    WakeUp();
    ~WakeUp();
    WakeUp(const WakeUp&) = delete;
    WakeUp& operator=(const WakeUp&) = delete;

    /** A descriptor for poll(): readable from wake() to reset(). */
    int fd() const { return mFd; }

    /** Wakes the main thread, at once or the next time that it waits. */
    void wake() const;

    /** Takes back every wake() until now; to be called before looking for what has happened. */
    void reset() const;

    /** Sleeps until wake(), and resets it. Returns false when `end` came first. */
    bool waitUntil(std::chrono::steady_clock::time_point end) const;

  private:
    const int mFd;
};

}  // namespace qortvctl
