/** The progress of a simulated transfer, which is reported in steps until it is complete or
 * stopped.
 */
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>

#include "television/core/notifier.h"

namespace television {

/**
 * Reports 0 per cent at once, then 10, 20, … 100, one after each `step` of time, through
 * `report(percent)` on the notifier's thread. One transfer runs at a time: start() and stop() end
 * the one before. A report that is being made at that time may still be running when they return;
 * no other follows. Any thread; `report` is called without locks.
 */
class Progress : public std::enable_shared_from_this<Progress> {
  public:
    static constexpr std::chrono::milliseconds kStep{50};

    using Report = std::function<void(int32_t percent)>;

    /** `notifier` must outlive this. `subject`: the registration whose handlers the progress is
     * about. */
    Progress(Notifier& notifier, RegistrationKey subject)
        : mNotifier(notifier), mKey{subject.slot, kProgressNumber} {}

    /** To be called on an object that a shared pointer owns. */
    void start(Report report, std::chrono::milliseconds step = kStep);
    void stop();

  private:
    /** The number of the key under which the steps wait in the notifier's queue, which keeps them
     * apart from the registration's own notifications. */
    static constexpr uint32_t kProgressNumber = UINT32_MAX;

    void advance(uint32_t run, int32_t percent, const Report& report,
                 std::chrono::milliseconds step);
    bool isCurrent(uint32_t run);

    Notifier& mNotifier;
    const RegistrationKey mKey;
    std::mutex mMutex;
    uint32_t mRun = 0;  ///< number of starts and stops so far; guarded by mMutex
};

}  // namespace television
