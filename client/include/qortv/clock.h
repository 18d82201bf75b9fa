/** The clock of the television: time, local time, and the sources of both. */
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiTime.h>

#include "qortv/connect.h"

namespace qortv {

/** Where the clock takes the time from. */
enum class TimeSource { kBroadcast, kSystem, kUser, kUnknown };

/** Returns "broadcast", "system", "user" or "unknown". */
const char* name(TimeSource source);

/** A date and time of day in the time zone of the television. */
struct LocalTime {
    int year = 0;
    int month = 0;    ///< 1 to 12
    int day = 0;      ///< 1 to 31
    int weekday = 0;  ///< 0 Sunday to 6 Saturday
    int hour = 0;
    int minute = 0;
    int second = 0;
    bool summer = false;  ///< summer time applies
};

/** Returns the date, such as "2026-11-21". */
std::string dateOf(const LocalTime& time);

/** Returns the time of day, such as "20:15". */
std::string timeOf(const LocalTime& time);

/** State of the clock. Times are seconds since 1970-01-01 00:00 UTC. */
struct ClockState {
    int64_t utc = 0;
    TimeSource source = TimeSource::kUnknown;   ///< where the present time comes from
    TimeSource follows = TimeSource::kUnknown;  ///< preferred source, used once it has the time
    int32_t zone = 0;                           ///< seconds east of Greenwich, without summer time
    int32_t offset = 0;                         ///< local time minus UTC at present, seconds
    bool totReceived = false;                   ///< a time offset table was received
    std::optional<int64_t> broadcastUtc;        ///< the last time received from the broadcast
};

/**
 * The clock of the television. Methods may be called by several threads at once. All throw Error
 * kLost, kTransport and kRefused.
 */
class Clock {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiTime;

    /** @param proxy the interface, from connect<Clock::Interface>() */
    explicit Clock(android::sp<Interface> proxy);

    /** Returns the time in seconds since 1970-01-01 00:00 UTC. */
    int64_t utc();

    /** Returns the local time at `utc`, by the summer time rules of the television. */
    LocalTime local(int64_t utc);

    /** Reads the state in several calls. */
    ClockState state();

  private:
    android::sp<Interface> mProxy;
};

}  // namespace qortv
