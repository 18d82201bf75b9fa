#include "television/generator/guide_sections.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>

#include "television/base/calendar.h"
#include "television/generator/event_entry.h"
#include "television/generator/event_plan.h"

namespace stream_generator {
namespace {

using television::kSecondsOfDay;

constexpr uint16_t kPidEit = 0x12;
constexpr size_t kLongestSection = 4096;
constexpr int64_t kSegmentSeconds = 3 * 3600;
constexpr unsigned kSectionsOfSegment = 8;
constexpr unsigned kSegmentsOfTable = 32;
// Running status.
constexpr uint8_t kNotRunning = 1;
constexpr uint8_t kRunning = 4;

/** A section that is being filled. */
struct Draft {
    uint8_t number = 0;
    uint8_t segmentLast = 0;  ///< number of the last section of its segment
    Bytes entries;
};

/** Bytes that a section has for entries: all but the header and the checksum. */
constexpr size_t kRoom = kLongestSection - 14 - 4;

/** Writes the event tables of one plan's services. */
class Tables {
  public:
    /** Appends the sections to `out`, which must outlive this like the plan. */
    Tables(const MultiplexPlan& plan, std::vector<RawSection>& out) : mPlan(plan), mOut(out) {}

    void presentFollowing(const ServicePlan& service, uint8_t tableId,
                          const std::vector<EventPlan>& events) {
        std::vector<Draft> drafts(2);
        for (uint8_t i = 0; i < 2; ++i) {
            drafts[i].number = i;
            drafts[i].segmentLast = 1;
            if (i < events.size()) {
                drafts[i].entries = eventEntry(events[i], service, i == 0 ? kRunning : kNotRunning);
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
    /** Spreads the events of one segment over as many sections as they need. `segment`: its number
     * in the table. */
    static void addSegment(const ServicePlan& service, const std::vector<const EventPlan*>& events,
                           size_t segment, std::vector<Draft>& drafts) {
        const size_t first = drafts.size();
        const auto number = static_cast<uint8_t>(segment * kSectionsOfSegment);
        drafts.push_back({number, 0, {}});
        for (const EventPlan* event : events) {
            const Bytes entry = eventEntry(*event, service, kNotRunning);
            if (drafts.back().entries.size() + entry.size() > kRoom) {
                const size_t next = drafts.size() - first;
                if (next == kSectionsOfSegment) {
                    throw std::invalid_argument(
                            fmt::format("{}: too many events in three hours", service.name));
                }
                drafts.push_back({static_cast<uint8_t>(number + next), 0, {}});
            }
            putBytes(drafts.back().entries, entry);
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
            putBytes(section, draft.entries);
            finishSection(section);
            mOut.push_back({kPidEit, std::move(section)});
        }
    }

    const MultiplexPlan& mPlan;
    std::vector<RawSection>& mOut;
};

/** `actual`: the tables go into the plan's own stream, and have its schedule too. */
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
