// The active window of the programme guide: the channels that an application shows, and their time.
#include <algorithm>
#include <memory>
#include <mutex>
#include <vector>

#include "middleware/event.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** Channels of an active window. */
constexpr size_t kMostChannels = 1024;

/** Any thread; its lock is held for no other call. */
class ActiveWindow {
  public:
    /** `core` outlives this. */
    explicit ActiveWindow(const Core& core) : mCore(core) {}

    /** `start`, `end`: seconds since 1970. */
    int32_t set(const uint32_t* channelIds, uint16_t count, int64_t start, int64_t end) {
        if (!writable(channelIds) || count == 0 || count > kMostChannels || start > end) {
            return TV_INVALID_ARGUMENT;
        }
        std::vector<uint32_t> channels(channelIds, channelIds + count);
        for (const uint32_t channel : channels) {
            if (!isChannel(channel)) return TV_NOT_FOUND;
        }
        std::lock_guard<std::mutex> lock(mMutex);
        mChannels = std::move(channels);
        mStart = start;
        mEnd = end;
        return TV_OK;
    }
    int32_t clear() {
        std::lock_guard<std::mutex> lock(mMutex);
        mChannels.clear();
        return TV_OK;
    }
    int32_t count(uint16_t* count) const {
        if (!writable(count)) return TV_INVALID_ARGUMENT;
        std::lock_guard<std::mutex> lock(mMutex);
        *count = static_cast<uint16_t>(mChannels.size());
        return TV_OK;
    }
    int32_t get(uint32_t* channelIds, uint16_t room, int64_t* start, int64_t* end) const {
        if (room > 0 && !writable(channelIds)) return TV_INVALID_ARGUMENT;
        std::lock_guard<std::mutex> lock(mMutex);
        if (mChannels.empty()) return TV_NOT_FOUND;
        std::copy_n(mChannels.begin(), std::min<size_t>(room, mChannels.size()), channelIds);
        put(start, mStart);
        put(end, mEnd);
        return TV_OK;
    }

  private:
    bool isChannel(uint32_t channelId) const {
        return mCore.read(
                [&](const ChannelLists& lists) { return lists.listOf(channelId) != nullptr; });
    }

    const Core& mCore;
    mutable std::mutex mMutex;
    std::vector<uint32_t> mChannels;  // guarded by mMutex, as all below; empty: no window
    int64_t mStart = 0;
    int64_t mEnd = 0;
};

}  // namespace

void plugEventWindow(switchboard::Switchboard& board, const Core& core) {
    const auto window = std::make_shared<ActiveWindow>(core);
    board.on<&a_qortvapi_event_setCurrentActiveWindow>(
            [=](const uint32_t* channelIds, uint16_t count, int64_t time) -> int32_t {
                if (time > INT64_MAX - EVENT_ACTIVE_WINDOW_SECONDS) return TV_INVALID_ARGUMENT;
                return window->set(channelIds, count, time, time + EVENT_ACTIVE_WINDOW_SECONDS);
            });
    board.on<&a_qortvapi_event_setCurrentActiveWindow_Ex>(
            [=](const uint32_t* channelIds, uint16_t count, int64_t start, int64_t end) {
                return window->set(channelIds, count, start, end);
            });
    board.on<&a_qortvapi_event_clear_active_win>([=] { return window->clear(); });
    board.on<&a_qortvapi_event_get_active_win_channel_num>(
            [=](uint16_t* count) { return window->count(count); });
    board.on<&a_qortvapi_event_get_active_win_list>(
            [=](uint32_t* channelIds, uint16_t count, int64_t* start, int64_t* end) {
                return window->get(channelIds, count, start, end);
            });
}

}  // namespace television
