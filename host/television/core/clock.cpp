#include "television/core/clock.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "middleware/time.h"
#include "television/base/calendar.h"

namespace television {
namespace {

template <typename Source>
int64_t millisecondsOf() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(Source::now().time_since_epoch())
            .count();
}

/** The broadcast offset of standard time: where a change is announced, the smaller of the two
 * offsets. */
int32_t standardOffset(const BroadcastTime& time) {
    return time.nextChange == 0 ? time.offset : std::min(time.offset, time.nextOffset);
}

}  // namespace

Clock::Clock(Base base) : mBase(std::move(base)), mSource(TIME_SYNC_SOURCE_BROADCAST) {}

int64_t Clock::machineTime() const {
    return mBase ? mBase() : millisecondsOf<std::chrono::system_clock>();
}

int64_t Clock::elapsedMilliseconds() const {
    return mBase ? mBase() : millisecondsOf<std::chrono::steady_clock>();
}

std::optional<int64_t> Clock::broadcastNow() const {
    if (!mReceived.hasTime()) return std::nullopt;
    return mReceived.utc * 1000 + elapsedMilliseconds() - mReceivedAt;
}

int64_t Clock::now() const {
    if (mSource == TIME_SYNC_SOURCE_BROADCAST) return broadcastNow().value_or(machineTime());
    if (mSource == TIME_SYNC_SOURCE_USER && mUser) return *mUser + elapsedMilliseconds() - mUserAt;
    return machineTime();
}

bool Clock::followsOffset() const {
    return mSource == TIME_SYNC_SOURCE_BROADCAST && mReceived.tot;
}

int64_t Clock::utcMilliseconds() const {
    std::lock_guard<std::mutex> lock(mMutex);
    return now();
}

int64_t Clock::utcSeconds() const {
    return floorDivide(utcMilliseconds(), 1000);
}

uint32_t Clock::source() const {
    std::lock_guard<std::mutex> lock(mMutex);
    return mSource;
}

uint32_t Clock::sourceInForce() const {
    std::lock_guard<std::mutex> lock(mMutex);
    const bool silent = mSource == TIME_SYNC_SOURCE_BROADCAST && !mReceived.hasTime();
    return silent ? uint32_t{TIME_SYNC_SOURCE_SYSTEM} : mSource;
}

void Clock::setSource(uint32_t source) {
    std::lock_guard<std::mutex> lock(mMutex);
    if (source == TIME_SYNC_SOURCE_USER && !mUser) {
        mUser = now();
        mUserAt = elapsedMilliseconds();
    }
    mSource = source;
}

void Clock::setUserTime(int64_t utcMilliseconds) {
    std::lock_guard<std::mutex> lock(mMutex);
    mUser = utcMilliseconds;
    mUserAt = elapsedMilliseconds();
}

std::optional<int64_t> Clock::userLead() const {
    std::lock_guard<std::mutex> lock(mMutex);
    if (!mUser) return std::nullopt;
    return *mUser + elapsedMilliseconds() - mUserAt - machineTime();
}

void Clock::setUserLead(int64_t milliseconds) {
    std::lock_guard<std::mutex> lock(mMutex);
    mUser = machineTime() + milliseconds;
    mUserAt = elapsedMilliseconds();
}

LocalOffset Clock::offsetAt(int64_t utc) const {
    std::lock_guard<std::mutex> lock(mMutex);
    if (!followsOffset()) return {mOffset, mOffset > mZone};
    const bool changed = mReceived.nextChange != 0 && utc >= mReceived.nextChange;
    const int32_t offset = changed ? mReceived.nextOffset : mReceived.offset;
    return {offset, offset > standardOffset(mReceived)};
}

int64_t Clock::utcFromLocal(int64_t local, bool summer) const {
    std::lock_guard<std::mutex> lock(mMutex);
    if (!followsOffset()) return local - mOffset;
    const int64_t before = local - mReceived.offset;
    if (mReceived.nextChange == 0) return before;
    const int64_t after = local - mReceived.nextOffset;
    const bool isBefore = before < mReceived.nextChange;
    const bool isAfter = after >= mReceived.nextChange;
    if (isBefore && isAfter) {
        return summer == (mReceived.offset > standardOffset(mReceived)) ? before : after;
    }
    return isBefore ? before : after;
}

int32_t Clock::zone() const {
    std::lock_guard<std::mutex> lock(mMutex);
    return followsOffset() ? standardOffset(mReceived) : mZone;
}

void Clock::setZone(int32_t seconds) {
    std::lock_guard<std::mutex> lock(mMutex);
    mZone = seconds;
    mOffset = seconds;
}

void Clock::setOffset(int32_t seconds) {
    std::lock_guard<std::mutex> lock(mMutex);
    mOffset = seconds;
}

int32_t Clock::offset() const {
    std::lock_guard<std::mutex> lock(mMutex);
    return mOffset;
}

void Clock::receive(const BroadcastTime& time) {
    std::lock_guard<std::mutex> lock(mMutex);
    if (time == mReceived) return;
    mReceived = time;
    mReceivedAt = elapsedMilliseconds();
}

BroadcastTime Clock::received() const {
    std::lock_guard<std::mutex> lock(mMutex);
    return mReceived;
}

std::optional<int64_t> Clock::broadcastMilliseconds() const {
    std::lock_guard<std::mutex> lock(mMutex);
    return broadcastNow();
}

}  // namespace television
