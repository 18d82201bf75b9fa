#include "television/recording/shift_buffer.h"

#include <algorithm>

namespace television {

void ShiftBuffer::start(int64_t now, int64_t capacity) {
    clear();
    mExists = true;
    mRecording = true;
    mCapacity = capacity;
    mSettled = now;
}

ShiftBuffer::Happened ShiftBuffer::settle(int64_t now, bool playBeforeFull) {
    Happened happened;
    const int64_t passed = std::max<int64_t>(now - mSettled, 0);
    mSettled = std::max(now, mSettled);
    if (!mExists) return happened;
    if (mRecording) mHead += passed;
    mTail = std::max(mTail, mHead - mCapacity);
    happened.full = !mFull && mTail > 0;
    mFull = mTail > 0;
    if (mLive) {
        mPlay = mHead * kNormal;
        return happened;
    }
    mPlay += passed * mSpeed;
    if (mPlay < mTail * kNormal) {
        // Backwards playback reached the start before `now` and has played forward since then.
        const bool backwards = mSpeed < 0 && !mFull;
        const int64_t rest = backwards ? (mPlay - mTail * kNormal) / mSpeed : 0;
        mPlay = (mTail + rest) * kNormal;
        happened.start = mSpeed != 0;
        if (mSpeed != 0 || playBeforeFull) mSpeed = kNormal;
    }
    // Playback at normal speed cannot catch up with the end while the recording goes on.
    if (mPlay >= mHead * kNormal && (mSpeed > kNormal || (mSpeed > 0 && !mRecording))) {
        mPlay = mHead * kNormal;
        mSpeed = kNormal;
        mLive = true;
        happened.live = true;
    }
    return happened;
}

void ShiftBuffer::setSpeed(int32_t speed) {
    mSpeed = speed;
    if (speed < kNormal) mLive = false;
    if (mLive) mSpeed = kNormal;
}

void ShiftBuffer::seek(int64_t position) {
    mPlay = std::min(mTail + position, mHead) * kNormal;
    mLive = mPlay == mHead * kNormal && mSpeed >= kNormal;
}

}  // namespace television
