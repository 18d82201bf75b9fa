/** Records of the middleware, which travel as the bytes that they occupy in memory. */
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

#include <hidl/HidlSupport.h>

#include "qortv/error.h"
#include "qortv/utf8.h"

namespace qortv {

using Bytes = android::hardware::hidl_vec<uint8_t>;

template <typename Record>
Bytes imageOf(const Record& record) {
    static_assert(std::is_trivially_copyable_v<Record>, "a record is copied as bytes");
    Bytes image;
    image.resize(sizeof record);
    std::memcpy(image.data(), &record, sizeof record);
    return image;
}

/**
 * Returns the record or number that begins at the front of `image`. Missing bytes are taken as
 * zeros, bytes behind it are ignored.
 */
template <typename Record>
Record recordAtFrontOf(const Bytes& image) {
    static_assert(std::is_trivially_copyable_v<Record>, "a record is copied as bytes");
    Record record = {};
    const size_t size = std::min(image.size(), sizeof record);
    if (size > 0) std::memcpy(&record, image.data(), size);
    return record;
}

/** @throws Error kTransport when `image` has not the size of the record */
template <typename Record>
Record recordOf(const Bytes& image) {
    if (image.size() != sizeof(Record)) {
        throw Error(Error::Kind::kTransport,
                    "the service sent a record of " + std::to_string(image.size()) +
                            " bytes instead of " + std::to_string(sizeof(Record)));
    }
    return recordAtFrontOf<Record>(image);
}

/** Returns the text of an array, in which the terminating zero may be missing, as valid UTF-8. */
template <size_t Size>
std::string textIn(const char (&text)[Size]) {
    return validUtf8(std::string(text, strnlen(text, Size)));
}

/** Returns the text of a block of bytes, in which the terminating zero may be missing, as valid
 * UTF-8. */
inline std::string textIn(const Bytes& block) {
    if (block.size() == 0) return "";
    const auto* begin = reinterpret_cast<const char*>(block.data());
    return validUtf8(std::string(begin, strnlen(begin, block.size())));
}

}  // namespace qortv
