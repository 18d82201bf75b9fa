#include "qortvctl/parsing/schedule_time.h"

#include <regex>

namespace qortvctl {

namespace {

constexpr int64_t kDay = 86400;                      // seconds
constexpr int64_t kLongestDuration = 1'000'000'000;  // seconds; far more than any schedule

/** Days since 1970-01-01 in the Gregorian calendar. */
int64_t daysOf(int64_t year, int64_t month, int64_t day) {
    // Counted in years that begin in March: the day that leap years add is then their last.
    if (month <= 2) --year;
    const int64_t monthFromMarch = (month + 9) % 12;
    const int64_t dayOfYear = (153 * monthFromMarch + 2) / 5 + day - 1;
    return year * 365 + year / 4 - year / 100 + year / 400 + dayOfYear - 719468;
}

int daysIn(int year, int month) {
    const bool last = month == 12;
    return static_cast<int>(daysOf(last ? year + 1 : year, last ? 1 : month + 1, 1) -
                            daysOf(year, month, 1));
}

/** Seconds from midnight. */
template <typename Time>
int64_t timeOfDay(const Time& time) {
    return time.hour * 3600 + time.minute * 60 + time.second;
}

/** Seconds since 1970-01-01 00:00 in the time's own zone. */
template <typename Time>
int64_t secondsOf(const Time& time) {
    return daysOf(time.year, time.month, time.day) * kDay + timeOfDay(time);
}

/** The UTC time at which local time is `local` seconds since 1970-01-01 00:00. */
int64_t utcOf(int64_t local, const std::function<qortv::LocalTime(int64_t)>& localTimeOf) {
    // The offset of local time is known only for a given UTC time. The offset at the first guess
    // gives a second one, which is right unless the clock change skips this local time.
    int64_t utc = local;
    for (int guess = 0; guess < 2; ++guess) {
        const int64_t offset = secondsOf(localTimeOf(utc)) - utc;
        utc = local - offset;
    }
    return utc;
}

bool timeExists(const WrittenTime& time) {
    return time.hour <= 23 && time.minute <= 59 && time.second <= 59;
}

bool dateExists(const WrittenTime& time) {
    return time.year >= 1970 && time.month >= 1 && time.month <= 12 && time.day >= 1 &&
           time.day <= daysIn(time.year, time.month);
}

/** The number that part of an expression matched; 0 where it is left out. */
int numberIn(const std::ssub_match& match) {
    return match.matched ? std::stoi(match.str()) : 0;
}

/** The seconds that "Z", "+01:00" or "+0100" stands for. */
int32_t offsetIn(const std::string& text) {
    if (text == "Z") return 0;
    const int hours = std::stoi(text.substr(1, 2));
    const int minutes = std::stoi(text.substr(text.size() - 2));
    return (hours * 3600 + minutes * 60) * (text[0] == '-' ? -1 : 1);
}

}  // namespace

std::optional<std::chrono::seconds> parseDuration(const std::string& text) {
    static const std::regex kPlain("[0-9]{1,9}");
    static const std::regex kUnits("(?:([0-9]{1,6})h)?(?:([0-9]{1,6})m)?(?:([0-9]{1,9})s)?");
    int64_t seconds = 0;
    std::smatch found;
    if (std::regex_match(text, kPlain)) {
        seconds = std::stoll(text);
    } else if (std::regex_match(text, found, kUnits)) {
        seconds = int64_t{numberIn(found[1])} * 3600 + int64_t{numberIn(found[2])} * 60 +
                  numberIn(found[3]);
    }
    if (seconds < 1 || seconds > kLongestDuration) return std::nullopt;
    return std::chrono::seconds(seconds);
}

std::optional<WrittenTime> parseTime(const std::string& text) {
    static const std::regex kTime(
            "(?:([0-9]{4})-([0-9]{2})-([0-9]{2})[T ])?([0-9]{1,2}):([0-9]{2})(?::([0-9]{2}))?"
            "(Z|[+-][0-9]{2}:?[0-9]{2})?");
    std::smatch found;
    if (!std::regex_match(text, found, kTime)) return std::nullopt;
    WrittenTime time;
    time.hasDate = found[1].matched;
    time.year = numberIn(found[1]);
    time.month = numberIn(found[2]);
    time.day = numberIn(found[3]);
    time.hour = numberIn(found[4]);
    time.minute = numberIn(found[5]);
    time.second = numberIn(found[6]);
    if (found[7].matched) {
        if (!time.hasDate) return std::nullopt;
        time.offset = offsetIn(found[7].str());
    }
    const bool exists = timeExists(time) && (!time.hasDate || dateExists(time));
    return exists ? std::optional(time) : std::nullopt;
}

int64_t toUtc(const WrittenTime& time, int64_t now,
              const std::function<qortv::LocalTime(int64_t)>& localTimeOf) {
    if (time.offset) return secondsOf(time) - *time.offset;
    if (time.hasDate) return utcOf(secondsOf(time), localTimeOf);
    const int64_t midnight = secondsOf(localTimeOf(now)) / kDay * kDay;
    const int64_t today = midnight + timeOfDay(time);
    const int64_t utc = utcOf(today, localTimeOf);
    return utc > now ? utc : utcOf(today + kDay, localTimeOf);
}

}  // namespace qortvctl
