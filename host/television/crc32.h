/** The CRC-32 of zip files. */
#pragma once

#include <cstdint>
#include <string_view>

namespace television {

constexpr uint32_t crc32(std::string_view text) {
    constexpr uint32_t kPolynomial = 0xEDB88320;
    uint32_t crc = UINT32_MAX;
    for (const char c : text) {
        crc ^= static_cast<uint8_t>(c);
        for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ ((crc & 1) != 0 ? kPolynomial : 0);
    }
    return ~crc;
}
static_assert(crc32("123456789") == 0xCBF43926);

}  // namespace television
