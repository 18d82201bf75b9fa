/** Texts of a Common Interface module: UTF-8 in its description, UTF-16 for clients. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace television {

/** UTF-16 units and a zero unit at their end; no units at all when the module has no such text. */
using CamText = std::vector<uint16_t>;

/** Returns the pointer that a record holds for a text: null when there is none. Valid as long as
 * the text. */
inline const uint16_t* pointerTo(const CamText& text) {
    return text.empty() ? nullptr : text.data();
}

/** Writes as many whole characters of a text as fit into `capacity` units with the zero unit.
 * Returns the number of units written; without a buffer, the number of units of the whole text. */
uint32_t putUnits(uint16_t* to, uint32_t capacity, const CamText& text);

/**
 * Returns whether a client's text is `expected`. The size of the text is not known: it has `most`
 * units, or fewer and a zero unit. So units are read one by one, and none after the first that
 * differs or is zero. `expected` ends with a zero unit and has at most `most` units before it.
 */
bool isText(const uint16_t* text, uint32_t most, const CamText& expected);

}  // namespace television
