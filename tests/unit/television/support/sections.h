/** Makes sections and streams byte by byte, also wrong ones that the generator never writes. */
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <vector>

#include "television/generator/packetizer.h"

namespace sections {

using Bytes = std::vector<uint8_t>;

/** The checksum of sections (ISO/IEC 13818-1), computed apart from the code under test. */
inline uint32_t crc32(const uint8_t* data, size_t size) {
    uint32_t crc = 0xFFFFFFFF;
    for (size_t i = 0; i < size; ++i) {
        crc ^= uint32_t{data[i]} << 24;
        for (int bit = 0; bit < 8; ++bit) crc = (crc << 1) ^ ((crc >> 31) != 0 ? 0x04C11DB7u : 0u);
    }
    return crc;
}

/** A section with the long header, around `payload`, with the right checksum. */
inline Bytes section(uint8_t tableId, uint16_t extension, const Bytes& payload, uint8_t version = 1,
                     bool current = true, uint8_t number = 0, uint8_t last = 0) {
    const size_t length = payload.size() + 9;
    const uint8_t header[] = {tableId,
                              static_cast<uint8_t>(0xB0 | length >> 8),
                              static_cast<uint8_t>(length),
                              static_cast<uint8_t>(extension >> 8),
                              static_cast<uint8_t>(extension),
                              static_cast<uint8_t>(0xC0 | version << 1 | (current ? 1 : 0)),
                              number,
                              last};
    Bytes bytes(sizeof(header) + payload.size());
    std::copy(std::begin(header), std::end(header), bytes.begin());
    std::copy(payload.begin(), payload.end(), bytes.begin() + sizeof(header));
    const uint32_t crc = crc32(bytes.data(), bytes.size());
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<uint8_t>(crc >> shift));
    return bytes;
}

/** A PAT. `programs`: program number and PID of each. */
inline Bytes pat(uint16_t transportStreamId,
                 const std::vector<std::pair<uint16_t, uint16_t>>& programs) {
    Bytes payload;
    for (const auto& [program, pid] : programs) {
        for (const unsigned value : {program >> 8, program & 0xFF, 0xE0 | pid >> 8, pid & 0xFF}) {
            payload.push_back(static_cast<uint8_t>(value));
        }
    }
    return section(0x00, transportStreamId, payload);
}

/** Makes a stream of sections, with null packets at the end. */
class Stream {
  public:
    Stream& add(uint16_t pid, const Bytes& bytes) {
        mPackets.section(pid, bytes.data(), bytes.size());
        return *this;
    }
    Bytes finish() {
        mPackets.stuffing(10);
        return mPackets.take();
    }

  private:
    stream_generator::Packetizer mPackets;
};

}  // namespace sections
