/** What all calls of the television work on: the lists under their locks, the store, the
 * notifications. */
#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <utility>
#include <vector>

#include "clock.h"
#include "database_lock.h"
#include "guide.h"
#include "identities.h"
#include "lists.h"
#include "notifier.h"
#include "reception.h"
#include "registrations.h"
#include "scan_merge.h"
#include "store.h"

namespace television {

/** What one change did: what to write, and whom to tell. */
class Change {
  public:
    /** `reception` outlives this. */
    explicit Change(const Reception& reception) : mReception(reception) {}

    Changes stored;
    std::vector<Event> events;

    /** A list and all in it is to be written; channel-list and TV-provider handlers hear of it. */
    void list(const ChannelList& list, int32_t code, uint32_t channelId = 0);
    /** One service is to be written, and told of. */
    void service(const ChannelList& list, uint32_t channelId, int32_t code);
    /** Favourites are to be written, and told of. */
    void favourites(const ChannelList& list);
    void satellites(const ChannelLists& lists, uint16_t recordId);
    void bissKeys(const ChannelLists& lists, uint16_t recordId);
    void networks(const ChannelList& list, uint16_t recordId);
    /** Another channel is selected in a window (0 main, 1 sub). */
    void selection(const ChannelLists& lists, size_t window);

  private:
    const Reception& mReception;
};

/** What is remembered under a name became something else; empty bytes: nothing. */
struct RememberedChange {
    const std::string& name;
    const std::string& before;
    const std::string& after;
    int32_t note;  ///< as `Core::remember` was given it
};

/** Copies of a list or of the satellites that a client can go back to. */
struct Snapshots {
    static constexpr size_t kMost = 16;

    std::map<uint32_t, ChannelList> lists;
    std::map<uint32_t, std::vector<SATL_REC_T>> satellites;
    uint32_t last = 0;  ///< id given last
};

/**
 * Threads: reads share `mMutex`; a change takes `mWriter` for its whole length and `mMutex` only
 * while the lists change, so that nobody reads while nothing changes but nobody waits for the disk.
 * Handlers are called on the notifier's thread with none of these held.
 */
class Core {
  public:
    /** `time` stands in for the machine's clocks; empty: those of the machine. `streamFolder` is
     * where signals come from; empty: there are none. */
    explicit Core(const std::string& stateFolder, Clock::Base time = {},
                  const std::string& streamFolder = {});

    /** Runs `read(lists)`, during which the lists stand still, and answers its result. */
    template <typename Read>
    auto read(Read read) const {
        std::shared_lock<std::shared_mutex> lock(mMutex);
        return read(static_cast<const ChannelLists&>(mLists));
    }

    /**
     * Runs `apply(lists, identities, change)`, which changes the lists and says in `change` what it
     * did, then writes and tells. Answers the result of `apply`, which must leave the lists alone
     * when negative.
     */
    template <typename Apply>
    int32_t change(Apply apply) {
        std::lock_guard<std::mutex> writer(mWriter);
        Change change(reception);
        int32_t result;
        {
            std::unique_lock<std::shared_mutex> lock(mMutex);
            result = apply(mLists, mIdentities, change);
        }
        finish(change);
        return result;
    }

    /** Bytes that the television remembers under a name, over restarts too; empty when there are
     * none. Not within `read` or `change`. */
    std::string remembered(const std::string& name) const;
    /** Remembers bytes under a name; empty ones forget it. `note` is for those who watch. Not
     * within `read` or `change`. */
    void remember(const std::string& name, const std::string& bytes, int32_t note = 0);
    /** How many of the names that begin with `prefix` are remembered. Not within `read` or
     * `change`. */
    size_t rememberedCount(const std::string& prefix) const;
    /** The same as a number; `fallback` when there is none. */
    int32_t rememberedNumber(const std::string& name, int32_t fallback) const;
    void rememberNumber(const std::string& name, int32_t number, int32_t note = 0);

    /**
     * Lets `act` watch what is remembered, or that too and the lists: called after each change, in
     * the order of the changes, on the thread that makes them and within its change. So it may read
     * this object and post, but not change this object nor wait for one who does. To be set up
     * before the first change.
     */
    void onRemembered(std::function<void(const RememberedChange&)> act) {
        mOnRemembered.push_back(std::move(act));
    }
    void onChange(std::function<void()> act) { mOnChange.push_back(std::move(act)); }

    /**
     * Brings the lists, as far as `scope` goes, into line with a scan, in the television's turn of
     * the database lock. `proceed`, if any, is asked right before: when it answers false, all stays
     * as it is, and so does this. `proceed` must not call this object.
     */
    bool merge(const ScanResult& scan, const MergeScope& scope = {},
               const std::function<bool()>& proceed = {});

    /** Tells a registration of channel-list updates that the lists are loaded, once for each load
     * and not before the first handler. */
    void announce(RegistrationKey key);

    Registrations registrations;
    Clock clock;
    Guide guide;
    const Reception reception;
    Notifier notifier{registrations};
    DatabaseLock channelLock;
    DatabaseLock satelliteLock;
    DatabaseLock bissLock;
    Snapshots snapshots;  ///< to be used within `change` only

  private:
    void finish(const Change& change);
    void tellChange() const;
    void receiveGuide(const struct ScanResult& scan, Change& change);

    mutable std::shared_mutex mMutex;
    std::mutex mWriter;
    ChannelLists mLists;                         // changed with both locks, read with either
    Identities mIdentities;                      // guarded by mWriter
    Store mStore;                                // guarded by mWriter
    std::map<std::string, std::string> mValues;  // changed with both locks, read with either
    std::vector<std::function<void(const RememberedChange&)>> mOnRemembered;
    std::vector<std::function<void()>> mOnChange;
    std::mutex mAnnounceMutex;
    uint32_t mLoads = 0;                             // guarded by mAnnounceMutex
    std::map<RegistrationKey, uint32_t> mAnnounced;  // guarded by mAnnounceMutex
};

}  // namespace television
