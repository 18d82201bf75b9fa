#include "television/stream/section_checksum.h"

#include <array>

namespace television {

uint32_t sectionChecksum(ByteView bytes) {
    static const std::array<uint32_t, 256> table = [] {
        std::array<uint32_t, 256> result;
        for (uint32_t i = 0; i < result.size(); ++i) {
            uint32_t value = i << 24;
            for (int bit = 0; bit < 8; ++bit) {
                value = (value << 1) ^ ((value >> 31) != 0 ? 0x04C11DB7u : 0u);
            }
            result[i] = value;
        }
        return result;
    }();
    uint32_t checksum = 0xFFFFFFFF;
    for (size_t i = 0; i < bytes.size(); ++i) {
        checksum = (checksum << 8) ^ table[(checksum >> 24) ^ bytes.u8(i)];
    }
    return checksum;
}

}  // namespace television
