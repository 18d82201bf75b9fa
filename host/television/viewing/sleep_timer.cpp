#include "television/viewing/sleep_timer.h"

#include <algorithm>
#include <iterator>

#include "middleware/result_codes.h"
#include "middleware/time.h"
#include "television/base/log.h"

namespace television {
namespace {

/** The choices of the menu, minutes. */
constexpr int32_t kSteps[] = {0, 10, 20, 30, 60, 90, 120, 180, SLEEP_TIMER_MOST_MINUTES};
/** Handlers are notified when so many seconds remain. */
constexpr uint32_t kWarningSeconds = 60;

}  // namespace

int32_t SleepTimer::set(int32_t minutes) {
    if (minutes < 0 || minutes > SLEEP_TIMER_MOST_MINUTES) return TV_INVALID_ARGUMENT;
    std::lock_guard<std::mutex> lock(mMutex);
    mMinutes = minutes;
    mEnd = mClock.elapsedMilliseconds() + int64_t{minutes} * 60 * 1000;
    mWarned = false;
    notify(SLEEP_TIMER_NFY_SET, static_cast<uint32_t>(minutes) * 60);
    return TV_OK;
}

int32_t SleepTimer::minutes() const {
    std::lock_guard<std::mutex> lock(mMutex);
    return mMinutes;
}

uint32_t SleepTimer::remaining() const {
    std::lock_guard<std::mutex> lock(mMutex);
    return remainingLocked();
}

uint32_t SleepTimer::remainingLocked() const {
    if (mMinutes == 0) return 0;
    const int64_t milliseconds = mEnd - mClock.elapsedMilliseconds();
    return static_cast<uint32_t>(std::max<int64_t>(0, (milliseconds + 999) / 1000));
}

int32_t SleepTimer::step() const {
    const auto minutes = static_cast<int32_t>((remaining() + 59) / 60);
    return *std::lower_bound(std::begin(kSteps), std::prev(std::end(kSteps)), minutes);
}

void SleepTimer::tick() {
    std::lock_guard<std::mutex> lock(mMutex);
    if (mMinutes == 0) return;
    const uint32_t seconds = remainingLocked();
    if (seconds == 0) {
        LOG_TV_INFO("the sleep timer ended: the television stays on");
        mMinutes = 0;
        notify(SLEEP_TIMER_NFY_ENDED, 0);
    } else if (seconds <= kWarningSeconds && !mWarned) {
        mWarned = true;
        notify(SLEEP_TIMER_NFY_MINUTE_LEFT, seconds);
    }
}

void SleepTimer::notify(int32_t code, uint32_t seconds) {
    mNotifier.post({registration<&a_qortvapi_time_register_sleep_timer_callback>(),
                    code,
                    {seconds, 0, 0, 0}});
}

}  // namespace television
