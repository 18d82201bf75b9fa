/** The television's clock: time of day, local time, and where it has them from. */
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiTime.h>

#include "qortv/connect.h"

namespace qortv {

/** What a clock can follow. */
enum class TimeSource { kBroadcast, kSystem, kUser, kUnknown };

/** "broadcast", "system", "user" or "unknown". */
const char* name(TimeSource source);

/** A date and time of day in the zone of the set. */
struct LocalTime {
    int year = 0;
    int month = 0;    ///< 1 to 12
    int day = 0;      ///< 1 to 31
    int weekday = 0;  ///< 0 Sunday to 6 Saturday
    int hour = 0;
    int minute = 0;
    int second = 0;
    bool summer = false;  ///< summer time is in it
};

/** "2026-11-21" */
std::string dateOf(const LocalTime& time);

/** "20:15" */
std::string timeOf(const LocalTime& time);

/** All that the clock tells. Times are seconds since 1970-01-01 00:00 UTC. */
struct ClockState {
    int64_t utc = 0;
    TimeSource source = TimeSource::kUnknown;   ///< tells the time just now
    TimeSource follows = TimeSource::kUnknown;  ///< is to be followed as soon as it tells the time
    int32_t zone = 0;                           ///< seconds east of Greenwich, no summer time
    int32_t offset = 0;                         ///< what local time is ahead just now, seconds
    bool totReceived = false;                   ///< the broadcast told a local offset
    std::optional<int64_t> broadcastUtc;        ///< the last time that the broadcast told
};

/**
 * The clock of the television. Methods may be called by several threads at once; all throw Error
 * kLost and kTransport, and kRefused for a negative answer.
 */
class Clock {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiTime;

    /** @param proxy the interface, from connect<Clock::Interface>() */
    explicit Clock(android::sp<Interface> proxy);

    /** Seconds since 1970-01-01 00:00 UTC. */
    int64_t utc();

    /** Local time of a moment, by the summer time rules that the set knows. */
    LocalTime local(int64_t utc);

    ClockState state();

  private:
    android::sp<Interface> mProxy;
};

}  // namespace qortv
