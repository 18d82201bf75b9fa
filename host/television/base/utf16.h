/** Converts texts between UTF-8 and UTF-16. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace television {

/** The UTF-16 units of `text`, which must be valid UTF-8, and a zero unit at their end. */
std::vector<uint16_t> utf16FromUtf8(const std::string& text);

/** The text of the units up to the first zero unit or the end. Its surrogates must come in pairs.
 */
std::string utf8FromUtf16(const std::vector<uint16_t>& units);

}  // namespace television
