/** The items of the set's configuration: their keys, what they can be, and where they are kept. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core.h"

namespace television {

enum class ItemKind {
    kSwitch,  ///< 0 off, 1 on
    kNumber,
    kChoice,  ///< the place of one of its names, from 0
    kText,
    kLanguage,  ///< three small letters of ISO 639-2
    kCountry,   ///< three capitals of ISO 3166
};

/** What another item has to be, or not to be, for something to hold; without a key it always holds.
 */
struct ItemCondition {
    const char* key = nullptr;
    int32_t value = 0;
    bool is = true;
};

/** One item; the fields are in the order of the table's columns. */
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct ConfigItem {
    int16_t group;  ///< CONFIG_GROUP_…
    const char* key;
    ItemKind kind;
    int16_t least;      ///< of a text: bytes
    int16_t greatest;   ///< the same
    int16_t delivered;  ///< of numbers
    const char* text;   ///< what a text is delivered as; a choice's names, with "," in between;
                        ///< empty for others
    const char* kept = nullptr;  ///< the name under which its owner remembers it; null: its own
    ItemCondition enabled = {};
    bool shown = true;  ///< false: no menu ever shows it, and a reset leaves it alone
    /** The owner's function, where remembering is not enough; `note` as for `Core::remember`. */
    int32_t (*set)(Core& core, int32_t value, int32_t note) = nullptr;

    bool isText() const { return kind >= ItemKind::kText; }
    /** The name under which it is remembered. */
    std::string name() const;
    /** The names of what a switch or choice can be set to; none for others. */
    std::vector<std::string> choices() const;

    // What remembered bytes mean: those that make no sense are as delivered.
    int32_t number(const std::string& bytes) const;
    std::string textOf(const std::string& bytes) const;
    bool accepts(int32_t value) const { return value >= least && value <= greatest; }
    /** Whether a text that is not empty can be its value. */
    bool accepts(const std::string& value) const;
};

extern const ConfigItem kConfigItems[];
extern const size_t kConfigItemCount;

/** Null when there is none. */
const ConfigItem* configItem(std::string_view key);
/** The item that is remembered under a name; null when there is none. */
const ConfigItem* configItemKept(const std::string& name);

// Values. Not within `Core::read` or `Core::change`.
int32_t configNumber(const Core& core, const ConfigItem& item);
std::string configText(const Core& core, const ConfigItem& item);
bool holds(const Core& core, const ItemCondition& condition);

}  // namespace television
