// Start-up of the real service: readiness files that come late or not at all, and folders of
// streams that are missing, empty or full of rubbish.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "support.h"

namespace integration {
namespace {

constexpr char kWaiting[] = "waiting dtv_svc count:";

/** A service without a television of its own: the test plays the middleware's start-up. */
class IntegrationReadiness : public testing::TestWithParam<const char*> {
  protected:
    IntegrationReadiness() {
        mStation.environment["QORTV_TELEVISION"] = "off";
        mStation.environment["QORTV_DEBUG"] = "1";
    }

    void makeReady(const std::string& name) { writeFile(mStation.vendorFolder() + "/" + name, ""); }

    /** Waits until the service has looked for the files `times` times more. */
    bool looksAgain(size_t times) {
        return mStation.waitForLog(kWaiting, countOf(kWaiting, mStation.log()) + times);
    }

    Station mStation;
};

TEST_P(IntegrationReadiness, OneFileIsNotEnoughAndTheOtherMayComeLate) {
    const std::string first = GetParam();
    const std::string second = first == "dtv_svc_is_ready" ? "tv_api_is_init" : "dtv_svc_is_ready";
    mStation.start();
    ASSERT_TRUE(looksAgain(3));
    makeReady(first);
    ASSERT_TRUE(looksAgain(10));
    EXPECT_FALSE(mStation.registered());
    const auto list = mStation.ctl({"list"});
    EXPECT_EQ(list.status, 3);
    EXPECT_EQ(list.err,
              "qortvctl: no service: nothing is registered in " + mStation.runtimeFolder() + "\n");

    makeReady(second);
    ASSERT_TRUE(eventually([&] { return mStation.registered(); }));
    EXPECT_EQ(countOf("dtv_svc rpc server confirmed ready.", mStation.log()), 1U);
    EXPECT_EQ(mStation.ctl({"list"}).status, 0);
}

INSTANTIATE_TEST_SUITE_P(Integration, IntegrationReadiness,
                         testing::Values("dtv_svc_is_ready", "tv_api_is_init"));

TEST(IntegrationStartup, CountsItsLooksForTheFilesFromZero) {
    Station station;
    station.environment["QORTV_TELEVISION"] = "off";
    station.environment["QORTV_DEBUG"] = "1";
    station.start();
    ASSERT_TRUE(station.waitForLog("waiting dtv_svc count:4"));
    for (int count = 0; count <= 4; ++count) {
        EXPECT_EQ(countOf(kWaiting + std::to_string(count) + "\n", station.log()), 1U) << count;
    }
}

TEST(IntegrationStartup, WritesNoDebugLinesUnlessAsked) {
    Station station;
    station.startBareAndWait();
    EXPECT_EQ(countOf(kWaiting, station.log()), 0U);
    EXPECT_EQ(countOf("confirmed ready", station.log()), 0U);
}

/** What qortvctl says about a television without channels. */
void expectNoChannels(Station& station) {
    const auto channels = station.ctl({"channels", "--json"});
    EXPECT_EQ(channels.status, 0) << channels.err;
    EXPECT_EQ(channels.out, "[]\n");
    EXPECT_TRUE(station.service().running());
}

TEST(IntegrationStartup, RunsWithoutItsFolderOfStreamsAndNamesIt) {
    Station station;
    std::filesystem::remove(station.streams());
    station.startAndWait();
    EXPECT_TRUE(station.waitForLog("cannot read the folder of streams " + station.streams() +
                                   ": No such file or directory"));
    expectNoChannels(station);
}

TEST(IntegrationStartup, RunsWithAnEmptyFolderOfStreamsAndNamesIt) {
    Station station;
    station.startAndWait();
    EXPECT_TRUE(station.waitForLog("no streams (*.ts) in the folder " + station.streams()));
    expectNoChannels(station);
}

TEST(IntegrationStartup, NamesTheFilesThatAreNoStreamsAndReadsTheOthers) {
    Station station;
    station.makeStreams();
    station.startAndWait();
    const auto before = nlohmann::json::parse(station.ctl({"channels", "--json"}).out);
    ASSERT_FALSE(before.empty());

    writeFile(station.streams() + "/garbage.ts", std::string(200'000, 'x'));
    writeFile(station.streams() + "/empty.ts", "");
    std::filesystem::create_directory(station.streams() + "/folder.ts");
    station.startAndWait();
    EXPECT_TRUE(station.waitForLog("cannot use the stream " + station.streams() +
                                   "/garbage.ts: not a transport stream"));
    EXPECT_TRUE(station.waitForLog("cannot use the stream " + station.streams() +
                                   "/empty.ts: empty file"));
    EXPECT_TRUE(station.waitForLog("cannot use the stream " + station.streams() +
                                   "/folder.ts: not a regular file"));
    EXPECT_EQ(nlohmann::json::parse(station.ctl({"channels", "--json"}).out), before);
}

}  // namespace
}  // namespace integration
