// Snapshots: copies of a channel list or of the satellite list to which a client can go back.
#include <type_traits>

#include "middleware/channellist.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** Keeps a copy under a new id. TV_FULL when there are too many. */
template <typename Copies, typename Copy>
int32_t keep(Snapshots& snapshots, Copies& copies, const Copy& copy, uint32_t& id) {
    if (snapshots.lists.size() + snapshots.satellites.size() >= Snapshots::kMost) return TV_FULL;
    // Ids are positive as int32_t too: after INT32_MAX they start again.
    do {
        snapshots.last = snapshots.last >= INT32_MAX ? 1 : snapshots.last + 1;
    } while (snapshots.lists.count(snapshots.last) + snapshots.satellites.count(snapshots.last) >
             0);
    id = snapshots.last;
    copies.emplace(id, copy);
    return TV_OK;
}

/** Frees a copy. */
template <typename Copies>
int32_t release(Core& core, Copies Snapshots::*copies, uint32_t id) {
    return core.change([&](ChannelLists&, Identities&, Change&) -> int32_t {
        return (core.snapshots.*copies).erase(id) == 0 ? TV_NOT_FOUND : TV_OK;
    });
}

void restoreList(ChannelList& list, const ChannelList& copy, Identities& identities) {
    const uint32_t version = list.version;
    list = copy;
    list.version = version;
    list.arrange();
    for (const Service& service : list.services) {
        identities.hide(identityOf(service.record), false);
    }
    for (const TSL_REC_T& multiplex : list.multiplexes) {
        identities.hide(identityOf(multiplex), false);
    }
}

}  // namespace

void plugListSnapshots(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_channellist_create_snapshot>([&core](uint16_t listId, int32_t* to) {
        if (!writable(to)) return int32_t{TV_INVALID_ARGUMENT};
        return core.change([&](ChannelLists& lists, Identities&, Change&) -> int32_t {
            const ChannelList* list = lists.list(listId);
            if (list == nullptr) return TV_NOT_FOUND;
            uint32_t id = 0;
            const int32_t result = keep(core.snapshots, core.snapshots.lists, *list, id);
            if (result == TV_OK) *to = static_cast<int32_t>(id);
            return result;
        });
    });
    board.on<&a_qortvapi_channellist_restore_snapshot>([&core](int32_t id) {
        return core.change(
                [&](ChannelLists& lists, Identities& identities, Change& change) -> int32_t {
                    const auto found = core.snapshots.lists.find(static_cast<uint32_t>(id));
                    if (found == core.snapshots.lists.end()) return TV_NOT_FOUND;
                    ChannelList& list = *lists.list(found->second.id);
                    restoreList(list, found->second, identities);
                    change.listChanged(list, CHANNEL_LIST_NFY_RESTORED);
                    return TV_OK;
                });
    });
    board.on<&a_qortvapi_channellist_free_snapshot>([&core](int32_t id) {
        return release(core, &Snapshots::lists, static_cast<uint32_t>(id));
    });
    board.on<&a_qortvapi_satllist_create_snapshot>([&core](uint16_t listId, uint32_t* to) {
        if (!writable(to)) return int32_t{TV_INVALID_ARGUMENT};
        if (listId != SATL_ID_MAIN) return int32_t{TV_NOT_FOUND};
        return core.change([&](ChannelLists& lists, Identities&, Change&) -> int32_t {
            return keep(core.snapshots, core.snapshots.satellites, lists.satellites, *to);
        });
    });
    board.on<&a_qortvapi_satllist_restore_snapshot>([&core](uint32_t id) {
        return core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
            const auto found = core.snapshots.satellites.find(id);
            if (found == core.snapshots.satellites.end()) return TV_NOT_FOUND;
            lists.satellites = found->second;
            change.satellitesChanged(lists, 0);
            return TV_OK;
        });
    });
    board.on<&a_qortvapi_satllist_free_snapshot>(
            [&core](uint32_t id) { return release(core, &Snapshots::satellites, id); });
}

}  // namespace television
