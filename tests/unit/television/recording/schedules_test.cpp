// Schedules at a clock that the test moves.
#include <gtest/gtest.h>

#include <chrono>
#include <cstring>

#include "support/eventually.h"
#include "support/recording_fixture.h"
#include "television/recording/recording_sidecar.h"

using namespace television;

namespace {

constexpr int64_t kNow = stream_generator::kUsualTime;
constexpr int64_t kDay = 86400;

class TelevisionSchedules : public RecordingTest {
  protected:
    TelevisionSchedules() {
        options.tick = std::chrono::milliseconds(5);
        options.recordingSpeed = 1;
    }

    static SCHEDULE_RECORD_T schedule(const std::string& channelName, int64_t startTime,
                                      uint32_t duration) {
        SCHEDULE_RECORD_T record = {};
        record.ui4_channel_id = channel(1, channelName);
        record.i8_start_time = startTime;
        record.ui4_duration = duration;
        return record;
    }
    static int32_t add(const SCHEDULE_RECORD_T& record) {
        return a_qortvapi_set_schedule_record(&record, SCHEDULE_ADD);
    }
    static SCHEDULE_RECORD_T at(int32_t index) {
        SCHEDULE_RECORD_T record = {};
        EXPECT_EQ(a_qortvapi_get_schedule_record(index, &record), TV_OK);
        return record;
    }
    /** Waits until the schedule at an index is in a state. After a start of the television it may
     * reach the state before a handler is registered, so this does not wait for a notification. */
    static void waitUntil(int32_t index, uint8_t state) {
        EXPECT_TRUE(eventually([&] { return at(index).ui1_state == state; }))
                << "state " << int{at(index).ui1_state} << " instead of " << int{state};
    }
    /** Waits until so many notifications that a schedule is in a state have come. */
    void waitFor(uint32_t id, uint64_t state, size_t times = 1) {
        const SeenNotification wanted{"record", RECORD_NFY_SCHEDULE_CHANGED, {id, state}};
        for (size_t count = 1;; ++count) {
            const auto seen = log.wait("record", count);
            if (seen.size() < count) return;  // the log has complained
            if (static_cast<size_t>(std::count(seen.begin(), seen.end(), wanted)) >= times) return;
        }
    }
};

TEST_F(TelevisionSchedules, RecordsWhenItIsTime) {
    start();
    SCHEDULE_RECORD_T wanted = schedule("Première", kNow + 60, 120);
    std::strcpy(wanted.s_title, "Der Film");
    ASSERT_EQ(add(wanted), TV_OK);
    EXPECT_EQ(a_qortvapi_pvr_get_booking_count(), 1);
    waitFor(1, SCHEDULE_STATE_WAITING);
    EXPECT_TRUE(notificationsOf(RECORD_NFY_STARTED).empty());
    pass(60);
    waitFor(1, SCHEDULE_STATE_RUNNING);
    EXPECT_EQ(at(0).ui1_state, SCHEDULE_STATE_RUNNING);
    EXPECT_EQ(notificationsOf(RECORD_NFY_STARTED).size(), 1u);
    const int32_t handle = a_qortvapi_record_pvr_get_current_handle();
    EXPECT_GT(handle, 0);
    pass(120);
    waitFor(1, SCHEDULE_STATE_DONE);
    EXPECT_EQ(notificationsOf(RECORD_NFY_STOPPED),
              (std::vector<SeenNotification>{
                      {"record",
                       RECORD_NFY_STOPPED,
                       {static_cast<uint64_t>(handle), RECORD_STOP_SCHEDULE}}}));
    EXPECT_EQ(a_qortvapi_record_pvr_get_current_handle(), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_pvr_get_booking_count(), 0);
    EXPECT_EQ(at(0).ui1_state, SCHEDULE_STATE_DONE);
    const auto sidecar = readSidecar(recordings() + "/" + files().at(0));
    EXPECT_EQ(sidecar->programName, "Der Film");
    EXPECT_EQ(sidecar->stopReason, RECORD_STOP_SCHEDULE);
    EXPECT_EQ(sidecar->startTime, kNow + 60);
}

TEST_F(TelevisionSchedules, StopOfTheUserIsTheEnd) {
    start();
    ASSERT_EQ(add(schedule("Première", kNow, 1000)), TV_OK);
    waitFor(1, SCHEDULE_STATE_RUNNING);
    const auto handle = static_cast<uint32_t>(a_qortvapi_record_pvr_get_current_handle());
    EXPECT_EQ(a_qortvapi_record_pvr_stop(handle), TV_OK);
    waitFor(1, SCHEDULE_STATE_DONE);
}

TEST_F(TelevisionSchedules, FailureIsNotified) {
    start();
    ASSERT_EQ(add(schedule("Sport Plus", kNow, 100)), TV_OK);  // scrambled
    waitFor(1, SCHEDULE_STATE_FAILED);
    EXPECT_EQ(at(0).ui1_state, SCHEDULE_STATE_FAILED);
    // A schedule whose stream is deleted.
    ASSERT_EQ(add(schedule("Première", kNow, 100)), TV_OK);
    waitFor(2, SCHEDULE_STATE_RUNNING);
    std::filesystem::remove(streams() + "/" + kStream);
    waitFor(2, SCHEDULE_STATE_FAILED);
}

TEST_F(TelevisionSchedules, AnotherMultiplexMeanwhileFails) {
    start();
    ASSERT_EQ(add(schedule("Première", kNow, 100)), TV_OK);
    ASSERT_EQ(add(schedule("Новости 24", kNow + 10, 50)), TV_OK);
    waitFor(1, SCHEDULE_STATE_RUNNING);
    pass(10);
    waitFor(2, SCHEDULE_STATE_FAILED);
    EXPECT_EQ(at(0).ui1_state, SCHEDULE_STATE_RUNNING);
}

TEST_F(TelevisionSchedules, OneEndsAndTheNextBegins) {
    start();
    ASSERT_EQ(add(schedule("Новости 24", kNow + 100, 50)), TV_OK);
    ASSERT_EQ(add(schedule("Première", kNow, 100)), TV_OK);
    waitFor(2, SCHEDULE_STATE_RUNNING);
    pass(100);
    waitFor(2, SCHEDULE_STATE_DONE);
    waitFor(1, SCHEDULE_STATE_RUNNING);
}

TEST_F(TelevisionSchedules, RepeatsDailyAndWeekly) {
    start();
    SCHEDULE_RECORD_T daily = schedule("Première", kNow + 10, 20);
    daily.ui1_repeat = SCHEDULE_REPEAT_DAILY;
    ASSERT_EQ(add(daily), TV_OK);
    SCHEDULE_RECORD_T weekly = schedule("Ærø Nyt", kNow - 100, 20);
    weekly.ui1_repeat = SCHEDULE_REPEAT_WEEKLY;
    ASSERT_EQ(add(weekly), TV_OK) << "the next time";
    EXPECT_EQ(at(1).i8_start_time, kNow - 100 + 7 * kDay);
    pass(10);
    waitFor(1, SCHEDULE_STATE_RUNNING);
    pass(20);
    waitFor(1, SCHEDULE_STATE_DONE);
    waitFor(1, SCHEDULE_STATE_WAITING, 2);
    EXPECT_EQ(at(0).i8_start_time, kNow + 10 + kDay);
    // The television did not check for three days and a half.
    pass(3 * kDay + kDay / 2);
    waitFor(1, SCHEDULE_STATE_FAILED);
    waitFor(1, SCHEDULE_STATE_WAITING, 3);
    EXPECT_EQ(at(0).i8_start_time, kNow + 10 + 4 * kDay);
    EXPECT_EQ(a_qortvapi_pvr_get_booking_count(), 2);
}

TEST_F(TelevisionSchedules, RemindersDoNotRecord) {
    start();
    SCHEDULE_RECORD_T reminder = schedule("Sport Plus", kNow + 10, 20);
    reminder.ui1_type = SCHEDULE_TYPE_REMIND;
    ASSERT_EQ(add(reminder), TV_OK);
    pass(10);
    waitFor(1, SCHEDULE_STATE_RUNNING);
    pass(20);
    waitFor(1, SCHEDULE_STATE_DONE);
    EXPECT_TRUE(files().empty());
}

TEST_F(TelevisionSchedules, OutliveARestart) {
    start();
    ASSERT_EQ(add(schedule("Première", kNow, 100)), TV_OK);
    ASSERT_EQ(add(schedule("Ærø Nyt", kNow + 1000, 100)), TV_OK);
    waitFor(1, SCHEDULE_STATE_RUNNING);
    ASSERT_EQ(a_qortvapi_del_schedule_record(2), TV_OK);
    waitFor(2, SCHEDULE_STATE_DELETED);
    ASSERT_EQ(add(schedule("Ærø Nyt", kNow + 2000, 100)), TV_OK);
    // Off for fifty seconds: after the restart the clock follows the streams, whose time is later.
    for (auto& plan : plans) {
        plan.time = kNow + 50;
        folder().write("streams/" + plan.fileName,
                       withClock(stream_generator::buildStream(plan, plans), 0x101, kBitRate));
    }
    restart();
    waitUntil(0, SCHEDULE_STATE_RUNNING);
    EXPECT_EQ(files().size(), 2u) << "the rest is in a file of its own";
    EXPECT_EQ(at(1).ui4_id, 3u);
    EXPECT_EQ(at(1).i8_start_time, kNow + 2000);
    SCHEDULE_RECORD_T record;
    EXPECT_EQ(a_qortvapi_get_schedule_record(2, &record), TV_NOT_FOUND);
    // Off until both schedules are over.
    for (auto& plan : plans) {
        plan.time = kNow + 5000;
        folder().write("streams/" + plan.fileName,
                       withClock(stream_generator::buildStream(plan, plans), 0x101, kBitRate));
    }
    restart();
    waitUntil(0, SCHEDULE_STATE_FAILED);
    waitUntil(1, SCHEDULE_STATE_FAILED);
    EXPECT_EQ(a_qortvapi_pvr_get_booking_count(), 0);
}

TEST_F(TelevisionSchedules, ChangeAndDelete) {
    start();
    ASSERT_EQ(add(schedule("Première", kNow + 100, 100)), TV_OK);
    SCHEDULE_RECORD_T changed = at(0);
    changed.i8_start_time = kNow;
    EXPECT_EQ(a_qortvapi_set_schedule_record(&changed, SCHEDULE_CHANGE), TV_OK);
    waitFor(1, SCHEDULE_STATE_RUNNING);
    EXPECT_EQ(a_qortvapi_record_pvr_get_current_handle() > 0, true);
    const auto with = [&](auto change) {
        SCHEDULE_RECORD_T record = at(0);
        change(record);
        return a_qortvapi_set_schedule_record(&record, SCHEDULE_CHANGE);
    };
    EXPECT_EQ(with([](auto& r) { r.ui4_channel_id = channel(1, "Ærø Nyt"); }), TV_BUSY);
    EXPECT_EQ(with([](auto& r) { ++r.i8_start_time; }), TV_BUSY);
    EXPECT_EQ(with([](auto& r) { ++r.ui2_event_id; }), TV_BUSY);
    EXPECT_EQ(with([](auto& r) { r.ui1_type = SCHEDULE_TYPE_REMIND; }), TV_BUSY);
    changed.ui4_duration = 1000;
    EXPECT_EQ(a_qortvapi_set_schedule_record(&changed, SCHEDULE_CHANGE), TV_OK);
    waitFor(1, SCHEDULE_STATE_RUNNING, 2);
    pass(500);
    EXPECT_EQ(at(0).ui1_state, SCHEDULE_STATE_RUNNING);
    EXPECT_EQ(a_qortvapi_del_schedule_record(1), TV_OK);
    waitFor(1, SCHEDULE_STATE_DELETED);
    EXPECT_EQ(a_qortvapi_record_pvr_get_current_handle(), TV_NOT_FOUND) << "with its recording";
    EXPECT_EQ(a_qortvapi_del_schedule_record(1), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_set_schedule_record(&changed, SCHEDULE_CHANGE), TV_NOT_FOUND);
}

TEST_F(TelevisionSchedules, WhatMakesNoSenseIsRefused) {
    start();
    const SCHEDULE_RECORD_T good = schedule("Première", kNow + 100, 100);
    const auto with = [&](auto change) {
        SCHEDULE_RECORD_T record = good;
        change(record);
        return add(record);
    };
    EXPECT_EQ(with([](auto& r) { r.ui4_id = 1; }), TV_INVALID_ARGUMENT);
    EXPECT_EQ(with([](auto& r) { r.ui4_channel_id = 0xDEAD; }), TV_NOT_FOUND);
    EXPECT_EQ(with([](auto& r) { r.ui4_duration = 0; }), TV_INVALID_ARGUMENT);
    EXPECT_EQ(with([](auto& r) { r.ui4_duration = UINT32_MAX; }), TV_INVALID_ARGUMENT);
    EXPECT_EQ(with([](auto& r) { r.i8_start_time = INT64_MAX; }), TV_INVALID_ARGUMENT);
    EXPECT_EQ(with([](auto& r) { r.i8_start_time = INT64_MIN; }), TV_INVALID_ARGUMENT);
    EXPECT_EQ(with([](auto& r) { r.i8_start_time = kNow - 100; }), TV_INVALID_ARGUMENT) << "over";
    EXPECT_EQ(with([](auto& r) { r.ui1_type = 2; }), TV_INVALID_ARGUMENT);
    EXPECT_EQ(with([](auto& r) { r.ui1_repeat = 3; }), TV_INVALID_ARGUMENT);
    EXPECT_EQ(with([](auto& r) {
                  r.ui1_repeat = SCHEDULE_REPEAT_DAILY;
                  r.ui4_duration = kDay + 1;
              }),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(with([](auto& r) { std::memset(r.s_title, 'x', sizeof(r.s_title)); }),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_set_schedule_record(&good, 2), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_set_schedule_record(nullptr, SCHEDULE_ADD), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_get_schedule_record(0, nullptr), TV_INVALID_ARGUMENT);
    SCHEDULE_RECORD_T record;
    std::memset(&record, 0x5A, sizeof(record));
    for (const int32_t index : {-1, 0, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(a_qortvapi_get_schedule_record(index, &record), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_del_schedule_record(index), TV_NOT_FOUND);
    }
    EXPECT_EQ(record.ui4_id, 0x5A5A5A5Au) << "outputs are left alone";
    EXPECT_EQ(a_qortvapi_pvr_get_booking_count(), 0);
}

TEST_F(TelevisionSchedules, TheListIsBounded) {
    options.tick = std::chrono::hours(1);
    start();
    for (int i = 0; i < 64; ++i) {
        ASSERT_EQ(add(schedule("Première", kNow + 1000 * (i + 1), 10)), TV_OK);
    }
    EXPECT_EQ(add(schedule("Première", kNow + 100, 10)), TV_FULL);
    EXPECT_EQ(a_qortvapi_del_schedule_record(7), TV_OK);
    EXPECT_EQ(add(schedule("Première", kNow + 100, 10)), TV_OK);
    EXPECT_EQ(at(63).ui4_id, 65u) << "ids are not given twice";
}

TEST_F(TelevisionSchedules, ThoseThatAreOverMakeRoom) {
    start();
    for (int i = 0; i < 64; ++i) {
        SCHEDULE_RECORD_T reminder = schedule("Première", kNow + i, 10);
        reminder.ui1_type = SCHEDULE_TYPE_REMIND;
        ASSERT_EQ(add(reminder), TV_OK);
    }
    waitFor(1, SCHEDULE_STATE_RUNNING);
    pass(10);
    waitFor(1, SCHEDULE_STATE_DONE);
    EXPECT_EQ(add(schedule("Première", kNow + 1000, 10)), TV_OK);
    EXPECT_EQ(at(0).ui4_id, 2u) << "the oldest of them went";
    EXPECT_EQ(at(63).ui4_id, 65u);
}

TEST_F(TelevisionSchedules, Conflicts) {
    start();
    const auto source = [](const std::string& name, int64_t begin, uint32_t duration) {
        RECORD_SOURCE_T result = {};
        result.ui4_channel_id = channel(1, name);
        result.i8_start_time = begin;
        result.ui4_duration = duration;
        return result;
    };
    const auto check = [](const RECORD_SOURCE_T& a, const RECORD_SOURCE_T& b) {
        const int32_t result = a_qortvapi_record_pvr_chk_src_conflict(&a, &b);
        EXPECT_EQ(a_qortvapi_record_pvr_chk_src_conflict(&b, &a), result);
        return result;
    };
    const RECORD_SOURCE_T first = source("Première", kNow + 100, 100);
    EXPECT_EQ(check(first, source("Новости 24", kNow + 150, 100)), 1);
    EXPECT_EQ(check(first, source("Ærø Nyt", kNow + 150, 100)), 0) << "the same multiplex";
    EXPECT_EQ(check(first, source("Новости 24", kNow + 200, 100)), 0) << "one after the other";
    EXPECT_EQ(check(first, source("Новости 24", kNow, 100)), 0);
    EXPECT_EQ(check(first, source("Новости 24", 0, 101)), 1) << "from now";
    EXPECT_EQ(check(first, source("Новости 24", 0, 0)), 1) << "without end";
    EXPECT_EQ(check(source("Première", INT64_MAX, UINT32_MAX),
                    source("Новости 24", INT64_MIN, UINT32_MAX)),
              0);
    RECORD_SOURCE_T nowhere = first;
    nowhere.ui4_channel_id = 0xDEAD;
    EXPECT_EQ(check(first, nowhere), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_record_pvr_chk_src_conflict(nullptr, &first), TV_INVALID_ARGUMENT);
    // With all schedules and what is being recorded.
    const RECORD_SOURCE_T none = {};
    const RECORD_SOURCE_T other = source("Новости 24", kNow + 150, 100);
    EXPECT_EQ(a_qortvapi_record_pvr_chk_src_conflict(&other, &none), 0);
    SCHEDULE_RECORD_T daily = schedule("Première", kNow + 100, 100);
    daily.ui1_repeat = SCHEDULE_REPEAT_DAILY;
    ASSERT_EQ(add(daily), TV_OK);
    EXPECT_EQ(a_qortvapi_record_pvr_chk_src_conflict(&other, &none), 1);
    const RECORD_SOURCE_T days = source("Новости 24", kNow + 150 + 5 * kDay, 100);
    EXPECT_EQ(a_qortvapi_record_pvr_chk_src_conflict(&days, nullptr), 1);
    const RECORD_SOURCE_T beside = source("Новости 24", kNow + 250 + 5 * kDay, 100);
    EXPECT_EQ(a_qortvapi_record_pvr_chk_src_conflict(&beside, nullptr), 0);
    const uint32_t handle = openFor("Première");
    ASSERT_EQ(a_qortvapi_record_pvr_start(handle), TV_OK);
    EXPECT_EQ(a_qortvapi_record_pvr_chk_src_conflict(&beside, nullptr), 1) << "it may run so long";
}

}  // namespace
