/** The programme guide: the events of all channels, from whichever stream told them. */
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "guide_event.h"
#include "lists.h"
#include "middleware/event.h"
#include "stream_folder.h"

namespace television {

/**
 * Events by channel id. Which event is present follows the clock that the caller reads, since a
 * stream in a folder tells the same for ever. Any thread: the events never change once loaded, and
 * a lock guards no more than the pointer to them, so nobody waits for a load.
 */
class Guide {
  public:
    /** One event; keeps the guide that it is in alive. */
    using EventPointer = std::shared_ptr<const GuideEvent>;

    /** Takes over what a scan found, for the channels of the lists. What unreadable files told
     * stays. Answers whether anything changed. */
    bool load(const ChannelLists& lists, const ScanResult& scan);

    /** The event that is on at `now` (UTC seconds); null when none is. */
    EventPointer presentEvent(uint32_t channelId, int64_t now) const;
    /** The first event that begins after `now`. */
    EventPointer followingEvent(uint32_t channelId, int64_t now) const;
    EventPointer event(uint32_t channelId, uint32_t eventId) const;
    /** The events that are on at any time of `from` to before `to`, in order of their start; one
     * moment when both are the same. */
    std::vector<EventPointer> events(uint32_t channelId, int64_t from, int64_t to) const;

    /** The same as records. */
    std::optional<EVENT_GENERAL_INFO_T> present(uint32_t channelId, int64_t now) const;
    std::optional<EVENT_GENERAL_INFO_T> following(uint32_t channelId, int64_t now) const;
    /** The record of an event; what is running is told by `now`. */
    static EVENT_GENERAL_INFO_T record(uint32_t channelId, const GuideEvent& event, int64_t now);

    /** The channels whose present or following event has become another since the call before;
     * cheap while none has. The first call after a load answers none. */
    std::vector<uint32_t> advance(int64_t now);

    using Schedule = std::vector<GuideEvent>;  ///< by start, then event id

  private:
    using SchedulePointer = std::shared_ptr<const Schedule>;
    using Contents = std::unordered_map<uint32_t, SchedulePointer>;  ///< by channel id
    using Told = std::shared_ptr<const std::vector<ServiceEvents>>;

    Contents gather() const;
    static SchedulePointer merged(const std::vector<SchedulePointer>& sources);
    SchedulePointer schedule(uint32_t channelId) const;

    std::mutex mLoading;                       ///< taken before mMutex
    std::map<std::string, Told> mTold;         // by file name; guarded by mLoading
    std::map<uint32_t, ServiceKey> mChannels;  // of the last load; guarded by mLoading

    mutable std::mutex mMutex;
    std::shared_ptr<const Contents> mContents =
            std::make_shared<const Contents>();  // guarded by mMutex

    std::mutex mAdvancing;
    std::shared_ptr<const Contents>
            mAdvanced;  // by the last advance; guarded by mAdvancing, as below
    std::unordered_map<uint32_t, std::pair<int32_t, int32_t>>
            mOn;        // event ids by channel, -1: none
    int64_t mLast = 0;  // time of the last advance
    int64_t mNext = 0;  // when the next event begins or ends
};

}  // namespace television
