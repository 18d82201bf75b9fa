// Configuration: values, states and choices of the items, and notifications of their changes.
#include <cstring>
#include <map>
#include <memory>
#include <mutex>

#include <fmt/format.h>

#include "middleware/config.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/modules/modules.h"
#include "television/settings/config_items.h"
#include "television/settings/input_sources.h"

namespace television {
namespace {

constexpr size_t kLongestItemKey = 64;
constexpr size_t kLongestText = 256;

/** Sets items, and notifies handlers when the value of an item changes of which clients have asked
 * to be notified. Any thread; the lock is held for no other call. */
class Configuration {
  public:
    /** `core` outlives this. */
    explicit Configuration(Core& core) : mCore(core) {}

    int32_t setNumber(const ConfigItem& item, int32_t value, int32_t updateFlag) {
        if (!item.accepts(value)) return TV_INVALID_ARGUMENT;
        return item.set(mCore, value, updateFlag);
    }
    int32_t setText(const ConfigItem& item, const std::string& text, int32_t updateFlag) {
        if (!text.empty() && !item.accepts(text)) return TV_INVALID_ARGUMENT;
        mCore.remember(item.name(), text, updateFlag);
        return TV_OK;
    }
    /** Brings the items of a group that menus show back to their defaults. */
    int32_t reset(int16_t group) {
        bool any = false;
        for (size_t i = 0; i < kConfigItemCount; ++i) {
            const ConfigItem& item = kConfigItems[i];
            if (item.group != group) continue;
            any = true;
            if (!item.shown) continue;
            item.reset(mCore);
        }
        return any ? TV_OK : TV_NOT_FOUND;
    }

    /** Starts notifications about an item; they end when it was removed as often as it was added.
     */
    int32_t add(const ConfigItem& item) {
        const std::lock_guard<std::mutex> lock(mMutex);
        ++mWanted[&item];
        return TV_OK;
    }
    int32_t remove(const ConfigItem& item) {
        const std::lock_guard<std::mutex> lock(mMutex);
        const auto wanted = mWanted.find(&item);
        if (wanted == mWanted.end()) return TV_NOT_FOUND;
        if (--wanted->second == 0) mWanted.erase(wanted);
        return TV_OK;
    }

    /** Notifies handlers of a change of a remembered value, if it is that of an item. */
    void notifyChange(const RememberedChange& change) {
        const ConfigItem* const item = configItemKept(change.name);
        if (item == nullptr) return;
        const bool same = item->isText()
                                  ? item->textOf(change.before) == item->textOf(change.after)
                                  : item->number(change.before) == item->number(change.after);
        if (same) return;
        {
            const std::lock_guard<std::mutex> lock(mMutex);
            if (mWanted.count(item) == 0) return;
        }
        const int32_t value = item->isText() ? 0 : item->number(change.after);
        mCore.notifier.post(
                {registration<&a_qortvapi_config_reg_callback>(),
                 CONFIG_NFY_VALUE_CHANGED,
                 {keyCode(item->key), static_cast<uint32_t>(item->group),
                  static_cast<uint32_t>(value), static_cast<uint32_t>(change.updateFlag)}});
    }

  private:
    Core& mCore;
    std::mutex mMutex;
    std::map<const ConfigItem*, uint64_t> mWanted;  ///< how often each was added; guarded by mMutex
};

using ConfigurationPointer = std::shared_ptr<Configuration>;

/** Returns `use(item)` for the item with that key; TV_NOT_FOUND when there is none. */
template <typename Use>
int32_t withItem(const char* key, Use use) {
    if (key == nullptr) return TV_INVALID_ARGUMENT;
    const auto text = readText(key, kLongestItemKey);
    const ConfigItem* const item = text ? configItem(*text) : nullptr;
    return item == nullptr ? int32_t{TV_NOT_FOUND} : use(*item);
}

/** The same for an item of a group. */
template <typename Use>
int32_t withItem(int16_t group, const char* key, Use use) {
    return withItem(key, [&](const ConfigItem& item) {
        return item.group == group ? use(item) : int32_t{TV_NOT_FOUND};
    });
}

/** The same for an item of a group whose value is a number. */
template <typename Use>
int32_t withNumber(int16_t group, const char* key, Use use) {
    return withItem(group, key, [&](const ConfigItem& item) {
        return item.isText() ? int32_t{TV_NOT_SUPPORTED} : use(item);
    });
}

/** Returns the highest value in the upper half and the lowest one in the lower half. */
int32_t packedRange(const ConfigItem& item) {
    return static_cast<int32_t>(uint32_t{static_cast<uint16_t>(item.greatest)} << 16 |
                                static_cast<uint16_t>(item.least));
}

void plugNumbers(switchboard::Switchboard& board, Core& core,
                 const ConfigurationPointer& configuration) {
    board.on<&a_qortvapi_config_get_minmaxvalue>([](int16_t group, const char* key, int32_t* to) {
        return withNumber(group, key, [&](const ConfigItem& item) -> int32_t {
            if (!writable(to)) return TV_INVALID_ARGUMENT;
            *to = packedRange(item);
            return TV_OK;
        });
    });
    board.on<&a_qortvapi_config_get_value>([&core](int16_t group, const char* key, int32_t* to) {
        return withNumber(group, key, [&](const ConfigItem& item) -> int32_t {
            if (!writable(to)) return TV_INVALID_ARGUMENT;
            *to = configNumber(core, item);
            return TV_OK;
        });
    });
    const auto set = [=](int16_t group, const char* key, int32_t value, int16_t flag) {
        return withNumber(group, key, [&](const ConfigItem& item) {
            return configuration->setNumber(item, value, flag);
        });
    };
    board.on<&a_qortvapi_config_set_value>(set);
    board.on<&a_qortvapi_config_set_value_for_all_elems>(set);
    board.on<&a_qortvapi_config_is_visible>([](int16_t group, const char* key) {
        return withItem(group, key, [](const ConfigItem& item) { return item.shown ? 1 : 0; });
    });
    board.on<&a_qortvapi_config_is_enabled>([&core](int16_t group, const char* key) {
        return withItem(group, key,
                        [&](const ConfigItem& item) { return holds(core, item.enabled) ? 1 : 0; });
    });
    board.on<&a_qortvapi_config_reset_values>(
            [=](int16_t group) { return configuration->reset(group); });
}

int32_t setText(Configuration& configuration, const char* key, const char* value,
                int32_t updateFlag) {
    return withItem(key, [&](const ConfigItem& item) -> int32_t {
        if (!item.isText()) return TV_NOT_SUPPORTED;
        const auto text = readText(value, kLongestText);
        return text ? configuration.setText(item, *text, updateFlag) : int32_t{TV_INVALID_ARGUMENT};
    });
}

/** Writes a text; `*length` is the size of the buffer before, the length of the text after. */
int32_t putCounted(char* to, uint32_t* length, const std::string& text) {
    if (!writable(length)) return TV_INVALID_ARGUMENT;
    const uint32_t room = *length;
    const int32_t result = putText(to, room, text);
    if (result == TV_OK) *length = static_cast<uint32_t>(strnlen(to, room));
    return result;
}

/** Writes as many names of an item's choices as fit, separated by ",", and their number. */
int32_t putChoices(const ConfigItem& item, char* to, uint32_t* length, uint32_t* count) {
    if (item.kind != ItemKind::kSwitch && item.kind != ItemKind::kChoice) return TV_NOT_SUPPORTED;
    if (!writable(to) || !writable(length) || *length == 0) return TV_INVALID_ARGUMENT;
    std::string text;
    uint32_t written = 0;
    for (const std::string& choice : item.choices()) {
        const std::string next = written == 0 ? choice : text + "," + choice;
        if (next.size() >= *length) break;
        text = next;
        ++written;
    }
    put(count, written);
    return putCounted(to, length, text);
}

void plugTexts(switchboard::Switchboard& board, Core& core,
               const ConfigurationPointer& configuration) {
    board.on<&a_qortvapi_config_get_str_value>(
            [&core](const char* key, char* to, uint32_t* length) {
                return withItem(key, [&](const ConfigItem& item) -> int32_t {
                    if (!item.isText()) return TV_NOT_SUPPORTED;
                    return putCounted(to, length, configText(core, item));
                });
            });
    board.on<&a_qortvapi_config_set_str_value>([=](const char* key, const char* value) {
        return setText(*configuration, key, value, 0);
    });
    board.on<&a_qortvapi_config_set_str_value_ex>(
            [=](const char* key, const char* value, uint32_t option) {
                return setText(*configuration, key, value, static_cast<int32_t>(option));
            });
    board.on<&a_qortvapi_config_get_items_enabled>(
            [](int16_t group, const char* key, char* to, uint32_t* length, uint32_t* count) {
                return withItem(group, key, [&](const ConfigItem& item) {
                    return putChoices(item, to, length, count);
                });
            });
}

int32_t setWorld(Configuration& configuration, int16_t country, int16_t language) {
    if (country < 0 || language < 0) return TV_INVALID_ARGUMENT;
    configuration.setNumber(*configItem("general.android_country"), country, 0);
    configuration.setNumber(*configItem("general.android_language"), language, 0);
    return TV_OK;
}

int32_t putResolution(const VideoFormat& picture, CONFIG_VIDEO_RESOLUTION_T* to) {
    if (!writable(to)) return TV_INVALID_ARGUMENT;
    CONFIG_VIDEO_RESOLUTION_T resolution = {};
    if (picture.width != 0) {
        resolution.ui4_width = picture.width;
        resolution.ui4_height = picture.height;
        resolution.ui4_frame_rate = picture.frameRate;
        resolution.ui1_interlaced = picture.progressive ? 0 : 1;
        resolution.ui1_valid = 1;
        putText(resolution.s_text, sizeof(resolution.s_text),
                fmt::format("{}x{}{}", picture.width, picture.height,
                            picture.progressive ? "p" : "i"));
    }
    *to = resolution;
    return TV_OK;
}

}  // namespace

void plugConfiguration(switchboard::Switchboard& board, Core& core, const InputSources& inputs) {
    const auto configuration = std::make_shared<Configuration>(core);
    core.onRemembered([configuration](const RememberedChange& change) {
        configuration->notifyChange(change);
    });
    plugNumbers(board, core, configuration);
    plugTexts(board, core, configuration);
    board.on<&a_qortvapi_config_add_value_changed_callback>([=](const char* key) {
        return withItem(key, [&](const ConfigItem& item) { return configuration->add(item); });
    });
    board.on<&a_qortvapi_config_remove_value_changed_callback>([=](const char* key) {
        return withItem(key, [&](const ConfigItem& item) { return configuration->remove(item); });
    });
    board.on<&a_qortvapi_config_set_android_world_info>([=](int16_t country, int16_t language) {
        return setWorld(*configuration, country, language);
    });
    board.on<&a_qortvapi_config_get_video_resolution>([&inputs](CONFIG_VIDEO_RESOLUTION_T* to) {
        return putResolution(inputs.pictureIn(0), to);
    });
}

}  // namespace television
