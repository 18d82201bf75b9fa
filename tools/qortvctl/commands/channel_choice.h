/** Finding the channel that the command line names. */
#pragma once

#include <optional>
#include <string>

#include "qortv/channel_list.h"

namespace qortvctl {

/** A query for the service list of one medium; without a medium for all lists. */
qortv::ChannelQuery queryFor(const std::optional<qortv::Medium>& medium);

/**
 * Finds the one channel that `text`, a number or name, stands for. If several media have the
 * number, it is the channel in the medium of the current channel.
 *
 * @return nothing, after a message on standard error, when there is no such channel or several
 * @throws qortv::Error as ChannelList::read()
 */
std::optional<qortv::Channel> chooseChannel(qortv::ChannelList& list, const std::string& text,
                                            const std::optional<qortv::Medium>& medium);

}  // namespace qortvctl
