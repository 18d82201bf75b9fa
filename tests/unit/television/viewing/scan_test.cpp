// The channel scan: its notifications, what it changes, how it ends.
#include <thread>

#include "middleware/broadcast.h"
#include "middleware/highlevel.h"
#include "middleware/scan.h"
#include "support/notification_log.h"
#include "support/television_test.h"
#include "television/viewing/channel_scan.h"

namespace {

using namespace stream_generator;

uint64_t value(void* pointer) {
    return reinterpret_cast<uintptr_t>(pointer);
}
void scanned(int32_t code, void* tag, void* a, void* b, void* c, void* d) {
    NotificationLog::instance().add("scan", code,
                                    {value(tag), value(a), value(b), value(c), value(d)});
}
void channelList(int32_t code, void*, void*, void* count, void*, void*) {
    NotificationLog::instance().add("channelList", code, {value(count)});
}

class TelevisionScan : public TelevisionTest {
  protected:
    TelevisionScan() {
        log.clear();
        options.scanPause = std::chrono::milliseconds(0);
    }
    ~TelevisionScan() override {
        log.hook(nullptr);
        tv.reset();
        log.clear();
    }

    void startListening() {
        startWithDemo();
        ASSERT_EQ(a_qortvapi_scan_reg_callback(scanned, nullptr), TV_OK);
    }
    /** Waits for the end of the scan with the number `scan`, from 1. Returns the notification of
     * it. */
    SeenNotification waitForEnd(size_t scan = 1) {
        for (size_t seen = 1;; ++seen) {
            const auto events = log.wait("scan", seen);
            if (events.size() < seen) return {};
            const SeenNotification& last = events[seen - 1];
            if (last.code >= SCAN_NFY_COMPLETED && --scan == 0) return last;
        }
    }
    void waitForPercent(uint64_t percent) {
        for (size_t seen = 1;; ++seen) {
            const auto events = log.wait("scan", seen);
            if (events.size() < seen) return;
            const SeenNotification& last = events[seen - 1];
            if (last.code == SCAN_NFY_PROGRESS && last.values[1] == percent) return;
        }
    }
    void scan(int32_t medium, int32_t type, bool clear) {
        log.clear();
        ASSERT_EQ(a_qortvapi_start_scan(medium, type, clear), TV_OK);
        EXPECT_EQ(waitForEnd().code, SCAN_NFY_COMPLETED);
    }

    /** The bytes of all services, to compare. */
    static std::string image() {
        std::string bytes;
        for (const uint32_t list : {SVL_ID_TERRESTRIAL, SVL_ID_CABLE, SVL_ID_SATELLITE}) {
            for (const SVL_REC_T& record : services(list)) {
                bytes.append(reinterpret_cast<const char*>(&record), sizeof(record));
            }
        }
        return bytes;
    }
    /** Gives a service another name, number and option mask. */
    static void edit(SVL_REC_T record, const char* name, uint16_t number) {
        std::strcpy(record.s_service_name, name);
        record.ui2_channel_number = number;
        record.ui4_option_mask = 0xABCD;
        ASSERT_EQ(a_qortvapi_channellist_set_svl_tsl_rec_info(
                          record.ui2_svl_id, 0, 0, 0, 0, CHANNEL_WRITE_SERVICE, &record, nullptr),
                  TV_OK);
    }
    void removeStream(const std::string& name) const {
        ASSERT_TRUE(std::filesystem::remove(streams() + "/" + name));
    }

    NotificationLog& log = NotificationLog::instance();
};

TEST_F(TelevisionScan, NotifiesItsStepsInOrder) {
    startListening();
    a_qortvapi_channellist_register_callback(channelList, nullptr);
    log.wait("channelList", 1);
    log.clear();
    EXPECT_EQ(a_qortvapi_is_scan_active(), 0);
    ASSERT_EQ(a_qortvapi_start_scan(0, SCAN_TYPE_FULL, false), TV_OK);
    EXPECT_EQ(waitForEnd(), (SeenNotification{"scan", SCAN_NFY_COMPLETED, {0, 40, 32, 8, 9}}));
    EXPECT_EQ(a_qortvapi_is_scan_active(), 0);
    const auto events = log.seen("scan");
    ASSERT_EQ(events.size(), 11u);
    EXPECT_EQ(events[0], (SeenNotification{"scan", SCAN_NFY_STARTED, {0, 0, 9, 0, 0}}));
    const std::vector<uint64_t> percents = {11, 22, 33, 44, 55, 66, 77, 88, 100};
    for (size_t i = 0; i < percents.size(); ++i) {
        EXPECT_EQ(events[i + 1].code, SCAN_NFY_PROGRESS);
        EXPECT_EQ(events[i + 1].values[1], percents[i]);
        EXPECT_GE(events[i + 1].values[2],
                  events[i].code == SCAN_NFY_PROGRESS ? events[i].values[2] : 0);
    }
    EXPECT_EQ(events[1].values, (std::vector<uint64_t>{0, 11, 3, 1, 314'000})) << "dvb-c-1.ts";
    // The lists are notified before the end of the scan.
    const auto all = log.seen("");
    EXPECT_EQ(all[all.size() - 2],
              (SeenNotification{"channelList", CHANNEL_LIST_NFY_LOADED, {40}}));
}

TEST_F(TelevisionScan, TheHandlerOfTheEndCanStartTheNext) {
    startListening();
    std::atomic<int> scans{1};
    log.hook([&](const SeenNotification& event) {
        if (event.code != SCAN_NFY_COMPLETED || scans == 5) return;
        ++scans;
        EXPECT_EQ(a_qortvapi_is_scan_active(), 0);
        EXPECT_EQ(a_qortvapi_start_scan(SVL_ID_CABLE, SCAN_TYPE_UPDATE, true), TV_OK);
    });
    ASSERT_EQ(a_qortvapi_start_scan(0, SCAN_TYPE_FULL, true), TV_OK);
    EXPECT_EQ(waitForEnd(5).values[1], 12u);
}

TEST_F(TelevisionScan, OneMediumLeavesTheOthersAlone) {
    writeStreams(streams(), {demoPlans()[0], demoPlans()[6]});
    start();
    a_qortvapi_scan_reg_callback(scanned, nullptr);
    EXPECT_EQ(services(SVL_ID_TERRESTRIAL).size(), 5u);
    EXPECT_EQ(services(SVL_ID_CABLE).size(), 4u);
    removeStream("dvb-t-1.ts");
    writeStreams(streams(), {demoPlans()[1], demoPlans()[7]});
    ASSERT_EQ(a_qortvapi_start_scan(BRDCST_MEDIUM_DIG_CABLE, SCAN_TYPE_FULL, false), TV_OK);
    EXPECT_EQ(waitForEnd(), (SeenNotification{"scan", SCAN_NFY_COMPLETED, {0, 8, 6, 2, 2}}));
    // The terrestrial file is new, so it had to be read to know that it is not cable.
    const auto events = log.seen("scan");
    EXPECT_EQ(events[0].values, (std::vector<uint64_t>{0, BRDCST_MEDIUM_DIG_CABLE, 3, 0, 0}));
    EXPECT_EQ(events[3].values[4], 0u) << "dvb-t-2.ts";
    EXPECT_EQ(services(SVL_ID_CABLE).size(), 8u);
    EXPECT_EQ(service(SVL_ID_TERRESTRIAL, "Première").ui2_channel_number, 1);
    EXPECT_EQ(services(SVL_ID_TERRESTRIAL).size(), 5u);
    // Now it is known, and the scan makes no step for it any more.
    log.clear();
    ASSERT_EQ(a_qortvapi_start_scan(BRDCST_MEDIUM_DIG_CABLE, SCAN_TYPE_FULL, false), TV_OK);
    waitForEnd();
    EXPECT_EQ(log.seen("scan")[0].values[2], 2u);
    tv->reload();
    EXPECT_EQ(service(SVL_ID_TERRESTRIAL, "Kanał Łódź").ui2_channel_number, 5);
    EXPECT_EQ(services(SVL_ID_TERRESTRIAL).size(), 5u);
}

TEST_F(TelevisionScan, CancelAtTheFirstStepLeavesTheListsAsTheyWere) {
    options.scanPause = std::chrono::hours(1);
    startListening();
    const std::string before = image();
    removeStream("dvb-c-1.ts");
    EXPECT_EQ(a_qortvapi_cancel_scan(), TV_NOT_FOUND);
    ASSERT_EQ(a_qortvapi_start_scan(0, SCAN_TYPE_FULL, true), TV_OK);
    log.wait("scan", 1);
    EXPECT_EQ(a_qortvapi_is_scan_active(), 1);
    EXPECT_EQ(a_qortvapi_start_scan(0, SCAN_TYPE_FULL, true), TV_BUSY);
    EXPECT_EQ(a_qortvapi_cancel_scan(), TV_OK);
    EXPECT_EQ(waitForEnd(), (SeenNotification{"scan", SCAN_NFY_CANCELLED, {0, 0, 0, 0, 0}}));
    EXPECT_EQ(log.seen("scan").size(), 2u);
    EXPECT_EQ(a_qortvapi_is_scan_active(), 0);
    EXPECT_EQ(a_qortvapi_cancel_scan(), TV_NOT_FOUND);
    EXPECT_EQ(image(), before);
}

TEST_F(TelevisionScan, CancelAfterTheLastStepLeavesTheListsAsTheyWere) {
    startListening();
    const std::string before = image();
    removeStream("dvb-c-1.ts");
    // The client's lock holds the scan up before it changes the lists, when all steps are done.
    ASSERT_EQ(a_qortvapi_channellist_lock_database(1, 0), TV_OK);
    ASSERT_EQ(a_qortvapi_start_scan(0, SCAN_TYPE_FULL, true), TV_OK);
    waitForPercent(100);
    EXPECT_EQ(a_qortvapi_is_scan_active(), 1);
    EXPECT_EQ(a_qortvapi_cancel_scan(), TV_OK);
    EXPECT_EQ(a_qortvapi_cancel_scan(), TV_OK) << "until the end has come";
    ASSERT_EQ(a_qortvapi_channellist_unlock_database(1, 0), TV_OK);
    EXPECT_EQ(waitForEnd(), (SeenNotification{"scan", SCAN_NFY_CANCELLED, {0, 100, 0, 0, 0}}));
    EXPECT_EQ(image(), before);
    // What the cancelled scan read takes effect when the lists are changed the next time.
    scan(0, SCAN_TYPE_FULL, false);
    EXPECT_EQ(services(SVL_ID_CABLE).size(), 8u);
}

TEST_F(TelevisionScan, FullScanForgetsWhatIsGoneAndKeepsEdits) {
    startListening();
    edit(service(SVL_ID_CABLE, "Jazz Radio"), "My Radio", 777);
    ASSERT_EQ(a_qortvapi_favorite_list_add_tail(SVL_ID_CABLE, 1, channel(SVL_ID_CABLE, "My Radio")),
              TV_OK);
    const SVL_REC_T deleted = service(SVL_ID_CABLE, "Cable One");
    ASSERT_EQ(
            a_qortvapi_channellist_delete_channel_without_lcn(SVL_ID_CABLE, deleted.ui2_svl_rec_id),
            TV_OK);
    removeStream("dvb-c-2.ts");
    scan(BRDCST_MEDIUM_DIG_CABLE, SCAN_TYPE_FULL, false);
    EXPECT_EQ(services(SVL_ID_CABLE).size(), 7u);
    EXPECT_EQ(service(SVL_ID_CABLE, "My Radio").ui2_channel_number, 777);
    EXPECT_EQ(favourites(SVL_ID_CABLE, 1), std::vector<std::string>{"My Radio"});
}

TEST_F(TelevisionScan, ClearRebuildsTheListsOfTheMedium) {
    startListening();
    const SVL_REC_T radio = service(SVL_ID_CABLE, "Jazz Radio");
    edit(radio, "My Radio", 777);
    edit(service(SVL_ID_SATELLITE, "World News HD"), "My News", 888);
    ASSERT_EQ(a_qortvapi_favorite_list_add_tail(SVL_ID_CABLE, 1, radio.ui4_channel_id), TV_OK);
    const uint32_t news = channel(SVL_ID_SATELLITE, "My News");
    ASSERT_EQ(a_qortvapi_favorite_list_add_tail(SVL_ID_SATELLITE, 1, news), TV_OK);
    const SVL_REC_T deleted = service(SVL_ID_CABLE, "Cable One");
    ASSERT_EQ(
            a_qortvapi_channellist_delete_channel_without_lcn(SVL_ID_CABLE, deleted.ui2_svl_rec_id),
            TV_OK);
    scan(BRDCST_MEDIUM_DIG_CABLE, SCAN_TYPE_FULL, true);
    const SVL_REC_T again = service(SVL_ID_CABLE, "Jazz Radio");
    EXPECT_EQ(std::memcmp(&again, &radio, sizeof(radio)), 0) << "as at first, under the same id";
    EXPECT_EQ(channel(SVL_ID_CABLE, "Cable One"), deleted.ui4_channel_id);
    EXPECT_TRUE(favourites(SVL_ID_CABLE, 1).empty());
    EXPECT_EQ(favourites(SVL_ID_SATELLITE, 1), std::vector<std::string>{"My News"});
    restart();
    EXPECT_EQ(services(SVL_ID_CABLE).size(), 12u);
    EXPECT_EQ(service(SVL_ID_CABLE, "Jazz Radio").ui2_channel_number, 130);
    EXPECT_EQ(service(SVL_ID_SATELLITE, "My News").ui2_channel_number, 888);
}

TEST_F(TelevisionScan, WhatCannotBeReadStaysWithItsEdits) {
    startListening();
    const uint32_t radio = channel(SVL_ID_CABLE, "Jazz Radio");
    edit(service(SVL_ID_CABLE, "Jazz Radio"), "My Radio", 777);
    edit(service(SVL_ID_CABLE, "Movies 1"), "My Movies", 778);
    const uint32_t movies = channel(SVL_ID_CABLE, "My Movies");
    ASSERT_EQ(a_qortvapi_favorite_list_add_tail(SVL_ID_CABLE, 0, radio), TV_OK);
    ASSERT_EQ(a_qortvapi_favorite_list_add_tail(SVL_ID_CABLE, 0, movies), TV_OK);
    removeStream("dvb-c-1.ts");
    std::filesystem::create_symlink("dvb-c-1.ts", streams() + "/dvb-c-1.ts");
    scan(BRDCST_MEDIUM_DIG_CABLE, SCAN_TYPE_FULL, true);
    EXPECT_EQ(service(SVL_ID_CABLE, "My Radio").ui2_channel_number, 777);
    EXPECT_EQ(service(SVL_ID_CABLE, "Movies 1").ui2_channel_number, 105);
    EXPECT_EQ(favourites(SVL_ID_CABLE, 0), std::vector<std::string>{"My Radio"});
    EXPECT_EQ(services(SVL_ID_CABLE).size(), 12u);
}

TEST_F(TelevisionScan, UpdateAddsAndRefreshesAndForgetsNothing) {
    std::vector<MultiplexPlan> plans = {demoPlans()[6], demoPlans()[7]};
    writeStreams(streams(), plans);
    start();
    a_qortvapi_scan_reg_callback(scanned, nullptr);
    edit(service(SVL_ID_CABLE, "Jazz Radio"), "My Radio", 777);
    const SVL_REC_T gone = service(SVL_ID_CABLE, "Cable One");
    plans[0].services.erase(plans[0].services.begin());
    plans[0].services[0].name = "Renamed";
    writeStreams(streams(), {plans[0], demoPlans()[8]});
    removeStream("dvb-c-2.ts");
    scan(BRDCST_MEDIUM_DIG_CABLE, SCAN_TYPE_UPDATE, true);
    EXPECT_EQ(services(SVL_ID_CABLE).size(), 12u);
    EXPECT_EQ(service(SVL_ID_CABLE, "Renamed").ui2_channel_number, 102);
    EXPECT_EQ(service(SVL_ID_CABLE, "My Radio").ui2_channel_number, 777);
    EXPECT_EQ(service(SVL_ID_CABLE, "Local Channel").ui2_channel_number, 109);
    const SVL_REC_T kept = service(SVL_ID_CABLE, "Cable One");
    EXPECT_EQ(kept.ui4_channel_id, gone.ui4_channel_id);
    EXPECT_NE(gone.ui2_video_pid, 0x1FFF);
    EXPECT_EQ(kept.ui2_video_pid, 0x1FFF);
    // The multiplex is received without the service; the other multiplex is not received at all.
    int32_t error = -1;
    ASSERT_EQ(a_qortvapi_broadcast_select_channel_by_chan_id(kept.ui4_channel_id, true), TV_OK);
    EXPECT_EQ(a_qortvapi_broadcast_get_tuning_error(&error), TV_OK);
    EXPECT_EQ(error, BROADCAST_TUNING_ERROR_NO_SERVICE);
    const uint32_t movies = channel(SVL_ID_CABLE, "Movies 1");
    ASSERT_EQ(a_qortvapi_broadcast_select_channel_by_chan_id(movies, true), TV_OK);
    EXPECT_EQ(a_qortvapi_broadcast_get_tuning_error(&error), TV_OK);
    EXPECT_EQ(error, BROADCAST_TUNING_ERROR_NO_SIGNAL);
    tv->reload();
    EXPECT_EQ(services(SVL_ID_CABLE).size(), 7u);
}

TEST_F(TelevisionScan, RefusesWhatItCannotDo) {
    startListening();
    for (const int32_t medium : {-1, 4, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(a_qortvapi_start_scan(medium, SCAN_TYPE_FULL, false), TV_INVALID_ARGUMENT);
    }
    for (const int32_t type : {-1, 2, INT32_MAX}) {
        EXPECT_EQ(a_qortvapi_start_scan(0, type, false), TV_INVALID_ARGUMENT);
    }
    std::filesystem::remove_all(streams());
    EXPECT_EQ(a_qortvapi_start_scan(0, SCAN_TYPE_FULL, false), TV_NOT_FOUND);
    options.streams.clear();
    restart();
    EXPECT_EQ(a_qortvapi_start_scan(0, SCAN_TYPE_FULL, false), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_is_scan_active(), 0);
}

TEST_F(TelevisionScan, AFolderThatGoesAwayBeforeItIsReadFailsIt) {
    // A scan without a television, so that the test can hold it up at its start.
    television::Core core(":memory:");
    core.registrations.add(television::registration<&a_qortvapi_scan_reg_callback>(),
                           reinterpret_cast<television::Registrations::Function>(&scanned),
                           nullptr);
    core.notifier.start(std::chrono::hours(1));
    television::StreamFolder folder(streams());
    std::mutex loading;
    television::ChannelScan scan(core, folder, loading, std::chrono::milliseconds(0));
    std::unique_lock<std::mutex> load(loading);
    ASSERT_EQ(scan.start(0, SCAN_TYPE_FULL, true), TV_OK);
    EXPECT_TRUE(scan.status().active);
    EXPECT_EQ(scan.start(0, SCAN_TYPE_FULL, true), TV_BUSY);
    std::filesystem::remove(streams());
    load.unlock();
    EXPECT_EQ(waitForEnd(),
              (SeenNotification{
                      "scan", SCAN_NFY_FAILED, {0, static_cast<uint32_t>(TV_NOT_FOUND), 0, 0, 0}}));
    EXPECT_FALSE(scan.status().active);
    scan.stop();
    mkdir(streams().c_str(), 0700);
    EXPECT_EQ(scan.start(0, SCAN_TYPE_FULL, true), TV_FAILED) << "it was stopped";
    core.notifier.stop();
}

TEST_F(TelevisionScan, AnEmptyFolderEmptiesTheLists) {
    startListening();
    for (const auto& file : std::filesystem::directory_iterator(streams())) {
        std::filesystem::remove(file);
    }
    ASSERT_EQ(a_qortvapi_start_scan(0, SCAN_TYPE_FULL, false), TV_OK);
    EXPECT_EQ(waitForEnd(), (SeenNotification{"scan", SCAN_NFY_COMPLETED, {0, 0, 0, 0, 0}}));
    EXPECT_EQ(log.seen("scan").size(), 2u);
    EXPECT_EQ(image(), "");
    EXPECT_EQ(a_qortvapi_scan_select_crnt_or_first_channel(true), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_scan_select_crnt_or_first_channel(false), TV_NOT_FOUND);
}

TEST_F(TelevisionScan, OnlyOneOfManyStarts) {
    options.scanPause = std::chrono::hours(1);
    startListening();
    std::atomic<int> started{0};
    std::atomic<int> busy{0};
    std::vector<std::thread> clients;
    for (int i = 0; i < 4; ++i) {
        clients.emplace_back([&] {
            const int32_t result = a_qortvapi_start_scan(0, SCAN_TYPE_FULL, false);
            if (result == TV_OK) ++started;
            if (result == TV_BUSY) ++busy;
        });
    }
    for (std::thread& client : clients) client.join();
    EXPECT_EQ(started, 1);
    EXPECT_EQ(busy, 3);
    EXPECT_EQ(a_qortvapi_cancel_scan(), TV_OK);
    waitForEnd();
}

TEST_F(TelevisionScan, StartsCancelsAndReloadsFromManyThreads) {
    startListening();
    const std::string before = image();
    std::atomic<size_t> started{0};
    std::vector<std::thread> clients;
    for (int thread = 0; thread < 4; ++thread) {
        clients.emplace_back([&, thread] {
            for (int i = 0; i < 15; ++i) {
                const bool ok = a_qortvapi_start_scan(i % 4, i % 2, false) == TV_OK;
                if (ok) ++started;
                if (thread % 2 == 0) a_qortvapi_cancel_scan();
                if (thread == 3 && i % 5 == 0) tv->reload();
                EXPECT_EQ(services(SVL_ID_CABLE).size(), 12u);
                int32_t data[5] = {SCAN_EXCHANGE_PROGRESS};
                EXPECT_EQ(a_scan_dvbt_exchange_data(data, 5), TV_OK);
            }
        });
    }
    for (std::thread& client : clients) client.join();
    const auto waitForIdle = [] {
        while (a_qortvapi_is_scan_active() == 1) std::this_thread::yield();
    };
    waitForIdle();
    EXPECT_GE(started, 1u);
    ASSERT_EQ(a_qortvapi_start_scan(0, SCAN_TYPE_FULL, false), TV_OK);
    waitForIdle();
    EXPECT_EQ(image(), before);
}

TEST_F(TelevisionScan, EveryScanHasOneEnd) {
    startListening();
    size_t ends = 0;
    for (int i = 0; i < 20; ++i) {
        ASSERT_EQ(a_qortvapi_start_scan(BRDCST_MEDIUM_DIG_CABLE, SCAN_TYPE_UPDATE, false), TV_OK);
        if (i % 2 == 0) a_qortvapi_cancel_scan();
        waitForEnd(++ends);
    }
    int started = 0;
    int open = 0;
    for (const SeenNotification& event : log.seen("scan")) {
        if (event.code == SCAN_NFY_STARTED) {
            ++started;
            EXPECT_EQ(++open, 1);
        }
        if (event.code >= SCAN_NFY_COMPLETED) --open;
    }
    EXPECT_EQ(started, 20);
    EXPECT_EQ(open, 0);
}

TEST_F(TelevisionScan, RestartEndsItPromptly) {
    options.scanPause = std::chrono::hours(1);
    options.watch = true;
    options.calm = std::chrono::milliseconds(1);
    startListening();
    const std::string before = image();
    ASSERT_EQ(a_qortvapi_start_scan(0, SCAN_TYPE_FULL, true), TV_OK);
    log.wait("scan", 1);
    // The load that this change causes waits for the scan.
    removeStream("dvb-c-1.ts");
    tv.reset();
    writeStreams(streams(), {demoPlans()[6]});
    start();
    EXPECT_EQ(a_qortvapi_is_scan_active(), 0);
    EXPECT_EQ(image(), before);
}

TEST_F(TelevisionScan, AReloadDuringAScanComesAfterIt) {
    options.scanPause = std::chrono::hours(1);
    writeStreams(streams(), {demoPlans()[6]});
    start();
    a_qortvapi_scan_reg_callback(scanned, nullptr);
    ASSERT_EQ(a_qortvapi_start_scan(0, SCAN_TYPE_FULL, false), TV_OK);
    log.wait("scan", 1);
    writeStreams(streams(), {demoPlans()[7]});
    std::atomic<bool> loaded{false};
    std::thread loader([&] {
        tv->reload();
        loaded = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    EXPECT_FALSE(loaded);
    EXPECT_EQ(services(SVL_ID_CABLE).size(), 4u);
    EXPECT_EQ(a_qortvapi_cancel_scan(), TV_OK);
    loader.join();
    EXPECT_EQ(services(SVL_ID_CABLE).size(), 8u);
}

TEST_F(TelevisionScan, SelectsTheCurrentOrTheFirstChannel) {
    startListening();
    const uint32_t movies = channel(SVL_ID_CABLE, "Movies 1");
    ASSERT_EQ(a_qortvapi_channellist_set_current_channel(movies), TV_OK);
    scan(BRDCST_MEDIUM_DIG_SATELLITE, SCAN_TYPE_FULL, false);
    EXPECT_EQ(a_qortvapi_scan_select_crnt_or_first_channel(false), TV_OK);
    const auto current = [] {
        return static_cast<uint32_t>(a_qortvapi_channellist_get_current_chan_id());
    };
    EXPECT_EQ(current(), movies);
    EXPECT_EQ(a_qortvapi_scan_select_crnt_or_first_channel(true), TV_OK);
    EXPECT_EQ(current(), services(SVL_ID_SATELLITE)[0].ui4_channel_id);
    scan(0, SCAN_TYPE_FULL, false);
    EXPECT_EQ(a_qortvapi_scan_select_crnt_or_first_channel(true), TV_OK);
    EXPECT_EQ(current(), channel(SVL_ID_TERRESTRIAL, "Première"));
}

TEST_F(TelevisionScan, MarketRegionIsTheSameEverywhere) {
    start();
    uint8_t region = 0;
    EXPECT_EQ(a_qortvapi_get_market_region(), MARKET_REGION_EU);
    EXPECT_EQ(a_qortvapi_highlevel_get_market_region(&region), TV_OK);
    EXPECT_EQ(region, a_qortvapi_get_market_region());
}

/** Calls an exchange function with an array, behind which nothing may be written. Returns the array
 * as it is afterwards. */
std::vector<int32_t> exchange(int32_t (*function)(int32_t*, uint32_t), std::vector<int32_t> sent,
                              int32_t expected = TV_OK) {
    constexpr int32_t kGuard = 0x5A5A5A5A;
    const auto count = static_cast<uint32_t>(sent.size());
    sent.push_back(kGuard);
    EXPECT_EQ(function(sent.data(), count), expected);
    EXPECT_EQ(sent.back(), kGuard) << "written beyond the array";
    sent.pop_back();
    return sent;
}

TEST_F(TelevisionScan, ArraysOfTheDigitalSystems) {
    using Numbers = std::vector<int32_t>;
    startListening();
    EXPECT_EQ(exchange(a_scan_dvbt_exchange_data, {0, -1}), (Numbers{0, 3}));
    EXPECT_EQ(exchange(a_scan_dvbt_exchange_data, {1, 0, 9, 9, 9}), (Numbers{1, 0, 4, 1, 5}));
    EXPECT_EQ(exchange(a_scan_dvbt_exchange_data, {2, 2, 9, 8, 7}), (Numbers{2, 2, 498'000, 8, 7}));
    EXPECT_EQ(exchange(a_scan_dvbc_exchange_data, {2, 0, 9}), (Numbers{2, 0, 314'000}));
    EXPECT_EQ(exchange(a_scan_dvbs_exchange_data, {2, 1, 9}), (Numbers{2, 1, 10'792'250}));
    scan(BRDCST_MEDIUM_DIG_CABLE, SCAN_TYPE_FULL, false);
    EXPECT_EQ(exchange(a_scan_dvbs_exchange_data, {3, 9, 9, 9, 9}), (Numbers{3, 0, 100, 9, 3}));

    // A result that does not fit, or that there is not, leaves the array as it was.
    for (const auto function :
         {a_scan_dvbt_exchange_data, a_scan_dvbc_exchange_data, a_scan_dvbs_exchange_data}) {
        for (const Numbers& wrong : {Numbers{}, {0}, {1, 0, 9, 9}, {2, 0}, {2}, {3, 9, 9, 9}}) {
            EXPECT_EQ(exchange(function, wrong, TV_INVALID_ARGUMENT), wrong);
        }
        for (const Numbers& wrong : {Numbers{1, 3, 9, 9, 9}, {2, -1, 9}, {2, INT32_MAX, 9}}) {
            EXPECT_EQ(exchange(function, wrong, TV_NOT_FOUND), wrong);
        }
        for (const int32_t command : {4, 5, -1, INT32_MIN, INT32_MAX}) {
            EXPECT_EQ(exchange(function, {command, 0, 0, 0, 0, 0}, TV_NOT_SUPPORTED)[0], command);
        }
        EXPECT_EQ(function(nullptr, 4), TV_INVALID_ARGUMENT);
        EXPECT_EQ(function(reinterpret_cast<int32_t*>(~uintptr_t{0}), 4), TV_INVALID_ARGUMENT);
    }
    for (const auto function :
         {a_scan_ce_exchange_data, a_scan_dtmb_exchange_data, a_scan_pal_secam_exchange_data}) {
        EXPECT_EQ(exchange(function, {0, 7}, TV_NOT_SUPPORTED), (Numbers{0, 7}));
        EXPECT_EQ(function(nullptr, 0), TV_NOT_SUPPORTED);
    }
}

TEST_F(TelevisionScan, ParametersAreKeptAndReadBack) {
    using Numbers = std::vector<int32_t>;
    start();
    const Numbers atsc = {4, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(exchange(a_qortvapi_atsc_exchange_data, atsc, TV_NOT_FOUND), atsc);
    AP_SB_ATSC_SCAN_DATA_T antenna = {2, 36, 5, 1};
    const AP_SB_ISDB_SCAN_DATA_T isdb = {13, 62, 7};
    const AP_SB_NTSC_SCAN_DATA_T analogue = {3, 69};
    EXPECT_EQ(a_qortvapi_set_atsc_scan_param(1, 0, &antenna), TV_OK);
    EXPECT_EQ(a_qortvapi_set_isdb_scan_param(2, 1, &isdb), TV_OK);
    EXPECT_EQ(a_qortvapi_set_ntsc_scan_param(3, -1, &analogue), TV_OK);
    EXPECT_EQ(a_qortvapi_set_atsc_scan_param(1, 0, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_set_isdb_scan_param(1, 0, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_set_ntsc_scan_param(1, 0, nullptr), TV_INVALID_ARGUMENT);
    antenna.ui4_first_channel = 37;
    EXPECT_EQ(a_qortvapi_set_atsc_scan_param(1, 0, &antenna), TV_INVALID_ARGUMENT);
    restart();
    EXPECT_EQ(exchange(a_qortvapi_atsc_exchange_data, atsc), (Numbers{4, 1, 0, 2, 36, 5, 1}));
    EXPECT_EQ(exchange(a_qortvapi_atsc_exchange_data, {5, 0, 0, 0, 0}), (Numbers{5, 3, -1, 3, 69}));
    EXPECT_EQ(exchange(a_qortvapi_isdb_exchange_data, {4, 0, 0, 0, 0, 0, 8}),
              (Numbers{4, 2, 1, 13, 62, 7, 8}));
    EXPECT_EQ(exchange(a_qortvapi_isdb_exchange_data, {4, 0, 0, 0, 0}, TV_INVALID_ARGUMENT),
              (Numbers{4, 0, 0, 0, 0}));
    EXPECT_EQ(exchange(a_qortvapi_isdb_exchange_data, {5, 0}, TV_NOT_SUPPORTED), (Numbers{5, 0}));
    EXPECT_EQ(a_qortvapi_atsc_exchange_data(nullptr, 1), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionScan, TextsStayWithinTheirRoom) {
    startListening();
    std::vector<char> text(64, '#');
    EXPECT_EQ(a_qortvapi_get_user_message(text.data(), 62), TV_OK);
    EXPECT_STREQ(text.data(), "No scan yet");
    scan(BRDCST_MEDIUM_DIG_CABLE, SCAN_TYPE_FULL, false);
    EXPECT_EQ(a_qortvapi_get_user_message(text.data(), 62), TV_OK);
    EXPECT_STREQ(text.data(), "Scan complete: 12 services in 3 multiplexes");
    EXPECT_EQ(a_qortvapi_get_user_message(text.data(), UINT32_MAX), TV_OK);
    EXPECT_STREQ(text.data(), "Scan complete: 12 services in 3 multiplexes");
    EXPECT_EQ(a_qortvapi_get_user_message(text.data(), 4), TV_OK);
    EXPECT_STREQ(text.data(), "Scan");
    EXPECT_EQ(text[5], 'c') << "nothing behind the NUL is written";
    EXPECT_EQ(a_qortvapi_get_user_message(text.data(), 0), TV_OK);
    EXPECT_STREQ(text.data(), "");
    EXPECT_EQ(a_qortvapi_get_user_message(nullptr, 8), TV_INVALID_ARGUMENT);

    EXPECT_EQ(a_qortvapi_scan_dvbc_get_str_data(0, text.data(), 62), TV_OK);
    EXPECT_STREQ(text.data(), "Corvanta Cable");
    EXPECT_EQ(a_qortvapi_scan_dvbc_get_str_data(0, text.data(), 3), TV_OK);
    EXPECT_STREQ(text.data(), "Cor");
    for (const int32_t index : {-1, 1, INT32_MAX}) {
        EXPECT_EQ(a_qortvapi_scan_dvbc_get_str_data(index, text.data(), 62), TV_NOT_FOUND);
    }
    EXPECT_EQ(a_qortvapi_scan_dvbc_get_str_data(0, text.data(), -1), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_scan_dvbc_get_str_data(0, nullptr, 8), TV_INVALID_ARGUMENT);
    EXPECT_STREQ(text.data(), "Cor");
}

TEST_F(TelevisionScan, MessageWhileAScanRuns) {
    options.scanPause = std::chrono::hours(1);
    startListening();
    ASSERT_EQ(a_qortvapi_start_scan(0, SCAN_TYPE_FULL, false), TV_OK);
    char text[80];
    EXPECT_EQ(a_qortvapi_get_user_message(text, sizeof(text) - 1), TV_OK);
    EXPECT_STREQ(text, "Scan at 0 %: 0 television and 0 radio services");
    a_qortvapi_cancel_scan();
    waitForEnd();
    EXPECT_EQ(a_qortvapi_get_user_message(text, sizeof(text) - 1), TV_OK);
    EXPECT_STREQ(text, "Scan cancelled");
}

}  // namespace
