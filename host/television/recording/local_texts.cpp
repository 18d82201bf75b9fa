#include "television/recording/local_texts.h"

#include <algorithm>

#include <fmt/format.h>

#include "television/base/calendar.h"

namespace television {

LocalTexts localTexts(int64_t utc, int32_t offset) {
    constexpr const char* kWeekDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    // A sidecar file may hold any number; so the sums below stay within 64 bits.
    constexpr int64_t kFirst = -62135596800;  // 0001-01-01
    constexpr int64_t kLast = 253402300799;   // 9999-12-31
    const int64_t local = std::clamp(utc, kFirst - INT32_MIN, kLast - INT32_MAX) + offset;
    const int64_t day = floorDivide(local, kSecondsOfDay);
    const int64_t second = local - day * kSecondsOfDay;
    const Date date = dateFromDays(day);
    return {fmt::format("{:04}-{:02}-{:02}", date.year, date.month, date.day),
            fmt::format("{:02}:{:02}:{:02}", second / 3600, second / 60 % 60, second % 60),
            kWeekDays[dayOfWeek(day)]};
}

}  // namespace television
