#include "progress.h"

namespace television {

void Progress::start(Report report) {
    uint32_t run;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        run = ++mRun;
    }
    mNotifier.postLater(std::chrono::milliseconds(0),
                        {mTo, 0, {}, [self = shared_from_this(), run, report = std::move(report)] {
                             self->step(run, 0, report);
                         }});
}

void Progress::stop() {
    std::lock_guard<std::mutex> lock(mMutex);
    ++mRun;
}

bool Progress::isRun(uint32_t run) {
    std::lock_guard<std::mutex> lock(mMutex);
    return run == mRun;
}

void Progress::step(uint32_t run, int32_t percent, const Report& report) {
    constexpr int32_t kPercent = 10;
    if (!isRun(run)) return;
    report(percent);
    if (percent == 100) return;
    mNotifier.postLater(kStep, {mTo, 0, {}, [self = shared_from_this(), run, percent, report] {
                                    self->step(run, percent + kPercent, report);
                                }});
}

}  // namespace television
