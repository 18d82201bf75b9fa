// Making channel ids of channel numbers, and reading the numbers back.
#include "middleware/channellist.h"
#include "middleware/result_codes.h"
#include "television/lists/channel_id.h"
#include "television/modules/modules.h"

namespace television {
namespace {

// Bits of the second part of a number.
constexpr uint32_t kMinorBits = 10;
constexpr uint32_t kProgramBits = 12;

int32_t idOrError(std::optional<uint32_t> id) {
    return id ? static_cast<int32_t>(*id) : int32_t{TV_INVALID_ARGUMENT};
}

int32_t pairId(ChannelIdKind kind, uint32_t high, uint32_t low, uint32_t lowBits, uint32_t index) {
    const auto number = pairNumber(high, low, lowBits);
    return number ? idOrError(makeChannelId(kind, *number, index)) : int32_t{TV_INVALID_ARGUMENT};
}

/** Returns how many bits of an id's number are its second part; a negative code for other ids. */
int32_t lowBits(uint32_t channelId) {
    if (isKind(channelId, ChannelIdKind::kTwoPart)) return kMinorBits;
    if (isKind(channelId, ChannelIdKind::kNonPsip)) return kProgramBits;
    if (isKind(channelId, ChannelIdKind::kOnePart)) return 0;
    return TV_INVALID_ARGUMENT;
}

int32_t major(uint32_t channelId) {
    const int32_t bits = lowBits(channelId);
    return bits < 0 ? bits : static_cast<int32_t>(channelIdNumber(channelId) >> bits);
}

int32_t minor(uint32_t channelId) {
    const int32_t bits = lowBits(channelId);
    if (bits < 0) return bits;
    return static_cast<int32_t>(channelIdNumber(channelId) & ((1u << bits) - 1));
}

}  // namespace

void plugChannelIds(switchboard::Switchboard& board) {
    board.on<&a_qortvapi_channellist_gen_channel_id>(
            [](uint32_t high, uint32_t low, uint32_t index) {
                return pairId(ChannelIdKind::kTwoPart, high, low, kMinorBits, index);
            });
    board.on<&a_qortvapi_channellist_gen_one_part_channel_id>([](uint32_t number, uint32_t index) {
        return idOrError(makeChannelId(ChannelIdKind::kOnePart, number, index));
    });
    board.on<&a_qortvapi_channellist_gen_non_psip_channel_id>(
            [](uint32_t physical, uint32_t program, uint32_t index) {
                return pairId(ChannelIdKind::kNonPsip, physical, program, kProgramBits, index);
            });
    board.on<&a_qortvapi_is_one_part_channel_id>(
            [](uint32_t id) { return int32_t{isKind(id, ChannelIdKind::kOnePart)}; });
    board.on<&a_qortvapi_is_non_psip_channel_id>(
            [](uint32_t id) { return int32_t{isKind(id, ChannelIdKind::kNonPsip)}; });
    board.on<&a_qortvapi_channellist_get_major_channel_num>(major);
    board.on<&a_qortvapi_channellist_get_minor_channel_num>(minor);
    board.on<&a_qortvapi_channellist_get_channel_index>([](uint32_t id) {
        return lowBits(id) < 0 ? int32_t{TV_INVALID_ARGUMENT}
                               : static_cast<int32_t>(channelIdIndex(id));
    });
    board.on<&a_qortvapi_channellist_max_channel_index>(
            [] { return static_cast<int32_t>(kMaxChannelIndex); });
    // The last channels of analogue and digital cable in North America, which this set does not
    // have.
    board.on<&a_qortvapi_channellist_get_ntsc_cable_last_channel>(
            [] { return int32_t{TV_NOT_SUPPORTED}; });
    board.on<&a_qortvapi_channellist_get_cqam_scan_last_channel>(
            [] { return int32_t{TV_NOT_SUPPORTED}; });
}

}  // namespace television
