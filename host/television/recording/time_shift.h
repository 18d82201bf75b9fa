/** Time-shifted playback of the main window's channel. Pictures are neither kept nor decoded: only
 * positions are. */
#pragma once

#include <cstdint>
#include <mutex>
#include <string>

#include "middleware/timeshift.h"
#include "television/core/core.h"
#include "television/recording/shift_buffer.h"

namespace television {

/** Records the channel of the main window into a buffer on a device, and plays from it. Handlers
 * are notified of changes. Functions that return int32_t return a code of
 * middleware/result_codes.h, or what their name says. Any thread; the lock is held while the core
 * is read, the device is checked and notifications are queued. */
class TimeShift {
  public:
    /** Bytes of the buffer that a second of the broadcast takes: eight megabits. */
    static constexpr int64_t kBytesOfASecond = 1'000'000;

    /** `core` outlives this. */
    explicit TimeShift(Core& core);

    /** Uses a folder as the device, with a buffer of `size` bytes; remembered over restarts. */
    int32_t registerDevice(const std::string& path, int64_t size);
    int32_t start();
    /** `flag`: TIMESHIFT_STOP_…. */
    int32_t stop(uint32_t flag);
    int32_t play() { return setSpeed(ShiftBuffer::kNormal); }
    int32_t pause();
    /** `seconds` from the start of the buffer. */
    int32_t seek(int32_t seconds);
    /** As ShiftBuffer::setSpeed. */
    int32_t setSpeed(int32_t speed);
    /** Whether every channel is recorded as soon as it plays. */
    int32_t setAutoRecord(bool on);
    /** As ShiftBuffer::settle. */
    int32_t setPlayBeforeFull(bool on);

    int32_t registration() const;  ///< of the device, per cent: 0 or 100
    int32_t deviceStatus();        ///< TIMESHIFT_DEVICE_…
    int32_t error() const;         ///< TIMESHIFT_ERROR_…
    int32_t recordStatus();        ///< TIMESHIFT_RECORD_…
    int64_t duration();            ///< of the buffer, milliseconds
    int64_t position();            ///< of playback from the start of the buffer, milliseconds
    int64_t utcPosition();         ///< of playback, milliseconds since 1970-01-01 00:00 UTC
    int64_t utcStart();            ///< of the buffer, milliseconds since 1970-01-01 00:00 UTC

    /** Ends or restarts the recording when the device has failed or the channel has changed, and
     * notifies handlers of what has happened; to be called regularly. */
    void check();

  private:
    // With the lock held:
    void settle();
    int32_t begin();
    void end(bool keepBuffer, int32_t error);
    bool deviceWorks() const;
    uint32_t channel() const;
    void changeSpeed(int32_t speed);
    void notify(int32_t code, int64_t value);

    Core& mCore;
    mutable std::mutex mMutex;  // guards all below
    ShiftBuffer mBuffer;
    std::string mDevice;  ///< folder; empty: none
    int64_t mSize = 0;    ///< bytes
    int32_t mError = TIMESHIFT_ERROR_NONE;
    bool mAutoRecord = false;
    bool mPlayBeforeFull = false;
    uint32_t mChannel = 0;  ///< channel id at the last check or start; 0: none
    int64_t mUtcStart = 0;  ///< when the recording began, milliseconds since 1970
};

}  // namespace television
