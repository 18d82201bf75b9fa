#include "television/core/channel_selection.h"

#include "middleware/channellist.h"

namespace television {
namespace {

bool isShown(const Service& service) {
    return (service.record.ui4_nw_mask & SB_VNET_VISIBLE) != 0;
}

uint32_t idOf(const Service* service) {
    return service == nullptr ? 0 : service->record.ui4_channel_id;
}

}  // namespace

void selectChannel(ChannelLists& lists, size_t window, uint32_t channelId, Change& change) {
    uint32_t& current = lists.current[window];
    const ChannelList* list = lists.listOf(channelId);
    const bool otherList = list != lists.listOf(current);
    if (current != 0 && current != channelId) lists.previous[window] = current;
    current = channelId;
    lists.stopped[window] = false;
    lists.source[window] = kTelevisionSource;
    if (window == 0 && otherList) {
        for (const RegistrationKey& key :
             {registration<&a_qortvapi_svlid_update_register_callback>(),
              registration<&a_qortvapi_tslid_update_register_callback>()}) {
            change.notifications.push_back({key, CHANNEL_LIST_ID_NFY_CURRENT, {list->id, 0, 0, 0}});
        }
    }
    change.selectionChanged(lists, window);
}

void stopPlaying(ChannelLists& lists, size_t window, Change& change) {
    if (lists.source[window] != kTelevisionSource) return;
    lists.stopped[window] = true;
    uint32_t& current = lists.current[window];
    if (current == 0) return;
    lists.previous[window] = current;
    current = 0;
    change.selectionChanged(lists, window);
}

void showInput(ChannelLists& lists, size_t window, uint8_t source, Change& change) {
    stopPlaying(lists, window, change);
    lists.source[window] = source;
    lists.stopped[window] = false;
    change.dirty.settings = true;
}

uint32_t firstShown(const ChannelLists& lists, uint16_t listId) {
    for (const ChannelList& list : lists.lists) {
        if (listId != 0 && list.id != listId) continue;
        for (const Service& service : list.services) {
            if (isShown(service)) return idOf(&service);
        }
    }
    return 0;
}

uint32_t currentOrPrevious(const ChannelLists& lists) {
    for (const uint32_t channelId : {lists.current[0], lists.previous[0]}) {
        if (lists.listOf(channelId) != nullptr) return channelId;
    }
    return 0;
}

uint32_t channelByNumber(const ChannelLists& lists, uint32_t number) {
    if (number == 0) return 0;  // of the channels for which no number was free
    const ChannelList* current = lists.listOf(lists.current[0]);
    if (current != nullptr) {
        if (const uint32_t found = idOf(current->byNumber(number))) return found;
    }
    for (const ChannelList& list : lists.lists) {
        if (const uint32_t found = idOf(list.byNumber(number))) return found;
    }
    return 0;
}

uint32_t channelByProgram(const ChannelLists& lists, uint8_t medium, uint16_t programNumber) {
    const ChannelList* playing = lists.listOf(lists.current[0]);
    const uint16_t multiplex =
            playing == nullptr ? 0 : playing->byChannel(lists.current[0])->record.ui2_tsl_rec_id;
    uint32_t found = 0;
    for (const ChannelList& list : lists.lists) {
        if (medium != BRDCST_MEDIUM_UNKNOWN && mediumOf(list.id) != medium) continue;
        for (const Service& service : list.services) {
            if (service.record.ui2_service_id != programNumber) continue;
            if (&list == playing && service.record.ui2_tsl_rec_id == multiplex) {
                return idOf(&service);
            }
            if (found == 0) found = idOf(&service);
        }
    }
    return found;
}

uint32_t neighbour(const ChannelLists& lists, bool up) {
    const uint32_t current = lists.current[0];
    const ChannelList* list = lists.listOf(current);
    if (list == nullptr) return firstShown(lists);
    const std::vector<Service>& services = list->services;
    const size_t count = services.size();
    size_t place = *list->placeOf(current);
    for (size_t steps = 0; steps < count; ++steps) {
        place = (place + (up ? 1 : count - 1)) % count;
        const Service& service = services[place];
        if (isShown(service) && service.record.ui2_channel_number != 0) return idOf(&service);
    }
    return 0;
}

}  // namespace television
