#include "cam_session.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <system_error>

namespace qortvctl {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// What the signal handler sets; the main thread sleeps on the eventfd.
std::atomic<const WakeUp*> sWakeUp{nullptr};
std::atomic<bool> sInterrupted{false};
std::atomic<bool> sContinued{false};
static_assert(std::atomic<bool>::is_always_lock_free &&
                      std::atomic<const WakeUp*>::is_always_lock_free,
              "a signal handler must not wait");

constexpr int kEnding[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

void onSignal(int number) {
    const int saved = errno;
    (number == SIGCONT ? sContinued : sInterrupted) = true;
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

void CamEvents::onCamEvent(const qortv::CamEvent& event) {
    const std::lock_guard lock(mMutex);
    mEvents.push_back(event);
    mWakeUp.ring();
}

void CamEvents::onDisconnected() {
    const std::lock_guard lock(mMutex);
    mLost = true;
    mWakeUp.ring();
}

std::optional<qortv::CamEvent> CamEvents::take() {
    const std::lock_guard lock(mMutex);
    if (mEvents.empty()) return std::nullopt;
    auto event = std::move(mEvents.front());
    mEvents.pop_front();
    return event;
}

void CamEvents::forget() {
    const std::lock_guard lock(mMutex);
    mEvents.clear();
}

bool CamEvents::lost() {
    const std::lock_guard lock(mMutex);
    return mLost;
}

CamSession::CamSession(milliseconds timeout)
    : mEvents(mWakeUp),
      mSubscription(mEvents, timeout),
      mCam(qortv::connect<qortv::Cam::Interface>(timeout)) {
    mCam.listen();
    sWakeUp = &mWakeUp;
    handleSignals(onSignal);
}

CamSession::~CamSession() {
    // The terminal first: what interrupts from here on ends the program at once.
    mInput.setBlind(false);
    handleSignals(SIG_DFL);
}

CamSession::Happening CamSession::wait(bool lines, std::optional<milliseconds> limit) {
    const auto end = steady_clock::now() + limit.value_or(milliseconds{0});
    for (;;) {
        if (auto happening = happened(lines)) return *std::move(happening);
        milliseconds left{-1};
        if (limit) left = std::chrono::ceil<milliseconds>(end - steady_clock::now());
        if (limit && left <= milliseconds{0}) return TimeIsUp{};
        pollfd waiting[] = {{mWakeUp.fd(), POLLIN, 0}, {lines ? STDIN_FILENO : -1, POLLIN, 0}};
        if (poll(waiting, 2, static_cast<int>(left.count())) < 0) {
            if (errno == EINTR) continue;
            throw std::system_error(errno, std::generic_category(), "poll");
        }
        if (waiting[0].revents != 0) mWakeUp.silence();
        if (waiting[1].revents != 0) mInput.read();
    }
}

std::optional<CamSession::Happening> CamSession::happened(bool lines) {
    if (sInterrupted.exchange(false)) return Interrupted{};
    if (sContinued.exchange(false)) mInput.restoreBlindness();
    if (auto event = mEvents.take()) return *std::move(event);
    if (mEvents.lost()) throw qortv::Error(qortv::Error::Kind::kLost, "the service went away");
    if (!lines) return std::nullopt;
    if (auto line = mInput.takeLine()) return Line{*std::move(line)};
    if (mInput.ended()) return InputEnded{};
    return std::nullopt;
}

}  // namespace qortvctl
