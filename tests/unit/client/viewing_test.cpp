// Scan, tuner, guide and clock as an application meets them: requests through the service's own
// implementation to a middleware that the test plays, and notifications as events.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "QorTvApiBroadcastImpl.h"
#include "QorTvApiEventImpl.h"
#include "QorTvApiScanImpl.h"
#include "QorTvApiTimeImpl.h"
#include "middleware/broadcast.h"
#include "middleware/event.h"
#include "middleware/result_codes.h"
#include "middleware/scan.h"
#include "middleware/time.h"
#include "qortv/clock.h"
#include "qortv/guide.h"
#include "qortv/scan.h"
#include "qortv/tuner.h"
#include "television/switchboard/switchboard.h"

namespace qortv {
namespace {

namespace service = vendor::corvanta::tv::qortvapi::V1_0::implementation;

/** The message of the refusal that `request` ends in; empty when it does not. */
std::string refusal(const std::function<void()>& request) {
    try {
        request();
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), Error::Kind::kRefused) << error.what();
        return error.what();
    }
    return "";
}

struct HeardScan : ScanListener {
    void onScanEvent(const ScanEvent& event) override { events.push_back(event); }
    void onNotification(const Notification& notification) override {
        others.push_back(notification.method);
    }
    std::vector<ScanEvent> events;
    std::vector<std::string> others;
};

TEST(ClientScanListener, HearsEventsAndPassesOnTheRest) {
    HeardScan heard;
    heard.notifyScan(SCAN_NFY_STARTED, 0, 2, 9, 0, 0);
    heard.notifyScan(SCAN_NFY_PROGRESS, 0, 11, 3, 1, 314000);
    heard.notifyScan(SCAN_NFY_COMPLETED, 0, 40, 32, 8, 9);
    heard.notifyScan(SCAN_NFY_CANCELLED, 0, 55, 0, 0, 0);
    heard.notifyScan(SCAN_NFY_FAILED, 0, 0xFFFFFFFAU, 0, 0, 0);
    heard.notifyScan(77, 0, 0, 0, 0, 0);
    heard.notifyBroadcast(1, 0, 0, 0, 0, 0);
    ASSERT_EQ(heard.events.size(), 5U);
    const auto& started = std::get<ScanStarted>(heard.events[0]);
    EXPECT_EQ(started.medium, Medium::kCable);
    EXPECT_EQ(started.multiplexes, 9U);
    const auto& progress = std::get<ScanProgress>(heard.events[1]);
    EXPECT_EQ(progress.percent, 11U);
    EXPECT_EQ(progress.television, 3U);
    EXPECT_EQ(progress.radio, 1U);
    EXPECT_EQ(progress.frequencyKhz, 314000U);
    const auto& completed = std::get<ScanCompleted>(heard.events[2]);
    EXPECT_EQ(completed.services, 40U);
    EXPECT_EQ(completed.television, 32U);
    EXPECT_EQ(completed.radio, 8U);
    EXPECT_EQ(completed.multiplexes, 9U);
    EXPECT_EQ(std::get<ScanCancelled>(heard.events[3]).percent, 55U);
    EXPECT_EQ(std::get<ScanFailed>(heard.events[4]).code, TV_FAILED);
    EXPECT_EQ(heard.others, (std::vector<std::string>{"notifyScan", "notifyBroadcast"}));
    std::string names;
    std::string ends;
    for (const auto& event : heard.events) {
        names += std::string(name(event)) + " ";
        ends += isEnd(event) ? "1" : "0";
    }
    EXPECT_EQ(names, "started progress completed cancelled failed ");
    EXPECT_EQ(ends, "00111");
}

class ClientScanner : public testing::Test {
  protected:
    switchboard::Switchboard mTv;
    Scanner mScanner{new service::QorTvApiScanImpl};
};

TEST_F(ClientScanner, StartsWhatIsAskedFor) {
    int32_t medium = -1;
    int32_t type = -1;
    bool clear = false;
    mTv.on<&a_qortvapi_start_scan>([&](int32_t m, int32_t t, bool c) {
        medium = m;
        type = t;
        clear = c;
        return int32_t{TV_OK};
    });
    mScanner.start();
    EXPECT_EQ(medium, 0);
    EXPECT_EQ(type, SCAN_TYPE_FULL);
    EXPECT_FALSE(clear);
    mScanner.start({Medium::kSatellite, true, true});
    EXPECT_EQ(medium, 3);
    EXPECT_EQ(type, SCAN_TYPE_UPDATE);
    EXPECT_TRUE(clear);
}

TEST_F(ClientScanner, SaysWhyItIsRefused) {
    int32_t answer = TV_BUSY;
    mTv.on<&a_qortvapi_start_scan>([&](int32_t, int32_t, bool) { return answer; });
    const auto start = [&] { mScanner.start(); };
    EXPECT_EQ(refusal(start),
              "the television refused to start a scan: another scan is running (code -5)");
    answer = TV_NOT_FOUND;
    EXPECT_EQ(refusal(start),
              "the television refused to start a scan: there is nothing to scan (code -2)");
    answer = TV_FAILED;
    EXPECT_EQ(refusal(start), "the television refused to start a scan (code -6)");
}

TEST_F(ClientScanner, CancellingTooLateIsNoError) {
    int32_t answer = TV_OK;
    mTv.on<&a_qortvapi_cancel_scan>([&] { return answer; });
    EXPECT_TRUE(mScanner.cancel());
    answer = TV_BUSY;
    EXPECT_FALSE(mScanner.cancel());
    answer = TV_NOT_FOUND;
    EXPECT_FALSE(mScanner.cancel());
    answer = TV_FAILED;
    EXPECT_NE(refusal([&] { mScanner.cancel(); }), "");
}

struct HeardTuning : TuningListener {
    void onTuningEvent(const TuningEvent& event) override { events.push_back(event); }
    void onNotification(const Notification&) override { ++others; }
    std::vector<TuningEvent> events;
    int others = 0;
};

TEST(ClientTuningListener, HearsTheTunerOfBothWindows) {
    HeardTuning heard;
    heard.notifyBroadcast(BROADCAST_NFY_TUNING, 0, BROADCAST_TUNING_LOCKED, 0, 7, 0);
    heard.notifyBroadcast(BROADCAST_NFY_TUNING, 0, BROADCAST_TUNING_FAILED,
                          BROADCAST_TUNING_ERROR_NO_SERVICE, 8, 1);
    heard.notifyBroadcast(BROADCAST_NFY_CHANNEL_CHANGED, 0, 7, 0, 0, 0);
    ASSERT_EQ(heard.events.size(), 2U);
    EXPECT_EQ(heard.others, 1);
    EXPECT_EQ(heard.events[0].tuning, Tuning::kLocked);
    EXPECT_EQ(heard.events[0].error, TuningError::kNone);
    EXPECT_EQ(heard.events[0].channelId, 7U);
    EXPECT_TRUE(heard.events[0].mainWindow);
    EXPECT_EQ(heard.events[1].tuning, Tuning::kFailed);
    EXPECT_STREQ(name(heard.events[1].error), "no service");
    EXPECT_FALSE(heard.events[1].mainWindow);
}

TEST(ClientTuner, TunesAnewAndReadsTheSignal) {
    switchboard::Switchboard tv;
    Tuner tuner(new service::QorTvApiBroadcastImpl);
    std::vector<std::pair<uint32_t, bool>> tuned;
    int32_t answer = TV_OK;
    tv.on<&a_qortvapi_broadcast_select_channel_by_chan_id>([&](uint32_t id, bool reselect) {
        tuned.emplace_back(id, reselect);
        return answer;
    });
    std::vector<uint32_t> keys;
    tv.on<&a_qortvapi_broadcast_key_handler>([&](uint32_t key) {
        keys.push_back(key);
        return answer;
    });
    tuner.tune(7);
    EXPECT_EQ(tuned, (std::vector<std::pair<uint32_t, bool>>{{7, true}}));
    tuner.up();
    tuner.down();
    EXPECT_EQ(keys, (std::vector<uint32_t>{BROADCAST_KEY_CHANNEL_UP, BROADCAST_KEY_CHANNEL_DOWN}));
    answer = TV_NOT_FOUND;
    EXPECT_EQ(refusal([&] { tuner.tune(9); }),
              "the television refused to tune to channel id 9: not found (code -2)");
    EXPECT_EQ(refusal([&] { tuner.up(); }),
              "the television refused to go one channel up: there is no channel (code -2)");

    int32_t level = 83;
    tv.on<&a_qortvapi_broadcast_get_signal_level>([&] { return level; });
    EXPECT_EQ(tuner.signalLevel(), 83);
    level = TV_NOT_FOUND;
    EXPECT_EQ(tuner.signalLevel(), std::nullopt);
    level = TV_FAILED;
    EXPECT_NE(refusal([&] { tuner.signalLevel(); }), "");
    tv.on<&a_qortvapi_broadcast_get_tuning_status>([](uint32_t* status) {
        *status = BROADCAST_TUNING_SEARCHING;
        return int32_t{TV_OK};
    });
    EXPECT_EQ(tuner.state(), Tuning::kSearching);
}

TEST(ClientEvent, IsReadFromItsRecord) {
    EVENT_GENERAL_INFO_T record = {};
    record.ui4_channel_id = 7;
    record.ui2_event_id = 65535;
    record.ui1_free_ca_mode = 1;
    record.i8_start_time = 5000000000;
    record.ui4_duration = 5400;
    record.ui1_content = 0x24;
    record.ui1_minimum_age = 12;
    record.ui1_has_details = 1;
    std::memcpy(record.s_language, "deu", 4);
    std::memset(record.s_title, 'x', sizeof record.s_title);  // no NUL
    std::memcpy(record.s_text, "Fu\xDF", 4);                  // no UTF-8
    const Event event = toEvent(record);
    EXPECT_EQ(event.channelId, 7U);
    EXPECT_EQ(event.id, 65535);
    EXPECT_EQ(event.start, 5000000000);
    EXPECT_EQ(event.end(), 5000005400);
    EXPECT_STREQ(genreName(event.genre), "news");
    EXPECT_EQ(event.minimumAge, 12);
    EXPECT_TRUE(event.scrambled);
    EXPECT_TRUE(event.hasDetails);
    EXPECT_EQ(event.language, "deu");
    EXPECT_EQ(event.title, std::string(256, 'x'));
    EXPECT_EQ(event.text, "Fu\xEF\xBF\xBD");
    EXPECT_STREQ(genreName(0), "");
    EXPECT_STREQ(genreName(0xF1), "");
}

TEST(ClientEvent, KnowsHowFarItIs) {
    Event event;
    event.start = 1000;
    event.duration = 200;
    EXPECT_EQ(event.percentAt(999), 0);
    EXPECT_EQ(event.percentAt(1050), 25);
    EXPECT_EQ(event.percentAt(1199), 99);
    EXPECT_EQ(event.percentAt(1200), 100);
    event.duration = 0;
    EXPECT_EQ(event.percentAt(1000), 0);
    EXPECT_EQ(event.percentAt(1001), 100);
}

/** A guide with events 1 and 2 of channel 7. */
class ClientGuide : public testing::Test {
  protected:
    ClientGuide() {
        mTv.on<&a_qortvapi_event_get_pf_event_id>(
                [this](uint32_t channel, bool following, uint16_t* id) {
                    *id = following ? 2 : 1;
                    return channel == 7 ? mAnswer : int32_t{TV_NOT_FOUND};
                });
        mTv.on<&a_qortvapi_event_get_general_info>(
                [](uint32_t channel, uint32_t id, EVENT_GENERAL_INFO_T* info) {
                    if (channel != 7 || id > 2) return int32_t{TV_NOT_FOUND};
                    info->ui2_event_id = static_cast<uint16_t>(id);
                    info->i8_start_time = id * 100;
                    std::memcpy(info->s_title, "News", 5);
                    return int32_t{TV_OK};
                });
    }

    int32_t mAnswer = TV_OK;
    switchboard::Switchboard mTv;
    Guide mGuide{new service::QorTvApiEventImpl};
};

TEST_F(ClientGuide, TellsPresentAndFollowing) {
    ASSERT_TRUE(mGuide.present(7));
    EXPECT_EQ(mGuide.present(7)->id, 1);
    EXPECT_EQ(mGuide.present(7)->title, "News");
    EXPECT_EQ(mGuide.following(7)->id, 2);
    EXPECT_EQ(mGuide.present(8), std::nullopt);
    mAnswer = TV_FAILED;
    EXPECT_EQ(refusal([&] { mGuide.present(7); }),
              "the television refused to tell what is on channel id 7 (code -6)");
}

TEST_F(ClientGuide, ListsEventsAndSkipsOneThatIsGoneMeanwhile) {
    int64_t from = 0;
    int64_t to = 0;
    mTv.on<&a_qortvapi_event_query_event_id_by_range>(
            [&](uint32_t channel, int64_t start, int64_t end, uint16_t* count, uint16_t* ids) {
                from = start;
                to = end;
                if (channel != 7) return int32_t{TV_NOT_FOUND};
                EXPECT_GE(*count, 3);
                *count = 3;
                ids[0] = 1;
                ids[1] = 99;
                ids[2] = 2;
                return int32_t{TV_OK};
            });
    const auto events = mGuide.schedule(7, 10, 20);
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[1].id, 2);
    EXPECT_EQ(from, 10);
    EXPECT_EQ(to, 20);
    EXPECT_EQ(refusal([&] { mGuide.schedule(8, 10, 20); }),
              "the television refused to list the events of channel id 8: not found (code -2)");
}

TEST_F(ClientGuide, DetailsLeaveEmptyWhatThereIsNot) {
    const auto put = [](const char* text) {
        return [text](uint32_t, uint32_t, uint8_t* to, uint32_t size) {
            std::memset(to, 0, size);
            std::memcpy(to, text, std::strlen(text));
            return int32_t{TV_OK};
        };
    };
    mTv.on<&a_qortvapi_event_get_details_info>(put("short"));
    mTv.on<&a_qortvapi_event_get_details_extend_info>(put("long\ntext"));
    mTv.on<&a_qortvapi_event_get_guidance_info>([](uint32_t, uint32_t, uint8_t* to, uint32_t) {
        *to = 'x';
        return int32_t{TV_NOT_FOUND};
    });
    mTv.on<&a_qortvapi_event_get_group_info>(put("crid://a"));
    mTv.on<&a_qortvapi_event_check_block>([](uint32_t, uint32_t) { return 1; });
    const auto details = mGuide.details(7, 2);
    ASSERT_TRUE(details);
    EXPECT_EQ(details->event.id, 2);
    EXPECT_EQ(details->text, "short");
    EXPECT_EQ(details->longText, "long\ntext");
    EXPECT_EQ(details->guidance, "");
    EXPECT_EQ(details->series, "crid://a");
    EXPECT_TRUE(details->blocked);
    EXPECT_FALSE(mGuide.details(7, 3));
}

TEST(ClientClock, TellsAllOfIt) {
    switchboard::Switchboard tv;
    Clock clock(new service::QorTvApiTimeImpl);
    tv.on<&a_qortvapi_time_get_utc_time>([](uint16_t* source) {
        *source = TIME_SYNC_SOURCE_SYSTEM;
        return int64_t{1700000000};
    });
    tv.on<&a_qortvapi_time_get_sync_source>([](uint32_t* source) {
        *source = TIME_SYNC_SOURCE_BROADCAST;
        return int32_t{TV_OK};
    });
    tv.on<&a_qortvapi_time_get_time_zone>([] { return int64_t{-3600}; });
    tv.on<&a_qortvapi_time_get_time_offset>([] { return int64_t{7200}; });
    tv.on<&a_qortvapi_time_has_received_tot>([] { return 1; });
    bool told = false;
    tv.on<&a_qortvapi_time_get_brdcst_raw_data>([&](DT_BRDCST_STATUS_T* status) {
        status->b_tdt_received = told;
        status->i8_utc = 42;
        return uint32_t{0};
    });
    ClockState state = clock.state();
    EXPECT_EQ(state.utc, 1700000000);
    EXPECT_EQ(clock.utc(), 1700000000);
    EXPECT_EQ(state.source, TimeSource::kSystem);
    EXPECT_EQ(state.follows, TimeSource::kBroadcast);
    EXPECT_EQ(state.zone, -3600);
    EXPECT_EQ(state.offset, 7200);
    EXPECT_TRUE(state.totReceived);
    EXPECT_EQ(state.broadcastUtc, std::nullopt);
    told = true;
    EXPECT_EQ(clock.state().broadcastUtc, 42);

    tv.on<&c_dt_utc_sec_to_loc_dtg>([](int64_t seconds, DTG_T* time) {
        if (seconds < 0) return int32_t{TV_INVALID_ARGUMENT};
        *time = {2026, 7, 4, 6, 9, 5, 3, 0, 1};
        return int32_t{TV_OK};
    });
    const LocalTime local = clock.local(1);
    EXPECT_EQ(dateOf(local) + " " + timeOf(local), "2026-07-04 09:05");
    EXPECT_EQ(local.weekday, 6);
    EXPECT_TRUE(local.summer);
    EXPECT_EQ(refusal([&] { clock.local(-1); }),
              "the television refused to tell the local time of -1: invalid argument (code -1)");
}

}  // namespace
}  // namespace qortv
