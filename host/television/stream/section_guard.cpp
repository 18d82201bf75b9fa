#include "television/stream/section_guard.h"

#include "television/stream/event_tables.h"

namespace television {
namespace {

/** The length of a loop of descriptors or entries: 12 bits at the offset `at`. */
size_t loopLength(ByteView bytes, size_t at) {
    return bytes.u16(at) & 0x0FFFu;
}

bool descriptorsAreSound(ByteView loop) {
    size_t at = 0;
    while (at < loop.size()) {
        if (at + 2 > loop.size()) return false;
        at += 2u + loop.u8(at + 1);
    }
    return at == loop.size();
}

/** Whether the entries of a loop are sound. Each ends with a descriptor loop, whose length is at
 * the offset `lengthAt` of the entry. */
bool entriesAreSound(ByteView loop, size_t lengthAt) {
    while (!loop.empty()) {
        const size_t header = lengthAt + 2;
        if (loop.size() < header) return false;
        const size_t length = loopLength(loop, lengthAt);
        if (loop.size() - header < length) return false;
        if (!descriptorsAreSound(loop.part(header, length))) return false;
        loop = loop.from(header + length);
    }
    return true;
}

bool pmtIsSound(ByteView payload) {
    if (payload.size() < 4) return false;
    const size_t length = loopLength(payload, 2);
    return payload.size() - 4 >= length && descriptorsAreSound(payload.part(4, length)) &&
           entriesAreSound(payload.from(4 + length), 3);
}

bool nitIsSound(ByteView payload) {
    if (payload.size() < 2) return false;
    const size_t length = loopLength(payload, 0);
    if (payload.size() - 2 < length || !descriptorsAreSound(payload.part(2, length))) return false;
    const ByteView rest = payload.from(2 + length);
    return rest.size() >= 2 && rest.size() - 2 == loopLength(rest, 0) &&
           entriesAreSound(rest.from(2), 4);
}

bool totIsSound(ByteView payload) {
    return payload.size() >= 7 && payload.size() - 7 == loopLength(payload, 5) &&
           descriptorsAreSound(payload.from(7));
}

}  // namespace

bool sectionIsSound(uint8_t tableId, ByteView payload) {
    if (isEventTable(tableId)) {
        return payload.size() >= 6 && entriesAreSound(payload.from(6), 10);
    }
    switch (tableId) {
        case kTablePat:
            return payload.size() % 4 == 0;
        case kTablePmt:
            return pmtIsSound(payload);
        case kTableNitActual:
            return nitIsSound(payload);
        case kTableSdtActual:
            return payload.size() >= 3 && entriesAreSound(payload.from(3), 3);
        case kTableTdt:
            return payload.size() == 5;
        case kTableTot:
            return totIsSound(payload);
        default:
            return true;
    }
}

}  // namespace television
