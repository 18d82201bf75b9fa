/** The items of the set's configuration: their keys, ranges and defaults, and the names under which
 * the core remembers them. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "television/core/core.h"

namespace television {

enum class ItemKind {
    kSwitch,  ///< 0 off, 1 on
    kNumber,
    kChoice,  ///< the index of one of its names
    kText,
    kLanguage,  ///< three lower-case letters of ISO 639-2
    kCountry,   ///< three upper-case letters of ISO 3166
};

/** Holds when the item `key` has the value, or with `equal` false when it has another one; always
 * holds when `key` is null. */
struct ItemCondition {
    const char* key = nullptr;
    int32_t value = 0;
    bool equal = true;
};

/** One item; the fields are in the order in which make_configuration.py writes them. */
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct ConfigItem {
    int16_t group;  ///< CONFIG_GROUP_…
    const char* key;
    ItemKind kind;
    int16_t least;      ///< lowest number; fewest bytes of a text
    int16_t greatest;   ///< highest number; most bytes of a text
    int16_t delivered;  ///< default of a number
    const char* text;   ///< default of a text; the names of a choice, separated by ",";
                        ///< empty for others
    ItemCondition enabled;
    bool shown;  ///< false: no menu shows it, and a reset leaves it as it is

    /** Whether the value is a text (text, language, country) and not a number. */
    bool isText() const { return kind >= ItemKind::kText; }
    /** The name under which the core remembers it: that of another part of the television which
     * uses the value too, else one made of `key`. */
    std::string name() const;
    /** Sets a number that `accepts` allows, and remembers it. `updateFlag` as for `Core::remember`.
     * Returns TV_OK, or what the part of the television that the value belongs to says. */
    int32_t set(Core& core, int32_t value, int32_t updateFlag) const;
    /** Brings the value back to its default. */
    void reset(Core& core) const;
    /** The names of the values of a switch or choice; none for others. */
    std::vector<std::string> choices() const;

    /** The value that remembered bytes stand for; the default when they are no valid value. */
    int32_t number(const std::string& bytes) const;
    std::string textOf(const std::string& bytes) const;
    bool accepts(int32_t value) const { return value >= least && value <= greatest; }
    /** Whether the text can be its value; an empty one never can. */
    bool accepts(const std::string& value) const;
};

/** All items, in the order of docs/configuration.md, which they are made from at build time. */
extern const ConfigItem kConfigItems[];
extern const size_t kConfigItemCount;

/** Null when there is none. */
const ConfigItem* configItem(std::string_view key);
/** The item that the core remembers under a name; null when there is none. */
const ConfigItem* configItemKept(const std::string& name);

/** The number that stands for a key in change notifications: the CRC-32 of its characters, as zip
 * files use it. */
uint32_t keyCode(std::string_view key);

// The current values. Any thread. Not within `Core::read` or `Core::change`.
int32_t configNumber(const Core& core, const ConfigItem& item);
std::string configText(const Core& core, const ConfigItem& item);
bool holds(const Core& core, const ItemCondition& condition);

}  // namespace television
