/**
 * How a channel id is put together: bits 30-28 the kind, bits 27-8 the number, bits 7-0 an index
 * that tells channels of one number apart. Bit 31 is clear, so that an id is never taken for a
 * failure, and the kind is never 0, so neither is the id.
 */
#pragma once

#include <cstdint>
#include <optional>

namespace television {

enum class ChannelIdKind : uint32_t {
    kTwoPart = 1,  ///< number: 10 bits major, 10 bits minor
    kOnePart = 2,  ///< number: 20 bits
    kNonPsip = 3,  ///< number: 8 bits physical channel, 12 bits program
};

constexpr uint32_t kMaxChannelIndex = 0xFF;

/** The id; empty when `number` or `index` does not fit. */
constexpr std::optional<uint32_t> makeChannelId(ChannelIdKind kind, uint32_t number,
                                                uint32_t index) {
    if (number > 0xFFFFF || index > kMaxChannelIndex) return std::nullopt;
    return static_cast<uint32_t>(kind) << 28 | number << 8 | index;
}

/** Two small numbers as the number of an id, `low` in the lower `lowBits` of its 20 bits; empty
 * when one of them does not fit. */
constexpr std::optional<uint32_t> pairNumber(uint32_t high, uint32_t low, uint32_t lowBits) {
    if (low >> lowBits != 0 || high >> (20 - lowBits) != 0) return std::nullopt;
    return high << lowBits | low;
}

constexpr bool isKind(uint32_t channelId, ChannelIdKind kind) {
    return channelId >> 28 == static_cast<uint32_t>(kind);
}
constexpr uint32_t channelIdNumber(uint32_t channelId) {
    return channelId >> 8 & 0xFFFFF;
}
constexpr uint32_t channelIdIndex(uint32_t channelId) {
    return channelId & kMaxChannelIndex;
}

/** The id of a service. It is made from the record id, which stays, and not from the channel
 * number, which may change. */
constexpr uint32_t serviceChannelId(uint16_t listId, uint16_t recordId) {
    return *makeChannelId(ChannelIdKind::kOnePart, uint32_t{listId} << 16 | recordId, 0);
}

}  // namespace television
