#include "qortvctl/commands/guide_access.h"

#include <fmt/format.h>

#include <cstdio>

#include "qortvctl/commands/channel_choice.h"
#include "qortvctl/commands/connection.h"
#include "qortvctl/presentation/channel_text.h"

namespace qortvctl {

GuideAccess::GuideAccess(std::chrono::milliseconds timeout)
    : list(connectTo<qortv::ChannelList>(timeout)),
      guide(connectTo<qortv::Guide>(timeout)),
      clock(connectTo<qortv::Clock>(timeout)),
      formatter(clock) {}

NowNext readNowNext(qortv::Guide& guide, uint32_t channelId) {
    return {guide.present(channelId), guide.following(channelId)};
}

std::optional<qortv::Channel> namedOrCurrent(qortv::ChannelList& list, const std::string& text,
                                             const std::optional<qortv::Medium>& medium) {
    if (!text.empty()) return chooseChannel(list, text, medium);
    auto current = list.current();
    if (!current) fmt::print(stderr, "qortvctl: no channel is on: name one, or zap to it first\n");
    return current;
}

void reportNoEvents(const qortv::Channel& channel) {
    fmt::print(stderr, "qortvctl: the guide has nothing of {}\n", channelLabel(channel));
}

}  // namespace qortvctl
