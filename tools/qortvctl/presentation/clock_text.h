/** Dates, times of day and the state of the television's clock as text and as JSON. */
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "qortv/clock.h"

namespace qortvctl {

/** "2026-11-21 20:15" */
std::string dateAndTime(const qortv::LocalTime& time);

/** "20:15:30" */
std::string timeWithSeconds(const qortv::LocalTime& time);

/**
 * The state of the clock, one line for each thing it tells.
 *
 * @param local the local time at `state.utc`
 */
std::vector<std::string> toLines(const qortv::ClockState& state, const qortv::LocalTime& local);

/** @param local the local time at `state.utc` */
nlohmann::ordered_json toJson(const qortv::ClockState& state, const qortv::LocalTime& local);

}  // namespace qortvctl
