#include "television/lists/store_database.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "television/base/log.h"

namespace television {
namespace {

/** Counts the changes of the schema or of the record images; databases of other versions are not
 * read. */
constexpr int kVersion = 1;

constexpr char kSchema[] = R"(
    CREATE TABLE IF NOT EXISTS records(
        kind INTEGER, list INTEGER, record INTEGER, lcn INTEGER, own INTEGER, image BLOB,
        PRIMARY KEY(kind, list, record)) WITHOUT ROWID;
    CREATE TABLE IF NOT EXISTS identities(
        kind INTEGER, list INTEGER, a INTEGER, b INTEGER, c INTEGER, record INTEGER, hidden INTEGER,
        PRIMARY KEY(kind, list, a, b, c)) WITHOUT ROWID;
    CREATE TABLE IF NOT EXISTS favourites(
        list INTEGER, favourite INTEGER, place INTEGER, channel INTEGER,
        PRIMARY KEY(list, favourite, place)) WITHOUT ROWID;
    CREATE TABLE IF NOT EXISTS settings(name INTEGER PRIMARY KEY, value INTEGER);
    CREATE TABLE IF NOT EXISTS named(name BLOB PRIMARY KEY, value BLOB) WITHOUT ROWID;
)";

/** How long another process may keep the database locked before a call fails, in milliseconds. */
constexpr int kPatience = 1000;

/** Whether a failure to open lies in what is in the file, so that trying again will not help. */
bool isDamage(const SqliteError& error) {
    const int code = error.code() & 0xFF;
    return code == SQLITE_CORRUPT || code == SQLITE_NOTADB || code == SQLITE_ERROR;
}

/** Makes the file when it is missing, with access for this user only: it holds secrets (BISS keys).
 */
void makeFile(const std::string& path) {
    const int file = open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (file < 0) throw SqliteError(SQLITE_CANTOPEN, std::strerror(errno));
    close(file);
}

void checkForDamage(sqlite3* database) {
    SqliteStatement check(database, "PRAGMA quick_check(1)");
    if (!check.step()) return;
    const void* finding = check.bytes(0, 2);
    if (finding == nullptr || std::memcmp(finding, "ok", 2) != 0) {
        throw SqliteError(SQLITE_CORRUPT, "the database is damaged");
    }
}

/** Returns the version of the database; 0 for a new one. Throws when it is another than ours. */
int64_t checkedVersion(sqlite3* database) {
    SqliteStatement query(database, "PRAGMA user_version");
    const int64_t version = query.step() ? query.integer(0) : 0;
    if (version != 0 && version != kVersion) {
        throw SqliteError(SQLITE_ERROR,
                          "the database was made by another version of the television");
    }
    return version;
}

void makeTables(sqlite3* database, int64_t version) {
    // A lost power supply may cost the last changes, never the database.
    execute(database, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL");
    execute(database, kSchema);
    for (const char* sql :
         {kReadRecords, kReadIdentities, kReadFavourites, kReadSettings, kReadNamed}) {
        const SqliteStatement columns(database, sql);  // fails when one is missing
    }
    if (version == 0) {
        execute(database, ("PRAGMA user_version=" + std::to_string(kVersion)).c_str());
    }
}

SqliteDatabase openChecked(const std::string& path) {
    if (path != kMemoryPath) makeFile(path);
    sqlite3* handle = nullptr;
    const int result = sqlite3_open(path.c_str(), &handle);
    SqliteDatabase database(handle);
    if (result != SQLITE_OK) throw SqliteError(result, sqlite3_errstr(result));
    sqlite3_busy_timeout(handle, kPatience);
    checkForDamage(handle);
    makeTables(handle, checkedVersion(handle));
    return database;
}

/** `reason`: why the database cannot be used. */
void moveAside(const std::string& path, const std::string& reason) {
    const std::string damaged = path + ".damaged";
    // The files beside it go first, so that none is taken for one of the new database.
    unlink((path + "-shm").c_str());
    if (std::rename((path + "-wal").c_str(), (damaged + "-wal").c_str()) != 0) {
        unlink((damaged + "-wal").c_str());  // of a database that was moved aside earlier
    }
    if (std::rename(path.c_str(), damaged.c_str()) != 0) {
        throw SqliteError(SQLITE_CANTOPEN, reason + ", and cannot be moved to " + damaged + ": " +
                                                   std::strerror(errno));
    }
    LOG_TV_ERROR("database {}: {}; it is moved to {}, and a new one is made", path, reason,
                 damaged);
}

}  // namespace

SqliteDatabase openStoreDatabase(const std::string& path) {
    try {
        return openChecked(path);
    } catch (const SqliteError& error) {
        if (path == kMemoryPath || !isDamage(error)) throw;
        moveAside(path, error.what());
    }
    return openChecked(path);
}

}  // namespace television
