#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <vector>

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

/** One list when a medium is given, all of them otherwise. */
qortv::ChannelQuery queryFor(const std::optional<qortv::Medium>& medium) {
    qortv::ChannelQuery query;
    if (medium == qortv::Medium::kTerrestrial) query.lists = {qortv::kTerrestrialList};
    if (medium == qortv::Medium::kCable) query.lists = {qortv::kCableList};
    if (medium == qortv::Medium::kSatellite) query.lists = {qortv::kSatelliteList};
    return query;
}

std::string frequency(const Channel& channel) {
    if (channel.frequencyKhz == 0) return "-";
    return fmt::format("{:.3f} MHz", channel.frequencyKhz / 1000.0);
}

std::string flags(const Channel& channel) {
    std::string text;
    if (channel.scrambled) text += "scrambled ";
    if (channel.favourite) text += "favourite ";
    if (!channel.visible) text += "hidden ";
    return text;
}

nlohmann::json toJson(const Channel& channel) {
    return {{"id", channel.id},
            {"number", channel.number},
            {"name", channel.name},
            {"provider", channel.provider},
            {"type", name(channel.type)},
            {"medium", name(channel.medium)},
            {"list", channel.list},
            {"record", channel.record},
            {"serviceId", channel.serviceId},
            {"originalNetworkId", channel.networkId},
            {"transportStreamId", channel.multiplexId},
            {"multiplex", channel.multiplex},
            {"frequencyKhz", channel.frequencyKhz},
            {"audioLanguage", channel.audioLanguage},
            {"scrambled", channel.scrambled},
            {"visible", channel.visible},
            {"favourite", channel.favourite}};
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
                   name(channel.medium), channel.multiplex, frequency(channel), flags(channel)});
    }
    table.print();
}

/** What `text` may mean, best reading first: the number, the whole name, a part of the name. */
std::vector<Channel> matches(const std::vector<Channel>& channels, const std::string& text) {
    const auto those = [&](auto matching) {
        std::vector<Channel> found;
        std::copy_if(channels.begin(), channels.end(), std::back_inserter(found), matching);
        return found;
    };
    const std::string wanted = lowerCase(text);
    auto found = those([&](const Channel& c) { return std::to_string(c.number) == text; });
    if (found.empty()) {
        found = those([&](const Channel& c) { return lowerCase(c.name) == wanted; });
    }
    if (found.empty()) {
        found = those([&](const Channel& c) {
            return lowerCase(c.name).find(wanted) != std::string::npos;
        });
    }
    return found;
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
    const auto found = matches(list.read(queryFor(options.medium)), options.channel);
    if (found.empty()) {
        fmt::print(stderr, "qortvctl: no channel has the number or name '{}'\n", options.channel);
        return kFailure;
    }
    if (found.size() > 1) {
        fmt::print(stderr, "qortvctl: '{}' fits {} channels:\n", options.channel, found.size());
        for (const auto& channel : found) {
            fmt::print(stderr, "  {} {} ({})\n", channel.number, channel.name,
                       name(channel.medium));
        }
        fmt::print(stderr, "give more of the name, or --medium\n");
        return kFailure;
    }
    const Channel& channel = found.front();
    list.select(channel.id);
    if (common.json) {
        printLine(toJson(channel).dump(2));
    } else {
        printLine(fmt::format("selected {} {}", channel.number, channel.name));
    }
    return kOk;
}

}  // namespace qortvctl
