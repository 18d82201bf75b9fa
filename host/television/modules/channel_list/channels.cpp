// Single channels, the current one and its selection, list handles, the database lock.
#include "middleware/channellist.h"
#include "middleware/result_codes.h"
#include "television/core/channel_selection.h"
#include "television/core/client_memory.h"
#include "television/modules/channel_list/handles.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** Reads a channel of the list `listId`; 0: of any list. */
int32_t readChannel(const Core& core, uint32_t listId, uint32_t channelId, SVL_REC_T* service,
                    TSL_REC_T* multiplex) {
    return core.read([&](const ChannelLists& lists) -> int32_t {
        const ChannelList* list = listId != 0 ? lists.list(listId) : lists.listOf(channelId);
        const Service* found = list == nullptr ? nullptr : list->byChannel(channelId);
        if (found == nullptr) return TV_NOT_FOUND;
        putPair(*list, found->record, service, multiplex);
        return TV_OK;
    });
}

int32_t readCurrent(const Core& core, size_t window, uint16_t* listId, SVL_REC_T* service,
                    TSL_REC_T* multiplex) {
    return core.read([&](const ChannelLists& lists) -> int32_t {
        const uint32_t channelId = lists.current[window];
        const ChannelList* list = lists.listOf(channelId);
        if (list == nullptr) return TV_NOT_FOUND;
        put(listId, list->id);
        putPair(*list, list->byChannel(channelId)->record, service, multiplex);
        return TV_OK;
    });
}

int32_t select(Core& core, size_t window, uint32_t listId, uint32_t channelId) {
    return core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
        const ChannelList* list = lists.listOf(channelId);
        if (list == nullptr || (listId != 0 && list->id != listId)) return TV_NOT_FOUND;
        selectChannel(lists, window, channelId, change);
        return TV_OK;
    });
}

/** Returns a value of RF_INFO_…. */
int32_t receptionValue(const TSL_REC_T& multiplex, uint32_t item) {
    switch (item) {
        case RF_INFO_FREQUENCY_KHZ:
            return static_cast<int32_t>(multiplex.ui4_frequency_khz);
        case RF_INFO_SYMBOL_RATE:
            return static_cast<int32_t>(multiplex.ui4_symbol_rate);
        case RF_INFO_BANDWIDTH_HZ:
            return static_cast<int32_t>(multiplex.ui4_bandwidth_hz);
        case RF_INFO_MODULATION:
            return multiplex.ui1_modulation;
        case RF_INFO_POLARIZATION:
            return multiplex.ui1_polarization;
        case RF_INFO_FEC_INNER:
            return multiplex.ui1_fec_inner;
        default:
            return TV_INVALID_ARGUMENT;
    }
}

/** Writes the handle of the list `id`; TV_NOT_FOUND unless `exists(id)`. */
template <typename Exists>
int32_t putHandle(HandleKind kind, uint32_t id, uint32_t* handle, Exists exists) {
    if (!writable(handle)) return TV_INVALID_ARGUMENT;
    if (!exists(id)) return TV_NOT_FOUND;
    *handle = makeHandle(kind, id);
    return TV_OK;
}

bool isList(uint32_t id) {
    return id >= 1 && id <= kListCount;
}

void plugHandles(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_channellist_get_svl_handle_by_svl_id>([](uint16_t id, uint32_t* handle) {
        return putHandle(kServiceListHandle, id, handle, isList);
    });
    board.on<&a_qortvapi_channellist_get_tsl_handle_by_svl_id>([](uint16_t id, uint32_t* handle) {
        return putHandle(kMultiplexListHandle, id, handle, isList);
    });
    board.on<&a_qortvapi_channellist_get_lol_handle_by_lol_id>([](uint16_t id, uint32_t* handle) {
        return putHandle(kLogicalChannelListHandle, id, handle, isList);
    });
    board.on<&a_qortvapi_channellist_get_satl_handle_by_satl_id>([](uint16_t id, uint32_t* handle) {
        return putHandle(kSatelliteListHandle, id, handle,
                         [](uint32_t list) { return list == SATL_ID_MAIN; });
    });
    board.on<&a_qortvapi_channellist_get_svl_info_by_brdcast_medium>(
            [](uint8_t medium, uint16_t* svlId, uint16_t* tslId, uint32_t* handle) -> int32_t {
                if (medium < BRDCST_MEDIUM_DIG_TERRESTRIAL ||
                    medium > BRDCST_MEDIUM_DIG_SATELLITE) {
                    return TV_NOT_FOUND;
                }
                put(svlId, listIdOf(medium));
                put(tslId, listIdOf(medium));
                put(handle, makeHandle(kServiceListHandle, listIdOf(medium)));
                return TV_OK;
            });
    board.on<&a_qortvapi_channellist_get_svl_tsl_rec_by_handle>(
            [&core](uint32_t svlHandle, uint32_t tslHandle, uint16_t index, uint32_t* svlVersion,
                    uint32_t* tslVersion, SVL_REC_T* service, TSL_REC_T* multiplex) {
                return core.read([&](const ChannelLists& lists) -> int32_t {
                    const ChannelList* list = lists.list(handleId(svlHandle, kServiceListHandle));
                    if (list == nullptr || handleId(tslHandle, kMultiplexListHandle) != list->id) {
                        return TV_NOT_FOUND;
                    }
                    if (index >= list->services.size()) return TV_NOT_FOUND;
                    if (!writable(service) || !writable(multiplex)) return TV_INVALID_ARGUMENT;
                    put(svlVersion, list->version);
                    put(tslVersion, list->version);
                    putPair(*list, list->services[index].record, service, multiplex);
                    return TV_OK;
                });
            });
    board.on<&c_svl_get_rec>(
            [&core](uint32_t handle, uint16_t recordId, SVL_REC_T* service, uint32_t* version) {
                return core.read([&](const ChannelLists& lists) -> int32_t {
                    const ChannelList* list = lists.list(handleId(handle, kServiceListHandle));
                    const Service* found = list == nullptr ? nullptr : list->byRecord(recordId);
                    if (found == nullptr) return TV_NOT_FOUND;
                    put(version, list->version);
                    put(service, found->record);
                    return TV_OK;
                });
            });
    board.on<&c_tsl_get_rec>(
            [&core](uint32_t handle, uint16_t recordId, TSL_REC_T* multiplex, uint32_t* version) {
                return core.read([&](const ChannelLists& lists) -> int32_t {
                    const ChannelList* list = lists.list(handleId(handle, kMultiplexListHandle));
                    const TSL_REC_T* found = list == nullptr ? nullptr : list->multiplex(recordId);
                    if (found == nullptr) return TV_NOT_FOUND;
                    put(version, list->version);
                    put(multiplex, *found);
                    return TV_OK;
                });
            });
}

void plugSelection(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_channellist_get_current_chan_id>([&core] {
        return core.read([](const ChannelLists& lists) {
            return lists.current[0] == 0 ? int32_t{TV_NOT_FOUND}
                                         : static_cast<int32_t>(lists.current[0]);
        });
    });
    board.on<&a_qortvapi_channellist_get_current_channel>(
            [&core](uint16_t* listId, SVL_REC_T* service, TSL_REC_T* multiplex) {
                return readCurrent(core, 0, listId, service, multiplex);
            });
    board.on<&a_qortvapi_channellist_get_current_channel_from_nav>(
            [&core](uint8_t window, uint16_t* listId, SVL_REC_T* service, TSL_REC_T* multiplex) {
                if (window > 1) return int32_t{TV_INVALID_ARGUMENT};
                return readCurrent(core, window, listId, service, multiplex);
            });
    board.on<&a_qortvapi_channellist_set_current_channel>(
            [&core](uint32_t channelId) { return select(core, 0, 0, channelId); });
    board.on<&a_qortvapi_channellist_set_current_channel_by_svlId>(
            [&core](uint16_t listId, uint32_t channelId) {
                return listId == 0 ? int32_t{TV_NOT_FOUND} : select(core, 0, listId, channelId);
            });
    board.on<&a_qortvapi_channellist_set_2nd_current_channel_by_svlId>(
            [&core](uint16_t listId, uint32_t channelId) {
                return listId == 0 ? int32_t{TV_NOT_FOUND} : select(core, 1, listId, channelId);
            });
}

}  // namespace

void plugChannels(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_channellist_lock_database>(
            [&core](uint32_t, uint32_t) { return core.channelLock.lock(); });
    board.on<&a_qortvapi_channellist_unlock_database>(
            [&core](uint32_t, uint32_t) { return core.channelLock.unlock(); });
    board.on<&a_qortvapi_channellist_get_channel_by_id>(
            [&core](uint32_t channelId, uint16_t listId, SVL_REC_T* service, TSL_REC_T* multiplex) {
                return readChannel(core, listId, channelId, service, multiplex);
            });
    board.on<&a_qortvapi_channellist_get_svl_rec_by_channel_id>(
            [&core](uint16_t listId, uint32_t channelId, SVL_REC_T* service) {
                return readChannel(core, listId, channelId, service, nullptr);
            });
    board.on<&a_qortvapi_channellist_get_channel_number>([&core](uint32_t channelId) {
        SVL_REC_T service = {};
        const int32_t result = readChannel(core, 0, channelId, &service, nullptr);
        return result == TV_OK ? int32_t{service.ui2_channel_number} : result;
    });
    board.on<&a_qortvapi_channellist_get_channel_rf_info>(
            [&core](uint16_t listId, uint32_t channelId, uint32_t item) {
                SVL_REC_T service = {};
                TSL_REC_T multiplex = {};
                const int32_t result = readChannel(core, listId, channelId, &service, &multiplex);
                return result == TV_OK ? receptionValue(multiplex, item) : result;
            });
    board.on<&a_qortvapi_channellist_get_svl_tsl_rec_by_svl_rec_id>(
            [&core](uint16_t listId, uint16_t recordId, SVL_REC_T* service, TSL_REC_T* multiplex) {
                return core.read([&](const ChannelLists& lists) -> int32_t {
                    const ChannelList* list = lists.list(listId);
                    const Service* found = list == nullptr ? nullptr : list->byRecord(recordId);
                    if (found == nullptr) return TV_NOT_FOUND;
                    putPair(*list, found->record, service, multiplex);
                    return TV_OK;
                });
            });
    plugHandles(board, core);
    plugSelection(board, core);
}

}  // namespace television
