#include "progress.h"

namespace television {

void Progress::start(Report report, std::chrono::milliseconds step) {
    uint32_t run;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        run = ++mRun;
    }
    mNotifier.postLater(
            std::chrono::milliseconds(0),
            {mTo, 0, {}, [self = shared_from_this(), run, step, report = std::move(report)] {
                 self->advance(run, 0, report, step);
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

void Progress::advance(uint32_t run, int32_t percent, const Report& report,
                       std::chrono::milliseconds step) {
    constexpr int32_t kPercent = 10;
    if (!isRun(run)) return;
    report(percent);
    if (percent == 100) return;
    mNotifier.postLater(step, {mTo, 0, {}, [self = shared_from_this(), run, percent, report, step] {
                                   self->advance(run, percent + kPercent, report, step);
                               }});
}

}  // namespace television
