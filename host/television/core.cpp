#include "core.h"

#include <charconv>
#include <cstring>

#include "channel_selection.h"
#include "log.h"
#include "middleware/channellist.h"
#include "middleware/event.h"
#include "middleware/result_codes.h"
#include "playing.h"
#include "scan_merge.h"

namespace television {
namespace {

/** How long the television waits for clients that hold a list still. */
constexpr std::chrono::milliseconds kPatience{2000};

/** The handlers that hear of channel lists. */
std::array<RegistrationKey, 2> channelListRegistrations() {
    return {registration<&a_qortvapi_channellist_register_callback>(),
            registration<&a_qortvapi_tvprovider_channellist_register_callback>()};
}

void addChannelListEvents(std::vector<Event>& events, const ChannelList& list, int32_t code,
                          uint32_t channelId) {
    const auto count = static_cast<uint32_t>(list.services.size());
    for (const RegistrationKey key : channelListRegistrations()) {
        events.push_back({key, code, {list.id, count, channelId, 0}});
    }
}

/** Records have no padding, so their bytes tell. */
template <typename Record>
bool sameRecords(const std::vector<Record>& a, const std::vector<Record>& b) {
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(Record)) == 0);
}

/** Selects a channel in place of one that is gone: the first that is shown. */
void chooseCurrent(ChannelLists& lists) {
    if (lists.current[1] != 0 && lists.listOf(lists.current[1]) == nullptr) lists.current[1] = 0;
    if (lists.stopped[0] || lists.source[0] != kTelevisionSource) return;
    if (lists.listOf(lists.current[0]) != nullptr) return;
    lists.current[0] = firstShown(lists);
}

}  // namespace

void Change::list(const ChannelList& list, int32_t code, uint32_t channelId) {
    stored.lists.insert(list.id);
    addChannelListEvents(events, list, code, channelId);
}

void Change::service(const ChannelList& list, uint32_t channelId, int32_t code) {
    stored.services.insert({list.id, channelId});
    addChannelListEvents(events, list, code, channelId);
}

void Change::favourites(const ChannelList& list) {
    stored.favourites.insert(list.id);
    addChannelListEvents(events, list, CHANNEL_LIST_NFY_FAVOURITES, 0);
}

void Change::satellites(const ChannelLists& lists, uint16_t recordId) {
    stored.satellites = true;
    events.push_back({registration<&a_qortvapi_bisskey_register_callback>(),
                      BISSKEY_NFY_SATELLITES_CHANGED,
                      {SATL_ID_MAIN, static_cast<uint32_t>(lists.satellites.size()), recordId, 0}});
}

void Change::bissKeys(const ChannelLists& lists, uint16_t recordId) {
    stored.bissKeys = true;
    events.push_back({registration<&a_qortvapi_bisskey_register_callback>(),
                      BISSKEY_NFY_KEYS_CHANGED,
                      {BSL_ID_MAIN, static_cast<uint32_t>(lists.bissKeys.size()), recordId, 0}});
}

void Change::networks(const ChannelList& list, uint16_t recordId) {
    stored.lists.insert(list.id);
    events.push_back({registration<&a_qortvapi_nwl_update_register_callback>(),
                      NETWORK_LIST_NFY_CHANGED,
                      {list.id, static_cast<uint32_t>(list.networks.size()), recordId, 0}});
}

void Change::selection(const ChannelLists& lists, size_t window) {
    stored.settings = true;
    addSelectionEvents(events, lists, window, mReception.tuning(playingIn(lists, window)));
}

Core::Core(const std::string& stateFolder, Clock::Base time, const std::string& streamFolder)
    : clock(std::move(time)), reception(streamFolder), mStore(stateFolder) {
    mStore.load(mLists, mIdentities);
    mValues = mStore.loadValues();
    registrations.onFirst([this](RegistrationKey key) { announce(key); });
}

std::string Core::remembered(const std::string& name) const {
    std::shared_lock<std::shared_mutex> lock(mMutex);
    const auto found = mValues.find(name);
    return found == mValues.end() ? std::string() : found->second;
}

void Core::remember(const std::string& name, const std::string& bytes, int32_t note) {
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
    for (const auto& act : mOnRemembered) act({name, before, bytes, note});
    tellChange();
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

void Core::rememberNumber(const std::string& name, int32_t number, int32_t note) {
    remember(name, std::to_string(number), note);
}

void Core::finish(const Change& change) {
    // Only changes write, and this is the one that runs: the lists stand still here.
    mStore.save(mLists, mIdentities, change.stored);
    for (const Event& event : change.events) notifier.post(event);
    tellChange();
}

void Core::tellChange() const {
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
    const std::array<uint32_t, 2> before = merged.current;
    chooseCurrent(merged);
    Change change(reception);
    for (const ChannelList& list : merged.lists) {
        if (!scope.covers(list.id)) continue;
        change.stored.lists.insert(list.id);
        if (!sameRecords(list.networks, mLists.list(list.id)->networks)) change.networks(list, 0);
    }
    if (!sameRecords(merged.satellites, mLists.satellites)) change.satellites(merged, 0);
    for (size_t window = 0; window < before.size(); ++window) {
        if (before[window] != merged.current[window]) change.selection(merged, window);
    }
    const std::optional<Playing> playing = playingIn(merged, 0);
    if (before[0] == merged.current[0] && !looksTheSame(playing, playingIn(mLists, 0))) {
        addMainWindowEvents(change.events, playing);
    }
    {
        std::unique_lock<std::shared_mutex> lock(mMutex);
        mLists = std::move(merged);
    }
    receiveGuide(scan, change);
    finish(change);
    {
        std::lock_guard<std::mutex> lock(mAnnounceMutex);
        ++mLoads;
    }
    for (const RegistrationKey key : channelListRegistrations()) announce(key);
    return true;
}

/** Takes over the time and the events of a scan that the lists have taken over already; `mWriter`
 * is held. */
void Core::receiveGuide(const ScanResult& scan, Change& change) {
    BroadcastTime newest;
    for (const ParsedMultiplex& multiplex : scan.multiplexes) {
        const BroadcastTime& time = multiplex.time;
        if (time.hasTime() && (!newest.hasTime() || time.utc > newest.utc)) newest = time;
    }
    if (newest.hasTime()) clock.receive(newest);
    if (!guide.load(mLists, scan)) return;
    guide.advance(clock.utcSeconds());  // what is on now is told with the load
    change.events.push_back({registration<&a_qortvapi_event_register_callback>(),
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
