#include "television/recording/program_clock.h"

#include <algorithm>
#include <map>

namespace television {
namespace {

constexpr uint64_t kTicks = 27'000'000;  ///< in a second
/** A PCR has a base of 33 bits and an extension that counts to 300. */
constexpr uint64_t kBaseRange = uint64_t{1} << 33;
constexpr uint64_t kRange = kBaseRange * 300;
/** PCRs come every tenth of a second; a larger step than this is a jump. Ticks. */
constexpr uint64_t kLargestStep = kTicks;
/** Ticks of one PID that are measured. */
constexpr uint64_t kEnough = 2 * kTicks;
/** Bytes of the stream that are read. */
constexpr uint64_t kMostBytes = 16 * 1024 * 1024;
// Bits a second that a broadcast can have.
constexpr uint64_t kLowestRate = 10'000;
constexpr uint64_t kHighestRate = 400'000'000;

/** The PCRs of one PID; steps that are jumps do not count. */
struct PcrSum {
    uint64_t last = 0;      ///< the last PCR
    uint64_t lastByte = 0;  ///< where it was in the stream
    uint64_t ticks = 0;     ///< sum of the steps
    uint64_t bytes = 0;     ///< sum of the bytes between the PCRs
};

std::optional<uint64_t> rateOf(const PcrSum& sum) {
    if (sum.ticks == 0) return std::nullopt;
    const auto rate = static_cast<uint64_t>(static_cast<double>(sum.bytes) * 8 * kTicks /
                                            static_cast<double>(sum.ticks));
    return rate < kLowestRate || rate > kHighestRate ? std::nullopt : std::make_optional(rate);
}

}  // namespace

std::optional<uint64_t> programClock(const uint8_t* packet) {
    const bool adaptation = (packet[3] & 0x20) != 0;
    if (!adaptation || packet[4] < 7 || (packet[5] & 0x10) == 0) return std::nullopt;
    const uint8_t* p = packet + 6;
    const uint64_t base = uint64_t{p[0]} << 25 | uint64_t{p[1]} << 17 | uint64_t{p[2]} << 9 |
                          uint64_t{p[3]} << 1 | p[4] >> 7;
    const uint64_t extension = (uint64_t{p[4]} & 1) << 8 | p[5];
    return base * 300 + extension;
}

bool announcesJump(const uint8_t* packet) {
    return (packet[3] & 0x20) != 0 && packet[4] > 0 && (packet[5] & 0x80) != 0;
}

void announceJump(uint8_t* packet) {
    packet[5] |= 0x80;
}

std::optional<uint64_t> measureBitRate(const PacketReader::Source& source) {
    uint64_t left = kMostBytes;
    PacketReader packets([&](uint8_t* data, size_t size) {
        const long got = source(data, static_cast<size_t>(std::min<uint64_t>(size, left)));
        if (got > 0) left -= static_cast<uint64_t>(got);
        return got;
    });
    std::map<uint16_t, PcrSum> sums;
    const PcrSum* longest = nullptr;
    uint64_t byte = 0;
    for (const uint8_t* packet; (packet = packets.next()) != nullptr; byte += kPacketSize) {
        const auto clock = programClock(packet);
        const bool damaged = (packet[1] & 0x80) != 0;
        if (!clock || damaged) continue;
        const auto pid = static_cast<uint16_t>((packet[1] & 0x1F) << 8 | packet[2]);
        const auto [entry, isNew] = sums.try_emplace(pid);
        PcrSum& sum = entry->second;
        const uint64_t step = (*clock + kRange - sum.last) % kRange;
        if (!isNew && !announcesJump(packet) && step <= kLargestStep) {
            sum.ticks += step;
            sum.bytes += byte - sum.lastByte;
        }
        sum.last = *clock;
        sum.lastByte = byte;
        if (longest == nullptr || sum.ticks > longest->ticks) longest = &sum;
        if (sum.ticks >= kEnough) break;
    }
    return longest == nullptr ? std::nullopt : rateOf(*longest);
}

}  // namespace television
