// Writing records, swapping, deleting, and what this television has not.
#include <algorithm>
#include <cstring>
#include <set>

#include "calls.h"
#include "dvb_text.h"
#include "middleware/channellist.h"

namespace television {
namespace {

/** A field of a client's record as text, also when it lacks its NUL. */
template <size_t N>
std::string text(const char (&field)[N]) {
    return std::string(field, strnlen(field, N));
}

/** Writes the name, number and masks of `wanted` into the service, and notes what is the
 * application's now. */
int32_t writeService(ChannelList& list, const SVL_REC_T& wanted) {
    Service* service = list.byChannel(wanted.ui4_channel_id);
    if (service == nullptr) return TV_NOT_FOUND;
    SVL_REC_T& record = service->record;
    if (wanted.ui2_channel_number == 0) return TV_INVALID_ARGUMENT;
    if (wanted.ui2_channel_number != record.ui2_channel_number) {
        if (list.byNumber(wanted.ui2_channel_number) != nullptr) return TV_BUSY;
        record.ui2_channel_number = wanted.ui2_channel_number;
        service->own |= kOwnNumber;
    }
    if (text(wanted.s_service_name) != text(record.s_service_name)) {
        copyText(record.s_service_name, text(wanted.s_service_name));
        service->own |= kOwnName;
    }
    if (((wanted.ui4_nw_mask ^ record.ui4_nw_mask) & kShownBits) != 0) {
        record.ui4_nw_mask = (record.ui4_nw_mask & ~kShownBits) | (wanted.ui4_nw_mask & kShownBits);
        service->own |= kOwnShown;
    }
    record.ui4_option_mask = wanted.ui4_option_mask;
    return TV_OK;
}

int32_t writeMultiplex(ChannelList& list, const TSL_REC_T& wanted) {
    TSL_REC_T* multiplex = list.multiplex(wanted.ui2_tsl_rec_id);
    if (multiplex == nullptr) return TV_NOT_FOUND;
    copyText(multiplex->s_network_name, text(wanted.s_network_name));
    return TV_OK;
}

int32_t writeRecords(Core& core, bool notify, uint32_t listId, uint32_t svlHandle,
                     uint32_t tslHandle, uint32_t operation, const SVL_REC_T* service,
                     const TSL_REC_T* multiplex) {
    const bool withService = operation != CHANNEL_WRITE_MULTIPLEX;
    const bool withMultiplex = operation != CHANNEL_WRITE_SERVICE;
    if (operation > CHANNEL_WRITE_MULTIPLEX) return TV_NOT_SUPPORTED;
    if ((withService && service == nullptr) || (withMultiplex && multiplex == nullptr)) {
        return TV_INVALID_ARGUMENT;
    }
    return core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
        ChannelList* list = lists.list(listId);
        if (list == nullptr) return TV_NOT_FOUND;
        if (svlHandle != 0 && handleId(svlHandle, kServiceListHandle) != listId)
            return TV_NOT_FOUND;
        if (tslHandle != 0 && handleId(tslHandle, kMultiplexListHandle) != listId) {
            return TV_NOT_FOUND;
        }
        if (withMultiplex && list->multiplex(multiplex->ui2_tsl_rec_id) == nullptr) {
            return TV_NOT_FOUND;
        }
        if (withService) {
            const int32_t result = writeService(*list, *service);
            if (result != TV_OK) return result;
        }
        if (withMultiplex) writeMultiplex(*list, *multiplex);
        list->arrange();
        const uint32_t channelId = withService ? service->ui4_channel_id : 0;
        if (withMultiplex) {
            change.list(*list, CHANNEL_LIST_NFY_CHANGED, channelId);
        } else {
            change.service(*list, channelId, CHANNEL_LIST_NFY_CHANGED);
        }
        if (!notify) change.events.clear();
        return TV_OK;
    });
}

/** Takes services out of a list and remembers that the application did it. Answers how many. */
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

/** Selects nothing where the selected channel was deleted. */
void dropSelection(ChannelLists& lists, Change& change) {
    for (size_t window = 0; window < lists.current.size(); ++window) {
        if (lists.current[window] == 0 || lists.listOf(lists.current[window]) != nullptr) continue;
        lists.current[window] = 0;
        change.selection(lists, window);
    }
}

/** Deletes services, and with `multiplexes` their multiplexes as far as nothing else is left in
 * them. */
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
        change.list(*list, CHANNEL_LIST_NFY_DELETED);
        dropSelection(lists, change);
        return TV_OK;
    });
}

/** Channels of one broadcast standard (0: any). */
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
        change.list(*list, CHANNEL_LIST_NFY_DELETED);
        dropSelection(lists, change);
        return TV_OK;
    });
}

void plugDeletion(switchboard::Switchboard& board, Core& core) {
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

void plugSettings(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_channellist_getChannelListMode>([](uint16_t* mode) {
        if (!writable(mode)) return int32_t{TV_INVALID_ARGUMENT};
        *mode = CHANNEL_LIST_MODE_BY_MEDIUM;
        return int32_t{TV_OK};
    });
    board.on<&a_qortvapi_channellist_getChannelPumpVer>([&core](int32_t listId, uint32_t* version) {
        return core.read([&](const ChannelLists& lists) -> int32_t {
            const ChannelList* list = lists.list(static_cast<uint32_t>(listId));
            if (list == nullptr) return TV_NOT_FOUND;
            put(version, list->pumpVersion);
            return TV_OK;
        });
    });
    board.on<&a_qortvapi_channellist_setChannelPumpVer>([&core](uint32_t listId, uint32_t version) {
        return core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
            ChannelList* list = lists.list(listId);
            if (list == nullptr) return TV_NOT_FOUND;
            list->pumpVersion = version;
            change.stored.settings = true;
            return TV_OK;
        });
    });
}

/** Functions of operators' and one-list modes, which this television has not. */
void plugUnsupported(switchboard::Switchboard& board) {
    board.on<&a_qortvapi_channellist_interface>(
            [](auto&&...) { return int32_t{TV_NOT_SUPPORTED}; });
    board.on<&a_qortvapi_channellist_slide_for_one_part_channel_id>(
            [](auto&&...) { return int32_t{TV_NOT_SUPPORTED}; });
    board.on<&a_qortvapi_one_channellist_arrange_before>(
            [](auto&&...) { return int32_t{TV_NOT_SUPPORTED}; });
    board.on<&a_qortvapi_one_channellist_add_channel_to_max>(
            [](auto&&...) { return int32_t{TV_NOT_SUPPORTED}; });
}

}  // namespace

void plugChannelWrites(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_channellist_set_svl_tsl_rec_info>(
            [&core](uint32_t listId, uint32_t, uint16_t, uint32_t svlHandle, uint32_t tslHandle,
                    uint32_t operation, const SVL_REC_T* service, const TSL_REC_T* multiplex) {
                return writeRecords(core, true, listId, svlHandle, tslHandle, operation, service,
                                    multiplex);
            });
    board.on<&a_qortvapi_channellist_set_svl_tsl_rec_info_without_notify>(
            [&core](uint32_t listId, uint32_t, uint16_t, uint32_t svlHandle, uint32_t tslHandle,
                    uint32_t operation, const SVL_REC_T* service, const TSL_REC_T* multiplex) {
                return writeRecords(core, false, listId, svlHandle, tslHandle, operation, service,
                                    multiplex);
            });
    board.on<&a_qortvapi_channellist_swap_channels>([&core](uint32_t channelId, uint32_t otherId,
                                                            uint16_t listId) {
        return core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
            ChannelList* list = lists.list(listId);
            if (list == nullptr) return TV_NOT_FOUND;
            Service* one = list->byChannel(channelId);
            Service* other = list->byChannel(otherId);
            if (one == nullptr || other == nullptr) return TV_NOT_FOUND;
            std::swap(one->record.ui2_channel_number, other->record.ui2_channel_number);
            one->own |= kOwnNumber;
            other->own |= kOwnNumber;
            list->arrange();
            change.service(*list, channelId, CHANNEL_LIST_NFY_MOVED);
            change.stored.services.insert({listId, otherId});
            return TV_OK;
        });
    });
    plugDeletion(board, core);
    plugSettings(board, core);
    plugUnsupported(board);
}

}  // namespace television
