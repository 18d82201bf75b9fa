#include "television/recording/personal_video_recorder.h"

namespace television {

void PersonalVideoRecorder::start(std::chrono::milliseconds tick) {
    mThread = std::thread([this, tick] {
        std::unique_lock<std::mutex> lock(mMutex);
        while (!mStop) {
            lock.unlock();
            schedules.check();
            timeShift.check();
            lock.lock();
            mChanged.wait_for(lock, tick, [this] { return mStop; });
        }
    });
}

void PersonalVideoRecorder::stop() {
    {
        std::lock_guard<std::mutex> lock(mMutex);
        mStop = true;
        mChanged.notify_all();
    }
    if (mThread.joinable()) mThread.join();
    recorder.stopAll();
}

}  // namespace television
