/** Recordings and reminders that the television carries out by itself at a set time. */
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiRecord.h>

#include "qortv/connect.h"
#include "qortv/recording_state.h"

namespace qortv {

struct Schedule {
    /** Daily is every 24 hours, weekly every seven days. */
    enum class Repeat { kOnce, kDaily, kWeekly };

    uint32_t id = 0;  ///< set by the television; ignored by Schedules::add()
    uint32_t channelId = 0;
    int64_t start = 0;  ///< seconds since 1970-01-01 00:00 UTC, by the clock of the television
    std::chrono::seconds duration{0};  ///< from one second to one week
    Repeat repeat = Repeat::kOnce;
    bool reminder = false;  ///< only notifies listeners at the start, records nothing
    std::string title;      ///< UTF-8, at most 127 bytes; empty: taken from the guide
    ScheduleState state = ScheduleState::kWaiting;
};

/** Returns "once", "daily" or "weekly". */
const char* name(Schedule::Repeat repeat);

/**
 * The schedules of all applications. They are stored by the television, also across its restarts.
 * One that has ended stays in the list until it is removed or its place is needed. A
 * RecordingListener receives their events.
 *
 *     qortv::Schedules schedules(qortv::connect<qortv::Schedules::Interface>());
 *     qortv::Schedule schedule;
 *     schedule.channelId = channel.id;
 *     schedule.start = start;
 *     schedule.duration = std::chrono::minutes(90);
 *     const uint32_t id = schedules.add(schedule).id;
 *
 * Methods may be called by several threads at once. All throw Error kLost, kTransport and kRefused.
 */
class Schedules {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiRecord;

    /** @param proxy the interface, from connect<Schedules::Interface>() */
    explicit Schedules(android::sp<Interface> proxy);

    /** Returns all schedules in the order in which they were added. */
    std::vector<Schedule> list();

    /**
     * Adds a schedule and returns it as the television stored it, with its id.
     *
     * @throws Error also kArgument for a title that is too long
     */
    Schedule add(const Schedule& schedule);

    /** Returns whether the schedule overlaps with a running recording or a schedule whose channel
     * is of another multiplex, so that the tuner cannot record both. */
    bool conflicts(const Schedule& schedule);

    /** Removes a schedule. Its recording, if one is running, ends and is kept. */
    void remove(uint32_t id);

  private:
    const android::sp<Interface> mProxy;
};

}  // namespace qortv
