/** Times and durations as people write them on the command line. */
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "qortv/clock.h"

namespace qortvctl {

/** "90m", "1h30m", "45s", or plain seconds; at least a second. Nothing when it is none. */
std::optional<std::chrono::seconds> parseDuration(const std::string& text);

/** "20:15", "20:15:30", "2026-11-21T20:15", the same with a blank for the T, or with "Z" or
 * "+01:00" behind it. */
struct WrittenTime {
    bool hasDate = false;
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    std::optional<int32_t> offset;  ///< seconds east of Greenwich; without: the television's time
};

/** Nothing when it is no time, or a date that there is not. */
std::optional<WrittenTime> parseTime(const std::string& text);

/**
 * The moment that is meant, seconds since 1970-01-01 00:00 UTC: without a date the next time of day
 * like that after `now`.
 *
 * @param local the television's local time of a moment
 */
int64_t momentOf(const WrittenTime& time, int64_t now,
                 const std::function<qortv::LocalTime(int64_t)>& local);

}  // namespace qortvctl
