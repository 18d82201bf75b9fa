// Favourite lists: by name of list, and the one of the channel that is on.
#include <algorithm>

#include "calls.h"
#include "middleware/channellist.h"

namespace television {
namespace {

using Favourites = std::vector<uint32_t>;

/** The favourite list that favoritelist_… calls are about. */
constexpr uint8_t kCurrentFavourites = 0;

/** Puts a channel at a place, from 0, or at the end where the place lies beyond it. A channel that
 * is in the list moves. */
int32_t insertAt(Favourites& list, uint32_t channelId, size_t place) {
    const auto found = std::find(list.begin(), list.end(), channelId);
    if (found != list.end()) {
        list.erase(found);
    } else if (list.size() >= FAV_LIST_MAX) {
        return TV_FULL;
    }
    list.insert(list.begin() + static_cast<ptrdiff_t>(std::min(place, list.size())), channelId);
    return TV_OK;
}

int32_t erase(Favourites& list, uint32_t channelId) {
    const auto found = std::find(list.begin(), list.end(), channelId);
    if (found == list.end()) return TV_NOT_FOUND;
    list.erase(found);
    return TV_OK;
}

int32_t swap(Favourites& list, uint32_t channelId, uint32_t otherId) {
    const auto one = std::find(list.begin(), list.end(), channelId);
    const auto other = std::find(list.begin(), list.end(), otherId);
    if (one == list.end() || other == list.end()) return TV_NOT_FOUND;
    std::iter_swap(one, other);
    return TV_OK;
}

/** Runs `edit(list, favourites)` on a favourite list, then puts the service list in order, writes
 * and tells. */
template <typename Edit>
int32_t edit(Core& core, uint32_t listId, uint8_t favourites, Edit edit) {
    if (favourites >= FAV_LIST_COUNT) return TV_INVALID_ARGUMENT;
    return core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
        ChannelList* list = lists.list(listId);
        if (list == nullptr) return TV_NOT_FOUND;
        const int32_t result = edit(*list, list->favourites[favourites]);
        if (result < 0) return result;
        list->arrange();
        change.favourites(*list);
        return result;
    });
}

/** The same on the favourite list of the channel that is on; `edit(list, favourites, channelId)`.
 */
template <typename Edit>
int32_t editCurrent(Core& core, Edit edit) {
    return core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
        const uint32_t channelId = lists.current[0];
        ChannelList* list = lists.listOf(channelId);
        if (list == nullptr) return TV_NOT_FOUND;
        const int32_t result = edit(*list, list->favourites[kCurrentFavourites], channelId);
        if (result < 0) return result;
        list->arrange();
        change.favourites(*list);
        return result;
    });
}

/** Calls `visit(list, record, index)` for each favourite that matches, in order, until it answers
 * true. */
template <typename Visit>
int32_t findFavourite(const Core& core, uint32_t listId, uint8_t favourites, const Match& match,
                      Visit visit) {
    if (favourites >= FAV_LIST_COUNT) return TV_INVALID_ARGUMENT;
    return core.read([&](const ChannelLists& lists) -> int32_t {
        const ChannelList* list = lists.list(listId);
        if (list == nullptr) return TV_NOT_FOUND;
        uint32_t index = 0;
        for (const uint32_t channelId : list->favourites[favourites]) {
            const SVL_REC_T& record = list->byChannel(channelId)->record;
            if (!match(record)) continue;
            if (visit(*list, record, index)) return TV_OK;
            ++index;
        }
        return TV_NOT_FOUND;
    });
}

int32_t readFavourite(const Core& core, uint32_t listId, uint8_t favourites, const Match& match,
                      uint32_t wanted, SVL_REC_T* service, TSL_REC_T* multiplex) {
    return findFavourite(core, listId, favourites, match,
                         [&](const ChannelList& list, const SVL_REC_T& record, uint32_t index) {
                             if (index != wanted) return false;
                             putPair(list, record, service, multiplex);
                             return true;
                         });
}

/** The place in the whole list of the `position`-th favourite that matches; the end where there are
 * fewer. */
size_t placeAmong(const ChannelList& list, const Favourites& favourites, const Match& match,
                  uint32_t position) {
    for (size_t place = 0; place < favourites.size(); ++place) {
        if (match(list.byChannel(favourites[place])->record) && position-- == 0) return place;
    }
    return favourites.size();
}

void plugReads(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_favorite_list_get_svl_handle_by_favorite_list_idx>(
            [](uint16_t listId, uint8_t favourites, uint32_t* handle) {
                if (favourites >= FAV_LIST_COUNT || !writable(handle)) {
                    return int32_t{TV_INVALID_ARGUMENT};
                }
                if (listId < 1 || listId > kListCount) return int32_t{TV_NOT_FOUND};
                *handle = makeHandle(kFavouriteListHandle, listId << 8 | favourites);
                return int32_t{TV_OK};
            });
    board.on<&a_qortvapi_favorite_list_number_by_mask>([&core](uint16_t listId, uint8_t favourites,
                                                               uint32_t mask, uint32_t value) {
        int32_t count = 0;
        const int32_t result = findFavourite(core, listId, favourites, {mask, value, 0, 0},
                                             [&](const ChannelList&, const SVL_REC_T&, uint32_t) {
                                                 ++count;
                                                 return false;
                                             });
        const bool known = listId >= 1 && listId <= kListCount;
        return result == TV_INVALID_ARGUMENT || !known ? result : count;
    });
    board.on<&a_qortvapi_favorite_list_get_svl_rec_by_index>(
            [&core](uint16_t listId, uint8_t favourites, uint32_t mask, uint32_t value,
                    uint32_t index, SVL_REC_T* service) {
                return readFavourite(core, listId, favourites, {mask, value, 0, 0}, index, service,
                                     nullptr);
            });
    board.on<&a_qortvapi_favorite_list_get_svl_tsl_rec_by_index>(
            [&core](uint16_t listId, uint8_t favourites, uint32_t mask, uint32_t value,
                    uint32_t index, SVL_REC_T* service, TSL_REC_T* multiplex) {
                if (!writable(service) || !writable(multiplex)) {
                    return int32_t{TV_INVALID_ARGUMENT};
                }
                return readFavourite(core, listId, favourites, {mask, value, 0, 0}, index, service,
                                     multiplex);
            });
    board.on<&a_qortvapi_favorite_list_get_index_by_channel>(
            [&core](uint16_t listId, uint8_t favourites, uint32_t mask, uint32_t value,
                    uint32_t channelId, uint32_t* answer) {
                return findFavourite(
                        core, listId, favourites, {mask, value, 0, 0},
                        [&](const ChannelList&, const SVL_REC_T& record, uint32_t index) {
                            if (record.ui4_channel_id != channelId) return false;
                            put(answer, index);
                            return true;
                        });
            });
    board.on<&a_qortvapi_favoritelist_get_crnt_fav_lst_by_filter>([&core](FAV_LIST_T* answer) {
        if (!writable(answer)) return int32_t{TV_INVALID_ARGUMENT};
        return core.read([&](const ChannelLists& lists) -> int32_t {
            const ChannelList* list = lists.listOf(lists.current[0]);
            if (list == nullptr) return TV_NOT_FOUND;
            FAV_LIST_T block = {};
            block.ui2_svl_id = list->id;
            block.ui1_fav_list = kCurrentFavourites;
            for (const uint32_t channelId : list->favourites[kCurrentFavourites]) {
                const SVL_REC_T& record = list->byChannel(channelId)->record;
                block.at_entry[block.ui4_count++] = {channelId, record.ui2_channel_number,
                                                     record.ui2_svl_rec_id};
            }
            *answer = block;
            return TV_OK;
        });
    });
}

void plugEdits(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_favorite_list_add_tail>(
            [&core](uint16_t listId, uint8_t favourites, uint32_t channelId) {
                return edit(core, listId, favourites, [&](ChannelList& list, Favourites& entries) {
                    if (list.byChannel(channelId) == nullptr) return int32_t{TV_NOT_FOUND};
                    return insertAt(entries, channelId, entries.size());
                });
            });
    board.on<&a_qortvapi_favorite_list_add_all>(
            [&core](uint16_t listId, uint8_t favourites, uint32_t mask, uint32_t value) {
                return edit(core, listId, favourites, [&](ChannelList& list, Favourites& entries) {
                    const Match match{mask, value, 0, 0};
                    Favourites result = entries;
                    for (const Service& service : list.services) {
                        if (!match(service.record)) continue;
                        if (service.record.aui2_fav_index[favourites] != 0) continue;
                        if (result.size() >= FAV_LIST_MAX) return int32_t{TV_FULL};
                        result.push_back(service.record.ui4_channel_id);
                    }
                    entries = std::move(result);
                    return int32_t{TV_OK};
                });
            });
    board.on<&a_qortvapi_favorite_list_delete>([&core](uint16_t listId, uint8_t favourites,
                                                       uint32_t channelId) {
        return edit(core, listId, favourites,
                    [&](ChannelList&, Favourites& entries) { return erase(entries, channelId); });
    });
    board.on<&a_qortvapi_favorite_list_del_all>([&core](uint16_t listId, uint8_t favourites,
                                                        uint32_t mask, uint32_t value) {
        return edit(core, listId, favourites, [&](ChannelList& list, Favourites& entries) {
            const Match match{mask, value, 0, 0};
            const auto gone = [&](uint32_t id) { return match(list.byChannel(id)->record); };
            entries.erase(std::remove_if(entries.begin(), entries.end(), gone), entries.end());
            return int32_t{TV_OK};
        });
    });
    board.on<&a_qortvapi_favorite_list_swap_by_channel_id>(
            [&core](uint16_t listId, uint8_t favourites, uint32_t channelId, uint32_t otherId) {
                return edit(core, listId, favourites, [&](ChannelList&, Favourites& entries) {
                    return swap(entries, channelId, otherId);
                });
            });
    board.on<&a_qortvapi_channellist_swap_favorites>(
            [&core](uint8_t favourites, uint32_t channelId, uint32_t otherId, uint16_t listId) {
                return edit(core, listId, favourites, [&](ChannelList&, Favourites& entries) {
                    return swap(entries, channelId, otherId);
                });
            });
    board.on<&a_qortvapi_favorite_list_insert_move>([&core](uint16_t listId, uint8_t favourites,
                                                            uint32_t mask, uint32_t value,
                                                            uint32_t channelId, uint32_t position) {
        return edit(core, listId, favourites, [&](ChannelList& list, Favourites& entries) {
            if (list.byChannel(channelId) == nullptr) return int32_t{TV_NOT_FOUND};
            Favourites others = entries;
            erase(others, channelId);
            const size_t place = placeAmong(list, others, Match{mask, value, 0, 0}, position);
            return insertAt(entries, channelId, place);
        });
    });
    board.on<&a_qortvapi_channellist_set_favorites_by_id>(
            [&core](uint8_t favourites, uint32_t listId, uint32_t channelId, uint32_t position,
                    uint8_t, bool favourite, uint32_t* place) {
                return edit(core, listId, favourites, [&](ChannelList& list, Favourites& entries) {
                    if (list.byChannel(channelId) == nullptr) return int32_t{TV_NOT_FOUND};
                    if (!favourite) {
                        erase(entries, channelId);
                        put(place, 0);
                        return int32_t{TV_OK};
                    }
                    const size_t wanted = position == 0 ? entries.size() : position - 1;
                    const int32_t result = insertAt(entries, channelId, wanted);
                    if (result != TV_OK) return result;
                    const auto at = std::find(entries.begin(), entries.end(), channelId);
                    put(place, at - entries.begin() + 1);
                    return result;
                });
            });
}

void plugCurrent(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_favoritelist_add_favoritelist_channel>([&core] {
        return editCurrent(core, [](ChannelList&, Favourites& entries, uint32_t channelId) {
            return insertAt(entries, channelId, entries.size());
        });
    });
    board.on<&a_qortvapi_favoritelist_add_favoritelist_channel_by_index>([&core](uint16_t index) {
        return editCurrent(core, [=](ChannelList&, Favourites& entries, uint32_t channelId) {
            return insertAt(entries, channelId, index);
        });
    });
    const auto removeAt = [&core](uint16_t index) {
        return editCurrent(core, [=](ChannelList&, Favourites& entries, uint32_t) {
            if (index >= entries.size()) return int32_t{TV_NOT_FOUND};
            entries.erase(entries.begin() + index);
            return int32_t{TV_OK};
        });
    };
    // The icon is the screen's affair, so both do the same here.
    board.on<&a_qortvapi_favoritelist_remove_favoritelist_channel>(removeAt);
    board.on<&a_qortvapi_favoritelist_remove_favoritelist_channel_by_index_without_show_fav_icon>(
            removeAt);
    board.on<&a_qortvapi_favoritelist_swap_favoritelist_by_index>(
            [&core](uint16_t index, uint16_t other) {
                return editCurrent(core, [=](ChannelList&, Favourites& entries, uint32_t) {
                    if (index >= entries.size() || other >= entries.size()) {
                        return int32_t{TV_NOT_FOUND};
                    }
                    std::swap(entries[index], entries[other]);
                    return int32_t{TV_OK};
                });
            });
    // Every change is stored at once, so there is nothing left to store.
    board.on<&a_qortvapi_favoritelist_fs_store>([] { return int32_t{TV_OK}; });
}

}  // namespace

void plugFavourites(switchboard::Switchboard& board, Core& core) {
    plugReads(board, core);
    plugEdits(board, core);
    plugCurrent(board, core);
}

}  // namespace television
