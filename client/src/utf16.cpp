#include "utf16.h"

#include "qortv/utf8.h"

namespace qortv {

namespace {

void appendCodePoint(std::string& text, uint32_t c) {
    // Appends a continuation byte with the six bits of `c` from `shift` on.
    const auto tail = [&](int shift) { text += static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x80) {
        text += static_cast<char>(c);
    } else if (c < 0x800) {
        text += static_cast<char>(0xC0 | (c >> 6));
        tail(0);
    } else if (c < 0x10000) {
        text += static_cast<char>(0xE0 | (c >> 12));
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0 | (c >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

/** Returns the code point at `at` and moves `at` behind it. `text` is well-formed. */
uint32_t takeCodePoint(const std::string& text, size_t& at) {
    const auto first = static_cast<unsigned char>(text[at++]);
    if (first < 0x80) return first;
    const int tails = first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
    uint32_t c = first & (0x3FU >> tails);
    for (int i = 0; i < tails; ++i) c = c << 6 | (static_cast<unsigned char>(text[at++]) & 0x3FU);
    return c;
}

}  // namespace

std::string toUtf8(const uint16_t* units, size_t count) {
    std::string text;
    for (size_t i = 0; i < count && units[i] != 0; ++i) {
        const uint32_t unit = units[i];
        const bool high = unit >= 0xD800 && unit < 0xDC00;
        const bool low = unit >= 0xDC00 && unit < 0xE000;
        const uint32_t next = i + 1 < count ? units[i + 1] : 0;
        if (high && next >= 0xDC00 && next < 0xE000) {
            appendCodePoint(text, 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
            ++i;
        } else {
            appendCodePoint(text, high || low ? 0xFFFD : unit);
        }
    }
    return text;
}

std::vector<uint16_t> toUtf16(const std::string& text) {
    const std::string valid = validUtf8(text);
    std::vector<uint16_t> units;
    for (size_t at = 0; at < valid.size();) {
        const uint32_t c = takeCodePoint(valid, at);
        if (c < 0x10000) {
            units.push_back(static_cast<uint16_t>(c));
        } else {
            units.push_back(static_cast<uint16_t>(0xD800 + ((c - 0x10000) >> 10)));
            units.push_back(static_cast<uint16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
        }
    }
    return units;
}

}  // namespace qortv
