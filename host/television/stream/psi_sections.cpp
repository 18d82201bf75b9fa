#include "television/stream/psi_sections.h"

#include <algorithm>

#include "television/stream/packet_reader.h"
#include "television/stream/section_checksum.h"

namespace television {
namespace {

constexpr size_t kPacketHeader = 4;
constexpr size_t kSectionStart = 3;  // bytes up to and including the length
constexpr size_t kLongHeader = 8;
constexpr size_t kChecksum = 4;
constexpr uint8_t kStuffing = 0xFF;

size_t sectionSize(ByteView section) {
    return kSectionStart + (section.u16(1) & 0x0FFF);
}

bool hasRightChecksum(ByteView section) {
    const bool longHeader = (section.u8(1) & 0x80) != 0;
    return longHeader && section.size() >= kLongHeader + kChecksum && sectionChecksum(section) == 0;
}

}  // namespace

void SectionGatherer::push(const uint8_t* packet, const Visit& visit) {
    const ByteView bytes(packet, kPacketSize);
    const uint8_t flags = bytes.u8(3);
    if ((flags & 0x10) == 0 || (flags & 0xC0) != 0) return;  // no payload, or scrambled
    const uint8_t counter = flags & 0x0F;
    if (!mBytes.empty() && counter == mCounter) return;  // the same packet twice
    if (!mBytes.empty() && counter != ((mCounter + 1) & 0x0F)) mBytes.clear();
    mCounter = counter;
    ByteView payload =
            bytes.from((flags & 0x20) != 0 ? kPacketHeader + 1u + bytes.u8(4) : kPacketHeader);
    const bool start = (bytes.u8(1) & 0x40) != 0;
    if (!start) {
        if (!mBytes.empty()) append(payload, visit);
        return;
    }
    const size_t pointer = payload.u8(0);
    payload = payload.from(1);
    if (!mBytes.empty()) append(payload.part(0, pointer), visit);
    mBytes.clear();
    payload = payload.from(pointer);
    if (!payload.empty() && payload.u8(0) != kStuffing) append(payload, visit);
}

/** Adds bytes to the section that has begun, and visits the sections that they complete. */
void SectionGatherer::append(ByteView bytes, const Visit& visit) {
    mBytes.insert(mBytes.end(), bytes.data(), bytes.data() + bytes.size());
    size_t begin = 0;
    for (;;) {
        const ByteView rest = ByteView(mBytes.data(), mBytes.size()).from(begin);
        if (rest.empty() || rest.u8(0) == kStuffing) {
            mBytes.clear();
            return;
        }
        if (rest.size() < kSectionStart || rest.size() < sectionSize(rest)) break;
        const ByteView section = rest.part(0, sectionSize(rest));
        if (hasRightChecksum(section)) visit(section);
        begin += section.size();
    }
    mBytes.erase(mBytes.begin(), mBytes.begin() + static_cast<ptrdiff_t>(begin));
}

std::vector<uint8_t> makeSection(uint8_t tableId, uint16_t extension, uint8_t version,
                                 uint8_t number, uint8_t last,
                                 const std::vector<uint8_t>& payload) {
    const size_t length = kLongHeader - kSectionStart + payload.size() + kChecksum;
    const uint8_t header[kLongHeader] = {tableId,
                                         static_cast<uint8_t>(0xB0 | length >> 8),
                                         static_cast<uint8_t>(length),
                                         static_cast<uint8_t>(extension >> 8),
                                         static_cast<uint8_t>(extension),
                                         static_cast<uint8_t>(0xC1 | (version & 0x1F) << 1),
                                         number,
                                         last};
    std::vector<uint8_t> section;
    section.reserve(sizeof(header) + payload.size() + kChecksum);
    section.insert(section.end(), header, header + sizeof(header));
    section.insert(section.end(), payload.begin(), payload.end());
    const uint32_t checksum = sectionChecksum({section.data(), section.size()});
    for (int shift = 24; shift >= 0; shift -= 8) {
        section.push_back(static_cast<uint8_t>(checksum >> shift));
    }
    return section;
}

void packSection(ByteView section, uint16_t pid, uint8_t& counter, std::vector<uint8_t>& packets) {
    bool start = true;
    while (!section.empty()) {
        const size_t begin = packets.size();
        packets.insert(
                packets.end(),
                {kSyncByte, static_cast<uint8_t>((start ? 0x40 : 0x00) | pid >> 8),
                 static_cast<uint8_t>(pid), static_cast<uint8_t>(0x10 | (counter++ & 0x0F))});
        if (start) packets.push_back(0);  // pointer: the section begins right behind it
        const size_t room = begin + kPacketSize - packets.size();
        const ByteView part = section.part(0, room);
        packets.insert(packets.end(), part.data(), part.data() + part.size());
        packets.resize(begin + kPacketSize, kStuffing);
        section = section.from(room);
        start = false;
    }
}

}  // namespace television
