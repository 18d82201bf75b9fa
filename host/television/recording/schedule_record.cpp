#include "television/recording/schedule_record.h"

#include <algorithm>
#include <cstring>

#include "television/base/calendar.h"

namespace television {

int64_t endOf(const SCHEDULE_RECORD_T& record) {
    return record.i8_start_time + record.ui4_duration;
}

int64_t periodOf(const SCHEDULE_RECORD_T& record) {
    switch (record.ui1_repeat) {
        case SCHEDULE_REPEAT_DAILY:
            return kSecondsOfDay;
        case SCHEDULE_REPEAT_WEEKLY:
            return 7 * kSecondsOfDay;
        default:
            return 0;
    }
}

void toNextOccurrence(SCHEDULE_RECORD_T& record, int64_t now) {
    const int64_t period = periodOf(record);
    const int64_t late = std::max<int64_t>(now - endOf(record), 0);
    record.i8_start_time += (late / period + 1) * period;
}

bool isValidSchedule(const SCHEDULE_RECORD_T& record) {
    if (record.ui1_type > SCHEDULE_TYPE_REMIND || record.ui1_repeat > SCHEDULE_REPEAT_WEEKLY ||
        record.i8_start_time < 0 || record.i8_start_time > kLatestScheduleTime ||
        record.ui4_duration == 0 || record.ui4_duration > kLongestSchedule) {
        return false;
    }
    // An occurrence must not begin before the one before has ended.
    const bool overlaps = periodOf(record) != 0 && record.ui4_duration > periodOf(record);
    return !overlaps && std::memchr(record.s_title, 0, sizeof(record.s_title)) != nullptr;
}

bool isOver(uint8_t state) {
    return state == SCHEDULE_STATE_DONE || state == SCHEDULE_STATE_FAILED;
}

}  // namespace television
