/** The settings of the clock: its time source, time zone and offset, and the time a user set. */
#pragma once

#include <cstdint>

namespace television {

class Clock;
class Core;

/**
 * Sets the clock and remembers the settings over restarts. The setters return TV_OK,
 * TV_INVALID_ARGUMENT for a value out of range, and TV_BUSY while the time source determines the
 * value. Any thread; not within `Core::read` or `Core::change`.
 */
class TimeSettings {
  public:
    /** Gives the clock of `core`, which outlives this, the remembered settings. */
    explicit TimeSettings(Core& core);

    /** Whether setTime may be called now: while the user sets the time. */
    bool timeEditable() const;
    /** Whether setZone and setOffset may be called now: unless the broadcast sets the time. */
    bool offsetEditable() const;

    /** UTC in seconds since 1970. */
    int32_t setTime(int64_t seconds);
    /** Seconds east of UTC; sets the offset as well. */
    int32_t setZone(int64_t seconds);
    /** Seconds east of UTC. */
    int32_t setOffset(int64_t seconds);

  private:
    Core& mCore;
    Clock& mClock;
};

/**
 * Makes the clock follow `source` (TIME_SYNC_SOURCE_…), remembers it and notifies the handlers of
 * the time source. `updateFlag` as for `Core::remember`. Returns TV_OK or TV_INVALID_ARGUMENT.
 */
int32_t setTimeSource(Core& core, int32_t source, int32_t updateFlag);

}  // namespace television
