/** Changing the entries of a favourite list: the ids of its channels in their order. */
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "middleware/channellist.h"
#include "middleware/result_codes.h"

namespace television {

using Favourites = std::vector<uint32_t>;

/** Puts a channel at a place, from 0, or at the end when the list is shorter. A channel that is in
 * the list is moved. */
inline int32_t insertFavourite(Favourites& list, uint32_t channelId, size_t place) {
    const auto found = std::find(list.begin(), list.end(), channelId);
    if (found != list.end()) {
        list.erase(found);
    } else if (list.size() >= FAV_LIST_MAX) {
        return TV_FULL;
    }
    list.insert(list.begin() + static_cast<ptrdiff_t>(std::min(place, list.size())), channelId);
    return TV_OK;
}

inline int32_t eraseFavourite(Favourites& list, uint32_t channelId) {
    const auto found = std::find(list.begin(), list.end(), channelId);
    if (found == list.end()) return TV_NOT_FOUND;
    list.erase(found);
    return TV_OK;
}

inline int32_t swapFavourites(Favourites& list, uint32_t channelId, uint32_t otherId) {
    const auto one = std::find(list.begin(), list.end(), channelId);
    const auto other = std::find(list.begin(), list.end(), otherId);
    if (one == list.end() || other == list.end()) return TV_NOT_FOUND;
    std::iter_swap(one, other);
    return TV_OK;
}

}  // namespace television
