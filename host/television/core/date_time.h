/** Converts between seconds and the middleware client's record of a date and a time of day. */
#pragma once

#include <cstdint>
#include <optional>

#include "middleware/time.h"
#include "television/core/clock.h"

namespace television {

/** The record of UTC seconds since 1970; empty when its year does not fit into the record. */
std::optional<DTG_T> utcRecord(int64_t utc);
/** The same as a record in local time. */
std::optional<DTG_T> localRecord(int64_t utc, LocalOffset offset);

/** Seconds since 1970-01-01 00:00 of the fields, in UTC or local time as they are; the day of the
 * week is ignored. Empty when there is no such date or time of day. */
std::optional<int64_t> secondsOf(const DTG_T& record);

}  // namespace television
