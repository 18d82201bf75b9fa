/** Signals that ask the program to end, for a main thread that ends in its own time. */
#pragma once

#include <optional>

#include "qortvctl/waiting/wake_up.h"

namespace qortvctl {

/**
 * While it lives, SIGINT, SIGTERM, SIGHUP and SIGQUIT wake the main thread instead of ending the
 * process; so does SIGCONT. One object at a time.
 */
class Interrupts {
  public:
    /** @param wakeUp woken by the signals; must outlive this object */
    explicit Interrupts(const WakeUp& wakeUp);
    ~Interrupts();
    Interrupts(const Interrupts&) = delete;
    Interrupts& operator=(const Interrupts&) = delete;

    /** The number of the last signal that asked the program to end; nothing when none did since
     * the last call. */
    std::optional<int> takeSignal();

    /** Whether the process was continued (SIGCONT) since the last call. */
    bool takeContinued();
};

/** Exit status of a program that a signal ended. */
constexpr int exitStatusOfSignal(int signal) {
    return 128 + signal;
}

}  // namespace qortvctl
