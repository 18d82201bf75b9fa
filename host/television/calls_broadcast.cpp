// Broadcast channels: selection, keys, banner.
#include <algorithm>
#include <memory>

#include "calls.h"
#include "channel_banner.h"
#include "channel_keys.h"
#include "channel_selection.h"
#include "client_text.h"
#include "middleware/banner.h"
#include "middleware/broadcast.h"
#include "playing.h"

namespace television {
namespace {

constexpr char kFavouriteIcon[] = "broadcast.favourite_icon";

/** How a channel is to be selected. */
struct Manner {
    size_t window = 0;
    bool reselect = false;
    uint32_t silent = 0;  ///< BROADCAST_SILENT_…
};

/** Selects the channel that `find(lists)` names; TV_NOT_FOUND when that is not listed. */
template <typename Find>
int32_t select(Core& core, ChannelBanner& banner, const Manner& manner, Find find) {
    const bool tell = (manner.silent & BROADCAST_SILENT_NO_NOTIFICATION) == 0;
    const int32_t result =
            core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
                const uint32_t channelId = find(static_cast<const ChannelLists&>(lists));
                if (lists.listOf(channelId) == nullptr) return TV_NOT_FOUND;
                if (channelId == lists.current[manner.window] && !manner.reselect) return TV_OK;
                selectChannel(lists, manner.window, channelId, change);
                if (tell) return TV_OK;
                const RegistrationKey here =
                        registration<&a_qortvapi_broadcast_register_callback>();
                auto& events = change.events;
                events.erase(std::remove_if(events.begin(), events.end(),
                                            [&](const Event& event) { return event.to == here; }),
                             events.end());
                return TV_OK;
            });
    const bool shows = manner.window == 0 && (manner.silent & BROADCAST_SILENT_NO_BANNER) == 0;
    if (result == TV_OK && shows) banner.showSelection(tell);
    return result;
}

/** A channel by its record, its id, or both when they agree; 0 for a part that is not given. */
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

int32_t selectRecord(Core& core, ChannelBanner& banner, const Manner& manner, uint16_t listId,
                     uint16_t recordId, uint32_t channelId) {
    if (manner.window >= kWindowCount) return TV_INVALID_ARGUMENT;
    if (recordId == 0 && channelId == 0) return TV_INVALID_ARGUMENT;
    return select(core, banner, manner, byRecord(listId, recordId, channelId));
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
