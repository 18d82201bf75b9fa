#include "television/generator/packetizer.h"

#include <algorithm>
#include <cstring>

namespace stream_generator {
namespace {

constexpr size_t kPacketSize = 188;
constexpr uint16_t kNullPid = 0x1FFF;

}  // namespace

/** Appends a packet that is filled with stuffing, and returns its 184 bytes of payload, valid until
 * the next one. */
uint8_t* Packetizer::packet(uint16_t pid, bool start) {
    const uint8_t counter = mContinuity[pid]++ & 0x0F;
    mStream.resize(mStream.size() + kPacketSize, 0xFF);
    uint8_t* bytes = mStream.data() + mStream.size() - kPacketSize;
    bytes[0] = 0x47;
    bytes[1] = static_cast<uint8_t>((start ? 0x40 : 0x00) | pid >> 8);
    bytes[2] = static_cast<uint8_t>(pid);
    bytes[3] = 0x10 | counter;
    return bytes + 4;
}

void Packetizer::section(uint16_t pid, const uint8_t* data, size_t size) {
    bool start = true;
    while (size > 0) {
        uint8_t* payload = packet(pid, start);
        size_t room = kPacketSize - 4;
        if (start) {
            *payload++ = 0;  // pointer: the section begins right behind it
            --room;
        }
        const size_t part = std::min(room, size);
        std::memcpy(payload, data, part);
        data += part;
        size -= part;
        start = false;
    }
}

void Packetizer::payload(uint16_t pid, uint8_t streamId, uint32_t serial) {
    uint8_t* payload = packet(pid, true);
    constexpr uint16_t kLength = kPacketSize - 4 - 6;
    const uint8_t header[] = {0, 0, 1, streamId, kLength >> 8, kLength & 0xFF, 0x80, 0, 0};
    std::memcpy(payload, header, sizeof(header));
    for (size_t i = sizeof(header); i < kPacketSize - 4; ++i) {
        payload[i] = static_cast<uint8_t>(serial * 31 + i);
    }
}

void Packetizer::stuffing(unsigned packets) {
    while (packets-- > 0) packet(kNullPid, false);
}

}  // namespace stream_generator
