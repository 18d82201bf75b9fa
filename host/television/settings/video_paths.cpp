#include "television/settings/video_paths.h"

#include "middleware/inputsource.h"
#include "middleware/multiview.h"
#include "middleware/result_codes.h"
#include "television/core/channel_selection.h"
#include "television/settings/config_items.h"

namespace television {
namespace {

/** Returns the channel that a path plays when it changes back to the television; 0: none. */
uint32_t channelFor(const ChannelLists& lists, size_t path) {
    for (const uint32_t channelId : {lists.current[path], lists.previous[path]}) {
        if (lists.listOf(channelId) != nullptr) return channelId;
    }
    const uint32_t other = path == 0 ? 0 : currentOrPrevious(lists);
    return other != 0 ? other : firstShown(lists);
}

void showTelevision(ChannelLists& lists, size_t path, Change& change) {
    if (lists.current[path] != 0) return;
    const uint32_t channelId = channelFor(lists, path);
    if (channelId != 0) {
        selectChannel(lists, path, channelId, change);
        return;
    }
    lists.source[path] = kTelevisionSource;
    lists.stopped[path] = false;
    change.selectionChanged(lists, path);
}

}  // namespace

VideoPaths::VideoPaths(Core& core, InputSources& inputs)
    : mCore(core), mInputs(inputs), mMode(MULTIVIEW_MODE_NORMAL) {
    mCore.onRemembered([this](const RememberedChange& remembered) {
        const ConfigItem* const item = configItemKept(remembered.name);
        if (item == nullptr || item->number(remembered.after) == 0) return;
        for (const InputSource& source : kInputSources) {
            if (source.connected == nullptr || configItem(source.connected) != item) continue;
            // The change of source is queued: this code runs within another change of the core.
            mCore.notifier.post({registration<&a_qortvapi_inputsource_changesource_bysourceid>(),
                                 0,
                                 {source.id, 0, 0, 0},
                                 [this, &source] {
                                     if (mInputs.autodetect(source)) change(0, source);
                                 }});
        }
    });
}

VideoPaths::State VideoPaths::stateIn(const ChannelLists& lists, size_t path) {
    const uint8_t source = lists.source[path];
    const bool television = source == kTelevisionSource;
    return {source, television ? lists.current[path] != 0 : !lists.stopped[path]};
}

VideoPaths::State VideoPaths::state(size_t path) const {
    return mCore.read([&](const ChannelLists& lists) { return stateIn(lists, path); });
}

bool VideoPaths::available(size_t path, const InputSource& source) const {
    if (mInputs.blocked(source)) return false;
    const State other = state(1 - path);
    return !other.playing || !inputsConflict(source, *inputSource(other.source));
}

int32_t VideoPaths::change(size_t path, const InputSource& source, uint16_t priority) {
    if (mInputs.blocked(source)) return TV_BUSY;
    return mCore.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
        const size_t other = 1 - path;
        const State there = stateIn(lists, other);
        if (there.playing && inputsConflict(source, *inputSource(there.source))) {
            if (priority <= mPriorities[other]) return TV_BUSY;
            stopIn(lists, other, change);
        }
        mPriorities[path] = priority;
        if (source.id == kTelevisionSource) {
            showTelevision(lists, path, change);
        } else {
            showInput(lists, path, source.id, change);
        }
        return TV_OK;
    });
}

void VideoPaths::stopIn(ChannelLists& lists, size_t path, Change& change) {
    if (lists.source[path] == kTelevisionSource) {
        stopPlaying(lists, path, change);
    } else {
        lists.stopped[path] = true;
    }
}

void VideoPaths::stop(size_t path) {
    mCore.change([&](ChannelLists& lists, Identities&, Change& change) {
        stopIn(lists, path, change);
        return int32_t{TV_OK};
    });
}

/** Returns whether the mode has the path. With the lock held. */
bool VideoPaths::exists(size_t path) const {
    return path == 0 || mMode != MULTIVIEW_MODE_NORMAL;
}

/** With the lock held. */
int32_t VideoPaths::focusLocked(size_t path, bool sound) {
    if (!exists(path)) return TV_NOT_FOUND;
    mFocus = path;
    if (sound) mSoundFocus = path;
    return TV_OK;
}

int32_t VideoPaths::setMode(uint8_t mode) {
    if (mode > MULTIVIEW_MODE_POP) return TV_INVALID_ARGUMENT;
    const std::lock_guard<std::mutex> lock(mMutex);
    mMode = mode;
    if (mode != MULTIVIEW_MODE_NORMAL) return TV_OK;
    mFocus = 0;
    mSoundFocus = 0;
    stop(1);
    return TV_OK;
}

int32_t VideoPaths::start(size_t path, const InputSource& source) {
    const std::lock_guard<std::mutex> lock(mMutex);
    return exists(path) ? change(path, source) : int32_t{TV_NOT_FOUND};
}

int32_t VideoPaths::resume(size_t path) {
    const std::lock_guard<std::mutex> lock(mMutex);
    if (!exists(path)) return TV_NOT_FOUND;
    const State now = state(path);
    return now.playing ? int32_t{TV_OK} : change(path, *inputSource(now.source));
}

int32_t VideoPaths::setFocus(size_t path, bool sound) {
    const std::lock_guard<std::mutex> lock(mMutex);
    return focusLocked(path, sound);
}

int32_t VideoPaths::setFocusBySource(uint8_t source) {
    const std::lock_guard<std::mutex> lock(mMutex);
    for (size_t path = 0; path < kWindowCount; ++path) {
        const State now = state(path);
        if (now.playing && now.source == source && exists(path)) return focusLocked(path, true);
    }
    return TV_NOT_FOUND;
}

size_t VideoPaths::focus() const {
    const std::lock_guard<std::mutex> lock(mMutex);
    return mFocus;
}

size_t VideoPaths::soundFocus() const {
    const std::lock_guard<std::mutex> lock(mMutex);
    return mSoundFocus;
}

}  // namespace television
