/** Dates of the proleptic Gregorian calendar, and how broadcasts write them: Modified Julian Date
 * and binary-coded decimals. No time zones here. */
#pragma once

#include <cstdint>
#include <optional>

namespace television {

constexpr int64_t kSecondsOfDay = 86400;
/** 1970-01-01 as a Modified Julian Date. */
constexpr int64_t kMjdOfEpoch = 40587;

/** Division by a positive number that rounds towards minus infinity, so that seconds before 1970
 * fall into their day. */
constexpr int64_t floorDivide(int64_t value, int64_t by) {
    return value / by - (value % by < 0 ? 1 : 0);
}

struct Date {
    int64_t year = 1970;
    unsigned month = 1;  ///< 1 to 12
    unsigned day = 1;    ///< 1 to 31
};

/** Days from 0000-03-01 to 1970-01-01. */
constexpr int64_t kEpochFromMarch0 = 719468;
constexpr int64_t kDaysOfEra = 146097;  ///< of 400 years

constexpr bool isLeapYear(int64_t year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

/** The number of days of a month; 0 when there is no such month. */
constexpr unsigned daysOfMonth(int64_t year, unsigned month) {
    constexpr unsigned kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12) return 0;
    return month == 2 && isLeapYear(year) ? 29 : kDays[month - 1];
}

/** Days from 1970-01-01 to a date that exists. */
constexpr int64_t daysFromDate(const Date& date) {
    // Years are counted from March, so that the leap day is the last of its year.
    const int64_t year = date.month > 2 ? date.year : date.year - 1;
    const int64_t era = floorDivide(year, 400);
    const int64_t yearOfEra = year - era * 400;
    const int64_t month = date.month > 2 ? date.month - 3 : date.month + 9;
    const int64_t dayOfYear = (153 * month + 2) / 5 + date.day - 1;
    const int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * kDaysOfEra + dayOfEra - kEpochFromMarch0;
}

/** The date that many days after 1970-01-01. */
constexpr Date dateFromDays(int64_t days) {
    const int64_t shifted = days + kEpochFromMarch0;
    const int64_t era = floorDivide(shifted, kDaysOfEra);
    const int64_t dayOfEra = shifted - era * kDaysOfEra;
    const int64_t yearOfEra =
            (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int64_t month = (5 * dayOfYear + 2) / 153;
    Date date;
    date.day = static_cast<unsigned>(dayOfYear - (153 * month + 2) / 5 + 1);
    date.month = static_cast<unsigned>(month < 10 ? month + 3 : month - 9);
    date.year = yearOfEra + era * 400 + (date.month <= 2 ? 1 : 0);
    return date;
}

/** The day of the week of the date that many days after 1970-01-01: 0 Sunday to 6 Saturday. */
constexpr unsigned dayOfWeek(int64_t days) {
    return static_cast<unsigned>(days + 4 - floorDivide(days + 4, 7) * 7);
}

/** The number that a byte of two binary-coded decimals stands for; empty when one of them is above
 * nine. */
constexpr std::optional<unsigned> fromBcd(uint8_t digits) {
    if (digits >> 4 > 9 || (digits & 0xF) > 9) return std::nullopt;
    return (digits >> 4) * 10u + (digits & 0xFu);
}

/** A number below 100 as two binary-coded decimals. */
constexpr uint8_t toBcd(unsigned number) {
    return static_cast<uint8_t>(number / 10 << 4 | number % 10);
}

/** Hours, minutes and seconds in six binary-coded decimals, as seconds; empty when they are out of
 * range. `mostHours`: 23 for a time of day, 99 for a duration. */
constexpr std::optional<uint32_t> secondsFromBcd(uint32_t digits, unsigned mostHours) {
    const auto hours = fromBcd(static_cast<uint8_t>(digits >> 16));
    const auto minutes = fromBcd(static_cast<uint8_t>(digits >> 8));
    const auto seconds = fromBcd(static_cast<uint8_t>(digits));
    if (!hours || !minutes || !seconds) return std::nullopt;
    if (*hours > mostHours || *minutes > 59 || *seconds > 59) return std::nullopt;
    return *hours * 3600 + *minutes * 60 + *seconds;
}

/** A duration of less than 100 hours as six binary-coded decimals. */
constexpr uint32_t bcdFromSeconds(uint32_t seconds) {
    return uint32_t{toBcd(seconds / 3600)} << 16 | uint32_t{toBcd(seconds / 60 % 60)} << 8 |
           toBcd(seconds % 60);
}

/** Seconds since 1970 of a Modified Julian Date and a time of day in six binary-coded decimals;
 * empty when the time of day is out of range. */
constexpr std::optional<int64_t> secondsFromMjd(uint16_t mjd, uint32_t digits) {
    const auto time = secondsFromBcd(digits, 23);
    if (!time) return std::nullopt;
    return (mjd - kMjdOfEpoch) * kSecondsOfDay + *time;
}

}  // namespace television
