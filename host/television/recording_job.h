/** One recording in the making: copies a service out of the file of its multiplex, at its pace. */
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

#include "recording_library.h"
#include "service_filter.h"

namespace television {

/** What is recorded. */
struct RecordingTask {
    std::string stream;  ///< path of the file of the multiplex
    uint16_t transportStreamId = 0;
    uint16_t program = 0;
    ServiceFilter::Describe describe;  ///< called on the job's thread
    double speed = 1;                  ///< times real time; 0: without waiting
};

/** How a recording ended. */
struct RecordingOutcome {
    int32_t stopReason = RECORD_STOP_UNKNOWN;
    int32_t error = RECORD_ERROR_NONE;
};

/**
 * The file is played over and over, opened anew each time, at the bit rate that its program clock
 * tells (kUsualBitRate where it tells none). A file that is gone, or has nothing of the service, is
 * no signal. The thread runs from `start` to the end; any thread may ask and stop.
 */
class RecordingJob {
  public:
    /** `ended` is called on the job's thread when the recording is complete, with no lock held. It
     * must not destroy the job. */
    RecordingJob(RecordingTask task, std::shared_ptr<RecordingFile> file,
                 std::function<void(const RecordingOutcome&)> ended);
    /** Stops it (RECORD_STOP_CLOSED), and waits. */
    ~RecordingJob();
    RecordingJob(const RecordingJob&) = delete;
    RecordingJob& operator=(const RecordingJob&) = delete;

    void start();
    /** Asks it to end; the first reason counts. */
    void stop(int32_t reason);
    /** Waits until it has ended. Not from `ended`. */
    void wait();

    /** It ends by itself when it is so long; 0: never. */
    void setLimit(uint32_t seconds) { mLimit = seconds; }
    /** How much of the service is recorded, seconds. */
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
    std::atomic<uint32_t> mLimit{0};
    std::atomic<uint64_t> mMilliseconds{0};
    std::vector<uint8_t> mOut;  ///< not yet written
    double mSeconds = 0;        ///< of the stream so far; the job's thread only
    double mFlushed = 0;        ///< where it was when `mOut` was written last
    std::chrono::steady_clock::time_point mBegin;
    std::mutex mMutex;
    std::condition_variable mChanged;
    int32_t mStop = RECORD_STOP_UNKNOWN;  // guarded by mMutex, as the next; unknown: goes on
    bool mDone = false;
    std::thread mThread;
};

}  // namespace television
