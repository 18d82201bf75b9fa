/** The event interface: the active window, queries, and the data of an event. */
#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <ostream>

#include "QorTvApiEventImpl.h"
#include "middleware/event.h"
#include "support/core_fixture.h"
#include "support/short_memory.h"

namespace {

using switchboard::Switchboard;
using Bytes = std::vector<uint8_t>;
using Channels = std::vector<uint32_t>;
using Ids = std::vector<uint16_t>;
using Names = std::vector<std::string>;

constexpr uint32_t kChannel = 0xfedcba98;
constexpr uint32_t kEvent = 0x89abcdef;
constexpr int64_t kStart = 0x7edcba9876543210;
constexpr int64_t kEnd = -0x7edcba9876543210;

class ServiceEvent : public ServiceTest {
  protected:
    ServiceEvent() { log.take(); }

    /** `call` writes `texts` of `method`, whether or not debugging is on. */
    template <typename Call>
    void expectLines(const std::string& method, const Names& texts, const Call& call) {
        std::vector<LogLine> lines;
        for (const std::string& text : texts) {
            lines.push_back(debugLine("QorTvApiEventImpl(service)", method, text));
        }
        for (const uint8_t debugging : {0, 1}) {
            mTvApiDebug = debugging;
            log.take();
            call();
            EXPECT_EQ(log.take(), lines);
        }
    }

    /** As above, and none of the calls reaches the middleware. */
    template <typename Call>
    void expectNoCall(const std::string& method, const Names& texts, const Call& call) {
        Switchboard::startRecording();
        expectLines(method, texts, call);
        EXPECT_EQ(Switchboard::stopRecording(), Names{});
    }

    const sp<QorTvApiEventImpl> impl = new QorTvApiEventImpl();
};

// The active window.

struct WindowRow {
    const char* name;
    size_t channels;
    uint16_t count;
    const char* refusal;  // null where the window is taken
};

void PrintTo(const WindowRow& row, std::ostream* out) {
    *out << row.name;
}

constexpr char kNoChannels[] = "Alloc memory fail!!!!\n";
constexpr char kOtherCount[] = "channel id number not match!!!!\n";
constexpr WindowRow kWindowRows[] = {
        {"one", 1, 1, nullptr},
        {"asManyAsCanBeCounted", 65535, 65535, nullptr},
        {"none", 0, 0, kNoChannels},
        {"noneOfFive", 0, 5, kNoChannels},
        {"moreThanCounted", 3, 2, kOtherCount},
        {"lessThanCounted", 3, 4, kOtherCount},
        {"someOfNone", 3, 0, kOtherCount},
        {"asManyInTheLow16Bits", 65537, 1, kOtherCount},
};

class ServiceEventWindow : public ServiceEvent, public testing::WithParamInterface<WindowRow> {
  protected:
    void check(const std::string& function, const hidl_vec<uint32_t>& ids,
               const std::function<int32_t()>& set) {
        const WindowRow& row = GetParam();
        const std::string method = "a_hidl_" + function;
        if (row.refusal != nullptr) {
            expectNoCall(method, {row.refusal}, [&] { EXPECT_EQ(set(), -1); });
            return;
        }
        for (const int32_t result : {0, -7}) {
            mResult = result;
            mData = ids.data();
            expectLines(method, {}, [&] {
                Switchboard::startRecording();
                EXPECT_EQ(set(), result);
                EXPECT_EQ(Switchboard::stopRecording(), Names{function});
            });
        }
    }

    int32_t mResult = 0;
    const uint32_t* mData = nullptr;  // what is to arrive
};

TEST_P(ServiceEventWindow, isSetFromATime) {
    tv.on<&a_qortvapi_event_setCurrentActiveWindow>(
            [&](const uint32_t* ids, uint16_t count, int64_t time) {
                EXPECT_EQ(ids, mData) << "a vector is not copied";
                EXPECT_EQ(count, GetParam().count);
                EXPECT_EQ(time, kStart);
                return mResult;
            });
    const hidl_vec<uint32_t> ids(GetParam().channels);
    check("a_qortvapi_event_setCurrentActiveWindow", ids, [&]() -> int32_t {
        return impl->a_hidl_a_qortvapi_event_setCurrentActiveWindow(ids, kStart, GetParam().count);
    });
}

TEST_P(ServiceEventWindow, isSetBetweenTwoTimes) {
    tv.on<&a_qortvapi_event_setCurrentActiveWindow_Ex>(
            [&](const uint32_t* ids, uint16_t count, int64_t start, int64_t end) {
                EXPECT_EQ(ids, mData) << "a vector is not copied";
                EXPECT_EQ(count, GetParam().count);
                EXPECT_EQ(start, kStart);
                EXPECT_EQ(end, kEnd);
                return mResult;
            });
    const hidl_vec<uint32_t> ids(GetParam().channels);
    check("a_qortvapi_event_setCurrentActiveWindow_Ex", ids, [&]() -> int32_t {
        return impl->a_hidl_a_qortvapi_event_setCurrentActiveWindow_Ex(ids, kStart, kEnd,
                                                                       GetParam().count);
    });
}

INSTANTIATE_TEST_SUITE_P(, ServiceEventWindow, testing::ValuesIn(kWindowRows),
                         [](const auto& row) { return std::string(row.param.name); });

class ServiceEventList : public ServiceEvent {
  protected:
    using Windows = Answers<Channels, int64_t, int64_t, int32_t>;
    Windows::All list(uint16_t count) const {
        return Windows::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_event_get_active_win_list(
                    count,
                    [&](const hidl_vec<uint32_t>& ids, int64_t start, int64_t end, int32_t result) {
                        EXPECT_EQ(ids.data(), mArray) << "a view";
                        callback(ids, start, end, result);
                    });
        });
    }

    const uint32_t* mArray = nullptr;  // what the middleware wrote to

    static constexpr char kMethod[] = "a_hidl_a_qortvapi_event_get_active_win_list";
};

TEST_F(ServiceEventList, hasAsManyChannelsAsTheClientSays) {
    tv.on<&a_qortvapi_event_get_active_win_list>(
            [&](uint32_t* ids, uint16_t count, int64_t* start, int64_t* end) {
                mArray = ids;
                EXPECT_EQ(Channels(ids, ids + count), Channels(count));
                EXPECT_EQ(*start, 0);
                EXPECT_EQ(*end, 0);
                ids[0] = kChannel;
                *start = kStart;
                *end = kEnd;
                return 8;
            });
    expectLines(kMethod, {}, [&] {
        EXPECT_EQ(list(3), (Windows::All{{{kChannel, 0, 0}, kStart, kEnd, 8}}));
    });
    Channels most(65535);
    most[0] = kChannel;
    EXPECT_EQ(list(65535), (Windows::All{{most, kStart, kEnd, 8}}));
}

TEST_F(ServiceEventList, isZeroWhereTheMiddlewareFails) {
    tv.on<&a_qortvapi_event_get_active_win_list>([&](uint32_t* ids, uint16_t, int64_t*, int64_t*) {
        mArray = ids;
        return -7;
    });
    EXPECT_EQ(list(2), (Windows::All{{{0, 0}, 0, 0, -7}}));
}

TEST_F(ServiceEventList, ofNoChannelsIsAQuestionForTheTimes) {
    tv.on<&a_qortvapi_event_get_active_win_list>(
            [](uint32_t* ids, uint16_t count, int64_t* start, int64_t* end) {
                EXPECT_EQ(ids, nullptr);
                EXPECT_EQ(count, 0);
                *start = kStart;
                *end = kEnd;
                return 8;
            });
    const ShortMemory memory(0);
    EXPECT_EQ(list(0), (Windows::All{{{}, kStart, kEnd, 8}}));
}

TEST_F(ServiceEventList, isNotAnsweredWithoutMemory) {
    const ShortMemory memory(0);
    expectNoCall(kMethod, {"allocte memory fail !!!!\n"}, [&] { EXPECT_TRUE(list(1).empty()); });
}

// The data of an event.

using BlockMethod = Return<void> (QorTvApiEventImpl::*)(
        uint32_t, uint32_t, uint32_t, std::function<void(const hidl_vec<uint8_t>&, int32_t)>);
using BlockRead = std::function<int32_t(uint32_t, uint32_t, uint8_t*, uint32_t)>;

struct BlockRow {
    const char* method;
    const char* function;
    BlockMethod call;
    void (*plug)(Switchboard& tv, const BlockRead& read);
};

void PrintTo(const BlockRow& row, std::ostream* out) {
    *out << row.method;
}

// clang-format off
#define ROW(method, function) \
    {"a_hidl_" #method, #function, &QorTvApiEventImpl::a_hidl_##method, \
     [](Switchboard& tv, const BlockRead& read) { tv.on<&function>(read); }}
const BlockRow kBlockRows[] = {
#include "rows/event_blocks.inc"
};
#undef ROW
// clang-format on

class ServiceEventBlock : public ServiceEvent, public testing::WithParamInterface<BlockRow> {};

TEST_P(ServiceEventBlock, isAnsweredAtTheSizeAskedFor) {
    const BlockRow& row = GetParam();
    for (const uint32_t size : {0u, 1u, 10u, 100u, 65536u}) {
        for (const int32_t result : {0, 10, -7}) {
            SCOPED_TRACE(size);
            const Bytes written(std::min(size, 10u), 0xf5);
            const uint8_t* block = nullptr;
            row.plug(tv, [&](uint32_t channel, uint32_t event, uint8_t* data, uint32_t its_size) {
                EXPECT_EQ(channel, kChannel);
                EXPECT_EQ(event, kEvent);
                EXPECT_NE(data, nullptr);
                EXPECT_EQ(its_size, size);
                std::copy(written.begin(), written.end(), data);
                block = data;
                return result;
            });
            expectLines(row.method, {}, [&] {
                int answers = 0;
                Switchboard::startRecording();
                (*impl.*row.call)(
                        kChannel, kEvent, size,
                        [&](const hidl_vec<uint8_t>& bytes, int32_t its_result) {
                            ++answers;
                            EXPECT_EQ(bytes.data(), block) << "a view";
                            ASSERT_EQ(bytes.size(), size);
                            EXPECT_TRUE(std::equal(written.begin(), written.end(), bytes.begin()));
                            EXPECT_EQ(its_result, result);
                        });
                EXPECT_EQ(Switchboard::stopRecording(), Names{row.function});
                EXPECT_EQ(answers, 1);
            });
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, ServiceEventBlock, testing::ValuesIn(kBlockRows),
                         [](const auto& row) { return std::string(row.param.method); });

TEST_F(ServiceEvent, aBlockOfTheGreatestSizeIsAnsweredWholeOrNotAtAll) {
    constexpr uint32_t kSize = 0xffffffff;
    int calls = 0;
    tv.on<&a_qortvapi_event_get_details_info>(
            [&](uint32_t, uint32_t, uint8_t* block, uint32_t size) {
                ++calls;
                EXPECT_EQ(size, kSize);
                block[size - 1] = 0xf5;  // there is that much
                return 0;
            });
    int answers = 0;
    impl->a_hidl_a_qortvapi_event_get_details_info(kChannel, kEvent, kSize,
                                                   [&](const hidl_vec<uint8_t>& block, int32_t) {
                                                       ++answers;
                                                       EXPECT_EQ(block.size(), kSize);
                                                   });
    EXPECT_EQ(answers, calls);
    const LogLine failure =
            debugLine("QorTvApiEventImpl(service)", "a_hidl_a_qortvapi_event_get_details_info",
                      "allocte memory fail !!!!\n");
    EXPECT_EQ(log.take(), answers == 1 ? std::vector<LogLine>{} : std::vector<LogLine>{failure});
}

TEST_F(ServiceEvent, aRatingMapHasThreeTexts) {
    struct Map {
        std::string region;
        std::string dimension;
        std::string rating;
        int32_t result;
        bool operator==(const Map& other) const {
            return region == other.region && dimension == other.dimension &&
                   rating == other.rating && result == other.result;
        }
    };
    const auto request = [&] {
        std::vector<Map> maps;
        impl->a_hidl_a_qortvapi_event_get_rating_map(
                kChannel, kEvent, [&](const HIDL_T_RATING_MAP_TO_G& map, int32_t result) {
                    maps.push_back({map.region, map.dimension, map.rating, result});
                });
        return maps;
    };
    const std::string full_region(65, 'x');
    const std::string full_dimension(33, 'y');
    const std::string full_rating(256, 'z');
    struct Row {
        std::string bytes[3];
        Map answered;
    };
    for (const Row& row : {Row{{"abc", "de", "f"}, {"abc", "de", "f", 0}},
                           Row{{{"a\0c", 3}, {"\0e", 2}, {"f\0g", 3}}, {"a", "", "f", -7}},
                           Row{{full_region, full_dimension, full_rating},
                               {full_region, full_dimension, full_rating, 8}}}) {
        tv.on<&a_qortvapi_event_get_rating_map>(
                [&](uint32_t channel, uint32_t event, RATING_MAP_T* map) {
                    EXPECT_EQ(channel, kChannel);
                    EXPECT_EQ(event, kEvent);
                    auto* bytes = reinterpret_cast<uint8_t*>(map);
                    EXPECT_EQ(Bytes(bytes, bytes + 354), Bytes(354));
                    memcpy(bytes, row.bytes[0].data(), row.bytes[0].size());
                    memcpy(bytes + 65, row.bytes[1].data(), row.bytes[1].size());
                    memcpy(bytes + 98, row.bytes[2].data(), row.bytes[2].size());
                    return row.answered.result;
                });
        EXPECT_EQ(request(), std::vector<Map>{row.answered});
    }
    tv.on<&a_qortvapi_event_get_rating_map>([](uint32_t, uint32_t, RATING_MAP_T*) { return -1; });
    expectLines("a_hidl_a_qortvapi_event_get_rating_map", {}, [&] {
        EXPECT_EQ(request(), (std::vector<Map>{{"", "", "", -1}}));
    });
}

TEST_F(ServiceEvent, isBlockedWhereTheMiddlewareDoesNotReturn0) {
    for (const int32_t returned : {0, 1, 2, 256, -1}) {
        tv.on<&a_qortvapi_event_check_block>([=](uint32_t, uint32_t) { return returned; });
        EXPECT_EQ(bool{impl->a_hidl_a_qortvapi_event_check_block(1, 2)}, returned != 0) << returned;
    }
}

TEST_F(ServiceEvent, presentOrFollowingIsOneOrTheOther) {
    for (const bool following : {false, true}) {
        tv.on<&a_qortvapi_event_get_pf_event_id>(
                [=](uint32_t channel, bool its_following, uint16_t* event) {
                    EXPECT_EQ(channel, kChannel);
                    EXPECT_EQ(its_following, following);
                    *event = 0xfedc;
                    return 8;
                });
        using Events = Answers<uint16_t, int32_t>;
        EXPECT_EQ(Events::of([&](const auto& callback) {
                      impl->a_hidl_a_qortvapi_event_get_pf_event_id(kChannel, following, callback);
                  }),
                  (Events::All{{0xfedc, 8}}));
    }
}

// Queries.

TEST_F(ServiceEvent, aQueryParameterHasFourFields) {
    for (const int32_t result : {0, -7}) {
        tv.on<&a_qortvapi_event_set_query_parameter>(
                [=](const QORTVAPI_EVENT_QUERY_PARAMETER_T* parameter) {
                    EXPECT_EQ(parameter->ui4_sources, 0xf1u);
                    EXPECT_EQ(parameter->ui4_days, 0xfedcba98u);
                    EXPECT_EQ(parameter->ui4_language, 0x646575u);
                    EXPECT_EQ(parameter->ui4_options, 0xffffffffu);
                    return result;
                });
        expectLines("a_hidl_a_qortvapi_event_set_query_parameter", {}, [&] {
            Switchboard::startRecording();
            EXPECT_EQ(int32_t{impl->a_hidl_a_qortvapi_event_set_query_parameter(
                              {0xf1, 0xfedcba98, 0x646575, 0xffffffff})},
                      result);
            EXPECT_EQ(Switchboard::stopRecording(), Names{"a_qortvapi_event_set_query_parameter"});
        });
    }
}

/** How many events the middleware reports of how many that were asked for. */
struct CountRow {
    uint16_t maximum;
    uint16_t reported;
    int32_t result;
};
constexpr CountRow kCountRows[] = {
        {3, 0, -7}, {3, 2, 0},     {3, 3, 8},         {3, 4, 0},     {3, 65535, -7},
        {0, 0, 0},  {0, 65535, 1}, {65535, 65535, 0}, {65535, 1, 0},
};

/** What is answered of `written`. */
template <typename Number>
std::vector<Number> firstOf(const std::vector<Number>& written, uint16_t reported) {
    return {written.begin(), written.begin() + std::min<size_t>(reported, written.size())};
}

class ServiceEventRange : public ServiceEvent {
  protected:
    using Events = Answers<uint16_t, Ids, int32_t>;
    Events::All query(uint16_t maximum) const {
        return Events::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_event_query_event_id_by_range(
                    kChannel, kStart, kEnd, maximum,
                    [&](uint16_t count, const hidl_vec<uint16_t>& ids, int32_t result) {
                        EXPECT_EQ(ids.data(), mArray) << "a view";
                        callback(count, ids, result);
                    });
        });
    }

    const uint16_t* mArray = nullptr;  // what the middleware wrote to

    static constexpr char kMethod[] = "a_hidl_a_qortvapi_event_query_event_id_by_range";
};

TEST_F(ServiceEventRange, answersAsManyEventsAsAreReportedAndWereAskedFor) {
    for (const CountRow& row : kCountRows) {
        SCOPED_TRACE(row.reported);
        Ids written;
        for (uint16_t i = 0; i < row.maximum; ++i) written.push_back(0xf000 ^ i);
        tv.on<&a_qortvapi_event_query_event_id_by_range>(
                [&](uint32_t channel, int64_t start, int64_t end, uint16_t* count, uint16_t* ids) {
                    EXPECT_EQ(channel, kChannel);
                    EXPECT_EQ(start, kStart);
                    EXPECT_EQ(end, kEnd);
                    EXPECT_EQ(*count, row.maximum);
                    EXPECT_EQ(Ids(ids, ids + row.maximum), Ids(row.maximum));
                    mArray = ids;
                    std::copy(written.begin(), written.end(), ids);
                    *count = row.reported;
                    return row.result;
                });
        expectLines(kMethod, {}, [&] {
            EXPECT_EQ(query(row.maximum),
                      (Events::All{{row.reported, firstOf(written, row.reported), row.result}}));
        });
    }
}

TEST_F(ServiceEventRange, answersZerosWhereTheMiddlewareFails) {
    tv.on<&a_qortvapi_event_query_event_id_by_range>(
            [&](uint32_t, int64_t, int64_t, uint16_t*, uint16_t* ids) {
                mArray = ids;
                return -7;
            });
    EXPECT_EQ(query(2), (Events::All{{2, {0, 0}, -7}}));
}

TEST_F(ServiceEventRange, isNotAnsweredWithoutMemory) {
    const ShortMemory memory(0);
    expectNoCall(kMethod, {"event_id_array Alloc memory fail!!!!\n"},
                 [&] { EXPECT_TRUE(query(3).empty()); });
}

class ServiceEventFilter : public ServiceEvent {
  protected:
    /** A filter that counts `genres` genres, with every byte set, also between the fields. */
    static HIDL_QORTVAPI_QUERY_FILTER_INFORMATION_T filterOf(uint8_t genres) {
        HIDL_QORTVAPI_QUERY_FILTER_INFORMATION_T filter;
        std::array<uint8_t, sizeof(filter)> image;
        for (size_t i = 0; i < image.size(); ++i) image[i] = 0x81 + i;
        memcpy(reinterpret_cast<uint8_t*>(&filter), image.data(), image.size());
        filter.mask = 0xfedc;
        filter.minimum_duration = 0xfedcba98;
        filter.start_time = kStart;
        filter.end_time = kEnd;
        filter.running_status = 0xf4;
        filter.genre_count = genres;
        filter.maximum_age = 0xf9;
        return filter;
    }

    using Events = Answers<uint16_t, Ids, std::vector<uint32_t>, int32_t>;
    Events::All query(uint8_t genres, uint16_t maximum) const {
        return Events::of([&](const auto& callback) {
            impl->a_hidl_a_qortvapi_event_query_event_id_by_filter(
                    kChannel, filterOf(genres), maximum,
                    [&](uint16_t count, const hidl_vec<uint16_t>& ids,
                        const hidl_vec<uint32_t>& values, int32_t result) {
                        EXPECT_EQ(ids.data(), mIds) << "a view";
                        EXPECT_EQ(values.data(), mValues) << "a view";
                        callback(count, ids, values, result);
                    });
        });
    }

    // What the middleware wrote to.
    const uint16_t* mIds = nullptr;
    const uint32_t* mValues = nullptr;

    static constexpr char kMethod[] = "a_hidl_a_qortvapi_event_query_event_id_by_filter";
};

TEST_F(ServiceEventFilter, answersAsManyEventsAsAreReportedAndWereAskedFor) {
    for (const CountRow& row : kCountRows) {
        SCOPED_TRACE(row.reported);
        Ids events;
        std::vector<uint32_t> numbers;
        for (uint16_t i = 0; i < row.maximum; ++i) {
            events.push_back(0xf000 ^ i);
            numbers.push_back(0xfedc0000 + i);
        }
        tv.on<&a_qortvapi_event_query_event_id_by_filter>(
                [&](uint32_t channel, const QORTVAPI_QUERY_FILTER_INFORMATION_T*, uint16_t* count,
                    uint16_t* ids, uint32_t* values) {
                    EXPECT_EQ(channel, kChannel);
                    EXPECT_EQ(*count, row.maximum);
                    EXPECT_EQ(Ids(ids, ids + row.maximum), Ids(row.maximum));
                    EXPECT_EQ(Channels(values, values + row.maximum), Channels(row.maximum));
                    mIds = ids;
                    mValues = values;
                    std::copy(events.begin(), events.end(), ids);
                    std::copy(numbers.begin(), numbers.end(), values);
                    *count = row.reported;
                    return row.result;
                });
        expectLines(kMethod, {}, [&] {
            EXPECT_EQ(query(0, row.maximum),
                      (Events::All{{row.reported, firstOf(events, row.reported),
                                    firstOf(numbers, row.reported), row.result}}));
        });
    }
}

TEST_F(ServiceEventFilter, reachesTheMiddlewareWithTheGenresThatAreCounted) {
    for (const uint8_t genres : {0, 1, 3, 7, 8}) {
        SCOPED_TRACE(int{genres});
        int calls = 0;
        tv.on<&a_qortvapi_event_query_event_id_by_filter>(
                [&](uint32_t, const QORTVAPI_QUERY_FILTER_INFORMATION_T* filter, uint16_t*,
                    uint16_t* ids, uint32_t* values) {
                    ++calls;
                    mIds = ids;
                    mValues = values;
                    EXPECT_EQ(filter->ui2_mask, 0xfedc);
                    EXPECT_EQ(filter->ui4_minimum_duration, 0xfedcba98);
                    EXPECT_EQ(filter->i8_start_time, kStart);
                    EXPECT_EQ(filter->i8_end_time, kEnd);
                    EXPECT_EQ(filter->ui1_running_status, 0xf4);
                    EXPECT_EQ(filter->ui1_genre_count, genres);
                    Bytes expected(8);
                    for (uint8_t i = 0; i < genres; ++i) expected[i] = 0x81 + 26 + i;
                    EXPECT_EQ(Bytes(filter->aui1_genres, filter->aui1_genres + 8), expected);
                    EXPECT_EQ(filter->ui1_maximum_age, 0xf9);
                    return 0;
                });
        query(genres, 1);
        EXPECT_EQ(calls, 1);
    }
}

TEST_F(ServiceEventFilter, takesWhatFollowsTheGenresWhereMoreAreCounted) {
    for (const uint8_t genres : {9, 14}) {
        SCOPED_TRACE(int{genres});
        int calls = 0;
        tv.on<&a_qortvapi_event_query_event_id_by_filter>(
                [&](uint32_t, const QORTVAPI_QUERY_FILTER_INFORMATION_T* filter, uint16_t*,
                    uint16_t* ids, uint32_t* values) {
                    ++calls;
                    mIds = ids;
                    mValues = values;
                    EXPECT_EQ(filter->ui1_genre_count, genres);
                    EXPECT_EQ(filter->ui1_maximum_age, 0xf9);
                    Bytes expected(14);
                    for (uint8_t i = 0; i < genres; ++i) expected[i] = 0x81 + 26 + i;
                    expected[8] = 0xf9;
                    const auto* bytes = reinterpret_cast<const uint8_t*>(filter);
                    EXPECT_EQ(Bytes(bytes + 26, bytes + 40), expected);
                    return 0;
                });
        query(genres, 1);
        EXPECT_EQ(calls, 1);
    }
}

using ServiceEventFilterDeathTest = ServiceEventFilter;

TEST_F(ServiceEventFilterDeathTest, endsTheProcessWhereTheGenresLeadOutOfIt) {
    const std::string method = kMethod;
    EXPECT_DEATH(query(15, 1), method + ": bounded copy of 15 bytes into a block of 14");
    EXPECT_DEATH(query(255, 1), method + ": bounded copy of 255 bytes into a block of 14");
}

TEST_F(ServiceEventFilter, isNotAnsweredWithoutMemory) {
    for (const int granted : {0, 1}) {
        SCOPED_TRACE(granted);
        expectNoCall(kMethod, {"event allocte memory fail !!!!\n"}, [&] {
            const ShortMemory memory(granted);
            EXPECT_TRUE(query(3, 5).empty());
        });
    }
}

}  // namespace
