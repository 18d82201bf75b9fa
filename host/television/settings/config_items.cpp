#include "television/settings/config_items.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include <zlib.h>

#include "middleware/result_codes.h"
#include "television/settings/time_settings.h"

namespace television {
namespace {

/** A value that another part of the television uses too. */
struct SharedValue {
    const char* key;
    const char* name;  ///< under which that part remembers it
    /** Sets it, where remembering it is not enough; null otherwise. */
    int32_t (*set)(Core& core, int32_t value, int32_t updateFlag) = nullptr;
};
constexpr SharedValue kSharedValues[] = {
        {"general.wake_on_lan", "wake.ethernet"},
        {"general.wake_on_wlan", "wake.wifi"},
        {"picture.mode", "picture.mode"},
        {"picture.screen_mode", "screen.mode"},
        {"picture.menu_opacity", "osd.opacity"},
        {"sound.volume", "volume.0"},
        {"sound.mute", "mute.0"},
        {"sound.headphone_volume", "volume.1"},
        {"sound.mode", "sound.effect"},
        {"sound.description", "audio.description"},
        {"sound.description_volume", "volume.2"},
        {"setup.audio_language", "audio.language"},
        {"setup.subtitle_language", "subtitle.language"},
        {"setup.time_source", "time.source", setTimeSource},
        {"setup.automatic_download", "oad.automatic"},
        {"setup.favourite_icon", "broadcast.favourite_icon"},
        {"lock.ratings", "rating.enabled"},
        {"lock.age", "rating.dvb_age"},
        {"lock.unrated", "rating.unrated"},
};

/** The beginning of the names of values that are the configuration's alone. */
constexpr std::string_view kOwnNames = "config.";
constexpr size_t kLettersOfCode = 3;

/** Null when the value is the configuration's alone. */
const SharedValue* sharedValue(std::string_view key) {
    const auto* const found =
            std::find_if(std::begin(kSharedValues), std::end(kSharedValues),
                         [&](const SharedValue& value) { return key == value.key; });
    return found == std::end(kSharedValues) ? nullptr : found;
}

}  // namespace

const ConfigItem kConfigItems[] = {
#include "config_items.inc"
};
const size_t kConfigItemCount = std::size(kConfigItems);

std::string ConfigItem::name() const {
    const SharedValue* const shared = sharedValue(key);
    return shared != nullptr ? shared->name : std::string(kOwnNames) + key;
}

int32_t ConfigItem::set(Core& core, int32_t value, int32_t updateFlag) const {
    const SharedValue* const shared = sharedValue(key);
    if (shared != nullptr && shared->set != nullptr) return shared->set(core, value, updateFlag);
    core.rememberNumber(name(), value, updateFlag);
    return TV_OK;
}

void ConfigItem::reset(Core& core) const {
    const SharedValue* const shared = sharedValue(key);
    if (shared != nullptr && shared->set != nullptr) {
        shared->set(core, delivered, 0);
    } else {
        core.remember(name(), {});
    }
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
    return value.size() == kLettersOfCode &&
           all([&](char c) { return c >= first && c < first + 26; });
}

const ConfigItem* configItem(std::string_view key) {
    const ConfigItem* const end = std::end(kConfigItems);
    const ConfigItem* const found = std::find_if(
            std::begin(kConfigItems), end, [&](const ConfigItem& item) { return key == item.key; });
    return found == end ? nullptr : found;
}

const ConfigItem* configItemKept(const std::string& name) {
    for (const SharedValue& value : kSharedValues) {
        if (name == value.name) return configItem(value.key);
    }
    if (name.compare(0, kOwnNames.size(), kOwnNames) != 0) return nullptr;
    const ConfigItem* const item = configItem(std::string_view(name).substr(kOwnNames.size()));
    return item == nullptr || sharedValue(item->key) != nullptr ? nullptr : item;
}

uint32_t keyCode(std::string_view key) {
    const auto* bytes = reinterpret_cast<const Bytef*>(key.data());
    return static_cast<uint32_t>(crc32(0, bytes, static_cast<uInt>(key.size())));
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
    return item != nullptr && (configNumber(core, *item) == condition.value) == condition.equal;
}

}  // namespace television
