#include "qortvctl/presentation/channel_text.h"

#include <fmt/format.h>

namespace qortvctl {

using qortv::Channel;

std::string channelLabel(const Channel& channel) {
    return fmt::format("{} {}", channel.number, channel.name);
}

std::string flagsText(const Channel& channel) {
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

}  // namespace qortvctl
