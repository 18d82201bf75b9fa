// Date, time and sleep timer as an application sees them.
#include "middleware/time.h"

#include <atomic>
#include <ctime>
#include <limits>

#include "support/notification_log.h"
#include "support/television_test.h"
#include "television/base/calendar.h"

namespace {

using stream_generator::kUsualTime;

/** 2024-10-27 01:00 UTC: the next change of the offset after the usual time. */
constexpr int64_t kChange = 1729990800;

/** A pointer that cannot be written, as a failed mapping gives. */
template <typename T>
T* badPointer() {
    return reinterpret_cast<T*>(~uintptr_t{0});
}

uint64_t value(void* pointer) {
    return reinterpret_cast<uintptr_t>(pointer);
}
void second(int32_t code, void*, void* seconds) {
    NotificationLog::instance().add("second", code, {value(seconds)});
}
void sleepTimer(int32_t code, void* tag, void* seconds) {
    NotificationLog::instance().add("sleep", code, {value(tag), value(seconds)});
}
void syncSource(int32_t code, void* tag, void* source) {
    NotificationLog::instance().add("source", code, {value(tag), value(source)});
}

class TelevisionTime : public TelevisionTest {
  protected:
    TelevisionTime() {
        log.clear();
        options.time = [this] { return machine.load(); };
    }
    ~TelevisionTime() override {
        tv.reset();
        log.clear();
    }

    static int64_t utc() { return a_qortvapi_time_get_utc_time(nullptr); }
    static uint32_t source() {
        uint32_t source = 99;
        EXPECT_EQ(a_qortvapi_time_get_sync_source(&source), TV_OK);
        return source;
    }
    /** "2024-05-10 20:40:00 5 gmt/dst": all fields. */
    static std::string text(const DTG_T& record) {
        char buffer[64];
        std::snprintf(buffer, sizeof buffer, "%04u-%02u-%02u %02u:%02u:%02u %u %u%u",
                      record.ui2_year, record.ui1_month, record.ui1_day, record.ui1_hour,
                      record.ui1_minute, record.ui1_second, record.ui1_day_of_week, record.b_gmt,
                      record.b_dst);
        return buffer;
    }
    static std::string utcText(int64_t seconds) {
        DTG_T record = {};
        EXPECT_EQ(a_qortvapi_utc_sec_to_dtg(seconds, &record), uint32_t{TV_OK});
        return text(record);
    }
    static std::string localText(int64_t seconds) {
        DTG_T record = {};
        EXPECT_EQ(c_dt_utc_sec_to_loc_dtg(seconds, &record), TV_OK);
        return text(record);
    }

    std::atomic<int64_t> machine{1'800'000'000'250};
    NotificationLog& log = NotificationLog::instance();
};

TEST_F(TelevisionTime, FollowsTheStreams) {
    startWithDemo();
    uint16_t from = 99;
    EXPECT_EQ(a_qortvapi_time_get_utc_time(&from), kUsualTime);
    EXPECT_EQ(from, TIME_SYNC_SOURCE_BROADCAST);
    EXPECT_EQ(source(), uint32_t{TIME_SYNC_SOURCE_BROADCAST});
    machine += 2999;
    EXPECT_EQ(utc(), kUsualTime + 2);
    int32_t milliseconds = 0;
    EXPECT_EQ(c_dt_get_utc(&from, &milliseconds), kUsualTime + 2);
    EXPECT_EQ(milliseconds, 999);
    DTG_T record = {};
    EXPECT_EQ(a_qortvapi_time_get_broadcast_time_ex(&record), kUsualTime + 2);
    EXPECT_EQ(text(record), "2024-05-10 18:40:02 5 10");
    tv->reload();
    EXPECT_EQ(utc(), kUsualTime + 2) << "the same streams do not set it back";
    stream_generator::writeStreams(streams(), stream_generator::demoPlans(kUsualTime + 7200));
    tv->reload();
    EXPECT_EQ(utc(), kUsualTime + 7200);
}

TEST_F(TelevisionTime, WithoutAStreamItIsTheMachines) {
    start();
    uint16_t from = 99;
    EXPECT_EQ(a_qortvapi_time_get_utc_time(&from), 1'800'000'000);
    EXPECT_EQ(from, TIME_SYNC_SOURCE_SYSTEM);
    EXPECT_EQ(source(), uint32_t{TIME_SYNC_SOURCE_BROADCAST});
    DTG_T record = {};
    EXPECT_EQ(a_qortvapi_time_get_broadcast_time_ex(&record), TV_NOT_FOUND);
    EXPECT_EQ(record.ui2_year, 0);
    EXPECT_EQ(a_qortvapi_time_has_received_tot(), 0);
    DT_BRDCST_STATUS_T status;
    std::memset(&status, 0xFF, sizeof status);
    EXPECT_EQ(a_qortvapi_time_get_brdcst_raw_data(&status), uint32_t{TV_OK});
    EXPECT_EQ(status.b_tdt_received + status.b_tot_received, 0);
    EXPECT_EQ(int64_t{status.i8_utc}, 0);
    EXPECT_EQ(a_qortvapi_time_get_time_offset(), 0);
}

TEST_F(TelevisionTime, OffsetOfTheStreams) {
    startWithDemo();
    machine += 5000;
    DT_BRDCST_STATUS_T status = {};
    EXPECT_EQ(a_qortvapi_time_get_brdcst_raw_data(&status), uint32_t{TV_OK});
    EXPECT_EQ(status.b_tdt_received, 1);
    EXPECT_EQ(status.b_tot_received, 1);
    EXPECT_EQ(int64_t{status.i8_utc}, kUsualTime) << "as it was received";
    EXPECT_EQ(int64_t{status.i8_next_change}, kChange);
    EXPECT_EQ(int32_t{status.i4_offset}, 7200);
    EXPECT_EQ(int32_t{status.i4_next_offset}, 3600);
    EXPECT_EQ(a_qortvapi_time_has_received_tot(), 1);
    EXPECT_EQ(a_qortvapi_time_get_time_zone(), 3600);
    EXPECT_EQ(a_qortvapi_time_get_time_offset(), 7200);
    EXPECT_EQ(localText(kUsualTime), "2024-05-10 20:40:00 5 01");
    EXPECT_EQ(localText(kChange - 1), "2024-10-27 02:59:59 0 01");
    EXPECT_EQ(localText(kChange), "2024-10-27 02:00:00 0 00");
    machine += (kChange - kUsualTime) * 1000;
    EXPECT_EQ(a_qortvapi_time_get_time_offset(), 3600);
}

TEST_F(TelevisionTime, ConversionsGoBothWays) {
    startWithDemo();
    for (const int64_t moment : {kUsualTime, kChange - 3600, kChange - 1, kChange, kChange + 3599,
                                 kChange + 3600, int64_t{0}, int64_t{-86400}}) {
        DTG_T local = {};
        DTG_T back = {};
        DTG_T universal = {};
        ASSERT_EQ(a_qortvapi_utc_sec_to_dtg(moment, &universal), uint32_t{TV_OK});
        EXPECT_EQ(a_qortvapi_time_convert(TIME_CONVERT_UTC_TO_LOCAL, &universal, &local),
                  uint32_t{TV_OK});
        EXPECT_EQ(text(local), localText(moment));
        EXPECT_EQ(a_qortvapi_time_convert(TIME_CONVERT_LOCAL_TO_UTC, &local, &back),
                  uint32_t{TV_OK});
        EXPECT_EQ(text(back), text(universal));
        EXPECT_EQ(c_dt_conv_utc_local(&universal, &back), TV_OK);
        EXPECT_EQ(text(back), text(local));
        EXPECT_EQ(c_dt_conv_utc_local(&local, &back), TV_OK);
        EXPECT_EQ(text(back), text(universal));
        int64_t milliseconds = 0;
        EXPECT_EQ(a_qortvapi_time_convert_local_time_to_millis(&local, &milliseconds), TV_OK);
        EXPECT_EQ(milliseconds, moment * 1000);
        EXPECT_EQ(a_qortvapi_time_convert_millis_to_local_time(milliseconds + 999, &back), TV_OK);
        EXPECT_EQ(text(back), text(local));
        EXPECT_EQ(a_qortvapi_dtg_to_sec(&universal), moment);
        EXPECT_EQ(c_dt_dtg_to_sec(&local), moment + 7200 - (moment >= kChange ? 3600 : 0));
    }
    DTG_T record = {};
    EXPECT_EQ(a_qortvapi_time_convert_millis_to_local_time(-1, &record), TV_OK);
    EXPECT_EQ(text(record), "1970-01-01 01:59:59 4 01");
    EXPECT_EQ(a_qortvapi_time_convert(2, &record, &record),
              static_cast<uint32_t>(TV_INVALID_ARGUMENT));
}

TEST_F(TelevisionTime, SecondsAndDates) {
    start();
    EXPECT_EQ(utcText(0), "1970-01-01 00:00:00 4 10");
    EXPECT_EQ(utcText(-1), "1969-12-31 23:59:59 3 10");
    EXPECT_EQ(utcText(951782400), "2000-02-29 00:00:00 2 10");
    EXPECT_EQ(utcText(-2203891200), "1900-03-01 00:00:00 4 10");
    EXPECT_EQ(utcText(-2203891201), "1900-02-28 23:59:59 3 10");
    EXPECT_EQ(utcText(INT32_MAX), "2038-01-19 03:14:07 2 10");
    EXPECT_EQ(utcText(int64_t{INT32_MAX} + 1), "2038-01-19 03:14:08 2 10");
    EXPECT_EQ(utcText(4107542399), "2100-02-28 23:59:59 0 10");
    EXPECT_EQ(utcText(4107542400), "2100-03-01 00:00:00 1 10");
    // Against the C library, over three centuries.
    for (int64_t seconds = -4'000'000'000; seconds < 8'000'000'000; seconds += 12'345'677) {
        DTG_T record = {};
        ASSERT_EQ(a_qortvapi_utc_sec_to_dtg(seconds, &record), uint32_t{TV_OK});
        std::tm expected = {};
        const std::time_t time = seconds;
        gmtime_r(&time, &expected);
        ASSERT_EQ(record.ui2_year, expected.tm_year + 1900);
        ASSERT_EQ(record.ui1_month, expected.tm_mon + 1);
        ASSERT_EQ(record.ui1_day, expected.tm_mday);
        ASSERT_EQ(record.ui1_day_of_week, expected.tm_wday);
        ASSERT_EQ(record.ui1_hour, expected.tm_hour);
        ASSERT_EQ(record.ui1_minute, expected.tm_min);
        ASSERT_EQ(record.ui1_second, expected.tm_sec);
        ASSERT_EQ(c_dt_dtg_to_sec(&record), seconds);
    }
}

TEST_F(TelevisionTime, TimesThatDoNotFitAreRefused) {
    startWithDemo();
    DTG_T record;
    std::memset(&record, 7, sizeof record);
    const auto refused = static_cast<uint32_t>(TV_INVALID_ARGUMENT);
    for (const int64_t seconds :
         {INT64_MIN, INT64_MAX, int64_t{-62167219201}, int64_t{2005949145600}}) {
        EXPECT_EQ(a_qortvapi_utc_sec_to_dtg(seconds, &record), refused);
        EXPECT_EQ(c_dt_utc_sec_to_loc_dtg(seconds, &record), TV_INVALID_ARGUMENT);
    }
    EXPECT_EQ(c_dt_utc_sec_to_loc_dtg(2005949145599, &record), TV_INVALID_ARGUMENT)
            << "local time is in the next year";
    for (const int64_t milliseconds : {INT64_MIN, INT64_MAX}) {
        EXPECT_EQ(a_qortvapi_time_convert_millis_to_local_time(milliseconds, &record),
                  TV_INVALID_ARGUMENT);
    }
    EXPECT_EQ(c_dt_mjd_to_dtg(UINT32_MAX, &record), TV_INVALID_ARGUMENT);
    EXPECT_EQ(record.ui1_day, 7) << "outputs are left alone";
    EXPECT_EQ(utcText(2005949145599), "65535-12-31 23:59:59 2 10");
    EXPECT_EQ(utcText(-62167219200), "0000-01-01 00:00:00 6 10");
}

TEST_F(TelevisionTime, DatesThatAreNoneAreRefused) {
    start();
    const DTG_T good = {2024, 2, 29, 0, 23, 59, 59, 1, 0};
    EXPECT_EQ(c_dt_dtg_to_sec(&good), 1709251199);
    std::vector<DTG_T> bad(9, good);
    bad[0].ui1_month = 0;
    bad[1].ui1_month = 13;
    bad[2].ui1_day = 0;
    bad[3].ui1_day = 30;
    bad[4].ui2_year = 1900;
    bad[5].ui1_hour = 24;
    bad[6].ui1_minute = 60;
    bad[7].ui1_second = 60;
    std::memset(&bad[8], 0xFF, sizeof bad[8]);
    for (const DTG_T& record : bad) {
        DTG_T converted = {};
        int64_t milliseconds = 5;
        uint16_t mjd = 5;
        EXPECT_EQ(c_dt_dtg_to_sec(&record), TIME_NO_SUCH_TIME) << text(record);
        EXPECT_EQ(a_qortvapi_dtg_to_sec(&record), TIME_NO_SUCH_TIME);
        EXPECT_EQ(c_dt_conv_utc_local(&record, &converted), TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_time_convert(0, &record, &converted),
                  static_cast<uint32_t>(TV_INVALID_ARGUMENT));
        EXPECT_EQ(a_qortvapi_time_convert_local_time_to_millis(&record, &milliseconds),
                  TV_INVALID_ARGUMENT);
        EXPECT_EQ(c_dt_dtg_to_mjd_bcd(&record, &mjd, nullptr, nullptr), TV_INVALID_ARGUMENT);
        EXPECT_EQ(converted.ui2_year, 0);
        EXPECT_EQ(milliseconds, 5);
        EXPECT_EQ(mjd, 5);
    }
}

TEST_F(TelevisionTime, ModifiedJulianDates) {
    start();
    DTG_T record = {};
    for (const auto& [mjd, expected] :
         std::vector<std::pair<uint32_t, std::string>>{{0, "1858-11-17 00:00:00 3 10"},
                                                       {15079, "1900-03-01 00:00:00 4 10"},
                                                       {49273, "1993-10-13 00:00:00 3 10"},
                                                       {51603, "2000-02-29 00:00:00 2 10"},
                                                       {65535, "2038-04-22 00:00:00 4 10"},
                                                       {65536, "2038-04-23 00:00:00 5 10"}}) {
        EXPECT_EQ(c_dt_mjd_to_dtg(mjd, &record), TV_OK);
        EXPECT_EQ(text(record), expected);
    }
    uint16_t mjd = 0;
    uint16_t hoursMinutes = 0;
    uint8_t seconds = 0;
    record = {1993, 10, 13, 0, 12, 45, 59, 1, 0};
    EXPECT_EQ(c_dt_dtg_to_mjd_bcd(&record, &mjd, &hoursMinutes, &seconds), TV_OK);
    EXPECT_EQ(mjd, 49273);
    EXPECT_EQ(hoursMinutes, 0x1245);
    EXPECT_EQ(seconds, 0x59);
    for (const auto& [date, code] : std::vector<std::pair<DTG_T, int32_t>>{
                 {{1858, 11, 17, 0, 0, 0, 0, 1, 0}, TV_OK},
                 {{1858, 11, 16, 0, 23, 59, 59, 1, 0}, TV_INVALID_ARGUMENT},
                 {{2038, 4, 22, 0, 23, 59, 59, 1, 0}, TV_OK},
                 {{2038, 4, 23, 0, 0, 0, 0, 1, 0}, TV_INVALID_ARGUMENT}}) {
        EXPECT_EQ(c_dt_dtg_to_mjd_bcd(&date, &mjd, nullptr, badPointer<uint8_t>()), code);
    }
    EXPECT_EQ(mjd, 65535);
}

TEST_F(TelevisionTime, NothingIsEditableWhileTheStreamsAreFollowed) {
    startWithDemo();
    EXPECT_EQ(a_qortvapi_time_is_time_editable(), 0);
    EXPECT_EQ(a_qortvapi_time_is_time_zone_editable(), 0);
    EXPECT_EQ(a_qortvapi_time_is_time_offset_editable(), 0);
    EXPECT_EQ(a_qortvapi_time_set_utc_time(5), TV_BUSY);
    EXPECT_EQ(a_qortvapi_time_update_local_time("2024-01-01", "00:00:00"), TV_BUSY);
    EXPECT_EQ(a_qortvapi_time_set_time_zone(0), TV_BUSY);
    EXPECT_EQ(a_qortvapi_time_set_time_offset(0), TV_BUSY);
    EXPECT_EQ(utc(), kUsualTime);
    EXPECT_EQ(a_qortvapi_time_get_time_offset(), 7200);
    EXPECT_EQ(a_qortvapi_time_set_sync_source(TIME_SYNC_SOURCE_SYSTEM), TV_OK);
    EXPECT_EQ(a_qortvapi_time_is_time_editable(), 0) << "the machine's clock is not the set's";
    EXPECT_EQ(a_qortvapi_time_is_time_zone_editable(), 1);
    EXPECT_EQ(a_qortvapi_time_is_time_offset_editable(), 1);
    EXPECT_EQ(a_qortvapi_time_set_utc_time(5), TV_BUSY);
    EXPECT_EQ(utc(), 1'800'000'000);
}

TEST_F(TelevisionTime, ATimeThatIsSetGoesOnOverARestart) {
    startWithDemo();
    ASSERT_EQ(a_qortvapi_time_set_sync_source(TIME_SYNC_SOURCE_USER), TV_OK);
    EXPECT_EQ(a_qortvapi_time_is_time_editable(), 1);
    EXPECT_EQ(utc(), kUsualTime) << "it goes on from where it stood";
    ASSERT_EQ(a_qortvapi_time_set_utc_time(1'000'000'000), TV_OK);
    machine += 10'000;
    EXPECT_EQ(utc(), 1'000'000'010);
    machine += 3'600'000;
    restart();
    machine += 5'000;
    EXPECT_EQ(utc(), 1'000'003'615);
    uint16_t from = 0;
    a_qortvapi_time_get_utc_time(&from);
    EXPECT_EQ(from, TIME_SYNC_SOURCE_USER);
    for (const int64_t wrong : {int64_t{-1}, INT64_MIN, INT64_MAX, int64_t{253402300800}}) {
        EXPECT_EQ(a_qortvapi_time_set_utc_time(wrong), TV_INVALID_ARGUMENT);
    }
    EXPECT_EQ(utc(), 1'000'003'615);
    EXPECT_EQ(a_qortvapi_time_set_utc_time(253402300799), TV_OK);
    EXPECT_EQ(utcText(utc()), "9999-12-31 23:59:59 5 10");
}

TEST_F(TelevisionTime, ZoneAndOffsetAreRemembered) {
    startWithDemo();
    ASSERT_EQ(a_qortvapi_time_set_sync_source(TIME_SYNC_SOURCE_USER), TV_OK);
    EXPECT_EQ(a_qortvapi_time_set_time_zone(-5 * 3600), TV_OK);
    EXPECT_EQ(a_qortvapi_time_get_time_offset(), -5 * 3600);
    EXPECT_EQ(localText(0), "1969-12-31 19:00:00 3 00");
    EXPECT_EQ(a_qortvapi_time_set_time_offset(-4 * 3600), TV_OK);
    EXPECT_EQ(localText(0), "1969-12-31 20:00:00 3 01") << "summer time";
    for (const int64_t wrong : {int64_t{54001}, int64_t{-54001}, INT64_MIN, INT64_MAX}) {
        EXPECT_EQ(a_qortvapi_time_set_time_zone(wrong), TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_time_set_time_offset(wrong), TV_INVALID_ARGUMENT);
    }
    restart();
    EXPECT_EQ(a_qortvapi_time_get_time_zone(), -5 * 3600);
    EXPECT_EQ(a_qortvapi_time_get_time_offset(), -4 * 3600);
    ASSERT_EQ(a_qortvapi_time_set_sync_source(TIME_SYNC_SOURCE_BROADCAST), TV_OK);
    EXPECT_EQ(a_qortvapi_time_get_time_offset(), 7200);
}

TEST_F(TelevisionTime, LocalTimeFromTexts) {
    start();
    ASSERT_EQ(a_qortvapi_time_set_sync_source(TIME_SYNC_SOURCE_USER), TV_OK);
    ASSERT_EQ(a_qortvapi_time_set_time_zone(7200), TV_OK);
    EXPECT_EQ(a_qortvapi_time_update_local_time("2024-02-29", "01:02:03"), TV_OK);
    EXPECT_EQ(utcText(utc()), "2024-02-28 23:02:03 3 10");
    const int64_t before = utc();
    for (const char* date : {"", "2024-02-30", "2024-2-29", "2024-02-29 ", "24-02-29", "2024/02/29",
                             "2024-00-10", "+024-01-01", "1969-01-01", "2024-02-2x"}) {
        EXPECT_EQ(a_qortvapi_time_update_local_time(date, "01:02:03"), TV_INVALID_ARGUMENT) << date;
    }
    for (const char* time :
         {"", "24:00:00", "01:60:00", "01:00:60", "1:00:00", "01:00", "01.00.00"}) {
        EXPECT_EQ(a_qortvapi_time_update_local_time("2024-02-29", time), TV_INVALID_ARGUMENT)
                << time;
    }
    const std::string endless(1 << 16, '2');
    EXPECT_EQ(a_qortvapi_time_update_local_time(endless.c_str(), "01:02:03"), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_time_update_local_time(nullptr, "01:02:03"), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_time_update_local_time("2024-02-29", nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(utc(), before);
}

TEST_F(TelevisionTime, AnotherSourceIsNotified) {
    startWithDemo();
    ASSERT_EQ(a_qortvapi_time_register_sync_source_callback(syncSource, reinterpret_cast<void*>(4)),
              TV_OK);
    EXPECT_EQ(a_qortvapi_time_set_sync_source(TIME_SYNC_SOURCE_BROADCAST), TV_OK);
    EXPECT_EQ(a_qortvapi_time_set_sync_source(3), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_time_set_sync_source(UINT32_MAX), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_time_set_sync_source(TIME_SYNC_SOURCE_USER), TV_OK);
    EXPECT_EQ(a_qortvapi_time_set_sync_source(TIME_SYNC_SOURCE_SYSTEM), TV_OK);
    EXPECT_EQ(log.wait("source", 2),
              (std::vector<SeenNotification>{
                      {"source", SYNC_SOURCE_NFY_CHANGED, {4, TIME_SYNC_SOURCE_USER}},
                      {"source", SYNC_SOURCE_NFY_CHANGED, {4, TIME_SYNC_SOURCE_SYSTEM}}}));
    restart();
    EXPECT_EQ(source(), uint32_t{TIME_SYNC_SOURCE_SYSTEM});
}

TEST_F(TelevisionTime, TheSecondIsTheTelevisions) {
    options.tick = std::chrono::milliseconds(5);
    startWithDemo();
    ASSERT_EQ(a_qortvapi_time_register_dt_event_callback(second, nullptr), TV_OK);
    EXPECT_EQ(log.wait("second", 1)[0],
              (SeenNotification{"second", TIME_NFY_SECOND, {uint64_t{kUsualTime}}}));
}

TEST_F(TelevisionTime, SleepTimerCountsDown) {
    options.tick = std::chrono::milliseconds(5);
    startWithDemo();
    ASSERT_EQ(a_qortvapi_time_register_sleep_timer_callback(sleepTimer, reinterpret_cast<void*>(6)),
              TV_OK);
    const auto remaining = [] {
        uint32_t seconds = 99;
        EXPECT_EQ(a_qortvapi_time_get_sleep_timer_remaining_time(&seconds), TV_OK);
        return seconds;
    };
    EXPECT_EQ(a_qortvapi_time_get_sleep_timer(), 0);
    EXPECT_EQ(remaining(), 0u);
    EXPECT_EQ(a_qortvapi_time_set_sleep_timer(90), TV_OK);
    EXPECT_EQ(a_qortvapi_time_get_sleep_timer(), 90);
    EXPECT_EQ(a_qortvapi_time_get_sleep_timer_reverse(), 90);
    EXPECT_EQ(log.wait("sleep", 1)[0], (SeenNotification{"sleep", SLEEP_TIMER_NFY_SET, {6, 5400}}));
    machine += 29 * 60'000;
    EXPECT_EQ(a_qortvapi_time_get_sleep_timer_reverse(), 90) << "61 minutes are more than 60";
    machine += 60'000;
    EXPECT_EQ(a_qortvapi_time_get_sleep_timer_reverse(), 60);
    EXPECT_EQ(remaining(), 3600u);
    EXPECT_EQ(a_qortvapi_time_get_sleep_timer(), 90);
    // Setting the time of day does not move the end of the sleep timer.
    ASSERT_EQ(a_qortvapi_time_set_sync_source(TIME_SYNC_SOURCE_USER), TV_OK);
    ASSERT_EQ(a_qortvapi_time_set_utc_time(7), TV_OK);
    EXPECT_EQ(remaining(), 3600u);
    machine += 59 * 60'000 + 10'001;
    EXPECT_EQ(remaining(), 50u) << "rounded up";
    EXPECT_EQ(a_qortvapi_time_get_sleep_timer_reverse(), 10);
    EXPECT_EQ(log.wait("sleep", 2)[1],
              (SeenNotification{"sleep", SLEEP_TIMER_NFY_MINUTE_LEFT, {6, 50}}));
    machine += 50'000;
    EXPECT_EQ(log.wait("sleep", 3)[2], (SeenNotification{"sleep", SLEEP_TIMER_NFY_ENDED, {6, 0}}));
    EXPECT_EQ(a_qortvapi_time_get_sleep_timer(), 0);
    EXPECT_EQ(a_qortvapi_time_get_sleep_timer_reverse(), 0);
    EXPECT_EQ(remaining(), 0u);
}

TEST_F(TelevisionTime, SleepTimerCanBeStopped) {
    startWithDemo();
    ASSERT_EQ(a_qortvapi_time_register_sleep_timer_callback(sleepTimer, nullptr), TV_OK);
    EXPECT_EQ(a_qortvapi_time_set_sleep_timer(SLEEP_TIMER_MOST_MINUTES), TV_OK);
    EXPECT_EQ(a_qortvapi_time_get_sleep_timer_reverse(), SLEEP_TIMER_MOST_MINUTES);
    for (const int32_t wrong : {-1, SLEEP_TIMER_MOST_MINUTES + 1, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(a_qortvapi_time_set_sleep_timer(wrong), TV_INVALID_ARGUMENT);
    }
    EXPECT_EQ(a_qortvapi_time_get_sleep_timer(), SLEEP_TIMER_MOST_MINUTES);
    EXPECT_EQ(a_qortvapi_time_set_sleep_timer(0), TV_OK);
    EXPECT_EQ(a_qortvapi_time_get_sleep_timer(), 0);
    EXPECT_EQ(log.wait("sleep", 2)[1], (SeenNotification{"sleep", SLEEP_TIMER_NFY_SET, {0, 0}}));
    EXPECT_EQ(a_qortvapi_time_set_sleep_timer(5), TV_OK);
    restart();
    EXPECT_EQ(a_qortvapi_time_get_sleep_timer(), 0) << "it does not outlive the set being off";
}

TEST_F(TelevisionTime, PointersThatCannotBeUsed) {
    startWithDemo();
    const auto refused = static_cast<uint32_t>(TV_INVALID_ARGUMENT);
    const DTG_T good = {2024, 2, 29, 0, 1, 2, 3, 1, 0};
    for (DTG_T* bad : {static_cast<DTG_T*>(nullptr), badPointer<DTG_T>()}) {
        DTG_T record = {};
        int64_t milliseconds = 0;
        EXPECT_EQ(a_qortvapi_utc_sec_to_dtg(0, bad), refused);
        EXPECT_EQ(a_qortvapi_time_get_broadcast_time_ex(bad), kUsualTime);
        EXPECT_EQ(a_qortvapi_time_convert(0, bad, &record), refused);
        EXPECT_EQ(a_qortvapi_time_convert(0, &good, bad), refused);
        EXPECT_EQ(a_qortvapi_time_convert_millis_to_local_time(0, bad), TV_INVALID_ARGUMENT);
        EXPECT_EQ(a_qortvapi_dtg_to_sec(bad), TIME_NO_SUCH_TIME);
        EXPECT_EQ(a_qortvapi_time_convert_local_time_to_millis(bad, &milliseconds),
                  TV_INVALID_ARGUMENT);
        EXPECT_EQ(c_dt_utc_sec_to_loc_dtg(0, bad), TV_INVALID_ARGUMENT);
        EXPECT_EQ(c_dt_conv_utc_local(bad, &record), TV_INVALID_ARGUMENT);
        EXPECT_EQ(c_dt_conv_utc_local(&good, bad), TV_INVALID_ARGUMENT);
        EXPECT_EQ(c_dt_mjd_to_dtg(0, bad), TV_INVALID_ARGUMENT);
        EXPECT_EQ(c_dt_dtg_to_sec(bad), TIME_NO_SUCH_TIME);
        EXPECT_EQ(c_dt_dtg_to_mjd_bcd(bad, nullptr, nullptr, nullptr), TV_INVALID_ARGUMENT);
    }
    EXPECT_EQ(c_dt_dtg_to_mjd_bcd(&good, nullptr, nullptr, nullptr), TV_OK);
    EXPECT_EQ(c_dt_get_utc(nullptr, badPointer<int32_t>()), kUsualTime);
    EXPECT_EQ(a_qortvapi_time_convert_local_time_to_millis(&good, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_time_get_brdcst_raw_data(nullptr), refused);
    EXPECT_EQ(a_qortvapi_time_get_sync_source(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_time_get_sleep_timer_remaining_time(badPointer<uint32_t>()),
              TV_INVALID_ARGUMENT);
}

}  // namespace
