// Channel numbers that can be typed, and their limits.
#include <algorithm>

#include "middleware/broadcast.h"
#include "middleware/result_codes.h"
#include "television/core/channel_selection.h"
#include "television/core/client_memory.h"
#include "television/modules/modules.h"
#include "television/modules/yes_no.h"
#include "television/viewing/channel_keys.h"

namespace television {
namespace {

constexpr uint32_t kGreatestChannelNumber = UINT16_MAX;

/** Returns whether the set has a tuner of a type; the type of a digital tuner is the medium
 * (BRDCST_MEDIUM_…) that it receives. */
bool isTuner(uint16_t type) {
    return type >= BRDCST_MEDIUM_DIG_TERRESTRIAL && type <= BRDCST_MEDIUM_DIG_SATELLITE;
}

/** Plugs a function that writes a limit of channel numbers. */
template <auto Function>
void plugLimit(switchboard::Switchboard& board, uint32_t limit) {
    board.on<Function>([limit](uint16_t tunerType, uint32_t* to) -> int32_t {
        if (!writable(to)) return TV_INVALID_ARGUMENT;
        if (!isTuner(tunerType)) return TV_NOT_SUPPORTED;
        *to = limit;
        return TV_OK;
    });
}

/** Returns whether `number` begins with the digits of `typed`; every number continues no digits. */
bool continues(uint32_t number, uint32_t typed) {
    if (typed == 0) return number != 0;
    while (number > typed) number /= 10;
    return number == typed;
}

bool isNumberValid(const Core& core, uint32_t major, uint32_t minor, bool exact) {
    if (minor != 0) return false;
    return core.read([&](const ChannelLists& lists) {
        if (exact) return channelByNumber(lists, major) != 0;
        return std::any_of(lists.lists.begin(), lists.lists.end(), [&](const ChannelList& list) {
            return std::any_of(list.services.begin(), list.services.end(),
                               [&](const Service& service) {
                                   const uint32_t number = service.record.ui2_channel_number;
                                   return number != 0 && continues(number, major);
                               });
        });
    });
}

}  // namespace

void plugBroadcastNumbers(switchboard::Switchboard& board, Core& core) {
    plugLimit<&a_qortvapi_broadcast_get_max_possible_major_chan_no>(board, kGreatestChannelNumber);
    plugLimit<&a_qortvapi_broadcast_get_max_possible_minor_chan_no>(board, 0);
    plugLimit<&a_qortvapi_broadcast_get_max_possible_major_digits>(board, kMostChannelDigits);
    plugLimit<&a_qortvapi_broadcast_get_max_possible_minor_digits>(board, 0);
    plugYesNo<&a_qortvapi_broadcast_is_support_4_digits_chan_no>(board, [] { return true; });
    board.on<&a_qortvapi_broadcast_is_channel_number_valid>(
            [&core](uint32_t major, uint32_t minor, bool exact, uint8_t* valid) -> int32_t {
                if (!writable(valid)) return TV_INVALID_ARGUMENT;
                *valid = isNumberValid(core, major, minor, exact) ? 1 : 0;
                return TV_OK;
            });
}

}  // namespace television
