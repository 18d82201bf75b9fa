/** The rules for the record of a schedule: its times, repetition and validity. */
#pragma once

#include <cstdint>

#include "middleware/record.h"

namespace television {

/** Seconds of the longest schedule. */
constexpr uint32_t kLongestSchedule = 7 * 86400;
/** The latest time of a schedule, seconds since 1970: sums of such times do not overflow. */
constexpr int64_t kLatestScheduleTime = 253402300799;  // end of the year 9999

/** Returns whether the fields of a record are within their ranges, its channel aside. */
bool isValidSchedule(const SCHEDULE_RECORD_T& record);

/** Returns whether a schedule in this state (SCHEDULE_STATE_…) will never run again. */
bool isOver(uint8_t state);

/** The end of the occurrence in the record, seconds since 1970. */
int64_t endOf(const SCHEDULE_RECORD_T& record);

/** Seconds from one occurrence to the next; 0 for a schedule without repetition. A day has 24
 * hours: a repeated recording keeps its time in UTC, not in local time. */
int64_t periodOf(const SCHEDULE_RECORD_T& record);

/** Moves a repeated record on to its next occurrence, or to the first later one that ends after
 * `now`. */
void toNextOccurrence(SCHEDULE_RECORD_T& record, int64_t now);

}  // namespace television
