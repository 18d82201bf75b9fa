#include "television/viewing/channel_banner.h"

#include "middleware/broadcast.h"
#include "middleware/result_codes.h"

namespace television {

void ChannelBanner::show(bool visible, bool notify) {
    std::lock_guard<std::mutex> lock(mMutex);
    showLocked(visible, notify);
}

void ChannelBanner::showSelection(bool notify) {
    std::lock_guard<std::mutex> lock(mMutex);
    if (mCovers.empty()) showLocked(true, notify);
}

int32_t ChannelBanner::cover(uint32_t id, bool covered) {
    std::lock_guard<std::mutex> lock(mMutex);
    if (!covered) {
        mCovers.erase(id);
        return TV_OK;
    }
    if (mCovers.size() >= kMostCovers && mCovers.count(id) == 0) return TV_FULL;
    mCovers.insert(id);
    return TV_OK;
}

void ChannelBanner::showLocked(bool visible, bool notify) {
    if (mVisible == visible) return;
    mVisible = visible;
    if (!notify) return;
    mCore.notifier.post({registration<&a_qortvapi_broadcast_register_callback>(),
                         BROADCAST_NFY_BANNER,
                         {visible ? 1u : 0u, 0, 0, 0}});
}

}  // namespace television
