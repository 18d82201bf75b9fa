#include "config_items.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "calls_time.h"
#include "middleware/av_mode.h"
#include "middleware/config.h"
#include "middleware/rating.h"
#include "middleware/screenmode.h"
#include "middleware/time.h"
#include "middleware/volctrl.h"

namespace television {
namespace {

constexpr int16_t kGeneral = CONFIG_GROUP_GENERAL;
constexpr int16_t kPicture = CONFIG_GROUP_PICTURE;
constexpr int16_t kSound = CONFIG_GROUP_SOUND;
constexpr int16_t kSetup = CONFIG_GROUP_SETUP;
constexpr int16_t kLock = CONFIG_GROUP_LOCK;

constexpr auto kSwitch = ItemKind::kSwitch;
constexpr auto kNumber = ItemKind::kNumber;
constexpr auto kChoice = ItemKind::kChoice;
constexpr auto kText = ItemKind::kText;
constexpr auto kLanguage = ItemKind::kLanguage;
constexpr auto kCountry = ItemKind::kCountry;

constexpr bool kHidden = false;
constexpr const char* kOwn = nullptr;
constexpr ItemCondition kAlways = {};
constexpr ItemCondition kNotInGames = {"picture.mode", PICTURE_MODE_GAME, false};
constexpr ItemCondition kUserSound = {"sound.mode", SOUND_EFFECT_USER};
constexpr ItemCondition kDigitalSound = {"sound.digital_output", 0, false};
constexpr ItemCondition kDescription = {"sound.description", 1};
constexpr ItemCondition kSubtitles = {"setup.subtitles", 0, false};
constexpr ItemCondition kPin = {"lock.pin", 1};
constexpr ItemCondition kRatings = {"lock.ratings", 1};

constexpr int16_t kLetters = 3;  ///< of a code

}  // namespace

// Each row has a row in docs/configuration.md.
// clang-format off
const ConfigItem kConfigItems[] = {
    // group   key                             kind       least  greatest  delivered  names or text
    //         kept under, enabled while, shown, owner's function
    {kGeneral, "general.device_name",          kText,     1,     64,       0,         "Television"},
    {kGeneral, "general.store_mode",           kSwitch,   0,     1,        0,         ""},
    {kGeneral, "general.power_on",             kChoice,   0,     2,        0,         "last,on,standby"},
    {kGeneral, "general.led",                  kSwitch,   0,     1,        1,         ""},
    {kGeneral, "general.quick_start",          kSwitch,   0,     1,        0,         ""},
    {kGeneral, "general.auto_standby",         kNumber,   0,     8,        4,         ""},  // hours, 0: never
    {kGeneral, "general.wake_on_lan",          kSwitch,   0,     1,        0,         "",
               "wake.ethernet"},
    {kGeneral, "general.wake_on_wlan",         kSwitch,   0,     1,        0,         "",
               "wake.wifi"},
    {kGeneral, "general.android_country",      kNumber,   0,     INT16_MAX, 0,        "",
               kOwn, kAlways, kHidden},
    {kGeneral, "general.android_language",     kNumber,   0,     INT16_MAX, 0,        "",
               kOwn, kAlways, kHidden},
    {kGeneral, "input.av.connected",           kSwitch,   0,     1,        0,         "",
               kOwn, kAlways, kHidden},
    {kGeneral, "input.scart1.connected",       kSwitch,   0,     1,        0,         "",
               kOwn, kAlways, kHidden},
    {kGeneral, "input.component.connected",    kSwitch,   0,     1,        0,         "",
               kOwn, kAlways, kHidden},
    {kGeneral, "input.vga.connected",          kSwitch,   0,     1,        0,         "",
               kOwn, kAlways, kHidden},
    {kGeneral, "input.hdmi1.connected",        kSwitch,   0,     1,        0,         "",
               kOwn, kAlways, kHidden},
    {kGeneral, "input.hdmi2.connected",        kSwitch,   0,     1,        0,         "",
               kOwn, kAlways, kHidden},
    {kGeneral, "input.hdmi3.connected",        kSwitch,   0,     1,        0,         "",
               kOwn, kAlways, kHidden},
    {kGeneral, "input.hdmi4.connected",        kSwitch,   0,     1,        0,         "",
               kOwn, kAlways, kHidden},

    {kPicture, "picture.mode",                 kChoice,   0,     PICTURE_MODE_COUNT - 1, 0,
               "standard,vivid,cinema,sport,game,user", "picture.mode"},
    {kPicture, "picture.screen_mode",          kChoice,   0,     SCREEN_MODE_COUNT - 1,  0,
               "auto,normal,wide,zoom,letterbox,dot_by_dot", "screen.mode"},
    {kPicture, "picture.backlight",            kNumber,   0,     100,      80,        ""},
    {kPicture, "picture.brightness",           kNumber,   0,     100,      50,        ""},
    {kPicture, "picture.contrast",             kNumber,   0,     100,      85,        ""},
    {kPicture, "picture.colour",               kNumber,   0,     100,      50,        ""},
    {kPicture, "picture.tint",                 kNumber,   -50,   50,       0,         ""},
    {kPicture, "picture.sharpness",            kNumber,   0,     20,       10,        ""},
    {kPicture, "picture.colour_temperature",   kChoice,   0,     2,        1,         "cool,normal,warm"},
    {kPicture, "picture.gamma",                kChoice,   0,     2,        1,         "dark,middle,bright"},
    {kPicture, "picture.dynamic_contrast",     kChoice,   0,     3,        1,         "off,low,medium,strong",
               kOwn, kNotInGames},
    {kPicture, "picture.noise_reduction",      kChoice,   0,     4,        4,         "off,low,medium,strong,auto",
               kOwn, kNotInGames},
    {kPicture, "picture.block_reduction",      kChoice,   0,     3,        1,         "off,low,medium,strong",
               kOwn, kNotInGames},
    {kPicture, "picture.motion",               kChoice,   0,     3,        2,         "off,low,medium,strong",
               kOwn, kNotInGames},
    {kPicture, "picture.film_mode",            kSwitch,   0,     1,        1,         "",
               kOwn, kNotInGames},
    {kPicture, "picture.menu_opacity",         kNumber,   0,     255,      255,       "",
               "osd.opacity"},

    {kSound,   "sound.volume",                 kNumber,   0,     VOLCTRL_MAX, 20,     "",
               "volume.0"},
    {kSound,   "sound.mute",                   kSwitch,   0,     1,        0,         "",
               "mute.0"},
    {kSound,   "sound.headphone_volume",       kNumber,   0,     VOLCTRL_MAX, 20,     "",
               "volume.1"},
    {kSound,   "sound.mode",                   kChoice,   0,     SOUND_EFFECT_COUNT - 1, 0,
               "standard,music,speech,cinema,user", "sound.effect"},
    {kSound,   "sound.balance",                kNumber,   -50,   50,       0,         ""},
    {kSound,   "sound.bass",                   kNumber,   -50,   50,       0,         "",
               kOwn, kUserSound},
    {kSound,   "sound.treble",                 kNumber,   -50,   50,       0,         "",
               kOwn, kUserSound},
    {kSound,   "sound.surround",               kSwitch,   0,     1,        0,         ""},
    {kSound,   "sound.levelling",              kSwitch,   0,     1,        0,         ""},
    {kSound,   "sound.digital_output",         kChoice,   0,     3,        1,         "off,auto,pcm,bitstream"},
    {kSound,   "sound.digital_delay",          kNumber,   0,     250,      0,         "",  // milliseconds
               kOwn, kDigitalSound},
    {kSound,   "sound.description",            kSwitch,   0,     1,        0,         "",
               "audio.description"},
    {kSound,   "sound.description_volume",     kNumber,   0,     VOLCTRL_MAX, 20,     "",
               "volume.2", kDescription},

    {kSetup,   "setup.country",                kCountry,  kLetters, kLetters, 0,      "GBR"},
    {kSetup,   "setup.language",               kLanguage, kLetters, kLetters, 0,      "eng"},
    {kSetup,   "setup.audio_language",         kLanguage, kLetters, kLetters, 0,         "",
               "audio.language"},
    {kSetup,   "setup.audio_language_2",       kLanguage, kLetters, kLetters, 0,         ""},
    {kSetup,   "setup.subtitles",              kChoice,   0,     2,        1,         "off,on,hearing_impaired"},
    {kSetup,   "setup.subtitle_language",      kLanguage, kLetters, kLetters, 0,         "",
               "subtitle.language", kSubtitles},
    {kSetup,   "setup.subtitle_language_2",    kLanguage, kLetters, kLetters, 0,         "",
               kOwn, kSubtitles},
    {kSetup,   "setup.teletext_language",      kLanguage, kLetters, kLetters, 0,      "eng"},
    {kSetup,   "setup.time_source",            kChoice,   0,     TIME_SYNC_SOURCE_USER, 0,
               "broadcast,system,user", "time.source", kAlways, true, setTimeSource},
    {kSetup,   "setup.menu_time",              kNumber,   5,     60,       20,        ""},  // seconds
    {kSetup,   "setup.hbbtv",                  kSwitch,   0,     1,        1,         ""},
    {kSetup,   "setup.automatic_download",     kSwitch,   0,     1,        0,         "",
               "oad.automatic"},
    {kSetup,   "setup.favourite_icon",         kSwitch,   0,     1,        0,         "",
               "broadcast.favourite_icon"},

    {kLock,    "lock.pin",                     kSwitch,   0,     1,        1,         ""},
    {kLock,    "lock.channels",                kSwitch,   0,     1,        0,         "",
               kOwn, kPin},
    {kLock,    "lock.inputs",                  kSwitch,   0,     1,        1,         ""},
    {kLock,    "lock.installation",            kSwitch,   0,     1,        0,         "",
               kOwn, kPin},
    {kLock,    "lock.keys",                    kSwitch,   0,     1,        0,         ""},
    {kLock,    "lock.ratings",                 kSwitch,   0,     1,        1,         "",
               "rating.enabled"},
    {kLock,    "lock.age",                     kNumber,   0,     RATING_AGE_MAX, 0,   "",
               "rating.dvb_age", kRatings},
    {kLock,    "lock.unrated",                 kSwitch,   0,     1,        0,         "",
               "rating.unrated", kRatings},
};
// clang-format on
const size_t kConfigItemCount = std::size(kConfigItems);

std::string ConfigItem::name() const {
    return kept == nullptr ? std::string("config.") + key : kept;
}

std::vector<std::string> ConfigItem::choices() const {
    if (kind == ItemKind::kSwitch) return {"off", "on"};
    std::vector<std::string> names;
    if (kind != ItemKind::kChoice) return names;
    const std::string_view all = text;
    for (size_t at = 0; at <= all.size();) {
        const size_t end = std::min(all.find(',', at), all.size());
        names.emplace_back(all.substr(at, end - at));
        at = end + 1;
    }
    return names;
}

int32_t ConfigItem::number(const std::string& bytes) const {
    int32_t value = 0;
    const char* const end = bytes.data() + bytes.size();
    const auto read = std::from_chars(bytes.data(), end, value);
    return read.ec == std::errc() && accepts(value) ? value : delivered;
}

std::string ConfigItem::textOf(const std::string& bytes) const {
    return accepts(bytes) ? bytes : text;
}

bool ConfigItem::accepts(const std::string& value) const {
    const auto all = [&](auto good) { return std::all_of(value.begin(), value.end(), good); };
    if (value.empty() || value.size() > static_cast<size_t>(greatest)) return false;
    if (kind == ItemKind::kText) {
        return all([](char c) { return static_cast<uint8_t>(c) >= 0x20 && c != 0x7F; });
    }
    const char first = kind == ItemKind::kCountry ? 'A' : 'a';
    return value.size() == kLetters && all([&](char c) { return c >= first && c < first + 26; });
}

const ConfigItem* configItem(std::string_view key) {
    const ConfigItem* const end = std::end(kConfigItems);
    const ConfigItem* const found = std::find_if(
            std::begin(kConfigItems), end, [&](const ConfigItem& item) { return key == item.key; });
    return found == end ? nullptr : found;
}

const ConfigItem* configItemKept(const std::string& name) {
    const ConfigItem* const end = std::end(kConfigItems);
    const ConfigItem* const found =
            std::find_if(std::begin(kConfigItems), end,
                         [&](const ConfigItem& item) { return name == item.name(); });
    return found == end ? nullptr : found;
}

int32_t configNumber(const Core& core, const ConfigItem& item) {
    return item.number(core.remembered(item.name()));
}

std::string configText(const Core& core, const ConfigItem& item) {
    return item.textOf(core.remembered(item.name()));
}

bool holds(const Core& core, const ItemCondition& condition) {
    if (condition.key == nullptr) return true;
    const ConfigItem* const item = configItem(condition.key);
    return item != nullptr && (configNumber(core, *item) == condition.value) == condition.is;
}

}  // namespace television
