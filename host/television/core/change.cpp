#include "television/core/change.h"

#include "middleware/channellist.h"
#include "television/core/playing.h"

namespace television {
namespace {

void addChannelListNotifications(std::vector<Notification>& notifications, const ChannelList& list,
                                 int32_t code, uint32_t channelId) {
    const auto count = static_cast<uint32_t>(list.services.size());
    for (const RegistrationKey key : channelListRegistrations()) {
        notifications.push_back({key, code, {list.id, count, channelId, 0}});
    }
}

}  // namespace

void Change::listChanged(const ChannelList& list, int32_t code, uint32_t channelId) {
    dirty.lists.insert(list.id);
    addChannelListNotifications(notifications, list, code, channelId);
}

void Change::serviceChanged(const ChannelList& list, uint32_t channelId, int32_t code) {
    dirty.services.insert({list.id, channelId});
    addChannelListNotifications(notifications, list, code, channelId);
}

void Change::favouritesChanged(const ChannelList& list) {
    dirty.favourites.insert(list.id);
    addChannelListNotifications(notifications, list, CHANNEL_LIST_NFY_FAVOURITES, 0);
}

void Change::satellitesChanged(const ChannelLists& lists, uint16_t recordId) {
    dirty.satellites = true;
    notifications.push_back(
            {registration<&a_qortvapi_bisskey_register_callback>(),
             BISSKEY_NFY_SATELLITES_CHANGED,
             {SATL_ID_MAIN, static_cast<uint32_t>(lists.satellites.size()), recordId, 0}});
}

void Change::bissKeysChanged(const ChannelLists& lists, uint16_t recordId) {
    dirty.bissKeys = true;
    notifications.push_back(
            {registration<&a_qortvapi_bisskey_register_callback>(),
             BISSKEY_NFY_KEYS_CHANGED,
             {BSL_ID_MAIN, static_cast<uint32_t>(lists.bissKeys.size()), recordId, 0}});
}

void Change::networksChanged(const ChannelList& list, uint16_t recordId) {
    dirty.lists.insert(list.id);
    notifications.push_back({registration<&a_qortvapi_nwl_update_register_callback>(),
                             NETWORK_LIST_NFY_CHANGED,
                             {list.id, static_cast<uint32_t>(list.networks.size()), recordId, 0}});
}

void Change::selectionChanged(const ChannelLists& lists, size_t window) {
    dirty.settings = true;
    addSelectionNotifications(notifications, lists, window,
                              mReception.tuning(playingIn(lists, window)));
}

}  // namespace television
