#include "television/lists/store_load.h"

#include <cstring>
#include <utility>

#include "middleware/inputsource.h"
#include "television/lists/channel_id.h"
#include "television/lists/store_database.h"

namespace television {
namespace {

// The columns of kReadRecords.
constexpr int kColumnKind = 0;
constexpr int kColumnList = 1;
constexpr int kColumnRecord = 2;
constexpr int kColumnLcn = 3;
constexpr int kColumnEdited = 4;
constexpr int kColumnImage = 5;

/** Copies the image of a record from a row. Returns false when the image has another size. */
template <typename Record>
bool readImage(SqliteStatement& row, Record& record) {
    const void* image = row.bytes(kColumnImage, sizeof(record));
    if (image == nullptr) return false;
    std::memcpy(&record, image, sizeof(record));
    return true;
}

template <size_t N>
void terminate(char (&text)[N]) {
    text[N - 1] = '\0';
}

void loadService(SqliteStatement& row, uint16_t id, ChannelList& list) {
    Service service;
    if (!readImage(row, service.record)) return;
    service.lcn = static_cast<uint16_t>(row.integer(kColumnLcn));
    service.edited = static_cast<uint8_t>(row.integer(kColumnEdited));
    service.record.ui2_svl_id = list.id;
    service.record.ui2_svl_rec_id = id;
    service.record.ui4_channel_id = serviceChannelId(list.id, id);
    terminate(service.record.s_service_name);
    terminate(service.record.s_provider_name);
    list.services.push_back(service);
}

void loadMultiplex(SqliteStatement& row, uint16_t id, ChannelList& list) {
    TSL_REC_T record;
    if (!readImage(row, record)) return;
    record.ui2_tsl_id = list.id;
    record.ui2_tsl_rec_id = id;
    terminate(record.s_network_name);
    terminate(record.s_source);
    list.multiplexes.push_back(record);
}

void loadNetwork(SqliteStatement& row, uint16_t id, ChannelList& list) {
    NWL_REC_T record;
    if (!readImage(row, record)) return;
    record.ui2_nwl_rec_id = id;
    terminate(record.s_name);
    list.networks.push_back(record);
}

void loadSatellite(SqliteStatement& row, uint16_t id, ChannelLists& lists) {
    SATL_REC_T record;
    if (!readImage(row, record)) return;
    record.ui2_satl_rec_id = id;
    terminate(record.s_name);
    lists.satellites.push_back(record);
}

void loadBissKey(SqliteStatement& row, uint16_t id, ChannelLists& lists) {
    BSL_REC_T record;
    if (!readImage(row, record)) return;
    record.ui2_bsl_rec_id = id;
    lists.bissKeys.push_back(record);
}

void loadRecords(sqlite3* database, ChannelLists& lists) {
    SqliteStatement row(database, kReadRecords);
    while (row.step()) {
        const auto kind = static_cast<RecordKind>(row.integer(kColumnKind));
        ChannelList* list = lists.list(static_cast<uint32_t>(row.integer(kColumnList)));
        const auto id = static_cast<uint16_t>(row.integer(kColumnRecord));
        if (kind == RecordKind::kService && list != nullptr) {
            loadService(row, id, *list);
        } else if (kind == RecordKind::kMultiplex && list != nullptr) {
            loadMultiplex(row, id, *list);
        } else if (kind == RecordKind::kNetwork && list != nullptr) {
            loadNetwork(row, id, *list);
        } else if (kind == RecordKind::kSatellite) {
            loadSatellite(row, id, lists);
        } else if (kind == RecordKind::kBissKey) {
            loadBissKey(row, id, lists);
        }
    }
}

void loadIdentities(sqlite3* database, Identities& identities) {
    SqliteStatement row(database, kReadIdentities);
    while (row.step()) {
        const auto number = [&](int column) { return static_cast<uint16_t>(row.integer(column)); };
        identities.restore(
                {static_cast<RecordKind>(number(0)), number(1), number(2), number(3), number(4)},
                {number(5), number(6) != 0});
    }
}

void loadFavourites(sqlite3* database, ChannelLists& lists) {
    SqliteStatement row(database, kReadFavourites);
    while (row.step()) {
        ChannelList* list = lists.list(static_cast<uint32_t>(row.integer(0)));
        const auto index = static_cast<size_t>(row.integer(1));
        if (list == nullptr || index >= list->favourites.size()) continue;
        if (list->favourites[index].size() >= FAV_LIST_MAX) continue;
        list->favourites[index].push_back(static_cast<uint32_t>(row.integer(2)));
    }
}

void loadSettings(sqlite3* database, ChannelLists& lists) {
    SqliteStatement row(database, kReadSettings);
    while (row.step()) {
        const int64_t name = row.integer(0);
        const auto value = static_cast<uint32_t>(row.integer(1));
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

}  // namespace

void loadLists(sqlite3* database, ChannelLists& lists, Identities& identities) {
    loadIdentities(database, identities);
    loadFavourites(database, lists);
    loadSettings(database, lists);
    loadRecords(database, lists);
    for (ChannelList& list : lists.lists) list.arrange();
}

std::map<std::string, std::string> loadValues(sqlite3* database) {
    std::map<std::string, std::string> values;
    SqliteStatement row(database, kReadNamed);
    while (row.step()) values[row.text(0)] = row.text(1);
    return values;
}

}  // namespace television
