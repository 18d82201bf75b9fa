/** The bytes that all recordings together may take. */
#pragma once

#include <algorithm>
#include <atomic>
#include <cstdint>

namespace television {

/** Any thread, without locks. */
class RecordingQuota {
  public:
    /** Bytes; 0: no limit. */
    void setLimit(uint64_t bytes) { mLimit = bytes; }
    uint64_t limit() const { return mLimit; }

    /** Bytes that the existing recordings take. */
    void setUsed(uint64_t bytes) { mUsed = bytes; }
    bool exhausted() const { return mLimit != 0 && mUsed >= mLimit; }

    /** Counts bytes that are about to be written; false, with nothing counted, beyond the limit. */
    bool reserve(uint64_t bytes) {
        const uint64_t limit = mLimit;
        if (mUsed.fetch_add(bytes) + bytes <= limit || limit == 0) return true;
        release(bytes);
        return false;
    }
    /** Bytes that were reserved or used are free again. */
    void release(uint64_t bytes) {
        uint64_t used = mUsed;
        while (!mUsed.compare_exchange_weak(used, used - std::min(used, bytes))) {
        }
    }

  private:
    std::atomic<uint64_t> mLimit{0};
    std::atomic<uint64_t> mUsed{0};
};

}  // namespace television
