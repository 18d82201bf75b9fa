/** What the time and event tables of a stream tell, as plain data: the time, and programme events.
 * Texts are UTF-8. */
#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

namespace television {

/** What TDT and TOT said last. */
struct BroadcastTime {
    bool tdt = false;
    bool tot = false;
    int64_t utc = 0;         ///< seconds since 1970, of whichever came last
    int32_t offset = 0;      ///< local time less UTC in seconds, of the TOT's first region
    int64_t nextChange = 0;  ///< UTC seconds; 0 when none is told
    int32_t nextOffset = 0;  ///< from the change on

    bool hasTime() const { return tdt || tot; }
    bool operator==(const BroadcastTime& other) const {
        const auto all = [](const BroadcastTime& t) {
            return std::tie(t.tdt, t.tot, t.utc, t.offset, t.nextChange, t.nextOffset);
        };
        return all(*this) == all(other);
    }
};

/** A parental rating of one country. */
struct EventRating {
    std::string country;     ///< ISO 3166, three letters
    uint8_t minimumAge = 0;  ///< 0 where the broadcaster rates in a way of his own, or not at all
};

/** An audio stream of an event. */
struct EventAudio {
    uint8_t streamContent = 0;
    uint8_t type = 0;
    uint8_t tag = 0;
    std::string language;  ///< ISO 639-2
    std::string text;
};

/** One name that tells an event apart beyond its channel (CRID). */
struct EventIdentifier {
    uint8_t type = 0;  ///< as in the content identifier descriptor
    std::string text;
};

/** One programme event. */
struct GuideEvent {
    uint16_t eventId = 0;
    int64_t start = 0;      ///< seconds since 1970
    uint32_t duration = 0;  ///< seconds
    uint8_t runningStatus = 0;
    bool scrambled = false;
    uint8_t tableVersion = 0;
    bool presentFollowing = false;  ///< the present/following table has it
    bool schedule = false;          ///< the schedule has it
    std::string language;           ///< ISO 639-2, of the texts
    std::string title;
    std::string text;
    std::string extended;           ///< items as lines of "name: value", then the text
    std::vector<uint8_t> contents;  ///< both nibbles of each genre
    std::vector<EventRating> ratings;
    std::vector<EventAudio> audio;
    std::vector<EventIdentifier> identifiers;

    int64_t end() const { return start + duration; }
    /** The highest age of its ratings; 0 when it is not rated. */
    uint8_t minimumAge() const {
        uint8_t age = 0;
        for (const EventRating& rating : ratings)
            age = age < rating.minimumAge ? rating.minimumAge : age;
        return age;
    }
    bool isAt(int64_t time) const { return start <= time && time < end(); }
};

/** Which service events belong to. */
struct ServiceKey {
    uint16_t originalNetworkId = 0;
    uint16_t transportStreamId = 0;
    uint16_t serviceId = 0;

    bool operator<(const ServiceKey& other) const {
        return std::tie(originalNetworkId, transportStreamId, serviceId) <
               std::tie(other.originalNetworkId, other.transportStreamId, other.serviceId);
    }
    bool operator==(const ServiceKey& other) const { return !(*this < other) && !(other < *this); }
};

/** The events that a stream tells of one service. */
struct ServiceEvents {
    ServiceKey service;
    bool actual = false;             ///< the stream carries the service itself
    std::vector<GuideEvent> events;  ///< by start, then event id
};

}  // namespace television
