/** The keys of the remote control that select channels of the main window. */
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>

#include "core.h"

namespace television {

/** A channel number's most digits. */
constexpr uint32_t kMostChannelDigits = 5;

/**
 * Digits wait for more digits; the time-out, OK or the last digit that a number can have selects.
 * Any thread; one lock, held for no call of the core but posts.
 */
class ChannelKeys : public std::enable_shared_from_this<ChannelKeys> {
  public:
    /** Selects what `find` names, a channel id of the lists, 0: none; answers a code of
     * middleware/result_codes.h. */
    using Find = std::function<uint32_t(const ChannelLists&)>;
    using Select = std::function<int32_t(const Find& find)>;

    /** `core` outlives this. `digitTime`: after which digits select. `confirm` is called for OK
     * without digits. */
    ChannelKeys(Core& core, std::chrono::milliseconds digitTime, Select select,
                std::function<void()> confirm);

    /** BROADCAST_KEY_…; answers a code of middleware/result_codes.h. */
    int32_t press(uint32_t key);

    /** Whether a number that was typed has selected a channel since the last reset. */
    bool handled() const;
    void resetHandled();

  private:
    int32_t pressDigit(uint32_t digit);
    int32_t pressOk();
    void expire(uint32_t run);
    uint32_t takeNumber();
    int32_t selectNumber(uint32_t number);

    Core& mCore;
    const std::chrono::milliseconds mDigitTime;
    const Select mSelect;
    const std::function<void()> mConfirm;

    mutable std::mutex mMutex;  // guards all below
    uint32_t mNumber = 0;
    uint32_t mDigits = 0;
    uint32_t mRun = 0;  ///< counts key presses, so that an older time-out does nothing
    bool mHandled = false;
};

}  // namespace television
