// Broadcast channels: selecting them, the keys that do, the channel banner.
#include <algorithm>
#include <memory>

#include "middleware/banner.h"
#include "middleware/broadcast.h"
#include "middleware/result_codes.h"
#include "television/core/channel_selection.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/core/playing.h"
#include "television/modules/modules.h"
#include "television/viewing/channel_banner.h"
#include "television/viewing/channel_keys.h"

namespace television {
namespace {

/** The name under which the core remembers whether the banner shows an icon on favourites: 0 or 1.
 */
constexpr char kFavouriteIcon[] = "broadcast.favourite_icon";

/** How a channel is to be selected. */
struct SelectOptions {
    size_t window = 0;
    bool reselect = false;  ///< select it even when it is the current channel
    uint32_t silent = 0;    ///< BROADCAST_SILENT_…
};

/** Removes the notifications for the handlers of broadcast.h. */
void removeBroadcastNotifications(std::vector<Notification>& notifications) {
    const RegistrationKey here = registration<&a_qortvapi_broadcast_register_callback>();
    notifications.erase(std::remove_if(notifications.begin(), notifications.end(),
                                       [&](const Notification& n) { return n.to == here; }),
                        notifications.end());
}

/** Selects the channel whose id `find(lists)` returns; TV_NOT_FOUND when that is not listed. */
template <typename Find>
int32_t select(Core& core, ChannelBanner& banner, const SelectOptions& options, Find find) {
    const bool notify = (options.silent & BROADCAST_SILENT_NO_NOTIFICATION) == 0;
    const int32_t result =
            core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
                const uint32_t channelId = find(static_cast<const ChannelLists&>(lists));
                if (lists.listOf(channelId) == nullptr) return TV_NOT_FOUND;
                if (channelId == lists.current[options.window] && !options.reselect) return TV_OK;
                selectChannel(lists, options.window, channelId, change);
                if (!notify) removeBroadcastNotifications(change.notifications);
                return TV_OK;
            });
    const bool shows = options.window == 0 && (options.silent & BROADCAST_SILENT_NO_BANNER) == 0;
    if (result == TV_OK && shows) banner.showSelection(notify);
    return result;
}

/** Finds a channel by its record or its id, or by both, which then have to be of one channel. An
 * argument that is 0 is not given. */
auto byRecord(uint16_t listId, uint16_t recordId, uint32_t channelId) {
    return [=](const ChannelLists& lists) -> uint32_t {
        const bool byId = listId == 0 && recordId == 0;
        const ChannelList* list = byId ? lists.listOf(channelId) : lists.list(listId);
        if (list == nullptr) return 0;
        const Service* service =
                recordId == 0 ? list->byChannel(channelId) : list->byRecord(recordId);
        if (service == nullptr) return 0;
        const uint32_t found = service->record.ui4_channel_id;
        return channelId == 0 || channelId == found ? found : 0;
    };
}

int32_t selectRecord(Core& core, ChannelBanner& banner, const SelectOptions& options,
                     uint16_t listId, uint16_t recordId, uint32_t channelId) {
    if (options.window >= kWindowCount) return TV_INVALID_ARGUMENT;
    if (recordId == 0 && channelId == 0) return TV_INVALID_ARGUMENT;
    return select(core, banner, options, byRecord(listId, recordId, channelId));
}

void plugSelections(switchboard::Switchboard& board, Core& core,
                    const std::shared_ptr<ChannelBanner>& banner) {
    board.on<&a_qortvapi_broadcast_select_channel>(
            [=, &core](uint16_t listId, uint16_t recordId, uint32_t channelId, bool reselect) {
                return selectRecord(core, *banner, {0, reselect, 0}, listId, recordId, channelId);
            });
    board.on<&a_qortvapi_broadcast_select_channel_by_focusid>([=, &core](uint16_t listId,
                                                                         uint16_t recordId,
                                                                         uint32_t channelId,
                                                                         bool reselect,
                                                                         uint16_t focus) {
        return selectRecord(core, *banner, {focus, reselect, 0}, listId, recordId, channelId);
    });
    board.on<&a_qortvapi_broadcast_select_channel_silently>([=, &core](uint8_t focus,
                                                                       uint16_t listId,
                                                                       uint16_t recordId,
                                                                       uint32_t channelId,
                                                                       uint32_t flags) -> int32_t {
        constexpr uint32_t kAll = BROADCAST_SILENT_NO_BANNER | BROADCAST_SILENT_NO_NOTIFICATION;
        if ((flags & ~kAll) != 0) return TV_INVALID_ARGUMENT;
        return selectRecord(core, *banner, {focus, false, flags}, listId, recordId, channelId);
    });
    board.on<&a_qortvapi_broadcast_select_channel_by_chan_id>(
            [=, &core](uint32_t channelId, bool reselect) {
                return selectRecord(core, *banner, {0, reselect, 0}, 0, 0, channelId);
            });
    board.on<&a_qortvapi_broadcast_select_channel_by_chan_num>(
            [=, &core](uint32_t major, uint32_t minor, bool reselect) -> int32_t {
                if (minor != 0) return TV_NOT_FOUND;
                return select(core, *banner, {0, reselect, 0}, [major](const ChannelLists& lists) {
                    return channelByNumber(lists, major);
                });
            });
    board.on<&a_qortvapi_broadcast_select_channel_by_prog_no>(
            [=, &core](uint8_t medium, uint16_t programNumber) -> int32_t {
                if (medium > BRDCST_MEDIUM_DIG_SATELLITE) return TV_INVALID_ARGUMENT;
                return select(core, *banner, {}, [=](const ChannelLists& lists) {
                    return channelByProgram(lists, medium, programNumber);
                });
            });
    board.on<&a_qortvapi_broadcast_switch_input_to_tv>([=, &core] {
        return select(core, *banner, {0, true, 0}, [](const ChannelLists& lists) {
            const uint32_t channelId = currentOrPrevious(lists);
            return channelId != 0 ? channelId : firstShown(lists);
        });
    });
}

void plugKeys(switchboard::Switchboard& board, Core& core,
              const std::shared_ptr<ChannelBanner>& banner, std::chrono::milliseconds digitTime) {
    const auto keys = std::make_shared<ChannelKeys>(
            core, digitTime,
            [banner, &core](const ChannelKeys::Find& find) {
                return select(core, *banner, {}, find);
            },
            [banner] { banner->show(true); });
    board.on<&a_qortvapi_broadcast_key_handler>([=](uint32_t key) { return keys->press(key); });
    board.on<&a_qortvapi_broadcast_is_digits_key_handled>([=](uint8_t* handled) -> int32_t {
        if (!writable(handled)) return TV_INVALID_ARGUMENT;
        *handled = keys->handled() ? 1 : 0;
        return TV_OK;
    });
    board.on<&a_qortvapi_broadcast_reset_digits_key_handled>([=]() -> int32_t {
        keys->resetHandled();
        return TV_OK;
    });
}

}  // namespace

void plugBroadcast(switchboard::Switchboard& board, Core& core,
                   std::chrono::milliseconds digitTime) {
    const auto banner = std::make_shared<ChannelBanner>(core);
    plugSelections(board, core, banner);
    plugKeys(board, core, banner, digitTime);
    board.on<&a_qortvapi_broadcast_set_banner_visibility>([=](bool visible) -> int32_t {
        banner->show(visible);
        return TV_OK;
    });
    board.on<&a_qortvapi_broadcast_transfer_external_ui_status>(
            [=](const QORTVAPI_EXTERNAL_UI_STATUS_T* status) -> int32_t {
                if (!writable(status)) return TV_INVALID_ARGUMENT;
                return banner->cover(status->ui4_ui_id, status->ui1_visible != 0);
            });
    board.on<&a_qortvapi_broadcast_set_favorite_icon_on_banner>([&core](bool shown) -> int32_t {
        if (core.rememberedNumber(kFavouriteIcon, 0) == (shown ? 1 : 0)) return TV_OK;
        core.rememberNumber(kFavouriteIcon, shown ? 1 : 0);
        const uint32_t channelId =
                core.read([](const ChannelLists& lists) { return lists.current[0]; });
        core.notifier.post({registration<&a_qortvapi_banner_register_callback>(),
                            BANNER_NFY_CHANGED,
                            {channelId, 0, 0, 0}});
        return TV_OK;
    });
}

}  // namespace television
