// Queries of the programme guide for the ids of events.
#include <algorithm>
#include <iterator>
#include <memory>
#include <mutex>
#include <optional>

#include "middleware/event.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** Returns the three letters of a language in the lower 24 bits, as query parameters have them. */
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

/** Returns whether an event passes a filter, whose times the caller checks. */
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

/** Queries within the query parameters, which clients set for all of them. Any thread; its lock is
 * held for no other call. */
class EventQueries {
  public:
    /** `core` outlives this. */
    explicit EventQueries(const Core& core) : mCore(core) {}

    int32_t setParameter(const QORTVAPI_EVENT_QUERY_PARAMETER_T* parameter) {
        constexpr uint32_t kSources = EVENT_UPDATE_PRESENT_FOLLOWING | EVENT_UPDATE_SCHEDULE;
        if (!writable(parameter)) return TV_INVALID_ARGUMENT;
        if ((parameter->ui4_sources & ~kSources) != 0) return TV_INVALID_ARGUMENT;
        std::lock_guard<std::mutex> lock(mMutex);
        mParameter = *parameter;
        return TV_OK;
    }

    /** Writes the ids of the events that are on between `from` and `to` (exclusive), are within the
     * query parameters, and for which `wanted(event)` is true. `*count` is the room before and the
     * number written after; `starts` may be null. */
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

  private:
    /** The query parameters applied to one channel at one time. */
    struct Limits {
        QORTVAPI_EVENT_QUERY_PARAMETER_T parameter;
        int64_t latest;                     ///< start of the first event that is too late
        std::optional<uint16_t> present;    ///< event id
        std::optional<uint16_t> following;  ///< event id

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

    const Core& mCore;
    mutable std::mutex mMutex;
    QORTVAPI_EVENT_QUERY_PARAMETER_T mParameter = {};  // guarded by mMutex
};

int32_t presentOrFollowing(const Core& core, uint32_t channelId, bool following,
                           uint16_t* eventId) {
    if (!writable(eventId)) return TV_INVALID_ARGUMENT;
    const int64_t now = core.clock.utcSeconds();
    const Guide::EventPointer event = following ? core.guide.followingEvent(channelId, now)
                                                : core.guide.presentEvent(channelId, now);
    if (event == nullptr) return TV_NOT_FOUND;
    *eventId = event->eventId;
    return TV_OK;
}

}  // namespace

void plugEventQueries(switchboard::Switchboard& board, const Core& core) {
    const auto queries = std::make_shared<EventQueries>(core);
    board.on<&a_qortvapi_event_set_query_parameter>(
            [=](const QORTVAPI_EVENT_QUERY_PARAMETER_T* parameter) {
                return queries->setParameter(parameter);
            });
    board.on<&a_qortvapi_event_query_event_id_by_range>(
            [=](uint32_t channelId, int64_t start, int64_t end, uint16_t* count, uint16_t* ids) {
                return queries->query(channelId, start, end, count, ids, nullptr,
                                      [](const GuideEvent&) { return true; });
            });
    board.on<&a_qortvapi_event_query_event_id_by_filter>(
            [=, &core](uint32_t channelId, const QORTVAPI_QUERY_FILTER_INFORMATION_T* wanted,
                       uint16_t* count, uint16_t* ids, uint32_t* starts) -> int32_t {
                if (!writable(wanted)) return TV_INVALID_ARGUMENT;
                const QORTVAPI_QUERY_FILTER_INFORMATION_T filter = *wanted;
                const bool timed = (filter.ui2_mask & EVENT_FILTER_TIME) != 0;
                const int64_t now = core.clock.utcSeconds();
                return queries->query(channelId, timed ? filter.i8_start_time : INT64_MIN,
                                      timed ? filter.i8_end_time : INT64_MAX, count, ids, starts,
                                      [&](const GuideEvent& event) {
                                          const auto record = Guide::record(channelId, event, now);
                                          return passes(event, record.ui1_running_status, filter);
                                      });
            });
    board.on<&a_qortvapi_event_get_pf_event_id>(
            [&core](uint32_t channelId, bool following, uint16_t* eventId) {
                return presentOrFollowing(core, channelId, following, eventId);
            });
}

}  // namespace television
