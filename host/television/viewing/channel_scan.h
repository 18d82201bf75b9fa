/** The channel scan: reads the folder of streams one multiplex at a time, then changes the channel
 * lists. */
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <set>
#include <thread>
#include <tuple>

#include "television/core/core.h"
#include "television/stream/stream_folder.h"

namespace television {

/**
 * One scan at a time, on a thread of its own. middleware/scan.h describes what a scan does and
 * which notifications it sends. Functions that return int32_t return a code of
 * middleware/result_codes.h.
 *
 * Any thread. The scan's thread takes the lock of this class while it holds the core's, so no
 * function of the core that locks may be called with it held.
 */
class ChannelScan {
  public:
    /** All references outlive this. `loading` guards `folder`. `pause`: the time at each multiplex
     * that a tuner would need to lock. */
    ChannelScan(Core& core, StreamFolder& folder, std::mutex& loading,
                std::chrono::milliseconds pause);
    ~ChannelScan() { stop(); }
    ChannelScan(const ChannelScan&) = delete;
    ChannelScan& operator=(const ChannelScan&) = delete;

    /** `medium`: BRDCST_MEDIUM_…, unknown for all of them; `type`: SCAN_TYPE_…; `clear`: a full
     * scan forgets what applications have edited. */
    int32_t start(int32_t medium, int32_t type, bool clear);
    /** Returns at once; the scan's thread ends the scan. TV_BUSY once it changes the lists. */
    int32_t cancel();
    /** Cancels a scan that runs, waits for its end, and refuses new ones from then on. */
    void stop();

    enum class Outcome { kNone, kCompleted, kCancelled, kFailed };
    /** The scan that runs, or the last one. */
    struct Status {
        bool active = false;
        Outcome last = Outcome::kNone;  ///< how the last scan that ended did so
        uint8_t medium = BRDCST_MEDIUM_UNKNOWN;
        uint32_t percent = 0;
        uint32_t services = 0;  ///< of any type
        uint32_t television = 0;
        uint32_t radio = 0;
        uint32_t multiplexes = 0;  ///< of the medium
    };
    Status status() const;

  private:
    enum class Phase {
        kIdle,
        kSearching,  ///< reads multiplexes; can be cancelled
        kChanging,   ///< changes the channel lists
    };
    /** List id, original network id, transport stream id, service id. */
    using ServiceKey = std::tuple<uint16_t, uint16_t, uint16_t, uint16_t>;

    void run(const MergeScope& scope);
    void search(const MergeScope& scope);
    bool waitForLock();
    void reportProgress(size_t step, size_t steps, const ParsedMultiplex* multiplex,
                        const MergeScope& scope);
    bool beginChange();
    void end(Outcome outcome, int32_t code = 0);
    // With mMutex held:
    void count(const ParsedMultiplex& multiplex);
    void notify(int32_t code, const std::array<uint32_t, 4>& arguments);

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
    std::set<ServiceKey> mFound;  ///< services counted so far: one may be in several multiplexes
    std::thread mThread;
};

}  // namespace television
