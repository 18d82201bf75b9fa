// Deleting channels and multiplexes of a list.
#include <algorithm>
#include <iterator>
#include <set>

#include "middleware/channellist.h"
#include "middleware/result_codes.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** Removes the services for which `doomed(record)` is true, and marks them as removed by the
 * application: loads of the streams leave them out. Returns how many. */
template <typename Doomed>
size_t removeServices(ChannelList& list, Identities& identities, Doomed doomed) {
    const size_t before = list.services.size();
    list.services.erase(std::remove_if(list.services.begin(), list.services.end(),
                                       [&](const Service& service) {
                                           if (!doomed(service.record)) return false;
                                           identities.hide(identityOf(service.record), true);
                                           return true;
                                       }),
                        list.services.end());
    return before - list.services.size();
}

template <typename Doomed>
void removeMultiplexes(ChannelList& list, Identities& identities, Doomed doomed) {
    list.multiplexes.erase(std::remove_if(list.multiplexes.begin(), list.multiplexes.end(),
                                          [&](const TSL_REC_T& multiplex) {
                                              if (!doomed(multiplex)) return false;
                                              identities.hide(identityOf(multiplex), true);
                                              return true;
                                          }),
                           list.multiplexes.end());
}

/** Ends the selection in each window whose channel was deleted. */
void dropSelection(ChannelLists& lists, Change& change) {
    for (size_t window = 0; window < lists.current.size(); ++window) {
        if (lists.current[window] == 0 || lists.listOf(lists.current[window]) != nullptr) continue;
        lists.current[window] = 0;
        change.selectionChanged(lists, window);
    }
}

/** Deletes services, and with `multiplexes` those of their multiplexes that are empty then. */
template <typename Doomed>
int32_t deleteServices(Core& core, uint32_t listId, bool multiplexes, Doomed doomed) {
    return core.change([&](ChannelLists& lists, Identities& identities, Change& change) -> int32_t {
        ChannelList* list = lists.list(listId);
        if (list == nullptr) return TV_NOT_FOUND;
        std::set<uint16_t> touched;
        const size_t removed = removeServices(*list, identities, [&](const SVL_REC_T& record) {
            if (!doomed(*list, record)) return false;
            touched.insert(record.ui2_tsl_rec_id);
            return true;
        });
        if (removed == 0) return TV_NOT_FOUND;
        if (multiplexes) {
            for (const Service& service : list->services) {
                touched.erase(service.record.ui2_tsl_rec_id);
            }
            removeMultiplexes(*list, identities, [&](const TSL_REC_T& multiplex) {
                return touched.count(multiplex.ui2_tsl_rec_id) != 0;
            });
        }
        list->arrange();
        change.listChanged(*list, CHANNEL_LIST_NFY_DELETED);
        dropSelection(lists, change);
        return TV_OK;
    });
}

// What is to be deleted:

/** Channels of a broadcast type (BRDCST_TYPE_…, 0: any). */
auto ofBroadcastType(uint8_t type) {
    return [type](const ChannelList&, const SVL_REC_T& record) {
        return type == BRDCST_TYPE_UNKNOWN || record.ui1_brdcst_type == type;
    };
}

auto ofSatellite(uint32_t satelliteId, bool keepFavourites) {
    return [=](const ChannelList& list, const SVL_REC_T& record) {
        const TSL_REC_T* multiplex = list.multiplex(record.ui2_tsl_rec_id);
        if (multiplex == nullptr || multiplex->ui2_satl_rec_id != satelliteId) return false;
        const bool favourite =
                std::any_of(std::begin(record.aui2_fav_index), std::end(record.aui2_fav_index),
                            [](uint16_t place) { return place != 0; });
        return !(keepFavourites && favourite);
    };
}

int32_t clean(Core& core, uint16_t listId, bool multiplexes) {
    return core.change([&](ChannelLists& lists, Identities& identities, Change& change) -> int32_t {
        ChannelList* list = lists.list(listId);
        if (list == nullptr) return TV_NOT_FOUND;
        removeServices(*list, identities, [](const SVL_REC_T&) { return true; });
        if (multiplexes) {
            removeMultiplexes(*list, identities, [](const TSL_REC_T&) { return true; });
        }
        list->arrange();
        change.listChanged(*list, CHANNEL_LIST_NFY_DELETED);
        dropSelection(lists, change);
        return TV_OK;
    });
}

}  // namespace

void plugChannelDeletion(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_channellist_delete_channel_without_lcn>(
            [&core](uint16_t listId, uint16_t recordId) {
                return deleteServices(core, listId, false,
                                      [=](const ChannelList&, const SVL_REC_T& record) {
                                          return record.ui2_svl_rec_id == recordId;
                                      });
            });
    board.on<&a_qortvapi_channellist_delete_by_brdcst>([&core](uint16_t listId, uint8_t type) {
        return deleteServices(core, listId, false, ofBroadcastType(type));
    });
    board.on<&a_qortvapi_channellist_and_ts_del_by_brdcst>([&core](uint16_t listId, uint8_t type) {
        return deleteServices(core, listId, true, ofBroadcastType(type));
    });
    board.on<&a_qortvapi_channellist_and_ts_lol_del_by_brdcst>(
            [&core](uint16_t listId, uint8_t type) {
                return deleteServices(core, listId, true, ofBroadcastType(type));
            });
    board.on<&a_qortvapi_channellist_delete_by_satl>([&core](uint16_t listId, uint32_t satelliteId,
                                                             bool keepFavourites) {
        return deleteServices(core, listId, false, ofSatellite(satelliteId, keepFavourites));
    });
    board.on<&a_qortvapi_channellist_del_tsl_svl_rec_by_satl_rec_id>(
            [&core](uint16_t listId, uint16_t satelliteId, bool keepFavourites) {
                return deleteServices(core, listId, true, ofSatellite(satelliteId, keepFavourites));
            });
    board.on<&a_qortvapi_channellist_del_tsl_svl_rec_by_tsl_rec_id>([&core](uint16_t listId,
                                                                            uint16_t multiplexId) {
        return deleteServices(core, listId, true, [=](const ChannelList&, const SVL_REC_T& record) {
            return record.ui2_tsl_rec_id == multiplexId;
        });
    });
    board.on<&a_qortvapi_channellist_svl_tsl_lol_clean>(
            [&core](uint16_t listId, bool multiplexes, bool) {
                return clean(core, listId, multiplexes);
            });
    board.on<&a_qortvapi_channellist_clean_lol>([](uint16_t listId) {
        return int32_t{listId >= 1 && listId <= kListCount ? TV_OK : TV_NOT_FOUND};
    });
}

}  // namespace television
