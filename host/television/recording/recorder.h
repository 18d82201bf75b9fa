/** The recorder: makes recordings for applications and schedules, each under a handle. */
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "television/core/core.h"
#include "television/recording/recording_job.h"
#include "television/recording/recording_library.h"
#include "television/recording/recording_source.h"

namespace television {

/**
 * Every recording runs on a thread of its own. They share one tuner: recordings that run at the
 * same time are of the same multiplex. The record handlers are notified of starts, ends and
 * failures. Functions that return int32_t return a code of middleware/result_codes.h, or the number
 * asked for.
 *
 * Any thread. One lock is held from the beginning of a start to its end, so that two starts do not
 * overlap; the other one is never held while the disk is accessed or a recording's thread is waited
 * for.
 */
class Recorder {
  public:
    /** Handles that applications can have open at a time. */
    static constexpr size_t kMostOfApplications = 4;
    /** Handles that can be open at a time, those of schedules included. */
    static constexpr size_t kMostHandles = 8;

    /** `core` and `library` outlive this. `streams`: the folder of streams. `speed`: as in
     * RecordingTask. */
    Recorder(Core& core, RecordingLibrary& library, std::string streams, double speed);
    ~Recorder() { stopAll(); }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /** Who opens a handle. */
    enum class Owner { kApplication, kSchedule };
    /** `source`: RECORD_SOURCE_…, the window whose channel is recorded when none is selected.
     * Returns the handle. */
    int32_t open(int32_t source, Owner owner = Owner::kApplication);
    /** Ends its recording (RECORD_STOP_CLOSED) and frees the handle. */
    int32_t close(uint32_t handle);

    // The next three return TV_BUSY while the handle records.

    /** `listId`: of the list that has the channel; 0: any. */
    int32_t select(uint32_t handle, uint32_t channelId, uint16_t listId);
    /** `name`: without folder, with or without `.ts`. */
    int32_t setFileName(uint32_t handle, const std::string& name);
    /** Sets the title of the programme, in place of the guide's. */
    int32_t setTitle(uint32_t handle, const std::string& title);

    /** `mode`: RECORD_MODE_…; `value`: of the limited mode, seconds. */
    int32_t setMode(uint32_t handle, int32_t mode, int32_t value);
    int32_t start(uint32_t handle);
    /** Returns when the recording is complete. */
    int32_t stop(uint32_t handle, int32_t reason = RECORD_STOP_USER);
    /** Ends all recordings (RECORD_STOP_CLOSED), and waits. */
    void stopAll();

    int32_t mode(uint32_t handle) const;
    int32_t status(uint32_t handle) const;
    int32_t error(uint32_t handle) const;
    int32_t source(uint32_t handle) const;
    int32_t position(uint32_t handle) const;   ///< seconds
    int32_t megabytes(uint32_t handle) const;  ///< size of the file, MiB
    /** The name of the file of the last recording, or the one that was set after it. */
    int32_t fileName(uint32_t handle, std::string& name) const;
    /** The handle that records, of several the one started last. */
    int32_t currentHandle() const;

    /** A multiplex: ids of its list and record. */
    using Multiplex = std::pair<uint16_t, uint16_t>;
    /** The multiplex that is being recorded; empty when none is. */
    std::optional<Multiplex> recordedMultiplex() const;
    /** The multiplex of a channel; empty when there is no such channel. */
    std::optional<Multiplex> multiplexOf(uint32_t channelId) const;

  private:
    struct Handle {
        int32_t source = 0;  ///< RECORD_SOURCE_…
        Owner owner = Owner::kApplication;
        uint32_t channelId = 0;  ///< 0: that of the window
        std::string fileName;    ///< as it was set; empty: none was
        std::string title;       ///< as it was set; empty: none was
        int32_t mode = RECORD_MODE_NORMAL;
        uint32_t limit = 0;  ///< seconds; 0: none
        int32_t status = RECORD_STATUS_IDLE;
        int32_t error = RECORD_ERROR_NONE;
        bool renamed = false;               ///< the name was set after the last start
        bool starting = false;              ///< `start` is at work on it
        bool closing = false;               ///< `close` is at work on it
        uint64_t order = 0;                 ///< mStarts at its last start
        Multiplex multiplex;                ///< of the last recording
        std::shared_ptr<RecordingJob> job;  ///< the last recording; null before the first
    };

    template <typename Read>
    int32_t withHandle(uint32_t handle, Read read) const;
    template <typename Apply>
    int32_t configure(uint32_t handle, Apply apply);
    int32_t beginStart(uint32_t handle, Handle& settings);
    std::shared_ptr<RecordingJob> makeJob(uint32_t handle, const Handle& settings,
                                          const RecordingSource& source, int32_t& error);
    void ended(uint32_t handle, const RecordingOutcome& outcome);
    void notify(int32_t code, uint32_t handle, uint32_t value);

    Core& mCore;
    RecordingLibrary& mLibrary;
    const std::string mStreams;
    const double mSpeed;
    std::mutex mStarting;  ///< held while a recording starts; taken before mMutex
    mutable std::mutex mMutex;
    std::map<uint32_t, Handle> mHandles;  // guarded by mMutex, as the next
    uint32_t mLast = 0;                   ///< handle given last
    uint64_t mStarts = 0;                 ///< recordings started; guarded by mStarting
};

}  // namespace television
