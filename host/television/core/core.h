/** The state that all functions of the television work on: the lists under their locks, the store,
 * the clock, the guide, the notifications. */
#pragma once

#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <shared_mutex>
#include <string>
#include <utility>
#include <vector>

#include "television/core/change.h"
#include "television/core/clock.h"
#include "television/core/notifier.h"
#include "television/core/playing.h"
#include "television/core/reception.h"
#include "television/core/registrations.h"
#include "television/lists/database_lock.h"
#include "television/lists/guide.h"
#include "television/lists/identities.h"
#include "television/lists/lists.h"
#include "television/lists/scan_merge.h"
#include "television/lists/store.h"

namespace television {

/** A change of the bytes that are remembered under a name; empty bytes stand for none. */
struct RememberedChange {
    const std::string& name;
    const std::string& before;
    const std::string& after;
    int32_t updateFlag;  ///< as passed to `Core::remember`
};

/** Copies of lists and of the satellites, which a client can restore. */
struct Snapshots {
    static constexpr size_t kMost = 16;  ///< of both kinds together

    std::map<uint32_t, ChannelList> lists;                   ///< by snapshot id
    std::map<uint32_t, std::vector<SATL_REC_T>> satellites;  ///< by snapshot id
    uint32_t last = 0;                                       ///< the last id that was given out
};

/**
 * Any thread. Reads share `mMutex`. A change holds `mWriter` from its beginning to its end, also
 * while it saves, and `mMutex` only while it changes the lists: changes run one after another, and
 * reads never wait for the disk. Handlers are called on the notifier's thread with neither held.
 */
class Core {
  public:
    /** `time` replaces the machine's clocks in tests; empty: the machine's. `streamFolder` holds
     * the streams that are received; empty: there are none. */
    explicit Core(const std::string& stateFolder, Clock::Base time = {},
                  const std::string& streamFolder = {});

    // Within `read` and `change` neither these two nor the functions below may be called.

    /** Runs `read(lists)` and returns its result. The lists do not change during the call. */
    template <typename Read>
    auto read(Read read) const {
        std::shared_lock<std::shared_mutex> lock(mMutex);
        return read(static_cast<const ChannelLists&>(mLists));
    }

    /**
     * Runs `apply(lists, identities, change)`, which changes the lists and enters into `change`
     * what it changed. Then saves the changed parts and posts the notifications. Returns the result
     * of `apply`; where that is negative, `apply` must have left the lists alone.
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

    /** The service that is selected in a window; empty while nothing plays there. */
    std::optional<Playing> playing(size_t window) const;

    /** The bytes that the television remembers under a name, over restarts too; empty when there
     * are none. */
    std::string remembered(const std::string& name) const;
    /** Remembers bytes under a name; empty bytes forget the name. `updateFlag` is the update flag
     * of the configuration call that makes the change, 0 where there is none; the actions of
     * `onRemembered` receive it in `RememberedChange`, and clients as the last argument of the
     * change notification. */
    void remember(const std::string& name, const std::string& bytes, int32_t updateFlag = 0);
    /** How many names that begin with `prefix` are remembered. */
    size_t rememberedCount(const std::string& prefix) const;
    /** The number that is remembered under a name; `fallback` when there is none. */
    int32_t rememberedNumber(const std::string& name, int32_t fallback) const;
    void rememberNumber(const std::string& name, int32_t number, int32_t updateFlag = 0);

    // Actions that run after each change, in the order of the changes, on the thread that makes the
    // change and while it still holds `mWriter`. They may read this object and post notifications,
    // but must neither change this object nor wait for a thread that does. They are to be set
    // before the first change.

    /** Lets `act` run after each change of what is remembered. */
    void onRemembered(std::function<void(const RememberedChange&)> act) {
        mOnRemembered.push_back(std::move(act));
    }
    /** Lets `act` run after each change of what is remembered or of the lists. */
    void onChange(std::function<void()> act) { mOnChange.push_back(std::move(act)); }

    /**
     * Updates the lists with what a scan found, as far as `scope` goes, in the television's turn of
     * the database lock; then the clock and the guide. `proceed`, if any, is called right before:
     * when it returns false, nothing changes and this returns false. It must not call this object.
     */
    bool merge(const ScanResult& scan, const MergeScope& scope = {},
               const std::function<bool()>& proceed = {});

    /** Notifies the handlers of a registration of channel lists that the lists are loaded: once for
     * each load, and not before there is a handler. Ignored for other registrations. */
    void announce(RegistrationKey key);

    Registrations registrations;
    Clock clock;
    Guide guide;
    const Reception reception;
    Notifier notifier{registrations};
    DatabaseLock channelLock;  ///< taken by clients, as the two below
    DatabaseLock satelliteLock;
    DatabaseLock bissLock;
    Snapshots snapshots;  ///< to be used within `change` only

  private:
    void finish(const Change& change);
    void runOnChange() const;
    void receiveTime(const ScanResult& scan);
    void loadGuide(const ScanResult& scan, Change& change);

    mutable std::shared_mutex mMutex;
    std::mutex mWriter;
    ChannelLists mLists;                         // changed with both locks held, read with either
    Identities mIdentities;                      // guarded by mWriter
    Store mStore;                                // guarded by mWriter
    std::map<std::string, std::string> mValues;  // what is remembered; locked like mLists
    std::vector<std::function<void(const RememberedChange&)>> mOnRemembered;
    std::vector<std::function<void()>> mOnChange;
    std::mutex mAnnounceMutex;
    uint32_t mLoads = 0;                             // number of merges; guarded by mAnnounceMutex
    std::map<RegistrationKey, uint32_t> mAnnounced;  // mLoads at that time; guarded likewise
};

}  // namespace television
