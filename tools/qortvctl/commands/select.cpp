// qortvctl select: makes a channel the current one.
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "qortv/channel_list.h"
#include "qortvctl/commands/channel_choice.h"
#include "qortvctl/commands/commands.h"
#include "qortvctl/commands/connection.h"
#include "qortvctl/commands/exit_status.h"
#include "qortvctl/parsing/options.h"
#include "qortvctl/presentation/channel_text.h"
#include "qortvctl/terminal/standard_output.h"

namespace qortvctl {

namespace {

constexpr char kSelectHelp[] =
        R"(A text that fits several channels selects none of them and fails. Does not look whether the channel
comes in: see zap.

Examples:
  qortvctl select 7
  qortvctl select 1 --medium cable
  qortvctl select "world news")";

struct SelectOptions {
    std::string channel;  ///< number or name
    std::optional<qortv::Medium> medium;
};

int select(const CommonOptions& common, const SelectOptions& options) {
    auto list = connectTo<qortv::ChannelList>(common.timeout);
    const auto channel = chooseChannel(list, options.channel, options.medium);
    if (!channel) return kFailure;
    list.select(channel->id);
    if (common.json) {
        printLine(toJson(*channel).dump(2));
    } else {
        printLine("selected " + channelLabel(*channel));
    }
    return kOk;
}

}  // namespace

void addSelect(CommandLine& commandLine) {
    const auto options = std::make_shared<SelectOptions>();
    auto& command = commandLine.addCommand(
            commandLine.program(), "select", "Make a channel the current one", kSelectHelp,
            [options](const CommonOptions& common) { return select(common, *options); });
    addChannel(command, options->channel, kNumberOrName)->required();
    addMedium(command, options->medium, kMediumOfNumber);
}

}  // namespace qortvctl
