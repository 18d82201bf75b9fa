/** The middleware client's record of date and time of day, to and from seconds. */
#pragma once

#include <cstdint>
#include <optional>

#include "clock.h"
#include "middleware/time.h"

namespace television {

/** UTC seconds as a record; empty where the year does not fit into one. */
std::optional<DTG_T> utcRecord(int64_t utc);
/** The same in local time. */
std::optional<DTG_T> localRecord(int64_t utc, LocalOffset offset);

/** Seconds from 1970-01-01 00:00 of what the fields say, whether that is UTC or local time; the day
 * of the week is not looked at. Empty when there is no such date or time of day. */
std::optional<int64_t> secondsOf(const DTG_T& record);

}  // namespace television
