#include "television/lists/guide.h"

#include <algorithm>
#include <utility>

#include "television/stream/dvb_text.h"

namespace television {
namespace {

// Running status, as in the event information table.
constexpr uint8_t kNotRunning = 1;
constexpr uint8_t kPausing = 3;
constexpr uint8_t kRunning = 4;
constexpr uint8_t kOffAir = 5;

bool startsBefore(const GuideEvent& a, const GuideEvent& b) {
    return std::tie(a.start, a.eventId) < std::tie(b.start, b.eventId);
}

/** The first of the events that start after a time. */
Guide::Schedule::const_iterator firstAfter(const Guide::Schedule& schedule, int64_t time) {
    return std::upper_bound(schedule.begin(), schedule.end(), time,
                            [](int64_t t, const GuideEvent& event) { return t < event.start; });
}

/** Of the events that are on, the one that began last; null when none is on. */
const GuideEvent* presentOf(const Guide::Schedule& schedule, int64_t now) {
    for (auto event = firstAfter(schedule, now); event != schedule.begin();) {
        --event;
        if (event->isAt(now)) return &*event;
    }
    return nullptr;
}

/** The first event that starts after `now`; null when there is none. */
const GuideEvent* followingOf(const Guide::Schedule& schedule, int64_t now) {
    const auto event = firstAfter(schedule, now);
    return event == schedule.end() ? nullptr : &*event;
}

/** -1 for null. */
int32_t idOf(const GuideEvent* event) {
    return event == nullptr ? -1 : event->eventId;
}

/** A recorded stream says for ever that the same event is running, so the clock decides. Only that
 * the event is pausing or off the air is taken from the stream. */
uint8_t runningStatus(const GuideEvent& event, int64_t now) {
    if (!event.isAt(now)) return kNotRunning;
    const uint8_t status = event.runningStatus;
    return status == kPausing || status == kOffAir ? status : kRunning;
}

std::map<uint32_t, ServiceKey> servicesByChannel(const ChannelLists& lists) {
    std::map<uint32_t, ServiceKey> channels;
    for (const ChannelList& list : lists.lists) {
        for (const Service& service : list.services) {
            const SVL_REC_T& record = service.record;
            channels[record.ui4_channel_id] = {record.ui2_original_network_id,
                                               record.ui2_transport_stream_id,
                                               record.ui2_service_id};
        }
    }
    return channels;
}

}  // namespace

bool Guide::load(const ChannelLists& lists, const ScanResult& scan) {
    std::map<uint32_t, ServiceKey> channels = servicesByChannel(lists);
    const std::lock_guard<std::mutex> loading(mLoading);
    std::map<std::string, StreamEvents> streams;
    if (scan.folderRead) {
        for (const ParsedMultiplex& multiplex : scan.multiplexes) {
            if (multiplex.events != nullptr) streams[multiplex.source] = multiplex.events;
        }
        for (const auto& [source, events] : mStreams) {
            if (scan.unreadable.count(source) != 0) streams.emplace(source, events);
        }
    } else {
        streams = mStreams;
    }
    if (streams == mStreams && channels == mChannels) return false;
    mStreams = std::move(streams);
    mChannels = std::move(channels);
    auto made = std::make_shared<const Contents>(gather());
    const std::lock_guard<std::mutex> lock(mMutex);
    mContents = std::move(made);
    return true;
}

/** The schedules of the channels from all streams. With mLoading held. */
Guide::Contents Guide::gather() const {
    std::map<ServiceKey, std::vector<SchedulePointer>> sourcesOfServices;
    for (const auto& [source, services] : mStreams) {
        for (const ServiceEvents& service : *services) {
            auto& sources = sourcesOfServices[service.service];
            // The schedule in the service's own stream comes first.
            sources.insert(service.actual ? sources.begin() : sources.end(),
                           SchedulePointer(services, &service.events));
        }
    }
    std::map<ServiceKey, SchedulePointer> schedules;
    for (const auto& [service, sources] : sourcesOfServices) schedules[service] = merged(sources);
    Contents contents;
    for (const auto& [channel, service] : mChannels) {
        const auto schedule = schedules.find(service);
        if (schedule != schedules.end()) contents[channel] = schedule->second;
    }
    return contents;
}

/** The events of the first schedule, and those of the others whose ids it does not have. */
Guide::SchedulePointer Guide::merged(const std::vector<SchedulePointer>& sources) {
    if (sources.size() == 1) return sources.front();
    Schedule all = *sources.front();
    std::unordered_set<uint16_t> known;
    for (const GuideEvent& event : all) known.insert(event.eventId);
    for (size_t i = 1; i < sources.size(); ++i) {
        for (const GuideEvent& event : *sources[i]) {
            if (known.insert(event.eventId).second) all.push_back(event);
        }
    }
    std::sort(all.begin(), all.end(), startsBefore);
    return std::make_shared<const Schedule>(std::move(all));
}

Guide::SchedulePointer Guide::schedule(uint32_t channelId) const {
    static const auto empty = std::make_shared<const Schedule>();
    std::shared_ptr<const Contents> contents;
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        contents = mContents;
    }
    const auto found = contents->find(channelId);
    return found == contents->end() ? empty : found->second;
}

Guide::EventPointer Guide::presentEvent(uint32_t channelId, int64_t now) const {
    const SchedulePointer all = schedule(channelId);
    return EventPointer(all, presentOf(*all, now));
}

Guide::EventPointer Guide::followingEvent(uint32_t channelId, int64_t now) const {
    const SchedulePointer all = schedule(channelId);
    return EventPointer(all, followingOf(*all, now));
}

Guide::EventPointer Guide::event(uint32_t channelId, uint32_t eventId) const {
    const SchedulePointer all = schedule(channelId);
    const auto found = std::find_if(all->begin(), all->end(), [&](const GuideEvent& event) {
        return event.eventId == eventId;
    });
    return EventPointer(all, found == all->end() ? nullptr : &*found);
}

std::vector<Guide::EventPointer> Guide::events(uint32_t channelId, int64_t from, int64_t to) const {
    const SchedulePointer all = schedule(channelId);
    std::vector<EventPointer> result;
    for (const GuideEvent& event : *all) {
        const bool on = from == to ? event.isAt(from) : event.start < to && event.end() > from;
        if (on) result.emplace_back(all, &event);
    }
    return result;
}

std::optional<EVENT_GENERAL_INFO_T> Guide::present(uint32_t channelId, int64_t now) const {
    const EventPointer event = presentEvent(channelId, now);
    if (event == nullptr) return std::nullopt;
    return record(channelId, *event, now);
}

std::optional<EVENT_GENERAL_INFO_T> Guide::following(uint32_t channelId, int64_t now) const {
    const EventPointer event = followingEvent(channelId, now);
    if (event == nullptr) return std::nullopt;
    return record(channelId, *event, now);
}

EVENT_GENERAL_INFO_T Guide::record(uint32_t channelId, const GuideEvent& event, int64_t now) {
    EVENT_GENERAL_INFO_T record = {};
    record.ui4_channel_id = channelId;
    record.ui2_event_id = event.eventId;
    record.ui1_running_status = runningStatus(event, now);
    record.ui1_free_ca_mode = event.scrambled ? 1 : 0;
    record.i8_start_time = event.start;
    record.ui4_duration = event.duration;
    record.ui1_content = event.contents.empty() ? 0 : event.contents.front();
    record.ui1_minimum_age = event.minimumAge();
    record.ui1_has_details = event.extended.empty() ? 0 : 1;
    record.ui1_table_version = event.tableVersion;
    copyText(record.s_language, event.language);
    copyText(record.s_title, event.title);
    copyText(record.s_text, event.text.empty() ? event.extended : event.text);
    return record;
}

std::vector<uint32_t> Guide::advance(int64_t now) {
    std::shared_ptr<const Contents> contents;
    {
        const std::lock_guard<std::mutex> lock(mMutex);
        contents = mContents;
    }
    const std::lock_guard<std::mutex> lock(mAdvancing);
    const bool loaded = contents != mAdvanced;
    if (!loaded && now >= mLast && now < mNext) return {};
    std::vector<uint32_t> changed;
    std::unordered_map<uint32_t, std::pair<int32_t, int32_t>> on;
    mNext = INT64_MAX;
    for (const auto& [channel, schedule] : *contents) {
        const auto ids =
                std::make_pair(idOf(presentOf(*schedule, now)), idOf(followingOf(*schedule, now)));
        on[channel] = ids;
        if (!loaded && mOn[channel] != ids) changed.push_back(channel);
        for (const GuideEvent& event : *schedule) {
            for (const int64_t edge : {event.start, event.end()}) {
                if (edge > now) mNext = std::min(mNext, edge);
            }
        }
    }
    mOn = std::move(on);
    mAdvanced = std::move(contents);
    mLast = now;
    std::sort(changed.begin(), changed.end());
    return changed;
}

}  // namespace television
