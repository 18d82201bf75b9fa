#include "television/viewing/channel_keys.h"

#include <utility>

#include "middleware/broadcast.h"
#include "middleware/result_codes.h"
#include "television/core/channel_selection.h"

namespace television {

ChannelKeys::ChannelKeys(Core& core, std::chrono::milliseconds digitTime, Select select,
                         std::function<void()> confirm)
    : mCore(core),
      mDigitTime(digitTime),
      mSelect(std::move(select)),
      mConfirm(std::move(confirm)) {}

int32_t ChannelKeys::press(uint32_t key) {
    if (key <= BROADCAST_KEY_9) return pressDigit(key);
    switch (key) {
        case BROADCAST_KEY_OK:
            return pressOk();
        case BROADCAST_KEY_CHANNEL_UP:
        case BROADCAST_KEY_CHANNEL_DOWN:
        case BROADCAST_KEY_LAST_CHANNEL:
            break;
        default:
            return TV_NOT_SUPPORTED;
    }
    {
        std::lock_guard<std::mutex> lock(mMutex);
        takeNumber();
    }
    if (key == BROADCAST_KEY_LAST_CHANNEL) {
        return mSelect([](const ChannelLists& lists) { return lists.previous[0]; });
    }
    const bool up = key == BROADCAST_KEY_CHANNEL_UP;
    return mSelect([up](const ChannelLists& lists) { return neighbour(lists, up); });
}

int32_t ChannelKeys::pressDigit(uint32_t digit) {
    uint32_t number;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        mNumber = mNumber * 10 + digit;
        ++mDigits;
        ++mKeyCount;
        if (mDigits < kMostChannelDigits) {
            const RegistrationKey timeOut{registration<&a_qortvapi_broadcast_key_handler>()};
            mCore.notifier.postLater(
                    mDigitTime, {timeOut, 0, {}, [self = shared_from_this(), keyCount = mKeyCount] {
                                     self->expire(keyCount);
                                 }});
            return TV_OK;
        }
        number = takeNumber();
    }
    return selectNumber(number);
}

int32_t ChannelKeys::pressOk() {
    uint32_t number;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        if (mDigits == 0) {
            number = 0;
        } else {
            number = takeNumber();
            if (number == 0) return TV_NOT_FOUND;
        }
    }
    if (number != 0) return selectNumber(number);
    mConfirm();
    return TV_OK;
}

/** The time for a further digit is over. `keyCount`: the count of key presses when it began. */
void ChannelKeys::expire(uint32_t keyCount) {
    uint32_t number;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        if (keyCount != mKeyCount) return;
        number = takeNumber();
    }
    selectNumber(number);
}

/** Forgets the collected digits and returns the number that they made. With the lock held. */
uint32_t ChannelKeys::takeNumber() {
    ++mKeyCount;
    mDigits = 0;
    return std::exchange(mNumber, 0);
}

int32_t ChannelKeys::selectNumber(uint32_t number) {
    const int32_t result =
            mSelect([number](const ChannelLists& lists) { return channelByNumber(lists, number); });
    if (result == TV_OK) {
        std::lock_guard<std::mutex> lock(mMutex);
        mHandled = true;
    }
    return result;
}

bool ChannelKeys::handled() const {
    std::lock_guard<std::mutex> lock(mMutex);
    return mHandled;
}

void ChannelKeys::resetHandled() {
    std::lock_guard<std::mutex> lock(mMutex);
    mHandled = false;
}

}  // namespace television
