/** Recordings and schedules as text for people and as JSON for scripts. */
#pragma once

#include <chrono>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

#include "qortv/channel.h"
#include "qortv/clock.h"
#include "qortv/recordings.h"
#include "qortv/schedules.h"

namespace qortvctl {

/** "0:42", "12:05", "1:30:00". */
std::string durationText(std::chrono::seconds duration);

/** "870 kB", "3.4 MB", "1.2 GB": thousands, as disks are sold. */
std::string sizeText(uint64_t bytes);

/** "recording", or why it ended. */
std::string stateText(const qortv::Recording& recording);

nlohmann::ordered_json toJson(const qortv::Recording& recording);

/**
 * @param channel what is recorded; null: it is gone
 * @param start its local time
 */
nlohmann::ordered_json toJson(const qortv::Schedule& schedule, const qortv::Channel* channel,
                              const qortv::LocalTime& start);

}  // namespace qortvctl
