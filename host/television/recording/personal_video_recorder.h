/** The set's personal video recorder (PVR): library of recordings, recorder, schedules and time
 * shift together. */
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "television/core/core.h"
#include "television/recording/recorder.h"
#include "television/recording/recording_library.h"
#include "television/recording/schedules.h"
#include "television/recording/time_shift.h"

namespace television {

/** The four parts, each with a lock of its own, and the thread that checks schedules and time
 * shift. Locks are taken in the order time shift or schedules, recorder, library, core; no thread
 * holds those of time shift and schedules together. */
class PersonalVideoRecorder {
  public:
    /** `core` outlives this. `streams`: folder of streams; `recordings`: folder of recordings,
     * empty: none; `speed`: as in RecordingTask. */
    PersonalVideoRecorder(Core& core, const std::string& streams, const std::string& recordings,
                          double speed)
        : library(core, recordings, streams),
          recorder(core, library, streams, speed),
          schedules(core, recorder),
          timeShift(core) {}
    ~PersonalVideoRecorder() { stop(); }
    PersonalVideoRecorder(const PersonalVideoRecorder&) = delete;
    PersonalVideoRecorder& operator=(const PersonalVideoRecorder&) = delete;

    /** Starts the thread; `tick` is the time between two checks. */
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
