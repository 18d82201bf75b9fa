// qortvctl record: records a channel now; the group that the other commands of recording belong to.
#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <chrono>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "qortv/channel_list.h"
#include "qortv/recorder.h"
#include "qortv/recordings.h"
#include "qortv/subscription.h"
#include "qortvctl/commands/channel_choice.h"
#include "qortvctl/commands/commands.h"
#include "qortvctl/commands/connection.h"
#include "qortvctl/commands/exit_status.h"
#include "qortvctl/commands/recording_wait.h"
#include "qortvctl/parsing/options.h"
#include "qortvctl/presentation/channel_text.h"
#include "qortvctl/presentation/recording_text.h"
#include "qortvctl/terminal/standard_output.h"
#include "qortvctl/text/units.h"
#include "qortvctl/text/utf8.h"

namespace qortvctl {

namespace {

using qortv::Recorder;

constexpr char kRecordHelp[] =
        R"(Records now, without a channel the one that is on. Ctrl-C ends the recording and keeps it. The
television ends one with --for by itself. One that breaks off is a failure (exit status 1); what was
recorded until then is kept.
With --json, at the end: {"path", "start": seconds since 1970 UTC, "date", "time", "channelId",
"channelNumber", "channel", "program", "seconds", "bytes", "minimumAge", "retentionDays", "state",
"error": null or why it broke off}.

Examples:
  qortvctl record
  qortvctl record "world news" --for 600
  qortvctl record 7 --for 60 --json | jq -r .path
  qortvctl record at 7 20:15 1h30m
  qortvctl record list
  qortvctl record stop)";

struct RecordOptions {
    std::string channel;  ///< number or name; empty: the current one
    std::optional<qortv::Medium> medium;
    std::optional<std::chrono::milliseconds> limit;  ///< nothing: until Ctrl-C
};

/** The channel that the command line names, else the current one; nothing, after a message on
 * standard error, when there is no such channel. */
std::optional<qortv::Channel> channelToRecord(const CommonOptions& common,
                                              const RecordOptions& options) {
    auto list = connectTo<qortv::ChannelList>(common.timeout);
    if (!options.channel.empty()) return chooseChannel(list, options.channel, options.medium);
    auto channel = list.current();
    if (!channel) fmt::print(stderr, "qortvctl: no channel is on: name one\n");
    return channel;
}

/**
 * Why a recording broke off; empty when it ended as it should.
 *
 * @param recording the recording as it is listed now, if it is
 * @param stopped we stopped it
 */
std::string failureOf(Recorder& recorder, const std::optional<qortv::Recording>& recording,
                      bool stopped) {
    if (stateUnlessClosed(recorder) == qortv::RecordingState::kFailed) {
        return describe(recorder.error());
    }
    const bool closed = recording && recording->end == qortv::RecordingEnd::kClosed;
    return closed && !stopped ? "the television went off" : "";
}

void printJson(const qortv::Recording& recording, const std::string& failure) {
    auto json = toJsonWithoutIndex(recording);
    json["error"] = failure.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(failure);
    printLine(json.dump(2));
}

/** Prints what was recorded, and what went wrong. Returns the exit status. */
int report(const CommonOptions& common, const qortv::Channel& channel, const std::string& path,
           const std::optional<qortv::Recording>& recording, const std::string& failure) {
    if (!failure.empty()) {
        fmt::print(stderr, "qortvctl: the recording broke off: {}\n", failure);
    }
    if (!recording) {
        fmt::print(stderr, "qortvctl: the recording is gone: {}\n", withoutControls(path));
        return kFailure;
    }
    if (common.json) {
        printJson(*recording, failure);
    } else {
        printLine(withoutControls(fmt::format("recorded {}: {}, {}, {}", channelLabel(channel),
                                              durationText(recording->duration),
                                              sizeText(recording->bytes), path)));
    }
    return failure.empty() ? kOk : kFailure;
}

int record(const CommonOptions& common, const RecordOptions& options) {
    const WakeUp wakeUp;
    RecordingEvents events(wakeUp);
    const qortv::Subscription subscription(events, common.timeout);
    const auto channel = channelToRecord(common, options);
    if (!channel) return kFailure;
    auto recordings = connectTo<qortv::Recordings>(common.timeout);
    const auto proxy = qortv::connect<Recorder::Interface>(common.timeout);

    // From here on a signal ends the recording, so that no recorder is left open.
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
            waitForEnd(recorder, recordings, path, !common.json, wakeUp, interrupts, events);
    const auto recording = recordings.find(path);
    return report(common, *channel, path, recording, failureOf(recorder, recording, stopped));
}

}  // namespace

void addRecord(CommandLine& commandLine) {
    const auto options = std::make_shared<RecordOptions>();
    const auto action = [options](const CommonOptions& common) { return record(common, *options); };
    auto& group = commandLine.addGroup(commandLine.program(), "record",
                                       "Record a channel, now or later", kRecordHelp, action);
    addChannel(group, options->channel, kNumberOrNameOrCurrent);
    addMedium(group, options->medium, kMediumOfNumber);
    addSeconds(group, "--for", options->limit, "Record so long (rounded up to seconds)");
    group.callback([&commandLine, &group, options, action] {
        if (group.get_subcommands().empty()) {
            commandLine.choose(action);
        } else if (!options->channel.empty()) {
            // An argument too many for the group's command, which the parser gave to the group.
            throw CLI::ExtrasError({options->channel});
        }
    });
    addRecordAt(commandLine, group);
    addRecordList(commandLine, group);
    addRecordStop(commandLine, group);
    addRecordCancel(commandLine, group);
}

}  // namespace qortvctl
