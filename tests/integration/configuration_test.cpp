// The settings from the command line, with the service: values, ranges, reports of changes.
#include <gtest/gtest.h>

#include <csignal>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "qortv/configuration.h"
#include "support.h"

namespace integration {
namespace {

using nlohmann::json;

class IntegrationConfiguration : public testing::Test {
  protected:
    void SetUp() override { mStation.startAndWait(); }

    json get(const std::string& key) {
        return json::parse(mStation.ctl({"config", "get", key, "--json"}).out);
    }

    /** Starts to watch, and waits until it listens. */
    std::unique_ptr<Process> startWatch(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"config", "watch"});
        auto watch = mStation.startCtl(arguments);
        EXPECT_TRUE(eventually([&] { return watch->err() == "qortvctl: listening\n"; }))
                << watch->err();
        return watch;
    }

    /** What the television answers to a removal: -2 where nothing is registered. */
    int32_t unregister(const std::string& key) {
        mStation.enter();
        return qortv::connect<qortv::Configuration::Interface>()
                ->a_hidl_a_qortvapi_config_remove_value_changed_callback(key);
    }

    Station mStation;
};

TEST_F(IntegrationConfiguration, EverySettingIsShownWithWhatItCanBe) {
    const auto table = mStation.ctl({"config", "get"});
    EXPECT_EQ(table.status, 0) << table.err;
    EXPECT_EQ(table.out.rfind("KEY ", 0), 0U);
    const json all = json::parse(mStation.ctl({"config", "get", "--json"}).out);
    std::set<std::string> keys;
    for (const auto& item : all) {
        keys.insert(item["key"]);
        EXPECT_NE(table.out.find(std::string(item["key"])), std::string::npos);
        if (item["value"].is_string()) continue;
        EXPECT_LE(item["least"], item["value"]) << item;
        EXPECT_GE(item["greatest"], item["value"]) << item;
        const size_t names = item["choices"].size();
        if (names == 0) continue;
        EXPECT_EQ(item["greatest"], static_cast<int>(names) - 1 + int{item["least"]}) << item;
    }
    // The library knows no setting that the television does not have.
    EXPECT_EQ(keys.size(), qortv::Configuration::keys().size());
    EXPECT_EQ(get("picture.mode")["choices"][2], "cinema");
    EXPECT_TRUE(get("setup.language")["value"].is_string());
}

TEST_F(IntegrationConfiguration, SettingsTakeNumbersNamesAndTexts) {
    auto outcome = mStation.ctl({"config", "set", "picture.brightness", "60"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "picture.brightness is 60\n");
    EXPECT_EQ(get("picture.brightness")["value"], 60);
    EXPECT_EQ(mStation.ctl({"config", "set", "picture.tint", "-5"}).out, "picture.tint is -5\n");
    EXPECT_EQ(get("picture.tint")["least"], -50);
    EXPECT_EQ(mStation.ctl({"config", "set", "picture.mode", "cinema"}).out,
              "picture.mode is cinema\n");
    EXPECT_EQ(get("picture.mode")["value"], 2);
    EXPECT_EQ(mStation.ctl({"config", "set", "general.device_name", "Küche"}).out,
              "general.device_name is Küche\n");
    EXPECT_EQ(get("general.device_name")["value"], "Küche");
    EXPECT_EQ(mStation.ctl({"config", "set", "general.device_name", ""}).status, 0);
    EXPECT_EQ(get("general.device_name")["value"], "Television");
}

TEST_F(IntegrationConfiguration, WhatASettingCannotBeIsToldWithWhatItCan) {
    const auto refused = [&](const std::string& key, const std::string& value) {
        const auto outcome = mStation.ctl({"config", "set", key, value});
        EXPECT_EQ(outcome.status, 1) << key;
        EXPECT_EQ(outcome.out, "") << key;
        return outcome.err;
    };
    EXPECT_EQ(refused("picture.brightness", "300"),
              "qortvctl: picture.brightness can be 0 to 100, not 300\n");
    EXPECT_EQ(refused("sound.mute", "loud"), "qortvctl: sound.mute can be off, on, not 'loud'\n");
    EXPECT_EQ(refused("setup.country", "Utopia"), "qortvctl: setup.country cannot be 'Utopia'\n");
    EXPECT_EQ(refused("picture.smell", "1"), "qortvctl: there is no setting 'picture.smell'\n");
    EXPECT_EQ(mStation.ctl({"config", "get", "picture.smell"}).status, 1);
    EXPECT_EQ(get("picture.brightness")["value"], 50);
}

TEST_F(IntegrationConfiguration, ADisabledSettingKeepsItsNamesAndIsSetWithANote) {
    ASSERT_EQ(mStation.ctl({"config", "set", "picture.mode", "game"}).err, "");
    EXPECT_NE(mStation.ctl({"config", "get", "picture.motion"})
                      .out.find("medium  off, low, medium, strong  disabled\n"),
              std::string::npos);
    const auto outcome = mStation.ctl({"config", "set", "picture.motion", "strong"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "picture.motion is strong\n");
    EXPECT_EQ(outcome.err, "qortvctl: picture.motion is disabled now\n");
    EXPECT_EQ(get("picture.motion")["value"], 3);
}

TEST_F(IntegrationConfiguration, WatchPrintsChangesOfItsKeysOnly) {
    const auto watch = startWatch({"picture.contrast", "setup.language", "--count", "3"});
    const std::vector<std::vector<std::string>> changes = {{"picture.contrast", "41"},
                                                           {"picture.brightness", "42"},
                                                           {"setup.language", "fra"},
                                                           {"picture.contrast", "43"}};
    for (const auto& change : changes) {
        ASSERT_EQ(mStation.ctl({"config", "set", change[0], change[1]}).status, 0);
    }
    EXPECT_EQ(watch->wait(), 0) << watch->err();
    EXPECT_EQ(watch->out(), "picture.contrast 41\nsetup.language fra\npicture.contrast 43\n");
}

TEST_F(IntegrationConfiguration, WatchPrintsJsonLines) {
    const auto watch = startWatch({"--count", "1", "--json"});
    ASSERT_EQ(mStation.ctl({"config", "set", "sound.mode", "speech"}).status, 0);
    EXPECT_EQ(watch->wait(), 0) << watch->err();
    EXPECT_EQ(json::parse(watch->out()),
              (json{{"key", "sound.mode"}, {"value", 2}, {"text", "speech"}}));
}

TEST_F(IntegrationConfiguration, WatchTakesItsRegistrationsBack) {
    for (const int number : {SIGINT, SIGTERM}) {
        const auto watch = startWatch({"sound.bass"});
        watch->signal(number);
        EXPECT_EQ(watch->wait(), 0);
        EXPECT_EQ(unregister("sound.bass"), -2);
    }
    const auto wrong = mStation.ctl({"config", "watch", "sound.bass", "sound.smell"});
    EXPECT_EQ(wrong.status, 1);
    EXPECT_EQ(wrong.err, "qortvctl: there is no setting 'sound.smell'\n");
    EXPECT_EQ(unregister("sound.bass"), -2);
}

TEST_F(IntegrationConfiguration, WatchFailsWhenItHearsLessThanAskedFor) {
    const auto watch =
            mStation.ctl({"config", "watch", "sound.bass", "--count", "1", "--for", "0.2"});
    EXPECT_EQ(watch.status, 1);
    EXPECT_NE(watch.err.find("qortvctl: heard 0 of 1 changes in 0.2 s\n"), std::string::npos);
    EXPECT_EQ(mStation.ctl({"config", "watch", "sound.bass", "--for", "0.2"}).status, 0);
}

TEST_F(IntegrationConfiguration, WatchGoesOnWithAServiceThatComesBack) {
    const auto watch = startWatch({"sound.bass", "--count", "1"});
    mStation.service().signal(SIGKILL);
    mStation.service().wait();
    mStation.startAndWait();
    ASSERT_TRUE(eventually([&] {
        return watch->err().find("the service is back, listening again\n") != std::string::npos;
    })) << watch->err();
    ASSERT_EQ(mStation.ctl({"config", "set", "sound.bass", "7"}).status, 0);
    EXPECT_EQ(watch->wait(), 0) << watch->err();
    EXPECT_EQ(watch->out(), "sound.bass 7\n");
}

TEST(IntegrationConfigurationUsage, MistakesAreNamed) {
    Station station;
    EXPECT_EQ(station.ctl({"config", "set", "picture.mode"}).status, 2);
    EXPECT_EQ(station.ctl({"config", "watch", "--count", "0"}).status, 2);
    for (const char* command : {"get", "set", "watch"}) {
        const auto help = station.ctl({"config", command, "--help"});
        EXPECT_EQ(help.status, 0) << command;
        EXPECT_NE(help.out.find("Example"), std::string::npos) << help.out;
    }
}

}  // namespace
}  // namespace integration
