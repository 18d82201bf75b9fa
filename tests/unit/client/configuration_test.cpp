// The settings on the service's own implementation, and a middleware that the test plays.
#include "qortv/configuration.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "QorTvApiConfigImpl.h"
#include "middleware/config.h"
#include "middleware/result_codes.h"
#include "television/switchboard/switchboard.h"

namespace qortv {
namespace {

using vendor::corvanta::tv::qortvapi::V1_0::implementation::QorTvApiConfigImpl;

std::string refusal(Error::Kind kind, const std::function<void()>& act) {
    try {
        act();
    } catch (const Error& error) {
        EXPECT_EQ(error.kind(), kind) << error.what();
        return error.what();
    }
    return "nothing was refused";
}

/** A television with one number, one choice and one text. */
class ClientConfiguration : public testing::Test {
  protected:
    ClientConfiguration() {
        mTv.on<&a_qortvapi_config_get_value>(
                [this](int16_t group, const char* key, int32_t* value) {
                    mGroups[key] = group;
                    if (key == std::string("setup.country")) return TV_NOT_SUPPORTED;
                    if (mNumbers.count(key) == 0) return TV_NOT_FOUND;
                    *value = mNumbers[key];
                    return TV_OK;
                });
        mTv.on<&a_qortvapi_config_get_str_value>([this](const char* key, char* value,
                                                        uint32_t* length) {
            if (key != std::string("setup.country")) return TV_NOT_FOUND;
            *length = static_cast<uint32_t>(std::snprintf(value, *length, "%s", mCountry.c_str()));
            return TV_OK;
        });
        mTv.on<&a_qortvapi_config_set_value>(
                [this](int16_t, const char* key, int32_t value, int16_t) {
                    if (mNumbers.count(key) == 0) return TV_NOT_FOUND;
                    if (value < -50 || value > 50) return TV_INVALID_ARGUMENT;
                    mNumbers[key] = value;
                    return TV_OK;
                });
        mTv.on<&a_qortvapi_config_set_str_value>([this](const char*, const char* value) {
            if (value == std::string("Utopia")) return TV_INVALID_ARGUMENT;
            mCountry = value;
            return TV_OK;
        });
        mTv.on<&a_qortvapi_config_get_minmaxvalue>([](int16_t, const char* key, int32_t* bounds) {
            const bool choice = key == std::string("picture.mode");
            const int32_t least = choice ? 3 : -50;
            const int32_t greatest = choice ? 5 : 50;
            *bounds = static_cast<int32_t>(static_cast<uint32_t>(greatest) << 16 |
                                           (static_cast<uint32_t>(least) & 0xFFFF));
            return TV_OK;
        });
        mTv.on<&a_qortvapi_config_get_items_enabled>(
                [](int16_t, const char* key, char* names, uint32_t* length, uint32_t* count) {
                    if (key != std::string("picture.mode")) return TV_NOT_SUPPORTED;
                    *length = static_cast<uint32_t>(std::snprintf(names, *length, "dim,cinema,7"));
                    *count = 3;
                    return TV_OK;
                });
        mTv.on<&a_qortvapi_config_is_visible>([](int16_t, const char*) { return 1; });
        mTv.on<&a_qortvapi_config_is_enabled>([](int16_t, const char*) { return 0; });
        mTv.on<&a_qortvapi_config_add_value_changed_callback>([this](const char* key) {
            if (key == std::string("picture.smell")) return TV_NOT_FOUND;
            mRegistered.insert(key);
            return TV_OK;
        });
        mTv.on<&a_qortvapi_config_remove_value_changed_callback>([this](const char* key) {
            const auto found = mRegistered.find(key);
            if (found == mRegistered.end()) return TV_NOT_FOUND;
            mRegistered.erase(found);
            return TV_OK;
        });
    }

    std::map<std::string, int32_t> mNumbers = {{"picture.mode", 4}, {"sound.bass", -7}};
    std::string mCountry = "GBR";
    std::map<std::string, int16_t> mGroups;  // that each key was asked for in
    std::multiset<std::string> mRegistered;
    switchboard::Switchboard mTv;
    Configuration mConfiguration{new QorTvApiConfigImpl};
};

TEST_F(ClientConfiguration, NumbersChoicesAndTextsAreRead) {
    EXPECT_EQ(mConfiguration.get("sound.bass"), ConfigurationValue(-7));
    EXPECT_EQ(mConfiguration.get("setup.country"), ConfigurationValue("GBR"));
    const auto number = mConfiguration.item("sound.bass");
    EXPECT_EQ(number.least, -50);
    EXPECT_EQ(number.greatest, 50);
    EXPECT_TRUE(number.choices.empty());
    EXPECT_TRUE(number.visible);
    EXPECT_FALSE(number.enabled);
    EXPECT_EQ(number.text(), "-7");
    EXPECT_EQ(number.canBe(), "-50 to 50");
    const auto choice = mConfiguration.item("picture.mode");
    EXPECT_EQ(choice.choices, (std::vector<std::string>{"dim", "cinema", "7"}));
    EXPECT_EQ(choice.text(), "cinema");  // names count from the least value
    EXPECT_EQ(choice.canBe(), "dim, cinema, 7");
    const auto text = mConfiguration.item("setup.country");
    EXPECT_TRUE(text.isText());
    EXPECT_EQ(text.text(), "GBR");
}

TEST_F(ClientConfiguration, AChoiceBeyondItsNamesIsANumber) {
    for (const int32_t value : {-2147483647 - 1, 2, 6, 2147483647}) {
        mNumbers["picture.mode"] = value;
        EXPECT_EQ(mConfiguration.item("picture.mode").text(), std::to_string(value));
    }
}

TEST_F(ClientConfiguration, TheGroupIsTheKeysFirstWord) {
    for (const char* key : {"picture.a", "sound.a", "setup.a", "lock.a", "general.a", "input.a"}) {
        EXPECT_THROW(mConfiguration.get(key), Error);
    }
    EXPECT_EQ(mGroups, (std::map<std::string, int16_t>{{"picture.a", CONFIG_GROUP_PICTURE},
                                                       {"sound.a", CONFIG_GROUP_SOUND},
                                                       {"setup.a", CONFIG_GROUP_SETUP},
                                                       {"lock.a", CONFIG_GROUP_LOCK},
                                                       {"general.a", CONFIG_GROUP_GENERAL},
                                                       {"input.a", CONFIG_GROUP_GENERAL}}));
}

TEST_F(ClientConfiguration, WhatIsTypedIsANameOrANumberOrAText) {
    mConfiguration.setText("picture.mode", "dim");
    EXPECT_EQ(mNumbers["picture.mode"], 3);
    mConfiguration.setText("picture.mode", "7");  // the name comes first
    EXPECT_EQ(mNumbers["picture.mode"], 5);
    mConfiguration.setText("picture.mode", "4");
    EXPECT_EQ(mNumbers["picture.mode"], 4);
    mConfiguration.setText("sound.bass", "-50");
    EXPECT_EQ(mNumbers["sound.bass"], -50);
    mConfiguration.setText("setup.country", "FRA");
    EXPECT_EQ(mCountry, "FRA");
}

TEST_F(ClientConfiguration, RefusalsTellWhatTheSettingCanBe) {
    EXPECT_EQ(refusal(Error::Kind::kRefused, [&] { mConfiguration.set("sound.bass", 51); }),
              "sound.bass can be -50 to 50, not 51");
    for (const char* text : {"", "x", "5x", "99999999999"}) {
        EXPECT_EQ(refusal(Error::Kind::kArgument,
                          [&] { mConfiguration.setText("sound.bass", text); }),
                  std::string("sound.bass can be -50 to 50, not '") + text + "'");
    }
    EXPECT_EQ(refusal(Error::Kind::kRefused,
                      [&] { mConfiguration.set("setup.country", std::string("Utopia")); }),
              "setup.country cannot be 'Utopia'");
    EXPECT_EQ(refusal(Error::Kind::kRefused, [&] { mConfiguration.get("picture.smell"); }),
              "there is no setting 'picture.smell'");
    EXPECT_EQ(mNumbers["sound.bass"], -7);
}

TEST_F(ClientConfiguration, AWatchTakesItsRegistrationsBack) {
    mRegistered.insert("sound.bass");  // somebody else's
    {
        const ConfigurationWatch watch(mConfiguration, {"sound.bass", "picture.mode"});
        EXPECT_EQ(mRegistered,
                  (std::multiset<std::string>{"picture.mode", "sound.bass", "sound.bass"}));
    }
    EXPECT_EQ(mRegistered, (std::multiset<std::string>{"sound.bass"}));
    EXPECT_EQ(refusal(Error::Kind::kRefused,
                      [&] {
                          ConfigurationWatch(mConfiguration, {"picture.mode", "picture.smell"});
                      }),
              "there is no setting 'picture.smell'");
    EXPECT_EQ(mRegistered, (std::multiset<std::string>{"sound.bass"}));
}

class ClientConfigurationListener : public testing::Test, public ConfigurationListener {
  protected:
    ClientConfigurationListener() : ConfigurationListener({"123456789", "sound.bass"}) {}
    void onConfigurationChange(const ConfigurationChange& change) override {
        mChanges.push_back(change);
    }
    void onNotification(const Notification& notification) override {
        mOthers.emplace_back(notification.method);
    }

    std::vector<ConfigurationChange> mChanges;
    std::vector<std::string> mOthers;
};

TEST_F(ClientConfigurationListener, KnowsKeysByTheirChecksums) {
    constexpr uint64_t kCheck = 0xCBF43926;  // of "123456789", as CRC-32 is usually told
    notifyConfig(CONFIG_NFY_VALUE_CHANGED, 0, kCheck, 0, 0xFFFFFFFB, 2);
    ASSERT_EQ(mChanges.size(), 1U);
    EXPECT_EQ(mChanges[0].key, "123456789");
    EXPECT_EQ(mChanges[0].value, -5);
    EXPECT_EQ(mChanges[0].flag, 2U);
    EXPECT_TRUE(mOthers.empty());
    notifyConfig(CONFIG_NFY_VALUE_CHANGED, 0, kCheck + 1, 0, 0, 0);
    notifyConfig(CONFIG_NFY_VALUE_CHANGED + 1, 0, kCheck, 0, 0, 0);
    EXPECT_EQ(mChanges.size(), 1U);
    EXPECT_EQ(mOthers.size(), 2U);
}

TEST(ClientConfigurationKeys, AreThoseThatAreDocumented) {
    std::ifstream document(QORTV_CONFIGURATION_DOCUMENT);
    std::vector<std::string> documented;
    for (std::string line; std::getline(document, line);) {
        if (line.rfind("| `", 0) == 0) documented.push_back(line.substr(3, line.find('`', 3) - 3));
    }
    EXPECT_EQ(Configuration::keys(), documented);
    EXPECT_FALSE(documented.empty());
}

}  // namespace
}  // namespace qortv
