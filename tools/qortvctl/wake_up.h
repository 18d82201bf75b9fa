/** Waking the main thread, and interrupts that it looks at when it likes. */
#pragma once

#include <chrono>
#include <optional>

namespace qortvctl {

/** Wakes the main thread from poll(), from any thread and from signal handlers. */
class WakeUp {
  public:
    WakeUp();
    ~WakeUp();
    WakeUp(const WakeUp&) = delete;
    WakeUp& operator=(const WakeUp&) = delete;

    int fd() const { return mFd; }
    void ring() const;
    /** What was rung for is looked at. */
    void silence() const;
    /** Sleeps until it rings, and silences it; false when `end` came first. */
    bool waitUntil(std::chrono::steady_clock::time_point end) const;

  private:
    const int mFd;
};

/**
 * While it lives, SIGINT, SIGTERM, SIGHUP and SIGQUIT ring instead of ending the process; so does
 * SIGCONT. One at a time.
 */
class Interrupts {
  public:
    /** @param wakeUp rung by signals; must outlive this */
    explicit Interrupts(const WakeUp& wakeUp);
    ~Interrupts();
    Interrupts(const Interrupts&) = delete;
    Interrupts& operator=(const Interrupts&) = delete;

    /** The number of the signal that wants the program to end, once for each. */
    std::optional<int> take();
    /** Whether the process was continued since the last call. */
    bool takeContinued();
};

/** Exit status of a program that a signal ended. */
constexpr int statusOf(int signal) {
    return 128 + signal;
}

}  // namespace qortvctl
