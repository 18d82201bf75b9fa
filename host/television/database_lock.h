/** The lock with which clients hold a list still over several calls. */
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace television {

/**
 * A counter rather than a mutex: the whole service process is one client of the television, its
 * threads lock and unlock in any order, and clients behind it nest their locks. Any thread.
 */
class DatabaseLock {
  public:
    /** Holds the list. Waits while the television itself changes it. Answers TV_OK or TV_FULL. */
    int32_t lock();
    /** Lets go once; TV_BUSY when nobody holds it. */
    int32_t unlock();

    /** The television's own turn: while this lives, `lock()` waits, unless clients held it for too
     * long. */
    class Turn {
      public:
        /** Waits until no client holds the lock, `patience` at most. */
        Turn(DatabaseLock& lock, std::chrono::milliseconds patience);
        ~Turn();
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;
        /** Whether clients let go in time. */
        bool inTime() const { return mInTime; }

      private:
        DatabaseLock& mLock;
        bool mInTime;
    };

  private:
    std::mutex mMutex;
    std::condition_variable mChanged;
    uint32_t mCount = 0;
    bool mTelevision = false;  ///< the television has its turn
};

}  // namespace television
