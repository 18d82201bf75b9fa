#include "channel_keys.h"

#include <utility>

#include "channel_selection.h"
#include "middleware/broadcast.h"
#include "middleware/result_codes.h"

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
        ++mRun;
        if (mDigits < kMostChannelDigits) {
            const RegistrationKey timeOut{registration<&a_qortvapi_broadcast_key_handler>()};
            mCore.notifier.postLater(mDigitTime,
                                     {timeOut, 0, {}, [self = shared_from_this(), run = mRun] {
                                          self->expire(run);
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

void ChannelKeys::expire(uint32_t run) {
    uint32_t number;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        if (run != mRun) return;
        number = takeNumber();
    }
    selectNumber(number);
}

/** With the lock held: ends the typing, and answers what was typed. */
uint32_t ChannelKeys::takeNumber() {
    ++mRun;
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
