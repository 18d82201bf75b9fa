// Recordings: contents of the file, how they end, the disk, names, handles.
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <chrono>
#include <map>
#include <thread>

#include "support/eventually.h"
#include "support/log_capture.h"
#include "support/recording_fixture.h"
#include "television/recording/program_clock.h"
#include "television/recording/recording_name.h"
#include "television/recording/recording_sidecar.h"

using namespace television;

namespace {

using TelevisionRecord = RecordingTest;

std::string fileNameOf(uint32_t handle) {
    char name[256] = {};
    EXPECT_EQ(a_qortvapi_record_pvr_get_recording_file_name(handle, name, sizeof(name)), TV_OK);
    return name;
}

TEST_F(TelevisionRecord, TheFileIsAStreamOfTheServiceAlone) {
    start();
    const uint32_t handle = record("Première", 5);
    ASSERT_EQ(files(), std::vector<std::string>{"Première 2024-05-10 20.40.00.ts"});
    EXPECT_EQ(fileNameOf(handle), files()[0]);
    const ParsedMultiplex multiplex = readMultiplexFile(recordings() + "/" + files()[0]);
    EXPECT_EQ(multiplex.transportStreamId, 1);
    EXPECT_EQ(multiplex.originalNetworkId, 0x2101);
    EXPECT_EQ(multiplex.damagedPackets, 0u) << "continuity";
    EXPECT_EQ(multiplex.damagedSections, 0u);
    ASSERT_EQ(multiplex.services.size(), 1u);
    const ParsedService& service = multiplex.services[0];
    const SVL_REC_T original = TelevisionTest::service(1, "Première");
    EXPECT_EQ(service.serviceId, 0x101);
    EXPECT_EQ(service.name, "Première");
    EXPECT_EQ(service.provider, "Corvanta Media");
    EXPECT_EQ(service.type, original.ui1_service_type);
    EXPECT_EQ(service.pmtPid, original.ui2_pmt_pid);
    EXPECT_EQ(service.pcrPid, original.ui2_pcr_pid);
    EXPECT_EQ(service.videoPid, original.ui2_video_pid);
    EXPECT_EQ(service.tracks.audio.size(), 2u);
    EXPECT_EQ(service.tracks.subtitles.size(), 1u);
    ASSERT_NE(multiplex.events, nullptr);
    ASSERT_EQ(multiplex.events->size(), 1u);
    EXPECT_EQ(multiplex.events->at(0).service.serviceId, 0x101);
    EXPECT_EQ(multiplex.events->at(0).events.size(), 2u) << "present and following";
    EXPECT_FALSE(multiplex.events->at(0).events[0].title.empty());
}

TEST_F(TelevisionRecord, NothingOfOtherServicesIsInIt) {
    start();
    record("Ærø Nyt", 5);
    const auto bytes = bytesOf(recordings() + "/" + files().at(0));
    ASSERT_EQ(bytes.size() % 188, 0u);
    const SVL_REC_T original = service(1, "Ærø Nyt");
    std::map<uint16_t, size_t> packets;
    for (size_t at = 0; at < bytes.size(); at += 188) {
        ASSERT_EQ(bytes[at], 0x47);
        ++packets[static_cast<uint16_t>((bytes[at + 1] & 0x1F) << 8 | bytes[at + 2])];
    }
    for (const uint16_t pid : {uint16_t{0}, uint16_t{0x11}, uint16_t{0x12}, original.ui2_pmt_pid,
                               original.ui2_video_pid, original.ui2_audio_pid}) {
        EXPECT_GT(packets[pid], 0u) << pid;
        packets.erase(pid);
    }
    EXPECT_TRUE(packets.empty()) << packets.begin()->first;
}

TEST_F(TelevisionRecord, WhereTheStreamBeginsAnewTheJumpIsAnnounced) {
    start();
    record("Première", 5);
    const auto bytes = bytesOf(recordings() + "/" + files().at(0));
    std::optional<uint64_t> last;
    unsigned jumps = 0;
    unsigned clocks = 0;
    for (size_t at = 0; at < bytes.size(); at += 188) {
        const auto clock = programClock(bytes.data() + at);
        if (!clock) continue;
        ++clocks;
        const bool back = last && *clock < *last;
        EXPECT_EQ(announcesJump(bytes.data() + at), back);
        jumps += back ? 1 : 0;
        last = clock;
    }
    EXPECT_GT(clocks, 30u);
    // Five seconds at the stream's bit rate.
    const auto bits =
            static_cast<double>(std::filesystem::file_size(streams() + "/" + kStream) * 8);
    EXPECT_EQ(jumps, static_cast<unsigned>(5 * kBitRate / bits));
}

TEST_F(TelevisionRecord, PaceFollowsTheStreamsClock) {
    options.recordingSpeed = 20;
    start();
    const auto begin = std::chrono::steady_clock::now();
    const uint32_t handle = record("Première", 4);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    // Four seconds at twenty times real time, less the last wait, which is left out.
    EXPECT_GE(took.count(), (4 - 0.5) / 20);
    EXPECT_EQ(a_qortvapi_get_recording_position(handle), 4);
}

TEST_F(TelevisionRecord, BitRateComesFromTheProgramClock) {
    const auto rateOf = [](const std::vector<uint8_t>& stream) {
        size_t at = 0;
        return measureBitRate([&](uint8_t* data, size_t size) {
            const size_t part = std::min(size, stream.size() - at);
            std::copy_n(stream.begin() + static_cast<ptrdiff_t>(at), part, data);
            at += part;
            return static_cast<long>(part);
        });
    };
    const auto stream = stream_generator::buildStream(plans[0], plans);
    EXPECT_EQ(rateOf(stream), std::nullopt) << "no PCR";
    EXPECT_NEAR(static_cast<double>(rateOf(withClock(stream, 0x101, 4'000'000)).value_or(0)), 4e6,
                100);
    // A jump of the PCR does not count.
    auto twice = withClock(stream, 0x101, 4'000'000);
    const auto again = twice;
    twice.insert(twice.end(), again.begin(), again.end());
    EXPECT_NEAR(static_cast<double>(rateOf(twice).value_or(0)), 4e6, 100);
    // The PCR wraps around.
    std::vector<uint8_t> over;
    const uint64_t range = (uint64_t{1} << 33) * 300;
    for (uint64_t i = 0; i < 20; ++i) {
        addClock(over, 0x50, 0, (range - 10 * 27'000 + i * 27'000) % range);
    }
    EXPECT_NEAR(static_cast<double>(rateOf(over).value_or(0)), 188 * 8 * 1000, 10);
    // A rate that no broadcast has counts as none.
    EXPECT_EQ(rateOf(withClock(stream, 0x101, 2'000'000'000)), std::nullopt);
}

TEST_F(TelevisionRecord, UserStopsIt) {
    options.recordingSpeed = 1;
    start();
    const uint32_t handle = openFor("Première");
    EXPECT_EQ(a_qortvapi_record_pvr_get_status(handle), RECORD_STATUS_IDLE);
    EXPECT_EQ(a_qortvapi_record_pvr_get_current_handle(), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_record_pvr_stop(handle), TV_BUSY);
    ASSERT_EQ(a_qortvapi_record_pvr_start(handle), TV_OK);
    EXPECT_EQ(a_qortvapi_record_pvr_start(handle), TV_BUSY);
    EXPECT_EQ(a_qortvapi_record_pvr_get_status(handle), RECORD_STATUS_RECORDING);
    EXPECT_EQ(a_qortvapi_record_pvr_get_current_handle(), static_cast<int32_t>(handle));
    EXPECT_EQ(a_qortvapi_record_pvr_set_recording_file_name(handle, "x"), TV_BUSY);
    EXPECT_EQ(a_qortvapi_record_pvr_select_svc(handle, channel(1, "Ærø Nyt"), 0), TV_BUSY);
    EXPECT_EQ(a_qortvapi_record_pvr_stop(handle), TV_OK);
    EXPECT_EQ(a_qortvapi_record_pvr_get_status(handle), RECORD_STATUS_STOPPED);
    EXPECT_EQ(a_qortvapi_record_pvr_get_error_id(handle), RECORD_ERROR_NONE);
    EXPECT_EQ(log.wait("record", 2),
              (std::vector<SeenNotification>{
                      {"record", RECORD_NFY_STARTED, {handle, channel(1, "Première")}},
                      {"record", RECORD_NFY_STOPPED, {handle, RECORD_STOP_USER}}}));
    // Once more, into a file of its own.
    ASSERT_EQ(a_qortvapi_record_pvr_start(handle), TV_OK);
    EXPECT_EQ(a_qortvapi_record_pvr_close(handle), TV_OK);
    EXPECT_EQ(log.wait("record", 4).back(),
              (SeenNotification{"record", RECORD_NFY_STOPPED, {handle, RECORD_STOP_CLOSED}}));
    EXPECT_EQ(a_qortvapi_record_pvr_get_status(handle), TV_NOT_FOUND);
    EXPECT_EQ(files(), (std::vector<std::string>{"Première 2024-05-10 20.40.00 (2).ts",
                                                 "Première 2024-05-10 20.40.00.ts"}));
    EXPECT_EQ(files(".json").size(), 2u);
}

TEST_F(TelevisionRecord, WithoutASelectionItIsTheWindowsChannel) {
    start();
    SVL_REC_T current = {};
    TSL_REC_T multiplex;
    uint16_t list = 0;
    ASSERT_EQ(a_qortvapi_channellist_get_current_channel(&list, &current, &multiplex), TV_OK);
    const auto handle = static_cast<uint32_t>(a_qortvapi_record_pvr_open(RECORD_SOURCE_MAIN));
    EXPECT_EQ(a_qortvapi_record_pvr_get_source_type(handle), RECORD_SOURCE_MAIN);
    EXPECT_EQ(a_qortvapi_record_pvr_set_mode(handle, RECORD_MODE_LIMITED, 0, 1), TV_OK);
    ASSERT_EQ(a_qortvapi_record_pvr_start(handle), TV_OK);
    EXPECT_EQ(log.wait("record", 1)[0],
              (SeenNotification{"record", RECORD_NFY_STARTED, {handle, current.ui4_channel_id}}));
    // Nothing plays in the sub window.
    const auto sub = static_cast<uint32_t>(a_qortvapi_record_pvr_open_ex(RECORD_SOURCE_SUB, true));
    EXPECT_EQ(a_qortvapi_record_pvr_get_source_type(sub), RECORD_SOURCE_SUB);
    EXPECT_EQ(a_qortvapi_record_pvr_start(sub), TV_FAILED);
    EXPECT_EQ(a_qortvapi_record_pvr_get_error_id(sub), RECORD_ERROR_NO_SIGNAL);
    EXPECT_EQ(a_qortvapi_record_pvr_get_status(sub), RECORD_STATUS_FAILED);
}

TEST_F(TelevisionRecord, ScrambledServicesAreNotRecorded) {
    start();
    const uint32_t handle = openFor("Sport Plus");
    EXPECT_EQ(a_qortvapi_record_pvr_start(handle), TV_FAILED);
    EXPECT_EQ(a_qortvapi_record_pvr_get_error_id(handle), RECORD_ERROR_SCRAMBLED);
    EXPECT_EQ(log.wait("record", 1)[0],
              (SeenNotification{"record", RECORD_NFY_FAILED, {handle, RECORD_ERROR_SCRAMBLED}}));
    EXPECT_TRUE(files().empty());
}

TEST_F(TelevisionRecord, OneMultiplexAtATime) {
    options.recordingSpeed = 1;
    start();
    const uint32_t first = openFor("Première");
    const uint32_t same = openFor("Ærø Nyt");
    const uint32_t other = openFor("Новости 24");
    ASSERT_EQ(a_qortvapi_record_pvr_start(first), TV_OK);
    EXPECT_EQ(a_qortvapi_record_pvr_start(other), TV_BUSY);
    EXPECT_EQ(a_qortvapi_record_pvr_get_status(other), RECORD_STATUS_IDLE);
    EXPECT_EQ(a_qortvapi_record_pvr_start(same), TV_OK);
    EXPECT_EQ(a_qortvapi_record_pvr_get_current_handle(), static_cast<int32_t>(same));
    EXPECT_EQ(a_qortvapi_record_pvr_stop(same), TV_OK);
    EXPECT_EQ(a_qortvapi_record_pvr_get_current_handle(), static_cast<int32_t>(first));
    EXPECT_EQ(a_qortvapi_record_pvr_stop(first), TV_OK);
    EXPECT_EQ(a_qortvapi_record_pvr_start(other), TV_OK);
}

TEST_F(TelevisionRecord, VanishedStreamIsNoSignal) {
    options.recordingSpeed = 50;
    start();
    const uint32_t handle = openFor("Première");
    const LogCapture lines;
    ASSERT_EQ(a_qortvapi_record_pvr_start(handle), TV_OK);
    std::filesystem::remove(streams() + "/" + kStream);
    EXPECT_EQ(log.wait("record", 3),
              (std::vector<SeenNotification>{
                      {"record", RECORD_NFY_STARTED, {handle, channel(1, "Première")}},
                      {"record", RECORD_NFY_FAILED, {handle, RECORD_ERROR_NO_SIGNAL}},
                      {"record", RECORD_NFY_STOPPED, {handle, RECORD_STOP_NO_SIGNAL}}}));
    EXPECT_TRUE(lines.has("no signal", kStream));
    EXPECT_EQ(a_qortvapi_record_pvr_get_status(handle), RECORD_STATUS_FAILED);
    EXPECT_EQ(files().size(), 1u) << "what there is stays";
    EXPECT_EQ(a_qortvapi_record_pvr_start(handle), TV_FAILED);
}

TEST_F(TelevisionRecord, StreamWithoutTheServiceIsNoSignal) {
    start();
    const uint32_t handle = openFor("Première");
    std::filesystem::copy_file(streams() + "/dvb-t-2.ts", streams() + "/" + kStream,
                               std::filesystem::copy_options::overwrite_existing);
    ASSERT_EQ(a_qortvapi_record_pvr_start(handle), TV_OK);
    EXPECT_EQ(log.wait("record", 3)[2],
              (SeenNotification{"record", RECORD_NFY_STOPPED, {handle, RECORD_STOP_NO_SIGNAL}}));
    // An empty file is no signal either.
    std::ofstream(streams() + "/" + kStream, std::ios::trunc);
    ASSERT_EQ(a_qortvapi_record_pvr_start(handle), TV_OK);
    EXPECT_EQ(log.wait("record", 6)[5],
              (SeenNotification{"record", RECORD_NFY_STOPPED, {handle, RECORD_STOP_NO_SIGNAL}}));
}

TEST_F(TelevisionRecord, LimitOfTheDiskIsADiskThatIsFull) {
    start();
    RECORD_DEV_PARAM_T parameter = {};
    parameter.ui8_size = 100'000;
    ASSERT_EQ(a_qortvapi_record_pvr_set_disk(0, recordings().c_str(), &parameter), TV_OK);
    const uint32_t handle = openFor("Première");
    ASSERT_EQ(a_qortvapi_record_pvr_start(handle), TV_OK);
    EXPECT_EQ(log.wait("record", 3),
              (std::vector<SeenNotification>{
                      {"record", RECORD_NFY_STARTED, {handle, channel(1, "Première")}},
                      {"record", RECORD_NFY_FAILED, {handle, RECORD_ERROR_DISK_FULL}},
                      {"record", RECORD_NFY_STOPPED, {handle, RECORD_STOP_DISK_FULL}}}));
    const std::string path = recordings() + "/" + files().at(0);
    EXPECT_LE(std::filesystem::file_size(path), 100'000u);
    EXPECT_EQ(readMultiplexFile(path).damagedPackets, 0u);
    EXPECT_EQ(a_qortvapi_record_pvr_get_disk_total_size(0), 0);
    EXPECT_EQ(a_qortvapi_record_pvr_get_disk_free_size(0), 0);
    // The limit is remembered, and the recording that is there counts.
    restart();
    const uint32_t again = openFor("Première");
    ASSERT_EQ(a_qortvapi_record_pvr_start(again), TV_OK);
    log.wait("record", 3);
    uint64_t all = 0;
    for (const std::string& name : files()) {
        all += std::filesystem::file_size(recordings() + "/" + name);
    }
    EXPECT_LE(all, 100'000u);
}

TEST_F(TelevisionRecord, FullDiskKeepsWhatThereIs) {
    // In a mount namespace of its own, which this thread and those that it starts see and which
    // ends with the process.
    const std::string disk = folder() / "disk";
    mkdir(disk.c_str(), 0700);
    if (unshare(CLONE_NEWNS) != 0 ||
        mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("none", disk.c_str(), "tmpfs", 0, "size=256k") != 0) {
        GTEST_SKIP() << "only root may mount";
    }
    options.recordings = disk;
    start();
    const LogCapture lines;
    const uint32_t handle = openFor("Première");
    EXPECT_EQ(a_qortvapi_record_hdd_speed_test(disk.c_str(), 1), TV_FULL);
    ASSERT_EQ(a_qortvapi_record_pvr_start(handle), TV_OK);
    EXPECT_EQ(log.wait("record", 3)[2],
              (SeenNotification{"record", RECORD_NFY_STOPPED, {handle, RECORD_STOP_DISK_FULL}}));
    EXPECT_TRUE(lines.has("cannot write the recording " + disk));
    const std::string path = disk + "/" + files(disk, ".ts").at(0);
    EXPECT_EQ(std::filesystem::file_size(path) % 188, 0u);
    EXPECT_GT(std::filesystem::file_size(path), 100'000u);
    EXPECT_EQ(readMultiplexFile(path).damagedPackets, 0u);
    EXPECT_EQ(readSidecar(path)->stopReason, RECORD_STOP_DISK_FULL)
            << "there is room for the sidecar file";
    tv.reset();
    EXPECT_EQ(umount(disk.c_str()), 0);
}

TEST_F(TelevisionRecord, WithoutAFolderThereIsNoDisk) {
    options.recordings = "";
    start();
    const uint32_t handle = openFor("Première");
    EXPECT_EQ(a_qortvapi_record_pvr_start(handle), TV_FAILED);
    EXPECT_EQ(a_qortvapi_record_pvr_get_error_id(handle), RECORD_ERROR_NO_DISK);
    EXPECT_EQ(a_qortvapi_record_pvr_get_disk_total_size(0), TV_NOT_FOUND);
    char path[64] = "as before";
    EXPECT_EQ(a_qortvapi_record_pvr_get_disk(0, path, sizeof(path) - 1), TV_NOT_FOUND);
    EXPECT_STREQ(path, "as before");
}

TEST_F(TelevisionRecord, FolderThatIsGoneIsNoDisk) {
    options.recordings = folder() / "missing/recordings";
    start();
    const LogCapture lines;
    const uint32_t handle = openFor("Première");
    EXPECT_EQ(a_qortvapi_record_pvr_start(handle), TV_FAILED);
    EXPECT_EQ(a_qortvapi_record_pvr_get_error_id(handle), RECORD_ERROR_NO_DISK);
    EXPECT_TRUE(lines.has("cannot make the recording", "missing/recordings"));
}

TEST_F(TelevisionRecord, DiskIsAFolderThatCanBeWritten) {
    start();
    char path[512] = {};
    EXPECT_EQ(a_qortvapi_record_pvr_get_disk(0, path, 511), TV_OK);
    EXPECT_EQ(path, recordings());
    const RECORD_DEV_PARAM_T parameter = {};
    for (const std::string& bad :
         {std::string(), std::string("relative"), folder() / "nothing", folder() / "file",
          folder() / std::string(200, 'x'), streams()}) {
        mkdir((folder() / std::string(200, 'x')).c_str(), 0700);
        std::ofstream(folder() / "file") << "x";
        EXPECT_EQ(a_qortvapi_record_pvr_set_disk(0, bad.c_str(), &parameter), TV_INVALID_ARGUMENT)
                << bad;
    }
    EXPECT_EQ(a_qortvapi_record_pvr_set_disk(0, nullptr, &parameter), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_record_pvr_set_disk(1, recordings().c_str(), &parameter), TV_NOT_FOUND);
    const std::string other = folder() / "other";
    mkdir(other.c_str(), 0700);
    EXPECT_EQ(a_qortvapi_record_pvr_set_disk(0, (other + "//").c_str(), nullptr), TV_OK);
    restart();
    EXPECT_EQ(a_qortvapi_record_pvr_get_disk(0, path, 511), TV_OK);
    EXPECT_EQ(path, other) << "after a restart too";
    std::fill(std::begin(path), std::end(path), '?');
    EXPECT_EQ(a_qortvapi_record_pvr_get_disk(0, path, 4), TV_OK);
    EXPECT_STREQ(path, "/tmp");
    EXPECT_EQ(path[5], '?') << "four characters and a NUL";
    EXPECT_EQ(a_qortvapi_record_pvr_get_disk(0, nullptr, 4), TV_INVALID_ARGUMENT);
    EXPECT_GT(a_qortvapi_record_pvr_get_disk_total_size(0), 0);
    EXPECT_GE(a_qortvapi_record_pvr_get_disk_free_size(0), 0);
    EXPECT_EQ(a_qortvapi_record_pvr_get_disk_free_size(7), TV_NOT_FOUND);
    record("Première", 1);
    EXPECT_EQ(files(other, ".ts").size(), 1u);
}

TEST_F(TelevisionRecord, DiskStaysWhileItRecords) {
    options.recordingSpeed = 1;
    start();
    const uint32_t handle = openFor("Première");
    ASSERT_EQ(a_qortvapi_record_pvr_start(handle), TV_OK);
    EXPECT_EQ(a_qortvapi_record_pvr_set_disk(0, folder().path().c_str(), nullptr), TV_BUSY);
    EXPECT_EQ(a_qortvapi_record_pvr_stop(handle), TV_OK);
    EXPECT_EQ(a_qortvapi_record_pvr_set_disk(0, folder().path().c_str(), nullptr), TV_OK);
}

TEST_F(TelevisionRecord, RegistrationAndSpeedOfADisk) {
    start();
    const std::string disk = folder() / "usb";
    mkdir(disk.c_str(), 0700);
    bool registered = true;
    EXPECT_EQ(a_qortvapi_record_check_register_file(disk.c_str(), &registered), TV_NOT_FOUND);
    EXPECT_FALSE(registered);
    EXPECT_EQ(a_qortvapi_record_create_register_file(disk.c_str()), TV_OK);
    EXPECT_EQ(a_qortvapi_record_create_register_file(disk.c_str()), TV_OK) << "again";
    EXPECT_EQ(a_qortvapi_record_check_register_file(disk.c_str(), &registered), TV_OK);
    EXPECT_TRUE(registered);
    EXPECT_EQ(a_qortvapi_record_check_register_file(disk.c_str(), nullptr), TV_OK);
    EXPECT_EQ(a_qortvapi_record_create_register_file((disk + "/none").c_str()), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_record_create_register_file(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_record_create_register_file(std::string(5000, '/').c_str()),
              TV_INVALID_ARGUMENT);
    EXPECT_GE(a_qortvapi_record_hdd_speed_test(disk.c_str(), 1), 1);
    EXPECT_GE(a_qortvapi_record_hdd_speed_test("", 1), 1) << "of the disk in use";
    for (const int32_t size : {0, -1, 65, INT32_MAX}) {
        EXPECT_EQ(a_qortvapi_record_hdd_speed_test(disk.c_str(), size), TV_INVALID_ARGUMENT);
    }
    EXPECT_EQ(a_qortvapi_record_hdd_speed_test(nullptr, 1), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_record_hdd_speed_test("/nowhere", 1), TV_NOT_FOUND);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(disk), {}), 1)
            << "nothing is left but the mark";
}

TEST_F(TelevisionRecord, NamesOfFilesThatAreSet) {
    start();
    const uint32_t handle = openFor("Première");
    for (const std::string& bad :
         {std::string(), std::string("../x"), std::string("/"), std::string("a/b"),
          std::string(".hidden"), std::string("."), std::string(".."), std::string("x\n"),
          std::string("a:b"), std::string(300, 'x'), std::string(85, 'x'), std::string("x ")}) {
        EXPECT_EQ(a_qortvapi_record_pvr_set_recording_file_name(handle, bad.c_str()),
                  TV_INVALID_ARGUMENT)
                << bad;
    }
    EXPECT_EQ(a_qortvapi_record_pvr_set_recording_file_name(handle, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_record_pvr_set_recording_file_name(handle, "Das Spätprogramm.ts"), TV_OK);
    EXPECT_EQ(fileNameOf(handle), "Das Spätprogramm.ts");
    char name[256];
    std::fill(std::begin(name), std::end(name), '?');
    EXPECT_EQ(a_qortvapi_record_pvr_get_recording_file_name(handle, name, 8), TV_OK);
    EXPECT_STREQ(name, "Das Sp") << "cut at a character's edge";
    EXPECT_EQ(name[8], '?');
    EXPECT_EQ(a_qortvapi_record_pvr_get_recording_file_name(handle, name, UINT32_MAX), TV_OK);
    EXPECT_EQ(a_qortvapi_record_pvr_get_recording_file_name(handle, nullptr, 256),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_record_pvr_get_recording_file_name(handle, name, 0), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_record_pvr_set_mode(handle, RECORD_MODE_LIMITED, 0, 1), TV_OK);
    for (size_t count = 2; count <= 4; count += 2) {
        ASSERT_EQ(a_qortvapi_record_pvr_start(handle), TV_OK);
        log.wait("record", count);
    }
    EXPECT_EQ(fileNameOf(handle), "Das Spätprogramm (2).ts");
    EXPECT_EQ(files(),
              (std::vector<std::string>{"Das Spätprogramm (2).ts", "Das Spätprogramm.ts"}));
}

TEST_F(TelevisionRecord, NamesOfChannelsStayInTheFolder) {
    const std::vector<std::string> hostile = {"../../../../tmp/x",
                                              "/",
                                              ".",
                                              "..",
                                              "",
                                              std::string(250, 'x'),
                                              "a\x01\x7F"
                                              "b",
                                              "...hidden",
                                              std::string("é") + std::string(300, 'x')};
    for (const std::string& name : hostile) {
        const std::string safe = safeFileName(name);
        EXPECT_EQ(safe.find('/'), std::string::npos) << name;
        EXPECT_NE(safe[0], '.') << name;
        EXPECT_GE(safe.size(), 1u);
        EXPECT_LE(safe.size(), kLongestFileName);
        EXPECT_EQ(safeFileName(safe), safe) << "nothing more to do";
    }
    EXPECT_EQ(safeFileName("../x"), "_x");
    EXPECT_EQ(safeFileName(std::string(83, 'x') + "é"), std::string(83, 'x'));
    // A recording of a channel with such a name.
    plans[0].services[0].name = "../../x";
    const auto stream = stream_generator::buildStream(plans[0], plans);
    folder().write(std::string("streams/") + kStream, stream);
    start();
    record("../../x", 1);
    EXPECT_EQ(files(), std::vector<std::string>{"_.._x 2024-05-10 20.40.00.ts"});
}

TEST_F(TelevisionRecord, ALinkIsNotFollowed) {
    start();
    mkdir(recordings().c_str(), 0700);
    const std::string victim = folder() / "victim";
    std::ofstream(victim) << "untouched";
    std::filesystem::create_symlink(victim, recordings() + "/name.ts");
    std::filesystem::create_symlink(victim, recordings() + "/other.json");
    std::filesystem::create_symlink(victim, recordings() + "/third.json.part");
    for (const char* name : {"name", "other", "third"}) {
        const uint32_t handle = openFor("Première");
        EXPECT_EQ(a_qortvapi_record_pvr_set_recording_file_name(handle, name), TV_OK);
        EXPECT_EQ(a_qortvapi_record_pvr_set_mode(handle, RECORD_MODE_LIMITED, 0, 1), TV_OK);
        ASSERT_EQ(a_qortvapi_record_pvr_start(handle), TV_OK);
        EXPECT_EQ(fileNameOf(handle),
                  name == std::string("third") ? "third.ts" : std::string(name) + " (2).ts");
        EXPECT_EQ(a_qortvapi_record_pvr_close(handle), TV_OK);
    }
    EXPECT_EQ(textOf(victim), "untouched");
}

TEST_F(TelevisionRecord, HandlesAreFew) {
    start();
    std::vector<uint32_t> handles;
    for (int i = 0; i < 4; ++i) handles.push_back(openFor("Première"));
    EXPECT_EQ(a_qortvapi_record_pvr_open(RECORD_SOURCE_MAIN), TV_FULL);
    EXPECT_EQ(a_qortvapi_record_pvr_close(handles[1]), TV_OK);
    EXPECT_EQ(a_qortvapi_record_pvr_close(handles[1]), TV_NOT_FOUND);
    const int32_t next = a_qortvapi_record_pvr_open(RECORD_SOURCE_MAIN);
    EXPECT_GT(next, 0);
    EXPECT_EQ(std::count(handles.begin(), handles.end(), static_cast<uint32_t>(next)), 0)
            << "not one that somebody may still hold";
    for (const int32_t source : {-1, 2, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(a_qortvapi_record_pvr_open(source), TV_INVALID_ARGUMENT);
    }
    for (const uint32_t bad : {0u, 99u, UINT32_MAX}) {
        char name[256];
        EXPECT_EQ(a_qortvapi_record_pvr_close(bad), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_record_pvr_start(bad), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_record_pvr_stop(bad), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_record_pvr_get_status(bad), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_record_pvr_get_error_id(bad), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_record_pvr_get_mode(bad), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_record_pvr_set_mode(bad, RECORD_MODE_NORMAL, 0, 0), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_record_pvr_get_source_type(bad), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_record_pvr_get_recording_file_size(bad), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_get_recording_position(bad), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_record_pvr_select_svc(bad, channel(1, "Première"), 0), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_record_pvr_set_recording_file_name(bad, "x"), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_record_pvr_get_recording_file_name(bad, name, 256), TV_NOT_FOUND);
    }
    EXPECT_EQ(a_qortvapi_record_pvr_select_svc(handles[0], 0xDEAD, 0), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_record_pvr_select_svc(handles[0], channel(1, "Première"), 2), TV_NOT_FOUND)
            << "another list";
    EXPECT_EQ(a_qortvapi_record_pvr_set_mode(handles[0], 2, 0, 0), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_record_pvr_set_mode(handles[0], RECORD_MODE_LIMITED, 0, 0),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_record_pvr_get_mode(handles[0]), RECORD_MODE_NORMAL);
}

TEST_F(TelevisionRecord, SizeAndLengthCanBeRead) {
    start();
    const uint32_t handle = record("Première", 40);
    const std::string path = recordings() + "/" + files().at(0);
    EXPECT_EQ(a_qortvapi_record_pvr_get_recording_file_size(handle),
              static_cast<int32_t>(std::filesystem::file_size(path) >> 20));
    EXPECT_EQ(a_qortvapi_get_recording_position(handle), 40);
    EXPECT_EQ(a_qortvapi_record_pvr_get_mode(handle), RECORD_MODE_LIMITED);
    const auto sidecar = readSidecar(path);
    ASSERT_TRUE(sidecar);
    EXPECT_EQ(sidecar->duration, 40u);
    EXPECT_EQ(sidecar->channelName, "Première");
    EXPECT_EQ(sidecar->channelNumber, 1);
    EXPECT_EQ(sidecar->stopReason, RECORD_STOP_SCHEDULE);
    EXPECT_EQ(sidecar->startTime, stream_generator::kUsualTime);
    EXPECT_FALSE(sidecar->programName.empty()) << "what the guide says";
}

TEST_F(TelevisionRecord, TheLengthCanChangeWhileItRecords) {
    options.recordingSpeed = 20;
    start();
    const uint32_t handle = openFor("Première");
    ASSERT_EQ(a_qortvapi_record_pvr_start(handle), TV_OK);
    EXPECT_EQ(a_qortvapi_record_pvr_set_mode(handle, RECORD_MODE_LIMITED, 0, 1), TV_OK);
    EXPECT_EQ(log.wait("record", 2)[1],
              (SeenNotification{"record", RECORD_NFY_STOPPED, {handle, RECORD_STOP_SCHEDULE}}));
}

TEST_F(TelevisionRecord, GoingOffEndsIt) {
    options.recordingSpeed = 1;
    start();
    const uint32_t handle = openFor("Première");
    ASSERT_EQ(a_qortvapi_record_pvr_start(handle), TV_OK);
    const auto begin = std::chrono::steady_clock::now();
    tv.reset();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, kPatience)
            << "this recording never ends by itself";
    const std::string path = recordings() + "/" + files().at(0);
    EXPECT_EQ(readSidecar(path)->stopReason, RECORD_STOP_CLOSED);
    EXPECT_EQ(std::filesystem::file_size(path) % 188, 0u);
}

TEST_F(TelevisionRecord, ApplicationsEvents) {
    start();
    EXPECT_EQ(a_qortvapi_pvr_set_event(7, UINT32_MAX), TV_OK);
    EXPECT_EQ(a_qortvapi_pvr_set_event_extra(8, 9, 10, "text"), TV_OK);
    EXPECT_EQ(a_qortvapi_pvr_set_event_extra(8, 9, 10, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(log.wait("record", 2),
              (std::vector<SeenNotification>{{"record", RECORD_NFY_EVENT, {7, UINT32_MAX}},
                                             {"record", RECORD_NFY_EVENT, {8, 9}}}));
}

TEST_F(TelevisionRecord, ThreadsStartAndStopAtOnce) {
    options.recordingSpeed = 100;
    start();
    std::vector<uint32_t> handles;
    for (int i = 0; i < 3; ++i) handles.push_back(openFor("Première"));
    std::vector<std::thread> threads;
    for (size_t t = 0; t < 4; ++t) {
        threads.emplace_back([&handles, t] {
            for (size_t i = 0; i < 12; ++i) {
                const uint32_t handle = handles[(t + i) % handles.size()];
                const int32_t started = a_qortvapi_record_pvr_start(handle);
                EXPECT_TRUE(started == TV_OK || started == TV_BUSY) << started;
                a_qortvapi_record_pvr_get_recording_file_size(handle);
                const int32_t stopped = a_qortvapi_record_pvr_stop(handle);
                EXPECT_TRUE(stopped == TV_OK || stopped == TV_BUSY) << stopped;
                const int32_t own = a_qortvapi_record_pvr_open(RECORD_SOURCE_MAIN);
                if (own < 0) continue;
                a_qortvapi_record_pvr_start(static_cast<uint32_t>(own));
                EXPECT_EQ(a_qortvapi_record_pvr_close(static_cast<uint32_t>(own)), TV_OK);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    for (const uint32_t handle : handles) {
        EXPECT_EQ(a_qortvapi_record_pvr_get_status(handle), RECORD_STATUS_STOPPED);
    }
    EXPECT_EQ(files().size(), files(".json").size());
}

}  // namespace
