/** The core methods for subtitles, ATSC events, audio, warnings and teletext that are no plain
 * bridges. */
#include <cstring>
#include <functional>
#include <optional>
#include <utility>

#include "middleware/audio_info.h"
#include "middleware/event_atsc.h"
#include "middleware/ewspa.h"
#include "middleware/subtitle.h"
#include "middleware/teletext.h"
#include "middleware/videoinfo.h"
#include "support/core_fixture.h"

namespace {

using Bytes = std::vector<uint8_t>;
using Integers = std::vector<int32_t>;
using Words = std::vector<uint32_t>;

template <typename Record>
Bytes bytesOf(const Record& record) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(&record);
    return Bytes(bytes, bytes + sizeof(record));
}

class ServiceCoreServices : public CoreTest {};

TEST_F(ServiceCoreServices, theSubtitleLoopGoesInAndComesOut) {
    using Loops = Answers<Integers, int32_t>;
    hidl_vec<int32_t> sent = Integers{1, -2, 3};
    const auto loop = [&] {
        return Loops::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_subtitle_get_loop(sent, callback);
        });
    };
    tv.on<&a_qortvapi_subtitle_get_loop>([](int32_t* values, uint32_t count) {
        EXPECT_EQ(Integers(values, values + count), (Integers{1, -2, 3}));
        values[1] = -20;
        return 2;
    });
    EXPECT_EQ(loop(), (Loops::All{{{1, -20, 3}, 2}}));
    EXPECT_EQ(Integers(sent), (Integers{1, -2, 3})) << "the client's own values stay";

    tv.on<&a_qortvapi_subtitle_get_loop>([](int32_t*, uint32_t) { return -6; });
    EXPECT_EQ(loop(), (Loops::All{{{1, -2, 3}, -6}}));
    sent = {};
    EXPECT_EQ(loop(), (Loops::All{{Integers{}, -6}}));
}

TEST_F(ServiceCoreServices, eventsAreAsManyAsAskedFor) {
    using Events = Answers<Words, int32_t>;
    const auto load = [&](uint32_t count) {
        return Events::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_event_atsc_load_events(0xf0000001, -5'000'000'000, count,
                                                           callback);
        });
    };
    tv.on<&a_qortvapi_event_atsc_load_events>(
            [](uint32_t channel, int64_t start, uint32_t* events, uint32_t count) {
                EXPECT_EQ(channel, 0xf0000001);
                EXPECT_EQ(start, -5'000'000'000);
                EXPECT_EQ(Words(events, events + count), (Words{0, 0, 0}));
                events[0] = 0xf0000011;
                events[1] = 0xf0000012;
                return 2;
            });
    EXPECT_EQ(load(3), (Events::All{{{0xf0000011, 0xf0000012, 0}, 2}}));
    tv.on<&a_qortvapi_event_atsc_load_events>(
            [](uint32_t, int64_t, uint32_t*, uint32_t) { return -6; });
    EXPECT_EQ(load(2), (Events::All{{{0, 0}, -6}}));
    EXPECT_EQ(load(0), (Events::All{{Words{}, -6}}));
}

class ServiceCoreEitStatus : public CoreTest {
  protected:
    using Statuses = Answers<Words, uint8_t, uint32_t, int32_t>;

    Statuses::All status(uint8_t groups) {
        return Statuses::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_event_atsc_check_EIT_status(0xf0000001, groups, callback);
        });
    }
};

TEST_F(ServiceCoreEitStatus, isThatOfTheGroupsThatTheMiddlewareReports) {
    uint8_t reported = 0;
    tv.on<&a_qortvapi_event_atsc_check_EIT_status>(
            [&](uint32_t channel, uint32_t* status, uint8_t* groups, uint32_t* event_list) {
                EXPECT_EQ(channel, 0xf0000001);
                EXPECT_EQ(*groups, 3);
                EXPECT_EQ(Words(status, status + 3), (Words{0, 0, 0}));
                EXPECT_EQ(*event_list, 0u);
                status[0] = 0xf0000011;
                status[1] = 0xf0000012;
                status[2] = 0xf0000013;
                *groups = reported;
                *event_list = 0xf0000021;
                return 5;
            });
    reported = 2;
    EXPECT_EQ(status(3), (Statuses::All{{{0xf0000011, 0xf0000012}, 2, 0xf0000021, 5}}));
    reported = 255;
    EXPECT_EQ(status(3),
              (Statuses::All{{{0xf0000011, 0xf0000012, 0xf0000013}, 255, 0xf0000021, 5}}))
            << "the number as reported, no more values than asked for";
}

TEST_F(ServiceCoreEitStatus, isZeroAfterAFailure) {
    tv.on<&a_qortvapi_event_atsc_check_EIT_status>(
            [](uint32_t, uint32_t* status, uint8_t*, uint32_t*) {
                EXPECT_NE(status, nullptr);
                return -6;
            });
    EXPECT_EQ(status(255), (Statuses::All{{Words(255), 255, 0, -6}}));
    EXPECT_EQ(status(0), (Statuses::All{{{}, 0, 0, -6}}));
}

/** A text in a field of a record, filled to its last byte. */
template <size_t Size>
std::string fill(char (&field)[Size], char character) {
    memset(field, character, Size);
    return std::string(Size, character);
}

class ServiceCoreEvent : public CoreTest {
  protected:
    using Events = Answers<HIDL_QORTVAPI_EVENT_ATSC_INFO_T, int32_t>;
    using Writer = std::function<int32_t(QORTVAPI_EVENT_ATSC_INFO_T&, QORTVAPI_EVENT_ATSC_TEXT_T&)>;

    /** What both methods answer where the middleware does `write`. */
    Events::All events(const Writer& write) {
        const auto checked = [write](QORTVAPI_EVENT_ATSC_INFO_T* info,
                                     QORTVAPI_EVENT_ATSC_TEXT_T* text) {
            EXPECT_EQ(bytesOf(*info), Bytes(328));
            EXPECT_EQ(bytesOf(*text), Bytes(96));
            return write(*info, *text);
        };
        tv.on<&a_qortvapi_event_atsc_getEvent_general>([&](uint32_t event, auto* info, auto* text) {
            EXPECT_EQ(event, 0xf0000031);
            return checked(info, text);
        });
        tv.on<&a_qortvapi_event_atsc_getEvent_general_by_index>(
                [&](uint32_t list, uint16_t index, auto* info, auto* text) {
                    EXPECT_EQ(list, 0xf0000032);
                    EXPECT_EQ(index, 0xfff1);
                    return checked(info, text);
                });
        return Events::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_event_atsc_getEvent_general(0xf0000031, callback);
            impl->a_hidl_a_qortvapi_event_atsc_getEvent_general_by_index(0xf0000032, 0xfff1,
                                                                         callback);
        });
    }
};

TEST_F(ServiceCoreEvent, reachesTheClientFieldByField) {
    const auto answers =
            events([](QORTVAPI_EVENT_ATSC_INFO_T& info, QORTVAPI_EVENT_ATSC_TEXT_T& text) {
                info = {-5'000'000'000, 0xf0000001, 0xf0000002, 0xf0000003, 0xfff4, 0xfff5, 2, 0,
                        0xf6,           0xf7,       "The News"};
                text = {"TV-PG"};
                return 7;
            });
    const HIDL_QORTVAPI_EVENT_ATSC_INFO_T expected = {
            -5'000'000'000, 0xf0000001, 0xf0000002, 0xf0000003, 0xfff4,     0xfff5,
            true,           false,      0xf6,       0xf7,       "The News", "TV-PG"};
    EXPECT_EQ(answers, (Events::All{{expected, 7}, {expected, 7}}));
}

TEST_F(ServiceCoreEvent, mayHaveTextsThatFillTheirFields) {
    HIDL_QORTVAPI_EVENT_ATSC_INFO_T full{};
    full.blocked = true;
    const auto answers =
            events([&](QORTVAPI_EVENT_ATSC_INFO_T& info, QORTVAPI_EVENT_ATSC_TEXT_T& text) {
                info.ui1_blocked = 1;
                full.title = fill(info.s_title, 't');
                full.rating = fill(text.s_rating, 'r');
                return 0;
            });
    EXPECT_EQ(answers, (Events::All{{full, 0}, {full, 0}}));
    EXPECT_EQ(std::get<0>(answers.at(0)).title.size(), 300u);
    EXPECT_EQ(std::get<0>(answers.at(0)).rating.size(), 96u);
}

TEST_F(ServiceCoreEvent, isZeroAfterAFailure) {
    const auto answers = events([](auto&, auto&) { return -6; });
    const HIDL_QORTVAPI_EVENT_ATSC_INFO_T zero{};
    EXPECT_EQ(answers, (Events::All{{zero, -6}, {zero, -6}}));
}

class ServiceCoreRatingMap : public CoreTest {
  protected:
    using Maps = Answers<HIDL_T_RATING_MAP_TO_G, int32_t>;

    Maps::All map(const HIDL_T_RATING_MAP_TO_G& sent) {
        return Maps::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_event_atsc_get_rating_map_by_index(0xf0000001, 0xfff2, sent,
                                                                       callback);
        });
    }
};

TEST_F(ServiceCoreRatingMap, goesInCutToItsFieldsAndComesOut) {
    tv.on<&a_qortvapi_event_atsc_get_rating_map_by_index>(
            [](uint32_t list, uint16_t index, QORTVAPI_EVENT_ATSC_RATING_MAP_T* record) {
                EXPECT_EQ(list, 0xf0000001);
                EXPECT_EQ(index, 0xfff2);
                const QORTVAPI_EVENT_ATSC_RATING_MAP_T expected = {"US", "fifteen letters",
                                                                   "sixteen letters"};
                EXPECT_EQ(bytesOf(*record), bytesOf(expected));
                *record = {"CA", "", "PG"};
                memset(record->s_dimension, 'd', 16);
                return 5;
            });
    EXPECT_EQ(map({"US", "fifteen letters", "sixteen letters!"}),
              (Maps::All{{{"CA", "dddddddddddddddd", "PG"}, 5}}));
}

TEST_F(ServiceCoreRatingMap, comesBackAsItWasAfterAFailure) {
    tv.on<&a_qortvapi_event_atsc_get_rating_map_by_index>(
            [](uint32_t, uint16_t, QORTVAPI_EVENT_ATSC_RATING_MAP_T*) { return -6; });
    EXPECT_EQ(map({"US", "", "PG"}), (Maps::All{{{"US", "", "PG"}, -6}}));
}

/** Both methods that answer a list of audio records; the tests are the same for both. */
class ServiceCoreAudioRecords : public CoreTest, public testing::WithParamInterface<bool> {
  protected:
    using Records = Answers<Bytes, uint32_t, int32_t>;
    using Reader = std::function<int32_t(QORTVAPI_AUDIO_RECORD_T*, uint32_t*)>;

    Records::All records(uint32_t count, const Reader& reader) {
        if (GetParam()) {
            tv.on<&a_qortvapi_audio_info_get_inputsource_available_record>(reader);
        } else {
            tv.on<&a_qortvapi_audio_info_get_available_record>(reader);
        }
        return Records::of([&](const auto& callback) {
            if (GetParam()) {
                impl->a_hidl_a_qortvapi_audio_info_get_inputsource_available_record(count,
                                                                                    callback);
            } else {
                impl->a_hidl_a_qortvapi_audio_info_get_available_record(count, callback);
            }
        });
    }
};

TEST_P(ServiceCoreAudioRecords, areAsManyAsTheMiddlewareReports) {
    uint32_t reported = 0;
    const Reader reader = [&](QORTVAPI_AUDIO_RECORD_T* records, uint32_t* count) {
        EXPECT_EQ(*count, 3u);
        const auto* bytes = reinterpret_cast<const uint8_t*>(records);
        EXPECT_EQ(Bytes(bytes, bytes + 132), Bytes(132));
        for (int i = 0; i < 3; ++i) memset(records + i, 0xa0 + i, 44);
        *count = reported;
        return 4;
    };
    Bytes expected(44, 0xa0);
    reported = 1;
    EXPECT_EQ(records(3, reader), (Records::All{{expected, 1, 4}}));
    expected.insert(expected.end(), 44, 0xa1);
    expected.insert(expected.end(), 44, 0xa2);
    reported = 3;
    EXPECT_EQ(records(3, reader), (Records::All{{expected, 3, 4}}));
    reported = 0x10000000;
    EXPECT_EQ(records(3, reader), (Records::All{{expected, 0x10000000, 4}}))
            << "the number as reported, no more records than asked for";
}

TEST_P(ServiceCoreAudioRecords, areOnlyCountedWhereNoneIsAskedFor) {
    EXPECT_EQ(records(0,
                      [](QORTVAPI_AUDIO_RECORD_T* all, uint32_t* count) {
                          EXPECT_EQ(all, nullptr);
                          EXPECT_EQ(*count, 0u);
                          *count = 9;
                          return 4;
                      }),
              (Records::All{{{}, 9, 4}}));
    EXPECT_EQ(records(0, [](auto*, auto*) { return -6; }), (Records::All{{{}, 0, -6}}));
}

TEST_P(ServiceCoreAudioRecords, areZeroAfterAFailure) {
    EXPECT_EQ(records(2, [](auto*, auto*) { return -6; }), (Records::All{{Bytes(88), 2, -6}}));
}

INSTANTIATE_TEST_SUITE_P(, ServiceCoreAudioRecords, testing::Bool(), [](const auto& source) {
    return source.param ? "ofAnInputSource" : "ofAService";
});

/** The values of audio and video, which have the same shape; the tests are the same for both. */
class ServiceCoreTrackData : public CoreTest, public testing::WithParamInterface<bool> {
  protected:
    using Values = Answers<Bytes, int32_t>;

    Values::All get(uint32_t size, const Bytes& data,
                    const std::function<int32_t(uint32_t, void*, uint32_t)>& middleware) {
        if (GetParam()) {
            tv.on<&a_qortvapi_videoinfo_get_data>(middleware);
        } else {
            tv.on<&a_qortvapi_audio_info_get_data>(middleware);
        }
        return Values::of([&](const auto& callback) {
            if (GetParam()) {
                impl->a_hidl_a_qortvapi_videoinfo_get_data(0xf0000001, size, data, callback);
            } else {
                impl->a_hidl_a_qortvapi_audio_info_get_data(0xf0000001, size, data, callback);
            }
        });
    }
};

TEST_P(ServiceCoreTrackData, isReadIntoWhatTheClientSent) {
    Bytes expected;
    const auto middleware = [&](uint32_t id, void* data, uint32_t size) {
        EXPECT_EQ(id, 0xf0000001);
        const auto* bytes = static_cast<uint8_t*>(data);
        EXPECT_EQ(Bytes(bytes, bytes + size), expected);
        memset(data, 0xee, 2);
        return 3;
    };
    expected = {1, 2, 3, 0, 0, 0};
    EXPECT_EQ(get(6, {1, 2, 3}, middleware), (Values::All{{{0xee, 0xee, 3, 0, 0, 0}, 3}}));
    expected = {1, 2, 3};
    EXPECT_EQ(get(3, {1, 2, 3, 4, 5}, middleware), (Values::All{{{0xee, 0xee, 3}, 3}}))
            << "no more than the size";
}

TEST_P(ServiceCoreTrackData, comesBackAsItWasAfterAFailure) {
    const auto failure = [](uint32_t, void* data, uint32_t) {
        EXPECT_NE(data, nullptr);
        return -6;
    };
    EXPECT_EQ(get(2, {7}, failure), (Values::All{{{7, 0}, -6}}));
    EXPECT_EQ(get(0, {7}, failure), (Values::All{{Bytes{}, -6}}));
}

TEST_P(ServiceCoreTrackData, isSetWithTheSizeThatWasSent) {
    const hidl_vec<uint8_t> data = Bytes{1, 2, 3};
    std::optional<Bytes> read;
    const auto middleware = [&](uint32_t id, const void* pointer, uint32_t size) {
        EXPECT_EQ(id, 0xf0000001);
        const auto* bytes = static_cast<const uint8_t*>(pointer);
        EXPECT_EQ(bytes == data.data(), size <= data.size()) << "no copy but a longer one";
        read.emplace(bytes, bytes + size);
        return -4;
    };
    tv.on<&a_qortvapi_videoinfo_set_data>(middleware);
    tv.on<&a_qortvapi_audio_info_set_data>(middleware);
    for (const auto& [size, expected] : std::vector<std::pair<uint32_t, Bytes>>{
                 {0, {}}, {2, {1, 2}}, {3, {1, 2, 3}}, {5, {1, 2, 3, 0, 0}}}) {
        const int32_t result =
                GetParam() ? impl->a_hidl_a_qortvapi_videoinfo_set_data(0xf0000001, data, size)
                           : impl->a_hidl_a_qortvapi_audio_info_set_data(0xf0000001, data, size);
        EXPECT_EQ(result, -4);
        EXPECT_EQ(read, expected) << size;
    }
}

INSTANTIATE_TEST_SUITE_P(, ServiceCoreTrackData, testing::Bool(),
                         [](const auto& kind) { return kind.param ? "ofVideo" : "ofAudio"; });

class ServiceCoreWarning : public CoreTest {
  protected:
    using Values = Answers<Integers, int32_t>;

    ServiceCoreWarning() {
        tv.on<&a_qortvapi_ewspa_set>(
                [&](uint8_t type, uint32_t id, int32_t* values, uint32_t count) {
                    return onMiddleware(type, id, values, count);
                });
        tv.on<&a_qortvapi_ewspa_get>(
                [&](uint8_t type, uint32_t id, int32_t* values, uint32_t count) {
                    return onMiddleware(type, id, values, count);
                });
    }

    int32_t onMiddleware(uint8_t type, uint32_t id, int32_t* values, uint32_t count) {
        EXPECT_EQ(type, 0xf1);
        EXPECT_EQ(id, 0xf0000002);
        EXPECT_EQ(Integers(values, values + count), Integers(sent));
        if (result == 0) values[0] = -10;
        return result;
    }
    Values::All set() {
        return Values::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_ewspa_set(0xf1, 0xf0000002, sent, callback);
        });
    }
    Values::All get() {
        return Values::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_ewspa_get(0xf1, 0xf0000002, sent, callback);
        });
    }

    /** The lines of one request, `module_lines` being those of the module. */
    static std::vector<LogLine> lines(const std::string& function,
                                      const std::vector<std::string>& module_lines) {
        const std::string method = "a_hidl_" + function;
        std::vector<LogLine> all = {debugLine("QorTvApiImpl(service)", method, method)};
        for (const std::string& line : module_lines) {
            all.push_back(debugLine("hh_qortvapi_ews_pa", "hh_" + function, line));
        }
        return all;
    }

    hidl_vec<int32_t> sent = Integers{1, -2};
    int32_t result = 0;
};

TEST_F(ServiceCoreWarning, valuesGoInAndComeOut) {
    EXPECT_EQ(set(), (Values::All{{{-10, -2}, 0}}));
    EXPECT_EQ(log.take(), lines("a_qortvapi_ewspa_set", {"2 0\n"}));
    EXPECT_EQ(get(), (Values::All{{{-10, -2}, 0}}));
    EXPECT_EQ(log.take(), lines("a_qortvapi_ewspa_get", {"2 0\n"}));
    EXPECT_EQ(Integers(sent), (Integers{1, -2})) << "the client's own values stay";
    mTvApiDebug = 0;
    set();
    get();
    EXPECT_TRUE(log.take().empty());
}

TEST_F(ServiceCoreWarning, anyResultButZeroIsLoggedAlways) {
    for (const int32_t each : {-7, 7}) {
        result = each;
        const std::string number = std::to_string(each);
        const std::string set_line = "a_qortvapi_ewspa_set fail, i4_ret=" + number + ", 2\n";
        const std::string get_line = "a_qortvapi_ewspa_get fail, i4_ret=" + number + ", 2\n";
        mTvApiDebug = 1;
        EXPECT_EQ(set(), (Values::All{{{1, -2}, each}}));
        EXPECT_EQ(log.take(), lines("a_qortvapi_ewspa_set", {set_line, "2 " + number + "\n"}));
        EXPECT_EQ(get(), (Values::All{{{1, -2}, each}}));
        EXPECT_EQ(log.take(), lines("a_qortvapi_ewspa_get", {get_line, "2 " + number + "\n"}));
        mTvApiDebug = 0;
        set();
        get();
        EXPECT_EQ(log.take(),
                  (std::vector<LogLine>{
                          debugLine("hh_qortvapi_ews_pa", "hh_a_qortvapi_ewspa_set", set_line),
                          debugLine("hh_qortvapi_ews_pa", "hh_a_qortvapi_ewspa_get", get_line)}));
    }
}

TEST_F(ServiceCoreWarning, mayHaveNoValues) {
    sent = {};
    result = -1;
    EXPECT_EQ(set(), (Values::All{{Integers{}, -1}}));
    EXPECT_EQ(get(), (Values::All{{Integers{}, -1}}));
}

class ServiceCoreTeletext : public CoreTest {
  protected:
    static void expectPage(const QORTVAPI_TTX_PAGE_ADDR_T* page) {
        EXPECT_EQ(page->ui1_magazine, 0xf1);
        EXPECT_EQ(page->ui1_page, 0xf2);
        EXPECT_EQ(page->ui2_sub_page, 0xfff3);
    }

    const HIDL_QORTVAPI_TTX_PAGE_ADDR_T page = {0xf1, 0xf2, 0xfff3};
};

TEST_F(ServiceCoreTeletext, aPageIsSetFieldByField) {
    tv.on<&a_qortvapi_teletext_set_page>([](const QORTVAPI_TTX_PAGE_ADDR_T* address) {
        expectPage(address);
        return -4;
    });
    EXPECT_EQ(static_cast<int32_t>(impl->a_hidl_a_qortvapi_teletext_set_page(page)), -4);
}

TEST_F(ServiceCoreTeletext, tablesAreAnsweredWhole) {
    using Tables = Answers<Bytes, int32_t>;
    int32_t result = 6;
    const auto read = [&](const QORTVAPI_TTX_PAGE_ADDR_T* address,
                          QORTVAPI_TTX_TOP_TABLE_T* table) {
        expectPage(address);
        EXPECT_EQ(bytesOf(*table), Bytes(1804));
        if (result >= 0) memset(table, 0xee, sizeof(*table));
        return result;
    };
    tv.on<&a_qortvapi_teletext_top_get_group_content>(read);
    tv.on<&a_qortvapi_teletext_top_get_page_content>(read);
    for (const int32_t each : {6, -6}) {
        result = each;
        const Bytes table(1804, each >= 0 ? 0xee : 0);
        EXPECT_EQ(Tables::of([&](const auto& callback) {
                      impl->a_hidl_a_qortvapi_teletext_top_get_group_content(page, callback);
                      impl->a_hidl_a_qortvapi_teletext_top_get_page_content(page, callback);
                  }),
                  (Tables::All{{table, each}, {table, each}}));
    }
}

}  // namespace
