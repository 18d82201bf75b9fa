#include "television/lists/store.h"

#include <utility>

#include "television/base/log.h"
#include "television/lists/store_database.h"
#include "television/lists/store_load.h"
#include "television/lists/store_save.h"

namespace television {
namespace {

/** How long nothing is written after a failure, since each try may wait for a locked database. */
constexpr std::chrono::seconds kPause{1};

}  // namespace

Store::Store(const std::string& folder) {
    const bool inMemory = folder == kMemoryPath;
    mPath = inMemory ? folder : folder + "/qortv.db";
    try {
        if (!inMemory) mClaim.emplace(folder);
        mDatabase = openStoreDatabase(mPath);
    } catch (const SqliteError& error) {
        giveUp(error.what());
    }
}

Store::~Store() {
    if (!mUnsaved.empty()) write();
    if (!mUnsaved.empty()) LOG_TV_ERROR("database {}: the changes that waited are lost", mPath);
}

/** Goes on without the database. */
void Store::giveUp(const std::string& reason) {
    LOG_TV_ERROR("database {}: {}; changes are kept in memory only, until the television stops",
                 mPath, reason);
    mDatabase.reset();
}

void Store::load(ChannelLists& lists, Identities& identities) {
    if (mDatabase == nullptr) return;
    try {
        ChannelLists loaded;
        Identities remembered;
        loadLists(mDatabase.get(), loaded, remembered);
        lists = std::move(loaded);
        identities = std::move(remembered);
    } catch (const SqliteError& error) {
        giveUp(error.what());
    }
}

std::map<std::string, std::string> Store::loadValues() {
    if (mDatabase == nullptr) return {};
    try {
        return television::loadValues(mDatabase.get());
    } catch (const SqliteError& error) {
        giveUp(error.what());
        return {};
    }
}

void Store::saveValue(const std::string& name, const std::string& bytes) {
    if (mDatabase == nullptr) return;
    mUnsaved.values[name] = bytes;
    writeUnlessPausing();
}

void Store::save(const ChannelLists& lists, Identities& identities, const DirtyParts& dirty) {
    if (mDatabase == nullptr) return;
    mLists = &lists;
    mUnsaved.dirty.add(dirty);
    for (const auto& [key, value] : identities.takeChanges()) mUnsaved.identities[key] = value;
    writeUnlessPausing();
}

void Store::writeUnlessPausing() {
    if (mUnsaved.empty()) return;
    if (!mFailing || std::chrono::steady_clock::now() >= mFailed + kPause) write();
}

/** Writes all that is unsaved. Of failures in a row the first is logged, and the success after. */
void Store::write() {
    try {
        execute(mDatabase.get(), "BEGIN IMMEDIATE");
        if (mUnsaved.concernsLists()) {
            saveLists(mDatabase.get(), *mLists, mUnsaved.dirty);
            saveIdentities(mDatabase.get(), mUnsaved.identities);
        }
        saveValues(mDatabase.get(), mUnsaved.values);
        execute(mDatabase.get(), "COMMIT");
        mUnsaved = {};
        if (mFailing) LOG_TV_INFO("database {}: all changes are saved again", mPath);
        mFailing = false;
    } catch (const SqliteError& error) {
        if (sqlite3_get_autocommit(mDatabase.get()) == 0) {
            sqlite3_exec(mDatabase.get(), "ROLLBACK", nullptr, nullptr, nullptr);
        }
        if (!mFailing) {
            LOG_TV_ERROR("database {}: {}; changes are kept in memory until they can be saved",
                         mPath, error.what());
        }
        mFailing = true;
        mFailed = std::chrono::steady_clock::now();
    }
}

}  // namespace television
