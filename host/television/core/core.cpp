#include "television/core/core.h"

#include <charconv>
#include <cstring>

#include "middleware/channellist.h"
#include "middleware/event.h"
#include "middleware/result_codes.h"
#include "television/base/log.h"
#include "television/core/channel_selection.h"
#include "television/core/playing.h"
#include "television/lists/scan_merge.h"

namespace television {
namespace {

/** How long the television waits for clients that have locked a list. */
constexpr std::chrono::milliseconds kPatience{2000};

/** Compares bytes: records have no padding. */
template <typename Record>
bool sameRecords(const std::vector<Record>& a, const std::vector<Record>& b) {
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(Record)) == 0);
}

/** Selects the first shown channel in the main window in place of one that is no longer listed, and
 * none in the sub window. */
void chooseCurrent(ChannelLists& lists) {
    if (lists.current[1] != 0 && lists.listOf(lists.current[1]) == nullptr) lists.current[1] = 0;
    if (lists.stopped[0] || lists.source[0] != kTelevisionSource) return;
    if (lists.listOf(lists.current[0]) != nullptr) return;
    lists.current[0] = firstShown(lists);
}

/** Enters into `change` how the lists after a merge differ from those before. */
void addMergeChanges(const ChannelLists& before, const ChannelLists& merged,
                     const MergeScope& scope, Change& change) {
    for (const ChannelList& list : merged.lists) {
        if (!scope.covers(list.id)) continue;
        change.dirty.lists.insert(list.id);
        if (!sameRecords(list.networks, before.list(list.id)->networks)) {
            change.networksChanged(list, 0);
        }
    }
    if (!sameRecords(merged.satellites, before.satellites)) change.satellitesChanged(merged, 0);
    for (size_t window = 0; window < kWindowCount; ++window) {
        if (before.current[window] != merged.current[window]) {
            change.selectionChanged(merged, window);
        }
    }
    const std::optional<Playing> playing = playingIn(merged, 0);
    if (before.current[0] == merged.current[0] && !looksTheSame(playing, playingIn(before, 0))) {
        addMainWindowNotifications(change.notifications, playing);
    }
}

}  // namespace

Core::Core(const std::string& stateFolder, Clock::Base time, const std::string& streamFolder)
    : clock(std::move(time)), reception(streamFolder), mStore(stateFolder) {
    mStore.load(mLists, mIdentities);
    mValues = mStore.loadValues();
    registrations.onFirst([this](RegistrationKey key) { announce(key); });
}

std::optional<Playing> Core::playing(size_t window) const {
    return read([&](const ChannelLists& lists) { return playingIn(lists, window); });
}

std::string Core::remembered(const std::string& name) const {
    std::shared_lock<std::shared_mutex> lock(mMutex);
    const auto found = mValues.find(name);
    return found == mValues.end() ? std::string() : found->second;
}

void Core::remember(const std::string& name, const std::string& bytes, int32_t updateFlag) {
    std::lock_guard<std::mutex> writer(mWriter);
    std::string before;
    {
        std::unique_lock<std::shared_mutex> lock(mMutex);
        const auto found = mValues.find(name);
        if (found != mValues.end()) before = found->second;
        if (before == bytes) return;
        if (bytes.empty()) {
            mValues.erase(found);
        } else {
            mValues[name] = bytes;
        }
    }
    mStore.saveValue(name, bytes);
    for (const auto& act : mOnRemembered) act({name, before, bytes, updateFlag});
    runOnChange();
}

size_t Core::rememberedCount(const std::string& prefix) const {
    std::shared_lock<std::shared_mutex> lock(mMutex);
    size_t count = 0;
    for (auto value = mValues.lower_bound(prefix);
         value != mValues.end() && value->first.compare(0, prefix.size(), prefix) == 0; ++value) {
        ++count;
    }
    return count;
}

int32_t Core::rememberedNumber(const std::string& name, int32_t fallback) const {
    const std::string text = remembered(name);
    int32_t number = fallback;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

void Core::rememberNumber(const std::string& name, int32_t number, int32_t updateFlag) {
    remember(name, std::to_string(number), updateFlag);
}

void Core::finish(const Change& change) {
    // `mWriter` is held, so nobody changes the lists while they are saved.
    mStore.save(mLists, mIdentities, change.dirty);
    for (const Notification& notification : change.notifications) notifier.post(notification);
    runOnChange();
}

void Core::runOnChange() const {
    for (const auto& act : mOnChange) act();
}

bool Core::merge(const ScanResult& scan, const MergeScope& scope,
                 const std::function<bool()>& proceed) {
    const DatabaseLock::Turn turn(channelLock, kPatience);
    if (!turn.inTime()) {
        LOG_TV_WARN(
                "a client has locked the channel lists for more than {} ms: loading them anyway",
                kPatience.count());
    }
    std::lock_guard<std::mutex> writer(mWriter);
    if (proceed && !proceed()) return false;
    ChannelLists merged = mergeScan(mLists, scan, mIdentities, scope);
    chooseCurrent(merged);
    Change change(reception);
    addMergeChanges(mLists, merged, scope, change);
    {
        std::unique_lock<std::shared_mutex> lock(mMutex);
        mLists = std::move(merged);
    }
    receiveTime(scan);
    loadGuide(scan, change);
    finish(change);
    {
        std::lock_guard<std::mutex> lock(mAnnounceMutex);
        ++mLoads;
    }
    for (const RegistrationKey key : channelListRegistrations()) announce(key);
    return true;
}

/** Hands the latest time in a scan to the clock. */
void Core::receiveTime(const ScanResult& scan) {
    BroadcastTime newest;
    for (const ParsedMultiplex& multiplex : scan.multiplexes) {
        const BroadcastTime& time = multiplex.time;
        if (time.hasTime() && (!newest.hasTime() || time.utc > newest.utc)) newest = time;
    }
    if (newest.hasTime()) clock.receive(newest);
}

/** Hands the events in a scan to the guide, once the lists have taken the scan over and the clock
 * has its time. With `mWriter` held. */
void Core::loadGuide(const ScanResult& scan, Change& change) {
    if (!guide.load(mLists, scan)) return;
    // The notification below covers the events that are on now: they are not to be notified again.
    guide.advance(clock.utcSeconds());
    change.notifications.push_back(
            {registration<&a_qortvapi_event_register_callback>(),
             EVENT_NFY_UPDATED,
             {0, EVENT_UPDATE_PRESENT_FOLLOWING | EVENT_UPDATE_SCHEDULE, 0, 0}});
}

void Core::announce(RegistrationKey key) {
    const auto keys = channelListRegistrations();
    if (!(key == keys[0]) && !(key == keys[1])) return;
    if (registrations.empty(key)) return;
    const uint32_t channels = read([](const ChannelLists& lists) {
        size_t count = 0;
        for (const ChannelList& list : lists.lists) count += list.services.size();
        return static_cast<uint32_t>(count);
    });
    std::lock_guard<std::mutex> lock(mAnnounceMutex);
    uint32_t& announced = mAnnounced[key];
    if (announced == mLoads) return;
    announced = mLoads;
    notifier.post({key, CHANNEL_LIST_NFY_LOADED, {0, channels, 0, 0}});
}

}  // namespace television
