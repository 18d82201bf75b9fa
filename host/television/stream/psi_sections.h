/** Sections of tables as bytes: gathered from packets, made around a payload, cut into packets. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "television/base/byte_view.h"

namespace television {

/**
 * Gathers the sections of one PID from its packets: those with the long header whose checksum is
 * right. One thread at a time.
 */
class SectionGatherer {
  public:
    using Visit = std::function<void(ByteView section)>;

    /** Takes a packet of the PID; calls `visit` for every section that ends in it. */
    void push(const uint8_t* packet, const Visit& visit);
    /** Drops the section that has begun. */
    void reset() { mBytes.clear(); }

  private:
    void append(ByteView bytes, const Visit& visit);

    std::vector<uint8_t> mBytes;  ///< of the section that has begun; empty before the first
    uint8_t mCounter = 0;         ///< continuity counter of the last packet
};

/**
 * Makes a section that is in force now: the long header, `payload`, which has at most 4084 bytes,
 * and the checksum.
 */
std::vector<uint8_t> makeSection(uint8_t tableId, uint16_t extension, uint8_t version,
                                 uint8_t number, uint8_t last, const std::vector<uint8_t>& payload);

/** Appends the packets of a section to `packets`. `counter` is the PID's continuity counter: it is
 * used for the first packet and counted on with each. */
void packSection(ByteView section, uint16_t pid, uint8_t& counter, std::vector<uint8_t>& packets);

}  // namespace television
