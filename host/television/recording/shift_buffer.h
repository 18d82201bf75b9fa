/** The buffer of time shift, as a model of positions: it holds no pictures. */
#pragma once

#include <cstdint>

namespace television {

/**
 * A stretch of the broadcast that grows in real time while it is recorded; once it has the buffer's
 * capacity, its start moves along. Times and positions are milliseconds. State follows from the
 * time that `settle` is given. One thread at a time.
 */
class ShiftBuffer {
  public:
    /** Playback speeds are hundredths of the normal speed, negative ones backwards. */
    static constexpr int32_t kNormal = 100;
    /** The fastest speed in either direction. */
    static constexpr int32_t kFastest = 6400;

    /** What happened between two calls of `settle`. */
    struct Happened {
        bool full = false;   ///< the buffer became full
        bool start = false;  ///< playback reached the start of the buffer
        bool live = false;   ///< playback reached the broadcast
    };

    /** Begins a new recording with an empty buffer, playing the broadcast. */
    void start(int64_t now, int64_t capacity);
    /** Ends the recording; the buffer keeps its contents. */
    void stop() { mRecording = false; }
    /** Forgets everything. */
    void clear() { *this = ShiftBuffer(); }

    /** Brings the state to the time `now`; to be called before any function below.
     * `playBeforeFull`: paused playback goes on at normal speed when the start of the buffer
     * reaches it. */
    Happened settle(int64_t now, bool playBeforeFull);
    void setSpeed(int32_t speed);
    /** Moves playback to a position, or to the end of the buffer when that is earlier. */
    void seek(int64_t position);

    /** Whether there is a buffer, recording or not. */
    bool exists() const { return mExists; }
    bool recording() const { return mRecording; }
    bool full() const { return mFull; }
    int32_t speed() const { return mSpeed; }
    int64_t duration() const { return mHead - mTail; }
    /** Of playback, from the start of the buffer. */
    int64_t position() const { return mPlay / kNormal - mTail; }
    /** The start of the buffer, from where the recording began. */
    int64_t tail() const { return mTail; }

  private:
    bool mExists = false;
    bool mRecording = false;
    bool mLive = true;  ///< plays the broadcast
    bool mFull = false;
    int64_t mCapacity = 0;
    int32_t mSpeed = kNormal;
    int64_t mSettled = 0;  ///< time of the last `settle`
    // From where the recording began:
    int64_t mHead = 0;  ///< end of the buffer
    int64_t mTail = 0;  ///< start of the buffer
    int64_t mPlay = 0;  ///< hundredths of milliseconds, so that slow playback loses nothing
};

}  // namespace television
