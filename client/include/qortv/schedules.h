/** Recordings that the television will make by itself. */
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
    /** Every 24 hours, or every seven days. */
    enum class Repeat { kOnce, kDaily, kWeekly };

    uint32_t id = 0;  ///< the television's; 0 in one that is to be added
    uint32_t channelId = 0;
    int64_t start = 0;  ///< seconds since 1970-01-01 00:00 UTC, by the television's clock
    std::chrono::seconds duration{0};  ///< from a second to a week
    Repeat repeat = Repeat::kOnce;
    bool reminder = false;  ///< told when it begins, and not recorded
    std::string title;      ///< UTF-8, at most 127 bytes; empty: as the guide tells it
    ScheduleState state = ScheduleState::kWaiting;
};

/** "once", "daily" or "weekly". */
const char* name(Schedule::Repeat repeat);

/**
 * The schedules of all applications. They outlive this process and the television's restarts; one
 * that is over stays in the list until it is removed or room is needed. A RecordingListener hears
 * of them.
 *
 *     qortv::Schedules schedules(qortv::connect<qortv::Schedules::Interface>());
 *     qortv::Schedule schedule;
 *     schedule.channelId = channel.id;
 *     schedule.start = start;
 *     schedule.duration = std::chrono::minutes(90);
 *     const uint32_t id = schedules.add(schedule).id;
 *
 * Methods may be called by several threads at once. All throw Error kLost and kTransport, and
 * kRefused when the television answers with a negative code.
 */
class Schedules {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiRecord;

    /** @param proxy the interface, from connect<Schedules::Interface>() */
    explicit Schedules(android::sp<Interface> proxy);

    /** All of them, in the order they were added. */
    std::vector<Schedule> list();

    /**
     * Adds one; answers it as the television keeps it.
     *
     * @throws Error also kArgument for a title that is too long
     */
    Schedule add(const Schedule& schedule);

    /** Whether a schedule and what is recorded or scheduled already are in each other's way: they
     * overlap, and are of different multiplexes. */
    bool conflicts(const Schedule& schedule);

    /** Removes one; the recording that it is making ends, and is kept. */
    void remove(uint32_t id);

  private:
    const android::sp<Interface> mProxy;
};

}  // namespace qortv
