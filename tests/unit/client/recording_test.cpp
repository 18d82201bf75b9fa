// Recorders, schedules and recordings on the service's own implementation, and a middleware that
// the test plays.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <functional>
#include <vector>

#include "QorTvApiPvrbrowserImpl.h"
#include "QorTvApiRecordImpl.h"
#include "middleware/mmp.h"
#include "middleware/record.h"
#include "middleware/result_codes.h"
#include "qortv/recorder.h"
#include "qortv/recordings.h"
#include "qortv/schedules.h"
#include "television/switchboard/switchboard.h"

namespace qortv {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using vendor::corvanta::tv::qortvapi::V1_0::implementation::QorTvApiPvrbrowserImpl;
using vendor::corvanta::tv::qortvapi::V1_0::implementation::QorTvApiRecordImpl;

/** The message of the error, of the kind, that `act` ends with. */
std::string refusal(Error::Kind kind, const std::function<void()>& act) {
    try {
        act();
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), kind) << error.what();
        return error.what();
    }
    return "nothing was refused";
}

class ClientRecorder : public testing::Test {
  protected:
    ClientRecorder() {
        mTv.on<&a_qortvapi_record_pvr_open>([this](int32_t source) {
            EXPECT_EQ(source, RECORD_SOURCE_MAIN);
            return mOpened;
        });
        mTv.on<&a_qortvapi_record_pvr_close>([this](uint32_t handle) {
            mClosed.push_back(handle);
            return TV_OK;
        });
        mTv.on<&a_qortvapi_record_pvr_get_status>([this](uint32_t) { return mStatus; });
        mTv.on<&a_qortvapi_record_pvr_get_error_id>([this](uint32_t) { return mError; });
    }

    android::sp<Recorder::Interface> service() { return new QorTvApiRecordImpl; }

    int32_t mOpened = 7;
    int32_t mStatus = RECORD_STATUS_IDLE;
    int32_t mError = RECORD_ERROR_NONE;
    std::vector<uint32_t> mClosed;
    switchboard::Switchboard mTv;
};

TEST_F(ClientRecorder, IsOpenAsLongAsItLives) {
    {
        const Recorder recorder(service());
        EXPECT_EQ(recorder.id(), 7U);
        EXPECT_TRUE(mClosed.empty());
    }
    EXPECT_EQ(mClosed, (std::vector<uint32_t>{7}));
}

TEST_F(ClientRecorder, OneThatIsNotOpenedIsNotClosed) {
    mOpened = TV_FULL;
    EXPECT_EQ(refusal(Error::Kind::kRefused, [&] { Recorder recorder(service()); }),
              "all recorders of the television are in use");
    mOpened = TV_FAILED;
    EXPECT_EQ(refusal(Error::Kind::kRefused, [&] { Recorder recorder(service()); }),
              "the television refused to open a recorder (code -6)");
    EXPECT_TRUE(mClosed.empty());
}

TEST_F(ClientRecorder, TheOneThatRunsIsTakenOverAndClosed) {
    int32_t current = TV_NOT_FOUND;
    mTv.on<&a_qortvapi_record_pvr_get_current_handle>([&] { return current; });
    EXPECT_EQ(Recorder::running(service()), nullptr);
    current = 9;
    EXPECT_EQ(Recorder::running(service())->id(), 9U);
    EXPECT_EQ(mClosed, (std::vector<uint32_t>{9}));
    current = TV_FAILED;
    EXPECT_EQ(refusal(Error::Kind::kRefused, [&] { Recorder::running(service()); }),
              "the television refused to tell what records (code -6)");
}

TEST_F(ClientRecorder, ALengthIsRoundedUpToSeconds) {
    std::vector<std::pair<int32_t, int32_t>> modes;
    mTv.on<&a_qortvapi_record_pvr_set_mode>(
            [&](uint32_t handle, int32_t mode, uint32_t, int32_t value) {
                EXPECT_EQ(handle, 7U);
                modes.emplace_back(mode, value);
                return TV_OK;
            });
    Recorder recorder(service());
    recorder.setLength(milliseconds{1});
    recorder.setLength(milliseconds{2000});
    recorder.setLength(milliseconds{0});
    EXPECT_EQ(modes, (std::vector<std::pair<int32_t, int32_t>>{
                             {RECORD_MODE_LIMITED, 1}, {RECORD_MODE_LIMITED, 2}, {0, 0}}));
    refusal(Error::Kind::kArgument, [&] { recorder.setLength(seconds{-1}); });
    refusal(Error::Kind::kArgument, [&] { recorder.setLength(seconds{int64_t{1} << 31}); });
    EXPECT_EQ(modes.size(), 3U);
}

TEST_F(ClientRecorder, AStartThatFailsTellsWhy) {
    int32_t result = TV_FAILED;
    mTv.on<&a_qortvapi_record_pvr_start>([&](uint32_t) { return result; });
    Recorder recorder(service());
    const auto message = [&] { return refusal(Error::Kind::kRefused, [&] { recorder.start(); }); };
    mError = RECORD_ERROR_SCRAMBLED;
    EXPECT_EQ(message(), "cannot record: the channel is scrambled");
    mError = RECORD_ERROR_DISK_FULL;
    EXPECT_EQ(message(), "cannot record: the disk is full");
    mError = RECORD_ERROR_NONE;
    EXPECT_EQ(message(), "the television refused to record (code -6)");
    result = TV_BUSY;
    EXPECT_EQ(message(), "cannot record: the tuner records a channel of another multiplex");
    mStatus = RECORD_STATUS_RECORDING;
    EXPECT_EQ(message(), "the television refused to record: busy (code -5)");
    result = TV_OK;
    recorder.start();
}

TEST_F(ClientRecorder, StoppingWhatHasEndedIsNoError) {
    int32_t result = TV_BUSY;
    mTv.on<&a_qortvapi_record_pvr_stop>([&](uint32_t) { return result; });
    Recorder recorder(service());
    recorder.stop();
    result = TV_NOT_FOUND;
    refusal(Error::Kind::kRefused, [&] { recorder.stop(); });
}

TEST_F(ClientRecorder, TellsHowItStands) {
    mTv.on<&a_qortvapi_get_recording_position>([](uint32_t) { return 42; });
    Recorder recorder(service());
    const std::vector<std::pair<int32_t, RecordingState>> states = {
            {RECORD_STATUS_IDLE, RecordingState::kIdle},
            {RECORD_STATUS_RECORDING, RecordingState::kRecording},
            {RECORD_STATUS_STOPPED, RecordingState::kStopped},
            {RECORD_STATUS_FAILED, RecordingState::kFailed}};
    for (const auto& [number, state] : states) {
        mStatus = number;
        EXPECT_EQ(recorder.state(), state);
    }
    mStatus = TV_NOT_FOUND;
    refusal(Error::Kind::kRefused, [&] { recorder.state(); });
    mError = RECORD_ERROR_NO_SIGNAL;
    EXPECT_EQ(recorder.error(), RecordingError::kNoSignal);
    EXPECT_EQ(recorder.length(), seconds{42});
}

TEST_F(ClientRecorder, ThePathIsThatOfTheDiskAndTheName) {
    std::string name;
    mTv.on<&a_qortvapi_record_pvr_get_recording_file_name>([&](uint32_t, char* to, uint32_t room) {
        EXPECT_EQ(room, 256U);
        std::snprintf(to, room, "%s", name.c_str());
        return TV_OK;
    });
    mTv.on<&a_qortvapi_record_pvr_get_disk>([](uint32_t, char* to, uint32_t length) {
        std::snprintf(to, length + 1, "/media/disk");
        return TV_OK;
    });
    Recorder recorder(service());
    EXPECT_EQ(recorder.path(), "");
    name = "Film.ts";
    EXPECT_EQ(recorder.path(), "/media/disk/Film.ts");
}

class ClientRecordingEvents : public testing::Test, public RecordingListener {
  protected:
    void onRecordingEvent(const RecordingEvent& event) override { mEvents.push_back(event); }
    void onNotification(const Notification& notification) override {
        mOthers.emplace_back(notification.method);
    }

    std::vector<RecordingEvent> mEvents;
    std::vector<std::string> mOthers;
};

TEST_F(ClientRecordingEvents, AreTold) {
    constexpr uint64_t kSigned = 0xFFFFFFFF00000007;  // as a middleware's pointer may be
    notifyRecord(RECORD_NFY_STARTED, 0, kSigned, 11);
    notifyRecord(RECORD_NFY_FAILED, 0, 7, RECORD_ERROR_WRITE);
    notifyRecord(RECORD_NFY_STOPPED, 0, 7, RECORD_STOP_DISK_FULL);
    notifyRecord(RECORD_NFY_SCHEDULE_CHANGED, 0, 3, SCHEDULE_STATE_DELETED);
    ASSERT_EQ(mEvents.size(), 4U);
    const auto& started = std::get<RecordingStarted>(mEvents[0]);
    EXPECT_EQ(started.recorder, 7U);
    EXPECT_EQ(started.channelId, 11U);
    EXPECT_EQ(std::get<RecordingFailed>(mEvents[1]).error, RecordingError::kWrite);
    EXPECT_EQ(std::get<RecordingStopped>(mEvents[2]).end, RecordingEnd::kDiskFull);
    EXPECT_EQ(std::get<ScheduleChanged>(mEvents[3]).id, 3U);
    EXPECT_EQ(std::get<ScheduleChanged>(mEvents[3]).state, ScheduleState::kDeleted);
    EXPECT_TRUE(mOthers.empty());
}

TEST_F(ClientRecordingEvents, OtherNotificationsOfRecordingsAreNotLost) {
    notifyRecord(RECORD_NFY_EVENT, 0, 1, 2);
    EXPECT_TRUE(mEvents.empty());
    EXPECT_EQ(mOthers, (std::vector<std::string>{"notifyRecord"}));
}

class ClientSchedules : public testing::Test {
  protected:
    ClientSchedules() {
        mTv.on<&a_qortvapi_get_schedule_record>([this](int32_t index, SCHEDULE_RECORD_T* record) {
            if (mBeforeRead) mBeforeRead();
            if (static_cast<size_t>(index) >= mRecords.size()) return TV_NOT_FOUND;
            *record = mRecords[static_cast<size_t>(index)];
            return TV_OK;
        });
        mTv.on<&a_qortvapi_set_schedule_record>(
                [this](const SCHEDULE_RECORD_T* record, int32_t operation) -> int32_t {
                    EXPECT_EQ(operation, SCHEDULE_ADD);
                    if (mResult != TV_OK) return mResult;
                    if (mBeforeAdd) mBeforeAdd();
                    mRecords.push_back(*record);
                    mRecords.back().ui4_id = ++mLast;
                    return TV_OK;
                });
    }

    void add(uint32_t channelId) {
        SCHEDULE_RECORD_T record = {};
        record.ui4_id = ++mLast;
        record.ui4_channel_id = channelId;
        record.ui4_duration = 60;
        mRecords.push_back(record);
    }

    Schedules schedules() { return Schedules(new QorTvApiRecordImpl); }

    uint32_t mLast = 0;
    int32_t mResult = TV_OK;
    std::vector<SCHEDULE_RECORD_T> mRecords;
    std::function<void()> mBeforeAdd;
    std::function<void()> mBeforeRead;
    switchboard::Switchboard mTv;
};

TEST_F(ClientSchedules, GoThereAndComeBack) {
    Schedule schedule;
    schedule.channelId = 5;
    schedule.start = 2000000000;
    schedule.duration = std::chrono::minutes{90};
    schedule.repeat = Schedule::Repeat::kWeekly;
    schedule.reminder = true;
    schedule.title = "Fête";
    const Schedule added = schedules().add(schedule);
    EXPECT_EQ(added.id, 1U);
    EXPECT_EQ(added.channelId, 5U);
    EXPECT_EQ(added.start, 2000000000);
    EXPECT_EQ(added.duration, schedule.duration);
    EXPECT_EQ(added.repeat, Schedule::Repeat::kWeekly);
    EXPECT_TRUE(added.reminder);
    EXPECT_EQ(added.title, "Fête");
    EXPECT_EQ(added.state, ScheduleState::kWaiting);
    EXPECT_EQ(mRecords[0].ui4_duration, 5400U);
    EXPECT_EQ(mRecords[0].ui1_type, SCHEDULE_TYPE_REMIND);
    EXPECT_STREQ(mRecords[0].s_title, "Fête");
}

TEST_F(ClientSchedules, TheOneAddedIsFoundAmongThoseOfOthers) {
    add(5);  // like ours, but older
    mBeforeAdd = [this] { add(6); };
    Schedule schedule;
    schedule.channelId = 5;
    schedule.duration = seconds{60};
    EXPECT_EQ(schedules().add(schedule).id, 3U);
}

TEST_F(ClientSchedules, ATitleThatIsTooLongIsNotSent) {
    Schedule schedule;
    schedule.title = std::string(128, 'x');
    EXPECT_EQ(refusal(Error::Kind::kArgument, [&] { schedules().add(schedule); }),
              "a title has at most 127 bytes, not 128");
    EXPECT_TRUE(mRecords.empty());
    schedule.title.pop_back();
    EXPECT_EQ(schedules().add(schedule).title.size(), 127U);
}

TEST_F(ClientSchedules, AListThatChangesIsReadAgain) {
    for (uint32_t channel = 1; channel <= 3; ++channel) add(channel);
    int reads = 0;
    mBeforeRead = [&] {
        // Between the second and the third: the third would take the second one's place.
        if (++reads == 3) mRecords.erase(mRecords.begin());
    };
    const auto list = schedules().list();
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].id, 2U);
    EXPECT_EQ(list[1].id, 3U);
}

TEST_F(ClientSchedules, AListThatNeverHoldsStillIsAnError) {
    mTv.on<&a_qortvapi_get_schedule_record>([this](int32_t index, SCHEDULE_RECORD_T* record) {
        record->ui4_id = ++mLast;
        return index < 2 ? TV_OK : TV_NOT_FOUND;
    });
    EXPECT_EQ(refusal(Error::Kind::kRefused, [&] { schedules().list(); }),
              "the list of schedules changed during each of 20 reads");
}

TEST_F(ClientSchedules, RefusalsNameWhatWasRefused) {
    mResult = TV_INVALID_ARGUMENT;
    EXPECT_EQ(refusal(Error::Kind::kRefused, [&] { schedules().add({}); }),
              "the television refused to take the schedule: invalid argument (code -1)");
    mTv.on<&a_qortvapi_del_schedule_record>(
            [](int32_t id) { return id == 9 ? TV_NOT_FOUND : TV_BUSY; });
    EXPECT_EQ(refusal(Error::Kind::kRefused, [&] { schedules().remove(9); }),
              "there is no schedule 9");
    EXPECT_EQ(refusal(Error::Kind::kRefused, [&] { schedules().remove(4); }),
              "the television refused to remove schedule 4: busy (code -5)");
}

TEST_F(ClientSchedules, ConflictsAreAskedForWithWhateverIsToBeRecorded) {
    mTv.on<&a_qortvapi_record_pvr_chk_src_conflict>(
            [](const RECORD_SOURCE_T* source, const RECORD_SOURCE_T* other) {
                EXPECT_EQ(other->ui4_channel_id, 0U);
                EXPECT_EQ(source->i8_start_time, 2000000000);
                EXPECT_EQ(source->ui4_duration, 60U);
                return source->ui4_channel_id == 5 ? 1 : 0;
            });
    Schedule schedule;
    schedule.start = 2000000000;
    schedule.duration = seconds{60};
    EXPECT_FALSE(schedules().conflicts(schedule));
    schedule.channelId = 5;
    EXPECT_TRUE(schedules().conflicts(schedule));
}

class ClientRecordings : public testing::Test {
  protected:
    ClientRecordings() {
        mTv.on<&a_qortvapi_mmp_get_pvr_browser_item_by_index>(
                [this](int32_t index, PVR_BROWSER_ITEM_T* item) {
                    if (static_cast<size_t>(index) >= mItems.size()) return TV_NOT_FOUND;
                    *item = mItems[static_cast<size_t>(index)];
                    return TV_OK;
                });
        mTv.on<&a_qortvapi_mmp_get_pvr_browser_item_by_path>(
                [this](const char* path, PVR_BROWSER_ITEM_T* item) -> int32_t {
                    for (const auto& known : mItems) {
                        if (std::strcmp(known.s_path, path) != 0) continue;
                        *item = known;
                        return TV_OK;
                    }
                    return mMissing;
                });
        mTv.on<&a_qortvapi_mmp_pvr_browser_delete_file_by_index>([this](uint32_t index) {
            mDeleted.push_back(index);
            return mResult;
        });
    }

    PVR_BROWSER_ITEM_T& add(const char* path) {
        PVR_BROWSER_ITEM_T item = {};
        std::snprintf(item.s_path, sizeof item.s_path, "%s", path);
        mItems.push_back(item);
        return mItems.back();
    }

    Recordings recordings() { return Recordings(new QorTvApiPvrbrowserImpl); }

    std::vector<PVR_BROWSER_ITEM_T> mItems;
    std::vector<uint32_t> mDeleted;
    int32_t mResult = TV_OK;
    int32_t mMissing = TV_NOT_FOUND;
    switchboard::Switchboard mTv;
};

TEST_F(ClientRecordings, TellAllOfARecording) {
    PVR_BROWSER_ITEM_T& item = add("/disk/a.ts");
    item.ui4_channel_id = 5;
    item.i4_channel_major = 103;
    item.ui4_duration = 90;
    item.i8_start_time = 2000000000;
    item.ui8_size = uint64_t{5} << 32;
    item.i4_stop_reason = RECORD_STOP_NO_SIGNAL;
    item.i4_first_rating = 12;
    item.i4_retention = 7;
    std::strcpy(item.s_channel_name, "Ærø Nyt");
    std::memset(item.s_program_name, 'x', sizeof item.s_program_name);  // without a NUL
    std::strcpy(item.s_date, "2033-05-18");
    std::strcpy(item.s_time, "05:33:20");
    std::strcpy(item.s_week_day, "Wed");
    add("/disk/b.ts").ui1_recording = 1;
    const auto list = recordings().list();
    ASSERT_EQ(list.size(), 2U);
    const Recording& first = list[0];
    EXPECT_EQ(first.path, "/disk/a.ts");
    EXPECT_EQ(first.index, 0U);
    EXPECT_EQ(first.channelId, 5U);
    EXPECT_EQ(first.channelNumber, 103);
    EXPECT_EQ(first.channel, "Ærø Nyt");
    EXPECT_EQ(first.program, std::string(257, 'x'));
    EXPECT_EQ(first.start, 2000000000);
    EXPECT_EQ(first.date, "2033-05-18");
    EXPECT_EQ(first.time, "05:33:20");
    EXPECT_EQ(first.weekDay, "Wed");
    EXPECT_EQ(first.duration, seconds{90});
    EXPECT_EQ(first.bytes, uint64_t{5} << 32);
    EXPECT_EQ(first.minimumAge, 12);
    EXPECT_EQ(first.retentionDays, 7);
    EXPECT_FALSE(first.recording);
    EXPECT_EQ(first.end, RecordingEnd::kNoSignal);
    EXPECT_EQ(list[1].index, 1U);
    EXPECT_TRUE(list[1].recording);
}

TEST_F(ClientRecordings, AreFoundByPath) {
    add("/disk/a.ts").ui8_size = 99;
    EXPECT_EQ(recordings().find("/disk/a.ts")->bytes, 99U);
    EXPECT_FALSE(recordings().find("/disk/b.ts").has_value());
    mMissing = TV_FAILED;
    EXPECT_EQ(refusal(Error::Kind::kRefused, [&] { recordings().find("/disk/b.ts"); }),
              "the television refused to tell of a recording (code -6)");
}

TEST_F(ClientRecordings, OneIsDeletedWhereItStillIs) {
    add("/disk/a.ts");
    add("/disk/b.ts");
    const auto list = recordings().list();
    recordings().remove(list[1]);
    EXPECT_EQ(mDeleted, (std::vector<uint32_t>{1}));
    mItems.erase(mItems.begin());
    EXPECT_EQ(refusal(Error::Kind::kRefused, [&] { recordings().remove(list[0]); }),
              "the list of recordings has changed: /disk/a.ts was not deleted");
    EXPECT_EQ(refusal(Error::Kind::kRefused, [&] { recordings().remove(list[1]); }),
              "the list of recordings has changed: /disk/b.ts was not deleted");
    EXPECT_EQ(mDeleted.size(), 1U);
}

TEST_F(ClientRecordings, OneThatIsBeingMadeIsNotDeleted) {
    add("/disk/a.ts");
    mResult = TV_BUSY;
    const auto list = recordings().list();
    EXPECT_EQ(refusal(Error::Kind::kRefused, [&] { recordings().remove(list[0]); }),
              "/disk/a.ts is being recorded");
}

}  // namespace
}  // namespace qortv
