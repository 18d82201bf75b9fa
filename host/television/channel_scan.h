/** The channel scan: goes through the folder of streams one multiplex at a time, then changes the
 * lists. */
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <set>
#include <thread>
#include <tuple>

#include "core.h"
#include "stream_folder.h"

namespace television {

/**
 * One scan at a time, on a thread of its own; middleware/scan.h tells what a scan does and what
 * handlers hear of it. Functions that answer a number answer a code of middleware/result_codes.h.
 * Any thread. One lock of its own, which the thread takes while it holds the core's: no function
 * of the core that locks may be called with it held.
 */
class ChannelScan {
  public:
    /** `core`, `folder` and `loading`, which guards the folder, outlive this. `pause`: for each
     * multiplex, what a tuner would need to lock. */
    ChannelScan(Core& core, StreamFolder& folder, std::mutex& loading,
                std::chrono::milliseconds pause);
    ~ChannelScan() { stop(); }
    ChannelScan(const ChannelScan&) = delete;
    ChannelScan& operator=(const ChannelScan&) = delete;

    int32_t start(int32_t medium, int32_t type, bool clear);
    int32_t cancel();
    /** Ends a scan that runs, as if it was cancelled, and waits for that; refuses new ones. */
    void stop();

    enum class Outcome { kNone, kCompleted, kCancelled, kFailed };
    /** Of the scan that runs, or the last one. */
    struct Status {
        bool active = false;
        Outcome last = Outcome::kNone;  ///< of the last scan that ended
        uint8_t medium = BRDCST_MEDIUM_UNKNOWN;
        uint32_t percent = 0;
        uint32_t services = 0;
        uint32_t television = 0;
        uint32_t radio = 0;
        uint32_t multiplexes = 0;  ///< that carry the medium
    };
    Status status() const;

  private:
    enum class Phase { kIdle, kSearching, kChanging };
    using ServiceKey = std::tuple<uint16_t, uint16_t, uint16_t, uint16_t>;

    void run(const MergeScope& scope);
    void search(const MergeScope& scope);
    bool tune();
    void advance(size_t step, size_t steps, const ParsedMultiplex* multiplex,
                 const MergeScope& scope);
    bool beginChange();
    void end(Outcome outcome, int32_t code = 0);
    // With mMutex held:
    void count(const ParsedMultiplex& multiplex);
    void tell(int32_t code, const std::array<uint32_t, 4>& arguments);

    Core& mCore;
    StreamFolder& mFolder;  // guarded by mLoading
    std::mutex& mLoading;
    const std::chrono::milliseconds mPause;

    mutable std::mutex mMutex;  // guards all below
    std::condition_variable mWake;
    Phase mPhase = Phase::kIdle;
    bool mCancel = false;
    bool mStopped = false;
    Status mStatus;
    std::set<ServiceKey> mFound;  ///< list and what broadcasters call a service
    std::thread mThread;
};

}  // namespace television
