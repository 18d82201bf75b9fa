/** The recordings that applications and schedules make, under their handles. */
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "core.h"
#include "recording_job.h"
#include "recording_library.h"

namespace television {

/**
 * Every recording has a thread of its own. There is one tuner for all: recordings that run at the
 * same time are of the same multiplex. What happens is told to the record handlers. Functions
 * answer a code of middleware/result_codes.h, or the number asked for. Any thread; no lock is held
 * while the disk is worked on but the one that keeps two starts apart.
 */
class Recorder {
  public:
    /** Handles that applications can have at a time, and all can have. */
    static constexpr size_t kMostOfApplications = 4;
    static constexpr size_t kMostHandles = 8;

    /** `core` and `library` outlive this. `streams`: the folder of streams. `speed`: as in
     * RecordingTask. */
    Recorder(Core& core, RecordingLibrary& library, std::string streams, double speed);
    ~Recorder() { stopAll(); }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /** Who opens a handle. */
    enum class Owner { kApplication, kSchedule };
    int32_t open(int32_t source, Owner owner = Owner::kApplication);
    /** Ends its recording (RECORD_STOP_CLOSED) and gives the handle back. */
    int32_t close(uint32_t handle);

    /** These, TV_BUSY while it records. */
    int32_t select(uint32_t handle, uint32_t channelId, uint16_t listId);
    /** A name without folder, with or without `.ts`. */
    int32_t setFileName(uint32_t handle, const std::string& name);
    /** Stands for the title that the guide tells. */
    int32_t setTitle(uint32_t handle, const std::string& title);

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
    int32_t megabytes(uint32_t handle) const;  ///< MiB
    /** The name of its file, or the one that was set. */
    int32_t fileName(uint32_t handle, std::string& name) const;
    /** The handle whose recording runs, of several the one started last. */
    int32_t current() const;

    /** A multiplex: list and record id. */
    using Multiplex = std::pair<uint16_t, uint16_t>;
    /** The multiplex that is being recorded. */
    std::optional<Multiplex> tuned() const;
    /** The multiplex of a channel. */
    std::optional<Multiplex> multiplexOf(uint32_t channelId) const;

  private:
    struct Handle {
        int32_t source = 0;
        Owner owner = Owner::kApplication;
        uint32_t channelId = 0;  ///< 0: the window's
        std::string fileName;    ///< as it was set
        std::string title;
        int32_t mode = RECORD_MODE_NORMAL;
        uint32_t limit = 0;  ///< seconds
        int32_t status = RECORD_STATUS_IDLE;
        int32_t error = RECORD_ERROR_NONE;
        bool renamed = false;  ///< the name was set after the last start
        bool starting = false;
        bool closing = false;
        uint64_t order = 0;  ///< counts starts
        Multiplex multiplex;
        std::shared_ptr<RecordingJob> job;  ///< of the last recording
    };
    struct Source;

    template <typename Read>
    int32_t look(uint32_t handle, Read read) const;
    template <typename Apply>
    int32_t prepare(uint32_t handle, Apply apply);
    int32_t findSource(const Handle& handle, Source& source) const;
    std::shared_ptr<RecordingJob> makeJob(uint32_t handle, const Handle& settings,
                                          const Source& source, int32_t& error);
    ServiceFilter::Describe describer(const Source& source) const;
    void ended(uint32_t handle, const RecordingOutcome& outcome);
    void tell(int32_t code, uint32_t handle, uint32_t value);

    Core& mCore;
    RecordingLibrary& mLibrary;
    const std::string mStreams;
    const double mSpeed;
    std::mutex mStarting;  ///< held while a recording starts; taken before mMutex
    mutable std::mutex mMutex;
    std::map<uint32_t, Handle> mHandles;  // guarded by mMutex, as the next
    uint32_t mLast = 0;                   ///< handle given last
    uint64_t mStarts = 0;                 // guarded by mStarting
};

}  // namespace television
