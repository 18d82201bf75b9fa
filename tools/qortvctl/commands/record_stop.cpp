// qortvctl record stop: ends what is being recorded, whichever program started it.
#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "qortv/recorder.h"
#include "qortv/recordings.h"
#include "qortv/schedules.h"
#include "qortv/subscription.h"
#include "qortvctl/commands/commands.h"
#include "qortvctl/commands/connection.h"
#include "qortvctl/commands/exit_status.h"
#include "qortvctl/presentation/recording_text.h"
#include "qortvctl/terminal/standard_output.h"
#include "qortvctl/text/utf8.h"
#include "qortvctl/waiting/wake_up.h"

namespace qortvctl {

namespace {

using qortv::Recorder;
using qortv::Schedule;
using std::chrono::steady_clock;

constexpr char kRecordStopHelp[] =
        R"(Ends what is being recorded now, whichever program started it, and gives its recorder back: also
what a program that was killed has left running. What was recorded is kept. The television does not
tell what a schedule records from the rest: it is ended too, and its schedule is done.
With --json: an array of objects as in recordings, without "index".

Examples:
  qortvctl record stop
  qortvctl record stop --json | jq -r '.[].path')";

/** Longest that a schedule takes to notice that its recording has ended. */
constexpr std::chrono::seconds kScheduleTimeout{5};

/** Wakes the main thread whenever the state of a schedule may have changed. */
class ScheduleEvents : public qortv::RecordingListener {
  public:
    explicit ScheduleEvents(const WakeUp& wakeUp) : mWakeUp(wakeUp) {}

    void onRecordingEvent(const qortv::RecordingEvent&) override { mWakeUp.wake(); }

  private:
    const WakeUp& mWakeUp;
};

/** Ends a recording and returns its path; nothing when it had ended already. */
std::optional<std::string> stop(Recorder& recorder) {
    try {
        std::string path = recorder.path();
        recorder.stop();
        return path;
    } catch (const qortv::Error& error) {
        if (error.kind() != qortv::Error::Kind::kRefused) throw;
        return std::nullopt;  // its owner closed it
    }
}

/** The recorders that were found running, and the recordings that were ended. */
struct Stopped {
    std::vector<std::unique_ptr<Recorder>> recorders;
    std::vector<std::string> paths;
};

Stopped stopAll(const android::sp<Recorder::Interface>& proxy) {
    Stopped stopped;
    while (auto recorder = Recorder::running(proxy)) {
        if (!stopped.recorders.empty() && stopped.recorders.back()->id() == recorder->id()) {
            throw qortv::Error(qortv::Error::Kind::kRefused, "a recording does not stop");
        }
        if (auto path = stop(*recorder)) stopped.paths.push_back(*std::move(path));
        stopped.recorders.push_back(std::move(recorder));
    }
    return stopped;
}

/** Whether a schedule that records, and not only reminds, is running. */
bool anyScheduleRecords(qortv::Schedules& schedules) {
    const auto list = schedules.list();
    return std::any_of(list.begin(), list.end(), [](const Schedule& schedule) {
        return !schedule.reminder && schedule.state == qortv::ScheduleState::kRunning;
    });
}

void printJson(qortv::Recordings& recordings, const std::vector<std::string>& paths) {
    auto array = nlohmann::ordered_json::array();
    for (const auto& path : paths) {
        const auto recording = recordings.find(path);
        if (recording) array.push_back(toJsonWithoutIndex(*recording));
    }
    printLine(array.dump(2));
}

void printText(qortv::Recordings& recordings, const std::vector<std::string>& paths) {
    for (const auto& path : paths) {
        const auto recording = recordings.find(path);
        const std::string channel =
                recording ? fmt::format("{} {}: ", recording->channelNumber, recording->channel)
                          : "";
        printLine(withoutControls("stopped " + channel + path));
    }
    if (paths.empty()) printLine("nothing is being recorded");
}

int recordStop(const CommonOptions& common) {
    const WakeUp wakeUp;
    ScheduleEvents events(wakeUp);
    const qortv::Subscription subscription(events, common.timeout);
    const auto proxy = qortv::connect<Recorder::Interface>(common.timeout);
    qortv::Schedules schedules(proxy);

    Stopped stopped = stopAll(proxy);
    // A schedule closes its recorder itself, and fails if it finds it closed: ours stay open until
    // then.
    const auto end = steady_clock::now() + kScheduleTimeout;
    bool inTime = true;
    while (inTime && !stopped.recorders.empty() && anyScheduleRecords(schedules)) {
        inTime = wakeUp.waitUntil(end);
    }
    stopped.recorders.clear();

    auto recordings = connectTo<qortv::Recordings>(common.timeout);
    if (common.json) {
        printJson(recordings, stopped.paths);
    } else {
        printText(recordings, stopped.paths);
    }
    return kOk;
}

}  // namespace

void addRecordStop(CommandLine& commandLine, CLI::App& record) {
    commandLine.addCommand(record, "stop", "End everything that is being recorded", kRecordStopHelp,
                           recordStop);
}

}  // namespace qortvctl
