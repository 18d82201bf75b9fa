// Configuration as an application sees it, the table behind it, and the page that lists it.
#include "middleware/config.h"

#include <fmt/format.h>

#include <fstream>
#include <set>
#include <sstream>
#include <thread>

#include "middleware/audio_info.h"
#include "middleware/av_mode.h"
#include "middleware/hbbtv.h"
#include "middleware/rating.h"
#include "middleware/screenmode.h"
#include "middleware/time.h"
#include "middleware/volctrl.h"
#include "support/notification_log.h"
#include "support/television_test.h"
#include "television/core/core.h"
#include "television/settings/config_items.h"

namespace {

using television::ConfigItem;
using television::ItemKind;
using television::kConfigItemCount;
using television::kConfigItems;

constexpr int16_t kGeneral = CONFIG_GROUP_GENERAL;
constexpr int16_t kPicture = CONFIG_GROUP_PICTURE;
constexpr int16_t kSound = CONFIG_GROUP_SOUND;
constexpr int16_t kSetup = CONFIG_GROUP_SETUP;
constexpr int16_t kLock = CONFIG_GROUP_LOCK;

/** A pointer that cannot be written, as a failed mapping gives. */
template <typename T>
T* badPointer() {
    return reinterpret_cast<T*>(~uintptr_t{0});
}

uint64_t value(void* pointer) {
    return reinterpret_cast<uintptr_t>(pointer);
}
void changed(int32_t code, void*, void* key, void* group, void* number, void* flag) {
    NotificationLog::instance().add("changed", code,
                                    {value(key), value(group), value(number), value(flag)});
}
SeenNotification report(const char* key, int16_t group, int32_t number, int32_t flag = 0) {
    return {"changed",
            CONFIG_NFY_VALUE_CHANGED,
            {television::keyCode(key), static_cast<uint64_t>(group), static_cast<uint32_t>(number),
             static_cast<uint32_t>(flag)}};
}

class TelevisionConfiguration : public TelevisionTest {
  protected:
    TelevisionConfiguration() { log.clear(); }
    ~TelevisionConfiguration() override {
        tv.reset();
        log.clear();
    }

    static int32_t get(int16_t group, const char* key) {
        int32_t number = -999;
        EXPECT_EQ(a_qortvapi_config_get_value(group, key, &number), TV_OK) << key;
        return number;
    }
    static int32_t set(int16_t group, const char* key, int32_t number, int16_t flag = 0) {
        return a_qortvapi_config_set_value(group, key, number, flag);
    }
    static std::string text(const char* key, uint32_t room = 256) {
        std::vector<char> buffer(room + 1, '#');
        uint32_t length = room;
        EXPECT_EQ(a_qortvapi_config_get_str_value(key, buffer.data(), &length), TV_OK) << key;
        EXPECT_EQ(buffer[room], '#') << "no more than there is room for";
        EXPECT_EQ(length, std::strlen(buffer.data()));
        return buffer.data();
    }
    static std::string choices(int16_t group, const char* key, uint32_t& count,
                               uint32_t room = 256) {
        std::vector<char> buffer(room + 1, '#');
        uint32_t length = room;
        EXPECT_EQ(a_qortvapi_config_get_items_enabled(group, key, buffer.data(), &length, &count),
                  TV_OK)
                << key;
        EXPECT_EQ(buffer[room], '#') << "no more than there is room for";
        EXPECT_EQ(length, std::strlen(buffer.data()));
        return buffer.data();
    }
    static void listen() { a_qortvapi_config_reg_callback(changed, nullptr); }

    NotificationLog& log = NotificationLog::instance();
};

/** The columns of an item's row in the documentation that follow from the table. */
std::string rowOf(const ConfigItem& item) {
    static const char* const kinds[] = {"switch", "number",   "choice",
                                        "text",   "language", "country"};
    std::string values;
    switch (item.kind) {
        case ItemKind::kNumber:
            values = fmt::format("{} to {}", item.least, item.greatest);
            break;
        case ItemKind::kText:
            values = fmt::format("{} to {} bytes", item.least, item.greatest);
            break;
        case ItemKind::kLanguage:
            values = "three small letters";
            break;
        case ItemKind::kCountry:
            values = "three capitals";
            break;
        default:
            for (const std::string& name : item.choices()) {
                values += (values.empty() ? "" : ", ") + name;
            }
    }
    const std::string delivered = item.isText() ? item.text : std::to_string(item.delivered);
    std::string state = item.shown ? "always" : "never shown";
    if (item.enabled.key != nullptr) {
        state = fmt::format("`{}` is {}{}", item.enabled.key, item.enabled.equal ? "" : "not ",
                            item.enabled.value);
    }
    return fmt::format("| `{}` | {} | {} | {} | {} |", item.key, kinds[static_cast<int>(item.kind)],
                       values, delivered.empty() ? "none" : delivered, state);
}

TEST(TelevisionConfigurationTable, IsTheDocumentedOne) {
    std::ifstream file(QORTV_CONFIGURATION_PAGE);
    ASSERT_TRUE(file.good()) << QORTV_CONFIGURATION_PAGE;
    std::vector<std::string> rows;
    int group = -1;
    std::vector<int> groups;
    for (std::string line; std::getline(file, line);) {
        if (line.rfind("## Group ", 0) == 0) group = std::stoi(line.substr(9));
        if (line.rfind("| `", 0) != 0) continue;
        rows.push_back(line);
        groups.push_back(group);
    }
    EXPECT_EQ(rows.size(), kConfigItemCount);
    for (size_t i = 0; i < kConfigItemCount; ++i) {
        const std::string expected = rowOf(kConfigItems[i]);
        const auto row = std::find_if(rows.begin(), rows.end(), [&](const std::string& line) {
            return line.rfind(expected, 0) == 0;
        });
        if (row == rows.end()) {
            ADD_FAILURE() << "no row " << expected;
        } else {
            EXPECT_EQ(groups[static_cast<size_t>(row - rows.begin())], kConfigItems[i].group)
                    << expected;
        }
    }
}

TEST(TelevisionConfigurationTable, MakesSense) {
    static const std::set<std::string> prefixes[] = {
            {"general", "input"}, {"picture"}, {"sound"}, {"setup"}, {"lock"}};
    std::set<std::string> keys;
    std::set<std::string> names;
    std::set<uint32_t> checksums;
    EXPECT_GE(kConfigItemCount, 40u);
    for (size_t i = 0; i < kConfigItemCount; ++i) {
        const ConfigItem& item = kConfigItems[i];
        const std::string key = item.key;
        EXPECT_TRUE(keys.insert(key).second) << key;
        EXPECT_TRUE(names.insert(item.name()).second) << key;
        EXPECT_TRUE(checksums.insert(television::keyCode(key)).second) << key;
        EXPECT_EQ(television::configItem(key), &item);
        EXPECT_EQ(television::configItemKept(item.name()), &item);
        ASSERT_TRUE(item.group >= 0 && item.group < static_cast<int>(std::size(prefixes))) << key;
        EXPECT_EQ(prefixes[item.group].count(key.substr(0, key.find('.'))), 1u) << key;
        EXPECT_LE(item.least, item.greatest) << key;
        if (item.isText()) {
            EXPECT_TRUE(*item.text == '\0' || item.accepts(std::string(item.text))) << key;
        } else {
            EXPECT_TRUE(item.accepts(int32_t{item.delivered})) << key;
        }
        if (item.kind == ItemKind::kSwitch || item.kind == ItemKind::kChoice) {
            EXPECT_EQ(item.least, 0) << key;
            EXPECT_EQ(item.choices().size(), static_cast<size_t>(item.greatest) + 1) << key;
        } else {
            EXPECT_TRUE(item.choices().empty()) << key;
        }
        if (item.enabled.key != nullptr) {
            const ConfigItem* const other = television::configItem(item.enabled.key);
            ASSERT_NE(other, nullptr) << key;
            EXPECT_TRUE(!other->isText() && other->accepts(item.enabled.value)) << key;
        }
    }
    const auto greatest = [](const char* key) {
        const ConfigItem* const item = television::configItem(key);
        return item == nullptr ? -1 : int{item->greatest};
    };
    EXPECT_EQ(greatest("picture.mode"), PICTURE_MODE_COUNT - 1);
    EXPECT_EQ(greatest("picture.screen_mode"), SCREEN_MODE_COUNT - 1);
    EXPECT_EQ(greatest("sound.mode"), SOUND_EFFECT_COUNT - 1);
    EXPECT_EQ(greatest("sound.volume"), VOLCTRL_MAX);
    EXPECT_EQ(greatest("sound.headphone_volume"), VOLCTRL_MAX);
    EXPECT_EQ(greatest("sound.description_volume"), VOLCTRL_MAX);
    EXPECT_EQ(greatest("setup.time_source"), TIME_SYNC_SOURCE_USER);
    EXPECT_EQ(greatest("lock.age"), RATING_AGE_MAX);
    EXPECT_EQ(television::keyCode(""), 0u);
    EXPECT_EQ(television::keyCode("a"), 0xE8B7BE43u);
}

TEST_F(TelevisionConfiguration, NumbersAreKeptAndChecked) {
    start();
    EXPECT_EQ(get(kPicture, "picture.brightness"), 50);
    EXPECT_EQ(set(kPicture, "picture.brightness", 0), TV_OK);
    EXPECT_EQ(set(kSound, "sound.balance", -50), TV_OK);
    EXPECT_EQ(a_qortvapi_config_set_value_for_all_elems(kPicture, "picture.gamma", 2, 0), TV_OK);
    for (const int32_t wrong : {-1, 101, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(set(kPicture, "picture.brightness", wrong), TV_INVALID_ARGUMENT) << wrong;
        EXPECT_EQ(a_qortvapi_config_set_value_for_all_elems(kPicture, "picture.gamma", wrong, 0),
                  TV_INVALID_ARGUMENT);
    }
    restart();
    EXPECT_EQ(get(kPicture, "picture.brightness"), 0);
    EXPECT_EQ(get(kSound, "sound.balance"), -50);
    EXPECT_EQ(get(kPicture, "picture.gamma"), 2);
    EXPECT_EQ(get(kPicture, "picture.contrast"), 85);
}

TEST_F(TelevisionConfiguration, EveryItemTakesItsRangeAndNoMore) {
    start();
    for (size_t i = 0; i < kConfigItemCount; ++i) {
        const ConfigItem& item = kConfigItems[i];
        if (item.isText()) continue;
        int32_t packed = 0;
        ASSERT_EQ(a_qortvapi_config_get_minmaxvalue(item.group, item.key, &packed), TV_OK);
        const auto least = static_cast<int16_t>(static_cast<uint32_t>(packed) & 0xFFFF);
        const auto greatest = static_cast<int16_t>(static_cast<uint32_t>(packed) >> 16);
        EXPECT_EQ(least, item.least) << item.key;
        EXPECT_EQ(greatest, item.greatest) << item.key;
        for (const int32_t number : {int32_t{greatest}, int32_t{least}}) {
            EXPECT_EQ(set(item.group, item.key, number), TV_OK) << item.key;
            EXPECT_EQ(get(item.group, item.key), number) << item.key;
        }
        EXPECT_EQ(set(item.group, item.key, greatest + 1), TV_INVALID_ARGUMENT) << item.key;
        EXPECT_EQ(set(item.group, item.key, least - 1), TV_INVALID_ARGUMENT) << item.key;
        EXPECT_EQ(get(item.group, item.key), least) << item.key;
    }
}

TEST_F(TelevisionConfiguration, KeysAreFoundInTheirGroupOnly) {
    start();
    int32_t number = 7;
    const std::string longKey(100'000, 'k');
    const std::pair<int16_t, const char*> unknown[] = {{kSound, "picture.brightness"},
                                                       {kPicture, "picture"},
                                                       {kPicture, ""},
                                                       {kPicture, "picture.brightness "},
                                                       {kPicture, longKey.c_str()},
                                                       {-1, "picture.brightness"},
                                                       {INT16_MIN, "picture.brightness"},
                                                       {INT16_MAX, "picture.brightness"}};
    char buffer[64] = "kept";
    uint32_t length = sizeof buffer;
    uint32_t count = 3;
    for (const auto& [group, key] : unknown) {
        EXPECT_EQ(a_qortvapi_config_get_value(group, key, &number), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_config_get_minmaxvalue(group, key, &number), TV_NOT_FOUND);
        EXPECT_EQ(set(group, key, 1), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_config_set_value_for_all_elems(group, key, 1, 0), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_config_is_visible(group, key), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_config_is_enabled(group, key), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_config_get_items_enabled(group, key, buffer, &length, &count),
                  TV_NOT_FOUND);
    }
    EXPECT_EQ(a_qortvapi_config_get_value(kPicture, nullptr, &number), TV_INVALID_ARGUMENT);
    EXPECT_EQ(set(kPicture, nullptr, 1), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_config_is_visible(kPicture, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_config_get_value(kPicture, "picture.brightness", nullptr),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_config_get_minmaxvalue(kPicture, "picture.brightness",
                                                badPointer<int32_t>()),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_config_get_value(kSetup, "setup.country", &number), TV_NOT_SUPPORTED);
    EXPECT_EQ(set(kSetup, "setup.country", 1), TV_NOT_SUPPORTED);
    EXPECT_EQ(a_qortvapi_config_get_str_value("sound.bass", buffer, &length), TV_NOT_SUPPORTED);
    EXPECT_EQ(a_qortvapi_config_get_str_value("none.such", buffer, &length), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_config_set_str_value("sound.bass", "1"), TV_NOT_SUPPORTED);
    EXPECT_EQ(a_qortvapi_config_reset_values(5), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_config_reset_values(-1), TV_NOT_FOUND);
    EXPECT_EQ(number, 7);
    EXPECT_STREQ(buffer, "kept");
    EXPECT_EQ(length, sizeof buffer);
    EXPECT_EQ(count, 3u);
}

TEST_F(TelevisionConfiguration, Texts) {
    start();
    EXPECT_EQ(text("general.device_name"), "Television");
    EXPECT_EQ(text("setup.country"), "GBR");
    EXPECT_EQ(text("setup.audio_language_2"), "");
    EXPECT_EQ(a_qortvapi_config_set_str_value("general.device_name", "Küche"), TV_OK);
    EXPECT_EQ(a_qortvapi_config_set_str_value("setup.country", "AUT"), TV_OK);
    EXPECT_EQ(a_qortvapi_config_set_str_value("setup.language", "deu"), TV_OK);
    for (const char* wrong : {"aut", "AU", "AUTX", "A T", "ÖS"}) {
        EXPECT_EQ(a_qortvapi_config_set_str_value("setup.country", wrong), TV_INVALID_ARGUMENT);
    }
    EXPECT_EQ(a_qortvapi_config_set_str_value("setup.language", "DEU"), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_config_set_str_value("setup.language", nullptr), TV_INVALID_ARGUMENT);
    for (const std::string& wrong : {std::string(65, 'n'), std::string(100'000, 'n'),
                                     std::string("a\nb"), std::string(1, '\x7F')}) {
        EXPECT_EQ(a_qortvapi_config_set_str_value("general.device_name", wrong.c_str()),
                  TV_INVALID_ARGUMENT);
    }
    restart();
    EXPECT_EQ(text("general.device_name"), "Küche");
    EXPECT_EQ(text("general.device_name", 4), "Kü") << "cut";
    EXPECT_EQ(text("general.device_name", 3), "K") << "at a character's edge";
    EXPECT_EQ(text("setup.country"), "AUT");
    EXPECT_EQ(text("setup.language"), "deu");
    EXPECT_EQ(a_qortvapi_config_set_str_value("setup.country", ""), TV_OK);
    EXPECT_EQ(text("setup.country"), "GBR");
    char buffer[8] = "kept";
    uint32_t length = 0;
    EXPECT_EQ(a_qortvapi_config_get_str_value("setup.country", buffer, &length),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_config_get_str_value("setup.country", buffer, nullptr),
              TV_INVALID_ARGUMENT);
    length = UINT32_MAX;
    EXPECT_EQ(a_qortvapi_config_get_str_value("setup.country", nullptr, &length),
              TV_INVALID_ARGUMENT);
    EXPECT_STREQ(buffer, "kept");
    EXPECT_EQ(a_qortvapi_config_get_str_value("setup.country", buffer, &length), TV_OK);
    EXPECT_STREQ(buffer, "GBR");
    EXPECT_EQ(length, 3u);
}

TEST_F(TelevisionConfiguration, ReportsOfTheKeysThatWereAskedFor) {
    start();
    listen();
    const char* const key = "picture.tint";
    EXPECT_EQ(a_qortvapi_config_remove_value_changed_callback(key), TV_NOT_FOUND);
    EXPECT_EQ(set(kPicture, key, 1), TV_OK) << "no client asked for it";
    EXPECT_EQ(a_qortvapi_config_add_value_changed_callback(key), TV_OK);
    EXPECT_EQ(a_qortvapi_config_add_value_changed_callback(key), TV_OK);
    EXPECT_EQ(set(kPicture, key, 1), TV_OK) << "no change";
    EXPECT_EQ(set(kPicture, key, 101), TV_INVALID_ARGUMENT);
    EXPECT_EQ(set(kPicture, key, -50, -2), TV_OK);
    EXPECT_EQ(set(kPicture, "picture.colour", 3), TV_OK);
    EXPECT_EQ(a_qortvapi_config_remove_value_changed_callback(key), TV_OK);
    EXPECT_EQ(set(kPicture, key, 0, 9), TV_OK) << "the other registration stands";
    EXPECT_EQ(a_qortvapi_config_remove_value_changed_callback(key), TV_OK);
    EXPECT_EQ(set(kPicture, key, 5), TV_OK);
    EXPECT_EQ(a_qortvapi_config_remove_value_changed_callback(key), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_config_add_value_changed_callback("setup.country"), TV_OK);
    EXPECT_EQ(a_qortvapi_config_set_str_value_ex("setup.country", "GBR", 1), TV_OK) << "as it is";
    EXPECT_EQ(a_qortvapi_config_set_str_value_ex("setup.country", "POL", 0xFFFFFFF0), TV_OK);
    EXPECT_EQ(a_qortvapi_config_set_str_value("setup.country", "CZE"), TV_OK);
    EXPECT_EQ(
            log.wait("changed", 4),
            (std::vector<SeenNotification>{
                    report(key, kPicture, -50, -2), report(key, kPicture, 0, 9),
                    report("setup.country", kSetup, 0, -16), report("setup.country", kSetup, 0)}));
    for (const char* unknown : {"", "none.such"}) {
        EXPECT_EQ(a_qortvapi_config_add_value_changed_callback(unknown), TV_NOT_FOUND);
        EXPECT_EQ(a_qortvapi_config_remove_value_changed_callback(unknown), TV_NOT_FOUND);
    }
    EXPECT_EQ(a_qortvapi_config_add_value_changed_callback(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_config_remove_value_changed_callback(nullptr), TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionConfiguration, OwnersAndItemsHaveOneValue) {
    startWithDemo();
    listen();
    for (const char* key : {"sound.volume", "sound.mute", "picture.mode", "setup.time_source"}) {
        EXPECT_EQ(a_qortvapi_config_add_value_changed_callback(key), TV_OK);
    }
    EXPECT_EQ(set(kSound, "sound.volume", 33), TV_OK);
    EXPECT_EQ(a_qortvapi_volctrl_getVolume(), 33);
    EXPECT_EQ(a_qortvapi_volctrl_incrVolume(), 34);
    EXPECT_EQ(get(kSound, "sound.volume"), 34);
    EXPECT_EQ(a_qortvapi_volctrl_setMute(true), TV_OK);
    EXPECT_EQ(get(kSound, "sound.mute"), 1);
    EXPECT_EQ(a_qortvapi_av_mode_set_picture_mode(PICTURE_MODE_CINEMA), TV_OK);
    EXPECT_EQ(get(kPicture, "picture.mode"), PICTURE_MODE_CINEMA);
    EXPECT_EQ(set(kSound, "sound.mode", SOUND_EFFECT_SPEECH), TV_OK);
    EXPECT_EQ(a_qortvapi_av_mode_get_sound_effect(), SOUND_EFFECT_SPEECH);
    EXPECT_EQ(set(kSound, "sound.description", 1), TV_OK);
    uint32_t described = 0;
    EXPECT_EQ(a_qortvapi_audio_info_get_value(AUDIO_INFO_VALUE_DESCRIPTION_ON, &described), TV_OK);
    EXPECT_EQ(described, 1u);
    EXPECT_EQ(c_hbbtv_set_default_audio_lang("fra"), TV_OK);
    EXPECT_EQ(text("setup.audio_language"), "fra");
    // The clock itself follows, not only the remembered setting.
    EXPECT_EQ(set(kSetup, "setup.time_source", TIME_SYNC_SOURCE_SYSTEM, -7), TV_OK);
    uint32_t source = 9;
    EXPECT_EQ(a_qortvapi_time_get_sync_source(&source), TV_OK);
    EXPECT_EQ(source, uint32_t{TIME_SYNC_SOURCE_SYSTEM});
    EXPECT_EQ(a_qortvapi_time_set_sync_source(TIME_SYNC_SOURCE_BROADCAST), TV_OK);
    EXPECT_EQ(get(kSetup, "setup.time_source"), TIME_SYNC_SOURCE_BROADCAST);
    EXPECT_EQ(log.wait("changed", 6),
              (std::vector<SeenNotification>{
                      report("sound.volume", kSound, 33), report("sound.volume", kSound, 34),
                      report("sound.mute", kSound, 1),
                      report("picture.mode", kPicture, PICTURE_MODE_CINEMA),
                      report("setup.time_source", kSetup, TIME_SYNC_SOURCE_SYSTEM, -7),
                      report("setup.time_source", kSetup, TIME_SYNC_SOURCE_BROADCAST)}));
}

TEST_F(TelevisionConfiguration, ResetOfAGroup) {
    start();
    listen();
    EXPECT_EQ(set(kSound, "sound.volume", 70), TV_OK);
    EXPECT_EQ(set(kSound, "sound.balance", 20), TV_OK);
    EXPECT_EQ(set(kPicture, "picture.backlight", 10), TV_OK);
    EXPECT_EQ(set(kGeneral, "input.hdmi2.connected", 1), TV_OK);
    EXPECT_EQ(a_qortvapi_config_set_str_value("general.device_name", "Attic"), TV_OK);
    EXPECT_EQ(set(kSetup, "setup.time_source", TIME_SYNC_SOURCE_SYSTEM), TV_OK);
    EXPECT_EQ(a_qortvapi_config_add_value_changed_callback("sound.volume"), TV_OK);
    EXPECT_EQ(a_qortvapi_config_add_value_changed_callback("sound.treble"), TV_OK);
    EXPECT_EQ(a_qortvapi_config_reset_values(kSound), TV_OK);
    EXPECT_EQ(a_qortvapi_volctrl_getVolume(), 20);
    EXPECT_EQ(get(kSound, "sound.balance"), 0);
    EXPECT_EQ(get(kPicture, "picture.backlight"), 10);
    EXPECT_EQ(log.wait("changed", 1),
              std::vector<SeenNotification>{report("sound.volume", kSound, 20)});
    EXPECT_EQ(a_qortvapi_config_reset_values(kGeneral), TV_OK);
    EXPECT_EQ(text("general.device_name"), "Television");
    EXPECT_EQ(get(kGeneral, "input.hdmi2.connected"), 1) << "no menu shows it";
    EXPECT_EQ(a_qortvapi_config_reset_values(kSetup), TV_OK);
    uint32_t source = 9;
    EXPECT_EQ(a_qortvapi_time_get_sync_source(&source), TV_OK);
    EXPECT_EQ(source, uint32_t{TIME_SYNC_SOURCE_BROADCAST});
    restart();
    EXPECT_EQ(get(kSound, "sound.volume"), 20);
}

TEST_F(TelevisionConfiguration, StatesAndChoices) {
    start();
    EXPECT_EQ(a_qortvapi_config_is_visible(kPicture, "picture.mode"), 1);
    EXPECT_EQ(a_qortvapi_config_is_visible(kGeneral, "input.av.connected"), 0);
    EXPECT_EQ(a_qortvapi_config_is_enabled(kSound, "sound.bass"), 0);
    uint32_t count = 9;
    EXPECT_EQ(choices(kPicture, "picture.noise_reduction", count), "off,low,medium,strong,auto");
    EXPECT_EQ(count, 5u);
    EXPECT_EQ(choices(kPicture, "picture.film_mode", count), "off,on");
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(choices(kPicture, "picture.noise_reduction", count, 8), "off,low");
    EXPECT_EQ(count, 2u) << "whole ones";
    EXPECT_EQ(choices(kPicture, "picture.noise_reduction", count, 7), "off");
    EXPECT_EQ(choices(kPicture, "picture.noise_reduction", count, 3), "");
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(set(kPicture, "picture.mode", PICTURE_MODE_GAME), TV_OK);
    EXPECT_EQ(set(kSound, "sound.mode", SOUND_EFFECT_USER), TV_OK);
    EXPECT_EQ(a_qortvapi_config_is_enabled(kSound, "sound.bass"), 1);
    EXPECT_EQ(a_qortvapi_config_is_enabled(kPicture, "picture.film_mode"), 0);
    EXPECT_EQ(choices(kPicture, "picture.film_mode", count), "off,on") << "what it would have";
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(set(kPicture, "picture.film_mode", 0), TV_OK) << "settable all the same";
    char buffer[8] = "kept";
    uint32_t length = 0;
    count = 9;
    EXPECT_EQ(a_qortvapi_config_get_items_enabled(kSound, "sound.bass", buffer, &length, &count),
              TV_NOT_SUPPORTED);
    const auto get = [&](char* to, uint32_t* room) {
        return a_qortvapi_config_get_items_enabled(kPicture, "picture.mode", to, room, &count);
    };
    EXPECT_EQ(get(buffer, &length), TV_INVALID_ARGUMENT);
    EXPECT_EQ(get(buffer, nullptr), TV_INVALID_ARGUMENT);
    length = 8;
    EXPECT_EQ(get(nullptr, &length), TV_INVALID_ARGUMENT);
    EXPECT_EQ(count, 9u);
    EXPECT_STREQ(buffer, "kept");
    length = 8;
    EXPECT_EQ(a_qortvapi_config_get_items_enabled(kSound, "sound.mute", buffer, &length, nullptr),
              TV_OK);
    EXPECT_STREQ(buffer, "off,on");
}

TEST_F(TelevisionConfiguration, WorldAndResolution) {
    startWithDemo();
    EXPECT_EQ(a_qortvapi_config_set_android_world_info(44, 7), TV_OK);
    EXPECT_EQ(a_qortvapi_config_set_android_world_info(-1, 7), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_config_set_android_world_info(45, -1), TV_INVALID_ARGUMENT);
    const auto resolution = [] {
        CONFIG_VIDEO_RESOLUTION_T now;
        std::memset(&now, 0xEE, sizeof now);
        EXPECT_EQ(a_qortvapi_config_get_video_resolution(&now), TV_OK);
        EXPECT_LT(strnlen(now.s_text, sizeof now.s_text), sizeof now.s_text);
        return fmt::format("{} {} {} {} {} {}", now.ui1_valid, now.ui4_width, now.ui4_height,
                           now.ui4_frame_rate, now.ui1_interlaced, now.s_text);
    };
    const auto select = [](uint32_t id) {
        EXPECT_EQ(a_qortvapi_channellist_set_current_channel(id), TV_OK);
    };
    select(channel(SVL_ID_TERRESTRIAL, "Première"));
    EXPECT_EQ(resolution(), "1 1920 1080 25000 1 1920x1080i");
    select(channel(SVL_ID_SATELLITE, "日本の旅"));
    EXPECT_EQ(resolution(), "1 3840 2160 50000 0 3840x2160p");
    select(channel(SVL_ID_TERRESTRIAL, "Radio Ålesund"));
    EXPECT_EQ(resolution(), "0 0 0 0 0 ");
    EXPECT_EQ(a_qortvapi_config_get_video_resolution(nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_config_get_video_resolution(badPointer<CONFIG_VIDEO_RESOLUTION_T>()),
              TV_INVALID_ARGUMENT);
    restart();
    EXPECT_EQ(get(kGeneral, "general.android_country"), 44);
    EXPECT_EQ(get(kGeneral, "general.android_language"), 7);
}

TEST_F(TelevisionConfiguration, DamagedValuesAreAsDelivered) {
    {
        television::Core core(options.state);
        core.remember("config.picture.backlight", "lots");
        core.remember("config.picture.colour", "101");
        core.remember("config.setup.country", "Nowhere");
        core.remember("picture.mode", "99999999999");
    }
    start();
    EXPECT_EQ(get(kPicture, "picture.backlight"), 80);
    EXPECT_EQ(get(kPicture, "picture.colour"), 50);
    EXPECT_EQ(get(kPicture, "picture.mode"), 0);
    EXPECT_EQ(text("setup.country"), "GBR");
}

TEST_F(TelevisionConfiguration, ReportsComeInTheOrderOfTheChanges) {
    start();
    listen();
    const char* const key = "lock.keys";
    EXPECT_EQ(a_qortvapi_config_add_value_changed_callback(key), TV_OK);
    constexpr int kRounds = 20;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([=] {
            for (int i = 0; i < kRounds; ++i) {
                EXPECT_EQ(set(kLock, key, (i + thread) % 2), TV_OK);
                EXPECT_EQ(a_qortvapi_config_add_value_changed_callback("lock.pin"), TV_OK);
                a_qortvapi_config_is_enabled(kLock, "lock.channels");
                EXPECT_EQ(a_qortvapi_config_remove_value_changed_callback("lock.pin"), TV_OK);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(set(kLock, key, 1 - get(kLock, key), 77), TV_OK);
    std::vector<SeenNotification> seen;
    for (size_t count = 1; seen.empty() || seen.back().values[3] != 77; ++count) {
        seen = log.wait("changed", count);
        ASSERT_GE(seen.size(), count);
    }
    for (size_t i = 1; i < seen.size(); ++i) {
        EXPECT_NE(seen[i].values[2], seen[i - 1].values[2]) << "a change each time";
    }
    EXPECT_EQ(seen.back().values[2], static_cast<uint64_t>(get(kLock, key)));
}

}  // namespace
