#include "store.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "channel_id.h"
#include "log.h"
#include "middleware/inputsource.h"

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

constexpr char kReadRecords[] =
        "SELECT kind, list, record, lcn, own, image FROM records ORDER BY kind, list, record";
constexpr char kReadIdentities[] = "SELECT kind, list, a, b, c, record, hidden FROM identities";
constexpr char kReadFavourites[] =
        "SELECT list, favourite, channel FROM favourites ORDER BY list, favourite, place";
constexpr char kReadSettings[] = "SELECT name, value FROM settings";
constexpr char kReadNamed[] = "SELECT name, value FROM named";

/** How long another user of the database may keep it locked, milliseconds. */
constexpr int kPatience = 1000;
/** A write that failed is not tried again at once: each try may take the whole patience. */
constexpr std::chrono::seconds kPause{1};

/** Names of settings: the selected channel of each window and the one before, the main one's input
 * source, the pump version of each list. */
constexpr int kSettingCurrent = 100;
constexpr int kSettingPrevious = 102;
constexpr int kSettingSource = 104;
constexpr int kSettingPumpVersion = 200;

/** Makes a folder and those above it. False, with errno set, when that fails. */
bool makeFolders(const std::string& path) {
    for (size_t at = path.find('/', 1); at != std::string::npos; at = path.find('/', at + 1)) {
        mkdir(path.substr(0, at).c_str(), 0700);
    }
    return mkdir(path.c_str(), 0700) == 0 || errno == EEXIST;
}

/** Whether a failure to open tells of what is in the file: trying again will not help. */
bool isDamage(const SqliteError& error) {
    const int code = error.code() & 0xFF;
    return code == SQLITE_CORRUPT || code == SQLITE_NOTADB || code == SQLITE_ERROR;
}

/** The image of a record in a row; false when the row's image has another size. */
template <typename Record>
bool readImage(SqliteStatement& row, int column, Record& record) {
    const void* image = row.bytes(column, sizeof(record));
    if (image == nullptr) return false;
    std::memcpy(&record, image, sizeof(record));
    return true;
}

template <size_t N>
void terminate(char (&text)[N]) {
    text[N - 1] = '\0';
}

}  // namespace

Store::Store(const std::string& folder) {
    const bool file = folder != ":memory:";
    mPath = file ? folder + "/qortv.db" : folder;
    try {
        if (file) claim(folder);
        try {
            open();
        } catch (const SqliteError& error) {
            if (!file || !isDamage(error)) throw;
            moveAside(error.what());
            open();
        }
    } catch (const SqliteError& error) {
        giveUp(error.what());
    }
}

Store::~Store() {
    if (!mWaiting.empty()) write();
    if (!mWaiting.empty()) LOG_TV_ERROR("database {}: the changes that waited are lost", mPath);
    mDatabase.reset();
    if (mClaim >= 0) close(mClaim);
}

/** Makes the folder this process's, until it ends. */
void Store::claim(const std::string& folder) {
    if (!makeFolders(folder)) throw SqliteError(SQLITE_CANTOPEN, std::strerror(errno));
    mClaim = ::open((folder + "/qortv.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (mClaim < 0) throw SqliteError(SQLITE_CANTOPEN, std::strerror(errno));
    // A file system that has no such locks keeps nobody off, nor this process.
    if (flock(mClaim, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        std::array<char, 16> owner{};
        if (pread(mClaim, owner.data(), owner.size() - 1, 0) <= 0) owner[0] = '?';
        throw SqliteError(SQLITE_BUSY,
                          fmt::format("process {} uses the folder {}", owner.data(), folder));
    }
    const std::string self = std::to_string(getpid());
    if (ftruncate(mClaim, 0) != 0 || pwrite(mClaim, self.data(), self.size(), 0) < 0) {
        LOG_TV_WARN("cannot note the process in {}/qortv.lock: {}", folder, std::strerror(errno));
    }
}

void Store::open() {
    if (mPath != ":memory:") {
        // The database holds secrets (BISS keys), so nobody else may read it.
        const int file = ::open(mPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        if (file < 0) throw SqliteError(SQLITE_CANTOPEN, std::strerror(errno));
        close(file);
    }
    sqlite3* database = nullptr;
    const int result = sqlite3_open(mPath.c_str(), &database);
    mDatabase.reset(database);
    if (result != SQLITE_OK) throw SqliteError(result, sqlite3_errstr(result));
    sqlite3_busy_timeout(database, kPatience);
    int64_t version = 0;
    {
        SqliteStatement check(database, "PRAGMA quick_check(1)");
        if (check.step()) {
            const void* answer = check.bytes(0, 2);
            if (answer == nullptr || std::memcmp(answer, "ok", 2) != 0) {
                throw SqliteError(SQLITE_CORRUPT, "the database is damaged");
            }
        }
        SqliteStatement ask(database, "PRAGMA user_version");
        if (ask.step()) version = ask.integer(0);
        if (version != 0 && version != kVersion) {
            throw SqliteError(SQLITE_ERROR,
                              "the database was made by another version of the television");
        }
    }
    // A lost power supply may cost the last changes, never the database.
    execute(database, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL");
    execute(database, kSchema);
    for (const char* sql :
         {kReadRecords, kReadIdentities, kReadFavourites, kReadSettings, kReadNamed}) {
        const SqliteStatement columns(database, sql);  // fails where one is missing
    }
    if (version == 0) {
        execute(database, ("PRAGMA user_version=" + std::to_string(kVersion)).c_str());
    }
}

void Store::moveAside(const std::string& reason) {
    mDatabase.reset();
    const std::string damaged = mPath + ".damaged";
    // What goes with it goes first: nothing of it may be taken for the new one's.
    unlink((mPath + "-shm").c_str());
    if (std::rename((mPath + "-wal").c_str(), (damaged + "-wal").c_str()) != 0) {
        unlink((damaged + "-wal").c_str());  // of the one that is replaced
    }
    if (std::rename(mPath.c_str(), damaged.c_str()) != 0) {
        throw SqliteError(SQLITE_CANTOPEN, reason + ", and cannot be moved to " + damaged + ": " +
                                                   std::strerror(errno));
    }
    LOG_TV_ERROR("database {}: {}; it is moved to {}, and a new one is made", mPath, reason,
                 damaged);
}

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
        loadRest(loaded, remembered);
        loadRecords(loaded);
        for (ChannelList& list : loaded.lists) list.arrange();
        lists = std::move(loaded);
        identities = std::move(remembered);
    } catch (const SqliteError& error) {
        giveUp(error.what());
    }
}

void Store::loadRecords(ChannelLists& lists) {
    SqliteStatement row(mDatabase.get(), kReadRecords);
    while (row.step()) {
        const auto kind = static_cast<RecordKind>(row.integer(0));
        ChannelList* list = lists.list(static_cast<uint32_t>(row.integer(1)));
        const auto id = static_cast<uint16_t>(row.integer(2));
        if (kind == RecordKind::kService && list != nullptr) {
            Service service;
            if (!readImage(row, 5, service.record)) continue;
            service.lcn = static_cast<uint16_t>(row.integer(3));
            service.own = static_cast<uint8_t>(row.integer(4));
            service.record.ui2_svl_id = list->id;
            service.record.ui2_svl_rec_id = id;
            service.record.ui4_channel_id = serviceChannelId(list->id, id);
            terminate(service.record.s_service_name);
            terminate(service.record.s_provider_name);
            list->services.push_back(service);
        } else if (kind == RecordKind::kMultiplex && list != nullptr) {
            TSL_REC_T record;
            if (!readImage(row, 5, record)) continue;
            record.ui2_tsl_id = list->id;
            record.ui2_tsl_rec_id = id;
            terminate(record.s_network_name);
            terminate(record.s_source);
            list->multiplexes.push_back(record);
        } else if (kind == RecordKind::kNetwork && list != nullptr) {
            NWL_REC_T record;
            if (!readImage(row, 5, record)) continue;
            record.ui2_nwl_rec_id = id;
            terminate(record.s_name);
            list->networks.push_back(record);
        } else if (kind == RecordKind::kSatellite) {
            SATL_REC_T record;
            if (!readImage(row, 5, record)) continue;
            record.ui2_satl_rec_id = id;
            terminate(record.s_name);
            lists.satellites.push_back(record);
        } else if (kind == RecordKind::kBissKey) {
            BSL_REC_T record;
            if (!readImage(row, 5, record)) continue;
            record.ui2_bsl_rec_id = id;
            lists.bissKeys.push_back(record);
        }
    }
}

void Store::loadRest(ChannelLists& lists, Identities& identities) {
    SqliteStatement identity(mDatabase.get(), kReadIdentities);
    while (identity.step()) {
        const auto number = [&](int column) {
            return static_cast<uint16_t>(identity.integer(column));
        };
        identities.restore(
                {static_cast<RecordKind>(number(0)), number(1), number(2), number(3), number(4)},
                {number(5), number(6) != 0});
    }
    SqliteStatement favourite(mDatabase.get(), kReadFavourites);
    while (favourite.step()) {
        ChannelList* list = lists.list(static_cast<uint32_t>(favourite.integer(0)));
        const auto index = static_cast<size_t>(favourite.integer(1));
        if (list == nullptr || index >= list->favourites.size()) continue;
        if (list->favourites[index].size() >= FAV_LIST_MAX) continue;
        list->favourites[index].push_back(static_cast<uint32_t>(favourite.integer(2)));
    }
    SqliteStatement setting(mDatabase.get(), kReadSettings);
    while (setting.step()) {
        const int64_t name = setting.integer(0);
        const auto value = static_cast<uint32_t>(setting.integer(1));
        if (name == kSettingCurrent || name == kSettingCurrent + 1) {
            lists.current[static_cast<size_t>(name - kSettingCurrent)] = value;
        } else if (name == kSettingPrevious || name == kSettingPrevious + 1) {
            lists.previous[static_cast<size_t>(name - kSettingPrevious)] = value;
        } else if (name == kSettingSource && value < INPUT_SOURCE_COUNT) {
            lists.source[0] = static_cast<uint8_t>(value);
        } else if (ChannelList* list =
                           lists.list(static_cast<uint32_t>(name - kSettingPumpVersion))) {
            list->pumpVersion = value;
        }
    }
    if (lists.source[0] != kTelevisionSource) lists.current[0] = 0;
}

std::map<std::string, std::string> Store::loadValues() {
    std::map<std::string, std::string> values;
    if (mDatabase == nullptr) return values;
    try {
        SqliteStatement row(mDatabase.get(), kReadNamed);
        while (row.step()) values[row.text(0)] = row.text(1);
    } catch (const SqliteError& error) {
        giveUp(error.what());
    }
    return values;
}

void Store::saveValue(const std::string& name, const std::string& bytes) {
    if (mDatabase == nullptr) return;
    mWaiting.values[name] = bytes;
    writeOrWait();
}

void Store::saveRecord(RecordKind kind, uint16_t list, uint16_t record, uint16_t lcn, uint8_t own,
                       const void* image, size_t size) {
    SqliteStatement insert(mDatabase.get(),
                           "INSERT OR REPLACE INTO records VALUES(?, ?, ?, ?, ?, ?)");
    insert.bind(kind, list, record, lcn, own).bindBytes(6, image, size).run();
}

void Store::deleteRecords(RecordKind kind, uint16_t list) {
    SqliteStatement remove(mDatabase.get(), "DELETE FROM records WHERE kind = ? AND list = ?");
    remove.bind(kind, list).run();
}

void Store::saveList(const ChannelList& list) {
    for (const RecordKind kind :
         {RecordKind::kService, RecordKind::kMultiplex, RecordKind::kNetwork}) {
        deleteRecords(kind, list.id);
    }
    SqliteStatement insert(mDatabase.get(), "INSERT INTO records VALUES(?, ?, ?, ?, ?, ?)");
    for (const Service& service : list.services) {
        insert.bind(RecordKind::kService, list.id, service.record.ui2_svl_rec_id, service.lcn,
                    service.own)
                .bindBytes(6, &service.record, sizeof(service.record))
                .run();
    }
    for (const TSL_REC_T& record : list.multiplexes) {
        insert.bind(RecordKind::kMultiplex, list.id, record.ui2_tsl_rec_id, 0, 0)
                .bindBytes(6, &record, sizeof(record))
                .run();
    }
    for (const NWL_REC_T& record : list.networks) {
        insert.bind(RecordKind::kNetwork, list.id, record.ui2_nwl_rec_id, 0, 0)
                .bindBytes(6, &record, sizeof(record))
                .run();
    }
}

void Store::saveFavourites(const ChannelList& list) {
    SqliteStatement remove(mDatabase.get(), "DELETE FROM favourites WHERE list = ?");
    remove.bind(list.id).run();
    SqliteStatement insert(mDatabase.get(), "INSERT INTO favourites VALUES(?, ?, ?, ?)");
    for (size_t i = 0; i < list.favourites.size(); ++i) {
        int place = 0;
        for (const uint32_t channelId : list.favourites[i]) {
            insert.bind(list.id, i, ++place, channelId).run();
        }
    }
}

void Store::save(const ChannelLists& lists, Identities& identities, const Changes& changes) {
    if (mDatabase == nullptr) return;
    mLists = &lists;
    mWaiting.changes.add(changes);
    for (const auto& [key, value] : identities.takeChanges()) mWaiting.identities[key] = value;
    writeOrWait();
}

void Store::writeOrWait() {
    if (mWaiting.empty()) return;
    if (!mFailing || std::chrono::steady_clock::now() >= mFailed + kPause) write();
}

/** Writes what waits. The log tells of the first failure of a row, and of its end. */
void Store::write() {
    try {
        execute(mDatabase.get(), "BEGIN IMMEDIATE");
        if (mWaiting.lists()) writeLists(*mLists);
        writeValues();
        execute(mDatabase.get(), "COMMIT");
        mWaiting = {};
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

void Store::writeLists(const ChannelLists& lists) {
    const Changes& changes = mWaiting.changes;
    for (const uint16_t id : changes.lists) {
        if (const ChannelList* list = lists.list(id)) {
            saveList(*list);
            saveFavourites(*list);
        }
    }
    for (const auto& [id, channelId] : changes.services) {
        const ChannelList* list = lists.list(id);
        const Service* service = list == nullptr ? nullptr : list->byChannel(channelId);
        if (service == nullptr || changes.lists.count(id) != 0) continue;
        saveRecord(RecordKind::kService, id, service->record.ui2_svl_rec_id, service->lcn,
                   service->own, &service->record, sizeof(service->record));
    }
    for (const uint16_t id : changes.favourites) {
        const ChannelList* list = lists.list(id);
        if (list != nullptr && changes.lists.count(id) == 0) saveFavourites(*list);
    }
    if (changes.satellites) {
        deleteRecords(RecordKind::kSatellite, SVL_ID_SATELLITE);
        for (const SATL_REC_T& record : lists.satellites) {
            saveRecord(RecordKind::kSatellite, SVL_ID_SATELLITE, record.ui2_satl_rec_id, 0, 0,
                       &record, sizeof(record));
        }
    }
    if (changes.bissKeys) {
        deleteRecords(RecordKind::kBissKey, 0);
        for (const BSL_REC_T& record : lists.bissKeys) {
            saveRecord(RecordKind::kBissKey, 0, record.ui2_bsl_rec_id, 0, 0, &record,
                       sizeof(record));
        }
    }
    SqliteStatement identity(mDatabase.get(),
                             "INSERT OR REPLACE INTO identities VALUES(?, ?, ?, ?, ?, ?, ?)");
    for (const auto& [key, value] : mWaiting.identities) {
        identity.bind(key.kind, key.list, key.a, key.b, key.c, value.recordId, value.hidden).run();
    }
    SqliteStatement setting(mDatabase.get(), "INSERT OR REPLACE INTO settings VALUES(?, ?)");
    for (size_t i = 0; i < lists.current.size(); ++i) {
        setting.bind(kSettingCurrent + static_cast<int>(i), lists.current[i]).run();
        setting.bind(kSettingPrevious + static_cast<int>(i), lists.previous[i]).run();
    }
    setting.bind(kSettingSource, lists.source[0]).run();
    for (const ChannelList& list : lists.lists) {
        setting.bind(kSettingPumpVersion + list.id, list.pumpVersion).run();
    }
}

void Store::writeValues() {
    SqliteStatement forget(mDatabase.get(), "DELETE FROM named WHERE name = ?");
    SqliteStatement keep(mDatabase.get(), "INSERT OR REPLACE INTO named VALUES(?, ?)");
    for (const auto& [name, bytes] : mWaiting.values) {
        SqliteStatement& write = bytes.empty() ? forget : keep;
        write.bindBytes(1, name.data(), name.size());
        if (!bytes.empty()) write.bindBytes(2, bytes.data(), bytes.size());
        write.run();
    }
}

}  // namespace television
