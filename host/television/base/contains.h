/** Looks a value up in a small table. */
#pragma once

#include <algorithm>
#include <iterator>

namespace television {

template <typename Table, typename Value>
bool contains(const Table& table, const Value& value) {
    return std::find(std::begin(table), std::end(table), value) != std::end(table);
}

}  // namespace television
