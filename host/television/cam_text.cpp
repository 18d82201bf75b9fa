#include "cam_text.h"

#include <algorithm>

#include "calls.h"

namespace television {
namespace {

constexpr uint32_t kFirstBeyondBasicPlane = 0x10000;
constexpr uint16_t kHighSurrogate = 0xD800;
constexpr uint16_t kLowSurrogate = 0xDC00;
constexpr uint32_t kSurrogateBits = 10;
constexpr uint16_t kSurrogateMask = (1 << kSurrogateBits) - 1;

bool isHighSurrogate(uint16_t unit) {
    return (unit & ~kSurrogateMask) == kHighSurrogate;
}

}  // namespace

CamText camText(const std::string& utf8) {
    CamText text;
    for (size_t at = 0; at < utf8.size();) {
        const auto lead = static_cast<uint8_t>(utf8[at]);
        const size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        uint32_t character = length == 1 ? lead : lead & (0x7F >> length);
        for (size_t i = 1; i < length && at + i < utf8.size(); ++i) {
            character = character << 6 | (static_cast<uint8_t>(utf8[at + i]) & 0x3F);
        }
        at += length;
        if (character < kFirstBeyondBasicPlane) {
            text.push_back(static_cast<uint16_t>(character));
        } else {
            character -= kFirstBeyondBasicPlane;
            text.push_back(static_cast<uint16_t>(kHighSurrogate | character >> kSurrogateBits));
            text.push_back(static_cast<uint16_t>(kLowSurrogate | (character & kSurrogateMask)));
        }
    }
    text.push_back(0);
    return text;
}

uint32_t putUnits(uint16_t* to, uint32_t capacity, const CamText& text) {
    if (!writable(to) || capacity == 0) return static_cast<uint32_t>(text.size());
    if (text.empty()) return 0;
    size_t length = std::min<size_t>(capacity, text.size()) - 1;
    if (length > 0 && isHighSurrogate(text[length - 1])) --length;
    std::copy_n(text.begin(), length, to);
    to[length] = 0;
    return static_cast<uint32_t>(length + 1);
}

bool isText(const uint16_t* text, uint32_t most, const CamText& expected) {
    if (text == nullptr) return expected.size() == 1;
    for (uint32_t i = 0; i < most; ++i) {
        if (text[i] != expected[i]) return false;
        if (expected[i] == 0) return true;
    }
    return expected[most] == 0;
}

}  // namespace television
