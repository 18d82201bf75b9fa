/** Time-shifted playback of the main window's channel, as a model of positions: pictures are
 * neither kept nor decoded. */
#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

#include "core.h"
#include "middleware/timeshift.h"

namespace television {

/**
 * What the buffer holds: a stretch of the broadcast that grows in real time, and moves on when the
 * buffer is full. Positions are milliseconds; they follow from the time at which one looks.
 */
class ShiftBuffer {
  public:
    /** Fastest playback either way, hundredths of normal speed. */
    static constexpr int32_t kFastest = 6400;
    static constexpr int32_t kNormal = 100;

    /** What happened since the last look. */
    struct Happened {
        bool full = false;   ///< the buffer got full
        bool start = false;  ///< playback came to its start
        bool live = false;   ///< playback came to the broadcast
    };

    /** Begins to record: empty, playing what is broadcast. */
    void start(int64_t now, int64_t capacity);
    /** Records no more; what it holds stays. */
    void stop() { mRecording = false; }
    /** Forgets everything. */
    void clear() { *this = ShiftBuffer(); }

    /** Brings the position to `now`. To be called before anything below. */
    Happened settle(int64_t now, bool playBeforeFull);
    void setSpeed(int32_t speed);
    /** From the start of what it holds; bounded by it. */
    void seek(int64_t position);

    bool exists() const { return mExists; }
    bool recording() const { return mRecording; }
    bool full() const { return mFull; }
    int32_t speed() const { return mSpeed; }
    int64_t duration() const { return mHead - mTail; }
    /** From the start of what it holds. */
    int64_t position() const { return mPlay / kNormal - mTail; }
    /** The start of what it holds, from where the recording began. */
    int64_t tail() const { return mTail; }

  private:
    bool mExists = false;
    bool mRecording = false;
    bool mLive = true;  ///< plays what is broadcast
    bool mFull = false;
    int64_t mCapacity = 0;
    int32_t mSpeed = kNormal;
    int64_t mLooked = 0;  ///< time of the last look
    // From where the recording began:
    int64_t mHead = 0;  ///< end of what it holds
    int64_t mTail = 0;  ///< start of what it holds
    int64_t mPlay = 0;  ///< hundredths of milliseconds, so that slow playback loses nothing
};

/** The module's calls. Codes of middleware/result_codes.h. Any thread; its lock is held while the
 * core is asked. */
class TimeShift {
  public:
    /** Bytes that a second takes, as the buffer's size counts them: eight megabits. */
    static constexpr int64_t kBytesOfASecond = 1'000'000;

    /** `core` outlives this. */
    explicit TimeShift(Core& core);

    int32_t registerDevice(const std::string& path, int64_t size);
    int32_t start();
    int32_t stop(uint32_t flag);
    int32_t play() { return setSpeed(ShiftBuffer::kNormal); }
    int32_t pause();
    int32_t seek(int32_t seconds);
    int32_t setSpeed(int32_t speed);
    int32_t setAutoRecord(bool on);
    int32_t setPlayBeforeFull(bool on);

    int32_t registration() const;  ///< per cent
    int32_t deviceStatus();
    int32_t error() const;
    int32_t recordStatus();
    int64_t duration();
    int64_t position();
    int64_t utcPosition();  ///< milliseconds since 1970-01-01 00:00 UTC
    int64_t utcStart();     ///< the same of the buffer's start

    /** Looks at the device and the channel, and tells what has happened. */
    void check();

  private:
    // With the lock held:
    void settle();
    int32_t begin();
    void end(bool keepBuffer, int32_t error);
    bool deviceWorks() const;
    uint32_t channel() const;
    void changeSpeed(int32_t speed);
    void tell(int32_t code, int64_t value);

    Core& mCore;
    mutable std::mutex mMutex;  // guards all below
    ShiftBuffer mBuffer;
    std::string mDevice;  ///< folder; empty: none
    int64_t mSize = 0;    ///< bytes
    int32_t mError = TIMESHIFT_ERROR_NONE;
    bool mAutoRecord = false;
    bool mPlayBeforeFull = false;
    uint32_t mChannel = 0;  ///< that is recorded, or was looked at last
    int64_t mUtcStart = 0;  ///< when the recording began, milliseconds
};

}  // namespace television
