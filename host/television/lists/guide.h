/** The programme guide: the events of all channels, from all streams that carry them. */
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

#include "middleware/event.h"
#include "television/lists/lists.h"
#include "television/stream/guide_event.h"
#include "television/stream/stream_folder.h"

namespace television {

/**
 * Events by channel id. Which event is present depends on the time that the caller passes, since a
 * recorded stream repeats the same present event for ever. Any thread. Loaded events never change;
 * a lock guards no more than the pointer to them, so readers do not wait for a load.
 */
class Guide {
  public:
    /** One event, or null; keeps the schedule that it is in alive. */
    using EventPointer = std::shared_ptr<const GuideEvent>;

    /** Takes over the events that a scan found for the channels of the lists. Events of files that
     * could not be read this time stay. Returns whether anything changed. */
    bool load(const ChannelLists& lists, const ScanResult& scan);

    /** The event that is on at `now` (UTC seconds); null when none is. */
    EventPointer presentEvent(uint32_t channelId, int64_t now) const;
    /** The first event that begins after `now`; null when there is none. */
    EventPointer followingEvent(uint32_t channelId, int64_t now) const;
    /** Null when there is none of that id. */
    EventPointer event(uint32_t channelId, uint32_t eventId) const;
    /** The events that are on at some time from `from` to before `to`, or at `from` when both are
     * the same, in order of their start. */
    std::vector<EventPointer> events(uint32_t channelId, int64_t from, int64_t to) const;

    /** presentEvent() and followingEvent() as records. */
    std::optional<EVENT_GENERAL_INFO_T> present(uint32_t channelId, int64_t now) const;
    std::optional<EVENT_GENERAL_INFO_T> following(uint32_t channelId, int64_t now) const;
    /** The record of an event, with its running status at `now`. */
    static EVENT_GENERAL_INFO_T record(uint32_t channelId, const GuideEvent& event, int64_t now);

    /** Returns the channels, in order of their ids, whose present or following event at `now` is
     * not that of the call before; none in the first call after a load. Cheap while no event begins
     * or ends. */
    std::vector<uint32_t> advance(int64_t now);

    using Schedule = std::vector<GuideEvent>;  ///< by start, then event id

  private:
    using SchedulePointer = std::shared_ptr<const Schedule>;
    using Contents = std::unordered_map<uint32_t, SchedulePointer>;  ///< by channel id
    using StreamEvents = std::shared_ptr<const std::vector<ServiceEvents>>;

    Contents gather() const;
    static SchedulePointer merged(const std::vector<SchedulePointer>& sources);
    SchedulePointer schedule(uint32_t channelId) const;

    std::mutex mLoading;                           ///< held during a load; taken before mMutex
    std::map<std::string, StreamEvents> mStreams;  ///< by file name; guarded by mLoading
    std::map<uint32_t, ServiceKey> mChannels;      ///< of the last load; guarded by mLoading

    mutable std::mutex mMutex;
    std::shared_ptr<const Contents> mContents =
            std::make_shared<const Contents>();  ///< guarded by mMutex

    std::mutex mAdvancing;  ///< guards all below, the state of the last advance()
    std::shared_ptr<const Contents> mAdvanced;  ///< the contents at that time
    std::unordered_map<uint32_t, std::pair<int32_t, int32_t>>
            mOn;        ///< ids of the present and the following event by channel, -1: none
    int64_t mLast = 0;  ///< its time
    int64_t mNext = 0;  ///< when the next event begins or ends
};

}  // namespace television
