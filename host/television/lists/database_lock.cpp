#include "television/lists/database_lock.h"

#include "middleware/result_codes.h"

namespace television {

int32_t DatabaseLock::lock() {
    std::unique_lock<std::mutex> guard(mMutex);
    mChanged.wait(guard, [this] { return !mTelevisionsTurn; });
    if (mCount == UINT32_MAX) return TV_FULL;
    ++mCount;
    return TV_OK;
}

int32_t DatabaseLock::unlock() {
    std::lock_guard<std::mutex> guard(mMutex);
    if (mCount == 0) return TV_BUSY;
    if (--mCount == 0) mChanged.notify_all();
    return TV_OK;
}

DatabaseLock::Turn::Turn(DatabaseLock& lock, std::chrono::milliseconds patience) : mLock(lock) {
    std::unique_lock<std::mutex> guard(mLock.mMutex);
    mInTime = mLock.mChanged.wait_for(
            guard, patience, [this] { return mLock.mCount == 0 && !mLock.mTelevisionsTurn; });
    if (mInTime) mLock.mTelevisionsTurn = true;
}

DatabaseLock::Turn::~Turn() {
    if (!mInTime) return;
    std::lock_guard<std::mutex> guard(mLock.mMutex);
    mLock.mTelevisionsTurn = false;
    mLock.mChanged.notify_all();
}

}  // namespace television
