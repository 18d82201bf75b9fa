#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <vector>

#include "channel_choice.h"
#include "commands.h"
#include "output.h"
#include "qortv/channel_list.h"

namespace qortvctl {

namespace {

using qortv::Channel;
using qortv::ChannelList;

ChannelList channelList(const Common& common) {
    return ChannelList(qortv::connect<ChannelList::Interface>(common.timeout));
}

std::string flags(const Channel& channel) {
    std::string text;
    if (channel.scrambled) text += "scrambled ";
    if (channel.favourite) text += "favourite ";
    if (!channel.visible) text += "hidden ";
    return text;
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
                   flags(channel)});
    }
    table.print();
}

}  // namespace

int channels(const Common& common, const ChannelsOptions& options) {
    auto found = channelList(common).read(queryFor(options.medium));
    const std::string wanted = lowerCase(options.filter);
    found.erase(std::remove_if(found.begin(), found.end(),
                               [&](const Channel& channel) {
                                   return lowerCase(channel.name).find(wanted) == std::string::npos;
                               }),
                found.end());
    if (common.json) {
        auto array = nlohmann::json::array();
        for (const auto& channel : found) array.push_back(toJson(channel));
        printLine(array.dump(2));
    } else {
        printTable(found);
    }
    return kOk;
}

int select(const Common& common, const SelectOptions& options) {
    ChannelList list = channelList(common);
    const auto found = chooseChannel(list, options.channel, options.medium);
    if (!found) return kFailure;
    const Channel& channel = *found;
    list.select(channel.id);
    if (common.json) {
        printLine(toJson(channel).dump(2));
    } else {
        printLine(fmt::format("selected {} {}", channel.number, channel.name));
    }
    return kOk;
}

}  // namespace qortvctl
