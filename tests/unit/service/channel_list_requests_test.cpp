/** The channel-list methods that are no plain bridges: bulk reads, array reads, locked writes. */
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <functional>
#include <future>
#include <mutex>
#include <thread>
#include <tuple>

#include "QorTvApiChannelListImpl.h"
#include "middleware/channellist.h"
#include "support/fake_ion.h"
#include "support/fan_out_check.h"
#include "support/service_fixture.h"

namespace {

constexpr char kTag[] = "QorTvApiChannelListImpl(service)";
constexpr char kModuleTag[] = "hh_channellist";

using Events = std::vector<std::string>;

/** A record filled with one byte. */
template <typename Record>
Record filledWith(uint8_t byte) {
    Record record;
    memset(&record, byte, sizeof(record));
    return record;
}

class ServiceChannelListRequest : public ServiceTest {
  protected:
    ServiceChannelListRequest() : impl(new QorTvApiChannelListImpl()) {
        gIon = FakeIon();
        tv.on<&a_qortvapi_channellist_lock_database>([](uint32_t svl_id, uint32_t flags) {
            noteEvent("lock " + std::to_string(svl_id) + " " + std::to_string(flags));
            return -1;  // the service ignores it
        });
        tv.on<&a_qortvapi_channellist_unlock_database>([](uint32_t svl_id, uint32_t flags) {
            noteEvent("unlock " + std::to_string(svl_id) + " " + std::to_string(flags));
            return -1;
        });
    }

    static Events take() { return std::exchange(gIon.events, {}); }
    static bool happened(const std::string& event) {
        std::lock_guard<std::mutex> lock(gIonMutex);
        return std::count(gIon.events.begin(), gIon.events.end(), event) > 0;
    }

    auto countsAnswer() {
        return [](uint32_t first, uint32_t second, int32_t result) {
            noteEvent("answer " + std::to_string(first) + " " + std::to_string(second) + " " +
                      std::to_string(result));
        };
    }

    /** What a bulk read does before and after `between`; device 1 is the services', 2 the streams'.
     */
    static Events bulk(const Events& between) {
        Events events = {"open 1", "import 1", "open 2", "import 2"};
        events.insert(events.end(), between.begin(), between.end());
        events.insert(events.end(), {"close 1", "close 2"});
        return events;
    }

    /** The log without debug lines. */
    std::vector<LogLine> errors() {
        std::vector<LogLine> lines;
        for (LogLine& line : log.take()) {
            if (line.priority > ANDROID_LOG_DEBUG) lines.push_back(std::move(line));
        }
        return lines;
    }

    const sp<QorTvApiChannelListImpl> impl;
};

/** The longest wait for an event that must happen: it finds hangs and measures nothing. */
constexpr std::chrono::seconds kPatience{120};

// Reads of a list into shared memory.

TEST_F(ServiceChannelListRequest, readsByFilterInOrder) {
    const SharedBuffer svl(3 * sizeof(SVL_REC_T));
    const SharedBuffer tsl(3 * sizeof(TSL_REC_T));
    tv.on<&a_qortvapi_channellist_get_svl_tsl_recs_by_filter>(
            [](int32_t svl_id, int32_t flags, int32_t channel_id, bool wrap, int32_t filter,
               int32_t prev_count, int32_t next_count, SVL_REC_T* svl_recs, TSL_REC_T* tsl_recs,
               uint32_t* prev_filled, uint32_t* next_filled) {
                EXPECT_EQ(svl_id, -1);
                EXPECT_EQ(flags, -2);
                EXPECT_EQ(channel_id, -3);
                EXPECT_TRUE(wrap);
                EXPECT_EQ(filter, -4);
                EXPECT_EQ(prev_count, 1);
                EXPECT_EQ(next_count, 2);
                EXPECT_EQ(*prev_filled, 0u);
                EXPECT_EQ(*next_filled, 0u);
                svl_recs[2] = filledWith<SVL_REC_T>(0x11);
                tsl_recs[2] = filledWith<TSL_REC_T>(0x22);
                *prev_filled = 7;
                *next_filled = 8;
                noteEvent("read");
                return -9;
            });
    EXPECT_TRUE(impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_filter(
                            -1, -2, -3, true, -4, 1, 2, svl.handle(), tsl.handle(), countsAnswer())
                        .isOk());
    EXPECT_EQ(take(), bulk({"lock 4294967295 4294967294", "read", "unlock 4294967295 4294967294",
                            "answer 7 8 -9"}));
    // Slot 2 of each region, and nothing else.
    EXPECT_EQ(svl.bytes()[2 * 396 - 1], 0xee);
    EXPECT_EQ(svl.bytes()[2 * 396], 0x11);
    EXPECT_EQ(svl.bytes()[3 * 396 - 1], 0x11);
    EXPECT_EQ(tsl.bytes()[2 * 628 - 1], 0xee);
    EXPECT_EQ(tsl.bytes()[2 * 628], 0x22);
    EXPECT_EQ(tsl.bytes()[3 * 628 - 1], 0x22);
}

TEST_F(ServiceChannelListRequest, readsByBroadcastTypeInOrder) {
    const SharedBuffer svl(2 * sizeof(SVL_REC_T));
    const SharedBuffer tsl(2 * sizeof(TSL_REC_T));
    tv.on<&a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type>(
            [](uint32_t svl_id, uint32_t flags, uint32_t brdcst_type, uint32_t start_index,
               uint32_t count, SVL_REC_T* svl_recs, TSL_REC_T* tsl_recs, uint32_t* filled,
               uint32_t* total) {
                EXPECT_EQ(svl_id, 1u);
                EXPECT_EQ(flags, 2u);
                EXPECT_EQ(brdcst_type, 3u);
                EXPECT_EQ(start_index, 4u);
                EXPECT_EQ(count, 2u);
                EXPECT_EQ(*filled, 0u);
                EXPECT_EQ(*total, 0u);
                svl_recs[1] = filledWith<SVL_REC_T>(0x11);
                tsl_recs[1] = filledWith<TSL_REC_T>(0x22);
                *filled = 2;
                *total = 9;
                noteEvent("read");
                return 3;
            });
    impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type(
            1, 2, 3, 4, 2, svl.handle(), tsl.handle(), countsAnswer());
    EXPECT_EQ(take(), bulk({"lock 1 2", "read", "unlock 1 2", "answer 2 9 3"}));
    EXPECT_EQ(svl.bytes()[2 * 396 - 1], 0x11);
    EXPECT_EQ(tsl.bytes()[2 * 628 - 1], 0x22);
}

TEST_F(ServiceChannelListRequest, readsByMaskInOrder) {
    const SharedBuffer svl(2 * sizeof(SVL_REC_T));
    const SharedBuffer tsl(2 * sizeof(TSL_REC_T));
    tv.on<&a_qortvapi_channellist_get_svl_tsl_recs_by_mask>(
            [](uint32_t svl_id, uint32_t flags, uint32_t channel_id, uint32_t mask,
               uint32_t mask_value, uint32_t attr_mask, uint32_t attr_value, int32_t direction,
               uint32_t start_index, uint32_t count, SVL_REC_T* svl_recs, TSL_REC_T* tsl_recs) {
                EXPECT_EQ((std::vector<uint32_t>{svl_id, flags, channel_id, mask, mask_value,
                                                 attr_mask, attr_value, start_index, count}),
                          (std::vector<uint32_t>{1, 2, 3, 4, 5, 6, 7, 9, 2}));
                EXPECT_EQ(direction, -8);
                svl_recs[1] = filledWith<SVL_REC_T>(0x11);
                tsl_recs[1] = filledWith<TSL_REC_T>(0x22);
                noteEvent("read");
                return 2;
            });
    const int32_t result = impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_mask(
            1, 2, 3, 4, 5, 6, 7, -8, 9, 2, svl.handle(), tsl.handle());
    EXPECT_EQ(result, 2);
    EXPECT_EQ(take(), bulk({"lock 1 2", "read", "unlock 1 2"}));
    EXPECT_EQ(svl.bytes()[2 * 396 - 1], 0x11);
    EXPECT_EQ(tsl.bytes()[2 * 628 - 1], 0x22);
}

TEST_F(ServiceChannelListRequest, answersNothingWhereARegionCannotBeOpened) {
    const SharedBuffer svl(sizeof(SVL_REC_T));
    const SharedBuffer tsl(sizeof(TSL_REC_T));
    for (const int failing : {1, 2}) {
        SCOPED_TRACE(failing);
        const auto again = [&] {
            gIon = FakeIon();
            gIon.failing_open = failing;
        };
        const Events opened = failing == 1 ? Events{"open 1", "open 2", "import 2"}
                                           : Events{"open 1", "import 1", "open 2"};
        const std::string closed = failing == 1 ? "close 2" : "close 1";
        const auto with = [&](const Events& answer) {
            Events events = opened;
            events.insert(events.end(), answer.begin(), answer.end());
            events.push_back(closed);
            return events;
        };

        switchboard::Switchboard::startRecording();
        again();
        impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_filter(
                1, 2, 3, true, 4, 1, 0, svl.handle(), tsl.handle(), countsAnswer());
        EXPECT_EQ(take(), with({"answer 0 0 0"}));
        again();
        impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type(
                1, 2, 3, 4, 1, svl.handle(), tsl.handle(), countsAnswer());
        EXPECT_EQ(take(), with({"answer 0 0 0"}));
        again();
        impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_handle_ex(
                1, 2, 1, svl.handle(), tsl.handle(), countsAnswer());
        EXPECT_EQ(take(), with({"answer 0 0 0"}));
        again();
        const int32_t by_index = impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_index_ex(
                1, 2, 3, 4, 5, 6, 7, 1, 9, svl.handle(), tsl.handle());
        EXPECT_EQ(by_index, 0);
        EXPECT_EQ(take(), with({}));
        again();
        const int32_t by_mask = impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_mask(
                1, 2, 3, 4, 5, 6, 7, 8, 9, 1, svl.handle(), tsl.handle());
        EXPECT_EQ(by_mask, -2);
        EXPECT_EQ(take(), with({}));
        EXPECT_TRUE(switchboard::Switchboard::stopRecording().empty()) << "nothing is locked";
    }
}

TEST_F(ServiceChannelListRequest, refusesCountsThatNoRegionHolds) {
    const SharedBuffer svl(sizeof(SVL_REC_T));
    const SharedBuffer tsl(sizeof(TSL_REC_T));
    int calls = 0;
    tv.on<&a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type>(
            [&](uint32_t, uint32_t, uint32_t, uint32_t, uint32_t count, SVL_REC_T* svl_recs,
                TSL_REC_T* tsl_recs, uint32_t*, uint32_t*) {
                ++calls;
                EXPECT_EQ(count, 0x80000001u);
                EXPECT_EQ(svl_recs, nullptr);
                EXPECT_EQ(tsl_recs, nullptr);
                return -1;
            });
    // In 32 bits 0x80000001 records are as many bytes as one.
    impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type(
            1, 2, 3, 4, 0x80000001u, svl.handle(), tsl.handle(), countsAnswer());
    EXPECT_EQ(errors(), (std::vector<LogLine>{mapFailure(EINVAL), mapFailure(EINVAL)}));

    tv.on<&a_qortvapi_channellist_get_svl_tsl_recs_by_filter>(
            [&](int32_t, int32_t, int32_t, bool, int32_t, int32_t, int32_t, SVL_REC_T* svl_recs,
                TSL_REC_T* tsl_recs, uint32_t*, uint32_t*) {
                ++calls;
                EXPECT_EQ(svl_recs, nullptr);
                EXPECT_EQ(tsl_recs, nullptr);
                return -1;
            });
    // Sums of 1 and of -2, and a sum that 32 bits cannot say.
    for (const auto& [prev_count, next_count] :
         {std::pair{-1, 2}, {2, -1}, {-1, -1}, {INT32_MAX, INT32_MAX}}) {
        impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_filter(
                1, 2, 3, true, 4, prev_count, next_count, svl.handle(), tsl.handle(),
                countsAnswer());
        EXPECT_EQ(errors(), (std::vector<LogLine>{mapFailure(EINVAL), mapFailure(EINVAL)}));
    }
    EXPECT_EQ(calls, 5);
}

// The reads into two regions, with records of both kinds, and what all of them have in common.

using Fill = std::function<void(SVL_REC_T*, TSL_REC_T*)>;

struct BulkRow {
    const char* name;
    /** Whether the middleware is called for each record, else once for all. */
    bool loops;
    /** Plugs a middleware that does no more than `fill` with the places that it is given. */
    void (*plug)(switchboard::Switchboard& tv, const Fill& fill);
    /** Reads `count` records under the lock of `svl_id` and 2. */
    void (*read)(QorTvApiChannelListImpl& impl, uint16_t svl_id, uint16_t count,
                 const hidl_handle& svl, const hidl_handle& tsl);
};

template <auto Function>
void plugBulkRead(switchboard::Switchboard& tv, const Fill& fill) {
    tv.on<Function>([=](auto... arguments) {
        const std::tuple all(arguments...);
        fill(std::get<SVL_REC_T*>(all), std::get<TSL_REC_T*>(all));
        return 0;
    });
}

void ignoreCounts(uint32_t, uint32_t, int32_t) {}

const BulkRow kBulkRows[] = {
        {"by_filter", false, &plugBulkRead<&a_qortvapi_channellist_get_svl_tsl_recs_by_filter>,
         [](QorTvApiChannelListImpl& impl, uint16_t svl_id, uint16_t count, const hidl_handle& svl,
            const hidl_handle& tsl) {
             const int32_t prev_count = count / 3;
             impl.a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_filter(
                     svl_id, 2, 3, true, 4, prev_count, count - prev_count, svl, tsl, ignoreCounts);
         }},
        {"by_mask", false, &plugBulkRead<&a_qortvapi_channellist_get_svl_tsl_recs_by_mask>,
         [](QorTvApiChannelListImpl& impl, uint16_t svl_id, uint16_t count, const hidl_handle& svl,
            const hidl_handle& tsl) {
             impl.a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_mask(svl_id, 2, 3, 4, 5, 6, 7,
                                                                         8, 9, count, svl, tsl);
         }},
        {"by_brdcast_type", false,
         &plugBulkRead<&a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type>,
         [](QorTvApiChannelListImpl& impl, uint16_t svl_id, uint16_t count, const hidl_handle& svl,
            const hidl_handle& tsl) {
             impl.a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type(
                     svl_id, 2, 3, 4, count, svl, tsl, ignoreCounts);
         }},
        {"by_handle_ex", true, &plugBulkRead<&a_qortvapi_channellist_get_svl_tsl_rec_by_handle>,
         [](QorTvApiChannelListImpl& impl, uint16_t svl_id, uint16_t count, const hidl_handle& svl,
            const hidl_handle& tsl) {
             impl.a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_handle_ex(svl_id, 2, count, svl,
                                                                             tsl, ignoreCounts);
         }},
        {"by_index_ex", true, &plugBulkRead<&a_qortvapi_favorite_list_get_svl_tsl_rec_by_index>,
         [](QorTvApiChannelListImpl& impl, uint16_t svl_id, uint16_t count, const hidl_handle& svl,
            const hidl_handle& tsl) {
             impl.a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_index_ex(9, svl_id, 2, 3, 4, 5,
                                                                            6, count, 7, svl, tsl);
         }},
};

/** At some of these counts a record less, or more, of either kind takes a page less, or more. */
constexpr uint16_t kCounts[] = {20, 21, 26};

class ServiceChannelListBulk : public ServiceChannelListRequest,
                               public testing::WithParamInterface<BulkRow> {};

INSTANTIATE_TEST_SUITE_P(, ServiceChannelListBulk, testing::ValuesIn(kBulkRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_P(ServiceChannelListBulk, fillsRegionsOfSeveralPages) {
    for (const uint16_t count : kCounts) {
        SCOPED_TRACE(count);
        const SharedBuffer svl(count * sizeof(SVL_REC_T));
        const SharedBuffer tsl(count * sizeof(TSL_REC_T));
        int calls = 0;
        GetParam().plug(tv, [&](SVL_REC_T* svl_recs, TSL_REC_T* tsl_recs) {
            ASSERT_NE(svl_recs, nullptr);
            ASSERT_NE(tsl_recs, nullptr);
            ++calls;
            const int last = GetParam().loops ? 0 : count - 1;
            svl_recs[last] = filledWith<SVL_REC_T>(static_cast<uint8_t>(calls));
            tsl_recs[last] = filledWith<TSL_REC_T>(static_cast<uint8_t>(0x40 + calls));
        });
        GetParam().read(*impl, 1, count, svl.handle(), tsl.handle());
        EXPECT_EQ(calls, GetParam().loops ? count : 1);
        const std::vector<uint8_t> services = svl.bytes();
        const std::vector<uint8_t> streams = tsl.bytes();
        EXPECT_EQ(std::vector<uint8_t>(services.end() - 396, services.end()),
                  std::vector<uint8_t>(396, static_cast<uint8_t>(calls)));
        EXPECT_EQ(std::vector<uint8_t>(streams.end() - 628, streams.end()),
                  std::vector<uint8_t>(628, static_cast<uint8_t>(0x40 + calls)));
    }
}

TEST_P(ServiceChannelListBulk, hasNoBaseWhereTheLastPageIsMissing) {
    const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    for (const uint16_t count : kCounts) {
        for (const bool short_services : {true, false}) {
            SCOPED_TRACE(std::to_string(count) + (short_services ? " services" : " streams"));
            const size_t svl_size = count * sizeof(SVL_REC_T);
            const size_t tsl_size = count * sizeof(TSL_REC_T);
            const SharedBuffer svl(short_services ? (svl_size - 1) / page * page : svl_size);
            const SharedBuffer tsl(short_services ? tsl_size : (tsl_size - 1) / page * page);
            int calls = 0;
            GetParam().plug(tv, [&](SVL_REC_T* svl_recs, TSL_REC_T* tsl_recs) {
                ++calls;
                EXPECT_EQ(svl_recs == nullptr, short_services);
                EXPECT_EQ(tsl_recs == nullptr, !short_services);
            });
            GetParam().read(*impl, 1, count, svl.handle(), tsl.handle());
            EXPECT_EQ(calls, GetParam().loops ? count : 1);
            EXPECT_EQ(errors(), std::vector<LogLine>{mapFailure(EINVAL)});
        }
    }
}

TEST_P(ServiceChannelListBulk, mapsServicesThenStreamsThenLocks) {
    const SharedBuffer nothing(0);
    std::vector<LogLine> before_lock;
    tv.on<&a_qortvapi_channellist_lock_database>([&](uint32_t, uint32_t) {
        before_lock = errors();
        noteEvent("lock");
        return 0;
    });
    GetParam().plug(tv, [](SVL_REC_T* svl_recs, TSL_REC_T* tsl_recs) {
        EXPECT_EQ(svl_recs, nullptr);
        EXPECT_EQ(tsl_recs, nullptr);
        noteEvent("read");
    });
    // A handle without a descriptor fails in another way than a file without a byte.
    GetParam().read(*impl, 1, 1, hidl_handle(), nothing.handle());
    EXPECT_EQ(before_lock, (std::vector<LogLine>{mapFailure(EBADF), mapFailure(EINVAL)}));
    EXPECT_EQ(take(), bulk({"lock", "read", "unlock 1 2"}));
    EXPECT_TRUE(errors().empty());
}

class ServiceChannelListPair : public ServiceChannelListRequest,
                               public testing::WithParamInterface<std::tuple<BulkRow, BulkRow>> {};

std::vector<BulkRow> listReads() {
    std::vector<BulkRow> rows;
    for (const BulkRow& row : kBulkRows) {
        if (!row.loops) rows.push_back(row);
    }
    return rows;
}

INSTANTIATE_TEST_SUITE_P(, ServiceChannelListPair,
                         testing::Combine(testing::ValuesIn(listReads()),
                                          testing::ValuesIn(listReads())),
                         [](const auto& pair) {
                             return std::string(std::get<0>(pair.param).name) + "_then_" +
                                    std::get<1>(pair.param).name;
                         });

TEST_P(ServiceChannelListPair, readsListsOneAfterAnother) {
    const auto& [first, second] = GetParam();
    const SharedBuffer svl(sizeof(SVL_REC_T));
    const SharedBuffer tsl(sizeof(TSL_REC_T));
    const SharedBuffer nothing(0);
    std::thread other;
    gIon.closing = [&, second = second](int device) {
        if (device != 2) return;
        // The first read's last step before it lets the mutex go. The second read tells of its
        // mappings; what is left before its lock is the mutex.
        std::atomic<pid_t> id{0};
        other = std::thread([&] {
            id = gettid();
            second.read(*impl, 5, 1, hidl_handle(), nothing.handle());
        });
        const auto end = std::chrono::steady_clock::now() + kPatience;
        std::vector<LogLine> lines;
        while (lines.size() < 2 && std::chrono::steady_clock::now() < end) {
            for (LogLine& line : errors()) lines.push_back(std::move(line));
            std::this_thread::yield();
        }
        EXPECT_EQ(lines, (std::vector<LogLine>{mapFailure(EBADF), mapFailure(EINVAL)}));
        while (!happened("lock 5 2") && !sleeps(id)) std::this_thread::yield();
    };
    first.read(*impl, 1, 1, svl.handle(), tsl.handle());
    other.join();
    EXPECT_EQ(take(), (Events{"open 1", "import 1", "open 2", "import 2", "lock 1 2", "unlock 1 2",
                              "close 1", "open 3", "import 3", "open 4", "import 4", "close 2",
                              "lock 5 2", "unlock 5 2", "close 3", "close 4"}));
}

TEST_F(ServiceChannelListRequest, readsRecordsAndIdsWhileAListReadAnswers) {
    const SharedBuffer svl(sizeof(SVL_REC_T));
    const SharedBuffer tsl(sizeof(TSL_REC_T));
    const SharedBuffer other_svl(sizeof(SVL_REC_T));
    const SharedBuffer other_tsl(sizeof(TSL_REC_T));
    const SharedBuffer ids(2);
    std::future<void> others;
    impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_filter(
            1, 2, 3, true, 4, 1, 0, svl.handle(), tsl.handle(), [&](uint32_t, uint32_t, int32_t) {
                others = std::async(std::launch::async, [&] {
                    for (const BulkRow& row : kBulkRows) {
                        if (row.loops) {
                            row.read(*impl, 5, 1, other_svl.handle(), other_tsl.handle());
                        }
                    }
                    impl->a_hidl_a_qortvapi_tvprovider_get_all_svlid(
                            ids.handle(), 1, [](uint16_t, int32_t) { noteEvent("ids"); });
                });
                EXPECT_EQ(others.wait_for(kPatience), std::future_status::ready);
                noteEvent("answer");
            });
    others.get();
    const Events events = take();
    EXPECT_EQ(std::count(events.begin(), events.end(), "lock 5 2"), 2);
    EXPECT_EQ(std::count(events.begin(), events.end(), "ids"), 1);
    EXPECT_EQ(Events(events.end() - 4, events.end()),
              (Events{"close 7", "answer", "close 1", "close 2"}));
}

// Reads that call the middleware for each record.

TEST_F(ServiceChannelListRequest, loopsOverAHandle) {
    const SharedBuffer svl(3 * sizeof(SVL_REC_T));
    const SharedBuffer tsl(3 * sizeof(TSL_REC_T));
    tv.on<&a_qortvapi_channellist_get_svl_tsl_rec_by_handle>(
            [](uint32_t svl_handle, uint32_t tsl_handle, uint16_t index, uint32_t* svl_version,
               uint32_t* tsl_version, SVL_REC_T* svl_rec, TSL_REC_T* tsl_rec) {
                EXPECT_EQ(svl_handle, 0xf0000001u);
                EXPECT_EQ(tsl_handle, 0xf0000002u);
                *svl_rec = filledWith<SVL_REC_T>(static_cast<uint8_t>(0x10 + index));
                *tsl_rec = filledWith<TSL_REC_T>(static_cast<uint8_t>(0x20 + index));
                *svl_version = 100 + index;
                *tsl_version = 200 + index;
                noteEvent("read " + std::to_string(index));
                return index == 1 ? -5 : 30 + index;
            });
    impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_handle_ex(
            0xf0000001u, 0xf0000002u, 3, svl.handle(), tsl.handle(), countsAnswer());
    EXPECT_EQ(take(), bulk({"lock 4026531841 4026531842", "read 0", "read 1", "read 2",
                            "unlock 4026531841 4026531842", "answer 102 202 32"}));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(svl.bytes()[i * 396], 0x10 + i);
        EXPECT_EQ(svl.bytes()[i * 396 + 395], 0x10 + i);
        EXPECT_EQ(tsl.bytes()[i * 628], 0x20 + i);
        EXPECT_EQ(tsl.bytes()[i * 628 + 627], 0x20 + i);
    }
}

TEST_F(ServiceChannelListRequest, locksOnceForNoRecords) {
    const SharedBuffer svl(0);
    const SharedBuffer tsl(0);
    impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_handle_ex(1, 2, 0, svl.handle(),
                                                                     tsl.handle(), countsAnswer());
    EXPECT_EQ(take(), bulk({"lock 1 2", "unlock 1 2", "answer 0 0 0"}));

    gIon = FakeIon();
    const int32_t result = impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_index_ex(
            1, 2, 3, 4, 5, 6, 7, 0, 9, svl.handle(), tsl.handle());
    EXPECT_EQ(result, 0);
    EXPECT_EQ(take(), bulk({"lock 2 3", "unlock 2 3"}));
}

TEST_F(ServiceChannelListRequest, loopsWithoutABaseWhereARegionCannotBeMapped) {
    const SharedBuffer nothing(0);
    tv.on<&a_qortvapi_channellist_get_svl_tsl_rec_by_handle>(
            [](uint32_t, uint32_t, uint16_t index, uint32_t*, uint32_t*, SVL_REC_T* svl_rec,
               TSL_REC_T* tsl_rec) {
                EXPECT_EQ(svl_rec, nullptr);
                EXPECT_EQ(tsl_rec, nullptr);
                noteEvent("read " + std::to_string(index));
                return -1;
            });
    impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_handle_ex(
            1, 2, 2, nothing.handle(), nothing.handle(), countsAnswer());
    EXPECT_EQ(take(), bulk({"lock 1 2", "read 0", "read 1", "unlock 1 2", "answer 0 0 -1"}));
}

class ServiceChannelListWrap : public ServiceChannelListRequest {
  protected:
    /** The indexes that a read of a favourite list asks for. */
    std::vector<uint32_t> indexes(uint32_t start, uint16_t count, uint16_t wrap) {
        const SharedBuffer svl(count * sizeof(SVL_REC_T));
        const SharedBuffer tsl(count * sizeof(TSL_REC_T));
        std::vector<uint32_t> read;
        tv.on<&a_qortvapi_favorite_list_get_svl_tsl_rec_by_index>(
                [&](uint16_t svl_id, uint8_t fav_list, uint32_t mask, uint32_t mask_value,
                    uint32_t index, SVL_REC_T* svl_rec, TSL_REC_T* tsl_rec) {
                    EXPECT_EQ(svl_id, 0xf001);
                    EXPECT_EQ(fav_list, 0xf4);
                    EXPECT_EQ(mask, 5u);
                    EXPECT_EQ(mask_value, 6u);
                    *svl_rec = filledWith<SVL_REC_T>(static_cast<uint8_t>(0x10 + read.size()));
                    *tsl_rec = filledWith<TSL_REC_T>(static_cast<uint8_t>(0x20 + read.size()));
                    read.push_back(index);
                    return static_cast<int32_t>(read.size());
                });
        take();
        gIon = FakeIon();
        const int32_t result = impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_index_ex(
                0xf001, 2, 3, 0xf4, 5, 6, start, count, wrap, svl.handle(), tsl.handle());
        EXPECT_EQ(result, count) << "the last read's";
        EXPECT_EQ(take(), bulk({"lock 2 3", "unlock 2 3"}));
        for (int i = 0; i < count; ++i) {  // slots are filled in order, whatever the index
            EXPECT_EQ(svl.bytes()[i * 396], 0x10 + i);
            EXPECT_EQ(tsl.bytes()[i * 628 + 627], 0x20 + i);
        }
        return read;
    }
};

TEST_F(ServiceChannelListWrap, readsRoundTheEndOfTheList) {
    EXPECT_EQ(indexes(3, 4, 5), (std::vector<uint32_t>{3, 4, 0, 1}));
    EXPECT_EQ(indexes(5, 3, 5), (std::vector<uint32_t>{0, 1, 2})) << "start is wrap";
    EXPECT_EQ(indexes(6, 3, 5), (std::vector<uint32_t>{6, 7, 8})) << "start is behind wrap";
    EXPECT_EQ(indexes(0, 5, 2), (std::vector<uint32_t>{0, 1, 0, 1, 0}));
    EXPECT_EQ(indexes(0, 3, 0), (std::vector<uint32_t>{0, 1, 2}));
}

TEST_F(ServiceChannelListWrap, comparesSixteenBits) {
    EXPECT_EQ(indexes(0x10004, 3, 5), (std::vector<uint32_t>{0x10004, 0, 1}));
    EXPECT_EQ(indexes(0xffff, 3, 0), (std::vector<uint32_t>{0xffff, 0, 1}));
}

// Writes of records.

template <auto Function>
void checkWrite(switchboard::Switchboard& tv, const sp<QorTvApiChannelListImpl>& impl,
                Return<int32_t> (QorTvApiChannelListImpl::*method)(uint32_t, uint32_t, uint16_t,
                                                                   uint32_t, uint32_t, uint32_t,
                                                                   const hidl_vec<uint8_t>&,
                                                                   const hidl_vec<uint8_t>&)) {
    tv.on<Function>([](uint32_t svl_id, uint32_t flags, uint16_t tsl_id, uint32_t svl_handle,
                       uint32_t tsl_handle, uint32_t operation, const SVL_REC_T* svl_rec,
                       const TSL_REC_T* tsl_rec) {
        EXPECT_EQ((std::vector<uint32_t>{svl_id, flags, tsl_id, svl_handle, tsl_handle, operation}),
                  (std::vector<uint32_t>{1, 2, 3, 4, 5, 6}));
        const SVL_REC_T svl_expected = filledWith<SVL_REC_T>(0x11);
        EXPECT_EQ(memcmp(svl_rec, &svl_expected, sizeof(svl_expected)), 0);
        TSL_REC_T tsl_expected = {};
        memset(&tsl_expected, 0x22, 10);
        EXPECT_EQ(memcmp(tsl_rec, &tsl_expected, sizeof(tsl_expected)), 0) << "a zeroed tail";
        noteEvent("write");
        return -7;
    });
    const hidl_vec<uint8_t> svl_rec(std::vector<uint8_t>(396, 0x11));
    const hidl_vec<uint8_t> tsl_rec(std::vector<uint8_t>(10, 0x22));
    const int32_t result = (*impl.*method)(1, 2, 3, 4, 5, 6, svl_rec, tsl_rec);
    EXPECT_EQ(result, -7);
    EXPECT_EQ(gIon.events, (Events{"lock 1 2", "write", "unlock 1 2"}));
}

TEST_F(ServiceChannelListRequest, writesRecordsUnderTheLock) {
    checkWrite<&a_qortvapi_channellist_set_svl_tsl_rec_info>(
            tv, impl, &QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info);
}

TEST_F(ServiceChannelListRequest, writesRecordsUnderTheLockWithoutNotice) {
    checkWrite<&a_qortvapi_channellist_set_svl_tsl_rec_info_without_notify>(
            tv, impl,
            &QorTvApiChannelListImpl::
                    a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info_without_notify);
}

TEST_F(ServiceChannelListRequest, writesABissKeyUnderItsLock) {
    tv.on<&a_qortvapi_bisskey_lock_database>([](uint32_t bsl_handle) {
        noteEvent("lock " + std::to_string(bsl_handle));
        return -1;
    });
    tv.on<&a_qortvapi_bisskey_unlock_database>([](uint32_t bsl_handle) {
        noteEvent("unlock " + std::to_string(bsl_handle));
        return -1;
    });
    tv.on<&a_qortvapi_bisskey_set_bsl_rec_info>(
            [](uint32_t bsl_handle, uint32_t operation, const BSL_REC_T* record, uint32_t* id) {
                EXPECT_EQ(bsl_handle, 0xf0000001u);
                EXPECT_EQ(operation, 2u);
                BSL_REC_T expected = {};
                memset(&expected, 0x33, 31);
                EXPECT_EQ(memcmp(record, &expected, sizeof(expected)), 0) << "a zeroed tail";
                EXPECT_EQ(*id, 0u);
                *id = 44;
                noteEvent("write");
                return -8;
            });
    impl->a_hidl_a_qortvapi_bisskey_set_bsl_rec_info(
            0xf0000001u, 2, hidl_vec<uint8_t>(std::vector<uint8_t>(31, 0x33)),
            [](uint32_t id, int32_t result) {
                noteEvent("answer " + std::to_string(id) + " " + std::to_string(result));
            });
    EXPECT_EQ(take(), (Events{"lock 4026531841", "write", "unlock 4026531841", "answer 44 -8"}));
}

// Reads of record ids.

class ServiceChannelListIds : public ServiceChannelListRequest {
  protected:
    void read(const hidl_handle& region, uint16_t count) {
        impl->a_hidl_a_qortvapi_tvprovider_get_all_svlid(
                region, count, [](uint16_t filled, int32_t result) {
                    noteEvent("answer " + std::to_string(filled) + " " + std::to_string(result));
                });
    }
};

TEST_F(ServiceChannelListIds, fillsTheRegion) {
    const SharedBuffer region(3 * 2);
    tv.on<&a_qortvapi_tvprovider_get_all_svlid>(
            [](uint16_t* ids, uint16_t count, uint16_t* filled) {
                EXPECT_EQ(count, 3);
                EXPECT_EQ(*filled, 0);
                ids[0] = 0x0102;
                ids[2] = 0x0304;
                *filled = 2;
                return 5;
            });
    read(region.handle(), 3);
    EXPECT_EQ(take(), (Events{"open 1", "import 1", "answer 2 5", "close 1"}));
    EXPECT_EQ(region.bytes(), (std::vector<uint8_t>{0x02, 0x01, 0xee, 0xee, 0x04, 0x03}));
}

TEST_F(ServiceChannelListIds, logsAFailureWhileDebuggingIsOn) {
    const SharedBuffer region(3 * 2);
    tv.on<&a_qortvapi_tvprovider_get_all_svlid>([](uint16_t*, uint16_t, uint16_t*) { return -5; });
    const LogLine line = debugLine(kModuleTag, "hh_a_qortvapi_tvprovider_get_all_svlid",
                                   "a_qortvapi_tvprovider_get_all_svlid fail in hh_qortvapi\n");
    read(region.handle(), 3);
    EXPECT_EQ(take(), (Events{"open 1", "import 1", "answer 0 -5", "close 1"}));
    const std::vector<LogLine> lines = log.take();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), line), 1);
    mTvApiDebug = 0;
    read(region.handle(), 3);
    EXPECT_TRUE(log.take().empty());
}

TEST_F(ServiceChannelListIds, answersTheRequestedCountWhereTheRegionIsUnusable) {
    const auto page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    const SharedBuffer region(page);
    const auto count = static_cast<uint16_t>(page / 2 + 1);
    const uint64_t calls = switchboard::slot<&a_qortvapi_tvprovider_get_all_svlid>.calls();
    read(region.handle(), count);
    EXPECT_EQ(take(),
              (Events{"open 1", "import 1", "answer " + std::to_string(count) + " 0", "close 1"}));
    gIon = FakeIon();
    gIon.failing_open = 1;
    read(region.handle(), 2);
    EXPECT_EQ(take(), (Events{"open 1", "answer 2 0"}));
    EXPECT_EQ(switchboard::slot<&a_qortvapi_tvprovider_get_all_svlid>.calls(), calls);
}

// The array reads. Both lists are read the same way, with records of different sizes.

struct ArrayRow {
    const char* name;
    size_t record_size;
    /** Plugs a middleware that fills `write` bytes and returns -6. */
    void (*plug)(switchboard::Switchboard& tv, size_t write);
    Return<void> (QorTvApiChannelListImpl::*read)(
            uint16_t, uint16_t, uint16_t, uint16_t, uint16_t,
            std::function<void(const hidl_vec<uint8_t>&, int32_t)>);
};

template <auto Function, typename Record>
void plugArrayRead(switchboard::Switchboard& tv, size_t write) {
    tv.on<Function>([=](uint16_t list, uint16_t satl_rec_id, uint16_t start, uint16_t count,
                        uint16_t total, Record* records) {
        EXPECT_EQ(list, 0xf001);
        EXPECT_EQ(satl_rec_id, 0xf002);
        noteEvent("read " + std::to_string(start) + " " + std::to_string(count) + " " +
                  std::to_string(total));
        memset(records, 0x5a, write);
        return -6;
    });
}

class ServiceChannelListArray : public ServiceChannelListRequest,
                                public testing::WithParamInterface<ArrayRow> {
  protected:
    /** What a read answers. */
    std::vector<uint8_t> read(uint16_t start, uint16_t count, uint16_t total) {
        std::vector<uint8_t> bytes;
        int answers = 0;
        (*impl.*GetParam().read)(0xf001, 0xf002, start, count, total,
                                 [&](const hidl_vec<uint8_t>& records, int32_t result) {
                                     ++answers;
                                     EXPECT_EQ(result, -6);
                                     bytes.assign(records.begin(), records.end());
                                 });
        EXPECT_EQ(answers, 1);
        return bytes;
    }
};

TEST_P(ServiceChannelListArray, returnsWhatLiesBetweenStartAndTotal) {
    const size_t size = GetParam().record_size;
    GetParam().plug(tv, 0);
    EXPECT_EQ(read(5, 10, 8), std::vector<uint8_t>(3 * size, 0)) << "fewer at the end; zeroed";
    EXPECT_EQ(read(5, 2, 8).size(), 2 * size);
    EXPECT_EQ(read(5, 3, 8).size(), 3 * size);
    EXPECT_EQ(read(7, 1, 8).size(), 1 * size);
    EXPECT_EQ(read(0, 0, 8).size(), 0u);
    EXPECT_EQ(read(8, 1, 8).size(), 0u);
    EXPECT_EQ(read(9, 1, 8).size(), 0u);
    // The sum of start and count does not wrap at 16 bits.
    EXPECT_EQ(read(10, 65535, 12).size(), 2 * size);
    EXPECT_EQ(take(), (Events{"read 5 10 8", "read 5 2 8", "read 5 3 8", "read 7 1 8", "read 0 0 8",
                              "read 8 1 8", "read 9 1 8", "read 10 65535 12"}));
}

TEST_P(ServiceChannelListArray, hasRoomForTransportStreamRecords) {
    GetParam().plug(tv, 3 * sizeof(TSL_REC_T));
    EXPECT_EQ(read(0, 3, 3), std::vector<uint8_t>(3 * GetParam().record_size, 0x5a));
}

const ArrayRow kArrayRows[] = {
        {"a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id", 628,
         &plugArrayRead<&a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id, TSL_REC_T>,
         &QorTvApiChannelListImpl::a_hidl_a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id},
        {"a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id", 304,
         &plugArrayRead<&a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id, NWL_REC_T>,
         &QorTvApiChannelListImpl::a_hidl_a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id},
};

INSTANTIATE_TEST_SUITE_P(, ServiceChannelListArray, testing::ValuesIn(kArrayRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ServiceChannelListRequest, haveEntryLinesOfTheirMethods) {
    const SharedBuffer region(0);
    const hidl_handle handle = region.handle();
    const auto no_counts = [](uint32_t, uint32_t, int32_t) {};
    const auto no_bytes = [](const hidl_vec<uint8_t>&, int32_t) {};
    const std::pair<const char*, std::function<void()>> calls[] = {
            {"a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_handle_ex",
             [&] {
                 impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_handle_ex(
                         1, 2, 0, handle, handle, no_counts);
             }},
            {"a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_index_ex",
             [&] {
                 impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_rec_by_index_ex(
                         1, 2, 3, 4, 5, 6, 7, 0, 9, handle, handle);
             }},
            {"a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type",
             [&] {
                 impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type(
                         1, 2, 3, 4, 0, handle, handle, no_counts);
             }},
            {"a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_filter",
             [&] {
                 impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_filter(
                         1, 2, 3, true, 4, 0, 0, handle, handle, no_counts);
             }},
            {"a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_mask",
             [&] {
                 impl->a_hidl_a_qortvapi_channellist_get_svl_tsl_recs_by_mask(
                         1, 2, 3, 4, 5, 6, 7, 8, 9, 0, handle, handle);
             }},
            {"a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info",
             [&] {
                 impl->a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info(1, 2, 3, 4, 5, 6, {}, {});
             }},
            {"a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info_without_notify",
             [&] {
                 impl->a_hidl_a_qortvapi_channellist_set_svl_tsl_rec_info_without_notify(
                         1, 2, 3, 4, 5, 6, {}, {});
             }},
            {"a_hidl_a_qortvapi_tvprovider_get_all_svlid",
             [&] {
                 impl->a_hidl_a_qortvapi_tvprovider_get_all_svlid(handle, 0,
                                                                  [](uint16_t, int32_t) {});
             }},
            {"a_hidl_a_qortvapi_bisskey_set_bsl_rec_info",
             [&] {
                 impl->a_hidl_a_qortvapi_bisskey_set_bsl_rec_info(1, 2, {},
                                                                  [](uint32_t, int32_t) {});
             }},
            {"a_hidl_a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id",
             [&] {
                 impl->a_hidl_a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id(1, 2, 3, 4, 0, no_bytes);
             }},
            {"a_hidl_a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id",
             [&] {
                 impl->a_hidl_a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id(1, 2, 3, 4, 0, no_bytes);
             }},
    };
    for (const auto& [method, call] : calls) {
        log.take();
        call();
        EXPECT_EQ(log.take().at(0), debugLine(kTag, method, method));
        mTvApiDebug = 0;
        call();
        for (const LogLine& line : log.take()) {
            EXPECT_EQ(line.text.find(method), std::string::npos) << line;
        }
        mTvApiDebug = 1;
    }
}

}  // namespace
