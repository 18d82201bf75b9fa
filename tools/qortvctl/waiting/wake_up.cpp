#include "qortvctl/waiting/wake_up.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <system_error>

namespace qortvctl {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

/** poll() takes an int of milliseconds, so a longer wait is made of several. */
constexpr std::chrono::hours kLongestPoll{24};

}  // namespace

WakeUp::WakeUp() : mFd(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (mFd < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
}

WakeUp::~WakeUp() {
    close(mFd);
}

void WakeUp::wake() const {
    const uint64_t one = 1;
    // Cannot fail: the counter never comes near its limit.
    [[maybe_unused]] const ssize_t written = write(mFd, &one, sizeof one);
}

void WakeUp::reset() const {
    uint64_t count = 0;
    [[maybe_unused]] const ssize_t taken = read(mFd, &count, sizeof count);
}

bool WakeUp::waitUntil(steady_clock::time_point end) const {
    for (;;) {
        const auto left = end - steady_clock::now();
        if (left <= left.zero()) return false;
        pollfd waiting = {mFd, POLLIN, 0};
        const auto pause = std::min<steady_clock::duration>(left, kLongestPoll);
        // Rounded up, so that the time has really passed.
        const auto step = std::chrono::duration_cast<milliseconds>(pause) + milliseconds{1};
        const int ready = poll(&waiting, 1, static_cast<int>(step.count()));
        if (ready > 0) {
            reset();
            return true;
        }
        if (ready < 0 && errno != EINTR) {
            throw std::system_error(errno, std::generic_category(), "poll");
        }
    }
}

}  // namespace qortvctl
