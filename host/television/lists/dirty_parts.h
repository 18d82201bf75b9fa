/** Which parts of the lists have changed and are to be saved. */
#pragma once

#include <cstdint>
#include <set>
#include <utility>

namespace television {

/** Parts of ChannelLists that differ from what the store has saved. */
struct DirtyParts {
    std::set<uint16_t> lists;                          ///< whole lists, by id
    std::set<std::pair<uint16_t, uint32_t>> services;  ///< list id and channel id
    std::set<uint16_t> favourites;                     ///< the favourites of lists, by list id
    bool satellites = false;
    bool bissKeys = false;
    bool settings = false;  ///< selected channels, input sources, pump versions

    /** Adds all that `more` names. */
    void add(const DirtyParts& more) {
        lists.insert(more.lists.begin(), more.lists.end());
        services.insert(more.services.begin(), more.services.end());
        favourites.insert(more.favourites.begin(), more.favourites.end());
        satellites |= more.satellites;
        bissKeys |= more.bissKeys;
        settings |= more.settings;
    }
    bool empty() const {
        return lists.empty() && services.empty() && favourites.empty() && !satellites &&
               !bissKeys && !settings;
    }
};

}  // namespace television
