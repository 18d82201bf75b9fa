#include "television/core/date_time.h"

#include "television/base/calendar.h"

namespace television {
namespace {

constexpr int64_t kFirst = daysFromDate({0, 1, 1}) * kSecondsOfDay;
constexpr int64_t kEnd = daysFromDate({UINT16_MAX + 1, 1, 1}) * kSecondsOfDay;

constexpr bool fits(int64_t seconds) {
    return seconds >= kFirst && seconds < kEnd;
}

DTG_T record(int64_t seconds) {
    const int64_t days = floorDivide(seconds, kSecondsOfDay);
    const auto time = static_cast<uint32_t>(seconds - days * kSecondsOfDay);
    const Date date = dateFromDays(days);
    DTG_T result = {};
    result.ui2_year = static_cast<uint16_t>(date.year);
    result.ui1_month = static_cast<uint8_t>(date.month);
    result.ui1_day = static_cast<uint8_t>(date.day);
    result.ui1_day_of_week = static_cast<uint8_t>(dayOfWeek(days));
    result.ui1_hour = static_cast<uint8_t>(time / 3600);
    result.ui1_minute = static_cast<uint8_t>(time / 60 % 60);
    result.ui1_second = static_cast<uint8_t>(time % 60);
    return result;
}

}  // namespace

std::optional<DTG_T> utcRecord(int64_t utc) {
    if (!fits(utc)) return std::nullopt;
    DTG_T result = record(utc);
    result.b_gmt = 1;
    return result;
}

std::optional<DTG_T> localRecord(int64_t utc, LocalOffset offset) {
    if (!fits(utc) || !fits(utc + offset.seconds)) return std::nullopt;
    DTG_T result = record(utc + offset.seconds);
    result.b_dst = offset.summer ? 1 : 0;
    return result;
}

std::optional<int64_t> secondsOf(const DTG_T& record) {
    const bool date =
            record.ui1_day >= 1 && record.ui1_day <= daysOfMonth(record.ui2_year, record.ui1_month);
    if (!date || record.ui1_hour > 23 || record.ui1_minute > 59 || record.ui1_second > 59) {
        return std::nullopt;
    }
    return daysFromDate({record.ui2_year, record.ui1_month, record.ui1_day}) * kSecondsOfDay +
           record.ui1_hour * 3600 + record.ui1_minute * 60 + record.ui1_second;
}

}  // namespace television
