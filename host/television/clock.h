/** The television's clock: what it follows, and how far local time is ahead. */
#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>

#include "multiplex.h"

namespace television {

/** How far local time is ahead of UTC at some moment. */
struct LocalOffset {
    int32_t seconds = 0;
    bool summer = false;  ///< summer time is in it
};

/**
 * Time of day by one of TIME_SYNC_SOURCE_…: the time that the streams told last, carried on from
 * when it was loaded (the machine's clock where they told none); the machine's clock; or a time
 * that was set. The local offset is that of the streams while they are followed and tell one, else
 * what was set. Any thread; one lock of its own, held for no call out of the class but to the base.
 */
class Clock {
  public:
    /** Milliseconds since 1970-01-01 00:00 UTC. */
    using Base = std::function<int64_t()>;

    /** `base` stands in for the machine's clocks, for tests; empty: those of the machine. Any
     * thread may call it. */
    explicit Clock(Base base = {});

    int64_t utcMilliseconds() const;
    /** Seconds since 1970-01-01 00:00 UTC. */
    int64_t utcSeconds() const;
    /** Milliseconds that never jump and begin anywhere: for what lasts. */
    int64_t elapsedMilliseconds() const;

    /** The source that was set. */
    uint32_t source() const;
    /** The source that tells the time just now: the system's while the broadcast is to be followed
     * and tells nothing. */
    uint32_t sourceInForce() const;
    /** Without a time of its own yet, TIME_SYNC_SOURCE_USER goes on from where the clock stands. */
    void setSource(uint32_t source);

    /** Sets the time that TIME_SYNC_SOURCE_USER follows. */
    void setUserTime(int64_t utcMilliseconds);
    /** By how many milliseconds the time that was set is ahead of the machine's; empty before one
     * was. */
    std::optional<int64_t> userLead() const;
    void setUserLead(int64_t milliseconds);

    /** The offset at a moment (UTC seconds). */
    LocalOffset offsetAt(int64_t utc) const;
    /** UTC seconds of a local time given in the same way; `summer` decides where a change makes the
     * local time happen twice. */
    int64_t utcFromLocal(int64_t local, bool summer) const;
    /** The offset without summer time. */
    int32_t zone() const;
    /** Sets zone and offset: local time without summer time. */
    void setZone(int32_t seconds);
    /** Sets how far local time is ahead; what it is more than the zone is summer time. */
    void setOffset(int32_t seconds);
    int32_t offset() const;  ///< as it was set

    /** The streams' time: taken over, and carried on from now, unless it is the one that was taken
     * over last. */
    void receive(const BroadcastTime& time);
    /** As the streams told it last. */
    BroadcastTime received() const;
    /** What the streams told last, carried on to now; empty when they told no time. */
    std::optional<int64_t> broadcastMilliseconds() const;

  private:
    int64_t wall() const;
    // With the lock held:
    int64_t now() const;
    std::optional<int64_t> broadcastNow() const;
    bool followsOffset() const;

    const Base mBase;
    mutable std::mutex mMutex;  // guards all below
    uint32_t mSource;
    BroadcastTime mReceived;
    int64_t mReceivedAt = 0;  ///< elapsed milliseconds
    std::optional<int64_t> mUser;
    int64_t mUserAt = 0;  ///< elapsed milliseconds
    int32_t mZone = 0;
    int32_t mOffset = 0;
};

}  // namespace television
