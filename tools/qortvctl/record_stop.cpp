// qortvctl record stop: ending what is being recorded, whoever started it.
#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "commands.h"
#include "output.h"
#include "qortv/recorder.h"
#include "qortv/recordings.h"
#include "qortv/schedules.h"
#include "qortv/subscription.h"
#include "record_output.h"
#include "wake_up.h"

namespace qortvctl {

namespace {

using qortv::Recorder;
using qortv::Schedule;
using std::chrono::steady_clock;

/** Longest that a schedule takes to see that its recording has ended. */
constexpr std::chrono::seconds kSchedulePatience{5};

/** Wakes the main thread whenever a schedule may stand otherwise. */
class ScheduleEvents : public qortv::RecordingListener {
  public:
    explicit ScheduleEvents(const WakeUp& wakeUp) : mWakeUp(wakeUp) {}

    void onRecordingEvent(const qortv::RecordingEvent&) override { mWakeUp.ring(); }

  private:
    const WakeUp& mWakeUp;
};

/** Ends a recording, unless it has ended meanwhile. Answers its path where it was ended. */
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

bool anyRecords(qortv::Schedules& schedules) {
    const auto list = schedules.list();
    return std::any_of(list.begin(), list.end(), [](const Schedule& schedule) {
        return !schedule.reminder && schedule.state == qortv::ScheduleState::kRunning;
    });
}

void report(const Common& common, const std::vector<std::string>& paths) {
    qortv::Recordings recordings(qortv::connect<qortv::Recordings::Interface>(common.timeout));
    auto array = nlohmann::ordered_json::array();
    for (const auto& path : paths) {
        const auto made = recordings.find(path);
        if (!common.json) {
            const std::string channel =
                    made ? fmt::format("{} {}: ", made->channelNumber, made->channel) : "";
            printLine(withoutControls("stopped " + channel + path));
        } else if (made) {
            auto json = toJson(*made);
            json.erase("index");
            array.push_back(std::move(json));
        }
    }
    if (common.json) {
        printLine(array.dump(2));
    } else if (paths.empty()) {
        printLine("nothing is being recorded");
    }
}

}  // namespace

int recordStop(const Common& common) {
    const WakeUp wakeUp;
    ScheduleEvents events(wakeUp);
    const qortv::Subscription subscription(events, common.timeout);
    const auto proxy = qortv::connect<Recorder::Interface>(common.timeout);
    qortv::Schedules schedules(proxy);

    std::vector<std::unique_ptr<Recorder>> recorders;
    std::vector<std::string> paths;
    while (auto recorder = Recorder::running(proxy)) {
        if (!recorders.empty() && recorders.back()->id() == recorder->id()) {
            throw qortv::Error(qortv::Error::Kind::kRefused, "a recording does not stop");
        }
        if (auto path = stop(*recorder)) paths.push_back(*std::move(path));
        recorders.push_back(std::move(recorder));
    }
    // A schedule closes its recorder itself: one that finds it closed has failed.
    const auto end = steady_clock::now() + kSchedulePatience;
    while (!recorders.empty() && anyRecords(schedules) && wakeUp.waitUntil(end)) continue;
    recorders.clear();
    report(common, paths);
    return kOk;
}

}  // namespace qortvctl
