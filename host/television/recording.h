/** All of the television that records: disk, recordings, schedules, time shift. */
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "core.h"
#include "recorder.h"
#include "recording_library.h"
#include "schedules.h"
#include "time_shift.h"

namespace television {

/** The parts, each with a lock of its own, and the thread that looks at what is due. Locks are
 * taken in the order time shift or schedules, recorder, library, core; never two of the first. */
class Recording {
  public:
    /** `core` outlives this. `streams`: folder of streams; `folder`: of recordings, empty: none;
     * `speed`: as in RecordingTask. */
    Recording(Core& core, const std::string& streams, const std::string& folder, double speed)
        : library(core, folder, streams),
          recorder(core, library, streams, speed),
          schedules(core, recorder),
          timeShift(core) {}
    ~Recording() { stop(); }
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

    /** Starts the thread, which looks every `tick`. */
    void start(std::chrono::milliseconds tick);
    /** Ends the thread and completes all recordings. */
    void stop();

    RecordingLibrary library;
    Recorder recorder;
    Schedules schedules;
    TimeShift timeShift;

  private:
    std::mutex mMutex;
    std::condition_variable mChanged;
    bool mStop = false;  // guarded by mMutex
    std::thread mThread;
};

}  // namespace television
