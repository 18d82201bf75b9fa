/** The programme guide: present, following and later events of a channel, and their details. */
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiEvent.h>

#include "qortv/connect.h"

struct EVENT_GENERAL_INFO_T;

namespace qortv {

/** A programme of a channel. Texts are valid UTF-8, times seconds since 1970-01-01 00:00 UTC. */
struct Event {
    uint32_t channelId = 0;
    uint16_t id = 0;  ///< unique within its channel
    int64_t start = 0;
    uint32_t duration = 0;  ///< seconds
    std::string title;
    std::string text;        ///< short description, truncated at 255 bytes; may be empty
    std::string language;    ///< of the texts, ISO 639-2
    uint8_t genre = 0;       ///< both nibbles of the content descriptor; 0: none
    uint8_t minimumAge = 0;  ///< years; 0: not rated
    bool scrambled = false;
    bool hasDetails = false;  ///< EventDetails::longText is not empty

    /** Returns the time at which it ends. */
    int64_t end() const { return start + duration; }
    /** Returns how much of it is over at `now`, 0 to 100. */
    int percentAt(int64_t now) const;
};

/** All that the guide has about a programme. Missing texts are empty. */
struct EventDetails {
    Event event;
    std::string text;      ///< Event::text in full length
    std::string longText;  ///< cast and plot; lines are separated by '\n'
    std::string guidance;  ///< age rating, such as "age 12 (DEU)"
    std::string series;    ///< identifier of the series
    bool blocked = false;  ///< above the age limit that is set on the television
};

/** Returns the event of a record. Bytes that are not UTF-8 become U+FFFD. */
Event toEvent(const EVENT_GENERAL_INFO_T& record);

/** Returns the first nibble of the content descriptor as a word such as "movie"; "" for none. */
const char* genreName(uint8_t genre);

/**
 * The guide of the television.
 *
 *     qortv::Guide guide(qortv::connect<qortv::Guide::Interface>());
 *     if (const auto event = guide.present(channel.id)) std::cout << event->title << '\n';
 *
 * Methods may be called by several threads at once. All throw Error kLost, kTransport and kRefused.
 */
class Guide {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiEvent;

    /** @param proxy the interface, from connect<Guide::Interface>() */
    explicit Guide(android::sp<Interface> proxy);

    /** Returns the present event, or nothing when the guide has none. */
    std::optional<Event> present(uint32_t channelId);

    /** Returns the event after the present one, or nothing when the guide has none. */
    std::optional<Event> following(uint32_t channelId);

    /**
     * Returns the events that overlap the time from `from` to before `to`, by start time. Empty
     * when the guide has none.
     *
     * @throws Error kRefused also when there is no such channel
     */
    std::vector<Event> schedule(uint32_t channelId, int64_t from, int64_t to);

    /** Returns the details of an event, or nothing when the channel has no event with this id. */
    std::optional<EventDetails> details(uint32_t channelId, uint16_t eventId);

  private:
    std::optional<Event> presentOrFollowing(uint32_t channelId, bool following);
    std::optional<Event> event(uint32_t channelId, uint16_t eventId);

    android::sp<Interface> mProxy;
};

}  // namespace qortv
