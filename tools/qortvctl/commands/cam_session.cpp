#include "qortvctl/commands/cam_session.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "qortvctl/commands/connection.h"

namespace qortvctl {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

}  // namespace

CamSession::CamSession(milliseconds timeout)
    : mEvents(mWakeUp), mSubscription(mEvents, timeout), mCam(connectTo<qortv::Cam>(timeout)) {
    mCam.listen();
    mInterrupts.emplace(mWakeUp);
}

CamSession::~CamSession() {
    // The echo first: once the signals are no longer handled, one of them ends the process at once.
    mInput.setEcho(true);
    mInterrupts.reset();
}

CamSession::Occurrence CamSession::wait(bool lines, std::optional<milliseconds> limit) {
    const auto end = steady_clock::now() + limit.value_or(milliseconds{0});
    for (;;) {
        if (auto occurrence = nextOccurrence(lines)) return *std::move(occurrence);
        milliseconds left{-1};  // poll() takes it as for ever
        if (limit) left = std::chrono::ceil<milliseconds>(end - steady_clock::now());
        if (limit && left <= milliseconds{0}) return TimeIsUp{};
        pollfd waiting[] = {{mWakeUp.fd(), POLLIN, 0}, {lines ? STDIN_FILENO : -1, POLLIN, 0}};
        if (poll(waiting, 2, static_cast<int>(left.count())) < 0) {
            if (errno == EINTR) continue;
            throw std::system_error(errno, std::generic_category(), "poll");
        }
        if (waiting[0].revents != 0) mWakeUp.reset();
        if (waiting[1].revents != 0) mInput.read();
    }
}

std::optional<CamSession::Occurrence> CamSession::nextOccurrence(bool lines) {
    if (mInterrupts->takeSignal()) return Interrupted{};
    if (mInterrupts->takeContinued()) mInput.restoreEcho();
    if (auto event = mEvents.queue().take()) return *std::move(event);
    if (mEvents.queue().disconnected()) {
        throw qortv::Error(qortv::Error::Kind::kLost, "the service went away");
    }
    if (!lines) return std::nullopt;
    if (auto line = mInput.takeLine()) return Line{*std::move(line)};
    if (mInput.ended()) return InputEnded{};
    return std::nullopt;
}

}  // namespace qortvctl
