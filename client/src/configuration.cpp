#include "qortv/configuration.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <utility>

#include <zlib.h>

#include "middleware/config.h"
#include "middleware/result_codes.h"
#include "qortv/utf8.h"
#include "result.h"

namespace qortv {

namespace {

constexpr int16_t kNoFlag = 0;

/** Returns the group of a setting, which the first word of its key names. */
int16_t groupOf(const std::string& key) {
    const std::string word = key.substr(0, key.find('.'));
    if (word == "picture") return CONFIG_GROUP_PICTURE;
    if (word == "sound") return CONFIG_GROUP_SOUND;
    if (word == "setup") return CONFIG_GROUP_SETUP;
    if (word == "lock") return CONFIG_GROUP_LOCK;
    return CONFIG_GROUP_GENERAL;
}

/** Returns the CRC-32 (as in zip files) of a key: notifications identify a key by it. */
uint32_t checksum(const std::string& key) {
    const auto* bytes = reinterpret_cast<const Bytef*>(key.data());
    return static_cast<uint32_t>(crc32(0, bytes, static_cast<uInt>(key.size())));
}

/** Like checkResult(), with the key in the message. */
int32_t checkSetting(const std::string& key, int32_t result) {
    if (result == TV_NOT_FOUND) {
        throw Error(Error::Kind::kRefused, "there is no setting '" + key + "'");
    }
    return checkResult(result, "take or tell setting '", key, "'");
}

std::vector<std::string> split(const std::string& names) {
    std::vector<std::string> found;
    for (size_t at = 0; at < names.size();) {
        const size_t end = std::min(names.find(',', at), names.size());
        found.push_back(names.substr(at, end - at));
        at = end + 1;
    }
    return found;
}

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (const auto& name : names) text += (text.empty() ? "" : ", ") + name;
    return text;
}

}  // namespace

const std::vector<std::string>& Configuration::keys() {
    static const std::vector<std::string> keys = {
#include "configuration_keys.inc"
    };
    return keys;
}

std::string ConfigurationItem::text() const {
    if (isText()) return std::get<std::string>(value);
    const int32_t number = std::get<int32_t>(value);
    const int64_t place = int64_t{number} - least;
    if (place >= 0 && place < static_cast<int64_t>(choices.size())) {
        return choices[static_cast<size_t>(place)];
    }
    return std::to_string(number);
}

std::string ConfigurationItem::canBe() const {
    if (isText()) return "text";
    if (!choices.empty()) return joined(choices);
    return std::to_string(least) + " to " + std::to_string(greatest);
}

Configuration::Configuration(android::sp<Interface> proxy) : mProxy(std::move(proxy)) {}

ConfigurationValue Configuration::get(const std::string& key) {
    ConfigurationValue value;
    int32_t result = 0;
    check(mProxy->a_hidl_a_qortvapi_config_get_value(groupOf(key), key,
                                                     [&](int32_t number, int32_t code) {
                                                         value = number;
                                                         result = code;
                                                     }),
          "config_get_value");
    if (result == TV_NOT_SUPPORTED) {
        check(mProxy->a_hidl_a_qortvapi_config_get_str_value(
                      key,
                      [&](const auto& text, uint32_t, int32_t code) {
                          value = validUtf8(text.c_str());
                          result = code;
                      }),
              "config_get_str_value");
    }
    checkSetting(key, result);
    return value;
}

ConfigurationItem Configuration::item(const std::string& key) {
    ConfigurationItem item;
    item.key = key;
    item.value = get(key);
    const int16_t group = groupOf(key);
    const auto isSo = [&](const android::hardware::Return<int32_t>& result, const char* method) {
        return checkSetting(key, valueOf(result, method)) != 0;
    };
    item.visible = isSo(mProxy->a_hidl_a_qortvapi_config_is_visible(group, key), "is_visible");
    item.enabled = isSo(mProxy->a_hidl_a_qortvapi_config_is_enabled(group, key), "is_enabled");
    if (item.isText()) return item;
    int32_t result = 0;
    check(mProxy->a_hidl_a_qortvapi_config_get_minmaxvalue(
                  group, key,
                  [&](int32_t bounds, int32_t code) {
                      item.least = static_cast<int16_t>(bounds & 0xFFFF);
                      item.greatest = static_cast<int16_t>(bounds >> 16 & 0xFFFF);
                      result = code;
                  }),
          "config_get_minmaxvalue");
    checkSetting(key, result);
    check(mProxy->a_hidl_a_qortvapi_config_get_items_enabled(
                  group, key,
                  [&](const auto& names, uint32_t, int32_t, int32_t code) {
                      if (code >= 0) item.choices = split(validUtf8(names.c_str()));
                      result = code == TV_NOT_SUPPORTED ? TV_OK : code;
                  }),
          "config_get_items_enabled");
    checkSetting(key, result);
    return item;
}

void Configuration::set(const std::string& key, int32_t value) {
    const int32_t result =
            valueOf(mProxy->a_hidl_a_qortvapi_config_set_value(groupOf(key), key, value, kNoFlag),
                    "config_set_value");
    if (result == TV_INVALID_ARGUMENT) {
        throw Error(Error::Kind::kRefused,
                    key + " can be " + item(key).canBe() + ", not " + std::to_string(value));
    }
    checkSetting(key, result);
}

void Configuration::set(const std::string& key, const std::string& value) {
    const int32_t result = valueOf(mProxy->a_hidl_a_qortvapi_config_set_str_value(key, value),
                                   "config_set_str_value");
    if (result == TV_INVALID_ARGUMENT) {
        throw Error(Error::Kind::kRefused, key + " cannot be '" + validUtf8(value) + "'");
    }
    checkSetting(key, result);
}

void Configuration::setText(const std::string& key, const std::string& text) {
    const ConfigurationItem known = item(key);
    if (known.isText()) return set(key, text);
    const auto choice = std::find(known.choices.begin(), known.choices.end(), text);
    if (choice != known.choices.end()) {
        return set(key, known.least + static_cast<int32_t>(choice - known.choices.begin()));
    }
    int32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, number);
    if (text.empty() || read.ec != std::errc() || read.ptr != end) {
        throw Error(Error::Kind::kArgument,
                    key + " can be " + known.canBe() + ", not '" + validUtf8(text) + "'");
    }
    set(key, number);
}

ConfigurationWatch::ConfigurationWatch(const Configuration& configuration,
                                       std::vector<std::string> keys)
    : mProxy(configuration.mProxy) {
    try {
        for (auto& key : keys) {
            checkSetting(key,
                         valueOf(mProxy->a_hidl_a_qortvapi_config_add_value_changed_callback(key),
                                 "config_add_value_changed_callback"));
            mKeys.push_back(std::move(key));
        }
    } catch (...) {
        removeAll();
        throw;
    }
}

ConfigurationWatch::~ConfigurationWatch() {
    removeAll();
}

void ConfigurationWatch::removeAll() {
    for (const auto& key : mKeys) {
        // A failed call needs no handling: registrations end with the service.
        static_cast<void>(
                mProxy->a_hidl_a_qortvapi_config_remove_value_changed_callback(key).isOk());
    }
}

ConfigurationListener::ConfigurationListener(const std::vector<std::string>& keys) {
    for (const auto& key : keys) mKeys.emplace(checksum(key), key);
}

void ConfigurationListener::notifyConfig(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                         uint64_t arg3, uint64_t arg4) {
    const auto key = mKeys.find(static_cast<uint32_t>(arg1));
    if (code != CONFIG_NFY_VALUE_CHANGED || key == mKeys.end()) {
        return Listener::notifyConfig(code, tag, arg1, arg2, arg3, arg4);
    }
    // The middleware passes 32-bit numbers on as pointers.
    onConfigurationChange({key->second, static_cast<int32_t>(arg3), static_cast<uint32_t>(arg4)});
}

}  // namespace qortv
