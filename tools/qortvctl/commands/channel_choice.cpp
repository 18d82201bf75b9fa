#include "qortvctl/commands/channel_choice.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <vector>

#include "qortvctl/parsing/channel_match.h"

namespace qortvctl {

namespace {

using qortv::Channel;

/** The only one of `found` in the medium of the current channel; nothing when it is not one. */
std::optional<Channel> inCurrentMedium(qortv::ChannelList& list,
                                       const std::vector<Channel>& found) {
    const auto current = list.current();
    if (!current) return std::nullopt;
    const auto sameMedium = [&](const Channel& channel) {
        return channel.medium == current->medium;
    };
    if (std::count_if(found.begin(), found.end(), sameMedium) != 1) return std::nullopt;
    return *std::find_if(found.begin(), found.end(), sameMedium);
}

void complainOfNone(const std::string& text, const std::optional<qortv::Medium>& medium) {
    if (isNumber(text)) {
        fmt::print(stderr, "qortvctl: there is no {}channel {}\n",
                   medium ? std::string(name(*medium)) + " " : "", text);
    } else {
        fmt::print(stderr, "qortvctl: no channel has the number or name '{}'\n", text);
    }
}

void complainOfSeveral(const std::string& text, const std::vector<Channel>& found) {
    fmt::print(stderr, "qortvctl: '{}' fits {} channels:\n", text, found.size());
    for (const auto& channel : found) {
        fmt::print(stderr, "  {} {} ({})\n", channel.number, channel.name, name(channel.medium));
    }
    fmt::print(stderr,
               isNumber(text) ? "choose with --medium\n" : "give more of the name, or --medium\n");
}

}  // namespace

qortv::ChannelQuery queryFor(const std::optional<qortv::Medium>& medium) {
    qortv::ChannelQuery query;
    if (medium == qortv::Medium::kTerrestrial) query.lists = {qortv::kTerrestrialList};
    if (medium == qortv::Medium::kCable) query.lists = {qortv::kCableList};
    if (medium == qortv::Medium::kSatellite) query.lists = {qortv::kSatelliteList};
    return query;
}

std::optional<Channel> chooseChannel(qortv::ChannelList& list, const std::string& text,
                                     const std::optional<qortv::Medium>& medium) {
    const auto found = matchingChannels(list.read(queryFor(medium)), text);
    if (found.size() == 1) return found.front();
    if (found.empty()) {
        complainOfNone(text, medium);
        return std::nullopt;
    }
    if (isNumber(text)) {
        if (auto channel = inCurrentMedium(list, found)) return channel;
    }
    complainOfSeveral(text, found);
    return std::nullopt;
}

}  // namespace qortvctl
