/** The program clock references (PCR) of a transport stream, and the bit rate that they give. */
#pragma once

#include <cstdint>
#include <optional>

#include "television/stream/packet_reader.h"

namespace television {

/** The bit rate of a terrestrial multiplex, for streams whose own cannot be measured; bits a
 * second.
 */
constexpr uint64_t kUsualBitRate = 20'000'000;

/** The PCR of a packet in ticks of 27 MHz; empty when it has none. */
std::optional<uint64_t> programClock(const uint8_t* packet);

/** Returns whether a packet announces that its PCR does not continue the one before
 * (discontinuity_indicator). */
bool announcesJump(const uint8_t* packet);
/** Makes a packet that has a PCR announce that. */
void announceJump(uint8_t* packet);

/**
 * Measures the bit rate of a stream, bits a second, packets of 188 bytes. The PID whose PCRs follow
 * one another for the longest time counts; two seconds of one PID, or 16 MiB, are enough. Empty
 * when no PID has two such PCRs, or when the rate is none that a broadcast has.
 */
std::optional<uint64_t> measureBitRate(const PacketReader::Source& source);

}  // namespace television
