#include "television/base/utf16.h"

#include <algorithm>

#include <utils/Unicode.h>

namespace television {

std::vector<uint16_t> utf16FromUtf8(const std::string& text) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(text.data());
    const ssize_t length = utf8_to_utf16_length(bytes, text.size());
    std::u16string units(static_cast<size_t>(length) + 1, u'\0');
    utf8_to_utf16(bytes, text.size(), units.data(), units.size());
    return {units.begin(), units.end()};
}

std::string utf8FromUtf16(const std::vector<uint16_t>& units) {
    const std::u16string text(units.begin(), std::find(units.begin(), units.end(), 0));
    if (text.empty()) return {};
    const ssize_t length = utf16_to_utf8_length(text.data(), text.size());
    std::string bytes(static_cast<size_t>(length) + 1, '\0');
    utf16_to_utf8(text.data(), text.size(), bytes.data(), bytes.size());
    bytes.pop_back();
    return bytes;
}

}  // namespace television
