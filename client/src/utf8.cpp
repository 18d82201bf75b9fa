#include "qortv/utf8.h"

namespace qortv {

namespace {

/**
 * Returns the length of the well-formed sequence at `at`, or 0 when there is none. Overlong forms,
 * surrogates and code points above U+10FFFF are not well-formed.
 */
size_t sequenceLength(const std::string& text, size_t at) {
    const auto byte = [&](size_t index) {
        return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
    };
    const auto in = [&](size_t index, unsigned low, unsigned high) {
        return byte(index) >= low && byte(index) <= high;
    };
    const unsigned first = byte(at);
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first <= 0xDF) return in(at + 1, 0x80, 0xBF) ? 2 : 0;
    if (first >= 0xE0 && first <= 0xEF) {
        const unsigned low = first == 0xE0 ? 0xA0 : 0x80;
        const unsigned high = first == 0xED ? 0x9F : 0xBF;
        return in(at + 1, low, high) && in(at + 2, 0x80, 0xBF) ? 3 : 0;
    }
    if (first >= 0xF0 && first <= 0xF4) {
        const unsigned low = first == 0xF0 ? 0x90 : 0x80;
        const unsigned high = first == 0xF4 ? 0x8F : 0xBF;
        return in(at + 1, low, high) && in(at + 2, 0x80, 0xBF) && in(at + 3, 0x80, 0xBF) ? 4 : 0;
    }
    return 0;
}

}  // namespace

std::string validUtf8(const std::string& text) {
    std::string valid;
    valid.reserve(text.size());
    for (size_t at = 0; at < text.size();) {
        const size_t length = sequenceLength(text, at);
        if (length == 0) {
            valid += "\xEF\xBF\xBD";
            ++at;
        } else {
            valid.append(text, at, length);
            at += length;
        }
    }
    return valid;
}

}  // namespace qortv
