/** The programme events of one transport stream: its event information tables (EIT), gathered
 * section by section. */
#pragma once

#include <array>
#include <bitset>
#include <map>
#include <vector>

#include "byte_view.h"
#include "guide_event.h"

namespace television {

/** Where and when one section of an EIT belongs: its long header. */
struct EventSection {
    uint8_t tableId = 0;
    uint16_t serviceId = 0;
    uint8_t version = 0;
    uint8_t number = 0;
    uint8_t lastNumber = 0;
};

/** Whether a table id is one of the EIT: present/following or schedule, of this stream or others.
 */
constexpr bool isEventTable(uint8_t tableId) {
    return tableId >= 0x4E && tableId <= 0x6F;
}

/**
 * Takes sound sections in any order; a repeated one costs nothing, a new version replaces the one
 * before. What is beyond the limits is left out. One thread at a time.
 */
class EventTables {
  public:
    /** Services with events, this stream's and others'. */
    static constexpr size_t kMostServices = 4096;
    /** Events of one service: thrice what eight days of half hours are. */
    static constexpr size_t kMostEvents = 1152;
    /** Bytes of all texts, as UTF-8. */
    static constexpr size_t kMostTextBytes = size_t{16} * 1024 * 1024;
    /** Ratings, genres, audio streams, identifiers of one event, of each kind. */
    static constexpr size_t kMostOfEach = 16;

    /** `payload`: what lies between the section's eight-byte header and its checksum. */
    void take(const EventSection& section, ByteView payload);

    /** Whether everything of a table kind has come that the stream itself tells of a service. */
    bool hasPresentFollowing(uint16_t serviceId) const;
    bool hasSchedule(uint16_t serviceId) const;

    /** By service. */
    std::vector<ServiceEvents> services() const;

  private:
    /** One subtable. Its sections come in segments of eight with gaps behind each segment's last.
     */
    struct Table {
        uint8_t version = 0;
        uint8_t lastNumber = 0;
        uint8_t lastTable = 0;
        std::bitset<256> seen;
        std::array<uint8_t, 32> segmentLast = {};
        std::vector<GuideEvent> events;
        size_t textBytes = 0;

        bool complete() const;
    };
    using Tables = std::map<uint8_t, Table>;  ///< by table id

    void addEvents(Table& table, size_t others, const EventSection& section, ByteView entries);
    const Tables* ownTables(uint16_t serviceId) const;

    std::map<ServiceKey, Tables> mServices;
    std::map<uint16_t, ServiceKey> mOwn;  ///< by service id, of tables for the actual stream
    size_t mTextBytes = 0;
};

}  // namespace television
