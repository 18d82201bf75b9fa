/** What the television remembers when it is off: an SQLite database in its state folder. */
#pragma once

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

    bool empty() const {
        return lists.empty() && services.empty() && favourites.empty() && !satellites &&
               !bissKeys && !settings;
    }
};

/**
 * Keeps the lists in `qortv.db`. When the database cannot be opened, read or written, the log says
 * so once, with its path, and the television goes on with what it has in memory. One thread at a
 * time.
 */
class Store {
  public:
    /** `folder` is made when missing; ":memory:" keeps everything in memory. */
    explicit Store(const std::string& folder);

    /** Reads what is remembered into empty lists. Rows that make no sense are left out. */
    void load(ChannelLists& lists, Identities& identities);

    /** Writes what `changes` names, in one transaction. */
    void save(const ChannelLists& lists, Identities& identities, const Changes& changes);

    /** What `saveValue` has kept, by name. */
    std::map<std::string, std::string> loadValues();
    /** Keeps bytes under a name; none forgets the name. */
    void saveValue(const std::string& name, const std::string& bytes);

    /** Whether changes still reach the database. */
    bool works() const { return mDatabase != nullptr; }
    const std::string& path() const { return mPath; }

  private:
    void open(const std::string& folder);
    void giveUp(const std::string& reason);
    void loadRecords(ChannelLists& lists);
    void loadRest(ChannelLists& lists, Identities& identities);
    void saveList(const ChannelList& list);
    void saveFavourites(const ChannelList& list);
    void saveRecord(RecordKind kind, uint16_t list, uint16_t record, uint16_t lcn, uint8_t own,
                    const void* image, size_t size);
    void deleteRecords(RecordKind kind, uint16_t list);

    std::string mPath;
    SqliteDatabase mDatabase;
};

}  // namespace television
