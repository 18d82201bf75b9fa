#include "qortvctl/commands/recording_wait.h"

#include <chrono>

#include "qortv/error.h"
#include "qortvctl/terminal/status_line.h"
#include "qortvctl/text/units.h"

namespace qortvctl {

namespace {

using qortv::RecordingState;
using std::chrono::steady_clock;

/** How often the length and size of a recording are shown. */
constexpr std::chrono::milliseconds kShowInterval{500};

void showProgress(StatusLine& line, qortv::Recordings& recordings, const std::string& path) {
    const auto recording = recordings.find(path);
    if (!recording) return;
    line.show(durationText(recording->duration) + "  " + sizeText(recording->bytes));
}

}  // namespace

std::optional<RecordingState> stateUnlessClosed(qortv::Recorder& recorder) {
    try {
        return recorder.state();
    } catch (const qortv::Error& error) {
        if (error.kind() != qortv::Error::Kind::kRefused) throw;
        return std::nullopt;
    }
}

bool waitForEnd(qortv::Recorder& recorder, qortv::Recordings& recordings, const std::string& path,
                bool show, const WakeUp& wakeUp, Interrupts& interrupts, RecordingEvents& events) {
    StatusLine line;
    while (stateUnlessClosed(recorder) == RecordingState::kRecording) {
        auto next = steady_clock::time_point::max();
        if (show && line.possible()) {
            showProgress(line, recordings, path);
            next = steady_clock::now() + kShowInterval;
        }
        wakeUp.waitUntil(next);
        events.clear();
        if (events.disconnected()) {
            throw qortv::Error(qortv::Error::Kind::kLost,
                               "the service went away, and the recording ended with it");
        }
        if (interrupts.takeSignal()) {
            recorder.stop();
            return true;
        }
    }
    return false;
}

}  // namespace qortvctl
