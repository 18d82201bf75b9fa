// qortvctl record at, list and cancel: what the television is to record later.
#include <fmt/format.h>

#include <map>
#include <nlohmann/json.hpp>

#include "channel_choice.h"
#include "commands.h"
#include "output.h"
#include "qortv/clock.h"
#include "record_output.h"
#include "schedule_time.h"

namespace qortvctl {

namespace {

using qortv::Clock;
using qortv::Schedule;
using qortv::Schedules;

Schedules connectSchedules(const Common& common) {
    return Schedules(qortv::connect<Schedules::Interface>(common.timeout));
}

/** "2026-11-21 20:15", by the television's local time. */
std::string momentText(Clock& clock, int64_t moment) {
    const auto local = clock.local(moment);
    return dateOf(local) + " " + timeOf(local);
}

}  // namespace

int recordAt(const Common& common, const RecordAtOptions& options) {
    qortv::ChannelList list(qortv::connect<qortv::ChannelList::Interface>(common.timeout));
    const auto channel = chooseChannel(list, options.channel, options.medium);
    if (!channel) return kFailure;
    Clock clock(qortv::connect<Clock::Interface>(common.timeout));
    Schedules schedules = connectSchedules(common);
    const int64_t now = clock.utc();
    Schedule wanted;
    wanted.channelId = channel->id;
    wanted.start = momentOf(*parseTime(options.time), now,
                            [&](int64_t moment) { return clock.local(moment); });
    wanted.duration = *parseDuration(options.duration);
    wanted.repeat = options.repeat;
    wanted.title = options.title;
    if (wanted.repeat == Schedule::Repeat::kOnce && wanted.start + wanted.duration.count() <= now) {
        fmt::print(stderr, "qortvctl: {} is over: by the television it is {}\n", options.time,
                   momentText(clock, now));
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
        printLine(fmt::format("schedule {}: {} {}, {}, {}{}", added.id, channel->number,
                              withoutControls(channel->name), momentText(clock, added.start),
                              durationText(added.duration),
                              added.repeat == Schedule::Repeat::kOnce
                                      ? ""
                                      : fmt::format(", {}", name(added.repeat))));
    }
    return kOk;
}

int recordList(const Common& common) {
    Schedules schedules = connectSchedules(common);
    qortv::ChannelList list(qortv::connect<qortv::ChannelList::Interface>(common.timeout));
    Clock clock(qortv::connect<Clock::Interface>(common.timeout));
    std::map<uint32_t, qortv::Channel> channels;
    for (const auto& channel : list.read()) channels[channel.id] = channel;
    const auto channelOf = [&](const Schedule& schedule) {
        const auto known = channels.find(schedule.channelId);
        return known == channels.end() ? nullptr : &known->second;
    };
    if (common.json) {
        auto array = nlohmann::ordered_json::array();
        for (const auto& schedule : schedules.list()) {
            array.push_back(toJson(schedule, channelOf(schedule), clock.local(schedule.start)));
        }
        printLine(array.dump(2));
        return kOk;
    }
    Table table({{"ID", Table::Align::kRight},
                 {"CHANNEL"},
                 {"START"},
                 {"DURATION", Table::Align::kRight},
                 {"REPEAT"},
                 {"TITLE"},
                 {"STATE"}});
    for (const auto& schedule : schedules.list()) {
        const auto* const channel = channelOf(schedule);
        table.add({std::to_string(schedule.id),
                   channel == nullptr ? fmt::format("id {}", schedule.channelId) : channel->name,
                   momentText(clock, schedule.start), durationText(schedule.duration),
                   name(schedule.repeat), schedule.title, name(schedule.state)});
    }
    table.print();
    return kOk;
}

int recordCancel(const Common& common, uint32_t id) {
    connectSchedules(common).remove(id);
    if (common.json) {
        printLine(nlohmann::json{{"cancelled", id}}.dump());
    } else {
        printLine(fmt::format("cancelled schedule {}", id));
    }
    return kOk;
}

}  // namespace qortvctl
