/** A television that records from the demo's first three multiplexes, with a clock that the test
 * moves. */
#pragma once

#include <sys/stat.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "middleware/record.h"
#include "support/notification_log.h"
#include "support/television_test.h"
#include "television/generator/multiplex_plan.h"
#include "television/stream/packet_reader.h"
#include "television/stream/stream_folder.h"

/** Appends a packet without payload that carries the PCR (program clock reference) `ticks`, in
 * ticks of 27 MHz. */
inline void addClock(std::vector<uint8_t>& stream, uint16_t pid, uint8_t counter, uint64_t ticks) {
    std::vector<uint8_t> packet(188, 0xFF);
    const uint64_t base = ticks / 300;
    const uint64_t extension = ticks % 300;
    const uint8_t header[] = {0x47,
                              static_cast<uint8_t>(pid >> 8),
                              static_cast<uint8_t>(pid),
                              static_cast<uint8_t>(0x20 | (counter & 0x0F)),
                              183,
                              0x10,
                              static_cast<uint8_t>(base >> 25),
                              static_cast<uint8_t>(base >> 17),
                              static_cast<uint8_t>(base >> 9),
                              static_cast<uint8_t>(base >> 1),
                              static_cast<uint8_t>((base & 1) << 7 | 0x7E | extension >> 8),
                              static_cast<uint8_t>(extension)};
    std::copy(std::begin(header), std::end(header), packet.begin());
    stream.insert(stream.end(), packet.begin(), packet.end());
}

/** Returns the stream with a PCR on `pid` at the start and in place of one null packet in twenty
 * packets or more. `bitRate`: of the stream, which the PCRs say; bits a second. */
inline std::vector<uint8_t> withClock(const std::vector<uint8_t>& stream, uint16_t pid,
                                      uint64_t bitRate) {
    std::vector<uint8_t> result;
    uint8_t counter = 0;
    size_t last = 0;
    for (size_t at = 0; at + 188 <= stream.size(); at += 188) {
        const uint8_t* packet = stream.data() + at;
        const auto packetPid = static_cast<uint16_t>((packet[1] & 0x1F) << 8 | packet[2]);
        if (packetPid == pid) counter = packet[3] & 0x0F;
        if (result.empty() || (packetPid == 0x1FFF && result.size() - last >= 20u * 188)) {
            last = result.size();
            addClock(result, pid, counter, result.size() * 8 * 27'000'000 / bitRate);
            if (packetPid == 0x1FFF) continue;
        }
        result.insert(result.end(), packet, packet + 188);
    }
    return result;
}

class RecordingTest : public TelevisionTest {
  protected:
    static constexpr uint64_t kBitRate = 1'000'000;  ///< of the streams, which last 1.6 s
    static constexpr const char* kStream = "dvb-t-1.ts";

    RecordingTest() {
        log.clear();
        options.recordings = recordings();
        options.recordingSpeed = 0;
        options.time = [this] { return mNow.load(); };
        plans = stream_generator::demoPlans();
        plans.resize(3);
        for (const auto& plan : plans) {
            const auto stream = stream_generator::buildStream(plan, plans);
            folder().write("streams/" + plan.fileName, withClock(stream, 0x101, kBitRate));
        }
    }
    ~RecordingTest() override {
        tv.reset();
        log.clear();
    }

    void start() {
        TelevisionTest::start();
        ASSERT_EQ(a_qortvapi_record_pvr_register_callback(
                          [](int32_t code, void* tag, void* a1, void* a2) {
                              EXPECT_EQ(tag, &tagged());
                              NotificationLog::instance().add("record", code,
                                                              {reinterpret_cast<uintptr_t>(a1),
                                                               reinterpret_cast<uintptr_t>(a2)});
                          },
                          &tagged()),
                  TV_OK);
    }
    void restart() {
        tv.reset();
        log.clear();
        start();
    }
    /** Its address is the tag of the handler. */
    static int& tagged() {
        static int tag;
        return tag;
    }

    /** Opens a recording handle for a channel of the terrestrial list. */
    static uint32_t openFor(const std::string& channelName) {
        const int32_t handle = a_qortvapi_record_pvr_open(RECORD_SOURCE_MAIN);
        EXPECT_GT(handle, 0);
        EXPECT_EQ(a_qortvapi_record_pvr_select_svc(static_cast<uint32_t>(handle),
                                                   channel(1, channelName), 1),
                  TV_OK);
        return static_cast<uint32_t>(handle);
    }
    /** Records a channel for some seconds, to the end. Returns the handle, which stays open. */
    uint32_t record(const std::string& channelName, int32_t seconds) {
        const size_t before = log.seen("record").size();
        const uint32_t handle = openFor(channelName);
        EXPECT_EQ(a_qortvapi_record_pvr_set_mode(handle, RECORD_MODE_LIMITED, 0, seconds), TV_OK);
        EXPECT_EQ(a_qortvapi_record_pvr_start(handle), TV_OK);
        EXPECT_EQ(log.wait("record", before + 2).back(),
                  (SeenNotification{"record", RECORD_NFY_STOPPED, {handle, RECORD_STOP_SCHEDULE}}));
        return handle;
    }
    /** The recording notifications with a code. */
    std::vector<SeenNotification> notificationsOf(int32_t code) {
        std::vector<SeenNotification> result;
        for (const SeenNotification& notification : log.seen("record")) {
            if (notification.code == code) result.push_back(notification);
        }
        return result;
    }

    std::string recordings() const { return folder() / "recordings"; }
    static std::vector<std::string> files(const std::string& path, const std::string& ending) {
        std::vector<std::string> result;
        for (const auto& entry : std::filesystem::directory_iterator(path)) {
            if (entry.path().extension() == ending) result.push_back(entry.path().filename());
        }
        std::sort(result.begin(), result.end());
        return result;
    }
    std::vector<std::string> files(const std::string& ending = ".ts") const {
        return files(recordings(), ending);
    }
    static std::vector<uint8_t> bytesOf(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static std::string textOf(const std::string& path) {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /** Lets time pass on the clock. */
    void pass(int64_t seconds) { mNow += seconds * 1000; }

    NotificationLog& log = NotificationLog::instance();
    std::vector<stream_generator::MultiplexPlan> plans;

  private:
    std::atomic<int64_t> mNow{1'800'000'000'000};
};
