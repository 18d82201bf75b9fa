/** The programme guide: what is on, what comes next, and what there is to know of it. */
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiEvent.h>

#include "qortv/connect.h"

struct EVENT_GENERAL_INFO_T;

namespace qortv {

/** A programme. Texts are valid UTF-8, times seconds since 1970-01-01 00:00 UTC. */
struct Event {
    uint32_t channelId = 0;
    uint16_t id = 0;  ///< unique within its channel
    int64_t start = 0;
    uint32_t duration = 0;  ///< seconds
    std::string title;
    std::string text;        ///< one sentence or two; may be empty, and cut at 255 bytes
    std::string language;    ///< of the texts, ISO 639-2
    uint8_t genre = 0;       ///< both nibbles of the content descriptor; 0: none
    uint8_t minimumAge = 0;  ///< years; 0: not rated
    bool scrambled = false;
    bool hasDetails = false;  ///< there is more in EventDetails::longText

    /** When it is over. */
    int64_t end() const { return start + duration; }
    /** How much of it is over at `now`, 0 to 100. */
    int percentAt(int64_t now) const;
};

/** All that there is to know of a programme. Texts that there are none of are empty. */
struct EventDetails {
    Event event;
    std::string text;      ///< as Event::text, uncut
    std::string longText;  ///< people and story, lines separated by '\n'
    std::string guidance;  ///< "age 12 (DEU)"
    std::string series;    ///< identifier of the series
    bool blocked = false;  ///< the set's age limit keeps it from being watched
};

/** Bytes that are not UTF-8 become U+FFFD. */
Event toEvent(const EVENT_GENERAL_INFO_T& record);

/** First nibble of the content descriptor as a word: "movie", "news", …; "" for none. */
const char* genreName(uint8_t genre);

/**
 * The guide of the television.
 *
 *     qortv::Guide guide(qortv::connect<qortv::Guide::Interface>());
 *     if (const auto event = guide.present(channel.id)) std::cout << event->title << '\n';
 *
 * Methods may be called by several threads at once. All throw Error kLost and kTransport, and
 * kRefused for what is not listed as an answer.
 */
class Guide {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiEvent;

    /** @param proxy the interface, from connect<Guide::Interface>() */
    explicit Guide(android::sp<Interface> proxy);

    /** What is on; nothing where the guide does not know. */
    std::optional<Event> present(uint32_t channelId);

    /** What comes next; nothing where the guide does not know. */
    std::optional<Event> following(uint32_t channelId);

    /**
     * What is on at any time from `from` to before `to`, in order of the start. Empty without a
     * guide.
     *
     * @throws Error kRefused also when there is no such channel
     */
    std::vector<Event> schedule(uint32_t channelId, int64_t from, int64_t to);

    /** An event by its id; nothing when there is none. */
    std::optional<EventDetails> details(uint32_t channelId, uint16_t eventId);

  private:
    std::optional<Event> presentOrFollowing(uint32_t channelId, bool following);
    std::optional<Event> event(uint32_t channelId, uint16_t eventId);

    android::sp<Interface> mProxy;
};

}  // namespace qortv
