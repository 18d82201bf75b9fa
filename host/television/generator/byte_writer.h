/** Appends numbers and texts to the bytes of a table, the most significant byte first. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace stream_generator {

using Bytes = std::vector<uint8_t>;

inline void put16(Bytes& out, unsigned value) {
    out.push_back(static_cast<uint8_t>(value >> 8));
    out.push_back(static_cast<uint8_t>(value));
}

inline void put24(Bytes& out, uint32_t value) {
    out.push_back(static_cast<uint8_t>(value >> 16));
    put16(out, value & 0xFFFF);
}

inline void put32(Bytes& out, uint32_t value) {
    put16(out, value >> 16);
    put16(out, value & 0xFFFF);
}

inline void putBytes(Bytes& out, const Bytes& bytes) {
    out.insert(out.end(), bytes.begin(), bytes.end());
}

inline void putText(Bytes& out, const std::string& text) {
    out.insert(out.end(), text.begin(), text.end());
}

/** A language or country code: the first three letters of `code`, which has as many at least. */
inline void putCode(Bytes& out, const std::string& code) {
    out.insert(out.end(), code.begin(), code.begin() + 3);
}

}  // namespace stream_generator
