#include "television/core/progress.h"

namespace television {

void Progress::start(Report report, std::chrono::milliseconds step) {
    uint32_t run;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        run = ++mRun;
    }
    mNotifier.postLater(
            std::chrono::milliseconds(0),
            {mKey, 0, {}, [self = shared_from_this(), run, step, report = std::move(report)] {
                 self->advance(run, 0, report, step);
             }});
}

void Progress::stop() {
    std::lock_guard<std::mutex> lock(mMutex);
    ++mRun;
}

bool Progress::isCurrent(uint32_t run) {
    std::lock_guard<std::mutex> lock(mMutex);
    return run == mRun;
}

/** Reports `percent` and lets the next step follow, unless `run` is no longer the current one. */
void Progress::advance(uint32_t run, int32_t percent, const Report& report,
                       std::chrono::milliseconds step) {
    constexpr int32_t kPercentOfStep = 10;
    if (!isCurrent(run)) return;
    report(percent);
    if (percent == 100) return;
    mNotifier.postLater(step,
                        {mKey, 0, {}, [self = shared_from_this(), run, percent, report, step] {
                             self->advance(run, percent + kPercentOfStep, report, step);
                         }});
}

}  // namespace television
