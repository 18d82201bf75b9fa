/** The lock with which clients keep a list unchanged over several calls. */
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace television {

/**
 * A counter rather than a mutex: the whole service process is one client of the television, its
 * threads lock and unlock in any order, and the applications behind it nest their locks. Any
 * thread.
 */
class DatabaseLock {
  public:
    /** Locks once more. Waits while the television has its turn. Returns TV_OK, or TV_FULL when the
     * count is at its end. */
    int32_t lock();
    /** Unlocks once. Returns TV_OK, or TV_BUSY when nobody has locked. */
    int32_t unlock();

    /** The television's own turn to change the list: `lock()` waits while this lives, unless
     * clients did not unlock in time. */
    class Turn {
      public:
        /** Waits until no client holds the lock, for `patience` at most. `lock` must outlive this.
         */
        Turn(DatabaseLock& lock, std::chrono::milliseconds patience);
        ~Turn();
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;
        /** Whether the clients unlocked in time; else this keeps nobody out. */
        bool inTime() const { return mInTime; }

      private:
        DatabaseLock& mLock;
        bool mInTime;
    };

  private:
    std::mutex mMutex;
    std::condition_variable mChanged;
    uint32_t mCount = 0;            ///< locks of clients; guarded by mMutex
    bool mTelevisionsTurn = false;  ///< guarded by mMutex
};

}  // namespace television
