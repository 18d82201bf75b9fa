// Changing and swapping channels and multiplexes; versions and modes; functions not supported.
#include <algorithm>
#include <cstring>

#include "middleware/channellist.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/modules/channel_list/handles.h"
#include "television/modules/modules.h"
#include "television/stream/dvb_text.h"

namespace television {
namespace {

/** Returns the text in a field of a client's record, which may lack its NUL. */
template <size_t N>
std::string text(const char (&field)[N]) {
    return std::string(field, strnlen(field, N));
}

/** Writes the name, number and masks of `wanted` into the service. What has changed is marked as
 * edited: scans keep it. */
int32_t writeService(ChannelList& list, const SVL_REC_T& wanted) {
    Service* service = list.byChannel(wanted.ui4_channel_id);
    if (service == nullptr) return TV_NOT_FOUND;
    SVL_REC_T& record = service->record;
    if (wanted.ui2_channel_number == 0) return TV_INVALID_ARGUMENT;
    if (wanted.ui2_channel_number != record.ui2_channel_number) {
        if (list.byNumber(wanted.ui2_channel_number) != nullptr) return TV_BUSY;
        record.ui2_channel_number = wanted.ui2_channel_number;
        service->edited |= kEditedNumber;
    }
    if (text(wanted.s_service_name) != text(record.s_service_name)) {
        copyText(record.s_service_name, text(wanted.s_service_name));
        service->edited |= kEditedName;
    }
    if (((wanted.ui4_nw_mask ^ record.ui4_nw_mask) & kShownBits) != 0) {
        record.ui4_nw_mask = (record.ui4_nw_mask & ~kShownBits) | (wanted.ui4_nw_mask & kShownBits);
        service->edited |= kEditedShown;
    }
    record.ui4_option_mask = wanted.ui4_option_mask;
    return TV_OK;
}

/** Writes the network name of `wanted` into the multiplex, whose other fields are the stream's. */
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
            change.listChanged(*list, CHANNEL_LIST_NFY_CHANGED, channelId);
        } else {
            change.serviceChanged(*list, channelId, CHANNEL_LIST_NFY_CHANGED);
        }
        if (!notify) change.notifications.clear();
        return TV_OK;
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
            change.dirty.settings = true;
            return TV_OK;
        });
    });
}

/** Functions of operator modes and of the mode with one list for all media, which this television
 * does not have. */
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
            one->edited |= kEditedNumber;
            other->edited |= kEditedNumber;
            list->arrange();
            change.serviceChanged(*list, channelId, CHANNEL_LIST_NFY_MOVED);
            change.dirty.services.insert({listId, otherId});
            return TV_OK;
        });
    });
    plugSettings(board, core);
    plugUnsupported(board);
}

}  // namespace television
