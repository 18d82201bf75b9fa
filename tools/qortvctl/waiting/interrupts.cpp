#include "qortvctl/waiting/interrupts.h"

#include <atomic>
#include <cerrno>
#include <csignal>

namespace qortvctl {

namespace {

// Written by the signal handler, read by the main thread after it was woken.
std::atomic<const WakeUp*> sWakeUp{nullptr};
std::atomic<int> sSignal{0};
std::atomic<bool> sContinued{false};
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free &&
                      std::atomic<const WakeUp*>::is_always_lock_free,
              "a signal handler must not wait");

constexpr int kEndingSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

void onSignal(int number) {
    const int saved = errno;
    if (number == SIGCONT) {
        sContinued = true;
    } else {
        sSignal = number;
    }
    sWakeUp.load()->wake();
    errno = saved;
}

void handleSignals(void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    for (const int number : kEndingSignals) sigaction(number, &action, nullptr);
    sigaction(SIGCONT, &action, nullptr);
}

}  // namespace

Interrupts::Interrupts(const WakeUp& wakeUp) {
    sWakeUp = &wakeUp;
    sSignal = 0;
    sContinued = false;
    handleSignals(onSignal);
}

Interrupts::~Interrupts() {
    handleSignals(SIG_DFL);
}

std::optional<int> Interrupts::takeSignal() {
    const int number = sSignal.exchange(0);
    return number == 0 ? std::nullopt : std::optional(number);
}

bool Interrupts::takeContinued() {
    return sContinued.exchange(false);
}

}  // namespace qortvctl
