#include "qortvctl/parsing/channel_match.h"

#include <algorithm>
#include <iterator>

#include "qortvctl/text/utf8.h"

namespace qortvctl {

using qortv::Channel;

bool isNumber(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

bool nameContains(const Channel& channel, const std::string& text) {
    return lowerCase(channel.name).find(text) != std::string::npos;
}

std::vector<Channel> matchingChannels(const std::vector<Channel>& channels,
                                      const std::string& text) {
    const auto select = [&](auto matches) {
        std::vector<Channel> selected;
        std::copy_if(channels.begin(), channels.end(), std::back_inserter(selected), matches);
        return selected;
    };
    const std::string lower = lowerCase(text);
    auto found = select([&](const Channel& c) { return std::to_string(c.number) == text; });
    if (found.empty()) {
        found = select([&](const Channel& c) { return lowerCase(c.name) == lower; });
    }
    if (found.empty() && !isNumber(text)) {
        found = select([&](const Channel& c) { return nameContains(c, lower); });
    }
    return found;
}

}  // namespace qortvctl
