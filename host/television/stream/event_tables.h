/** Gathers the programme events of one transport stream from the sections of its event information
 * tables (EIT). */
#pragma once

#include <array>
#include <bitset>
#include <map>
#include <vector>

#include "television/base/byte_view.h"
#include "television/stream/guide_event.h"

namespace television {

/** The fields of the long header of an EIT section. */
struct EventSection {
    uint8_t tableId = 0;
    uint16_t serviceId = 0;
    uint8_t version = 0;
    uint8_t number = 0;
    uint8_t lastNumber = 0;
};

/** Whether a table id is one of the EIT: present/following or schedule, of this stream or of
 * others. */
constexpr bool isEventTable(uint8_t tableId) {
    return tableId >= 0x4E && tableId <= 0x6F;
}

/**
 * Takes sections, whose lengths sectionIsSound() has checked, in any order. A repeated section is
 * ignored, a new version of a table replaces the one before. Events beyond the limits are left out.
 * One thread at a time.
 */
class EventTables {
  public:
    /** Services with events, those of this stream and of others together. */
    static constexpr size_t kMostServices = 4096;
    /** Events of one service: three times as many as half hours in eight days. */
    static constexpr size_t kMostEvents = 1152;
    /** Bytes of all texts, as UTF-8. */
    static constexpr size_t kMostTextBytes = size_t{16} * 1024 * 1024;

    /** `payload`: what lies between the section's eight-byte header and its checksum. */
    void take(const EventSection& section, ByteView payload);

    /** Whether all sections of the present/following table, or of the schedule tables, have come
     * for a service of this stream. */
    bool hasPresentFollowing(uint16_t serviceId) const;
    bool hasSchedule(uint16_t serviceId) const;

    /** The services that have events. An event that several tables carry comes once: as its
     * present/following table has it, completed from the schedule. */
    std::vector<ServiceEvents> services() const;

  private:
    /** The subtable of one table id and service. Its section numbers come in segments of eight; a
     * segment that has fewer sections leaves the numbers behind its last one out. */
    struct Table {
        uint8_t version = 0;
        uint8_t lastNumber = 0;                    ///< number of the last section
        uint8_t lastTable = 0;                     ///< id of the last schedule table
        std::bitset<256> seen;                     ///< sections that have come, by number
        std::array<uint8_t, 32> segmentLast = {};  ///< number of each segment's last section
        std::vector<GuideEvent> events;
        size_t textBytes = 0;

        bool isComplete() const;
    };
    using Tables = std::map<uint8_t, Table>;  ///< by table id

    void addEvents(Table& table, size_t eventsBefore, const EventSection& section,
                   ByteView entries);
    const Tables* ownTables(uint16_t serviceId) const;

    std::map<ServiceKey, Tables> mServices;
    std::map<uint16_t, ServiceKey> mOwn;  ///< the services of this stream, by service id
    size_t mTextBytes = 0;
};

}  // namespace television
