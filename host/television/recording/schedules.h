/** Schedules: recordings and reminders at set times. */
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "middleware/record.h"
#include "television/core/core.h"
#include "television/recording/recorder.h"

namespace television {

/**
 * Schedules are remembered over restarts. `check` starts and ends them by the television's clock.
 * Handlers are notified when a schedule changes its state. Functions return a code of
 * middleware/result_codes.h, or the number asked for. Any thread; the lock is held while a
 * recording starts or stops, and is taken before the recorder's.
 */
class Schedules {
  public:
    /** Schedules that are kept. */
    static constexpr size_t kMost = 64;

    /** `core` and `recorder` outlive this. */
    Schedules(Core& core, Recorder& recorder);

    /** Adds a schedule or changes the one with the record's id. `operation`: SCHEDULE_ADD or
     * SCHEDULE_CHANGE. */
    int32_t set(const SCHEDULE_RECORD_T& record, int32_t operation);
    /** Deletes a schedule and ends its recording. */
    int32_t remove(int32_t id);
    /** The schedule at an index, in the order of ids. */
    int32_t at(int32_t index, SCHEDULE_RECORD_T& record) const;
    /** How many schedules wait or run. */
    int32_t bookings() const;

    /** Returns 1 when two recordings cannot both be made, because they need different multiplexes
     * at the same time, else 0. `other` null: all schedules and what is being recorded. */
    int32_t conflicts(const RECORD_SOURCE_T& source, const RECORD_SOURCE_T* other) const;

    /** Starts and ends what is due; to be called regularly. */
    void check();

  private:
    struct Entry {
        SCHEDULE_RECORD_T record = {};
        uint32_t handle = 0;  ///< of the recorder, while the schedule records; 0: none
    };
    /** A time during which a multiplex is needed, seconds since 1970. */
    struct Span {
        int64_t begin = 0;
        int64_t end = 0;  ///< exclusive
        Recorder::Multiplex multiplex;
    };

    int32_t add(SCHEDULE_RECORD_T record);
    int32_t change(SCHEDULE_RECORD_T record);
    std::optional<Span> spanOf(const RECORD_SOURCE_T& source) const;
    static Span occurrenceAt(const SCHEDULE_RECORD_T& record, const Recorder::Multiplex& multiplex,
                             int64_t time);
    // With the lock held:
    void load();
    void save() const;
    bool makeRoom();
    bool startRecording(Entry& entry, int64_t now);
    void endRecording(Entry& entry);
    void setState(Entry& entry, uint8_t state);
    void endOccurrence(Entry& entry, uint8_t state, int64_t now);
    bool checkOne(Entry& entry, int64_t now);

    Core& mCore;
    Recorder& mRecorder;
    mutable std::mutex mMutex;
    std::map<uint32_t, Entry> mEntries;  // guarded by mMutex, as the next
    uint32_t mLast = 0;                  ///< id given last
};

}  // namespace television
