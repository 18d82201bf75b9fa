/** One recording while it is made: copies a service out of the file of its multiplex, at the speed
 * of the broadcast. */
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "television/recording/recording_library.h"
#include "television/recording/service_filter.h"

namespace television {

/** What is recorded, and how. */
struct RecordingTask {
    std::string stream;  ///< path of the file of the multiplex
    uint16_t transportStreamId = 0;
    uint16_t program = 0;              ///< program number: the service id
    ServiceFilter::Describe describe;  ///< called on the job's thread
    double speed = 1;                  ///< a multiple of real time; 0: as fast as possible
};

/** How a recording ended. */
struct RecordingOutcome {
    int32_t stopReason = RECORD_STOP_UNKNOWN;  ///< RECORD_STOP_…
    int32_t error = RECORD_ERROR_NONE;         ///< RECORD_ERROR_…
};

/**
 * Plays the file over and over, opening it anew each time, at the bit rate that its PCRs give
 * (kUsualBitRate when they give none). A file that is gone, or has nothing of the service, counts
 * as no signal. The job's own thread runs from `start` to the end of the recording; all other
 * functions may be called on any thread.
 */
class RecordingJob {
  public:
    /** `ended` is called on the job's thread when the recording is complete, without locks. It must
     * neither wait for the job nor destroy it. */
    RecordingJob(RecordingTask task, std::shared_ptr<RecordingFile> file,
                 std::function<void(const RecordingOutcome&)> ended);
    /** Stops it (RECORD_STOP_CLOSED), and waits. */
    ~RecordingJob();
    RecordingJob(const RecordingJob&) = delete;
    RecordingJob& operator=(const RecordingJob&) = delete;

    void start();
    /** Makes the recording end, without waiting; the first reason (RECORD_STOP_…) counts. */
    void stop(int32_t reason);
    /** Waits until the recording has ended. */
    void wait();

    /** The recording ends by itself when it is so long; 0: never. */
    void setLimit(uint32_t seconds) { mLimit = seconds; }
    /** Length of what is recorded so far, seconds. */
    uint32_t position() const { return static_cast<uint32_t>(mMilliseconds / 1000); }
    const RecordingFile& file() const { return *mFile; }

  private:
    class Input;

    void run();
    RecordingOutcome record();
    std::optional<RecordingOutcome> pass(ServiceFilter& filter, Input& input, uint64_t bitRate);
    std::optional<RecordingOutcome> advance(uint64_t bits, uint64_t bitRate);
    int flush();

    const RecordingTask mTask;
    const std::shared_ptr<RecordingFile> mFile;
    const std::function<void(const RecordingOutcome&)> mEnded;
    std::atomic<uint32_t> mLimit{0};         ///< seconds; 0: none
    std::atomic<uint64_t> mMilliseconds{0};  ///< length of what is recorded so far
    // Used by the job's thread only:
    std::vector<uint8_t> mOut;  ///< not yet written
    double mSeconds = 0;        ///< length of the stream played so far
    double mFlushed = 0;        ///< `mSeconds` when `mOut` was written last
    std::chrono::steady_clock::time_point mBegin;

    std::mutex mMutex;
    std::condition_variable mChanged;
    int32_t mStop = RECORD_STOP_UNKNOWN;  // guarded by mMutex, as the next; unknown: not stopped
    bool mDone = false;
    std::thread mThread;
};

}  // namespace television
