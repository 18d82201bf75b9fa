/** Conversion of the texts of the Common Interface module, which are UTF-16, from and to UTF-8. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <hidl/HidlSupport.h>

namespace qortv {

/** Returns `count` units, or those before the first zero unit, as UTF-8. Half a surrogate pair
 * becomes U+FFFD. */
std::string toUtf8(const uint16_t* units, size_t count);

inline std::string toUtf8(const android::hardware::hidl_vec<uint16_t>& units) {
    return toUtf8(units.data(), units.size());
}

/** Returns `text` as UTF-16 without a terminator. Bytes that are not UTF-8 become U+FFFD. */
std::vector<uint16_t> toUtf16(const std::string& text);

}  // namespace qortv
