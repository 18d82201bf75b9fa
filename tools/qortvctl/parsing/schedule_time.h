/** Times and durations as people write them on the command line. */
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "qortv/clock.h"

namespace qortvctl {

/** Reads "90m", "1h30m", "45s", or plain seconds. Returns nothing for any other text, and for less
 * than a second. */
std::optional<std::chrono::seconds> parseDuration(const std::string& text);

/** A time as it was written: "20:15", "20:15:30", "2026-11-21T20:15", the same with a blank for the
 * T, or with "Z" or an offset such as "+01:00" at its end. */
struct WrittenTime {
    bool hasDate = false;
    int year = 0;  // without a date, year, month and day are 0
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    std::optional<int32_t> offset;  ///< seconds east of Greenwich; nothing: local time
};

/** Returns nothing for a text that is no time, and for a date that does not exist. */
std::optional<WrittenTime> parseTime(const std::string& text);

/**
 * Converts a written time to seconds since 1970-01-01 00:00 UTC. Without a date it is the next such
 * time of day after `now`.
 *
 * @param now seconds since 1970-01-01 00:00 UTC
 * @param localTimeOf returns the television's local time at a UTC time
 */
int64_t toUtc(const WrittenTime& time, int64_t now,
              const std::function<qortv::LocalTime(int64_t)>& localTimeOf);

}  // namespace qortvctl
