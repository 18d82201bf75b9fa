// The browser of recordings.
#include <gtest/gtest.h>
#include <sys/time.h>

#include <cstring>
#include <thread>

#include "middleware/mmp.h"
#include "support/recording_fixture.h"
#include "television/recording/recording_sidecar.h"

using namespace television;

namespace {

class TelevisionRecordings : public RecordingTest {
  protected:
    static uint16_t count() {
        uint16_t result = 0xFFFF;
        EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_item_count(&result), TV_OK);
        return result;
    }
    static PVR_BROWSER_ITEM_T item(int32_t index) {
        PVR_BROWSER_ITEM_T result = {};
        EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_item_by_index(index, &result), TV_OK);
        return result;
    }
    /** A file that the television did not record, changed last at `time`. */
    void drop(const std::string& name, const std::string& bytes, int64_t time) const {
        mkdir(recordings().c_str(), 0700);
        const std::string path = recordings() + "/" + name;
        std::ofstream(path) << bytes;
        const timeval times[2] = {{time, 0}, {time, 0}};
        EXPECT_EQ(utimes(path.c_str(), times), 0);
    }
};

TEST_F(TelevisionRecordings, WhatIsKnownOfARecording) {
    start();
    record("Première", 5);
    restart();
    ASSERT_EQ(count(), 1);
    const std::string path = recordings() + "/Première 2024-05-10 20.40.00.ts";
    const PVR_BROWSER_ITEM_T known = item(0);
    EXPECT_EQ(known.s_path, path);
    EXPECT_EQ(known.ui4_channel_id, channel(1, "Première"));
    EXPECT_EQ(known.i4_channel_major, 1);
    EXPECT_EQ(known.ui4_duration, 5u);
    EXPECT_EQ(known.ui8_size, std::filesystem::file_size(path));
    EXPECT_EQ(known.i4_stop_reason, RECORD_STOP_SCHEDULE);
    EXPECT_EQ(known.ui1_recording, 0);
    EXPECT_STREQ(known.s_channel_name, "Première");
    EXPECT_STRNE(known.s_program_name, "");
    EXPECT_STREQ(known.s_date, "2024-05-10");
    EXPECT_STREQ(known.s_time, "20:40:00");
    EXPECT_STREQ(known.s_week_day, "Fri");
    // Each property by index and by path.
    int32_t number = 0;
    uint32_t unsignedNumber = 0;
    char text[257];
    const char* p = path.c_str();
    const auto isNumber = [&](auto byIndex, auto byPath, int32_t value) {
        EXPECT_EQ(byIndex(0, &number), TV_OK);
        EXPECT_EQ(number, value);
        number = -77;
        EXPECT_EQ(byPath(p, &number), TV_OK);
        EXPECT_EQ(number, value);
    };
    isNumber(a_qortvapi_mmp_get_pvr_browser_channelid_by_index,
             a_qortvapi_mmp_get_pvr_browser_channelid_by_path,
             static_cast<int32_t>(known.ui4_channel_id));
    isNumber(a_qortvapi_mmp_get_pvr_browser_channelmajornumber_by_index,
             a_qortvapi_mmp_get_pvr_browser_channelmajornumber_by_path, 1);
    isNumber(a_qortvapi_mmp_get_pvr_browser_channelminornumber_by_index,
             a_qortvapi_mmp_get_pvr_browser_channelminornumber_by_path, 0);
    isNumber(a_qortvapi_mmp_get_pvr_browser_start_time_by_index,
             a_qortvapi_mmp_get_pvr_browser_start_time_by_path,
             static_cast<int32_t>(stream_generator::kUsualTime));
    isNumber(a_qortvapi_mmp_get_pvr_browser_first_rating_by_index,
             a_qortvapi_mmp_get_pvr_browser_first_rating_by_path, known.i4_first_rating);
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_duration_by_index(0, &number), TV_OK);
    EXPECT_EQ(number, 5);
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_duration_by_path(p, &unsignedNumber), TV_OK);
    EXPECT_EQ(unsignedNumber, 5u);
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_stop_reason_by_index(0, &number), TV_OK);
    EXPECT_EQ(number, RECORD_STOP_SCHEDULE);
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_stop_reason_by_path(p, &unsignedNumber), TV_OK);
    EXPECT_EQ(unsignedNumber, uint32_t{RECORD_STOP_SCHEDULE});
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_retention_by_index(0, &number), TV_OK);
    EXPECT_EQ(number, 0);
    const auto isText = [&](auto byIndex, auto byPath, const std::string& value) {
        EXPECT_EQ(byIndex(0, text), TV_OK);
        EXPECT_EQ(text, value);
        text[0] = '?';
        EXPECT_EQ(byPath(p, text), TV_OK);
        EXPECT_EQ(text, value);
    };
    isText(a_qortvapi_mmp_get_pvr_browser_channelname_by_index,
           a_qortvapi_mmp_get_pvr_browser_channelname_by_path, "Première");
    isText(a_qortvapi_mmp_get_pvr_browser_programname_by_index,
           a_qortvapi_mmp_get_pvr_browser_programname_by_path, known.s_program_name);
    isText(a_qortvapi_mmp_get_pvr_browser_date_by_index,
           a_qortvapi_mmp_get_pvr_browser_date_by_path, "2024-05-10");
    isText(a_qortvapi_mmp_get_pvr_browser_time_by_index,
           a_qortvapi_mmp_get_pvr_browser_time_by_path, "20:40:00");
    isText(a_qortvapi_mmp_get_pvr_browser_week_by_index,
           a_qortvapi_mmp_get_pvr_browser_week_by_path, "Fri");
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_item_path_by_index(0, text), TV_OK);
    EXPECT_EQ(text, path);
    PVR_BROWSER_ITEM_T byPath = {};
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_item_by_path(p, &byPath), TV_OK);
    EXPECT_EQ(std::memcmp(&byPath, &known, sizeof(known)), 0);
    PVR_RECORDING_FILE_INFO_T info = {};
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_recording_file_info(&info), TV_OK);
    EXPECT_EQ(info.s_path, path);
    EXPECT_EQ(info.ui4_duration, 5u);
    EXPECT_EQ(info.ui8_size, known.ui8_size);
}

TEST_F(TelevisionRecordings, WhatIsBeingRecorded) {
    options.recordingSpeed = 1;
    start();
    uint32_t recording = 9;
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_recording_file_num(&recording), TV_OK);
    EXPECT_EQ(recording, 0u);
    PVR_RECORDING_FILE_INFO_T info;
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_recording_file_info(&info), TV_NOT_FOUND);
    const uint32_t handle = openFor("Première");
    ASSERT_EQ(a_qortvapi_record_pvr_start(handle), TV_OK);
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_recording_file_num(&recording), TV_OK);
    EXPECT_EQ(recording, 1u);
    char name[257];
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_recording_file_name(0, name), TV_OK);
    EXPECT_EQ(name, files().at(0));
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_recording_file_name(1, name), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_recording_file_name(-1, name), TV_NOT_FOUND);
    EXPECT_EQ(item(0).ui1_recording, 1);
    EXPECT_EQ(a_qortvapi_mmp_pvr_browser_delete_file_by_index(0), TV_BUSY);
    EXPECT_EQ(files().size(), 1u);
    EXPECT_EQ(a_qortvapi_record_pvr_stop(handle), TV_OK);
    EXPECT_EQ(item(0).ui1_recording, 0);
    EXPECT_EQ(item(0).i4_stop_reason, RECORD_STOP_USER);
    EXPECT_EQ(a_qortvapi_mmp_pvr_browser_delete_file_by_index(0), TV_OK);
    EXPECT_EQ(count(), 0);
    EXPECT_TRUE(files().empty());
    EXPECT_TRUE(files(".json").empty());
    EXPECT_EQ(a_qortvapi_mmp_pvr_browser_delete_file_by_index(0), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_mmp_pvr_browser_delete_file_by_index(UINT32_MAX), TV_NOT_FOUND);
}

TEST_F(TelevisionRecordings, ForeignFilesAreListedToo) {
    drop("Holiday.ts", "not even a stream", 1'000'000'000);
    drop("older.ts", "x", 900'000'000);
    drop("note.ts", "x", 950'000'000);
    drop("note.json", R"({"channel_name": 5, "duration": -3, "rating": 99999999999,
                          "start_time": 800000000, "program_name": "Kept"})",
         0);
    drop("broken.ts", "x", 970'000'000);
    drop("broken.json", "[1, 2", 0);
    drop("readme.txt", "x", 0);
    drop(".hidden.ts", "x", 0);
    mkdir((recordings() + "/folder.ts").c_str(), 0700);
    std::filesystem::create_symlink("/etc/passwd", recordings() + "/link.ts");
    start();
    ASSERT_EQ(count(), 4);
    std::vector<std::string> names;
    for (int32_t i = 0; i < count(); ++i) names.emplace_back(item(i).s_program_name);
    EXPECT_EQ(names, (std::vector<std::string>{"Kept", "older", "broken", "Holiday"}))
            << "by start time";
    EXPECT_STREQ(item(0).s_channel_name, "");
    EXPECT_EQ(item(0).ui4_duration, 0u);
    EXPECT_EQ(item(0).i4_first_rating, 0);
    EXPECT_EQ(item(3).i8_start_time, 1'000'000'000);
    EXPECT_EQ(item(3).ui8_size, 17u);
    // A file that appears while the television is on, and one that is deleted.
    drop("new.ts", "x", 910'000'000);
    EXPECT_STREQ(item(2).s_program_name, "new");
    std::filesystem::remove(recordings() + "/older.ts");
    EXPECT_STREQ(item(1).s_program_name, "new");
    // A file that grows.
    drop("Holiday.ts", "longer than it has been before", 1'000'000'000);
    EXPECT_EQ(item(3).ui8_size, 30u);
}

TEST_F(TelevisionRecordings, ARecordingThatWasCutIsListed) {
    start();
    record("Première", 25);
    tv.reset();
    // As a killed process leaves it: no stop reason in the sidecar file, half a packet at the end.
    const std::string path = recordings() + "/" + files().at(0);
    RecordingInfo info = *readSidecar(path);
    info.path = path;
    info.duration = 20;
    info.stopReason = RECORD_STOP_UNKNOWN;
    ASSERT_EQ(writeSidecar(info), 0);
    std::filesystem::resize_file(path, 188 * 100 + 94);
    start();
    EXPECT_EQ(item(0).ui8_size, 188u * 100 + 94);
    EXPECT_EQ(item(0).ui4_duration, 20u);
    EXPECT_EQ(item(0).i4_stop_reason, RECORD_STOP_UNKNOWN);
    EXPECT_EQ(item(0).ui1_recording, 0);
}

TEST_F(TelevisionRecordings, TheSidecarFileIsThereWhileItRecords) {
    options.recordingSpeed = 1;
    start();
    const uint32_t handle = openFor("Première");
    ASSERT_EQ(a_qortvapi_record_pvr_start(handle), TV_OK);
    const auto sidecar = readSidecar(recordings() + "/" + files().at(0));
    ASSERT_TRUE(sidecar);
    EXPECT_EQ(sidecar->channelName, "Première");
    EXPECT_EQ(sidecar->stopReason, RECORD_STOP_UNKNOWN);
    EXPECT_TRUE(files(".part").empty());
}

TEST_F(TelevisionRecordings, TextsFitTheirBuffers) {
    const std::string name = std::string(60, 'x') + ".ts";
    drop(name, "x", 1);
    std::string title;
    for (int i = 0; i < 200; ++i) title += "ä";
    drop(std::string(60, 'x') + ".json",
         "{\"program_name\": \"" + title +
                 "\", \"start_time\": 9223372036854775807,"
                 " \"local_offset\": 2147483647}",
         0);
    start();
    std::vector<char> text(300, '?');
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_programname_by_index(0, text.data()), TV_OK);
    EXPECT_EQ(std::string(text.data()), title.substr(0, 256)) << "whole characters";
    EXPECT_EQ(text[257], '?');
    std::fill(text.begin(), text.end(), '?');
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_week_by_index(0, text.data()), TV_OK);
    EXPECT_EQ(text[6], '?');
    std::fill(text.begin(), text.end(), '?');
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_date_by_index(0, text.data()), TV_OK);
    EXPECT_STREQ(text.data(), "9999-12-31") << "the last day that there is";
    EXPECT_EQ(text[16], '?');
    int32_t startTime = 0;
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_start_time_by_index(0, &startTime), TV_OK);
    EXPECT_EQ(startTime, INT32_MAX);
    EXPECT_EQ(item(0).s_program_name[256], '\0');
}

TEST_F(TelevisionRecordings, WrongArguments) {
    start();
    record("Première", 1);
    int32_t number = 5;
    char text[257] = "as before";
    for (const int32_t index : {-1, 1, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_channelid_by_index(index, &number), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_channelname_by_index(index, text), TV_NOT_FOUND);
    }
    for (const char* path : {"", "/etc/passwd", "../x"}) {
        EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_channelid_by_path(path, &number), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_channelname_by_path(path, text), TV_NOT_FOUND);
    }
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_channelid_by_path(nullptr, &number),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(number, 5);
    EXPECT_STREQ(text, "as before");
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_channelid_by_index(0, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_channelname_by_index(0, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_item_by_index(0, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_item_count(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_recording_file_num(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_mmp_get_pvr_browser_recording_file_info(nullptr), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionRecordings, ReadsWhileItRecords) {
    options.recordingSpeed = 100;
    start();
    std::atomic<bool> done{false};
    std::thread reader([&done] {
        while (!done) {
            for (int32_t i = 0; i < count(); ++i) {
                PVR_BROWSER_ITEM_T seen;
                a_qortvapi_mmp_get_pvr_browser_item_by_index(i, &seen);
            }
            a_qortvapi_mmp_pvr_browser_delete_file_by_index(0);
        }
    });
    for (int i = 0; i < 5; ++i) {
        const uint32_t handle = record("Première", 2);
        EXPECT_EQ(a_qortvapi_record_pvr_close(handle), TV_OK);
    }
    done = true;
    reader.join();
}

}  // namespace
