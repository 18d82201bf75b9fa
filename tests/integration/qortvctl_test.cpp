// The command-line client as a person or a script meets it: texts, exit statuses, pipes, signals.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "support.h"

namespace integration {
namespace {

using nlohmann::json;

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

TEST(IntegrationCtl, HelpIsEverywhereAndHasExamples) {
    Station station;
    for (const std::vector<std::string>& command : {std::vector<std::string>{"--help"},
                                                    {"list", "--help"},
                                                    {"channels", "--help"},
                                                    {"select", "--help"},
                                                    {"watch", "--help"}}) {
        const auto help = station.ctl(command);
        EXPECT_EQ(help.status, 0) << command.front();
        EXPECT_EQ(help.err, "") << command.front();
        EXPECT_NE(help.out.find("Example"), std::string::npos) << help.out;
    }
    const auto help = station.ctl({"--help"});
    EXPECT_NE(help.out.find("Exit status: 0 done; 1 failed; 2 wrong usage; 3 no service"),
              std::string::npos);
}

TEST(IntegrationCtl, WrongUsageIsStatusTwoAndNamesTheMistake) {
    Station station;
    const auto expectUsage = [&](const std::vector<std::string>& arguments,
                                 const std::string& mistake) {
        const auto outcome = station.ctl(arguments);
        EXPECT_EQ(outcome.status, 2) << mistake;
        EXPECT_EQ(outcome.out, "") << mistake;
        EXPECT_NE(outcome.err.find(mistake), std::string::npos) << outcome.err;
    };
    expectUsage({}, "a command is needed, such as channels, zap or now");
    expectUsage({"tune"}, "tune");
    expectUsage({"channels", "--colour"}, "--colour");
    expectUsage({"channels", "--medium", "smoke"}, "smoke");
    expectUsage({"select"}, "CHANNEL");
    expectUsage({"select", ""}, "CHANNEL: must not be empty");
    for (const char* count : {"0", "-1", "x", "1.5", ""}) {
        expectUsage({"watch", "--count", count}, "--count: must be 1 or more\n");
        expectUsage({"config", "watch", "--count", count}, "--count: must be 1 or more\n");
    }
    for (const char* seconds : {"0", "0.0001", "-1", "nan", "-nan", "inf", "1e9", "soon", ""}) {
        expectUsage({"watch", "--for", seconds},
                    "--for: must be seconds, more than 0 and at most 100000000\n");
        expectUsage({"config", "watch", "--for", seconds}, "--for: must be seconds, more than 0");
        expectUsage({"record", "--for", seconds}, "--for: must be seconds, more than 0");
    }
    for (const char* seconds : {"-1", "nan", "inf", "soon"}) {
        expectUsage({"--timeout", seconds, "list"},
                    "--timeout: must be seconds, at least 0 and at most 100000000\n");
    }
}

TEST(IntegrationCtl, WithoutAServiceItSaysWhereItLooked) {
    Station station;
    const std::string missing =
            "qortvctl: no service: nothing is registered as "
            "vendor.corvanta.tv.qortvapi@1.0::IQorTvApiChannelList/default in " +
            station.runtimeFolder() + "\n";
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"channels"}, {"select", "1"}}) {
        auto arguments = command;
        arguments.insert(arguments.begin(), {"--timeout", "0.05"});
        const auto outcome = station.ctl(arguments);
        EXPECT_EQ(outcome.status, 3);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, missing);
    }
    const auto watch = station.ctl({"watch", "--timeout", "0"});
    EXPECT_EQ(watch.status, 3);
    EXPECT_EQ(watch.err,
              "qortvctl: no service: nothing is registered as "
              "vendor.corvanta.tv.qortvapi@1.0::IQorTvApi/default in " +
                      station.runtimeFolder() + "\n");
    EXPECT_EQ(station.ctl({"list"}).status, 3);
    EXPECT_EQ(station.ctl({"list", "--json"}).out, "[]\n");
}

class IntegrationCtlService : public testing::Test {
  protected:
    void SetUp() override {
        mStation.makeStreams();
        mStation.startAndWait();
    }

    json channels(std::vector<std::string> arguments = {}) {
        arguments.insert(arguments.begin(), {"channels", "--json"});
        return json::parse(mStation.ctl(arguments).out);
    }

    Station mStation;
};

TEST_F(IntegrationCtlService, ListShowsTheProcessAndItsThreads) {
    // A listing waits a second for each process, which a busy one may take longer than.
    Outcome list = {};
    ASSERT_TRUE(eventually([&] {
        list = mStation.ctl({"list"});
        return countOf("does not answer", list.out) == 0;
    })) << list.out;
    EXPECT_EQ(list.status, 0) << list.err;
    const auto lines = linesOf(list.out);
    ASSERT_GE(lines.size(), 3U);
    EXPECT_EQ(lines[0].rfind("INTERFACE ", 0), 0U);
    EXPECT_NE(list.out.find("vendor.corvanta.tv.qortvapi@1.0::IQorTvApi "), std::string::npos);
    EXPECT_EQ(countOf("alive", list.out), lines.size() - 1);
    json services;
    ASSERT_TRUE(eventually([&] {
        services = json::parse(mStation.ctl({"list", "--json"}).out);
        return services.at(0)["threads"] >= 0;
    })) << services;
    for (const auto& service : services) {
        EXPECT_EQ(service["instance"], "default");
        EXPECT_EQ(service["pid"], mStation.service().pid());
        EXPECT_EQ(service["alive"], true);
        EXPECT_EQ(service["maxThreads"], 20);
    }
}

TEST_F(IntegrationCtlService, ListSaysWhatIsStale) {
    const pid_t pid = mStation.service().pid();
    mStation.service().signal(SIGKILL);
    mStation.service().wait();
    const auto list = mStation.ctl({"list"});
    EXPECT_EQ(list.status, 0);
    EXPECT_EQ(countOf("alive", list.out), 0U);
    EXPECT_NE(list.out.find("stale: process " + std::to_string(pid) + " is gone"),
              std::string::npos)
            << list.out;
    const auto channels = mStation.ctl({"channels", "--timeout", "0.1"});
    EXPECT_EQ(channels.status, 3);
    EXPECT_NE(channels.err.find("(process " + std::to_string(pid) + " was, and is gone)"),
              std::string::npos)
            << channels.err;
}

TEST_F(IntegrationCtlService, ChannelsAreATableAlignedByDisplayWidth) {
    const auto outcome = mStation.ctl({"channels"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const auto lines = linesOf(outcome.out);
    ASSERT_EQ(lines.size(), channels().size() + 1);
    // A wide name takes two columns a character: 5 characters of 3 bytes are 10 columns, so 5 bytes
    // more than columns stand in front of the next column.
    const size_t column = lines[0].find("TYPE");
    ASSERT_NE(column, std::string::npos);
    for (const auto& line : lines) {
        const size_t wide = line.find("中央电视台");
        if (wide != std::string::npos) {
            EXPECT_EQ(line.substr(column + 5, 2), "hd") << line;
        }
        if (line.find("Cable One") != std::string::npos) {
            EXPECT_EQ(line.substr(column, 2), "hd") << line;
        }
    }
    EXPECT_EQ(countOf("中央电视台", outcome.out), 1U);
}

TEST_F(IntegrationCtlService, ChannelsCanBeNarrowed) {
    const auto all = channels();
    size_t cable = 0;
    for (const auto& channel : all) cable += channel["medium"] == "cable";
    ASSERT_GT(cable, 0U);
    ASSERT_LT(cable, all.size());
    const auto narrowed = channels({"--medium", "cable"});
    EXPECT_EQ(narrowed.size(), cable);
    const auto named = channels({"--filter", "ŁÓDŹ"});
    ASSERT_EQ(named.size(), 1U);
    EXPECT_EQ(named[0]["name"], "Kanał Łódź");
    EXPECT_EQ(channels({"--filter", "no such name"}).size(), 0U);
}

TEST_F(IntegrationCtlService, SelectTakesNumbersNamesAndParts) {
    auto outcome = mStation.ctl({"select", "1", "--medium", "terrestrial"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "selected 1 Première\n");
    outcome = mStation.ctl({"select", "curaçao tv"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "selected 103 Curaçao TV\n");
    outcome = mStation.ctl({"select", "MOVIES 2", "--json"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(json::parse(outcome.out)["name"], "Movies 2");
}

TEST_F(IntegrationCtlService, SelectRefusesToGuess) {
    auto outcome = mStation.ctl({"select", "movies"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_NE(outcome.err.find("'movies' fits 2 channels:"), std::string::npos) << outcome.err;
    EXPECT_NE(outcome.err.find("Movies 1 (cable)"), std::string::npos) << outcome.err;
    outcome = mStation.ctl({"select", "no such channel"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "qortvctl: no channel has the number or name 'no such channel'\n");
    // There is a channel "Новости 24", and none with that number.
    outcome = mStation.ctl({"select", "24"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "qortvctl: there is no channel 24\n");
    outcome = mStation.ctl({"select", "99", "--medium", "cable"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "qortvctl: there is no cable channel 99\n");
}

TEST_F(IntegrationCtlService, ANumberOfSeveralMediaIsThatOfTheOneThatIsOn) {
    const std::string complaint =
            "qortvctl: '7' fits 2 channels:\n"
            "  7 Новости 24 (terrestrial)\n"
            "  7 Música Clásica (satellite)\n"
            "choose with --medium\n";
    ASSERT_EQ(mStation.ctl({"select", "curaçao tv"}).status, 0);
    for (const char* command : {"select", "zap", "epg", "now", "record"}) {
        const auto outcome = mStation.ctl({command, "7"});
        EXPECT_EQ(outcome.status, 1) << command;
        EXPECT_EQ(outcome.err, complaint) << command;
        const auto help = mStation.ctl({command, "--help"});
        EXPECT_NE(help.out.find("a number that several media have"), std::string::npos) << command;
    }
    ASSERT_EQ(mStation.ctl({"select", "world news hd"}).status, 0);
    EXPECT_EQ(mStation.ctl({"select", "7"}).out, "selected 7 Música Clásica\n");
    ASSERT_EQ(mStation.ctl({"select", "première"}).status, 0);
    EXPECT_EQ(mStation.ctl({"select", "7"}).out, "selected 7 Новости 24\n");
    EXPECT_EQ(mStation.ctl({"select", "7", "--medium", "satellite"}).out,
              "selected 7 Música Clásica\n");
    // Names say more: several that fit are told, whatever is on.
    EXPECT_NE(mStation.ctl({"select", "cinéma"}).err.find("give more of the name, or --medium\n"),
              std::string::npos);
}

TEST_F(IntegrationCtlService, AClosedPipeIsQuiet) {
    const auto outcome =
            run({"/bin/bash", "-c",
                 std::string("set -o pipefail; '") + QORTVCTL + "' channels | head -n 1"},
                mStation.environment);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(linesOf(outcome.out).size(), 1U);
}

TEST_F(IntegrationCtlService, AFullDiskIsAnError) {
    const auto outcome =
            run({"/bin/bash", "-c", std::string("'") + QORTVCTL + "' channels >/dev/full"},
                mStation.environment);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "qortvctl: cannot write: No space left on device\n");
}

TEST(IntegrationCtl, HelpThatCannotBeWrittenIsAnError) {
    Station station;
    for (const char* command : {"", "zap", "record at"}) {
        const auto outcome =
                run({"/bin/bash", "-c",
                     std::string("'") + QORTVCTL + "' " + command + " --help >/dev/full"},
                    station.environment);
        EXPECT_EQ(outcome.status, 1) << command;
        EXPECT_EQ(outcome.err, "qortvctl: cannot write: No space left on device\n") << command;
    }
    const auto outcome =
            run({"/bin/bash", "-c",
                 std::string("set -o pipefail; '") + QORTVCTL + "' --help | head -n 1"},
                station.environment);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
}

TEST_F(IntegrationCtlService, WatchEndsAfterItsCount) {
    const auto watch = mStation.ctl({"watch", "--count", "2", "--for", "600"});
    EXPECT_EQ(watch.status, 0) << watch.err;
    EXPECT_EQ(linesOf(watch.out).size(), 2U);
    EXPECT_EQ(watch.err, "qortvctl: listening\n");
    for (const auto& line : linesOf(watch.out)) EXPECT_EQ(line.rfind("notify", 0), 0U) << line;
}

TEST_F(IntegrationCtlService, WatchFailsWhenItHearsLessThanAskedFor) {
    const auto watch = mStation.ctl({"watch", "--count", "1000000", "--for", "0.2"});
    EXPECT_EQ(watch.status, 1);
    EXPECT_NE(watch.err.find(" of 1000000 notifications in 0.2 s"), std::string::npos) << watch.err;
    EXPECT_EQ(mStation.ctl({"watch", "--for", "0.2"}).status, 0);
}

TEST_F(IntegrationCtlService, WatchPrintsJsonLines) {
    const auto watch = mStation.ctl({"watch", "--json", "--count", "2", "--for", "600"});
    ASSERT_EQ(watch.status, 0) << watch.err;
    for (const auto& line : linesOf(watch.out)) {
        const auto notification = json::parse(line);
        EXPECT_TRUE(notification["notification"].is_string());
        EXPECT_TRUE(notification["fields"].is_object());
    }
}

TEST_F(IntegrationCtlService, WatchEndsCleanlyWithASignal) {
    for (const int number : {SIGINT, SIGTERM}) {
        const auto watch = mStation.startCtl({"watch"});
        // Lines come as they happen, also into a file or a pipe.
        ASSERT_TRUE(eventually([&] { return !watch->out().empty(); })) << watch->err();
        watch->signal(number);
        EXPECT_EQ(watch->wait(), 0);
        EXPECT_EQ(watch->err(), "qortvctl: listening\n");
        EXPECT_EQ(watch->out().back(), '\n');
    }
}

}  // namespace
}  // namespace integration
