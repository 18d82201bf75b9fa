// Recording from the command line, with the service and streams: files, tables, schedules, mishaps.
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "qortv/recorder.h"
#include "support.h"

namespace integration {
namespace {

using nlohmann::json;

class IntegrationRecording : public testing::Test {
  protected:
    void SetUp() override {
        mStation.environment["QORTV_RECORDINGS"] = mFolder.path();
        mStation.makeStreams();
        mStation.startAndWait();
    }

    json recordings() { return json::parse(mStation.ctl({"recordings", "--json"}).out); }
    json schedules() { return json::parse(mStation.ctl({"record", "list", "--json"}).out); }

    /** Starts to record and waits until something is on the disk. */
    std::unique_ptr<Process> startRecording(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "record");
        auto recording = mStation.startCtl(arguments);
        EXPECT_TRUE(eventually([&] {
            for (const auto& one : recordings()) {
                if (one["state"] == "recording" && one["bytes"] > 0) return true;
            }
            return !recording->running();
        }));
        EXPECT_TRUE(recording->running()) << recording->err();
        return recording;
    }

    void limitDisk(uint64_t bytes) {
        mStation.enter();
        vendor::corvanta::tv::qortvapi::V1_0::HIDL_RECORD_DEV_PARAM_T parameter = {};
        parameter.size = bytes;
        const int32_t result =
                qortv::connect<qortv::Recorder::Interface>()->a_hidl_a_qortvapi_record_pvr_set_disk(
                        0, mFolder.path(), parameter);
        ASSERT_EQ(result, 0);
    }

    TemporaryFolder mFolder;
    Station mStation;
};

TEST_F(IntegrationRecording, RecordsForAWhileAndNamesTheFile) {
    const auto outcome = mStation.ctl({"record", "première", "--for", "0.7", "--json"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const json made = json::parse(outcome.out);
    EXPECT_EQ(made["channel"], "Première");
    EXPECT_EQ(made["channelNumber"], 1);
    EXPECT_EQ(made["seconds"], 1);  // rounded up
    EXPECT_EQ(made["state"], "complete");
    EXPECT_EQ(made["error"], nullptr);
    const std::string path = made["path"];
    EXPECT_EQ(path.rfind(mFolder.path() + "/", 0), 0U) << path;
    EXPECT_EQ(std::filesystem::file_size(path), made["bytes"]);
    EXPECT_GT(made["bytes"], 0);
    EXPECT_EQ(outcome.err, "qortvctl: recording 1 Première to " + path + "\n");

    const auto table = mStation.ctl({"recordings"});
    EXPECT_EQ(table.status, 0);
    EXPECT_EQ(table.out.rfind("INDEX  DATE", 0), 0U) << table.out;
    EXPECT_NE(table.out.find("Première"), std::string::npos);
    EXPECT_NE(table.out.find("0:01"), std::string::npos);
    EXPECT_NE(table.out.find("complete"), std::string::npos);
}

TEST_F(IntegrationRecording, WithoutAChannelItIsTheOneThatIsOn) {
    ASSERT_EQ(mStation.ctl({"select", "curaçao tv"}).status, 0);
    const auto outcome = mStation.ctl({"record", "--for", "1"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out.rfind("recorded 103 Curaçao TV: 0:01, ", 0), 0U) << outcome.out;
}

TEST_F(IntegrationRecording, ASignalEndsItAndKeepsIt) {
    for (const int number : {SIGINT, SIGTERM}) {
        const auto recording = startRecording({"1", "--medium", "terrestrial"});
        recording->signal(number);
        EXPECT_EQ(recording->wait(), 0) << recording->err();
        EXPECT_EQ(recording->out().rfind("recorded 1 Première: ", 0), 0U) << recording->out();
        EXPECT_NE(recording->err().find(" until Ctrl-C\n"), std::string::npos);
    }
    const json list = recordings();
    ASSERT_EQ(list.size(), 2U);
    for (const auto& one : list) {
        EXPECT_EQ(one["state"], "stopped");
        EXPECT_EQ(std::filesystem::file_size(std::string(one["path"])), one["bytes"]);
    }
}

TEST_F(IntegrationRecording, ClosedDescriptorsAreNotTakenForTheService) {
    for (const char* closed : {"0<&-", "2>&-", "0<&- 2>&-", "1>&-", "0<&- 1>&- 2>&-"}) {
        const auto outcome =
                run({"/bin/bash", "-c",
                     std::string("'") + QORTVCTL + "' record première --for 0.1 " + closed},
                    mStation.environment);
        EXPECT_EQ(outcome.status, 0) << closed << outcome.err;
    }
    EXPECT_EQ(recordings().size(), 5U);
}

TEST_F(IntegrationRecording, StopEndsWhatAKilledProgramLeftRunning) {
    auto outcome = mStation.ctl({"record", "stop"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "nothing is being recorded\n");
    EXPECT_EQ(mStation.ctl({"record", "stop", "--json"}).out, "[]\n");

    for (int i = 0; i < 4; ++i) {
        const auto recording = mStation.startCtl({"record", "première"});
        ASSERT_TRUE(eventually([&] { return countOf("until Ctrl-C\n", recording->err()) == 1; }));
        recording->signal(SIGKILL);
        recording->wait();
    }
    EXPECT_EQ(mStation.ctl({"record", "première"}).err,
              "qortvctl: all recorders of the television are in use\n");
    outcome = mStation.ctl({"record", "stop"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const json list = recordings();
    ASSERT_EQ(list.size(), 4U);
    EXPECT_EQ(countOf("\n", outcome.out), 4U);
    for (const auto& one : list) {
        EXPECT_EQ(one["state"], "stopped");
        const std::string line = "stopped 1 Première: " + std::string(one["path"]) + "\n";
        EXPECT_EQ(countOf(line, outcome.out), 1U) << outcome.out;
    }
    // All four are free again.
    mStation.enter();
    const auto proxy = qortv::connect<qortv::Recorder::Interface>();
    const qortv::Recorder first(proxy);
    const qortv::Recorder second(proxy);
    const qortv::Recorder third(proxy);
    EXPECT_EQ(mStation.ctl({"record", "première", "--for", "0.1"}).status, 0);
}

TEST_F(IntegrationRecording, StopEndsARecordingWhoseProgramLives) {
    const auto recording = startRecording({"première"});
    const auto outcome = mStation.ctl({"record", "stop", "--json"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const json stopped = json::parse(outcome.out);
    ASSERT_EQ(stopped.size(), 1U);
    EXPECT_EQ(stopped[0]["channelNumber"], 1);
    EXPECT_EQ(stopped[0]["state"], "stopped");
    EXPECT_EQ(recording->wait(), 0) << recording->err();
    EXPECT_EQ(recording->out().rfind("recorded 1 Première: ", 0), 0U) << recording->out();
}

TEST_F(IntegrationRecording, NoRecorderIsLeftOpen) {
    // A television has room for four of applications: one is left.
    mStation.enter();
    const auto proxy = qortv::connect<qortv::Recorder::Interface>();
    qortv::Recorder first(proxy);
    qortv::Recorder second(proxy);
    qortv::Recorder third(proxy);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(mStation.ctl({"record", "movies 1"}).err,
                  "qortvctl: cannot record: the channel is scrambled\n");
        const auto outcome = mStation.ctl({"record", "première", "--for", "0.1"});
        EXPECT_EQ(outcome.status, 0) << outcome.err;
    }
    qortv::Recorder fourth(proxy);
    EXPECT_EQ(mStation.ctl({"record", "première"}).err,
              "qortvctl: all recorders of the television are in use\n");
}

TEST_F(IntegrationRecording, AScrambledChannelIsRefusedWithItsReason) {
    const auto outcome = mStation.ctl({"record", "movies 1", "--for", "1"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "qortvctl: cannot record: the channel is scrambled\n");
    EXPECT_EQ(recordings(), json::array());
}

TEST_F(IntegrationRecording, TheTunerRecordsOneMultiplexAtATime) {
    const auto recording = startRecording({"première"});
    const auto other = mStation.ctl({"record", "curaçao tv", "--for", "1"});
    EXPECT_EQ(other.status, 1);
    EXPECT_EQ(other.err,
              "qortvctl: cannot record: the tuner records a channel of another multiplex\n");
    EXPECT_EQ(mStation.ctl({"record", "zweites österreich", "--for", "0.1"}).status, 0);
    recording->signal(SIGINT);
    EXPECT_EQ(recording->wait(), 0);
}

TEST_F(IntegrationRecording, AFullDiskBreaksItOffAndKeepsWhatThereIs) {
    limitDisk(40000);
    const auto outcome = mStation.ctl({"record", "première", "--json"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.err.find("qortvctl: the recording broke off: the disk is full\n"),
              std::string::npos)
            << outcome.err;
    const json made = json::parse(outcome.out);
    EXPECT_EQ(made["error"], "the disk is full");
    EXPECT_EQ(made["state"], "disk-full");
    EXPECT_TRUE(std::filesystem::exists(std::string(made["path"])));
}

TEST_F(IntegrationRecording, ASignalThatIsLostBreaksItOff) {
    const auto recording = startRecording({"première"});
    for (const auto& entry : std::filesystem::directory_iterator(mStation.streams())) {
        std::filesystem::remove(entry.path());
    }
    EXPECT_EQ(recording->wait(), 1);
    EXPECT_NE(recording->err().find("qortvctl: the recording broke off: there is no signal\n"),
              std::string::npos)
            << recording->err();
}

TEST_F(IntegrationRecording, TheServiceDiesAndItIsTold) {
    const auto recording = startRecording({"première"});
    mStation.service().signal(SIGKILL);
    EXPECT_EQ(recording->wait(), 1);
    EXPECT_NE(recording->err().find("qortvctl: the service went away"), std::string::npos)
            << recording->err();
}

TEST_F(IntegrationRecording, RecordingsAreDeletedByIndex) {
    for (const char* name : {"première", "zweites österreich"}) {
        ASSERT_EQ(mStation.ctl({"record", name, "--for", "0.1"}).status, 0);
    }
    const std::string first = recordings()[0]["path"];
    const std::string second = recordings()[1]["path"];
    auto outcome = mStation.ctl({"recordings", "delete", "1"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "deleted " + second + "\n");
    EXPECT_TRUE(std::filesystem::exists(first));
    EXPECT_FALSE(std::filesystem::exists(second));
    outcome = mStation.ctl({"recordings", "delete", "1"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "qortvctl: there is no recording 1: there are 1\n");

    const auto recording = startRecording({"première"});
    outcome = mStation.ctl({"recordings", "delete", "1"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.err.find(" is being recorded\n"), std::string::npos) << outcome.err;
    recording->signal(SIGINT);
    EXPECT_EQ(recording->wait(), 0);
}

TEST_F(IntegrationRecording, SchedulesAreMadeListedAndCancelled) {
    auto outcome = mStation.ctl({"record", "at", "première", "2037-12-24T18:00Z", "1h30m",
                                 "--title", "Fête", "--repeat", "weekly", "--json"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const json added = json::parse(outcome.out);
    EXPECT_EQ(added["start"], 2145290400);
    EXPECT_EQ(added["seconds"], 5400);
    EXPECT_EQ(added["repeat"], "weekly");
    EXPECT_EQ(added["title"], "Fête");
    EXPECT_EQ(added["state"], "waiting");
    outcome = mStation.ctl({"record", "at", "première", "2037-12-25T18:00", "45m"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "schedule 2: 1 Première, 2037-12-25 18:00, 45:00\n");
    const json both = schedules();
    ASSERT_EQ(both.size(), 2U);
    EXPECT_EQ(both[0], added);
    EXPECT_EQ(added["channelNumber"], 1);
    EXPECT_EQ(added["channel"], "Première");
    EXPECT_EQ(added["date"], "2037-12-24");
    EXPECT_EQ(both[1]["date"], "2037-12-25");
    EXPECT_EQ(both[1]["time"], "18:00:00");
    // Local time is one hour ahead, or two after the last change that the streams tell.
    const int64_t ahead = 2145290400 + 86400 - int64_t{both[1]["start"]};
    EXPECT_TRUE(ahead == 3600 || ahead == 7200) << ahead;
    const auto table = mStation.ctl({"record", "list"});
    const std::string hour = ahead == 3600 ? "19" : "20";
    EXPECT_NE(table.out.find("2037-12-24 " + hour + ":00   1:30:00  weekly  Fête   waiting"),
              std::string::npos)
            << table.out;

    outcome = mStation.ctl({"record", "cancel", "1"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "cancelled schedule 1\n");
    EXPECT_EQ(schedules().size(), 1U);
    outcome = mStation.ctl({"record", "cancel", "1"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "qortvctl: there is no schedule 1\n");
}

TEST_F(IntegrationRecording, ATimeWithoutADateIsTheNextOne) {
    const auto utc = [&] {
        return json::parse(mStation.ctl({"time", "--json"}).out)["utc"].get<int64_t>();
    };
    const int64_t now = utc();
    for (const char* time : {"0:00", "08:00", "16:30:15"}) {
        const auto outcome = mStation.ctl({"record", "at", "première", time, "60", "--json"});
        ASSERT_EQ(outcome.status, 0) << outcome.err;
        const int64_t start = json::parse(outcome.out)["start"];
        EXPECT_GT(start, now) << time;
        EXPECT_LE(start, utc() + 25 * 3600) << time;  // some days are longer
    }
}

TEST_F(IntegrationRecording, AScheduleThatIsDueRecords) {
    // The schedule began a while ago: the rest of it is recorded.
    const int64_t now = json::parse(mStation.ctl({"time", "--json"}).out)["utc"];
    const int64_t start = now - 3600;
    char text[32];
    const time_t moment = start;
    std::tm utc = {};
    gmtime_r(&moment, &utc);
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc);
    ASSERT_EQ(mStation.ctl({"record", "at", "première", text, "2h"}).status, 0);
    EXPECT_TRUE(eventually([&] { return schedules()[0]["state"] == "running"; }));
    EXPECT_TRUE(eventually([&] {
        const json list = recordings();
        return list.size() == 1 && list[0]["state"] == "recording" && list[0]["bytes"] > 0;
    }));
    EXPECT_EQ(mStation.ctl({"record", "cancel", "1"}).status, 0);
    EXPECT_TRUE(eventually([&] { return recordings()[0]["state"] != "recording"; }));

    // One that is stopped by hand has done what was wanted.
    ASSERT_EQ(mStation.ctl({"record", "at", "première", text, "2h"}).status, 0);
    EXPECT_TRUE(eventually([&] { return schedules()[0]["state"] == "running"; }));
    const auto stop = mStation.ctl({"record", "stop"});
    EXPECT_EQ(stop.status, 0) << stop.err;
    EXPECT_EQ(stop.out.rfind("stopped 1 Première: ", 0), 0U) << stop.out;
    EXPECT_EQ(schedules()[0]["state"], "done");
}

TEST_F(IntegrationRecording, ASchedulePastIsRefused) {
    const auto outcome = mStation.ctl({"record", "at", "première", "2020-01-01T10:00Z", "3m"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err.rfind("qortvctl: 2020-01-01T10:00Z is over: by the television it is ", 0),
              0U)
            << outcome.err;
    EXPECT_EQ(schedules(), json::array());
}

TEST_F(IntegrationRecording, OverlappingSchedulesOfTwoMultiplexesAreTold) {
    ASSERT_EQ(mStation.ctl({"record", "at", "première", "2037-12-24T18:00Z", "1h"}).err, "");
    const auto same =
            mStation.ctl({"record", "at", "zweites österreich", "2037-12-24T18:30Z", "1h"});
    EXPECT_EQ(same.err, "");
    const auto other = mStation.ctl({"record", "at", "curaçao tv", "2037-12-24T18:30Z", "1h"});
    EXPECT_EQ(other.status, 0);
    EXPECT_NE(other.err.find("another multiplex is to be recorded at that time"), std::string::npos)
            << other.err;
}

TEST(IntegrationRecordingUsage, MistakesAreNamed) {
    Station station;
    const auto expectUsage = [&](const std::vector<std::string>& arguments,
                                 const std::string& mistake) {
        const auto outcome = station.ctl(arguments);
        EXPECT_EQ(outcome.status, 2) << mistake;
        EXPECT_EQ(outcome.out, "") << mistake;
        EXPECT_NE(outcome.err.find(mistake), std::string::npos) << outcome.err;
    };
    expectUsage({"record", "1", "--for", "soon"}, "--for");
    expectUsage({"record", "at", "1"}, "TIME");
    expectUsage({"record", "at", "1", "20:61", "1h"}, "'20:61' is no time");
    expectUsage({"record", "at", "1", "2026-02-30T20:00", "1h"}, "'2026-02-30T20:00' is no time");
    expectUsage({"record", "at", "1", "20:15", "soon"}, "'soon' is no duration");
    expectUsage({"record", "list", "stray"}, "stray");
    expectUsage({"record", "stop", "stray"}, "stray");
    expectUsage({"record", ""}, "CHANNEL: must not be empty");
    expectUsage({"record", "cancel", "x"}, "ID");
    expectUsage({"recordings", "delete"}, "INDEX");
    for (const std::vector<std::string>& command : {std::vector<std::string>{"record"},
                                                    {"record", "at"},
                                                    {"record", "list"},
                                                    {"record", "cancel"},
                                                    {"record", "stop"},
                                                    {"recordings"},
                                                    {"recordings", "delete"}}) {
        auto arguments = command;
        arguments.push_back("--help");
        const auto help = station.ctl(arguments);
        EXPECT_EQ(help.status, 0) << command.back();
        EXPECT_NE(help.out.find("Example"), std::string::npos) << help.out;
    }
}

}  // namespace
}  // namespace integration
