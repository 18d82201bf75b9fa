/** What the television remembers when it is off: an SQLite database in its state folder. */
#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>

#include "television/base/sqlite.h"
#include "television/lists/dirty_parts.h"
#include "television/lists/folder_claim.h"
#include "television/lists/identities.h"
#include "television/lists/lists.h"

namespace television {

/**
 * Keeps the lists in `qortv.db`. When the database cannot be opened or read, the log says so once,
 * with its path, and the television goes on with what it has in memory. A database that is damaged
 * or of another version is moved aside and replaced by a new one. What cannot be written is tried
 * again with later changes and at the end; the log says once that changes wait, and once that all
 * are written.
 *
 * One process may use the folder at a time: another logs an error and keeps everything in memory.
 * One thread at a time.
 */
class Store {
  public:
    /** `folder` is made when missing; ":memory:" keeps everything in memory. */
    explicit Store(const std::string& folder);
    /** Writes what is not saved yet. */
    ~Store();
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    /** Replaces `lists` and `identities` by what is remembered; leaves them alone when nothing can
     * be read. Rows that make no sense are left out. */
    void load(ChannelLists& lists, Identities& identities);

    /** Saves the parts of `lists` that `dirty` names and the changes of `identities`, in one
     * transaction. `lists` must outlive this object, and must not change during this and later
     * calls of save() and saveValue(): they also save what earlier ones could not. */
    void save(const ChannelLists& lists, Identities& identities, const DirtyParts& dirty);

    /** All values that `saveValue` has kept, by name. */
    std::map<std::string, std::string> loadValues();
    /** Keeps bytes under a name; empty bytes delete the name. */
    void saveValue(const std::string& name, const std::string& bytes);

    /** Whether changes still reach the database, at once or later. */
    bool works() const { return mDatabase != nullptr; }
    const std::string& path() const { return mPath; }

  private:
    /** What has not been written yet. */
    struct Unsaved {
        DirtyParts dirty;
        std::map<IdentityKey, Identity> identities;
        std::map<std::string, std::string> values;  ///< by name; empty: to be deleted

        bool concernsLists() const { return !dirty.empty() || !identities.empty(); }
        bool empty() const { return !concernsLists() && values.empty(); }
    };

    void giveUp(const std::string& reason);
    void write();
    void writeUnlessPausing();

    std::string mPath;
    std::optional<FolderClaim> mClaim;  ///< empty in memory, or when another process has the folder
    SqliteDatabase mDatabase;
    const ChannelLists* mLists = nullptr;  ///< set while changes of them are unsaved
    Unsaved mUnsaved;
    bool mFailing = false;                          ///< the last write failed
    std::chrono::steady_clock::time_point mFailed;  ///< when a write failed last
};

}  // namespace television
