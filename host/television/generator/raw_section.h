/** Sections of the time and event tables as bytes. */
#pragma once

#include <cstdint>
#include <utility>

#include "television/base/calendar.h"
#include "television/generator/byte_writer.h"
#include "television/stream/section_checksum.h"

namespace stream_generator {

/** A whole section with its checksum, and its PID. */
struct RawSection {
    uint16_t pid;
    Bytes bytes;
};

/** A time, in seconds since 1970, as a Modified Julian Date and six binary-coded decimals. */
inline void putTime(Bytes& out, int64_t time) {
    const int64_t day = television::floorDivide(time, television::kSecondsOfDay);
    put16(out, static_cast<unsigned>(day + television::kMjdOfEpoch));
    put24(out, television::bcdFromSeconds(
                       static_cast<uint32_t>(time - day * television::kSecondsOfDay)));
}

/** Completes a section: writes its length into the header and appends its checksum. */
inline void finishSection(Bytes& section) {
    const size_t length = section.size() + 4 - 3;
    section[1] = static_cast<uint8_t>((section[1] & 0xF0u) | length >> 8);
    section[2] = static_cast<uint8_t>(length);
    put32(section, television::sectionChecksum({section.data(), section.size()}));
}

}  // namespace stream_generator
