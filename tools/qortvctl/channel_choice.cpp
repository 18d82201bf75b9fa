#include "channel_choice.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "output.h"

namespace qortvctl {

using qortv::Channel;

qortv::ChannelQuery queryFor(const std::optional<qortv::Medium>& medium) {
    qortv::ChannelQuery query;
    if (medium == qortv::Medium::kTerrestrial) query.lists = {qortv::kTerrestrialList};
    if (medium == qortv::Medium::kCable) query.lists = {qortv::kCableList};
    if (medium == qortv::Medium::kSatellite) query.lists = {qortv::kSatelliteList};
    return query;
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

namespace {

bool isNumber(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

/** Of channels with the same number the one in the medium that is on, where that is one. */
std::optional<Channel> inCurrentMedium(qortv::ChannelList& list,
                                       const std::vector<Channel>& found) {
    const auto current = list.current();
    if (!current) return std::nullopt;
    const auto here = [&](const Channel& channel) { return channel.medium == current->medium; };
    if (std::count_if(found.begin(), found.end(), here) != 1) return std::nullopt;
    return *std::find_if(found.begin(), found.end(), here);
}

}  // namespace

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
    if (found.empty() && !isNumber(text)) {
        found = those([&](const Channel& c) {
            return lowerCase(c.name).find(wanted) != std::string::npos;
        });
    }
    return found;
}

std::optional<Channel> chooseChannel(qortv::ChannelList& list, const std::string& text,
                                     const std::optional<qortv::Medium>& medium) {
    const auto found = matches(list.read(queryFor(medium)), text);
    if (found.size() == 1) return found.front();
    const bool number = isNumber(text);
    if (found.empty() && number) {
        fmt::print(stderr, "qortvctl: there is no {}channel {}\n",
                   medium ? std::string(name(*medium)) + " " : "", text);
        return std::nullopt;
    }
    if (found.empty()) {
        fmt::print(stderr, "qortvctl: no channel has the number or name '{}'\n", text);
        return std::nullopt;
    }
    if (number) {
        if (auto channel = inCurrentMedium(list, found)) return channel;
    }
    fmt::print(stderr, "qortvctl: '{}' fits {} channels:\n", text, found.size());
    for (const auto& channel : found) {
        fmt::print(stderr, "  {} {} ({})\n", channel.number, channel.name, name(channel.medium));
    }
    fmt::print(stderr, number ? "choose with --medium\n" : "give more of the name, or --medium\n");
    return std::nullopt;
}

std::string frequencyText(uint32_t khz) {
    return khz == 0 ? "-" : fmt::format("{:.3f} MHz", khz / 1000.0);
}

}  // namespace qortvctl
