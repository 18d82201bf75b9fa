/** Texts of the Common Interface module: UTF-16 on the wire, UTF-8 in this library. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace qortv {

/** `count` units, or those up to a zero unit, as UTF-8; half a surrogate pair becomes U+FFFD. */
std::string toUtf8(const uint16_t* units, size_t count);

/** `text` as UTF-16 without a terminator; bytes that are not UTF-8 become U+FFFD. */
std::vector<uint16_t> toUtf16(const std::string& text);

}  // namespace qortv
