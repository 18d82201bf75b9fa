#include "guide_sections.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>

#include "calendar.h"
#include "event_plan.h"
#include "stream_writer.h"

namespace stream_generator {
namespace {

using Bytes = std::vector<uint8_t>;
using television::bcdFromSeconds;
using television::kSecondsOfDay;

constexpr uint16_t kPidEit = 0x12;
constexpr uint16_t kPidTdt = 0x14;
constexpr size_t kLongestSection = 4096;
constexpr int64_t kSegmentSeconds = 3 * 3600;
constexpr unsigned kSectionsOfSegment = 8;
constexpr unsigned kSegmentsOfTable = 32;
constexpr uint8_t kNotRunning = 1;
constexpr uint8_t kRunning = 4;

void put16(Bytes& out, unsigned value) {
    out.push_back(static_cast<uint8_t>(value >> 8));
    out.push_back(static_cast<uint8_t>(value));
}

void put24(Bytes& out, uint32_t value) {
    out.push_back(static_cast<uint8_t>(value >> 16));
    put16(out, value & 0xFFFF);
}

void putTime(Bytes& out, int64_t time) {
    const int64_t day = television::floorDivide(time, kSecondsOfDay);
    put16(out, static_cast<unsigned>(day + television::kMjdOfEpoch));
    put24(out, bcdFromSeconds(static_cast<uint32_t>(time - day * kSecondsOfDay)));
}

/** A text with its length in front. */
void putText(Bytes& out, const std::string& text, const std::string& service) {
    if (text.size() > 255) {
        throw std::invalid_argument(
                fmt::format("{}: a text of its guide is too long for its field", service));
    }
    out.push_back(static_cast<uint8_t>(text.size()));
    out.insert(out.end(), text.begin(), text.end());
}

void putCode(Bytes& out, const std::string& code) {
    out.insert(out.end(), code.begin(), code.begin() + 3);
}

void putDescriptor(Bytes& out, uint8_t tag, const Bytes& content, const std::string& service) {
    if (content.size() > 255) {
        throw std::invalid_argument(
                fmt::format("{}: an event of its guide is too long for its descriptor", service));
    }
    out.push_back(tag);
    out.push_back(static_cast<uint8_t>(content.size()));
    out.insert(out.end(), content.begin(), content.end());
}

/** Writes the section's length and adds the checksum of ISO/IEC 13818-1. */
void finish(Bytes& section) {
    const size_t length = section.size() + 4 - 3;
    section[1] = static_cast<uint8_t>((section[1] & 0xF0u) | length >> 8);
    section[2] = static_cast<uint8_t>(length);
    uint32_t crc = 0xFFFFFFFF;
    for (const uint8_t byte : section) {
        crc ^= uint32_t{byte} << 24;
        for (int bit = 0; bit < 8; ++bit) crc = (crc << 1) ^ ((crc >> 31) != 0 ? 0x04C11DB7u : 0u);
    }
    put16(section, crc >> 16);
    put16(section, crc & 0xFFFF);
}

/** 01:00 UTC on the last Sunday of a month. */
int64_t changeOf(int64_t year, unsigned month) {
    const int64_t last = television::daysFromDate({year, month, 31});
    return (last - television::dayOfWeek(last)) * kSecondsOfDay + 3600;
}

/** Parts of a text that fit into a descriptor each, cut between characters. */
std::vector<std::string> partsOf(const std::string& text, size_t most) {
    std::vector<std::string> parts;
    for (size_t at = 0; at < text.size();) {
        size_t end = std::min(text.size(), at + most);
        while (end < text.size() && (static_cast<uint8_t>(text[end]) & 0xC0) == 0x80) --end;
        parts.push_back(text.substr(at, end - at));
        at = end;
    }
    return parts;
}

void putDetails(Bytes& out, const EventPlan& event, const ServicePlan& service) {
    constexpr size_t kPart = 100;  // bytes of UTF-8: the two-byte tables need twice as many
    std::vector<std::string> parts = partsOf(event.details, kPart);
    if (!event.items.empty()) parts.insert(parts.begin(), std::string());  // they fill one alone
    for (size_t i = 0; i < parts.size(); ++i) {
        Bytes content = {static_cast<uint8_t>(i << 4 | (parts.size() - 1))};
        putCode(content, event.language);
        Bytes items;
        if (i == 0) {
            for (const auto& [name, value] : event.items) {
                putText(items, encodeText(name, service.table), service.name);
                putText(items, encodeText(value, service.table), service.name);
            }
        }
        putText(content, std::string(items.begin(), items.end()), service.name);
        putText(content, encodeText(parts[i], service.table), service.name);
        putDescriptor(out, 0x4E, content, service.name);
    }
}

void putIdentifiers(Bytes& out, const EventPlan& event, const ServicePlan& service) {
    constexpr uint8_t kItem = 0x31;
    constexpr uint8_t kSeries = 0x32;
    Bytes content;
    for (const auto& [type, text] : {std::make_pair(kItem, event.item), {kSeries, event.series}}) {
        if (text.empty()) continue;
        content.push_back(static_cast<uint8_t>(type << 2));
        putText(content, text, service.name);
    }
    if (!content.empty()) putDescriptor(out, 0x76, content, service.name);
}

Bytes descriptorsOf(const EventPlan& event, const ServicePlan& service) {
    Bytes out;
    Bytes content;
    putCode(content, event.language);
    putText(content, encodeText(event.title, service.table), service.name);
    putText(content, encodeText(event.text, service.table), service.name);
    putDescriptor(out, 0x4D, content, service.name);
    putDetails(out, event, service);
    putDescriptor(out, 0x54, {event.genre, 0x00}, service.name);
    if (event.age > 0) {
        content.clear();
        for (const char* country : {"DEU", "GBR"}) {
            putCode(content, country);
            content.push_back(static_cast<uint8_t>(event.age - 3));
        }
        putDescriptor(out, 0x55, content, service.name);
    }
    uint8_t tag = 1;
    for (const std::string& language : service.audioLanguages) {
        content = {0xF2, 0x03, tag++};  // MPEG audio, stereo
        putCode(content, language);
        putDescriptor(out, 0x50, content, service.name);
    }
    putIdentifiers(out, event, service);
    return out;
}

Bytes entryOf(const EventPlan& event, const ServicePlan& service, uint8_t runningStatus) {
    const Bytes descriptors = descriptorsOf(event, service);
    Bytes entry;
    put16(entry, event.eventId);
    putTime(entry, event.start);
    put24(entry, bcdFromSeconds(event.duration));
    put16(entry, static_cast<unsigned>(runningStatus << 13 | (service.scrambled ? 0x1000 : 0) |
                                       static_cast<unsigned>(descriptors.size())));
    entry.insert(entry.end(), descriptors.begin(), descriptors.end());
    return entry;
}

/** A section in the making: its number and entries. */
struct Draft {
    uint8_t number = 0;
    uint8_t segmentLast = 0;
    Bytes entries;
};

/** Room for entries: all but the header and the checksum. */
constexpr size_t kRoom = kLongestSection - 14 - 4;

class Tables {
  public:
    Tables(const MultiplexPlan& plan, std::vector<RawSection>& out) : mPlan(plan), mOut(out) {}

    void presentFollowing(const ServicePlan& service, uint8_t tableId,
                          const std::vector<EventPlan>& events) {
        std::vector<Draft> drafts(2);
        for (uint8_t i = 0; i < 2; ++i) {
            drafts[i].number = i;
            drafts[i].segmentLast = 1;
            if (i < events.size()) {
                drafts[i].entries = entryOf(events[i], service, i == 0 ? kRunning : kNotRunning);
            }
        }
        write(service, tableId, tableId, drafts);
    }

    void schedule(const ServicePlan& service, const std::vector<EventPlan>& events) {
        const int64_t midnight = television::floorDivide(mPlan.time, kSecondsOfDay) * kSecondsOfDay;
        std::vector<std::vector<const EventPlan*>> segments;
        for (const EventPlan& event : events) {
            const auto segment = static_cast<size_t>((event.start - midnight) / kSegmentSeconds);
            if (segment >= segments.size()) segments.resize(segment + 1);
            segments[segment].push_back(&event);
        }
        const size_t tables = (segments.size() + kSegmentsOfTable - 1) / kSegmentsOfTable;
        const auto last = static_cast<uint8_t>(0x50 + tables - 1);
        for (size_t table = 0; table < tables; ++table) {
            std::vector<Draft> drafts;
            const size_t end = std::min(segments.size(), (table + 1) * kSegmentsOfTable);
            for (size_t i = table * kSegmentsOfTable; i < end; ++i) {
                addSegment(service, segments[i], i % kSegmentsOfTable, drafts);
            }
            write(service, static_cast<uint8_t>(0x50 + table), last, drafts);
        }
    }

  private:
    static void addSegment(const ServicePlan& service, const std::vector<const EventPlan*>& events,
                           size_t segment, std::vector<Draft>& drafts) {
        const size_t first = drafts.size();
        const auto number = static_cast<uint8_t>(segment * kSectionsOfSegment);
        drafts.push_back({number, 0, {}});
        for (const EventPlan* event : events) {
            const Bytes entry = entryOf(*event, service, kNotRunning);
            if (drafts.back().entries.size() + entry.size() > kRoom) {
                const size_t next = drafts.size() - first;
                if (next == kSectionsOfSegment) {
                    throw std::invalid_argument(
                            fmt::format("{}: too many events in three hours", service.name));
                }
                drafts.push_back({static_cast<uint8_t>(number + next), 0, {}});
            }
            Bytes& entries = drafts.back().entries;
            entries.insert(entries.end(), entry.begin(), entry.end());
        }
        for (size_t i = first; i < drafts.size(); ++i) drafts[i].segmentLast = drafts.back().number;
    }

    void write(const ServicePlan& service, uint8_t tableId, uint8_t lastTableId,
               const std::vector<Draft>& drafts) {
        for (const Draft& draft : drafts) {
            Bytes section = {tableId, 0xF0, 0};
            put16(section, service.serviceId);
            section.push_back(0xC3);  // version 1, in force
            section.push_back(draft.number);
            section.push_back(drafts.back().number);
            put16(section, mPlan.transportStreamId);
            put16(section, mPlan.originalNetworkId);
            section.push_back(draft.segmentLast);
            section.push_back(lastTableId);
            section.insert(section.end(), draft.entries.begin(), draft.entries.end());
            finish(section);
            mOut.push_back({kPidEit, std::move(section)});
        }
    }

    const MultiplexPlan& mPlan;
    std::vector<RawSection>& mOut;
};

void addServices(const MultiplexPlan& plan, bool actual, std::vector<RawSection>& out) {
    Tables tables(plan, out);
    for (const ServicePlan& service : plan.services) {
        const std::vector<EventPlan> events = eventPlans(service, plan.time, plan.guideHours);
        if (events.empty()) continue;
        tables.presentFollowing(service, actual ? 0x4E : 0x4F, events);
        if (actual) tables.schedule(service, events);
    }
}

}  // namespace

std::vector<RawSection> timeSections(int64_t time) {
    const int64_t year =
            television::dateFromDays(television::floorDivide(time, kSecondsOfDay)).year;
    const std::array<int64_t, 3> changes = {changeOf(year, 3), changeOf(year, 10),
                                            changeOf(year + 1, 3)};
    const auto next = std::upper_bound(changes.begin(), changes.end(), time);
    const bool summer = next == changes.begin() + 1;
    Bytes tdt = {0x70, 0x70, 0x05};
    putTime(tdt, time);
    Bytes tot = {0x73, 0x70, 0x00};
    putTime(tot, time);
    put16(tot, 0xF000 | 15);
    tot.insert(tot.end(), {0x58, 13, 'D', 'E', 'U', 0x02});  // the only region, east of Greenwich
    put16(tot, summer ? 0x0200 : 0x0100);
    putTime(tot, *next);
    put16(tot, summer ? 0x0100 : 0x0200);
    finish(tot);
    return {{kPidTdt, std::move(tdt)}, {kPidTdt, std::move(tot)}};
}

std::vector<RawSection> eventSections(const MultiplexPlan& plan,
                                      const std::vector<MultiplexPlan>& network) {
    std::vector<RawSection> out;
    addServices(plan, true, out);
    for (const MultiplexPlan& other : network) {
        if (other.networkId == plan.networkId &&
            other.transportStreamId != plan.transportStreamId) {
            addServices(other, false, out);
        }
    }
    return out;
}

}  // namespace stream_generator
