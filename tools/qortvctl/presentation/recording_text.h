/** Recordings and schedules as text for people and as JSON for scripts. */
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "qortv/channel.h"
#include "qortv/clock.h"
#include "qortv/recordings.h"
#include "qortv/schedules.h"

namespace qortvctl {

/** "recording", or why the recording ended. */
std::string stateText(const qortv::Recording& recording);

nlohmann::ordered_json toJson(const qortv::Recording& recording);

/** The same without "index", for a recording that is not read from the list. */
nlohmann::ordered_json toJsonWithoutIndex(const qortv::Recording& recording);

/**
 * @param channel the channel of the schedule; null: it is no longer in the channel list
 * @param start local time of the schedule's start
 */
nlohmann::ordered_json toJson(const qortv::Schedule& schedule, const qortv::Channel* channel,
                              const qortv::LocalTime& start);

}  // namespace qortvctl
