/** Which channels a person means by a number or a name. */
#pragma once

#include <string>
#include <vector>

#include "qortv/channel.h"

namespace qortvctl {

/** Whether `text` has only digits, and at least one. */
bool isNumber(const std::string& text);

/**
 * Whether the channel's name contains a text, in any letter case.
 *
 * @param text in lower case, as lowerCase() returns it
 */
bool nameContains(const qortv::Channel& channel, const std::string& text);

/**
 * The channels that `text` fits: those with this number; else those with this name; else those
 * whose name contains it. A number is not looked for inside of names.
 */
std::vector<qortv::Channel> matchingChannels(const std::vector<qortv::Channel>& channels,
                                             const std::string& text);

}  // namespace qortvctl
