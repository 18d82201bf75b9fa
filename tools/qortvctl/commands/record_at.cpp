// qortvctl record at: has the television record later.
#include <fmt/format.h>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "qortv/channel_list.h"
#include "qortv/clock.h"
#include "qortv/schedules.h"
#include "qortvctl/commands/channel_choice.h"
#include "qortvctl/commands/commands.h"
#include "qortvctl/commands/connection.h"
#include "qortvctl/commands/exit_status.h"
#include "qortvctl/parsing/options.h"
#include "qortvctl/parsing/schedule_time.h"
#include "qortvctl/presentation/clock_text.h"
#include "qortvctl/presentation/recording_text.h"
#include "qortvctl/terminal/standard_output.h"
#include "qortvctl/text/units.h"
#include "qortvctl/text/utf8.h"

namespace qortvctl {

namespace {

using qortv::Clock;
using qortv::Schedule;

constexpr char kRecordAtHelp[] =
        R"(TIME is 20:15, the next time that it is so late, or 2026-11-21T20:15; by the television's local time
unless Z or an offset such as +01:00 stands behind a date. DURATION is 1h30m, 90m, 45s or seconds.
With --json: {"id", "channelId", "channelNumber", "channel": null where the channel is gone, "start":
seconds since 1970 UTC, "date", "time": local, "seconds", "repeat": "once", "daily" or "weekly",
"reminder", "title", "state"}.

Examples:
  qortvctl record at 7 20:15 1h30m
  qortvctl record at "world news" 2026-12-24T18:00 45m --title "Christmas"
  qortvctl record at 7 19:00 30m --repeat daily)";

struct RecordAtOptions {
    std::string channel;  ///< number or name
    std::optional<qortv::Medium> medium;
    std::string time;      ///< readable by parseTime()
    std::string duration;  ///< readable by parseDuration()
    Schedule::Repeat repeat = Schedule::Repeat::kOnce;
    std::string title;
};

/** @param now seconds since 1970-01-01 00:00 UTC, by the television's clock */
Schedule toSchedule(const RecordAtOptions& options, uint32_t channelId, Clock& clock, int64_t now) {
    Schedule schedule;
    schedule.channelId = channelId;
    schedule.start =
            toUtc(*parseTime(options.time), now, [&](int64_t utc) { return clock.local(utc); });
    schedule.duration = *parseDuration(options.duration);
    schedule.repeat = options.repeat;
    schedule.title = options.title;
    return schedule;
}

bool isOver(const Schedule& schedule, int64_t now) {
    return schedule.repeat == Schedule::Repeat::kOnce &&
           schedule.start + schedule.duration.count() <= now;
}

void printText(const Schedule& schedule, const qortv::Channel& channel, Clock& clock) {
    const bool once = schedule.repeat == Schedule::Repeat::kOnce;
    printLine(fmt::format("schedule {}: {} {}, {}, {}{}", schedule.id, channel.number,
                          withoutControls(channel.name), dateAndTime(clock.local(schedule.start)),
                          durationText(schedule.duration),
                          once ? "" : fmt::format(", {}", name(schedule.repeat))));
}

int recordAt(const CommonOptions& common, const RecordAtOptions& options) {
    auto list = connectTo<qortv::ChannelList>(common.timeout);
    const auto channel = chooseChannel(list, options.channel, options.medium);
    if (!channel) return kFailure;
    auto clock = connectTo<Clock>(common.timeout);
    auto schedules = connectTo<qortv::Schedules>(common.timeout);
    const int64_t now = clock.utc();
    const Schedule wanted = toSchedule(options, channel->id, clock, now);
    if (isOver(wanted, now)) {
        fmt::print(stderr, "qortvctl: {} is over: by the television it is {}\n", options.time,
                   dateAndTime(clock.local(now)));
        return kFailure;
    }
    const bool conflict = schedules.conflicts(wanted);
    const Schedule added = schedules.add(wanted);
    if (conflict) {
        fmt::print(stderr,
                   "qortvctl: another multiplex is to be recorded at that time: one of the two "
                   "will fail (see record list)\n");
    }
    if (common.json) {
        printLine(toJson(added, &*channel, clock.local(added.start)).dump(2));
    } else {
        printText(added, *channel, clock);
    }
    return kOk;
}

}  // namespace

void addRecordAt(CommandLine& commandLine, CLI::App& record) {
    const auto options = std::make_shared<RecordAtOptions>();
    auto& command = commandLine.addCommand(
            record, "at", "Have the television record later", kRecordAtHelp,
            [options](const CommonOptions& common) { return recordAt(common, *options); });
    addChannel(command, options->channel, kNumberOrName)->required();
    command.add_option("TIME", options->time, "When it begins")->required()->check(timeValue());
    command.add_option("DURATION", options->duration, "How long it is")
            ->required()
            ->check(durationValue());
    addRepeat(command, options->repeat);
    command.add_option("--title", options->title, "Its title; else the guide's")->type_name("TEXT");
    addMedium(command, options->medium, kMediumOfNumber);
}

}  // namespace qortvctl
