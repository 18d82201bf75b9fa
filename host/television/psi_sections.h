/** Sections of tables, byte by byte: put together from packets, made, and cut into packets. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "byte_view.h"

namespace television {

/** The checksum at the end of a section. */
uint32_t sectionChecksum(ByteView bytes);

/**
 * Puts the sections that come on one PID together. Only those with the long header whose checksum
 * is right come out. One thread at a time.
 */
class SectionGatherer {
  public:
    using Visit = std::function<void(ByteView section)>;

    /** Takes a packet of the PID; calls `visit` for every section that ends in it. */
    void push(const uint8_t* packet, const Visit& visit);
    /** Forgets the section that has begun. */
    void reset() { mBytes.clear(); }

  private:
    void append(ByteView bytes, const Visit& visit);

    std::vector<uint8_t> mBytes;  ///< of the section that has begun
    uint8_t mCounter = 0;         ///< continuity counter of the last packet
};

/**
 * A section with the long header around `payload`, in force now, with its length and checksum. The
 * payload has at most 4084 bytes.
 */
std::vector<uint8_t> makeSection(uint8_t tableId, uint16_t extension, uint8_t version,
                                 uint8_t number, uint8_t last, const std::vector<uint8_t>& payload);

/** Appends the packets of a section, counting `counter` on. */
void packSection(ByteView section, uint16_t pid, uint8_t& counter, std::vector<uint8_t>& packets);

}  // namespace television
