#include "wake_up.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <system_error>

namespace qortvctl {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// What the signal handler sets; the main thread sleeps on the eventfd.
std::atomic<const WakeUp*> sWakeUp{nullptr};
std::atomic<int> sInterrupt{0};
std::atomic<bool> sContinued{false};
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free &&
                      std::atomic<const WakeUp*>::is_always_lock_free,
              "a signal handler must not wait");

/** poll() counts milliseconds in an int: far ends are waited for in steps. */
constexpr std::chrono::hours kLongestPause{24};

constexpr int kEnding[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

void onSignal(int number) {
    const int saved = errno;
    if (number == SIGCONT) {
        sContinued = true;
    } else {
        sInterrupt = number;
    }
    sWakeUp.load()->ring();
    errno = saved;
}

void handleSignals(void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    for (const int number : kEnding) sigaction(number, &action, nullptr);
    sigaction(SIGCONT, &action, nullptr);
}

}  // namespace

WakeUp::WakeUp() : mFd(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (mFd < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
}

WakeUp::~WakeUp() {
    close(mFd);
}

void WakeUp::ring() const {
    const uint64_t one = 1;
    // The counter cannot overflow, so nothing can fail.
    [[maybe_unused]] const ssize_t written = write(mFd, &one, sizeof one);
}

void WakeUp::silence() const {
    uint64_t count = 0;
    [[maybe_unused]] const ssize_t taken = read(mFd, &count, sizeof count);
}

bool WakeUp::waitUntil(steady_clock::time_point end) const {
    for (;;) {
        const auto left = end - steady_clock::now();
        if (left <= left.zero()) return false;
        pollfd waiting = {mFd, POLLIN, 0};
        const auto pause = std::min<steady_clock::duration>(left, kLongestPause);
        const auto step = std::chrono::duration_cast<milliseconds>(pause) + milliseconds{1};
        const int ready = poll(&waiting, 1, static_cast<int>(step.count()));
        if (ready > 0) {
            silence();
            return true;
        }
        if (ready < 0 && errno != EINTR) {
            throw std::system_error(errno, std::generic_category(), "poll");
        }
    }
}

Interrupts::Interrupts(const WakeUp& wakeUp) {
    sWakeUp = &wakeUp;
    sInterrupt = 0;
    sContinued = false;
    handleSignals(onSignal);
}

Interrupts::~Interrupts() {
    handleSignals(SIG_DFL);
}

std::optional<int> Interrupts::take() {
    const int number = sInterrupt.exchange(0);
    return number == 0 ? std::nullopt : std::optional(number);
}

bool Interrupts::takeContinued() {
    return sContinued.exchange(false);
}

}  // namespace qortvctl
