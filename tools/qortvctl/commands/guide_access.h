/** What the commands about the guide have in common. */
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "qortv/channel_list.h"
#include "qortv/clock.h"
#include "qortv/guide.h"
#include "qortvctl/presentation/guide_text.h"

namespace qortvctl {

/** The connections that a command about the guide needs. */
struct GuideAccess {
    /** @throws qortv::Error as qortv::connect() */
    explicit GuideAccess(std::chrono::milliseconds timeout);

    qortv::ChannelList list;
    qortv::Guide guide;
    qortv::Clock clock;
    EventFormatter formatter;
};

/** The present and the following event of a channel; missing where the guide does not know. */
struct NowNext {
    std::optional<qortv::Event> now;
    std::optional<qortv::Event> next;
};

/** @throws qortv::Error as Guide::present() */
NowNext readNowNext(qortv::Guide& guide, uint32_t channelId);

/**
 * The channel that the command line names, else the current one.
 *
 * @param text number or name; empty: the current channel
 * @return nothing, after a message on standard error, when there is no such channel
 */
std::optional<qortv::Channel> namedOrCurrent(qortv::ChannelList& list, const std::string& text,
                                             const std::optional<qortv::Medium>& medium);

/** Says on standard error that the guide has no event of the channel. */
void reportNoEvents(const qortv::Channel& channel);

}  // namespace qortvctl
