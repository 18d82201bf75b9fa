// integration_viewer ROLE: one of the applications of a day of television. It begins with the
// "morning" that another client announces, goes on until the "evening", and counts every
// notification between the morning and the "night". Each round of what its role does ends with a
// line "round", by which a test sees that the day goes on.
#include <CLI/CLI.hpp>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <exception>
#include <map>
#include <mutex>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "day.h"
#include "middleware/broadcast.h"
#include "middleware/event.h"
#include "middleware/record.h"
#include "middleware/result_codes.h"
#include "middleware/scan.h"
#include "qortv/channel_list.h"
#include "qortv/subscription.h"
#include "vendor/corvanta/tv/qortvapi/1.0/IQorTvApiBroadcast.h"
#include "vendor/corvanta/tv/qortvapi/1.0/IQorTvApiConfig.h"
#include "vendor/corvanta/tv/qortvapi/1.0/IQorTvApiEvent.h"
#include "vendor/corvanta/tv/qortvapi/1.0/IQorTvApiPvrbrowser.h"
#include "vendor/corvanta/tv/qortvapi/1.0/IQorTvApiRecord.h"
#include "vendor/corvanta/tv/qortvapi/1.0/IQorTvApiScan.h"
#include "vendor/corvanta/tv/qortvapi/1.0/IQorTvApiTime.h"

namespace {

using namespace vendor::corvanta::tv::qortvapi::V1_0;
using qortv::Channel;
using qortv::check;
using qortv::valueOf;
using std::chrono::milliseconds;

/** Longest wait for one thing that must come: as long as the tests wait for anything. */
constexpr std::chrono::seconds kPatience{120};
/** Between two rounds, so that the log of a day stays readable. */
constexpr milliseconds kPause{10};

void say(const std::string& line) {
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

/** What the day has heard so far. */
class Ears : public qortv::Listener {
  public:
    void onNotification(const qortv::Notification& notification) override {
        std::lock_guard lock(mMutex);
        note(notification.method);
        mChanged.notify_all();
    }

    void notifyRecord(int32_t code, uint64_t, uint64_t arg1, uint64_t) override {
        std::lock_guard lock(mMutex);
        if (code != RECORD_NFY_EVENT) return note("notifyRecord");
        mHour = static_cast<Hour>(arg1);
        if (mHour == Hour::kEvening) note("notifyRecord");
        mChanged.notify_all();
    }

    void notifyScan(int32_t code, uint64_t, uint64_t, uint64_t, uint64_t, uint64_t) override {
        std::lock_guard lock(mMutex);
        note("notifyScan");
        mScan = code;
        ++mScanSteps;
        mChanged.notify_all();
    }

    bool waitFor(Hour hour) {
        return wait(kPatience * 3, [&] { return mHour >= hour; });
    }
    bool isDay() {
        std::lock_guard lock(mMutex);
        return mHour == Hour::kMorning;
    }
    /** Waits for so many changes of the setting since the morning. */
    bool waitForChanges(int count) {
        return wait(kPatience, [&] { return mHeard["notifyConfig"] >= count; });
    }
    /** Forgets what was heard of an earlier scan. */
    void beginScan() {
        std::lock_guard lock(mMutex);
        mScan = 0;
        mScanSteps = 0;
    }
    /** Waits for so many notifications of the scan, or its end. */
    bool waitForSteps(int steps) {
        return wait(kPatience, [&] { return mScanSteps >= steps || mScan > SCAN_NFY_PROGRESS; });
    }
    /** The code that a scan ended with; 0 when it did not. */
    int endOfScan() {
        wait(kPatience, [&] { return mScan > SCAN_NFY_PROGRESS; });
        std::lock_guard lock(mMutex);
        return mScan > SCAN_NFY_PROGRESS ? mScan : 0;
    }
    std::map<std::string, int> heard() {
        std::lock_guard lock(mMutex);
        return mHeard;
    }

  private:
    void note(const char* method) {
        if (mHour == Hour::kMorning || mHour == Hour::kEvening) ++mHeard[method];
    }
    template <typename Condition>
    bool wait(std::chrono::seconds patience, Condition condition) {
        std::unique_lock lock(mMutex);
        return mChanged.wait_for(lock, patience, condition);
    }

    std::mutex mMutex;
    std::condition_variable mChanged;
    Hour mHour = Hour::kBeforeDawn;
    int mScan = 0;
    int mScanSteps = 0;
    std::map<std::string, int> mHeard;
};

/** The errors of a day, each once. */
class Diary {
  public:
    void expect(bool good, const std::string& what) {
        if (!good) mErrors.insert(what);
    }
    void ok(int32_t result, const std::string& what) {
        expect(result == TV_OK, what + " answered " + std::to_string(result));
    }
    std::string errors() const {
        std::string text;
        for (const auto& error : mErrors) text += error + "; ";
        return text;
    }

  private:
    std::set<std::string> mErrors;
};

/** Scans everything again and again; every third time it changes its mind. */
class Scanner {
  public:
    explicit Scanner(Ears& ears) : mEars(ears), mScan(qortv::connect<IQorTvApiScan>(kPatience)) {}

    void round(int number, Diary& diary) {
        const bool cancels = number % 3 == 2;
        mEars.beginScan();
        diary.ok(valueOf(mScan->a_hidl_a_qortvapi_start_scan(0, SCAN_TYPE_UPDATE, false), "start"),
                 "start_scan");
        if (cancels) {
            diary.expect(mEars.waitForSteps(3), "progress of a scan");
            mScan->a_hidl_a_qortvapi_cancel_scan();  // it may be over already
        }
        const int end = mEars.endOfScan();
        diary.expect(end == SCAN_NFY_COMPLETED || (cancels && end == SCAN_NFY_CANCELLED),
                     "a scan ended with " + std::to_string(end));
    }

  private:
    Ears& mEars;
    const android::sp<IQorTvApiScan> mScan;
};

/** Zaps by number, id, record and key, and looks at the signal. */
class Zapper {
  public:
    Zapper()
        : mBroadcast(qortv::connect<IQorTvApiBroadcast>(kPatience)),
          mList(qortv::connect<qortv::ChannelList::Interface>(kPatience)),
          mChannels(mList.read()) {}

    void round(int number, Diary& diary) {
        const Channel& channel = mChannels[static_cast<size_t>(number) % mChannels.size()];
        switch (number % 3) {
            case 0:
                diary.ok(valueOf(mBroadcast->a_hidl_a_qortvapi_broadcast_select_channel_by_chan_id(
                                         channel.id, false),
                                 "by_chan_id"),
                         "select_channel_by_chan_id");
                break;
            case 1:
                diary.ok(valueOf(mBroadcast->a_hidl_a_qortvapi_broadcast_select_channel(
                                         channel.list, channel.record, channel.id, true),
                                 "select_channel"),
                         "select_channel");
                break;
            default:
                diary.ok(valueOf(mBroadcast->a_hidl_a_qortvapi_broadcast_key_handler(
                                         number % 2 == 0 ? BROADCAST_KEY_CHANNEL_UP
                                                         : BROADCAST_KEY_CHANNEL_DOWN),
                                 "key_handler"),
                         "key_handler");
        }
        diary.expect(mList.current().has_value(), "a current channel");
        check(mBroadcast->a_hidl_a_qortvapi_broadcast_get_tuning_status(
                      [&](uint32_t status, int32_t result) {
                          diary.ok(result, "get_tuning_status");
                          diary.expect(status != BROADCAST_TUNING_FAILED, "the tuner locks");
                      }),
              "get_tuning_status");
        const int32_t level =
                valueOf(mBroadcast->a_hidl_a_qortvapi_broadcast_get_signal_level(), "level");
        diary.expect(level >= 0 && level <= 100, "a signal level of " + std::to_string(level));
    }

  private:
    const android::sp<IQorTvApiBroadcast> mBroadcast;
    qortv::ChannelList mList;
    const std::vector<Channel> mChannels;
};

/** Looks through the guide of one channel after the other, and changes the settings, of which
 * everybody is told. */
class Reader {
  public:
    explicit Reader(Ears& ears)
        : mEars(ears),
          mEvent(qortv::connect<IQorTvApiEvent>(kPatience)),
          mTime(qortv::connect<IQorTvApiTime>(kPatience)),
          mConfig(qortv::connect<IQorTvApiConfig>(kPatience)),
          mChannels(qortv::ChannelList(qortv::connect<qortv::ChannelList::Interface>(kPatience))
                            .read()) {
        const int32_t result =
                valueOf(mConfig->a_hidl_a_qortvapi_config_add_value_changed_callback(kSetting),
                        "add_value_changed_callback");
        if (result != TV_OK) {
            throw std::runtime_error("no reports of the setting: " + std::to_string(result));
        }
    }

    void round(int number, Diary& diary) {
        const uint32_t channel = mChannels[static_cast<size_t>(number) % mChannels.size()].id;
        int64_t now = 0;
        check(mTime->a_hidl_a_qortvapi_time_get_utc_time(
                      0, [&](uint16_t, int64_t seconds) { now = seconds; }),
              "get_utc_time");
        diary.ok(valueOf(mEvent->a_hidl_a_qortvapi_event_setCurrentActiveWindow({channel}, now, 1),
                         "window"),
                 "setCurrentActiveWindow");
        std::vector<uint16_t> events;
        check(mEvent->a_hidl_a_qortvapi_event_query_event_id_by_range(
                      channel, now, now + 6 * 3600, 20,
                      [&](uint16_t count, const auto& ids, int32_t result) {
                          diary.ok(result, "query_event_id_by_range");
                          diary.expect(ids.size() == count, "as many events as are counted");
                          events.assign(ids.begin(), ids.end());
                      }),
              "query_event_id_by_range");
        mEvents += events.size();
        for (const uint16_t event : events) readEvent(channel, event, now, diary);
        changeSetting(number, diary);
        // Else updates would be put together when many wait.
        diary.expect(mEars.waitForChanges(number + 1), "word of the change");
    }

    size_t events() const { return mEvents; }

  private:
    void readEvent(uint32_t channel, uint16_t event, int64_t now, Diary& diary) {
        check(mEvent->a_hidl_a_qortvapi_event_get_general_info(
                      channel, event,
                      [&](const auto& bytes, int32_t result) {
                          EVENT_GENERAL_INFO_T info = {};
                          diary.ok(result, "get_general_info");
                          diary.expect(bytes.size() == sizeof info, "784 bytes of an event");
                          std::memcpy(&info, bytes.data(), sizeof info);
                          diary.expect(info.ui2_event_id == event && info.s_title[0] != '\0' &&
                                               info.i8_start_time + info.ui4_duration >= now,
                                       "the event that was asked for");
                      }),
              "get_general_info");
        check(mEvent->a_hidl_a_qortvapi_event_get_details_info(
                      channel, event, 512,
                      [&](const auto& bytes, int32_t) {
                          diary.expect(bytes.size() == 512, "512 bytes of details");
                      }),
              "get_details_info");
    }

    void changeSetting(int number, Diary& diary) {
        const int32_t wanted = number % 100;
        diary.ok(valueOf(mConfig->a_hidl_a_qortvapi_config_set_value(kSettingGroup, kSetting,
                                                                     wanted, 1),
                         "set_value"),
                 "set_value");
        check(mConfig->a_hidl_a_qortvapi_config_get_value(
                      kSettingGroup, kSetting,
                      [&](int32_t value, int32_t result) {
                          diary.ok(result, "get_value");
                          diary.expect(value == wanted, "the value that was set");
                      }),
              "get_value");
    }

    Ears& mEars;
    const android::sp<IQorTvApiEvent> mEvent;
    const android::sp<IQorTvApiTime> mTime;
    const android::sp<IQorTvApiConfig> mConfig;
    const std::vector<Channel> mChannels;
    size_t mEvents = 0;
};

/** Records a moment of one free channel after the other, and keeps the disk clean. */
class Recorder {
  public:
    Recorder()
        : mRecord(qortv::connect<IQorTvApiRecord>(kPatience)),
          mBrowser(qortv::connect<IQorTvApiPvrbrowser>(kPatience)) {
        for (const Channel& channel :
             qortv::ChannelList(qortv::connect<qortv::ChannelList::Interface>(kPatience)).read()) {
            if (!channel.scrambled) mChannels.push_back(channel);
        }
    }

    void round(int number, Diary& diary) {
        const Channel& channel = mChannels[static_cast<size_t>(number) % mChannels.size()];
        const int32_t opened =
                valueOf(mRecord->a_hidl_a_qortvapi_record_pvr_open(RECORD_SOURCE_MAIN), "open");
        diary.expect(opened >= 0, "record_pvr_open answered " + std::to_string(opened));
        if (opened < 0) return;
        const auto recording = static_cast<uint32_t>(opened);
        diary.ok(valueOf(mRecord->a_hidl_a_qortvapi_record_pvr_select_svc(recording, channel.id,
                                                                          channel.list),
                         "select_svc"),
                 "record_pvr_select_svc");
        diary.ok(valueOf(mRecord->a_hidl_a_qortvapi_record_pvr_start(recording), "start"),
                 "record_pvr_start");
        std::this_thread::sleep_for(milliseconds{200});
        diary.expect(valueOf(mRecord->a_hidl_a_qortvapi_record_pvr_get_status(recording),
                             "status") == RECORD_STATUS_RECORDING,
                     "a recording is being made");
        diary.ok(valueOf(mRecord->a_hidl_a_qortvapi_record_pvr_stop(recording), "stop"),
                 "record_pvr_stop");
        diary.ok(valueOf(mRecord->a_hidl_a_qortvapi_record_pvr_close(recording), "close"),
                 "record_pvr_close");
        schedule(channel, diary);
        if (number % 4 == 3) deleteAll(diary);
    }

    void deleteAll(Diary& diary) {
        uint16_t count = 0;
        check(mBrowser->a_hidl_a_qortvapi_mmp_get_pvr_browser_item_count(
                      [&](uint16_t items, int32_t result) {
                          diary.ok(result, "get_pvr_browser_item_count");
                          count = items;
                      }),
              "get_pvr_browser_item_count");
        mMade += count;
        for (; count > 0; --count) {
            diary.ok(valueOf(mBrowser->a_hidl_a_qortvapi_mmp_pvr_browser_delete_file_by_index(
                                     uint32_t{count} - 1),
                             "delete"),
                     "pvr_browser_delete_file_by_index");
        }
    }

    size_t made() const { return mMade; }

  private:
    void schedule(const Channel& channel, Diary& diary) {
        SCHEDULE_RECORD_T wanted = {};
        wanted.ui4_channel_id = channel.id;
        wanted.i8_start_time = INT64_C(4'000'000'000);  // later than this test will live
        wanted.ui4_duration = 60;
        hidl_vec<uint8_t> image(sizeof wanted);
        std::memcpy(image.data(), &wanted, sizeof wanted);
        diary.ok(valueOf(mRecord->a_hidl_a_qortvapi_set_schedule_record(image, SCHEDULE_ADD),
                         "set_schedule_record"),
                 "set_schedule_record");
        check(mRecord->a_hidl_a_qortvapi_get_schedule_record(
                      0,
                      [&](const auto& bytes, int32_t result) {
                          diary.ok(result, "get_schedule_record");
                          SCHEDULE_RECORD_T found = {};
                          std::memcpy(&found, bytes.data(), sizeof found);
                          mSchedule = static_cast<int32_t>(found.ui4_id);
                      }),
              "get_schedule_record");
        diary.ok(valueOf(mRecord->a_hidl_a_qortvapi_del_schedule_record(mSchedule), "del"),
                 "del_schedule_record");
    }

    template <typename T>
    using hidl_vec = android::hardware::hidl_vec<T>;

    const android::sp<IQorTvApiRecord> mRecord;
    const android::sp<IQorTvApiPvrbrowser> mBrowser;
    std::vector<Channel> mChannels;
    int32_t mSchedule = 0;
    size_t mMade = 0;
};

int spendTheDay(const std::string& role) {
    Ears ears;
    qortv::Subscription subscription(ears, kPatience);
    Diary diary;
    int rounds = 0;
    const auto live = [&](auto&& round) {
        say("ready");
        ears.waitFor(Hour::kMorning);
        for (; ears.isDay(); ++rounds) {
            round(rounds, diary);
            say("round");
            std::this_thread::sleep_for(kPause);
        }
    };
    if (role == "scanner") {
        Scanner scanner(ears);
        live([&](int number, Diary& d) { scanner.round(number, d); });
    } else if (role == "zapper") {
        Zapper zapper;
        live([&](int number, Diary& d) { zapper.round(number, d); });
    } else if (role == "reader") {
        Reader reader(ears);
        live([&](int number, Diary& d) { reader.round(number, d); });
        diary.expect(reader.events() > 0, "there is a guide");
    } else {
        Recorder recorder;
        live([&](int number, Diary& d) { recorder.round(number, d); });
        recorder.deleteAll(diary);
        diary.expect(recorder.made() > 0, "there are recordings");
    }
    say("done");
    if (!ears.waitFor(Hour::kNight)) return 1;
    int total = 0;
    for (const auto& [method, count] : ears.heard()) {
        say("heard " + method + " " + std::to_string(count));
        total += count;
    }
    say("heard all " + std::to_string(total));
    say("rounds " + std::to_string(rounds));
    say("errors " + diary.errors());
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app("A viewer for the integration tests");
    std::string role;
    app.add_option("ROLE", role, "scanner, zapper, reader or recorder")
            ->required()
            ->check(CLI::IsMember({"scanner", "zapper", "reader", "recorder"}));
    CLI11_PARSE(app, argc, argv);
    try {
        return spendTheDay(role);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "integration_viewer: %s\n", error.what());
        return 1;
    }
}
