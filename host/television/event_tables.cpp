#include "event_tables.h"

#include <algorithm>
#include <utility>

#include "calendar.h"
#include "descriptors.h"
#include "dvb_text.h"

namespace television {
namespace {

constexpr uint8_t kTablePresentActual = 0x4E;
constexpr uint8_t kTablePresentOther = 0x4F;
constexpr uint8_t kTableScheduleActual = 0x50;
constexpr uint8_t kTableScheduleActualLast = 0x5F;

constexpr size_t kPayloadHeader = 6;
constexpr size_t kEventHeader = 12;
constexpr unsigned kSegment = 8;

constexpr bool isPresentFollowing(uint8_t tableId) {
    return tableId == kTablePresentActual || tableId == kTablePresentOther;
}
constexpr bool isActual(uint8_t tableId) {
    return tableId == kTablePresentActual ||
           (tableId >= kTableScheduleActual && tableId <= kTableScheduleActualLast);
}

/** A code of three letters; empty when it is none. */
std::string codeOf(ByteView content, size_t at) {
    std::string code;
    for (size_t i = 0; i < 3; ++i) {
        const auto c = static_cast<char>(content.u8(at + i));
        if ((c < 'a' || c > 'z') && (c < 'A' || c > 'Z')) return {};
        code += c;
    }
    return code;
}

/** The parts of the details, which come in up to sixteen numbered descriptors. */
class ExtendedText {
  public:
    void take(ByteView content) {
        const std::string language = codeOf(content, 1);
        if (mParts.empty()) mLanguage = language;
        if (language != mLanguage) return;
        Part part;
        const size_t itemBytes = content.u8(4);
        ByteView items = content.part(5, itemBytes);
        while (!items.empty()) {
            const size_t nameBytes = items.u8(0);
            const size_t valueBytes = items.u8(1 + nameBytes);
            part.items.emplace_back(dvbTextToUtf8(items.part(1, nameBytes)),
                                    dvbTextToUtf8(items.part(2 + nameBytes, valueBytes)));
            items = items.from(2 + nameBytes + valueBytes);
        }
        part.text = dvbTextToUtf8(content.part(6 + itemBytes, content.u8(5 + itemBytes)));
        mParts.emplace(content.u8(0) >> 4, std::move(part));
    }

    std::string joined() const {
        std::string text;
        for (const auto& [number, part] : mParts) {
            for (const auto& [name, value] : part.items) {
                // Without a name it goes on where the item before ended.
                if (!name.empty()) text += (text.empty() ? "" : "\n") + name + ": ";
                text += value;
            }
        }
        bool first = !text.empty();
        for (const auto& [number, part] : mParts) {
            if (first && !part.text.empty()) text += '\n';
            first = first && part.text.empty();
            text += part.text;
        }
        return text;
    }

  private:
    struct Part {
        std::vector<std::pair<std::string, std::string>> items;
        std::string text;
    };
    std::string mLanguage;
    std::map<unsigned, Part> mParts;  ///< by number
};

void readShortEvent(ByteView content, GuideEvent& event) {
    if (!event.title.empty()) return;  // the first language
    event.language = codeOf(content, 0);
    const size_t titleBytes = content.u8(3);
    event.title = dvbTextToUtf8(content.part(4, titleBytes));
    event.text = dvbTextToUtf8(content.part(5 + titleBytes, content.u8(4 + titleBytes)));
}

void readContents(ByteView content, GuideEvent& event) {
    for (size_t at = 0; at + 2 <= content.size(); at += 2) {
        if (event.contents.size() < EventTables::kMostOfEach)
            event.contents.push_back(content.u8(at));
    }
}

void readRatings(ByteView content, GuideEvent& event) {
    constexpr uint8_t kHighestAge = 0x0F;
    constexpr uint8_t kLowestAge = 4;
    for (size_t at = 0; at + 4 <= content.size(); at += 4) {
        if (event.ratings.size() >= EventTables::kMostOfEach) return;
        const uint8_t rating = content.u8(at + 3);
        const bool isAge = rating >= 1 && rating <= kHighestAge;
        event.ratings.push_back(
                {codeOf(content, at), static_cast<uint8_t>(isAge ? rating + kLowestAge - 1 : 0)});
    }
}

void readComponent(ByteView content, GuideEvent& event) {
    constexpr uint8_t kAudio[] = {0x2, 0x4, 0x6, 0x7};  // MPEG, AC-3, AAC, DTS
    const uint8_t stream = content.u8(0) & 0x0F;
    if (std::find(std::begin(kAudio), std::end(kAudio), stream) == std::end(kAudio)) return;
    if (content.size() < 6 || event.audio.size() >= EventTables::kMostOfEach) return;
    event.audio.push_back({stream, content.u8(1), content.u8(2), codeOf(content, 3),
                           dvbTextToUtf8(content.from(6))});
}

void readIdentifiers(ByteView content, GuideEvent& event) {
    constexpr uint8_t kHere = 0;       // where the text is: in the descriptor,
    constexpr uint8_t kElsewhere = 1;  // or in another table
    while (!content.empty()) {
        const uint8_t location = content.u8(0) & 0x03;
        if (location == kElsewhere) {
            content = content.from(3);
            continue;
        }
        if (location != kHere || event.identifiers.size() >= EventTables::kMostOfEach) return;
        std::string text;
        for (size_t i = 0; i < content.u8(1); ++i) {
            const uint8_t c = content.u8(2 + i);
            if (c > 0x20 && c < 0x7F) text += static_cast<char>(c);
        }
        event.identifiers.push_back({static_cast<uint8_t>(content.u8(0) >> 2), std::move(text)});
        content = content.from(2u + content.u8(1));
    }
}

void readDescriptors(ByteView loop, GuideEvent& event) {
    ExtendedText extended;
    while (!loop.empty()) {
        const ByteView content = loop.part(2, loop.u8(1));
        switch (loop.u8(0)) {
            case kDescriptorShortEvent:
                readShortEvent(content, event);
                break;
            case kDescriptorExtendedEvent:
                extended.take(content);
                break;
            case kDescriptorComponent:
                readComponent(content, event);
                break;
            case kDescriptorContent:
                readContents(content, event);
                break;
            case kDescriptorParentalRating:
                readRatings(content, event);
                break;
            case kDescriptorContentIdentifier:
                readIdentifiers(content, event);
                break;
            default:
                break;
        }
        loop = loop.from(2u + loop.u8(1));
    }
    event.extended = extended.joined();
}

size_t textBytes(const GuideEvent& event) {
    size_t bytes = event.title.size() + event.text.size() + event.extended.size();
    for (const EventAudio& audio : event.audio) bytes += audio.text.size();
    for (const EventIdentifier& identifier : event.identifiers) bytes += identifier.text.size();
    return bytes;
}

/** Gives an event of the present/following table what only the schedule tells of it. */
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

bool EventTables::Table::complete() const {
    for (unsigned first = 0; first <= lastNumber; first += kSegment) {
        bool any = false;
        const unsigned last = std::max<unsigned>(first, segmentLast[first / kSegment]);
        for (unsigned number = first; number <= last; ++number) {
            if (!seen[number]) return false;
            any = true;
        }
        if (!any) return false;
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
    // Nonsense here does no more than that the table is taken for incomplete or complete too early.
    const uint8_t segmentLast = payload.u8(4);
    const bool inSegment = segmentLast / kSegment == section.number / kSegment;
    table.segmentLast[section.number / kSegment] = inSegment ? segmentLast : section.number;
    table.lastTable = payload.u8(5);
    size_t others = 0;
    for (const auto& [id, other] : tables) others += other.events.size();
    addEvents(table, others, section, payload.from(kPayloadHeader));
}

/** `others`: events of the service so far. */
void EventTables::addEvents(Table& table, size_t others, const EventSection& section,
                            ByteView entries) {
    for (; !entries.empty(); ++others) {
        if (others >= kMostEvents || mTextBytes >= kMostTextBytes) return;
        const size_t descriptorBytes = entries.u16(10) & 0x0FFFu;
        const auto start = secondsFromMjd(entries.u16(2), entries.u32(4) >> 8);
        const auto duration = secondsFromBcd(entries.u32(7) >> 8, 99);
        if (start && duration) {  // else it only refers to another event
            GuideEvent event;
            event.eventId = entries.u16(0);
            event.start = *start;
            event.duration = *duration;
            event.runningStatus = entries.u8(10) >> 5;
            event.scrambled = (entries.u8(10) & 0x10) != 0;
            event.tableVersion = section.version;
            event.presentFollowing = isPresentFollowing(section.tableId);
            event.schedule = !event.presentFollowing;
            readDescriptors(entries.part(kEventHeader, descriptorBytes), event);
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
    return table != tables->end() && table->second.complete();
}

bool EventTables::hasSchedule(uint16_t serviceId) const {
    const Tables* tables = ownTables(serviceId);
    if (tables == nullptr) return false;
    const auto first = tables->find(kTableScheduleActual);
    if (first == tables->end()) return false;
    const uint8_t last = std::min(first->second.lastTable, kTableScheduleActualLast);
    for (unsigned id = kTableScheduleActual; id <= last; ++id) {
        const auto table = tables->find(static_cast<uint8_t>(id));
        if (table == tables->end() || !table->second.complete()) return false;
    }
    return true;
}

std::vector<ServiceEvents> EventTables::services() const {
    std::vector<ServiceEvents> result;
    for (const auto& [key, tables] : mServices) {
        ServiceEvents service;
        service.service = key;
        std::map<uint16_t, GuideEvent> events;
        // Present and following have the lowest table ids, so they come first.
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
