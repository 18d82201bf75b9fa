// The first favourite list of the channel list that has the current channel: functions
// favoritelist_….
#include <utility>

#include "middleware/channellist.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/modules/channel_list/favourite_edits.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** The favourite list of the functions favoritelist_…, which name none. */
constexpr uint8_t kCurrentFavourites = 0;

/** Changes the favourite list by `edit(list, favourites, channelId)`, where `channelId` is the
 * current channel, stores it and notifies handlers. Returns the result of `edit`, which leaves the
 * list as it is when that is negative. */
template <typename Edit>
int32_t editCurrent(Core& core, Edit edit) {
    return core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
        const uint32_t channelId = lists.current[0];
        ChannelList* list = lists.listOf(channelId);
        if (list == nullptr) return TV_NOT_FOUND;
        const int32_t result = edit(*list, list->favourites[kCurrentFavourites], channelId);
        if (result < 0) return result;
        list->arrange();
        change.favouritesChanged(*list);
        return result;
    });
}

int32_t readCurrent(const Core& core, FAV_LIST_T* to) {
    if (!writable(to)) return TV_INVALID_ARGUMENT;
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
        *to = block;
        return TV_OK;
    });
}

}  // namespace

void plugCurrentFavourites(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_favoritelist_get_crnt_fav_lst_by_filter>(
            [&core](FAV_LIST_T* to) { return readCurrent(core, to); });
    board.on<&a_qortvapi_favoritelist_add_favoritelist_channel>([&core] {
        return editCurrent(core, [](ChannelList&, Favourites& entries, uint32_t channelId) {
            return insertFavourite(entries, channelId, entries.size());
        });
    });
    board.on<&a_qortvapi_favoritelist_add_favoritelist_channel_by_index>([&core](uint16_t index) {
        return editCurrent(core, [=](ChannelList&, Favourites& entries, uint32_t channelId) {
            return insertFavourite(entries, channelId, index);
        });
    });
    const auto removeAt = [&core](uint16_t index) {
        return editCurrent(core, [=](ChannelList&, Favourites& entries, uint32_t) {
            if (index >= entries.size()) return int32_t{TV_NOT_FOUND};
            entries.erase(entries.begin() + index);
            return int32_t{TV_OK};
        });
    };
    // They differ by the icon on the screen, which this television does not draw.
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
    // Every change is stored when it is made, so there is nothing left to do.
    board.on<&a_qortvapi_favoritelist_fs_store>([] { return int32_t{TV_OK}; });
}

}  // namespace television
