/** Channels as text for people and as JSON for scripts. */
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "qortv/channel.h"

namespace qortvctl {

/** "7 World News HD" */
std::string channelLabel(const qortv::Channel& channel);

/** What the FLAGS column of a table says: "scrambled favourite ". */
std::string flagsText(const qortv::Channel& channel);

nlohmann::json toJson(const qortv::Channel& channel);

}  // namespace qortvctl
