/** Reading lists that may change while they are read. */
#pragma once

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "qortv/error.h"

namespace qortv {

/**
 * How often a list that changes during a read is read. A channel scan changes a list every few
 * milliseconds, so one that is still changing after this many reads may do so for long.
 */
constexpr int kReadAttempts = 20;

/** @throws Error kRefused, always */
[[noreturn]] inline void throwKeepsChanging(const std::string& list) {
    throw Error(Error::Kind::kRefused,
                list + " changed during each of " + std::to_string(kReadAttempts) + " reads");
}

/**
 * Reads a list whose members are fetched one by one, until two reads in a row have the same
 * members: so none is missed or returned twice when the list changes meanwhile.
 *
 * @param read returns all members, in a vector
 * @param key returns what identifies a member
 * @param list name of the list, for the message
 * @throws Error kRefused for a list that keeps changing
 */
template <typename Read, typename Key>
auto readStable(Read read, Key key, const char* list) {
    const auto keysOf = [&](const auto& members) {
        std::vector<std::decay_t<decltype(key(members.front()))>> keys;
        keys.reserve(members.size());
        for (const auto& member : members) keys.push_back(key(member));
        return keys;
    };
    auto members = read();
    for (int attempt = 1; attempt < kReadAttempts; ++attempt) {
        auto again = read();
        if (keysOf(again) == keysOf(members)) return again;
        members = std::move(again);
    }
    throwKeepsChanging(list);
}

}  // namespace qortv
