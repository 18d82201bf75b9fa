#include "television/recording/time_shift.h"

#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "middleware/result_codes.h"
#include "television/base/log.h"

namespace television {
namespace {

// The names under which the core remembers the settings.
constexpr char kDeviceName[] = "timeshift.device";
constexpr char kSizeName[] = "timeshift.size";
constexpr char kAutoRecordName[] = "timeshift.auto_record";
constexpr char kPlayBeforeFullName[] = "timeshift.play_before_full";

constexpr int64_t kMilliseconds = 1000;  ///< in a second
constexpr size_t kLongestDevice = 4096;  ///< bytes of a path

}  // namespace

TimeShift::TimeShift(Core& core)
    : mCore(core),
      mDevice(core.remembered(kDeviceName)),
      mSize(std::strtoll(core.remembered(kSizeName).c_str(), nullptr, 10)),
      mAutoRecord(core.rememberedNumber(kAutoRecordName, 0) != 0),
      mPlayBeforeFull(core.rememberedNumber(kPlayBeforeFullName, 0) != 0) {}

void TimeShift::notify(int32_t code, int64_t value) {
    mCore.notifier.post({television::registration<&a_qortvapi_timeshift_register_callback>(),
                         code,
                         {static_cast<uint32_t>(value), 0, 0, 0}});
}

/** Brings the buffer to the present time and notifies handlers of what has happened. */
void TimeShift::settle() {
    const int32_t speed = mBuffer.speed();
    const auto happened = mBuffer.settle(mCore.clock.elapsedMilliseconds(), mPlayBeforeFull);
    if (happened.full) notify(TIMESHIFT_NFY_DEVICE, TIMESHIFT_DEVICE_FULL);
    if (happened.start) notify(TIMESHIFT_NFY_END_REACHED, 0);
    if (happened.live) notify(TIMESHIFT_NFY_END_REACHED, 1);
    if (mBuffer.speed() != speed) notify(TIMESHIFT_NFY_PLAY_STATUS, mBuffer.speed());
}

bool TimeShift::deviceWorks() const {
    struct stat status = {};
    return !mDevice.empty() && stat(mDevice.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
           access(mDevice.c_str(), W_OK | X_OK) == 0;
}

/** Returns the channel that plays in the main window; 0: none. */
uint32_t TimeShift::channel() const {
    return mCore.read([](const ChannelLists& lists) {
        return lists.listOf(lists.current[0]) == nullptr ? 0 : lists.current[0];
    });
}

int32_t TimeShift::registerDevice(const std::string& path, int64_t size) {
    std::lock_guard<std::mutex> lock(mMutex);
    if (path.empty() || path[0] != '/' || path.size() > kLongestDevice || size < kBytesOfASecond) {
        return TV_INVALID_ARGUMENT;
    }
    settle();
    if (mBuffer.recording()) return TV_BUSY;
    struct stat status = {};
    struct statvfs space = {};
    if (stat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode) ||
        access(path.c_str(), W_OK | X_OK) != 0 || statvfs(path.c_str(), &space) != 0) {
        mError = TIMESHIFT_ERROR_NO_DEVICE;
        LOG_TV_ERROR("no device for time shift: {} is no folder that can be written", path);
        return TV_NOT_FOUND;
    }
    if (uint64_t{space.f_bavail} * space.f_frsize < static_cast<uint64_t>(size)) return TV_FULL;
    mBuffer.clear();
    mDevice = path;
    mSize = size;
    mError = TIMESHIFT_ERROR_NONE;
    mCore.remember(kDeviceName, path);
    mCore.remember(kSizeName, std::to_string(size));
    notify(TIMESHIFT_NFY_DEVICE, TIMESHIFT_DEVICE_READY);
    if (mAutoRecord) begin();
    return TV_OK;
}

/** Starts recording the channel that plays. */
int32_t TimeShift::begin() {
    mChannel = channel();
    if (!deviceWorks() || mSize < kBytesOfASecond) {
        mError = TIMESHIFT_ERROR_NO_DEVICE;
        return TV_FAILED;
    }
    if (mChannel == 0) {
        mError = TIMESHIFT_ERROR_NO_SIGNAL;
        return TV_FAILED;
    }
    mError = TIMESHIFT_ERROR_NONE;
    mUtcStart = mCore.clock.utcMilliseconds();
    mBuffer.start(mCore.clock.elapsedMilliseconds(), mSize / kBytesOfASecond * kMilliseconds);
    notify(TIMESHIFT_NFY_RECORD_STATUS, TIMESHIFT_RECORD_STARTED);
    return TV_OK;
}

/** Ends the recording; `error` is TIMESHIFT_ERROR_…. */
void TimeShift::end(bool keepBuffer, int32_t error) {
    const bool recorded = mBuffer.recording();
    const int32_t speed = mBuffer.speed();
    mBuffer.stop();
    if (!keepBuffer) mBuffer.clear();
    mError = error;
    if (recorded) notify(TIMESHIFT_NFY_RECORD_STATUS, TIMESHIFT_RECORD_STOPPED);
    if (mBuffer.speed() != speed) notify(TIMESHIFT_NFY_PLAY_STATUS, mBuffer.speed());
}

int32_t TimeShift::start() {
    std::lock_guard<std::mutex> lock(mMutex);
    settle();
    return mBuffer.recording() ? int32_t{TV_BUSY} : begin();
}

int32_t TimeShift::stop(uint32_t flag) {
    if (flag > TIMESHIFT_STOP_CHANNEL_CHANGE) return TV_INVALID_ARGUMENT;
    std::lock_guard<std::mutex> lock(mMutex);
    settle();
    if (!mBuffer.exists()) return TV_BUSY;
    end(flag == TIMESHIFT_STOP_KEEP_BUFFER, TIMESHIFT_ERROR_NONE);
    if (flag == TIMESHIFT_STOP_CHANNEL_CHANGE && mAutoRecord) begin();
    return TV_OK;
}

int32_t TimeShift::pause() {
    std::lock_guard<std::mutex> lock(mMutex);
    settle();
    if (!mBuffer.exists()) {
        if (!mAutoRecord) return TV_BUSY;
        const int32_t result = begin();
        if (result != TV_OK) return result;
    }
    changeSpeed(0);
    return TV_OK;
}

int32_t TimeShift::setSpeed(int32_t speed) {
    if (speed < -ShiftBuffer::kFastest || speed > ShiftBuffer::kFastest) return TV_INVALID_ARGUMENT;
    std::lock_guard<std::mutex> lock(mMutex);
    settle();
    if (!mBuffer.exists()) return TV_BUSY;
    changeSpeed(speed);
    return TV_OK;
}

void TimeShift::changeSpeed(int32_t speed) {
    const int32_t before = mBuffer.speed();
    mBuffer.setSpeed(speed);
    if (mBuffer.speed() != before) notify(TIMESHIFT_NFY_PLAY_STATUS, mBuffer.speed());
    // At the end of the buffer, playback cannot be faster than the broadcast.
    if (mBuffer.speed() != speed) notify(TIMESHIFT_NFY_END_REACHED, 1);
}

int32_t TimeShift::seek(int32_t seconds) {
    if (seconds < 0) return TV_INVALID_ARGUMENT;
    std::lock_guard<std::mutex> lock(mMutex);
    settle();
    if (!mBuffer.exists()) return TV_BUSY;
    mBuffer.seek(seconds * kMilliseconds);
    return TV_OK;
}

int32_t TimeShift::setAutoRecord(bool on) {
    std::lock_guard<std::mutex> lock(mMutex);
    mAutoRecord = on;
    mCore.rememberNumber(kAutoRecordName, on ? 1 : 0);
    settle();
    if (on && !mBuffer.exists() && deviceWorks()) begin();
    return TV_OK;
}

int32_t TimeShift::setPlayBeforeFull(bool on) {
    std::lock_guard<std::mutex> lock(mMutex);
    settle();
    mPlayBeforeFull = on;
    mCore.rememberNumber(kPlayBeforeFullName, on ? 1 : 0);
    return TV_OK;
}

int32_t TimeShift::registration() const {
    std::lock_guard<std::mutex> lock(mMutex);
    return mDevice.empty() ? 0 : 100;
}

int32_t TimeShift::deviceStatus() {
    std::lock_guard<std::mutex> lock(mMutex);
    settle();
    if (!deviceWorks()) return TIMESHIFT_DEVICE_NONE;
    return mBuffer.full() ? TIMESHIFT_DEVICE_FULL : TIMESHIFT_DEVICE_READY;
}

int32_t TimeShift::error() const {
    std::lock_guard<std::mutex> lock(mMutex);
    return mError;
}

int32_t TimeShift::recordStatus() {
    std::lock_guard<std::mutex> lock(mMutex);
    return mBuffer.recording() ? TIMESHIFT_RECORD_STARTED : TIMESHIFT_RECORD_STOPPED;
}

int64_t TimeShift::duration() {
    std::lock_guard<std::mutex> lock(mMutex);
    settle();
    return mBuffer.duration();
}

int64_t TimeShift::position() {
    std::lock_guard<std::mutex> lock(mMutex);
    settle();
    return mBuffer.position();
}

int64_t TimeShift::utcPosition() {
    std::lock_guard<std::mutex> lock(mMutex);
    settle();
    if (!mBuffer.exists()) return mCore.clock.utcMilliseconds();
    return mUtcStart + mBuffer.tail() + mBuffer.position();
}

int64_t TimeShift::utcStart() {
    std::lock_guard<std::mutex> lock(mMutex);
    settle();
    return mBuffer.exists() ? mUtcStart + mBuffer.tail() : mCore.clock.utcMilliseconds();
}

void TimeShift::check() {
    std::lock_guard<std::mutex> lock(mMutex);
    settle();
    const uint32_t now = channel();
    const bool another = now != mChannel;
    if (mBuffer.recording() && !deviceWorks()) {
        LOG_TV_ERROR("time shift ends: its device {} cannot be written any more", mDevice);
        end(true, TIMESHIFT_ERROR_WRITE);
        notify(TIMESHIFT_NFY_DEVICE, TIMESHIFT_DEVICE_NONE);
    } else if (mBuffer.recording() && now == 0) {
        end(true, TIMESHIFT_ERROR_NO_SIGNAL);
    } else if (mBuffer.recording() && another) {
        end(false, TIMESHIFT_ERROR_NONE);
    }
    mChannel = now;
    if (another && now != 0 && mAutoRecord && !mBuffer.recording() && deviceWorks()) begin();
}

}  // namespace television
