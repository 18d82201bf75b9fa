// Scan, zap, guide and clock from the command line, on generated streams.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "qortv/scan.h"
#include "qortv/subscription.h"
#include "support.h"

namespace integration {
namespace {

using nlohmann::json;
using std::chrono::steady_clock;

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

/** When the streams are on the air: 2026-11-21 02:43:20 UTC, an hour less than local time. The
 * generated programme is the same for the same day. */
constexpr int64_t kAirTime = 1795229000;

class IntegrationViewing : public testing::Test {
  protected:
    void SetUp() override {
        const auto made =
                run({QORTV_MKSTREAMS, "--time", std::to_string(kAirTime), mStation.streams()}, {});
        ASSERT_EQ(made.status, 0) << made.err;
        mBefore = steady_clock::now();
        mStation.startAndWait();
    }

    /** The latest time that it can be on the air: the streams' own, and what has passed since
     * before they were read. */
    int64_t latestAirTime() const {
        return kAirTime +
               std::chrono::ceil<std::chrono::seconds>(steady_clock::now() - mBefore).count();
    }

    /** What a command prints as JSON. */
    json jsonOf(std::vector<std::string> arguments) {
        arguments.push_back("--json");
        const auto outcome = mStation.ctl(arguments);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        return json::parse(outcome.out);
    }

    Station mStation;

  private:
    steady_clock::time_point mBefore;
};

TEST_F(IntegrationViewing, AScanTellsEachMultiplexAndASummary) {
    const auto scan = mStation.ctl({"scan"});
    ASSERT_EQ(scan.status, 0) << scan.err;
    EXPECT_EQ(scan.err, "");
    const auto lines = linesOf(scan.out);
    ASSERT_EQ(lines.size(), 11U) << scan.out;
    EXPECT_EQ(lines.front(), "scanning all media: 9 multiplexes");
    EXPECT_EQ(lines[9].rfind("100 %  32 tv, 8 radio", 0), 0U) << lines[9];
    EXPECT_EQ(lines.back(), "scan complete: 40 services (32 tv, 8 radio) in 9 multiplexes");
    EXPECT_EQ(scan.out.find('\r'), std::string::npos);
}

TEST_F(IntegrationViewing, AScanIsJsonLinesForScripts) {
    const auto scan = mStation.ctl({"scan", "--medium", "cable", "--clear", "--json"});
    ASSERT_EQ(scan.status, 0) << scan.err;
    const auto lines = linesOf(scan.out);
    ASSERT_GE(lines.size(), 3U);
    EXPECT_EQ(lines.front(), R"({"event":"started","medium":"cable","multiplexes":3})");
    for (size_t i = 1; i + 1 < lines.size(); ++i) {
        EXPECT_EQ(json::parse(lines[i])["event"], "progress") << lines[i];
    }
    EXPECT_EQ(lines.back(),
              R"({"event":"completed","services":12,"tv":9,"radio":3,"multiplexes":3})");
}

TEST_F(IntegrationViewing, AScanHasABarOnATerminalAsWideAsThat) {
    const auto scan = run({"/usr/bin/script", "-qec",
                           std::string("stty cols 60; '") + QORTVCTL + "' scan", "/dev/null"},
                          mStation.environment);
    ASSERT_EQ(scan.status, 0) << scan.err << scan.out;
    // The whole bar is one line, drawn again and again.
    const auto lines = linesOf(scan.out);
    ASSERT_EQ(lines.size(), 1U) << scan.out;
    EXPECT_EQ(countOf("\rScanning [", scan.out), 10U);
    EXPECT_EQ(countOf("100 %   32 tv,   8 radio", scan.out), 1U) << scan.out;
    EXPECT_NE(lines[0].find("\r\x1b[Kscan complete: 40 services"), std::string::npos);
    size_t longest = 0;
    std::istringstream drawn(scan.out);
    for (std::string line; std::getline(drawn, line, '\r');) {
        if (line.rfind("Scanning", 0) == 0) longest = std::max(longest, line.find('\x1b'));
    }
    EXPECT_EQ(longest, 59U);
}

TEST_F(IntegrationViewing, ZapTunesByNumberAndNameAndShowsWhatIsOn) {
    auto zap = mStation.ctl({"zap", "105"});
    ASSERT_EQ(zap.status, 0) << zap.err;
    EXPECT_EQ(zap.err, "");
    auto lines = linesOf(zap.out);
    ASSERT_EQ(lines.size(), 4U) << zap.out;
    EXPECT_EQ(lines[0], "tuning to 105 Movies 1");
    EXPECT_EQ(lines[1],
              "locked: 105 Movies 1 (cable, 322.000 MHz), signal level 100 %, quality 100 %");
    EXPECT_EQ(lines[2], "now   02:50-04:40  Football: League Match");
    EXPECT_EQ(lines[3], "next  04:40-06:15  Night Shift");
    // Also the channel that is on already is tuned to anew, and answers.
    EXPECT_EQ(mStation.ctl({"zap", "movies 1"}).status, 0);

    const auto answer = jsonOf({"zap", "WORLD NEWS"});
    EXPECT_EQ(answer["channel"]["name"], "World News HD");
    EXPECT_EQ(answer["tuning"], "locked");
    EXPECT_EQ(answer["error"], "none");
    EXPECT_EQ(answer["signalLevel"], 100);
    EXPECT_EQ(answer["now"]["end"], answer["next"]["start"]);
    EXPECT_EQ(answer["channel"]["number"], jsonOf({"now"})[0]["channel"]["number"]);
}

TEST_F(IntegrationViewing, ZapGoesUpAndDown) {
    ASSERT_EQ(mStation.ctl({"zap", "105"}).status, 0);
    EXPECT_EQ(jsonOf({"zap", "+"})["channel"]["number"], 106);
    EXPECT_EQ(jsonOf({"zap", "-"})["channel"]["number"], 105);
}

TEST_F(IntegrationViewing, ZapFailsWhereTheChannelDoesNotComeIn) {
    const auto channel = jsonOf({"channels", "--filter", "movies 1"})[0];
    // As with an antenna cable that is pulled out: the channels stay listed.
    std::filesystem::rename(mStation.streams(), mStation.streams() + ".away");
    const auto zap = mStation.ctl({"zap", "movies 1"});
    EXPECT_EQ(zap.status, 1) << zap.out;
    EXPECT_EQ(zap.err, "qortvctl: 105 Movies 1 does not come in: no signal\n");
    EXPECT_EQ(zap.out, "tuning to 105 Movies 1\n");
    const auto script = mStation.ctl({"zap", "movies 1", "--json"});
    EXPECT_EQ(script.status, 1);
    EXPECT_EQ(json::parse(script.out)["tuning"], "failed");
    EXPECT_EQ(json::parse(script.out)["error"], "no signal");
    EXPECT_EQ(json::parse(script.out)["channel"], channel);
}

TEST_F(IntegrationViewing, ZapRefusesToGuess) {
    const auto zap = mStation.ctl({"zap", "movies"});
    EXPECT_EQ(zap.status, 1);
    EXPECT_EQ(zap.out, "");
    EXPECT_NE(zap.err.find("'movies' fits 2 channels:"), std::string::npos) << zap.err;
    EXPECT_EQ(mStation.ctl({"zap", "no such channel"}).status, 1);
}

TEST_F(IntegrationViewing, NowShowsTheProgrammeOfAChannel) {
    const auto now = mStation.ctl({"now", "movies 1"});
    ASSERT_EQ(now.status, 0) << now.err;
    const auto lines = linesOf(now.out);
    ASSERT_EQ(lines.size(), 4U) << now.out;
    EXPECT_EQ(lines[0], "105 Movies 1");
    EXPECT_EQ(lines[2].rfind("now   02:50-04:40 ", 0), 0U) << lines[2];
    EXPECT_NE(lines[2].find(" %       Football: League Match  Live from the capital."),
              std::string::npos)
            << lines[2];
    EXPECT_EQ(lines[3].rfind("next  04:40-06:15         -  16+  Night Shift ", 0), 0U) << lines[3];

    const auto answer = jsonOf({"now", "movies 1"});
    ASSERT_EQ(answer.size(), 1U);
    const auto& event = answer[0]["now"];
    EXPECT_EQ(event["title"], "Football: League Match");
    EXPECT_EQ(event["genre"], "sports");
    EXPECT_EQ(event["start"], 1795225800);
    EXPECT_EQ(event["end"], 1795232400);
    EXPECT_EQ(event["startLocal"], "2026-11-21 02:50");
    EXPECT_EQ(event["endLocal"], "2026-11-21 04:40");
    EXPECT_GE(event["percent"], 48);
    EXPECT_LE(event["percent"], 100 * (latestAirTime() - 1795225800) / (1795232400 - 1795225800));
    EXPECT_EQ(answer[0]["next"]["age"], 16);
}

TEST_F(IntegrationViewing, NowIsAboutTheCurrentChannelOrAllOfThem) {
    ASSERT_EQ(mStation.ctl({"zap", "106"}).status, 0);
    EXPECT_EQ(jsonOf({"now"})[0]["channel"]["name"], "Movies 2");
    const auto all = mStation.ctl({"now", "--all", "--medium", "cable"});
    ASSERT_EQ(all.status, 0) << all.err;
    EXPECT_EQ(linesOf(all.out).size(), jsonOf({"channels", "--medium", "cable"}).size() + 1);
    EXPECT_EQ(jsonOf({"now", "--all"}).size(), jsonOf({"channels"}).size());
    EXPECT_EQ(mStation.ctl({"now", "7", "--all"}).status, 2);
}

TEST_F(IntegrationViewing, AChannelWithoutAGuideIsSaidAndNoFailure) {
    const auto now = mStation.ctl({"now", "local channel"});
    EXPECT_EQ(now.status, 0);
    EXPECT_EQ(now.err, "qortvctl: the guide has nothing of 109 Local Channel\n");
    const auto epg = mStation.ctl({"epg", "local channel"});
    EXPECT_EQ(epg.status, 0);
    EXPECT_EQ(epg.err, "qortvctl: the guide has nothing of 109 Local Channel\n");
    EXPECT_EQ(linesOf(epg.out).size(), 1U) << epg.out;
    EXPECT_EQ(mStation.ctl({"epg", "local channel", "--json"}).out, "[]\n");
}

TEST_F(IntegrationViewing, EpgListsTheHoursInOrder) {
    const auto events = jsonOf({"epg", "movies 1", "--hours", "6"});
    ASSERT_GE(events.size(), 2U);
    EXPECT_EQ(events.front()["title"], "Football: League Match");
    EXPECT_LT(events.back()["start"], latestAirTime() + 6 * 3600);
    EXPECT_GE(events.back()["end"], kAirTime + 6 * 3600);
    for (size_t i = 1; i < events.size(); ++i) {
        EXPECT_EQ(events[i]["start"], events[i - 1]["end"]);
    }
    EXPECT_GT(jsonOf({"epg", "movies 1", "--hours", "12"}).size(), events.size());
    const auto table = mStation.ctl({"epg", "movies 1", "--hours", "6"});
    EXPECT_EQ(linesOf(table.out).size(), events.size() + 1);
    EXPECT_NE(table.out.find(events[0]["title"].get<std::string>()), std::string::npos);
    EXPECT_EQ(mStation.ctl({"epg", "movies 1", "--hours", "0"}).status, 2);
}

TEST_F(IntegrationViewing, EpgTellsAllOfAnEvent) {
    // Some channels have details; which ones is the generator's business.
    const auto all = jsonOf({"now", "--all"});
    bool found = false;
    for (const auto& row : all) {
        if (row["now"].is_null()) continue;
        const std::string id = std::to_string(row["now"]["id"].get<int>());
        const std::string number = row["channel"]["name"];
        const auto details = jsonOf({"epg", number, "--details", id});
        EXPECT_EQ(details["title"], row["now"]["title"]);
        if (details["details"] == "") continue;
        found = true;
        EXPECT_NE(details["series"], "");
        const auto text = mStation.ctl({"epg", number, "--details", id});
        EXPECT_EQ(text.status, 0);
        EXPECT_EQ(linesOf(text.out).front(), row["now"]["title"].get<std::string>());
        break;
    }
    EXPECT_TRUE(found);
    const auto missing = mStation.ctl({"epg", "movies 1", "--details", "1"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "qortvctl: the guide of 105 Movies 1 has no event 1\n");
}

TEST_F(IntegrationViewing, TheClockFollowsTheStreams) {
    const auto clock = jsonOf({"time"});
    EXPECT_GE(clock["utc"], kAirTime);
    EXPECT_LE(clock["utc"], latestAirTime());
    EXPECT_EQ(clock["offset"], 3600);
    EXPECT_EQ(clock["source"], "broadcast");
    EXPECT_EQ(clock["follows"], "broadcast");
    EXPECT_EQ(clock["totReceived"], true);
    EXPECT_EQ(clock["broadcastUtc"], kAirTime);
    const auto text = mStation.ctl({"time"});
    EXPECT_EQ(text.status, 0) << text.err;
    EXPECT_EQ(linesOf(text.out).size(), 6U);
    EXPECT_NE(text.out.find("source     broadcast\n"), std::string::npos) << text.out;
    EXPECT_NE(text.out.find("zone       +01:00\n"), std::string::npos) << text.out;
}

TEST(IntegrationViewingOneChannel, UpAndDownLeadBackToIt) {
    Station station;
    const auto made =
            run({QORTV_MKSTREAMS, "--multiplexes", "1", "--services", "1", station.streams()}, {});
    ASSERT_EQ(made.status, 0) << made.err;
    station.startAndWait();
    for (const char* step : {"+", "-"}) {
        const auto zap = station.ctl({"zap", step});
        EXPECT_EQ(zap.status, 0) << zap.err;
        EXPECT_EQ(zap.out.rfind("locked: 1 ", 0), 0U) << zap.out;
    }
}

/** A list that takes half a minute at least to scan, a tenth of a second for each multiplex: time
 * to interfere. */
class IntegrationLongScan : public testing::Test {
  protected:
    void SetUp() override {
        const auto made = run(
                {QORTV_MKSTREAMS, "--multiplexes", "300", "--services", "300", mStation.streams()},
                {});
        ASSERT_EQ(made.status, 0) << made.err;
        mStation.startAndWait();
    }

    /** A scan that has come to its second multiplex at least. */
    std::unique_ptr<Process> startScan(std::vector<std::string> arguments = {}) {
        arguments.insert(arguments.begin(), "scan");
        auto scan = mStation.startCtl(arguments);
        EXPECT_TRUE(eventually([&] { return countOf("\n", scan->out()) >= 2; })) << scan->err();
        return scan;
    }

    Station mStation;
};

TEST_F(IntegrationLongScan, CtrlCCallsItOffAndWaitsForTheEnd) {
    const size_t channels = json::parse(mStation.ctl({"channels", "--json"}).out).size();
    auto scan = startScan();
    scan->signal(SIGINT);
    EXPECT_EQ(scan->wait(), 130);
    EXPECT_EQ(scan->err(), "qortvctl: cancelling the scan\n");
    const auto lines = linesOf(scan->out());
    EXPECT_EQ(lines.back().rfind("scan cancelled at ", 0), 0U) << lines.back();
    EXPECT_EQ(json::parse(mStation.ctl({"channels", "--json"}).out).size(), channels);

    // It has ended indeed: the next one can be started at once.
    scan = startScan({"--json"});
    scan->signal(SIGTERM);
    EXPECT_EQ(scan->wait(), 128 + SIGTERM);
    EXPECT_EQ(json::parse(linesOf(scan->out()).back())["event"], "cancelled");
}

/** How a scan ended. */
class ScanEnd : public qortv::ScanListener {
  public:
    void onScanEvent(const qortv::ScanEvent& event) override {
        const std::lock_guard lock(mMutex);
        if (qortv::isEnd(event)) mEnd = event;
    }

    std::optional<qortv::ScanEvent> take() {
        const std::lock_guard lock(mMutex);
        return std::exchange(mEnd, std::nullopt);
    }

  private:
    std::mutex mMutex;
    std::optional<qortv::ScanEvent> mEnd;
};

TEST_F(IntegrationLongScan, OneThatNobodyCanReadIsCalledOff) {
    mStation.enter();
    ScanEnd listener;
    const qortv::Subscription subscription(listener);
    const auto scanWith = [&](const std::string& output) {
        const auto scan = run({"/bin/bash", "-c",
                               std::string("set -o pipefail; '") + QORTVCTL + "' scan " + output},
                              mStation.environment);
        std::optional<qortv::ScanEvent> end;
        EXPECT_TRUE(eventually([&] { return (end = listener.take()).has_value(); })) << output;
        EXPECT_EQ(end ? qortv::name(*end) : "none", std::string("cancelled")) << output;
        return scan;
    };
    EXPECT_EQ(scanWith("| head -n 1").status, 0);
    const auto full = scanWith(">/dev/full");
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.err, "qortvctl: cannot write: No space left on device\n");
}

TEST_F(IntegrationLongScan, OneAtATimeAndTheOtherOneIsTold) {
    const auto scan = startScan();
    const auto other = mStation.ctl({"scan"});
    EXPECT_EQ(other.status, 1);
    EXPECT_EQ(other.out, "");
    EXPECT_EQ(other.err,
              "qortvctl: the television refused to start a scan: another scan is running (code "
              "-5)\n");
    EXPECT_TRUE(scan->running());
    scan->signal(SIGINT);
    EXPECT_EQ(scan->wait(), 130);
}

TEST_F(IntegrationLongScan, ADeadServiceEndsIt) {
    const auto scan = startScan();
    mStation.service().signal(SIGKILL);
    EXPECT_EQ(scan->wait(), 1);
    EXPECT_EQ(scan->err(), "qortvctl: the service went away during the scan\n");
}

TEST(IntegrationViewingHelp, HasExamplesAndStatusesWithoutAService) {
    Station station;
    for (const char* command : {"scan", "zap", "now", "epg", "time"}) {
        const auto help = station.ctl({command, "--help"});
        EXPECT_EQ(help.status, 0) << command;
        EXPECT_NE(help.out.find("Examples:"), std::string::npos) << command;
        EXPECT_NE(help.out.find("--json"), std::string::npos) << command;
        std::vector<std::string> arguments = {"--timeout", "0", command};
        if (std::string(command) == "zap") arguments.emplace_back("1");
        const auto outcome = station.ctl(arguments);
        EXPECT_EQ(outcome.status, 3) << command << outcome.err;
        EXPECT_EQ(outcome.err.rfind("qortvctl: no service: ", 0), 0U) << outcome.err;
    }
    EXPECT_EQ(station.ctl({"scan", "--update", "--clear"}).status, 2);
    EXPECT_EQ(station.ctl({"zap"}).status, 2);
}

}  // namespace
}  // namespace integration
