#include "television/stream/time_tables.h"

#include <algorithm>

#include "television/base/calendar.h"
#include "television/stream/descriptors.h"

namespace television {
namespace {

/** The offset in seconds of hours and minutes in four binary-coded decimals; empty when they are
 * out of range. `west`: of Greenwich, where local time is behind UTC. */
std::optional<int32_t> readOffset(uint16_t digits, bool west) {
    const auto seconds = secondsFromBcd(uint32_t{digits} << 8, 15);
    if (!seconds) return std::nullopt;
    return west ? -static_cast<int32_t>(*seconds) : static_cast<int32_t>(*seconds);
}

/** Reads the first region of a local time offset descriptor. */
void readLocalOffset(ByteView content, BroadcastTime& time) {
    constexpr size_t kRegion = 13;
    if (content.size() < kRegion) return;
    const bool west = (content.u8(3) & 0x01) != 0;
    const auto offset = readOffset(content.u16(4), west);
    const auto next = readOffset(content.u16(11), west);
    if (!offset) return;
    time.tot = true;
    time.offset = *offset;
    const auto change = secondsFromMjd(content.u16(6), content.u32(8) >> 8);
    time.nextChange = change && next ? std::max<int64_t>(*change, 0) : 0;
    time.nextOffset = time.nextChange != 0 ? *next : *offset;
}

}  // namespace

bool readTimeTable(ByteView payload, BroadcastTime& time) {
    const auto utc = secondsFromMjd(payload.u16(0), payload.u32(2) >> 8);
    if (payload.size() < 5 || !utc) return false;
    time.tdt = true;
    time.utc = *utc;
    return true;
}

bool readOffsetTable(ByteView payload, BroadcastTime& time) {
    const auto utc = secondsFromMjd(payload.u16(0), payload.u32(2) >> 8);
    if (payload.size() < 7 || !utc) return false;
    time.utc = *utc;
    const bool before = time.tot;
    time.tot = false;
    ByteView loop = payload.part(7, payload.u16(5) & 0x0FFFu);
    while (!loop.empty() && !time.tot) {
        if (loop.u8(0) == kDescriptorLocalTimeOffset)
            readLocalOffset(loop.part(2, loop.u8(1)), time);
        loop = loop.from(2u + loop.u8(1));
    }
    time.tot = time.tot || before;
    return true;
}

}  // namespace television
