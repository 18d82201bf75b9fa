// The programme guide.
#include <algorithm>
#include <cstring>
#include <memory>
#include <mutex>

#include "calls.h"
#include "client_text.h"
#include "dvb_text.h"
#include "middleware/event.h"
#include "ratings.h"

namespace television {
namespace {

/** Present events that change at once are told one by one up to this, else as "all". */
constexpr size_t kMostTold = 8;
/** Channels of an active window. */
constexpr size_t kMostWindow = 1024;
/** What a client's buffer holds behind an answer is zeroed, as far as this: a size may be absurd.
 */
constexpr size_t kMostCleared = size_t{64} * 1024;
/** The content identifier types of series, as programme information and broadcasts count them. */
constexpr uint8_t kSeriesTypes[] = {0x02, 0x32};

void clearBehind(uint8_t* to, size_t size, size_t used) {
    if (used < size) std::memset(to + used, 0, std::min(size - used, kMostCleared));
}

int32_t putEventText(uint8_t* to, uint32_t size, const std::string& text) {
    const int32_t result = putText(reinterpret_cast<char*>(to), size, text);
    if (result == TV_OK) {
        clearBehind(to, size, strnlen(reinterpret_cast<const char*>(to), size));
    }
    return result;
}

template <typename Record>
int32_t putRecords(uint8_t* to, uint32_t size, const std::vector<Record>& records) {
    if (!writable(to) || size == 0) return TV_INVALID_ARGUMENT;
    const size_t used = std::min(records.size(), size / sizeof(Record)) * sizeof(Record);
    if (used > 0) std::memcpy(to, records.data(), used);
    clearBehind(to, size, used);
    return TV_OK;
}

/** "age 12 (DEU, AUT)"; empty when the event is not rated. */
std::string guidanceOf(const GuideEvent& event) {
    const uint8_t age = event.minimumAge();
    if (age == 0) return {};
    std::string countries;
    for (const EventRating& rating : event.ratings) {
        if (rating.minimumAge != age || rating.country.empty()) continue;
        countries += (countries.empty() ? "" : ", ") + rating.country;
    }
    const std::string text = "age " + std::to_string(age);
    return countries.empty() ? text : text + " (" + countries + ")";
}

std::string seriesOf(const GuideEvent& event) {
    for (const EventIdentifier& identifier : event.identifiers) {
        const bool series = std::find(std::begin(kSeriesTypes), std::end(kSeriesTypes),
                                      identifier.type) != std::end(kSeriesTypes);
        if (series) return identifier.text;
    }
    return {};
}

std::vector<EVENT_RATING_T> ratingsOf(const GuideEvent& event) {
    std::vector<EVENT_RATING_T> records;
    for (const EventRating& rating : event.ratings) {
        EVENT_RATING_T record = {};
        copyText(record.s_country, rating.country);
        record.ui1_minimum_age = rating.minimumAge;
        records.push_back(record);
    }
    return records;
}

std::vector<EVENT_CONTENT_IDENTIFIER_T> identifiersOf(const GuideEvent& event) {
    std::vector<EVENT_CONTENT_IDENTIFIER_T> records;
    for (const EventIdentifier& identifier : event.identifiers) {
        EVENT_CONTENT_IDENTIFIER_T record = {};
        record.ui1_type = identifier.type;
        copyText(record.s_text, identifier.text);
        records.push_back(record);
    }
    return records;
}

std::vector<EVENT_AUDIO_COMPONENT_T> audioOf(const GuideEvent& event) {
    std::vector<EVENT_AUDIO_COMPONENT_T> records;
    for (const EventAudio& audio : event.audio) {
        EVENT_AUDIO_COMPONENT_T record = {};
        record.ui1_stream_content = audio.streamContent;
        record.ui1_component_type = audio.type;
        record.ui1_component_tag = audio.tag;
        copyText(record.s_language, audio.language);
        copyText(record.s_text, audio.text);
        records.push_back(record);
    }
    return records;
}

/** Three letters in the lower 24 bits. */
uint32_t languageNumber(const std::string& language) {
    uint32_t number = 0;
    for (const char letter : language) number = number << 8 | static_cast<uint8_t>(letter);
    return number;
}

bool hasGenre(const GuideEvent& event, const QORTVAPI_QUERY_FILTER_INFORMATION_T& filter) {
    const size_t count = std::min<size_t>(filter.ui1_genre_count, std::size(filter.aui1_genres));
    return std::any_of(event.contents.begin(), event.contents.end(), [&](uint8_t content) {
        const uint8_t* const end = filter.aui1_genres + count;
        return std::find(filter.aui1_genres, end, content >> 4) != end;
    });
}

/** Answers whether an event passes; its time is looked at by the one who asks. */
bool passes(const GuideEvent& event, uint8_t runningStatus,
            const QORTVAPI_QUERY_FILTER_INFORMATION_T& filter) {
    const auto counts = [&](uint16_t bit) { return (filter.ui2_mask & bit) != 0; };
    if (counts(EVENT_FILTER_RUNNING) && runningStatus != filter.ui1_running_status) return false;
    if (counts(EVENT_FILTER_GENRES) && !hasGenre(event, filter)) return false;
    if (counts(EVENT_FILTER_MAXIMUM_AGE) && event.minimumAge() > filter.ui1_maximum_age) {
        return false;
    }
    return !counts(EVENT_FILTER_DURATION) || event.duration >= filter.ui4_minimum_duration;
}

/** The active window and what queries are limited to. Any thread; nothing is called with its lock
 * held but the guide and the clock. */
class Events {
  public:
    explicit Events(Core& core) : mCore(core) {}

    int32_t setWindow(const uint32_t* channelIds, uint16_t count, int64_t start, int64_t end) {
        if (!writable(channelIds) || count == 0 || count > kMostWindow || start > end) {
            return TV_INVALID_ARGUMENT;
        }
        std::vector<uint32_t> channels(channelIds, channelIds + count);
        for (const uint32_t channel : channels) {
            if (!isChannel(channel)) return TV_NOT_FOUND;
        }
        std::lock_guard<std::mutex> lock(mMutex);
        mChannels = std::move(channels);
        mStart = start;
        mEnd = end;
        return TV_OK;
    }
    int32_t clearWindow() {
        std::lock_guard<std::mutex> lock(mMutex);
        mChannels.clear();
        return TV_OK;
    }
    int32_t windowCount(uint16_t* count) const {
        if (!writable(count)) return TV_INVALID_ARGUMENT;
        std::lock_guard<std::mutex> lock(mMutex);
        *count = static_cast<uint16_t>(mChannels.size());
        return TV_OK;
    }
    int32_t window(uint32_t* channelIds, uint16_t room, int64_t* start, int64_t* end) const {
        if (room > 0 && !writable(channelIds)) return TV_INVALID_ARGUMENT;
        std::lock_guard<std::mutex> lock(mMutex);
        if (mChannels.empty()) return TV_NOT_FOUND;
        std::copy_n(mChannels.begin(), std::min<size_t>(room, mChannels.size()), channelIds);
        put(start, mStart);
        put(end, mEnd);
        return TV_OK;
    }

    int32_t setParameter(const QORTVAPI_EVENT_QUERY_PARAMETER_T* parameter) {
        constexpr uint32_t kSources = EVENT_UPDATE_PRESENT_FOLLOWING | EVENT_UPDATE_SCHEDULE;
        if (!writable(parameter)) return TV_INVALID_ARGUMENT;
        if ((parameter->ui4_sources & ~kSources) != 0) return TV_INVALID_ARGUMENT;
        std::lock_guard<std::mutex> lock(mMutex);
        mParameter = *parameter;
        return TV_OK;
    }

    /** Writes the ids of the events on from `from` to before `to` that `wanted(event)` lets pass,
     * and their start where that is asked for, as far as there is room. */
    template <typename Wanted>
    int32_t query(uint32_t channelId, int64_t from, int64_t to, uint16_t* count, uint16_t* ids,
                  uint32_t* starts, Wanted wanted) const {
        if (!writable(count) || from > to) return TV_INVALID_ARGUMENT;
        const size_t room = *count;
        if (room > 0 && !writable(ids)) return TV_INVALID_ARGUMENT;
        if (!isChannel(channelId)) return TV_NOT_FOUND;
        size_t written = 0;
        const int64_t now = mCore.clock.utcSeconds();
        const Limits limits = currentLimits(channelId, now);
        for (const auto& event : mCore.guide.events(channelId, from, to)) {
            if (written == room) break;
            if (!limits.allow(*event) || !wanted(*event)) continue;
            ids[written] = event->eventId;
            if (writable(starts)) starts[written] = static_cast<uint32_t>(event->start);
            ++written;
        }
        *count = static_cast<uint16_t>(written);
        return TV_OK;
    }

    /** Answers `use(event)`. */
    template <typename Use>
    int32_t with(uint32_t channelId, uint32_t eventId, Use use) const {
        const Guide::EventPointer event = mCore.guide.event(channelId, eventId);
        return event == nullptr ? int32_t{TV_NOT_FOUND} : use(*event);
    }

    int32_t presentOrFollowing(uint32_t channelId, bool following, uint16_t* eventId) const {
        if (!writable(eventId)) return TV_INVALID_ARGUMENT;
        const int64_t now = mCore.clock.utcSeconds();
        const Guide::EventPointer event = following ? mCore.guide.followingEvent(channelId, now)
                                                    : mCore.guide.presentEvent(channelId, now);
        if (event == nullptr) return TV_NOT_FOUND;
        *eventId = event->eventId;
        return TV_OK;
    }

    /** Tells of present and following events that have become others. */
    void tick() {
        std::vector<uint32_t> channels = mCore.guide.advance(mCore.clock.utcSeconds());
        if (channels.size() > kMostTold) channels = {0};
        for (const uint32_t channel : channels) {
            mCore.notifier.post({registration<&a_qortvapi_event_register_callback>(),
                                 EVENT_NFY_UPDATED,
                                 {channel, EVENT_UPDATE_PRESENT_FOLLOWING, 0, 0}});
        }
    }

    Core& core() const { return mCore; }

  private:
    /** What the query parameters let pass, for one channel at one time. */
    struct Limits {
        QORTVAPI_EVENT_QUERY_PARAMETER_T parameter;
        int64_t latest;
        std::optional<uint16_t> present;
        std::optional<uint16_t> following;

        bool allow(const GuideEvent& event) const {
            if (event.start >= latest) return false;
            if (parameter.ui4_language != 0 &&
                parameter.ui4_language != languageNumber(event.language)) {
                return false;
            }
            const uint32_t sources = parameter.ui4_sources;
            if (sources == 0) return true;
            const bool now = event.eventId == present || event.eventId == following;
            return ((sources & EVENT_UPDATE_PRESENT_FOLLOWING) != 0 && now) ||
                   ((sources & EVENT_UPDATE_SCHEDULE) != 0 && event.schedule);
        }
    };

    bool isChannel(uint32_t channelId) const {
        return mCore.read(
                [&](const ChannelLists& lists) { return lists.listOf(channelId) != nullptr; });
    }

    Limits currentLimits(uint32_t channelId, int64_t now) const {
        constexpr int64_t kDay = 86400;
        Limits limits = {};
        {
            std::lock_guard<std::mutex> lock(mMutex);
            limits.parameter = mParameter;
        }
        const uint32_t days = limits.parameter.ui4_days;
        limits.latest = days == 0 ? INT64_MAX : now + days * kDay;
        const auto idOf = [](const Guide::EventPointer& event) {
            return event == nullptr ? std::nullopt : std::optional<uint16_t>(event->eventId);
        };
        limits.present = idOf(mCore.guide.presentEvent(channelId, now));
        limits.following = idOf(mCore.guide.followingEvent(channelId, now));
        return limits;
    }

    Core& mCore;
    mutable std::mutex mMutex;
    std::vector<uint32_t> mChannels;  // guarded by mMutex, as all below; empty: no window
    int64_t mStart = 0;
    int64_t mEnd = 0;
    QORTVAPI_EVENT_QUERY_PARAMETER_T mParameter = {};
};

using EventsPointer = std::shared_ptr<Events>;

void plugWindow(switchboard::Switchboard& board, const EventsPointer& events) {
    board.on<&a_qortvapi_event_setCurrentActiveWindow>(
            [=](const uint32_t* channelIds, uint16_t count, int64_t time) -> int32_t {
                if (time > INT64_MAX - EVENT_ACTIVE_WINDOW_SECONDS) return TV_INVALID_ARGUMENT;
                return events->setWindow(channelIds, count, time,
                                         time + EVENT_ACTIVE_WINDOW_SECONDS);
            });
    board.on<&a_qortvapi_event_setCurrentActiveWindow_Ex>(
            [=](const uint32_t* channelIds, uint16_t count, int64_t start, int64_t end) {
                return events->setWindow(channelIds, count, start, end);
            });
    board.on<&a_qortvapi_event_clear_active_win>([=] { return events->clearWindow(); });
    board.on<&a_qortvapi_event_get_active_win_channel_num>(
            [=](uint16_t* count) { return events->windowCount(count); });
    board.on<&a_qortvapi_event_get_active_win_list>(
            [=](uint32_t* channelIds, uint16_t count, int64_t* start, int64_t* end) {
                return events->window(channelIds, count, start, end);
            });
}

void plugEventQueries(switchboard::Switchboard& board, const EventsPointer& events) {
    board.on<&a_qortvapi_event_set_query_parameter>(
            [=](const QORTVAPI_EVENT_QUERY_PARAMETER_T* parameter) {
                return events->setParameter(parameter);
            });
    board.on<&a_qortvapi_event_query_event_id_by_range>(
            [=](uint32_t channelId, int64_t start, int64_t end, uint16_t* count, uint16_t* ids) {
                return events->query(channelId, start, end, count, ids, nullptr,
                                     [](const GuideEvent&) { return true; });
            });
    board.on<&a_qortvapi_event_query_event_id_by_filter>(
            [=](uint32_t channelId, const QORTVAPI_QUERY_FILTER_INFORMATION_T* wanted,
                uint16_t* count, uint16_t* ids, uint32_t* starts) -> int32_t {
                if (!writable(wanted)) return TV_INVALID_ARGUMENT;
                const QORTVAPI_QUERY_FILTER_INFORMATION_T filter = *wanted;
                const bool timed = (filter.ui2_mask & EVENT_FILTER_TIME) != 0;
                const int64_t now = events->core().clock.utcSeconds();
                return events->query(channelId, timed ? filter.i8_start_time : INT64_MIN,
                                     timed ? filter.i8_end_time : INT64_MAX, count, ids, starts,
                                     [&](const GuideEvent& event) {
                                         const auto record = Guide::record(channelId, event, now);
                                         return passes(event, record.ui1_running_status, filter);
                                     });
            });
    board.on<&a_qortvapi_event_get_pf_event_id>(
            [=](uint32_t channelId, bool following, uint16_t* eventId) {
                return events->presentOrFollowing(channelId, following, eventId);
            });
}

/** Functions that write a text of an event, or TV_NOT_FOUND where `optional` and there is none. */
template <auto Function, typename TextOf>
void plugText(switchboard::Switchboard& board, const EventsPointer& events, bool optional,
              TextOf textOf) {
    board.on<Function>([=](uint32_t channelId, uint32_t eventId, uint8_t* to, uint32_t size) {
        return events->with(channelId, eventId, [&](const GuideEvent& event) -> int32_t {
            const std::string text = textOf(event);
            if (optional && text.empty()) return TV_NOT_FOUND;
            return putEventText(to, size, text);
        });
    });
}

/** Functions that write a list of an event. */
template <auto Function, typename RecordsOf>
void plugList(switchboard::Switchboard& board, const EventsPointer& events, RecordsOf recordsOf) {
    board.on<Function>([=](uint32_t channelId, uint32_t eventId, uint8_t* to, uint32_t size) {
        return events->with(channelId, eventId, [&](const GuideEvent& event) {
            return putRecords(to, size, recordsOf(event));
        });
    });
}

void plugDetails(switchboard::Switchboard& board, const EventsPointer& events) {
    plugText<&a_qortvapi_event_get_details_info>(
            board, events, false, [](const GuideEvent& event) { return event.text; });
    plugText<&a_qortvapi_event_get_details_extend_info>(
            board, events, true, [](const GuideEvent& event) { return event.extended; });
    plugText<&a_qortvapi_event_get_guidance_info>(board, events, true, guidanceOf);
    plugText<&a_qortvapi_event_get_group_info>(board, events, true, seriesOf);
    plugList<&a_qortvapi_event_get_rating_list>(board, events, ratingsOf);
    plugList<&a_qortvapi_event_get_content_identifier>(board, events, identifiersOf);
    plugList<&a_qortvapi_event_get_audio_comp_info>(board, events, audioOf);
    board.on<&a_qortvapi_event_get_general_info>(
            [=](uint32_t channelId, uint32_t eventId, EVENT_GENERAL_INFO_T* info) {
                return events->with(channelId, eventId, [&](const GuideEvent& event) -> int32_t {
                    if (!writable(info)) return TV_INVALID_ARGUMENT;
                    *info = Guide::record(channelId, event, events->core().clock.utcSeconds());
                    return TV_OK;
                });
            });
    board.on<&a_qortvapi_event_get_rating_map>([=](uint32_t channelId, uint32_t eventId,
                                                   RATING_MAP_T* map) {
        return events->with(channelId, eventId,
                            [&](const GuideEvent& event) { return putRatingMap(event, map); });
    });
    board.on<&a_qortvapi_event_check_block>([=](uint32_t channelId, uint32_t eventId) {
        const int32_t blocked = events->with(channelId, eventId, [&](const GuideEvent& event) {
            return ratingBlocks(events->core(), event) ? 1 : 0;
        });
        return blocked == 1 ? 1 : 0;  // an event that is not there is not blocked
    });
}

}  // namespace

void plugEvents(switchboard::Switchboard& board, Core& core) {
    const auto events = std::make_shared<Events>(core);
    core.notifier.onTick([events] { events->tick(); });
    plugWindow(board, events);
    plugEventQueries(board, events);
    plugDetails(board, events);
}

}  // namespace television
