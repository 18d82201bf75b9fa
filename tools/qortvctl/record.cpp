// qortvctl record: recording a channel now. What is to be recorded later: record_schedules.cpp.
#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <optional>
#include <string>

#include "channel_choice.h"
#include "commands.h"
#include "event_queue.h"
#include "output.h"
#include "qortv/recorder.h"
#include "qortv/recordings.h"
#include "qortv/subscription.h"
#include "record_output.h"
#include "wake_up.h"

namespace qortvctl {

namespace {

using qortv::Recorder;
using qortv::RecordingState;
using std::chrono::steady_clock;

/** Between two looks at a recording whose time and size are shown. */
constexpr std::chrono::milliseconds kShowEvery{500};

/** Wakes the main thread whenever something happens to a recording, or the service is gone. */
class Events : public qortv::RecordingListener {
  public:
    explicit Events(const WakeUp& wakeUp) : mQueue(wakeUp) {}

    void onRecordingEvent(const qortv::RecordingEvent& event) override { mQueue.push(event); }
    void onDisconnected() override { mQueue.lose(); }

    void forget() { mQueue.forget(); }
    bool lost() { return mQueue.lost(); }

  private:
    EventQueue<qortv::RecordingEvent> mQueue;
};

/** One line of a terminal, written over and over. */
class RunningLine {
  public:
    ~RunningLine() { clear(); }

    bool wanted() const { return mTerminal; }
    void show(const std::string& text) {
        std::fputs(("\r\033[K" + text).c_str(), stderr);
        std::fflush(stderr);
        mShown = true;
    }
    void clear() {
        if (mShown) std::fputs("\r\033[K", stderr);
        mShown = false;
    }

  private:
    const bool mTerminal = isatty(STDERR_FILENO) == 1;
    bool mShown = false;
};

/** What is to be recorded: the channel that was named, else the one that is on. */
std::optional<qortv::Channel> channelFor(const Common& common, const RecordOptions& options) {
    qortv::ChannelList list(qortv::connect<qortv::ChannelList::Interface>(common.timeout));
    if (!options.channel.empty()) return chooseChannel(list, options.channel, options.medium);
    auto channel = list.current();
    if (!channel) fmt::print(stderr, "qortvctl: no channel is on: name one\n");
    return channel;
}

/** How it stands; nothing when `record stop` took it over, and closed it. */
std::optional<RecordingState> stateOf(Recorder& recorder) {
    try {
        return recorder.state();
    } catch (const qortv::Error& error) {
        if (error.kind() != qortv::Error::Kind::kRefused) throw;
        return std::nullopt;
    }
}

/** Why a recording ended that nobody here stopped; empty when all is well. */
std::string complaint(Recorder& recorder, const std::optional<qortv::Recording>& made,
                      bool stopped) {
    if (stateOf(recorder) == RecordingState::kFailed) return describe(recorder.error());
    if (stopped || !made || made->end != qortv::RecordingEnd::kClosed) return {};
    return "the television went off";
}

int report(const Common& common, const qortv::Channel& channel, const std::string& path,
           const std::optional<qortv::Recording>& made, const std::string& complaint) {
    const bool failed = !complaint.empty();
    if (failed) fmt::print(stderr, "qortvctl: the recording broke off: {}\n", complaint);
    if (!made) {
        fmt::print(stderr, "qortvctl: the recording is gone: {}\n", withoutControls(path));
        return kFailure;
    }
    if (common.json) {
        auto json = toJson(*made);
        json.erase("index");
        json["error"] = failed ? nlohmann::ordered_json(complaint) : nlohmann::ordered_json();
        printLine(json.dump(2));
    } else {
        printLine(withoutControls(fmt::format("recorded {} {}: {}, {}, {}", channel.number,
                                              channel.name, durationText(made->duration),
                                              sizeText(made->bytes), path)));
    }
    return failed ? kFailure : kOk;
}

/** Until the recording ends, by itself or by an interrupt. Whether it was interrupted. */
bool waitForEnd(Recorder& recorder, qortv::Recordings& recordings, const std::string& path,
                const WakeUp& wakeUp, Interrupts& interrupts, Events& events, bool json) {
    RunningLine line;
    while (stateOf(recorder) == RecordingState::kRecording) {
        auto next = steady_clock::time_point::max();
        if (line.wanted() && !json) {
            const auto present = recordings.find(path);
            if (present) {
                line.show(fmt::format("{}  {}", durationText(present->duration),
                                      sizeText(present->bytes)));
            }
            next = steady_clock::now() + kShowEvery;
        }
        wakeUp.waitUntil(next);
        events.forget();
        if (events.lost()) {
            throw qortv::Error(qortv::Error::Kind::kLost,
                               "the service went away, and the recording ended with it");
        }
        if (interrupts.take()) {
            recorder.stop();
            return true;
        }
    }
    return false;
}

}  // namespace

int record(const Common& common, const RecordOptions& options) {
    const WakeUp wakeUp;
    Events events(wakeUp);
    const qortv::Subscription subscription(events, common.timeout);
    const auto channel = channelFor(common, options);
    if (!channel) return kFailure;
    qortv::Recordings recordings(qortv::connect<qortv::Recordings::Interface>(common.timeout));
    const auto proxy = qortv::connect<Recorder::Interface>(common.timeout);

    // From here an interrupt ends the recording, and a recorder is not left open.
    Interrupts interrupts(wakeUp);
    Recorder recorder(proxy);
    recorder.select(channel->id);
    if (options.limit) recorder.setLength(*options.limit);
    recorder.start();
    const std::string path = recorder.path();
    fmt::print(stderr, "qortvctl: recording {} {} to {}{}\n", channel->number,
               withoutControls(channel->name), withoutControls(path),
               options.limit ? "" : " until Ctrl-C");
    const bool stopped =
            waitForEnd(recorder, recordings, path, wakeUp, interrupts, events, common.json);
    const auto made = recordings.find(path);
    return report(common, *channel, path, made, complaint(recorder, made, stopped));
}

}  // namespace qortvctl
