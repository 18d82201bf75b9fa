// The favourite lists of a channel list: reading and changing them.
#include <algorithm>
#include <utility>

#include "middleware/channellist.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/modules/channel_list/favourite_edits.h"
#include "television/modules/channel_list/handles.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** Changes a favourite list by `edit(list, favourites)`, stores it and notifies handlers. Returns
 * the result of `edit`, which leaves the list as it is when that is negative. */
template <typename Edit>
int32_t edit(Core& core, uint32_t listId, uint8_t favourites, Edit edit) {
    if (favourites >= FAV_LIST_COUNT) return TV_INVALID_ARGUMENT;
    return core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
        ChannelList* list = lists.list(listId);
        if (list == nullptr) return TV_NOT_FOUND;
        const int32_t result = edit(*list, list->favourites[favourites]);
        if (result < 0) return result;
        list->arrange();
        change.favouritesChanged(*list);
        return result;
    });
}

/** Calls `visit(list, record, index)` for each matching favourite, in order, until it returns true:
 * TV_OK then, else TV_NOT_FOUND. `index` counts the matching ones. */
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

/** Returns the place in the whole list of the matching favourite at `position`, counted from 0
 * among the matching ones; the end when there are fewer. */
size_t placeAmong(const ChannelList& list, const Favourites& favourites, const Match& match,
                  uint32_t position) {
    for (size_t place = 0; place < favourites.size(); ++place) {
        if (match(list.byChannel(favourites[place])->record) && position-- == 0) return place;
    }
    return favourites.size();
}

/** Adds all matching channels of the list that are not in the favourite list. */
int32_t addMatching(const ChannelList& list, Favourites& entries, uint8_t favourites,
                    const Match& match) {
    Favourites result = entries;
    for (const Service& service : list.services) {
        if (!match(service.record)) continue;
        if (service.record.aui2_fav_index[favourites] != 0) continue;
        if (result.size() >= FAV_LIST_MAX) return TV_FULL;
        result.push_back(service.record.ui4_channel_id);
    }
    entries = std::move(result);
    return TV_OK;
}

int32_t eraseMatching(const ChannelList& list, Favourites& entries, const Match& match) {
    const auto gone = [&](uint32_t id) { return match(list.byChannel(id)->record); };
    entries.erase(std::remove_if(entries.begin(), entries.end(), gone), entries.end());
    return TV_OK;
}

/** Puts a channel of the list before the matching favourite at `position`. */
int32_t insertAmong(const ChannelList& list, Favourites& entries, uint32_t channelId,
                    const Match& match, uint32_t position) {
    if (list.byChannel(channelId) == nullptr) return TV_NOT_FOUND;
    Favourites others = entries;
    eraseFavourite(others, channelId);
    return insertFavourite(entries, channelId, placeAmong(list, others, match, position));
}

/** Makes a channel of the list a favourite, at a position from 1, or with 0 at the end, or none.
 * Writes its place from 1; 0: it is none. */
int32_t setFavourite(const ChannelList& list, Favourites& entries, uint32_t channelId,
                     bool favourite, uint32_t position, uint32_t* place) {
    if (list.byChannel(channelId) == nullptr) return TV_NOT_FOUND;
    if (!favourite) {
        eraseFavourite(entries, channelId);
        put(place, 0);
        return TV_OK;
    }
    const size_t wanted = position == 0 ? entries.size() : position - 1;
    const int32_t result = insertFavourite(entries, channelId, wanted);
    if (result != TV_OK) return result;
    const auto at = std::find(entries.begin(), entries.end(), channelId);
    put(place, at - entries.begin() + 1);
    return result;
}

void plugFavouriteReads(switchboard::Switchboard& board, Core& core) {
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
                    uint32_t channelId, uint32_t* to) {
                return findFavourite(
                        core, listId, favourites, {mask, value, 0, 0},
                        [&](const ChannelList&, const SVL_REC_T& record, uint32_t index) {
                            if (record.ui4_channel_id != channelId) return false;
                            put(to, index);
                            return true;
                        });
            });
}

void plugEdits(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_favorite_list_add_tail>(
            [&core](uint16_t listId, uint8_t favourites, uint32_t channelId) {
                return edit(core, listId, favourites, [&](ChannelList& list, Favourites& entries) {
                    if (list.byChannel(channelId) == nullptr) return int32_t{TV_NOT_FOUND};
                    return insertFavourite(entries, channelId, entries.size());
                });
            });
    board.on<&a_qortvapi_favorite_list_add_all>(
            [&core](uint16_t listId, uint8_t favourites, uint32_t mask, uint32_t value) {
                return edit(core, listId, favourites, [&](ChannelList& list, Favourites& entries) {
                    return addMatching(list, entries, favourites, {mask, value, 0, 0});
                });
            });
    board.on<&a_qortvapi_favorite_list_delete>(
            [&core](uint16_t listId, uint8_t favourites, uint32_t channelId) {
                return edit(core, listId, favourites, [&](ChannelList&, Favourites& entries) {
                    return eraseFavourite(entries, channelId);
                });
            });
    board.on<&a_qortvapi_favorite_list_del_all>(
            [&core](uint16_t listId, uint8_t favourites, uint32_t mask, uint32_t value) {
                return edit(core, listId, favourites, [&](ChannelList& list, Favourites& entries) {
                    return eraseMatching(list, entries, {mask, value, 0, 0});
                });
            });
    board.on<&a_qortvapi_favorite_list_swap_by_channel_id>(
            [&core](uint16_t listId, uint8_t favourites, uint32_t channelId, uint32_t otherId) {
                return edit(core, listId, favourites, [&](ChannelList&, Favourites& entries) {
                    return swapFavourites(entries, channelId, otherId);
                });
            });
    board.on<&a_qortvapi_channellist_swap_favorites>(
            [&core](uint8_t favourites, uint32_t channelId, uint32_t otherId, uint16_t listId) {
                return edit(core, listId, favourites, [&](ChannelList&, Favourites& entries) {
                    return swapFavourites(entries, channelId, otherId);
                });
            });
    board.on<&a_qortvapi_favorite_list_insert_move>([&core](uint16_t listId, uint8_t favourites,
                                                            uint32_t mask, uint32_t value,
                                                            uint32_t channelId, uint32_t position) {
        return edit(core, listId, favourites, [&](ChannelList& list, Favourites& entries) {
            return insertAmong(list, entries, channelId, {mask, value, 0, 0}, position);
        });
    });
    board.on<&a_qortvapi_channellist_set_favorites_by_id>(
            [&core](uint8_t favourites, uint32_t listId, uint32_t channelId, uint32_t position,
                    uint8_t, bool favourite, uint32_t* place) {
                return edit(core, listId, favourites, [&](ChannelList& list, Favourites& entries) {
                    return setFavourite(list, entries, channelId, favourite, position, place);
                });
            });
}

}  // namespace

void plugFavourites(switchboard::Switchboard& board, Core& core) {
    plugFavouriteReads(board, core);
    plugEdits(board, core);
}

}  // namespace television
