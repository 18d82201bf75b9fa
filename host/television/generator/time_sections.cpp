#include "television/generator/time_sections.h"

#include <algorithm>
#include <array>
#include <utility>

#include "television/base/calendar.h"

namespace stream_generator {
namespace {

using television::kSecondsOfDay;

constexpr uint16_t kPidTdt = 0x14;

/** 01:00 UTC on the last Sunday of a month of 31 days: when summer time begins or ends. */
int64_t offsetChange(int64_t year, unsigned month) {
    const int64_t last = television::daysFromDate({year, month, 31});
    return (last - television::dayOfWeek(last)) * kSecondsOfDay + 3600;
}

}  // namespace

std::vector<RawSection> timeSections(int64_t time) {
    const int64_t year =
            television::dateFromDays(television::floorDivide(time, kSecondsOfDay)).year;
    const std::array<int64_t, 3> changes = {offsetChange(year, 3), offsetChange(year, 10),
                                            offsetChange(year + 1, 3)};
    const auto next = std::upper_bound(changes.begin(), changes.end(), time);
    const bool summer = next == changes.begin() + 1;
    Bytes tdt = {0x70, 0x70, 0x05};
    putTime(tdt, time);
    Bytes tot = {0x73, 0x70, 0x00};
    putTime(tot, time);
    put16(tot, 0xF000 | 15);
    tot.insert(tot.end(), {0x58, 13, 'D', 'E', 'U', 0x02});  // the only region, east of Greenwich
    put16(tot, summer ? 0x0200 : 0x0100);
    putTime(tot, *next);
    put16(tot, summer ? 0x0100 : 0x0200);
    finishSection(tot);
    return {{kPidTdt, std::move(tdt)}, {kPidTdt, std::move(tot)}};
}

}  // namespace stream_generator
