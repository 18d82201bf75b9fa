/** Recordings and reminders that are to come. */
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "core.h"
#include "middleware/record.h"
#include "recorder.h"

namespace television {

/**
 * Schedules are remembered over restarts. They start and end by the television's clock, whenever
 * `check` is called. Functions answer a code of middleware/result_codes.h, or the number asked for.
 * Any thread; the lock is held while a recording starts or stops, and taken before the recorder's.
 */
class Schedules {
  public:
    static constexpr size_t kMost = 64;
    /** Longest schedule, seconds. */
    static constexpr uint32_t kLongest = 7 * 86400;

    /** `core` and `recorder` outlive this. */
    Schedules(Core& core, Recorder& recorder);

    int32_t set(const SCHEDULE_RECORD_T& record, int32_t operation);
    int32_t remove(int32_t id);
    /** By the order of ids. */
    int32_t at(int32_t index, SCHEDULE_RECORD_T& record) const;
    /** Those that wait or run. */
    int32_t bookings() const;

    /** Whether two recordings are in each other's way; `other` null: the source and whatever is
     * recorded or scheduled. 1, 0 or a code. */
    int32_t conflicts(const RECORD_SOURCE_T& source, const RECORD_SOURCE_T* other) const;

    /** Starts and ends what is due. */
    void check();

  private:
    struct Entry {
        SCHEDULE_RECORD_T record = {};
        uint32_t handle = 0;  ///< of the recorder while it records; 0: none
    };
    /** A time during which a multiplex is needed. */
    struct Span {
        int64_t begin = 0;
        int64_t end = 0;
        Recorder::Multiplex multiplex;
    };

    int32_t add(SCHEDULE_RECORD_T record);
    int32_t change(SCHEDULE_RECORD_T record);
    std::optional<Span> spanOf(const RECORD_SOURCE_T& source) const;
    // With the lock held:
    void load();
    void save() const;
    bool makeRoom();
    bool begin(Entry& entry, int64_t now);
    void endRecording(Entry& entry);
    void become(Entry& entry, uint8_t state);
    void endOccurrence(Entry& entry, uint8_t state, int64_t now);
    bool checkOne(Entry& entry, int64_t now);

    Core& mCore;
    Recorder& mRecorder;
    mutable std::mutex mMutex;
    std::map<uint32_t, Entry> mEntries;  // guarded by mMutex, as the next
    uint32_t mLast = 0;                  ///< id given last
};

}  // namespace television
