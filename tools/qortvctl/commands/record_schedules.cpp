// qortvctl record list and cancel: what the television is to record later.
#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <cstdint>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>

#include "qortv/channel_list.h"
#include "qortv/clock.h"
#include "qortv/schedules.h"
#include "qortvctl/commands/commands.h"
#include "qortvctl/commands/connection.h"
#include "qortvctl/commands/exit_status.h"
#include "qortvctl/presentation/clock_text.h"
#include "qortvctl/presentation/recording_text.h"
#include "qortvctl/terminal/standard_output.h"
#include "qortvctl/terminal/table.h"
#include "qortvctl/text/units.h"

namespace qortvctl {

namespace {

using qortv::Channel;
using qortv::Clock;
using qortv::Schedule;
using qortv::Schedules;

constexpr char kScheduleListHelp[] =
        R"(Those that are over stay until they are cancelled or room is needed. With --json: an array of objects
as in record at, "state" being "waiting", "running", "done" or "failed".

Examples:
  qortvctl record list
  qortvctl record list --json | jq '.[] | select(.state == "waiting") | .id')";

constexpr char kCancelHelp[] =
        R"(The recording that a schedule is making ends, and is kept.

Examples:
  qortvctl record cancel 3)";

/** All channels of the television by their ids. */
class ChannelsById {
  public:
    /** @throws qortv::Error as ChannelList::read() */
    explicit ChannelsById(qortv::ChannelList& list) {
        for (const auto& channel : list.read()) mChannels[channel.id] = channel;
    }

    /** The channel that a schedule records; null when it is no longer in the list. */
    const Channel* find(const Schedule& schedule) const {
        const auto found = mChannels.find(schedule.channelId);
        return found == mChannels.end() ? nullptr : &found->second;
    }

  private:
    std::map<uint32_t, Channel> mChannels;
};

void printJson(Schedules& schedules, const ChannelsById& channels, Clock& clock) {
    auto array = nlohmann::ordered_json::array();
    for (const auto& schedule : schedules.list()) {
        array.push_back(toJson(schedule, channels.find(schedule), clock.local(schedule.start)));
    }
    printLine(array.dump(2));
}

void printTable(Schedules& schedules, const ChannelsById& channels, Clock& clock) {
    Table table({{"ID", Table::Align::kRight},
                 {"CHANNEL"},
                 {"START"},
                 {"DURATION", Table::Align::kRight},
                 {"REPEAT"},
                 {"TITLE"},
                 {"STATE"}});
    for (const auto& schedule : schedules.list()) {
        const Channel* const channel = channels.find(schedule);
        table.add({std::to_string(schedule.id),
                   channel == nullptr ? fmt::format("id {}", schedule.channelId) : channel->name,
                   dateAndTime(clock.local(schedule.start)), durationText(schedule.duration),
                   name(schedule.repeat), schedule.title, name(schedule.state)});
    }
    table.print();
}

int recordList(const CommonOptions& common) {
    auto schedules = connectTo<Schedules>(common.timeout);
    auto list = connectTo<qortv::ChannelList>(common.timeout);
    auto clock = connectTo<Clock>(common.timeout);
    const ChannelsById channels(list);
    if (common.json) {
        printJson(schedules, channels, clock);
    } else {
        printTable(schedules, channels, clock);
    }
    return kOk;
}

int recordCancel(const CommonOptions& common, uint32_t id) {
    connectTo<Schedules>(common.timeout).remove(id);
    if (common.json) {
        printLine(nlohmann::json{{"cancelled", id}}.dump());
    } else {
        printLine(fmt::format("cancelled schedule {}", id));
    }
    return kOk;
}

}  // namespace

void addRecordList(CommandLine& commandLine, CLI::App& record) {
    commandLine.addCommand(record, "list", "Show what is to be recorded", kScheduleListHelp,
                           recordList);
}

void addRecordCancel(CommandLine& commandLine, CLI::App& record) {
    const auto id = std::make_shared<uint32_t>();
    auto& command = commandLine.addCommand(
            record, "cancel", "Give up a recording that is to be made", kCancelHelp,
            [id](const CommonOptions& common) { return recordCancel(common, *id); });
    command.add_option("ID", *id, "As record list shows it")->required();
}

}  // namespace qortvctl
