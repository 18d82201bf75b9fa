/** The television's clock: the time of day, by the source that it follows, and the local offset. */
#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>

#include "television/stream/broadcast_time.h"

namespace television {

/** How far local time is ahead of UTC at some moment. */
struct LocalOffset {
    int32_t seconds = 0;
    bool summer = false;  ///< summer time is included
};

/**
 * The time of day by one of the sources TIME_SYNC_SOURCE_…:
 *
 *     BROADCAST  the streams' last time, carried on since it was received; the machine's clock when
 *                the streams have none
 *     SYSTEM     the machine's clock
 *     USER       a time that was set
 *
 * The local offset is that of the streams while they are followed and have one, else the one that
 * was set. Any thread; while its one lock is held, only the base is called.
 */
class Clock {
  public:
    /** Milliseconds since 1970-01-01 00:00 UTC. */
    using Base = std::function<int64_t()>;

    /** `base` replaces the machine's clocks in tests; empty: the machine's. It is called by any
     * thread. */
    explicit Clock(Base base = {});

    int64_t utcMilliseconds() const;
    /** Seconds since 1970-01-01 00:00 UTC. */
    int64_t utcSeconds() const;
    /** Milliseconds since some moment in the past, which never jump: for measuring durations. */
    int64_t elapsedMilliseconds() const;

    /** The source that was set. */
    uint32_t source() const;
    /** The source that is followed in fact: the system's while the broadcast is to be followed but
     * has no time. */
    uint32_t sourceInForce() const;
    /** When no time was set yet, TIME_SYNC_SOURCE_USER goes on from where the clock stands. */
    void setSource(uint32_t source);

    /** Sets the time that TIME_SYNC_SOURCE_USER follows. */
    void setUserTime(int64_t utcMilliseconds);
    /** By how many milliseconds the time that was set is ahead of the machine's clock; empty when
     * none was set. */
    std::optional<int64_t> userLead() const;
    /** Sets the time by its lead, as userLead() returned it. */
    void setUserLead(int64_t milliseconds);

    /** The offset at a moment (UTC seconds). */
    LocalOffset offsetAt(int64_t utc) const;
    /** UTC seconds of a local time in seconds since 1970-01-01 00:00 local time. Where a change of
     * the offset makes a local time happen twice, `summer` says which one is meant. */
    int64_t utcFromLocal(int64_t local, bool summer) const;
    /** The offset without summer time, in seconds. */
    int32_t zone() const;
    /** Sets zone and offset to the same: there is no summer time. */
    void setZone(int32_t seconds);
    /** Sets how far local time is ahead of UTC; it is summer time when that is more than the zone.
     */
    void setOffset(int32_t seconds);
    /** The offset that was set, whether it is followed or not. */
    int32_t offset() const;

    /** Takes over the streams' time and carries it on from now, unless it is the same as the last
     * one, which is carried on already. */
    void receive(const BroadcastTime& time);
    /** The streams' last time, as it was received. */
    BroadcastTime received() const;
    /** The streams' last time, carried on to now; empty when they have none. */
    std::optional<int64_t> broadcastMilliseconds() const;

  private:
    int64_t machineTime() const;
    // With the lock held:
    int64_t now() const;
    std::optional<int64_t> broadcastNow() const;
    bool followsOffset() const;

    const Base mBase;
    mutable std::mutex mMutex;  ///< guards all below
    uint32_t mSource;
    BroadcastTime mReceived;
    int64_t mReceivedAt = 0;       ///< elapsedMilliseconds() at that time
    std::optional<int64_t> mUser;  ///< the time that was set, UTC milliseconds
    int64_t mUserAt = 0;           ///< elapsedMilliseconds() at that time
    int32_t mZone = 0;             ///< seconds, as set
    int32_t mOffset = 0;           ///< seconds, as set
};

}  // namespace television
