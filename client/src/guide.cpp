#include "qortv/guide.h"

#include <algorithm>
#include <string>
#include <utility>

#include "middleware/event.h"
#include "middleware/result_codes.h"
#include "record_image.h"
#include "result.h"

namespace qortv {

namespace {

/** Most event ids that one call returns: four weeks of events of ten minutes. */
constexpr uint16_t kMaxEvents = 4096;
/** Longest text of the details, in bytes: longer than the event information table can hold. */
constexpr uint32_t kMaxText = 16 * 1024;

}  // namespace

int Event::percentAt(int64_t now) const {
    if (now <= start) return 0;
    if (now >= end()) return 100;
    return static_cast<int>((now - start) * 100 / duration);
}

Event toEvent(const EVENT_GENERAL_INFO_T& record) {
    Event event;
    event.channelId = record.ui4_channel_id;
    event.id = record.ui2_event_id;
    event.start = record.i8_start_time;
    event.duration = record.ui4_duration;
    event.title = textIn(record.s_title);
    event.text = textIn(record.s_text);
    event.language = textIn(record.s_language);
    event.genre = record.ui1_content;
    event.minimumAge = record.ui1_minimum_age;
    event.scrambled = record.ui1_free_ca_mode != 0;
    event.hasDetails = record.ui1_has_details != 0;
    return event;
}

const char* genreName(uint8_t genre) {
    constexpr const char* kNames[] = {"",      "movie", "news",    "show",    "sports",  "children",
                                      "music", "arts",  "society", "science", "leisure", "special"};
    const size_t kind = genre >> 4;
    return kind < std::size(kNames) ? kNames[kind] : "";
}

Guide::Guide(android::sp<Interface> proxy) : mProxy(std::move(proxy)) {}

std::optional<Event> Guide::present(uint32_t channelId) {
    return presentOrFollowing(channelId, false);
}

std::optional<Event> Guide::following(uint32_t channelId) {
    return presentOrFollowing(channelId, true);
}

std::optional<Event> Guide::presentOrFollowing(uint32_t channelId, bool following) {
    uint16_t id = 0;
    int32_t result = TV_FAILED;
    check(mProxy->a_hidl_a_qortvapi_event_get_pf_event_id(channelId, following,
                                                          [&](uint16_t eventId, int32_t code) {
                                                              id = eventId;
                                                              result = code;
                                                          }),
          "get_pf_event_id");
    if (result == TV_NOT_FOUND) return std::nullopt;
    checkResult(result, "tell what is on channel id ", channelId);
    return event(channelId, id);
}

std::optional<Event> Guide::event(uint32_t channelId, uint16_t eventId) {
    std::optional<Event> found;
    int32_t result = TV_FAILED;
    check(mProxy->a_hidl_a_qortvapi_event_get_general_info(
                  channelId, eventId,
                  [&](const Bytes& info, int32_t code) {
                      result = code;
                      if (result >= 0) found = toEvent(recordOf<EVENT_GENERAL_INFO_T>(info));
                  }),
          "get_general_info");
    if (result != TV_NOT_FOUND) checkResult(result, "tell of event ", eventId);
    return found;
}

std::vector<Event> Guide::schedule(uint32_t channelId, int64_t from, int64_t to) {
    std::vector<uint16_t> ids;
    int32_t result = TV_FAILED;
    check(mProxy->a_hidl_a_qortvapi_event_query_event_id_by_range(
                  channelId, from, to, kMaxEvents,
                  [&](uint16_t count, const android::hardware::hidl_vec<uint16_t>& eventIds,
                      int32_t code) {
                      result = code;
                      ids.assign(eventIds.data(),
                                 eventIds.data() + std::min<size_t>(count, eventIds.size()));
                  }),
          "query_event_id_by_range");
    checkResult(result, "list the events of channel id ", channelId);
    std::vector<Event> events;
    for (const uint16_t id : ids) {
        // An event that is missing was replaced since the ids were read.
        if (auto found = event(channelId, id)) events.push_back(*std::move(found));
    }
    return events;
}

std::optional<EventDetails> Guide::details(uint32_t channelId, uint16_t eventId) {
    auto found = event(channelId, eventId);
    if (!found) return std::nullopt;
    EventDetails details;
    details.event = *std::move(found);
    const auto readInto = [](std::string& to) {
        return [&to](const Bytes& block, int32_t result) {
            if (result >= 0) to = textIn(block);
        };
    };
    check(mProxy->a_hidl_a_qortvapi_event_get_details_info(channelId, eventId, kMaxText,
                                                           readInto(details.text)),
          "get_details_info");
    check(mProxy->a_hidl_a_qortvapi_event_get_details_extend_info(channelId, eventId, kMaxText,
                                                                  readInto(details.longText)),
          "get_details_extend_info");
    check(mProxy->a_hidl_a_qortvapi_event_get_guidance_info(channelId, eventId, kMaxText,
                                                            readInto(details.guidance)),
          "get_guidance_info");
    check(mProxy->a_hidl_a_qortvapi_event_get_group_info(channelId, eventId, kMaxText,
                                                         readInto(details.series)),
          "get_group_info");
    details.blocked =
            valueOf(mProxy->a_hidl_a_qortvapi_event_check_block(channelId, eventId), "check_block");
    return details;
}

}  // namespace qortv
