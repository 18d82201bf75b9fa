/** What the middleware answers: codes turned into errors, images of records into records. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include <hidl/HidlSupport.h>

#include "qortv/channel.h"
#include "qortv/error.h"
#include "refused.h"

namespace qortv {

/** What a code of failure means; empty where it only means that. */
std::string meaningOf(int32_t code);

/**
 * @param what completes "the television refused to ..."
 * @throws Error kRefused when `result` is a code of failure; else answers it
 */
inline int32_t accepted(int32_t result, const std::string& what) {
    if (result < 0) throwRefusedTo(what, result, meaningOf(result));
    return result;
}

/** @throws Error kTransport: a record that came in so many bytes is none. */
[[noreturn]] void throwBadImage(size_t bytes, size_t expected);

template <typename Record>
Record recordOf(const android::hardware::hidl_vec<uint8_t>& image) {
    static_assert(std::is_trivially_copyable_v<Record>, "a record is a byte image");
    if (image.size() != sizeof(Record)) throwBadImage(image.size(), sizeof(Record));
    Record record;
    std::memcpy(&record, image.data(), sizeof record);
    return record;
}

/** The text of an array that may lack its NUL, as valid UTF-8. */
template <size_t Size>
std::string textIn(const char (&text)[Size]) {
    return validUtf8(std::string(text, strnlen(text, Size)));
}

/**
 * Reads a list whose members are fetched one by one: again and again until two reads in a row have
 * the same keys, so that none is missed or read twice when the list changes meanwhile.
 *
 * @param read reads all of it
 * @param key what tells a member from the others
 * @param what the list, for the message
 * @throws Error kRefused for a list that never stops changing
 */
template <typename Read, typename Key>
auto readUnchanged(Read read, Key key, const char* what) {
    constexpr int kAttempts = 20;
    const auto keysOf = [&](const auto& members) {
        std::vector<std::decay_t<decltype(key(members.front()))>> keys;
        keys.reserve(members.size());
        for (const auto& member : members) keys.push_back(key(member));
        return keys;
    };
    auto members = read();
    for (int attempt = 1; attempt < kAttempts; ++attempt) {
        auto again = read();
        if (keysOf(again) == keysOf(members)) return again;
        members = std::move(again);
    }
    throw Error(Error::Kind::kRefused, std::string(what) + " changed during each of " +
                                               std::to_string(kAttempts) + " reads");
}

}  // namespace qortv
