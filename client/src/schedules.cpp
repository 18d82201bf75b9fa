#include "qortv/schedules.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <optional>
#include <utility>

#include "middleware/record.h"
#include "middleware/result_codes.h"
#include "record_image.h"
#include "recording_codes.h"
#include "result.h"
#include "stable_read.h"

namespace qortv {

namespace {

Schedule::Repeat repeatOf(uint8_t number) {
    if (number == SCHEDULE_REPEAT_DAILY) return Schedule::Repeat::kDaily;
    if (number == SCHEDULE_REPEAT_WEEKLY) return Schedule::Repeat::kWeekly;
    return Schedule::Repeat::kOnce;
}

uint8_t numberOf(Schedule::Repeat repeat) {
    switch (repeat) {
        case Schedule::Repeat::kOnce:
            return SCHEDULE_REPEAT_ONCE;
        case Schedule::Repeat::kDaily:
            return SCHEDULE_REPEAT_DAILY;
        case Schedule::Repeat::kWeekly:
            return SCHEDULE_REPEAT_WEEKLY;
    }
    return SCHEDULE_REPEAT_ONCE;
}

Schedule toSchedule(const SCHEDULE_RECORD_T& record) {
    Schedule schedule;
    schedule.id = record.ui4_id;
    schedule.channelId = record.ui4_channel_id;
    schedule.start = record.i8_start_time;
    schedule.duration = std::chrono::seconds(record.ui4_duration);
    schedule.repeat = repeatOf(record.ui1_repeat);
    schedule.reminder = record.ui1_type == SCHEDULE_TYPE_REMIND;
    schedule.title = textIn(record.s_title);
    schedule.state = scheduleState(record.ui1_state);
    return schedule;
}

/** Returns 0, which the television refuses, for a duration that does not fit into 32 bits. */
uint32_t durationOf(const Schedule& schedule) {
    const auto seconds = schedule.duration.count();
    if (seconds < 0 || seconds > std::numeric_limits<uint32_t>::max()) return 0;
    return static_cast<uint32_t>(seconds);
}

SCHEDULE_RECORD_T toRecord(const Schedule& schedule) {
    SCHEDULE_RECORD_T record = {};
    const std::string title = validUtf8(schedule.title);
    if (title.size() >= sizeof record.s_title) {
        throw Error(Error::Kind::kArgument, "a title has at most " +
                                                    std::to_string(sizeof record.s_title - 1) +
                                                    " bytes, not " + std::to_string(title.size()));
    }
    record.ui4_channel_id = schedule.channelId;
    record.i8_start_time = schedule.start;
    record.ui4_duration = durationOf(schedule);
    record.ui1_type = schedule.reminder ? SCHEDULE_TYPE_REMIND : SCHEDULE_TYPE_RECORD;
    record.ui1_repeat = numberOf(schedule.repeat);
    std::memcpy(record.s_title, title.data(), title.size());
    return record;
}

std::optional<Schedule> scheduleAt(const android::sp<Schedules::Interface>& proxy, int32_t index) {
    std::optional<Schedule> schedule;
    int32_t result = 0;
    check(proxy->a_hidl_a_qortvapi_get_schedule_record(
                  index,
                  [&](const auto& image, int32_t code) {
                      result = code;
                      if (code >= 0) schedule = toSchedule(recordOf<SCHEDULE_RECORD_T>(image));
                  }),
          "get_schedule_record");
    if (result != TV_NOT_FOUND) checkResult(result, "tell its schedules");
    return schedule;
}

}  // namespace

const char* name(Schedule::Repeat repeat) {
    switch (repeat) {
        case Schedule::Repeat::kOnce:
            return "once";
        case Schedule::Repeat::kDaily:
            return "daily";
        case Schedule::Repeat::kWeekly:
            return "weekly";
    }
    return "";
}

Schedules::Schedules(android::sp<Interface> proxy) : mProxy(std::move(proxy)) {}

std::vector<Schedule> Schedules::list() {
    const auto read = [this] {
        std::vector<Schedule> schedules;
        while (const auto schedule = scheduleAt(mProxy, static_cast<int32_t>(schedules.size()))) {
            schedules.push_back(*schedule);
        }
        return schedules;
    };
    return readStable(
            read, [](const Schedule& schedule) { return schedule.id; }, "the list of schedules");
}

Schedule Schedules::add(const Schedule& schedule) {
    const SCHEDULE_RECORD_T record = toRecord(schedule);
    uint32_t last = 0;
    for (const auto& known : list()) last = std::max(last, known.id);
    checkResult(
            valueOf(mProxy->a_hidl_a_qortvapi_set_schedule_record(imageOf(record), SCHEDULE_ADD),
                    "set_schedule_record"),
            "take the schedule");
    // The call does not return the id. Ids only grow, so the schedule is one of those with a higher
    // id than before. When another application has just added an equal one, either of them will do.
    for (const auto& added : list()) {
        if (added.id > last && added.channelId == schedule.channelId &&
            added.duration == schedule.duration && added.repeat == schedule.repeat &&
            added.reminder == schedule.reminder && added.title == validUtf8(schedule.title)) {
            return added;
        }
    }
    throw Error(Error::Kind::kRefused, "the schedule was removed as soon as it was added");
}

bool Schedules::conflicts(const Schedule& schedule) {
    RECORD_SOURCE_T source = {};
    source.ui4_channel_id = schedule.channelId;
    source.ui4_duration = durationOf(schedule);
    source.i8_start_time = schedule.start;
    return valueOf(mProxy->a_hidl_a_qortvapi_record_pvr_chk_src_conflict(
                           imageOf(source), imageOf(RECORD_SOURCE_T{})),
                   "record_pvr_chk_src_conflict");
}

void Schedules::remove(uint32_t id) {
    const int32_t result =
            valueOf(mProxy->a_hidl_a_qortvapi_del_schedule_record(static_cast<int32_t>(id)),
                    "del_schedule_record");
    if (result == TV_NOT_FOUND) {
        throw Error(Error::Kind::kRefused, "there is no schedule " + std::to_string(id));
    }
    checkResult(result, "remove schedule ", id);
}

}  // namespace qortv
