/** The keys of the remote control that select channels of the main window. */
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>

#include "television/core/core.h"

namespace television {

/** Digits of the longest channel number. */
constexpr uint32_t kMostChannelDigits = 5;

/**
 * Digits are collected into a channel number. The channel is selected when no further digit comes
 * for a time, when OK is pressed, or when the number has `kMostChannelDigits` digits. Any thread;
 * one lock, under which no other lock is taken but the notifier's.
 */
class ChannelKeys : public std::enable_shared_from_this<ChannelKeys> {
  public:
    /** Returns the id of a listed channel, 0 when there is none. */
    using Find = std::function<uint32_t(const ChannelLists&)>;
    /** Selects the channel that `find` returns; returns a code of middleware/result_codes.h. */
    using Select = std::function<int32_t(const Find& find)>;

    /** `core` outlives this. `digitTime`: how long a further digit is waited for. `confirm` is
     * called when OK is pressed and no digits are collected. */
    ChannelKeys(Core& core, std::chrono::milliseconds digitTime, Select select,
                std::function<void()> confirm);

    /** `key`: BROADCAST_KEY_…. Returns a code of middleware/result_codes.h. */
    int32_t press(uint32_t key);

    /** Returns whether typed digits have selected a channel since the last reset. */
    bool handled() const;
    void resetHandled();

  private:
    int32_t pressDigit(uint32_t digit);
    int32_t pressOk();
    void expire(uint32_t keyCount);
    uint32_t takeNumber();
    int32_t selectNumber(uint32_t number);

    Core& mCore;
    const std::chrono::milliseconds mDigitTime;
    const Select mSelect;
    const std::function<void()> mConfirm;

    mutable std::mutex mMutex;  // guards all below
    uint32_t mNumber = 0;       ///< that the collected digits make
    uint32_t mDigits = 0;       ///< how many digits are collected
    uint32_t mKeyCount = 0;     ///< counts key presses, so that the time-out of an older one does
                                ///< nothing
    bool mHandled = false;
};

}  // namespace television
