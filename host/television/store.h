/** What the television remembers when it is off: an SQLite database in its state folder. */
#pragma once

#include <chrono>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "identities.h"
#include "lists.h"
#include "sqlite.h"

namespace television {

/** What a change touched, so that only this is written. */
struct Changes {
    std::set<uint16_t> lists;                          ///< whole lists, by id
    std::set<std::pair<uint16_t, uint32_t>> services;  ///< list id and channel id
    std::set<uint16_t> favourites;                     ///< lists whose favourites changed
    bool satellites = false;
    bool bissKeys = false;
    bool settings = false;  ///< what windows show and showed before, pump versions

    /** Takes over what `more` names. */
    void add(const Changes& more) {
        lists.insert(more.lists.begin(), more.lists.end());
        services.insert(more.services.begin(), more.services.end());
        favourites.insert(more.favourites.begin(), more.favourites.end());
        satellites |= more.satellites;
        bissKeys |= more.bissKeys;
        settings |= more.settings;
    }
    bool empty() const {
        return lists.empty() && services.empty() && favourites.empty() && !satellites &&
               !bissKeys && !settings;
    }
};

/**
 * Keeps the lists in `qortv.db`. The log says so once when the database cannot be opened or read,
 * with its path, and the television goes on with what it has in memory. A database that is damaged
 * or of another version is moved aside, for a new one. What cannot be written waits for the next
 * change, or for the end: the log says once that it waits, and once that all is written.
 *
 * The folder belongs to one process as long as that lives: others are told so on the log, and keep
 * everything in memory. One thread at a time.
 */
class Store {
  public:
    /** `folder` is made when missing; ":memory:" keeps everything in memory. */
    explicit Store(const std::string& folder);
    /** Writes what still waits. */
    ~Store();
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    /** Reads what is remembered into empty lists. Rows that make no sense are left out. */
    void load(ChannelLists& lists, Identities& identities);

    /** Writes what `changes` names, in one transaction. `lists` outlive this and stand still during
     * each call: what waits is written as it is then. */
    void save(const ChannelLists& lists, Identities& identities, const Changes& changes);

    /** What `saveValue` has kept, by name. */
    std::map<std::string, std::string> loadValues();
    /** Keeps bytes under a name; none forgets the name. */
    void saveValue(const std::string& name, const std::string& bytes);

    /** Whether changes still reach the database, at once or later. */
    bool works() const { return mDatabase != nullptr; }
    const std::string& path() const { return mPath; }

  private:
    /** What is not written yet. */
    struct Waiting {
        Changes changes;
        std::map<IdentityKey, Identity> identities;
        std::map<std::string, std::string> values;

        bool lists() const { return !changes.empty() || !identities.empty(); }
        bool empty() const { return !lists() && values.empty(); }
    };

    void claim(const std::string& folder);
    void open();
    void moveAside(const std::string& reason);
    void giveUp(const std::string& reason);
    void loadRecords(ChannelLists& lists);
    void loadRest(ChannelLists& lists, Identities& identities);
    void write();
    void writeOrWait();
    void writeLists(const ChannelLists& lists);
    void writeValues();
    void saveList(const ChannelList& list);
    void saveFavourites(const ChannelList& list);
    void saveRecord(RecordKind kind, uint16_t list, uint16_t record, uint16_t lcn, uint8_t own,
                    const void* image, size_t size);
    void deleteRecords(RecordKind kind, uint16_t list);

    std::string mPath;
    int mClaim = -1;  ///< file whose lock says that the folder is this process's
    SqliteDatabase mDatabase;
    const ChannelLists* mLists = nullptr;  ///< there as soon as a change of them waits
    Waiting mWaiting;
    bool mFailing = false;
    std::chrono::steady_clock::time_point mFailed;  ///< when it failed last
};

}  // namespace television
