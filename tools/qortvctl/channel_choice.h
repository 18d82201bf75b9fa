/** Channels as people name them and as scripts read them. */
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "qortv/channel_list.h"

namespace qortvctl {

/** One list when a medium is given, all of them otherwise. */
qortv::ChannelQuery queryFor(const std::optional<qortv::Medium>& medium);

/** What `text` may mean, best reading first: the number, the whole name, a part of the name; digits
 * are no part of a name. */
std::vector<qortv::Channel> matches(const std::vector<qortv::Channel>& channels,
                                    const std::string& text);

/**
 * The one channel that `text` means; nothing, and a message on standard error, when there is none
 * or it fits several. A number that several media have means the one in the medium that is on.
 *
 * @throws qortv::Error as ChannelList::read()
 */
std::optional<qortv::Channel> chooseChannel(qortv::ChannelList& list, const std::string& text,
                                            const std::optional<qortv::Medium>& medium);

nlohmann::json toJson(const qortv::Channel& channel);

/** "482.000 MHz", or "-" for 0. */
std::string frequencyText(uint32_t khz);

}  // namespace qortvctl
