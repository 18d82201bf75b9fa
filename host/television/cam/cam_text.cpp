#include "television/cam/cam_text.h"

#include <algorithm>

#include "television/core/client_memory.h"

namespace television {
namespace {

constexpr uint16_t kHighSurrogate = 0xD800;
constexpr uint32_t kSurrogateBits = 10;
constexpr uint16_t kSurrogateMask = (1 << kSurrogateBits) - 1;

bool isHighSurrogate(uint16_t unit) {
    return (unit & ~kSurrogateMask) == kHighSurrogate;
}

}  // namespace

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
