/** Texts of a Common Interface module: UTF-8 in its description, UTF-16 outwards. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace television {

/** UTF-16 units with the zero unit at their end; no units at all: the module has no such text. */
using CamText = std::vector<uint16_t>;

/** As the middleware hands a text over: null where there is none. Valid as long as the text. */
inline const uint16_t* pointerTo(const CamText& text) {
    return text.empty() ? nullptr : text.data();
}

/** `utf8` must be valid and hold no zero. */
CamText camText(const std::string& utf8);

/** Writes what fits of a text into `capacity` units, a whole number of characters and the zero
 * unit; answers how many units that took, and without room how many it would take. */
uint32_t putUnits(uint16_t* to, uint32_t capacity, const CamText& text);

/**
 * Whether a client's text is `expected`. It has at most `most` units and no other size is known of
 * it but that a zero unit ends it: units are looked at one by one, and none after the one that
 * decides. `expected` ends with a zero unit and has at most `most` before.
 */
bool isText(const uint16_t* text, uint32_t most, const CamText& expected);

}  // namespace television
