#include "program_clock.h"

#include <algorithm>
#include <map>

namespace television {
namespace {

constexpr uint64_t kTicks = 27'000'000;  ///< a second
constexpr uint64_t kBaseRange = uint64_t{1} << 33;
constexpr uint64_t kRange = kBaseRange * 300;
/** PCRs come every tenth of a second; what is further apart is a jump. */
constexpr uint64_t kFarthest = kTicks;
constexpr uint64_t kEnough = 2 * kTicks;
constexpr uint64_t kMostBytes = 16 * 1024 * 1024;
constexpr uint64_t kLowestRate = 10'000;
constexpr uint64_t kHighestRate = 400'000'000;

/** The PCRs of one PID since it jumped last. */
struct Run {
    uint64_t last = 0;
    uint64_t lastByte = 0;
    uint64_t ticks = 0;
    uint64_t bytes = 0;
};

std::optional<uint64_t> rateOf(const Run& run) {
    if (run.ticks == 0) return std::nullopt;
    const auto rate = static_cast<uint64_t>(static_cast<double>(run.bytes) * 8 * kTicks /
                                            static_cast<double>(run.ticks));
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
    std::map<uint16_t, Run> runs;
    const Run* longest = nullptr;
    uint64_t byte = 0;
    for (const uint8_t* packet; (packet = packets.next()) != nullptr; byte += kPacketSize) {
        const auto clock = programClock(packet);
        if (!clock || (packet[1] & 0x80) != 0) continue;
        const auto pid = static_cast<uint16_t>((packet[1] & 0x1F) << 8 | packet[2]);
        const auto [entry, isNew] = runs.try_emplace(pid);
        Run& run = entry->second;
        const uint64_t step = (*clock + kRange - run.last) % kRange;
        if (!isNew && !announcesJump(packet) && step <= kFarthest) {
            run.ticks += step;
            run.bytes += byte - run.lastByte;
        }
        run.last = *clock;
        run.lastByte = byte;
        if (longest == nullptr || run.ticks > longest->ticks) longest = &run;
        if (run.ticks >= kEnough) break;
    }
    return longest == nullptr ? std::nullopt : rateOf(*longest);
}

}  // namespace television
