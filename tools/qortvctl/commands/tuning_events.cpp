#include "qortvctl/commands/tuning_events.h"

#include <chrono>

#include "qortv/error.h"

namespace qortvctl {

namespace {

using qortv::Tuning;
using std::chrono::steady_clock;

/** Longest that a tuner searches. */
constexpr std::chrono::seconds kTuningTimeout{15};

}  // namespace

std::optional<qortv::TuningEvent> TuningEvents::waitForEnd(uint32_t channelId) {
    const auto end = steady_clock::now() + kTuningTimeout;
    for (;;) {
        while (const auto event = mQueue.take()) {
            if (channelId == 0) channelId = event->channelId;
            const bool over = event->tuning == Tuning::kLocked || event->tuning == Tuning::kFailed;
            if (over && event->channelId == channelId) return event;
        }
        if (mQueue.disconnected()) {
            throw qortv::Error(qortv::Error::Kind::kLost, "the service went away while tuning");
        }
        if (!mWakeUp.waitUntil(end)) return std::nullopt;
    }
}

}  // namespace qortvctl
