#include "television/stream/event_tables.h"

#include <algorithm>
#include <utility>

#include "television/base/calendar.h"
#include "television/stream/event_descriptors.h"

namespace television {
namespace {

constexpr uint8_t kTablePresentActual = 0x4E;
constexpr uint8_t kTablePresentOther = 0x4F;
constexpr uint8_t kTableScheduleActual = 0x50;
constexpr uint8_t kTableScheduleActualLast = 0x5F;

constexpr size_t kPayloadHeader = 6;  // bytes in front of the events
constexpr size_t kEventHeader = 12;   // bytes of an event in front of its descriptors
constexpr unsigned kSegment = 8;      // section numbers in a segment

constexpr bool isPresentFollowing(uint8_t tableId) {
    return tableId == kTablePresentActual || tableId == kTablePresentOther;
}
constexpr bool isActual(uint8_t tableId) {
    return tableId == kTablePresentActual ||
           (tableId >= kTableScheduleActual && tableId <= kTableScheduleActualLast);
}

size_t textBytes(const GuideEvent& event) {
    size_t bytes = event.title.size() + event.text.size() + event.extended.size();
    for (const EventAudio& audio : event.audio) bytes += audio.text.size();
    for (const EventIdentifier& identifier : event.identifiers) bytes += identifier.text.size();
    return bytes;
}

/** Fills those fields of a present or following event that its table left empty from the schedule's
 * entry of the same event. */
void complete(GuideEvent& event, GuideEvent&& scheduled) {
    event.schedule = true;
    if (event.title.empty()) {
        event.title = std::move(scheduled.title);
        event.language = std::move(scheduled.language);
    }
    if (event.text.empty()) event.text = std::move(scheduled.text);
    if (event.extended.empty()) event.extended = std::move(scheduled.extended);
    if (event.contents.empty()) event.contents = std::move(scheduled.contents);
    if (event.ratings.empty()) event.ratings = std::move(scheduled.ratings);
    if (event.audio.empty()) event.audio = std::move(scheduled.audio);
    if (event.identifiers.empty()) event.identifiers = std::move(scheduled.identifiers);
}

}  // namespace

bool EventTables::Table::isComplete() const {
    for (unsigned first = 0; first <= lastNumber; first += kSegment) {
        const unsigned last = std::max<unsigned>(first, segmentLast[first / kSegment]);
        for (unsigned number = first; number <= last; ++number) {
            if (!seen[number]) return false;
        }
    }
    return true;
}

void EventTables::take(const EventSection& section, ByteView payload) {
    const ServiceKey key{payload.u16(2), payload.u16(0), section.serviceId};
    auto service = mServices.find(key);
    if (service == mServices.end()) {
        if (mServices.size() >= kMostServices) return;
        service = mServices.emplace(key, Tables()).first;
    }
    if (isActual(section.tableId)) mOwn[section.serviceId] = key;
    Tables& tables = service->second;
    Table& table = tables[section.tableId];
    if (table.seen.any() && table.version != section.version) {
        mTextBytes -= table.textBytes;
        table = {};
    }
    if (table.seen[section.number]) return;
    table.seen.set(section.number);
    table.version = section.version;
    table.lastNumber = section.lastNumber;
    // A wrong number here can only make the table count as complete too early or never.
    const uint8_t segmentLast = payload.u8(4);
    const bool inSegment = segmentLast / kSegment == section.number / kSegment;
    table.segmentLast[section.number / kSegment] = inSegment ? segmentLast : section.number;
    table.lastTable = payload.u8(5);
    size_t eventsBefore = 0;
    for (const auto& [id, other] : tables) eventsBefore += other.events.size();
    addEvents(table, eventsBefore, section, payload.from(kPayloadHeader));
}

/** Adds the events of a section to its table. `eventsBefore`: events that the service has so far.
 */
void EventTables::addEvents(Table& table, size_t eventsBefore, const EventSection& section,
                            ByteView entries) {
    for (size_t events = eventsBefore; !entries.empty(); ++events) {
        if (events >= kMostEvents || mTextBytes >= kMostTextBytes) return;
        const size_t descriptorBytes = entries.u16(10) & 0x0FFFu;
        const auto start = secondsFromMjd(entries.u16(2), entries.u32(4) >> 8);
        const auto duration = secondsFromBcd(entries.u32(7) >> 8, 99);
        if (start && duration) {  // an entry without a time only refers to another event
            GuideEvent event;
            event.eventId = entries.u16(0);
            event.start = *start;
            event.duration = *duration;
            event.runningStatus = entries.u8(10) >> 5;
            event.scrambled = (entries.u8(10) & 0x10) != 0;
            event.tableVersion = section.version;
            event.presentFollowing = isPresentFollowing(section.tableId);
            event.schedule = !event.presentFollowing;
            readEventDescriptors(entries.part(kEventHeader, descriptorBytes), event);
            const size_t bytes = textBytes(event);
            table.textBytes += bytes;
            mTextBytes += bytes;
            table.events.push_back(std::move(event));
        }
        entries = entries.from(kEventHeader + descriptorBytes);
    }
}

const EventTables::Tables* EventTables::ownTables(uint16_t serviceId) const {
    const auto key = mOwn.find(serviceId);
    return key == mOwn.end() ? nullptr : &mServices.at(key->second);
}

bool EventTables::hasPresentFollowing(uint16_t serviceId) const {
    const Tables* tables = ownTables(serviceId);
    if (tables == nullptr) return false;
    const auto table = tables->find(kTablePresentActual);
    return table != tables->end() && table->second.isComplete();
}

bool EventTables::hasSchedule(uint16_t serviceId) const {
    const Tables* tables = ownTables(serviceId);
    if (tables == nullptr) return false;
    const auto first = tables->find(kTableScheduleActual);
    if (first == tables->end()) return false;
    const uint8_t last = std::min(first->second.lastTable, kTableScheduleActualLast);
    for (unsigned id = kTableScheduleActual; id <= last; ++id) {
        const auto table = tables->find(static_cast<uint8_t>(id));
        if (table == tables->end() || !table->second.isComplete()) return false;
    }
    return true;
}

std::vector<ServiceEvents> EventTables::services() const {
    std::vector<ServiceEvents> result;
    for (const auto& [key, tables] : mServices) {
        ServiceEvents service;
        service.service = key;
        std::map<uint16_t, GuideEvent> events;
        // The present/following tables have the lowest ids, so their events come first.
        for (const auto& [id, table] : tables) {
            service.actual = service.actual || isActual(id);
            for (const GuideEvent& event : table.events) {
                const auto [known, added] = events.emplace(event.eventId, event);
                if (!added && !isPresentFollowing(id)) complete(known->second, GuideEvent(event));
            }
        }
        for (auto& [id, event] : events) service.events.push_back(std::move(event));
        std::stable_sort(
                service.events.begin(), service.events.end(),
                [](const GuideEvent& a, const GuideEvent& b) { return a.start < b.start; });
        if (!service.events.empty()) result.push_back(std::move(service));
    }
    return result;
}

}  // namespace television
