// The details of single events of the programme guide: texts, lists, general information, ratings.
#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>
#include <vector>

#include "middleware/event.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/modules/modules.h"
#include "television/stream/dvb_text.h"
#include "television/viewing/ratings.h"

namespace television {
namespace {

/** A client's buffer is zeroed behind what is written into it, up to so many bytes: its size as the
 * client gives it may be absurd. */
constexpr size_t kMostCleared = size_t{64} * 1024;
/** The types of content identifiers that name a series: the standard one, and the one that several
 * broadcasters use in its place. */
constexpr uint8_t kSeriesTypes[] = {0x02, 0x32};

/** Returns `use(event)`, or TV_NOT_FOUND when the guide has no such event. */
template <typename Use>
int32_t withEvent(const Core& core, uint32_t channelId, uint32_t eventId, Use use) {
    const Guide::EventPointer event = core.guide.event(channelId, eventId);
    return event == nullptr ? int32_t{TV_NOT_FOUND} : use(*event);
}

void clearRest(uint8_t* to, size_t size, size_t used) {
    if (used < size) std::memset(to + used, 0, std::min(size - used, kMostCleared));
}

int32_t putEventText(uint8_t* to, uint32_t size, const std::string& text) {
    const int32_t result = putText(reinterpret_cast<char*>(to), size, text);
    if (result == TV_OK) {
        clearRest(to, size, strnlen(reinterpret_cast<const char*>(to), size));
    }
    return result;
}

template <typename Record>
int32_t putRecords(uint8_t* to, uint32_t size, const std::vector<Record>& records) {
    if (!writable(to) || size == 0) return TV_INVALID_ARGUMENT;
    const size_t used = std::min(records.size(), size / sizeof(Record)) * sizeof(Record);
    if (used > 0) std::memcpy(to, records.data(), used);
    clearRest(to, size, used);
    return TV_OK;
}

/** Returns the highest rating, such as "age 12 (DEU, AUT)"; empty when the event is not rated. */
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

/** Returns the identifier of the event's series; empty when it has none. */
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

/** Plugs a function that writes a text of an event. `optional`: an empty text is TV_NOT_FOUND. */
template <auto Function, typename TextOf>
void plugText(switchboard::Switchboard& board, const Core& core, bool optional, TextOf textOf) {
    board.on<Function>(
            [=, &core](uint32_t channelId, uint32_t eventId, uint8_t* to, uint32_t size) {
                return withEvent(core, channelId, eventId, [&](const GuideEvent& event) -> int32_t {
                    const std::string text = textOf(event);
                    if (optional && text.empty()) return TV_NOT_FOUND;
                    return putEventText(to, size, text);
                });
            });
}

/** Plugs a function that writes the records of a list of an event, as many as fit. */
template <auto Function, typename RecordsOf>
void plugList(switchboard::Switchboard& board, const Core& core, RecordsOf recordsOf) {
    board.on<Function>(
            [=, &core](uint32_t channelId, uint32_t eventId, uint8_t* to, uint32_t size) {
                return withEvent(core, channelId, eventId, [&](const GuideEvent& event) {
                    return putRecords(to, size, recordsOf(event));
                });
            });
}

}  // namespace

void plugEventDetails(switchboard::Switchboard& board, const Core& core) {
    plugText<&a_qortvapi_event_get_details_info>(
            board, core, false, [](const GuideEvent& event) { return event.text; });
    plugText<&a_qortvapi_event_get_details_extend_info>(
            board, core, true, [](const GuideEvent& event) { return event.extended; });
    plugText<&a_qortvapi_event_get_guidance_info>(board, core, true, guidanceOf);
    plugText<&a_qortvapi_event_get_group_info>(board, core, true, seriesOf);
    plugList<&a_qortvapi_event_get_rating_list>(board, core, ratingsOf);
    plugList<&a_qortvapi_event_get_content_identifier>(board, core, identifiersOf);
    plugList<&a_qortvapi_event_get_audio_comp_info>(board, core, audioOf);
    board.on<&a_qortvapi_event_get_general_info>(
            [&core](uint32_t channelId, uint32_t eventId, EVENT_GENERAL_INFO_T* info) {
                return withEvent(core, channelId, eventId, [&](const GuideEvent& event) -> int32_t {
                    if (!writable(info)) return TV_INVALID_ARGUMENT;
                    *info = Guide::record(channelId, event, core.clock.utcSeconds());
                    return TV_OK;
                });
            });
    board.on<&a_qortvapi_event_get_rating_map>(
            [&core](uint32_t channelId, uint32_t eventId, RATING_MAP_T* map) {
                return withEvent(core, channelId, eventId,
                                 [&](const GuideEvent& event) { return putRatingMap(event, map); });
            });
    board.on<&a_qortvapi_event_check_block>([&core](uint32_t channelId, uint32_t eventId) {
        const int32_t blocked = withEvent(core, channelId, eventId, [&](const GuideEvent& event) {
            return ratingBlocks(core, event) ? 1 : 0;
        });
        return blocked == 1 ? 1 : 0;  // an unknown event is not blocked
    });
}

}  // namespace television
