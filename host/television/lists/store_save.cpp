#include "television/lists/store_save.h"

#include "television/lists/store_database.h"

namespace television {
namespace {

void saveRecord(sqlite3* database, RecordKind kind, uint16_t list, uint16_t record, uint16_t lcn,
                uint8_t edited, const void* image, size_t size) {
    SqliteStatement insert(database, "INSERT OR REPLACE INTO records VALUES(?, ?, ?, ?, ?, ?)");
    insert.bind(kind, list, record, lcn, edited).bindBytes(6, image, size).run();
}

void deleteRecords(sqlite3* database, RecordKind kind, uint16_t list) {
    SqliteStatement remove(database, "DELETE FROM records WHERE kind = ? AND list = ?");
    remove.bind(kind, list).run();
}

void saveRecords(sqlite3* database, const ChannelList& list) {
    for (const RecordKind kind :
         {RecordKind::kService, RecordKind::kMultiplex, RecordKind::kNetwork}) {
        deleteRecords(database, kind, list.id);
    }
    SqliteStatement insert(database, "INSERT INTO records VALUES(?, ?, ?, ?, ?, ?)");
    for (const Service& service : list.services) {
        insert.bind(RecordKind::kService, list.id, service.record.ui2_svl_rec_id, service.lcn,
                    service.edited)
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

void saveFavourites(sqlite3* database, const ChannelList& list) {
    SqliteStatement remove(database, "DELETE FROM favourites WHERE list = ?");
    remove.bind(list.id).run();
    SqliteStatement insert(database, "INSERT INTO favourites VALUES(?, ?, ?, ?)");
    for (size_t i = 0; i < list.favourites.size(); ++i) {
        int place = 0;
        for (const uint32_t channelId : list.favourites[i]) {
            insert.bind(list.id, i, ++place, channelId).run();
        }
    }
}

/** Saves single services, unless their list is saved as a whole. */
void saveServices(sqlite3* database, const ChannelLists& lists, const DirtyParts& dirty) {
    for (const auto& [id, channelId] : dirty.services) {
        const ChannelList* list = lists.list(id);
        const Service* service = list == nullptr ? nullptr : list->byChannel(channelId);
        if (service == nullptr || dirty.lists.count(id) != 0) continue;
        saveRecord(database, RecordKind::kService, id, service->record.ui2_svl_rec_id, service->lcn,
                   service->edited, &service->record, sizeof(service->record));
    }
}

void saveSatellites(sqlite3* database, const ChannelLists& lists) {
    deleteRecords(database, RecordKind::kSatellite, SVL_ID_SATELLITE);
    for (const SATL_REC_T& record : lists.satellites) {
        saveRecord(database, RecordKind::kSatellite, SVL_ID_SATELLITE, record.ui2_satl_rec_id, 0, 0,
                   &record, sizeof(record));
    }
}

void saveBissKeys(sqlite3* database, const ChannelLists& lists) {
    deleteRecords(database, RecordKind::kBissKey, 0);
    for (const BSL_REC_T& record : lists.bissKeys) {
        saveRecord(database, RecordKind::kBissKey, 0, record.ui2_bsl_rec_id, 0, 0, &record,
                   sizeof(record));
    }
}

void saveSettings(sqlite3* database, const ChannelLists& lists) {
    SqliteStatement setting(database, "INSERT OR REPLACE INTO settings VALUES(?, ?)");
    for (size_t i = 0; i < lists.current.size(); ++i) {
        setting.bind(kSettingCurrent + static_cast<int>(i), lists.current[i]).run();
        setting.bind(kSettingPrevious + static_cast<int>(i), lists.previous[i]).run();
    }
    setting.bind(kSettingSource, lists.source[0]).run();
    for (const ChannelList& list : lists.lists) {
        setting.bind(kSettingPumpVersion + list.id, list.pumpVersion).run();
    }
}

}  // namespace

void saveLists(sqlite3* database, const ChannelLists& lists, const DirtyParts& dirty) {
    for (const uint16_t id : dirty.lists) {
        if (const ChannelList* list = lists.list(id)) {
            saveRecords(database, *list);
            saveFavourites(database, *list);
        }
    }
    saveServices(database, lists, dirty);
    for (const uint16_t id : dirty.favourites) {
        const ChannelList* list = lists.list(id);
        if (list != nullptr && dirty.lists.count(id) == 0) saveFavourites(database, *list);
    }
    if (dirty.satellites) saveSatellites(database, lists);
    if (dirty.bissKeys) saveBissKeys(database, lists);
    saveSettings(database, lists);
}

void saveIdentities(sqlite3* database, const std::map<IdentityKey, Identity>& identities) {
    SqliteStatement identity(database,
                             "INSERT OR REPLACE INTO identities VALUES(?, ?, ?, ?, ?, ?, ?)");
    for (const auto& [key, value] : identities) {
        identity.bind(key.kind, key.list, key.a, key.b, key.c, value.recordId, value.hidden).run();
    }
}

void saveValues(sqlite3* database, const std::map<std::string, std::string>& values) {
    SqliteStatement forget(database, "DELETE FROM named WHERE name = ?");
    SqliteStatement keep(database, "INSERT OR REPLACE INTO named VALUES(?, ?)");
    for (const auto& [name, bytes] : values) {
        SqliteStatement& write = bytes.empty() ? forget : keep;
        write.bindBytes(1, name.data(), name.size());
        if (!bytes.empty()) write.bindBytes(2, bytes.data(), bytes.size());
        write.run();
    }
}

}  // namespace television
