// qortvctl channels: the channel list.
#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "qortv/channel_list.h"
#include "qortvctl/commands/channel_choice.h"
#include "qortvctl/commands/commands.h"
#include "qortvctl/commands/connection.h"
#include "qortvctl/commands/exit_status.h"
#include "qortvctl/parsing/channel_match.h"
#include "qortvctl/parsing/options.h"
#include "qortvctl/presentation/channel_text.h"
#include "qortvctl/terminal/standard_output.h"
#include "qortvctl/terminal/table.h"
#include "qortvctl/text/units.h"
#include "qortvctl/text/utf8.h"

namespace qortvctl {

namespace {

using qortv::Channel;

constexpr char kChannelsHelp[] = R"(Examples:
  qortvctl channels
  qortvctl channels --medium satellite --filter sport
  qortvctl channels --json | jq -r '.[].name')";

struct ChannelsOptions {
    std::optional<qortv::Medium> medium;  ///< only channels of this medium
    std::string filter;                   ///< only channels whose name contains this; empty: all
};

void printJson(const std::vector<Channel>& channels) {
    auto array = nlohmann::json::array();
    for (const auto& channel : channels) array.push_back(toJson(channel));
    printLine(array.dump(2));
}

void printTable(const std::vector<Channel>& channels) {
    using Align = Table::Align;
    Table table({{"NUMBER", Align::kRight},
                 {"NAME"},
                 {"TYPE"},
                 {"MEDIUM"},
                 {"MULTIPLEX"},
                 {"FREQUENCY", Align::kRight},
                 {"FLAGS"}});
    for (const auto& channel : channels) {
        table.add({std::to_string(channel.number), channel.name, name(channel.type),
                   name(channel.medium), channel.multiplex, frequencyText(channel.frequencyKhz),
                   flagsText(channel)});
    }
    table.print();
}

int channels(const CommonOptions& common, const ChannelsOptions& options) {
    auto found = connectTo<qortv::ChannelList>(common.timeout).read(queryFor(options.medium));
    const std::string filter = lowerCase(options.filter);
    found.erase(
            std::remove_if(found.begin(), found.end(),
                           [&](const Channel& channel) { return !nameContains(channel, filter); }),
            found.end());
    if (common.json) {
        printJson(found);
    } else {
        printTable(found);
    }
    return kOk;
}

}  // namespace

void addChannels(CommandLine& commandLine) {
    const auto options = std::make_shared<ChannelsOptions>();
    auto& command = commandLine.addCommand(
            commandLine.program(), "channels", "Show the channel list", kChannelsHelp,
            [options](const CommonOptions& common) { return channels(common, *options); });
    addMedium(command, options->medium);
    command.add_option("--filter", options->filter,
                       "Only channels whose name contains TEXT, in any letter case")
            ->type_name("TEXT");
}

}  // namespace qortvctl
