// The programme guide as an application sees it.
#include "middleware/event.h"

#include <algorithm>
#include <atomic>
#include <thread>

#include "support/notification_log.h"
#include "support/television_test.h"
#include "television/core/core.h"
#include "television/generator/event_plan.h"

namespace {

using stream_generator::EventPlan;
using stream_generator::kUsualTime;

/** A pointer that cannot be written, as a failed mapping gives. */
template <typename T>
T* badPointer() {
    return reinterpret_cast<T*>(~uintptr_t{0});
}

uint64_t value(void* pointer) {
    return reinterpret_cast<uintptr_t>(pointer);
}
void updated(int32_t code, void*, void* channel, void* what, void*, void*) {
    NotificationLog::instance().add("updated", code, {value(channel), value(what)});
}

class TelevisionEvents : public TelevisionTest {
  protected:
    TelevisionEvents() {
        log.clear();
        options.time = [this] { return machine.load(); };
    }
    ~TelevisionEvents() override {
        tv.reset();
        log.clear();
    }

    /** The events that the generator planned for a service of the demo. */
    static std::vector<EventPlan> planned(const std::string& name) {
        for (const auto& plan : stream_generator::demoPlans()) {
            for (const auto& service : plan.services) {
                if (service.name == name) {
                    return stream_generator::eventPlans(service, plan.time, plan.guideHours);
                }
            }
        }
        ADD_FAILURE() << name;
        return {};
    }
    static EVENT_GENERAL_INFO_T info(uint32_t channel, uint32_t id) {
        EVENT_GENERAL_INFO_T info = {};
        EXPECT_EQ(a_qortvapi_event_get_general_info(channel, id, &info), TV_OK);
        return info;
    }
    static std::vector<uint16_t> inRange(uint32_t channel, int64_t from, int64_t to) {
        uint16_t count = UINT16_MAX;
        std::vector<uint16_t> ids(count);
        EXPECT_EQ(a_qortvapi_event_query_event_id_by_range(channel, from, to, &count, ids.data()),
                  TV_OK);
        ids.resize(count);
        return ids;
    }
    static std::vector<uint16_t> filtered(uint32_t channel,
                                          const QORTVAPI_QUERY_FILTER_INFORMATION_T& filter) {
        uint16_t count = 200;
        std::vector<uint16_t> ids(count);
        EXPECT_EQ(a_qortvapi_event_query_event_id_by_filter(channel, &filter, &count, ids.data(),
                                                            nullptr),
                  TV_OK);
        ids.resize(count);
        return ids;
    }
    template <typename Wanted>
    static std::vector<uint16_t> idsOf(const std::vector<EventPlan>& events, Wanted wanted) {
        std::vector<uint16_t> ids;
        for (const EventPlan& event : events) {
            if (wanted(event)) ids.push_back(event.eventId);
        }
        return ids;
    }
    /** What one of the text functions writes into a buffer of that size. */
    template <typename Function>
    static std::string text(Function function, uint32_t channel, uint32_t id,
                            uint32_t size = 2000) {
        std::vector<uint8_t> buffer(size + 1, 0xEE);
        EXPECT_EQ(function(channel, id, buffer.data(), size), TV_OK);
        EXPECT_EQ(buffer[size], 0xEE) << "no more than there is room for";
        const std::string text(reinterpret_cast<char*>(buffer.data()));
        EXPECT_LT(text.size(), size);
        EXPECT_TRUE(std::all_of(buffer.begin() + static_cast<ptrdiff_t>(text.size()),
                                buffer.end() - 1, [](uint8_t byte) { return byte == 0; }));
        return text;
    }

    std::atomic<int64_t> machine{1'800'000'000'000};
    NotificationLog& log = NotificationLog::instance();
};

TEST_F(TelevisionEvents, PresentAndFollowingFollowTheClock) {
    startWithDemo();
    const uint32_t one = channel(SVL_ID_TERRESTRIAL, "Première");
    const auto plan = planned("Première");
    uint16_t id = 0;
    EXPECT_EQ(a_qortvapi_event_get_pf_event_id(one, false, &id), TV_OK);
    EXPECT_EQ(id, plan[0].eventId);
    EXPECT_EQ(a_qortvapi_event_get_pf_event_id(one, true, &id), TV_OK);
    EXPECT_EQ(id, plan[1].eventId);
    EXPECT_EQ(info(one, plan[0].eventId).ui1_running_status, 4);
    machine += (plan[1].start - kUsualTime) * 1000;
    EXPECT_EQ(a_qortvapi_event_get_pf_event_id(one, false, &id), TV_OK);
    EXPECT_EQ(id, plan[1].eventId);
    EXPECT_EQ(info(one, plan[0].eventId).ui1_running_status, 1);
    EXPECT_EQ(info(one, plan[1].eventId).ui1_running_status, 4);
    machine += int64_t{48} * 3600 * 1000;
    EXPECT_EQ(a_qortvapi_event_get_pf_event_id(one, false, &id), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_event_get_pf_event_id(one, true, &id), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_event_get_pf_event_id(one, true, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_event_get_pf_event_id(0, true, &id), TV_NOT_FOUND);
    EXPECT_EQ(id, plan[1].eventId);
}

TEST_F(TelevisionEvents, AllOfAnEvent) {
    startWithDemo();
    for (const char* name : {"Première", "Zweites Österreich", "Canal Niño"}) {
        const uint32_t one = channel(SVL_ID_TERRESTRIAL, name);
        for (const EventPlan& event : planned(name)) {
            const EVENT_GENERAL_INFO_T got = info(one, event.eventId);
            EXPECT_EQ(got.ui4_channel_id, one);
            EXPECT_EQ(got.i8_start_time, event.start);
            EXPECT_EQ(got.ui4_duration, event.duration);
            EXPECT_EQ(got.s_title, event.title);
            EXPECT_EQ(got.s_text, event.text);
            EXPECT_EQ(got.s_language, event.language);
            EXPECT_EQ(got.ui1_content, event.genre);
            EXPECT_EQ(got.ui1_minimum_age, event.age);
            EXPECT_EQ(got.ui1_has_details, event.details.empty() ? 0 : 1);
            EXPECT_EQ(text(a_qortvapi_event_get_details_info, one, event.eventId), event.text);
            uint8_t buffer[2000] = {9};
            if (event.details.empty()) {
                EXPECT_EQ(
                        a_qortvapi_event_get_details_extend_info(one, event.eventId, buffer, 2000),
                        TV_NOT_FOUND);
                EXPECT_EQ(a_qortvapi_event_get_group_info(one, event.eventId, buffer, 2000),
                          TV_NOT_FOUND);
            } else {
                const std::string all =
                        text(a_qortvapi_event_get_details_extend_info, one, event.eventId);
                EXPECT_EQ(all, event.items[0].first + ": " + event.items[0].second + "\n" +
                                       event.items[1].first + ": " + event.items[1].second + "\n" +
                                       event.details);
                EXPECT_EQ(text(a_qortvapi_event_get_group_info, one, event.eventId),
                          event.seriesId);
            }
            if (event.age == 0) {
                EXPECT_EQ(a_qortvapi_event_get_guidance_info(one, event.eventId, buffer, 2000),
                          TV_NOT_FOUND);
            } else {
                EXPECT_EQ(text(a_qortvapi_event_get_guidance_info, one, event.eventId),
                          "age " + std::to_string(event.age) + " (DEU, GBR)");
            }
            EXPECT_EQ(buffer[0], 9);
        }
    }
}

TEST_F(TelevisionEvents, TextsAreCutBetweenCharacters) {
    startWithDemo();
    const uint32_t one = channel(SVL_ID_TERRESTRIAL, "Zweites Österreich");
    const EventPlan event = planned("Zweites Österreich").front();
    const std::string all = text(a_qortvapi_event_get_details_extend_info, one, event.eventId);
    ASSERT_NE(all.find("ö"), std::string::npos);
    for (uint32_t size = 1; size < all.size() + 2; ++size) {
        const std::string part =
                text(a_qortvapi_event_get_details_extend_info, one, event.eventId, size);
        EXPECT_EQ(part, all.substr(0, part.size()));
        EXPECT_GE(part.size() + 2, std::min<size_t>(size, all.size() + 1));
        EXPECT_TRUE(part.size() == all.size() ||
                    (static_cast<uint8_t>(all[part.size()]) & 0xC0) != 0x80);
    }
}

TEST_F(TelevisionEvents, ListsHoldWholeRecords) {
    startWithDemo();
    const uint32_t one = channel(SVL_ID_TERRESTRIAL, "Première");
    const auto plan = planned("Première");
    const auto rated =
            std::find_if(plan.begin(), plan.end(), [](const auto& e) { return e.age > 0; });
    ASSERT_NE(rated, plan.end());
    std::vector<EVENT_RATING_T> ratings(4);
    auto* const bytes = reinterpret_cast<uint8_t*>(ratings.data());
    std::memset(bytes, 0xEE, ratings.size() * sizeof ratings[0]);
    EXPECT_EQ(a_qortvapi_event_get_rating_list(one, rated->eventId, bytes, 3 * sizeof ratings[0]),
              TV_OK);
    EXPECT_STREQ(ratings[0].s_country, "DEU");
    EXPECT_STREQ(ratings[1].s_country, "GBR");
    EXPECT_EQ(ratings[1].ui1_minimum_age, rated->age);
    EXPECT_STREQ(ratings[2].s_country, "");
    EXPECT_EQ(ratings[3].ui1_minimum_age, 0xEE);
    std::memset(bytes, 0xEE, ratings.size() * sizeof ratings[0]);
    EXPECT_EQ(
            a_qortvapi_event_get_rating_list(one, rated->eventId, bytes, 2 * sizeof ratings[0] - 1),
            TV_OK);
    EXPECT_STREQ(ratings[0].s_country, "DEU");
    EXPECT_STREQ(ratings[1].s_country, "") << "half a record is none";
    EXPECT_EQ(reinterpret_cast<uint8_t*>(&ratings[2])[-1], 0xEE);

    std::vector<EVENT_AUDIO_COMPONENT_T> audio(3);
    EXPECT_EQ(a_qortvapi_event_get_audio_comp_info(one, rated->eventId,
                                                   reinterpret_cast<uint8_t*>(audio.data()),
                                                   3 * sizeof audio[0]),
              TV_OK);
    EXPECT_STREQ(audio[0].s_language, "fra");
    EXPECT_EQ(audio[0].ui1_stream_content, 2);
    EXPECT_EQ(audio[0].ui1_component_type, 3);
    EXPECT_STREQ(audio[1].s_language, "qad");
    EXPECT_EQ(audio[1].ui1_component_tag, 2);
    EXPECT_EQ(audio[2].ui1_stream_content, 0);

    std::vector<EVENT_CONTENT_IDENTIFIER_T> names(3);
    EXPECT_EQ(a_qortvapi_event_get_content_identifier(one, rated->eventId,
                                                      reinterpret_cast<uint8_t*>(names.data()),
                                                      3 * sizeof names[0]),
              TV_OK);
    EXPECT_EQ(names[0].ui1_type, 0x31);
    EXPECT_EQ(names[0].s_text, rated->programmeId);
    EXPECT_EQ(names[1].s_text, rated->seriesId);
    EXPECT_EQ(names[2].ui1_type, 0);
}

TEST_F(TelevisionEvents, RatingMapAndBlock) {
    stream_generator::writeStreams(streams(), stream_generator::demoPlans());
    start();
    const uint32_t one = channel(SVL_ID_TERRESTRIAL, "Première");
    const auto plan = planned("Première");
    std::set<unsigned> ages;
    for (const EventPlan& event : plan) {
        RATING_MAP_T map = {};
        ages.insert(event.age);
        EXPECT_EQ(a_qortvapi_event_check_block(one, event.eventId), 0) << "no age is set";
        if (event.age == 0) {
            EXPECT_EQ(a_qortvapi_event_get_rating_map(one, event.eventId, &map), TV_NOT_FOUND);
            EXPECT_STREQ(map.s_region, "");
            continue;
        }
        EXPECT_EQ(a_qortvapi_event_get_rating_map(one, event.eventId, &map), TV_OK);
        EXPECT_STREQ(map.s_region, "DEU");
        EXPECT_STREQ(map.s_dimension, "DVB");
        EXPECT_EQ(map.s_rating, "age " + std::to_string(event.age));
        EXPECT_EQ(a_qortvapi_event_get_rating_map(one, event.eventId, nullptr),
                  TV_INVALID_ARGUMENT);
    }
    EXPECT_GE(ages.size(), 3u);
    tv.reset();
    { television::Core(options.state).rememberNumber("rating.dvb_age", 12); }
    start();
    for (const EventPlan& event : plan) {
        EXPECT_EQ(a_qortvapi_event_check_block(one, event.eventId), event.age > 12 ? 1 : 0);
    }
    EXPECT_EQ(a_qortvapi_event_check_block(one, 0xFFFFFFFF), 0);
    EXPECT_EQ(a_qortvapi_event_check_block(0xFFFFFFFF, 1), 0);
}

TEST_F(TelevisionEvents, RangesAreBounded) {
    startWithDemo();
    const uint32_t one = channel(SVL_ID_TERRESTRIAL, "Première");
    const auto plan = planned("Première");
    EXPECT_EQ(inRange(one, INT64_MIN, INT64_MAX).size(), plan.size());
    const int64_t from = kUsualTime + 3600;
    const int64_t to = kUsualTime + 5 * 3600;
    EXPECT_EQ(inRange(one, from, to), idsOf(plan, [&](const EventPlan& e) {
                  return e.start < to && e.start + e.duration > from;
              }));
    std::vector<uint16_t> ids(4, 0xBEEF);
    uint16_t count = 3;
    EXPECT_EQ(a_qortvapi_event_query_event_id_by_range(one, 0, INT64_MAX, &count, ids.data()),
              TV_OK);
    EXPECT_EQ(count, 3) << "no more than there is room for";
    EXPECT_EQ(ids,
              (std::vector<uint16_t>{plan[0].eventId, plan[1].eventId, plan[2].eventId, 0xBEEF}));
    count = 0;
    EXPECT_EQ(a_qortvapi_event_query_event_id_by_range(one, 0, INT64_MAX, &count, nullptr), TV_OK);
    EXPECT_EQ(count, 0);
    count = 3;
    EXPECT_EQ(a_qortvapi_event_query_event_id_by_range(one, 9, 8, &count, ids.data()),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_event_query_event_id_by_range(one, 0, 9, &count, nullptr),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_event_query_event_id_by_range(one, 0, 9, &count, badPointer<uint16_t>()),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_event_query_event_id_by_range(one, 0, 9, nullptr, ids.data()),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_event_query_event_id_by_range(0xFFFFFF, 0, 9, &count, ids.data()),
              TV_NOT_FOUND);
    EXPECT_EQ(count, 3);
    // A channel without events is no fault.
    EXPECT_TRUE(inRange(channel(SVL_ID_TERRESTRIAL, "No Number"), 0, INT64_MAX).empty());
}

TEST_F(TelevisionEvents, Filters) {
    startWithDemo();
    const uint32_t one = channel(SVL_ID_TERRESTRIAL, "Première");
    const auto plan = planned("Première");
    QORTVAPI_QUERY_FILTER_INFORMATION_T filter = {};
    EXPECT_EQ(filtered(one, filter).size(), plan.size());
    filter.ui2_mask = EVENT_FILTER_RUNNING;
    filter.ui1_running_status = 4;
    EXPECT_EQ(filtered(one, filter), std::vector<uint16_t>{plan[0].eventId});
    filter.ui2_mask = EVENT_FILTER_TIME;
    filter.i8_start_time = kUsualTime + 7200;
    filter.i8_end_time = kUsualTime + 7201;
    EXPECT_EQ(filtered(one, filter).size(), 1u);
    filter.ui2_mask = EVENT_FILTER_GENRES;
    filter.ui1_genre_count = 2;
    filter.aui1_genres[0] = 0x1;
    filter.aui1_genres[1] = 0x4;
    filter.aui1_genres[2] = 0x2;  // beyond the count
    EXPECT_EQ(filtered(one, filter), idsOf(plan, [](const EventPlan& e) {
                  return e.genre >> 4 == 1 || e.genre >> 4 == 4;
              }));
    filter.ui1_genre_count = 255;  // what lies behind the eight is not looked at
    EXPECT_EQ(filtered(one, filter), idsOf(plan, [](const EventPlan& e) {
                  return e.genre >> 4 == 1 || e.genre >> 4 == 4 || e.genre >> 4 == 2;
              }));
    filter.ui1_genre_count = 0;
    EXPECT_TRUE(filtered(one, filter).empty());
    filter.ui2_mask = EVENT_FILTER_MAXIMUM_AGE | EVENT_FILTER_DURATION;
    filter.ui1_maximum_age = 6;
    filter.ui4_minimum_duration = 45 * 60;
    EXPECT_EQ(filtered(one, filter),
              idsOf(plan, [](const EventPlan& e) { return e.age <= 6 && e.duration >= 45 * 60; }));

    filter = {};
    uint16_t count = 2;
    uint16_t ids[3] = {1, 1, 1};
    uint32_t starts[3] = {1, 1, 1};
    EXPECT_EQ(a_qortvapi_event_query_event_id_by_filter(one, &filter, &count, ids, starts), TV_OK);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(ids[1], plan[1].eventId);
    EXPECT_EQ(starts[1], static_cast<uint32_t>(plan[1].start));
    EXPECT_EQ(ids[2], 1);
    EXPECT_EQ(starts[2], 1u);
    EXPECT_EQ(a_qortvapi_event_query_event_id_by_filter(one, nullptr, &count, ids, starts),
              TV_INVALID_ARGUMENT);
    filter.ui2_mask = EVENT_FILTER_TIME;
    filter.i8_start_time = 1;
    EXPECT_EQ(a_qortvapi_event_query_event_id_by_filter(one, &filter, &count, ids, starts),
              TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionEvents, QueryParametersLimitQueries) {
    startWithDemo();
    const uint32_t one = channel(SVL_ID_TERRESTRIAL, "Première");
    const auto plan = planned("Première");
    const auto found = [&] { return inRange(one, 0, INT64_MAX); };
    QORTVAPI_EVENT_QUERY_PARAMETER_T parameter = {};
    parameter.ui4_sources = EVENT_UPDATE_PRESENT_FOLLOWING;
    EXPECT_EQ(a_qortvapi_event_set_query_parameter(&parameter), TV_OK);
    EXPECT_EQ(found(), (std::vector<uint16_t>{plan[0].eventId, plan[1].eventId}));
    machine += (plan[1].start - kUsualTime) * 1000;
    EXPECT_EQ(found(), (std::vector<uint16_t>{plan[1].eventId, plan[2].eventId}));
    parameter.ui4_sources = EVENT_UPDATE_SCHEDULE;
    EXPECT_EQ(a_qortvapi_event_set_query_parameter(&parameter), TV_OK);
    EXPECT_EQ(found().size(), plan.size());
    parameter = {};
    parameter.ui4_language = 'd' << 16 | 'e' << 8 | 'u';
    EXPECT_EQ(a_qortvapi_event_set_query_parameter(&parameter), TV_OK);
    EXPECT_TRUE(found().empty());
    EXPECT_FALSE(inRange(channel(SVL_ID_TERRESTRIAL, "Zweites Österreich"), 0, INT64_MAX).empty());
    parameter = {};
    parameter.ui4_days = 1;
    EXPECT_EQ(a_qortvapi_event_set_query_parameter(&parameter), TV_OK);
    EXPECT_EQ(found().size(), plan.size());
    ASSERT_GT(plan.back().start, plan.front().start + 3600);
    machine -= int64_t{24} * 3600 * 1000;  // nearly all begin more than a day later
    EXPECT_LT(found().size(), plan.size());
    parameter.ui4_days = UINT32_MAX;
    EXPECT_EQ(a_qortvapi_event_set_query_parameter(&parameter), TV_OK);
    EXPECT_EQ(found().size(), plan.size());
    parameter.ui4_sources = 4;
    EXPECT_EQ(a_qortvapi_event_set_query_parameter(&parameter), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_event_set_query_parameter(nullptr), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionEvents, ActiveWindow) {
    startWithDemo();
    const uint32_t ids[] = {channel(SVL_ID_TERRESTRIAL, "Première"),
                            channel(SVL_ID_CABLE, "Türkçe")};
    uint16_t count = 9;
    uint32_t got[3] = {7, 7, 7};
    int64_t from = 0;
    int64_t to = 0;
    EXPECT_EQ(a_qortvapi_event_get_active_win_channel_num(&count), TV_OK);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(a_qortvapi_event_get_active_win_list(got, 3, &from, &to), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_event_setCurrentActiveWindow(ids, 2, kUsualTime), TV_OK);
    EXPECT_EQ(a_qortvapi_event_get_active_win_channel_num(&count), TV_OK);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(a_qortvapi_event_get_active_win_list(got, 3, &from, &to), TV_OK);
    EXPECT_EQ(got[0], ids[0]);
    EXPECT_EQ(got[1], ids[1]);
    EXPECT_EQ(got[2], 7u);
    EXPECT_EQ(from, kUsualTime);
    EXPECT_EQ(to, kUsualTime + EVENT_ACTIVE_WINDOW_SECONDS);
    got[1] = 7;
    EXPECT_EQ(a_qortvapi_event_get_active_win_list(got, 1, nullptr, nullptr), TV_OK);
    EXPECT_EQ(got[1], 7u);
    EXPECT_EQ(a_qortvapi_event_get_active_win_list(nullptr, 0, &from, nullptr), TV_OK);
    EXPECT_EQ(a_qortvapi_event_get_active_win_list(nullptr, 1, &from, nullptr),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_event_setCurrentActiveWindow_Ex(ids, 1, 5, 6), TV_OK);
    // A refused call leaves the parameters as they were.
    const uint32_t unknown[] = {ids[0], 0xFFFFFF};
    EXPECT_EQ(a_qortvapi_event_setCurrentActiveWindow_Ex(unknown, 2, 5, 6), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_event_setCurrentActiveWindow_Ex(ids, 2, 6, 5), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_event_setCurrentActiveWindow_Ex(nullptr, 2, 5, 6), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_event_setCurrentActiveWindow_Ex(ids, 0, 5, 6), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_event_setCurrentActiveWindow(ids, 2, INT64_MAX), TV_INVALID_ARGUMENT);
    const std::vector<uint32_t> many(UINT16_MAX, ids[0]);
    EXPECT_EQ(a_qortvapi_event_setCurrentActiveWindow(many.data(), UINT16_MAX, 0),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_event_get_active_win_list(got, 3, &from, &to), TV_OK);
    EXPECT_EQ(got[0], ids[0]);
    EXPECT_EQ(from, 5);
    EXPECT_EQ(to, 6);
    EXPECT_EQ(a_qortvapi_event_clear_active_win(), TV_OK);
    EXPECT_EQ(a_qortvapi_event_get_active_win_channel_num(&count), TV_OK);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(a_qortvapi_event_get_active_win_channel_num(nullptr), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionEvents, WrongArgumentsAreRefused) {
    startWithDemo();
    const uint32_t one = channel(SVL_ID_TERRESTRIAL, "Première");
    const uint32_t id = planned("Première").front().eventId;
    uint8_t buffer[8];
    for (const auto function :
         {a_qortvapi_event_get_details_info, a_qortvapi_event_get_details_extend_info,
          a_qortvapi_event_get_group_info, a_qortvapi_event_get_rating_list,
          a_qortvapi_event_get_content_identifier, a_qortvapi_event_get_audio_comp_info}) {
        std::memset(buffer, 0xEE, sizeof buffer);
        EXPECT_EQ(function(one, id, nullptr, UINT32_MAX), TV_INVALID_ARGUMENT);
        EXPECT_EQ(function(one, id, badPointer<uint8_t>(), 8), TV_INVALID_ARGUMENT);
        EXPECT_EQ(function(one, id, buffer, 0), TV_INVALID_ARGUMENT);
        EXPECT_EQ(function(one, 0x10000 | id, buffer, 8), TV_NOT_FOUND);
        EXPECT_EQ(function(one, id + 1, buffer, 8), TV_NOT_FOUND);
        EXPECT_EQ(function(one + 1000, id, buffer, 8), TV_NOT_FOUND);
        EXPECT_EQ(buffer[0], 0xEE);
    }
    EXPECT_EQ(a_qortvapi_event_get_guidance_info(one, id + 1, buffer, 8), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_event_get_general_info(one, id, nullptr), TV_INVALID_ARGUMENT);
    EVENT_GENERAL_INFO_T record = {};
    EXPECT_EQ(a_qortvapi_event_get_general_info(one, id + 1, &record), TV_NOT_FOUND);
    EXPECT_EQ(record.ui4_channel_id, 0u);
}

TEST_F(TelevisionEvents, ALoadIsNotified) {
    startWithDemo();
    ASSERT_EQ(a_qortvapi_event_register_callback(updated, nullptr), TV_OK);
    tv->reload();
    stream_generator::writeStreams(streams(), stream_generator::demoPlans(kUsualTime + 3600));
    tv->reload();
    EXPECT_EQ(log.wait("updated", 1)[0],
              (SeenNotification{"updated",
                                EVENT_NFY_UPDATED,
                                {0, EVENT_UPDATE_PRESENT_FOLLOWING | EVENT_UPDATE_SCHEDULE}}));
    EXPECT_EQ(log.seen("updated").size(), 1u) << "a load without changes is not notified";
    uint16_t id = 0;
    EXPECT_EQ(a_qortvapi_event_get_pf_event_id(channel(SVL_ID_TERRESTRIAL, "Première"), false, &id),
              TV_OK);
    const auto plan = planned("Première");
    const auto now = std::find_if(plan.begin(), plan.end(), [](const EventPlan& e) {
        return e.start + e.duration > kUsualTime + 3600;
    });
    EXPECT_EQ(id, now->eventId);
}

TEST_F(TelevisionEvents, APresentEventThatChangesIsNotified) {
    // One service whose event changes, and then twenty that all change at midnight.
    options.tick = std::chrono::milliseconds(5);
    auto plans = stream_generator::largePlans(1, 1, kUsualTime, 24);
    stream_generator::writeStreams(streams(), plans);
    start();
    ASSERT_EQ(a_qortvapi_event_register_callback(updated, nullptr), TV_OK);
    const auto events =
            stream_generator::eventPlans(plans[0].services[0], kUsualTime, plans[0].guideHours);
    const uint32_t one = services(SVL_ID_TERRESTRIAL)[0].ui4_channel_id;
    machine += (events[1].start - kUsualTime) * 1000;
    EXPECT_EQ(log.wait("updated", 1)[0],
              (SeenNotification{
                      "updated", EVENT_NFY_UPDATED, {one, EVENT_UPDATE_PRESENT_FOLLOWING}}));
    tv.reset();
    log.clear();

    constexpr int64_t kMidnight = 1715385600;
    machine = 1'800'000'000'000;
    stream_generator::writeStreams(streams(),
                                   stream_generator::largePlans(1, 20, kMidnight - 1, 24));
    start();
    ASSERT_EQ(a_qortvapi_event_register_callback(updated, nullptr), TV_OK);
    machine += 1000;
    EXPECT_EQ(
            log.wait("updated", 1)[0],
            (SeenNotification{"updated", EVENT_NFY_UPDATED, {0, EVENT_UPDATE_PRESENT_FOLLOWING}}));
}

TEST_F(TelevisionEvents, IsAskedWhileItIsLoaded) {
    options.tick = std::chrono::milliseconds(1);
    stream_generator::writeStreams(streams(), {stream_generator::demoPlans()[0]});
    start();
    const uint32_t one = channel(SVL_ID_TERRESTRIAL, "Première");
    std::atomic<bool> done{false};
    std::thread reader([&] {
        while (!done) {
            uint16_t count = 50;
            uint16_t ids[50];
            EXPECT_EQ(a_qortvapi_event_query_event_id_by_range(one, 0, INT64_MAX, &count, ids),
                      TV_OK);
            uint8_t text[300];
            for (size_t i = 0; i < std::min<size_t>(count, 50); ++i) {
                const int32_t result =
                        a_qortvapi_event_get_details_info(one, ids[i], text, sizeof text);
                EXPECT_TRUE(result == TV_OK || result == TV_NOT_FOUND);
            }
            machine += 1000;
        }
    });
    for (int hours = 1; hours < 8; ++hours) {
        stream_generator::writeStreams(streams(),
                                       {stream_generator::demoPlans(kUsualTime + hours * 3600)[0]});
        tv->reload();
    }
    done = true;
    reader.join();
}

}  // namespace
