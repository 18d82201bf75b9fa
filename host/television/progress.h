/** A pretended transfer: progress in steps on the television's thread, until it is done or called
 * off. */
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>

#include "notifier.h"

namespace television {

/**
 * Reports 0, 10, … 100 per cent, one for each `step` of time, through `report(percent)` on the
 * notifier's thread. One at a time; starting or stopping ends the one before, after which it
 * reports nothing more but for a step that is being reported. Any thread; `report` is called
 * without locks.
 */
class Progress : public std::enable_shared_from_this<Progress> {
  public:
    static constexpr std::chrono::milliseconds kStep{50};

    using Report = std::function<void(int32_t percent)>;

    /** `notifier` must outlive this. `what`: the registration that the progress is about. */
    Progress(Notifier& notifier, RegistrationKey what)
        : mNotifier(notifier), mTo{what.slot, kSteps} {}

    void start(Report report, std::chrono::milliseconds step = kStep);
    void stop();

  private:
    /** The number that keeps the steps apart from the registration's own events. */
    static constexpr uint32_t kSteps = UINT32_MAX;

    void advance(uint32_t run, int32_t percent, const Report& report,
                 std::chrono::milliseconds step);
    bool isRun(uint32_t run);

    Notifier& mNotifier;
    const RegistrationKey mTo;
    std::mutex mMutex;
    uint32_t mRun = 0;  ///< counts starts and stops; guarded by mMutex
};

}  // namespace television
