// Notifications about the programme guide: present and following events that change as time passes.
#include "middleware/event.h"

#include <vector>

#include "television/modules/modules.h"

namespace television {
namespace {

/** When more channels change at once, one notification stands for all channels. */
constexpr size_t kMostNotified = 8;

void notifyChangedEvents(Core& core) {
    std::vector<uint32_t> channels = core.guide.advance(core.clock.utcSeconds());
    if (channels.size() > kMostNotified) channels = {0};
    for (const uint32_t channel : channels) {
        core.notifier.post({registration<&a_qortvapi_event_register_callback>(),
                            EVENT_NFY_UPDATED,
                            {channel, EVENT_UPDATE_PRESENT_FOLLOWING, 0, 0}});
    }
}

}  // namespace

void plugEvents(switchboard::Switchboard& board, Core& core) {
    core.notifier.onTick([&core] { notifyChangedEvents(core); });
    plugEventWindow(board, core);
    plugEventQueries(board, core);
    plugEventDetails(board, core);
}

}  // namespace television
