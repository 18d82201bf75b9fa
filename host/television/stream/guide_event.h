/** The programme events that the event tables (EIT) of a stream carry, as plain data. Texts are
 * UTF-8. */
#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

namespace television {

/** A parental rating of one country. */
struct EventRating {
    std::string country;     ///< ISO 3166, three letters
    uint8_t minimumAge = 0;  ///< in years; 0 when it is not rated, or not by age
};

/** An audio stream of an event, as in its component descriptor. */
struct EventAudio {
    uint8_t streamContent = 0;
    uint8_t type = 0;
    uint8_t tag = 0;
    std::string language;  ///< ISO 639-2; empty when the stream does not say
    std::string text;
};

/** A content reference identifier (CRID), by which an event is recognised on other channels and at
 * other times. */
struct EventIdentifier {
    uint8_t type = 0;  ///< as in the content identifier descriptor
    std::string text;
};

/** One programme event. */
struct GuideEvent {
    uint16_t eventId = 0;
    int64_t start = 0;          ///< UTC, seconds since 1970
    uint32_t duration = 0;      ///< seconds
    uint8_t runningStatus = 0;  ///< as in the EIT
    bool scrambled = false;
    uint8_t tableVersion = 0;
    bool presentFollowing = false;  ///< the present/following table carries it
    bool schedule = false;          ///< a schedule table carries it
    std::string language;           ///< ISO 639-2, of the texts
    std::string title;
    std::string text;
    std::string extended;           ///< items as lines of "name: value", then the text
    std::vector<uint8_t> contents;  ///< genres: each both nibbles of the content descriptor
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
    /** Whether the event is on at `time` (UTC seconds). */
    bool isAt(int64_t time) const { return start <= time && time < end(); }
};

/** The service that events belong to, by the numbers that no other service in the world shares. */
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

/** The events of one service that a stream carries. */
struct ServiceEvents {
    ServiceKey service;
    bool actual = false;             ///< the stream carries the service too, not only its events
    std::vector<GuideEvent> events;  ///< by start, then event id
};

}  // namespace television
