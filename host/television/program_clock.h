/** The program clock references (PCR) of a transport stream: how fast it runs. */
#pragma once

#include <cstdint>
#include <optional>

#include "packet_reader.h"

namespace television {

/** A rate for streams whose own cannot be told: bits a second of a terrestrial multiplex. */
constexpr uint64_t kUsualBitRate = 20'000'000;

/** The PCR of a packet in ticks of 27 MHz; empty when it has none. */
std::optional<uint64_t> programClock(const uint8_t* packet);

/** Whether a packet announces that its PCR does not follow the one before. */
bool announcesJump(const uint8_t* packet);
/** Makes a packet that has a PCR announce that. */
void announceJump(uint8_t* packet);

/**
 * The bit rate of a stream, packets of 188 bytes, by the first PID that has two PCRs: over two
 * seconds where there are so many, and looked for in the first 16 MiB. Empty when there is no such
 * PID, or the rate is none that a broadcast has.
 */
std::optional<uint64_t> measureBitRate(const PacketReader::Source& source);

}  // namespace television
