// Time shift: positions of the buffer, and the functions at a clock that the test moves.
#include "television/recording/shift_buffer.h"

#include <gtest/gtest.h>

#include "middleware/timeshift.h"
#include "support/recording_fixture.h"

using namespace television;

namespace {

constexpr int64_t kLarge = 1'000'000'000;

TEST(TelevisionShiftBuffer, FollowsTheBroadcastUntilItIsPaused) {
    ShiftBuffer buffer;
    buffer.start(1000, kLarge);
    buffer.settle(6000, false);
    EXPECT_EQ(buffer.duration(), 5000);
    EXPECT_EQ(buffer.position(), 5000);
    buffer.setSpeed(0);
    buffer.settle(9000, false);
    EXPECT_EQ(buffer.duration(), 8000);
    EXPECT_EQ(buffer.position(), 5000);
    buffer.setSpeed(100);
    EXPECT_FALSE(buffer.settle(10000, false).live);
    EXPECT_EQ(buffer.position(), 6000) << "three seconds behind, and stays so";
    EXPECT_EQ(buffer.duration(), 9000);
}

TEST(TelevisionShiftBuffer, FastPlaybackComesToTheBroadcast) {
    ShiftBuffer buffer;
    buffer.start(0, kLarge);
    buffer.settle(10'000, false);
    buffer.seek(0);
    buffer.setSpeed(300);
    EXPECT_FALSE(buffer.settle(11'000, false).live);
    EXPECT_EQ(buffer.position(), 3000);
    EXPECT_TRUE(buffer.settle(15'000, false).live);
    EXPECT_EQ(buffer.speed(), 100);
    EXPECT_EQ(buffer.position(), 15'000);
    EXPECT_FALSE(buffer.settle(16'000, false).live) << "reported once";
    EXPECT_EQ(buffer.position(), 16'000);
    buffer.setSpeed(200);
    EXPECT_EQ(buffer.speed(), 100) << "there is nothing to be faster than";
}

TEST(TelevisionShiftBuffer, ReversePlaybackComesToTheStart) {
    ShiftBuffer buffer;
    buffer.start(0, kLarge);
    buffer.settle(10'000, false);
    buffer.setSpeed(-200);
    EXPECT_FALSE(buffer.settle(12'000, false).start);
    EXPECT_EQ(buffer.position(), 6000);
    EXPECT_TRUE(buffer.settle(16'000, false).start);
    EXPECT_EQ(buffer.speed(), 100);
    EXPECT_EQ(buffer.position(), 1000) << "it came there after three seconds and played on";
}

TEST(TelevisionShiftBuffer, SlowPlaybackLosesNothing) {
    ShiftBuffer buffer;
    buffer.start(0, kLarge);
    buffer.settle(10'000, false);
    buffer.seek(0);
    buffer.setSpeed(33);
    for (int64_t now = 10'001; now <= 20'000; ++now) buffer.settle(now, false);
    EXPECT_EQ(buffer.position(), 3300);
}

TEST(TelevisionShiftBuffer, SizeBoundsWhatItHolds) {
    ShiftBuffer buffer;
    buffer.start(0, 5000);
    buffer.setSpeed(0);
    EXPECT_FALSE(buffer.settle(5000, false).full);
    EXPECT_TRUE(buffer.settle(8000, false).full);
    EXPECT_FALSE(buffer.settle(9000, false).full) << "reported once";
    EXPECT_EQ(buffer.duration(), 5000);
    EXPECT_EQ(buffer.position(), 0) << "what was paused at is lost";
    EXPECT_EQ(buffer.speed(), 0);
    EXPECT_EQ(buffer.tail(), 4000);
    buffer.settle(10'000, true);
    EXPECT_EQ(buffer.speed(), 100) << "plays before it is lost";
}

TEST(TelevisionShiftBuffer, WhatIsKeptIsPlayedToItsEnd) {
    ShiftBuffer buffer;
    buffer.start(0, kLarge);
    buffer.settle(10'000, false);
    buffer.stop();
    buffer.seek(4000);
    buffer.setSpeed(100);
    EXPECT_FALSE(buffer.settle(14'000, false).live);
    EXPECT_EQ(buffer.position(), 8000);
    EXPECT_TRUE(buffer.settle(17'000, false).live);
    EXPECT_EQ(buffer.position(), 10'000);
    EXPECT_EQ(buffer.duration(), 10'000);
}

TEST(TelevisionShiftBuffer, SeeksAreBounded) {
    ShiftBuffer buffer;
    buffer.start(0, kLarge);
    buffer.settle(10'000, false);
    buffer.seek(int64_t{INT32_MAX} * 1000);
    EXPECT_EQ(buffer.position(), 10'000);
    buffer.settle(11'000, false);
    EXPECT_EQ(buffer.position(), 11'000) << "that is the broadcast";
    // A clock that goes back changes nothing.
    buffer.seek(2000);
    buffer.settle(5000, false);
    EXPECT_EQ(buffer.position(), 2000);
    EXPECT_EQ(buffer.duration(), 11'000);
}

class TelevisionTimeShift : public RecordingTest {
  protected:
    void start() {
        RecordingTest::start();
        ASSERT_EQ(a_qortvapi_timeshift_register_callback(
                          [](int32_t code, void*, void* a1, void*) {
                              NotificationLog::instance().add(
                                      "shift", code,
                                      {static_cast<uint32_t>(reinterpret_cast<uintptr_t>(a1))});
                          },
                          nullptr),
                  TV_OK);
    }
    void startWithDevice(int64_t size = 3'600'000'000) {
        start();
        ASSERT_EQ(a_qortvapi_timeshift_registerDevice(folder().path().c_str(), size), TV_OK);
        ASSERT_EQ(a_qortvapi_timeshift_start(), TV_OK);
    }
    bool has(int32_t code, uint64_t value) {
        const auto seen = log.seen("shift");
        return std::count(seen.begin(), seen.end(), SeenNotification{"shift", code, {value}}) > 0;
    }
};

TEST_F(TelevisionTimeShift, WithoutADeviceThereIsNone) {
    start();
    EXPECT_EQ(a_qortvapi_timeshift_get_device_status(), TIMESHIFT_DEVICE_NONE);
    EXPECT_EQ(a_qortvapi_timeshift_get_registerdevice_schedule(), 0);
    EXPECT_EQ(a_qortvapi_timeshift_start(), TV_FAILED);
    EXPECT_EQ(a_qortvapi_timeshift_get_error_id(), TIMESHIFT_ERROR_NO_DEVICE);
    EXPECT_EQ(a_qortvapi_timeshift_get_record_status(), TIMESHIFT_RECORD_STOPPED);
    for (const auto call :
         {&a_qortvapi_timeshift_stop, &a_qortvapi_timeshift_play, &a_qortvapi_timeshift_pause}) {
        EXPECT_EQ(call(), TV_BUSY);
    }
    EXPECT_EQ(a_qortvapi_timeshift_seek(0), TV_BUSY);
    EXPECT_EQ(a_qortvapi_timeshift_get_duration(), 0);
    EXPECT_EQ(a_qortvapi_timeshift_get_position(), 0);
    EXPECT_EQ(a_qortvapi_timeshift_get_current_position(), stream_generator::kUsualTime * 1000);
    for (const char* bad : {"", "relative", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ(a_qortvapi_timeshift_registerDevice(bad, 1'000'000), TV_INVALID_ARGUMENT);
    }
    EXPECT_EQ(a_qortvapi_timeshift_registerDevice("/nowhere", 1'000'000), TV_NOT_FOUND);
    const char* path = folder().path().c_str();
    for (const int64_t size : {int64_t{0}, int64_t{-1}, INT64_MIN, int64_t{999'999}}) {
        EXPECT_EQ(a_qortvapi_timeshift_registerDevice(path, size), TV_INVALID_ARGUMENT);
    }
    EXPECT_EQ(a_qortvapi_timeshift_registerDevice(path, INT64_MAX), TV_FULL);
    EXPECT_EQ(a_qortvapi_timeshift_registerDevice(path, 1'000'000), TV_OK);
    EXPECT_EQ(a_qortvapi_timeshift_get_registerdevice_schedule(), 100);
    EXPECT_EQ(a_qortvapi_timeshift_get_device_status(), TIMESHIFT_DEVICE_READY);
    restart();
    EXPECT_EQ(a_qortvapi_timeshift_get_device_status(), TIMESHIFT_DEVICE_READY);
}

TEST_F(TelevisionTimeShift, PauseAndCatchUp) {
    startWithDevice();
    const int64_t begin = stream_generator::kUsualTime * 1000;
    EXPECT_EQ(a_qortvapi_timeshift_start(), TV_BUSY);
    EXPECT_EQ(a_qortvapi_timeshift_registerDevice(folder().path().c_str(), 1'000'000), TV_BUSY);
    EXPECT_EQ(a_qortvapi_timeshift_get_record_status(), TIMESHIFT_RECORD_STARTED);
    pass(60);
    EXPECT_EQ(a_qortvapi_timeshift_pause(), TV_OK);
    pass(60);
    EXPECT_EQ(a_qortvapi_timeshift_get_duration(), 120'000);
    EXPECT_EQ(a_qortvapi_timeshift_get_position(), 60'000);
    EXPECT_EQ(a_qortvapi_timeshift_get_start_position(), begin);
    EXPECT_EQ(a_qortvapi_timeshift_get_current_position(), begin + 60'000);
    EXPECT_EQ(a_qortvapi_timeshift_play(), TV_OK);
    pass(10);
    EXPECT_EQ(a_qortvapi_timeshift_get_position(), 70'000);
    EXPECT_EQ(a_qortvapi_timeshift_seek(5), TV_OK);
    EXPECT_EQ(a_qortvapi_timeshift_get_position(), 5000);
    EXPECT_EQ(a_qortvapi_timeshift_seek(-1), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_timeshift_trickplay(6401), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_timeshift_trickplay(INT32_MIN), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_timeshift_trickplay(6400), TV_OK);
    pass(10);
    EXPECT_EQ(a_qortvapi_timeshift_get_position(), 140'000);
    EXPECT_EQ(a_qortvapi_timeshift_trickplay(-6400), TV_OK);
    pass(10);
    EXPECT_LT(a_qortvapi_timeshift_get_position(), 10'000);
    const std::vector<SeenNotification> wanted = {
            {"shift", TIMESHIFT_NFY_DEVICE, {TIMESHIFT_DEVICE_READY}},
            {"shift", TIMESHIFT_NFY_RECORD_STATUS, {TIMESHIFT_RECORD_STARTED}},
            {"shift", TIMESHIFT_NFY_PLAY_STATUS, {0}},
            {"shift", TIMESHIFT_NFY_PLAY_STATUS, {100}},
            {"shift", TIMESHIFT_NFY_PLAY_STATUS, {6400}},
            {"shift", TIMESHIFT_NFY_END_REACHED, {1}},
            {"shift", TIMESHIFT_NFY_PLAY_STATUS, {100}},
            {"shift", TIMESHIFT_NFY_PLAY_STATUS, {static_cast<uint32_t>(-6400)}},
            {"shift", TIMESHIFT_NFY_END_REACHED, {0}},
            {"shift", TIMESHIFT_NFY_PLAY_STATUS, {100}}};
    EXPECT_EQ(log.wait("shift", wanted.size()), wanted);
}

TEST_F(TelevisionTimeShift, StopAndKeep) {
    startWithDevice();
    pass(60);
    EXPECT_EQ(a_qortvapi_timeshift_stop_ex(TIMESHIFT_STOP_KEEP_BUFFER), TV_OK);
    EXPECT_EQ(a_qortvapi_timeshift_get_record_status(), TIMESHIFT_RECORD_STOPPED);
    pass(60);
    EXPECT_EQ(a_qortvapi_timeshift_get_duration(), 60'000);
    EXPECT_EQ(a_qortvapi_timeshift_seek(10), TV_OK);
    EXPECT_EQ(a_qortvapi_timeshift_play(), TV_OK);
    pass(20);
    EXPECT_EQ(a_qortvapi_timeshift_get_position(), 30'000);
    EXPECT_EQ(a_qortvapi_timeshift_stop_ex(3), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_timeshift_stop(), TV_OK);
    EXPECT_EQ(a_qortvapi_timeshift_get_duration(), 0);
    EXPECT_EQ(a_qortvapi_timeshift_stop(), TV_BUSY);
}

TEST_F(TelevisionTimeShift, FullBuffer) {
    startWithDevice(10'000'000);  // ten seconds
    EXPECT_EQ(a_qortvapi_timeshift_set_play_before_full(true), TV_OK);
    EXPECT_EQ(a_qortvapi_timeshift_pause(), TV_OK);
    pass(15);
    EXPECT_EQ(a_qortvapi_timeshift_get_duration(), 10'000);
    EXPECT_EQ(a_qortvapi_timeshift_get_device_status(), TIMESHIFT_DEVICE_FULL);
    EXPECT_EQ(log.wait("shift", 5).back(),
              (SeenNotification{"shift", TIMESHIFT_NFY_PLAY_STATUS, {100}}));
    EXPECT_TRUE(has(TIMESHIFT_NFY_DEVICE, TIMESHIFT_DEVICE_FULL));
}

TEST_F(TelevisionTimeShift, AnotherChannelEndsIt) {
    options.tick = std::chrono::milliseconds(5);
    startWithDevice();
    ASSERT_EQ(a_qortvapi_channellist_set_current_channel(channel(1, "Ærø Nyt")), TV_OK);
    EXPECT_EQ(log.wait("shift", 3)[2],
              (SeenNotification{"shift", TIMESHIFT_NFY_RECORD_STATUS, {TIMESHIFT_RECORD_STOPPED}}));
    EXPECT_EQ(a_qortvapi_timeshift_get_duration(), 0);
    // From now on each channel is recorded by itself.
    EXPECT_EQ(a_qortvapi_timeshift_set_auto_record(true), TV_OK);
    EXPECT_EQ(log.wait("shift", 4)[3],
              (SeenNotification{"shift", TIMESHIFT_NFY_RECORD_STATUS, {TIMESHIFT_RECORD_STARTED}}));
    ASSERT_EQ(a_qortvapi_channellist_set_current_channel(channel(1, "Première")), TV_OK);
    log.wait("shift", 6);
    EXPECT_EQ(a_qortvapi_timeshift_get_record_status(), TIMESHIFT_RECORD_STARTED);
}

TEST_F(TelevisionTimeShift, DeviceThatGoesAwayEndsIt) {
    options.tick = std::chrono::milliseconds(5);
    start();
    const std::string device = folder() / "stick";
    mkdir(device.c_str(), 0700);
    ASSERT_EQ(a_qortvapi_timeshift_registerDevice(device.c_str(), 1'000'000), TV_OK);
    ASSERT_EQ(a_qortvapi_timeshift_start(), TV_OK);
    std::filesystem::remove(device);
    log.wait("shift", 4);
    EXPECT_TRUE(has(TIMESHIFT_NFY_DEVICE, TIMESHIFT_DEVICE_NONE));
    EXPECT_EQ(a_qortvapi_timeshift_get_error_id(), TIMESHIFT_ERROR_WRITE);
    EXPECT_EQ(a_qortvapi_timeshift_get_record_status(), TIMESHIFT_RECORD_STOPPED);
    EXPECT_EQ(a_qortvapi_timeshift_start(), TV_FAILED);
    EXPECT_EQ(a_qortvapi_timeshift_get_error_id(), TIMESHIFT_ERROR_NO_DEVICE);
}

TEST_F(TelevisionTimeShift, NothingPlaysIsNoSignal) {
    for (const auto& plan : plans) std::filesystem::remove(streams() + "/" + plan.fileName);
    start();
    ASSERT_EQ(a_qortvapi_timeshift_registerDevice(folder().path().c_str(), 1'000'000), TV_OK);
    EXPECT_EQ(a_qortvapi_timeshift_start(), TV_FAILED);
    EXPECT_EQ(a_qortvapi_timeshift_get_error_id(), TIMESHIFT_ERROR_NO_SIGNAL);
}

}  // namespace
