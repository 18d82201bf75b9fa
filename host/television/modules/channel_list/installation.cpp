// The lists that installation menus show: satellites, multiplexes and networks.
#include <algorithm>

#include "middleware/channellist.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/modules/modules.h"

namespace television {
namespace {

// What the three kinds of list have in common, for the templates below: `records` finds a list by
// its id, `listId` and `id` are fields of a record, and `changed` says in `change` what has to be
// stored and notified.

struct Satellites {
    using Record = SATL_REC_T;
    static std::vector<Record>* records(ChannelLists& lists, uint32_t id) {
        return id == SATL_ID_MAIN ? &lists.satellites : nullptr;
    }
    static uint16_t& listId(Record& record) { return record.ui2_satl_id; }
    static uint16_t& id(Record& record) { return record.ui2_satl_rec_id; }
    static void changed(ChannelLists& lists, uint32_t, uint16_t recordId, Change& change) {
        change.satellitesChanged(lists, recordId);
    }
};

struct Multiplexes {
    using Record = TSL_REC_T;
    static std::vector<Record>* records(ChannelLists& lists, uint32_t id) {
        ChannelList* list = lists.list(id);
        return list == nullptr ? nullptr : &list->multiplexes;
    }
    static uint16_t& listId(Record& record) { return record.ui2_tsl_id; }
    static uint16_t& id(Record& record) { return record.ui2_tsl_rec_id; }
    static void changed(ChannelLists& lists, uint32_t id, uint16_t, Change& change) {
        ChannelList& list = *lists.list(id);
        list.arrange();
        change.listChanged(list, CHANNEL_LIST_NFY_CHANGED);
    }
};

struct Networks {
    using Record = NWL_REC_T;
    static std::vector<Record>* records(ChannelLists& lists, uint32_t id) {
        ChannelList* list = lists.list(id);
        return list == nullptr ? nullptr : &list->networks;
    }
    static uint16_t& listId(Record& record) { return record.ui2_nwl_id; }
    static uint16_t& id(Record& record) { return record.ui2_nwl_rec_id; }
    static void changed(ChannelLists& lists, uint32_t id, uint16_t recordId, Change& change) {
        change.networksChanged(*lists.list(id), recordId);
    }
};

// The same of constant lists and records.

template <typename List>
const std::vector<typename List::Record>* records(const ChannelLists& lists, uint32_t id) {
    return List::records(const_cast<ChannelLists&>(lists), id);
}

template <typename List>
uint16_t idOf(const typename List::Record& record) {
    return List::id(const_cast<typename List::Record&>(record));
}

template <typename Records, typename Id>
auto findById(Records& list, uint16_t wanted, Id id) {
    return std::find_if(list.begin(), list.end(),
                        [&](const auto& record) { return id(record) == wanted; });
}

template <typename List>
int32_t readById(const Core& core, uint32_t listId, uint16_t recordId, typename List::Record* to) {
    if (!writable(to)) return TV_INVALID_ARGUMENT;
    return core.read([&](const ChannelLists& lists) -> int32_t {
        const auto* list = records<List>(lists, listId);
        if (list == nullptr) return TV_NOT_FOUND;
        const auto found = findById(*list, recordId, idOf<List>);
        if (found == list->end()) return TV_NOT_FOUND;
        *to = *found;
        return TV_OK;
    });
}

template <typename List>
int32_t readByIndex(const Core& core, uint32_t listId, uint16_t index, typename List::Record* to) {
    if (!writable(to)) return TV_INVALID_ARGUMENT;
    return core.read([&](const ChannelLists& lists) -> int32_t {
        const auto* list = records<List>(lists, listId);
        if (list == nullptr || index >= list->size()) return TV_NOT_FOUND;
        *to = (*list)[index];
        return TV_OK;
    });
}

template <typename List>
int32_t idAt(const Core& core, uint32_t listId, int32_t index, uint16_t* to) {
    return core.read([&](const ChannelLists& lists) -> int32_t {
        const auto* list = records<List>(lists, listId);
        if (list == nullptr || index < 0 || static_cast<size_t>(index) >= list->size()) {
            return TV_NOT_FOUND;
        }
        put(to, idOf<List>((*list)[static_cast<size_t>(index)]));
        return TV_OK;
    });
}

template <typename List>
int32_t countRecords(const Core& core, uint32_t listId, uint16_t* to) {
    return core.read([&](const ChannelLists& lists) -> int32_t {
        const auto* list = records<List>(lists, listId);
        if (list == nullptr) return TV_NOT_FOUND;
        put(to, list->size());
        return TV_OK;
    });
}

template <typename List>
int32_t countOfSatellite(const Core& core, uint32_t listId, uint16_t satelliteId, uint16_t* to) {
    return core.read([&](const ChannelLists& lists) -> int32_t {
        const auto* list = records<List>(lists, listId);
        if (list == nullptr) return TV_NOT_FOUND;
        put(to, std::count_if(list->begin(), list->end(), [&](const auto& record) {
                return record.ui2_satl_rec_id == satelliteId;
            }));
        return TV_OK;
    });
}

/** Reads the records of a satellite from index `start` on: at most `count`, and none from index
 * `total` on. */
template <typename List>
int32_t readOfSatellite(const Core& core, uint32_t listId, uint16_t satelliteId, uint32_t start,
                        uint32_t count, uint32_t total, typename List::Record* to) {
    const uint32_t end = std::min(start + count, total);
    if (start >= end) return TV_OK;
    if (!writable(to)) return TV_INVALID_ARGUMENT;
    return core.read([&](const ChannelLists& lists) -> int32_t {
        const auto* list = records<List>(lists, listId);
        if (list == nullptr) return TV_NOT_FOUND;
        uint32_t index = 0;
        for (const auto& record : *list) {
            if (record.ui2_satl_rec_id != satelliteId) continue;
            if (index >= end) break;
            if (index >= start) to[index - start] = record;
            ++index;
        }
        return TV_OK;
    });
}

/** Replaces the record with the same id; with `force` adds it when there is none. */
template <typename List>
int32_t update(Core& core, uint32_t listId, const typename List::Record* wanted, bool force) {
    if (wanted == nullptr) return TV_INVALID_ARGUMENT;
    return core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
        auto* list = List::records(lists, listId);
        if (list == nullptr) return TV_NOT_FOUND;
        const uint16_t recordId = idOf<List>(*wanted);
        if (recordId == 0) return TV_INVALID_ARGUMENT;
        auto found = findById(*list, recordId, idOf<List>);
        if (found == list->end()) {
            if (!force) return TV_NOT_FOUND;
            const auto behind = std::find_if(list->begin(), list->end(), [&](const auto& record) {
                return idOf<List>(record) > recordId;
            });
            found = list->insert(behind, *wanted);
        } else {
            *found = *wanted;
        }
        List::listId(*found) = static_cast<uint16_t>(listId);
        List::changed(lists, listId, recordId, change);
        return TV_OK;
    });
}

template <typename List>
int32_t remove(Core& core, uint32_t listId, uint16_t recordId) {
    return core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
        auto* list = List::records(lists, listId);
        if (list == nullptr) return TV_NOT_FOUND;
        const auto found = findById(*list, recordId, idOf<List>);
        if (found == list->end()) return TV_NOT_FOUND;
        list->erase(found);
        List::changed(lists, listId, recordId, change);
        return TV_OK;
    });
}

template <typename List>
int32_t cleanRecords(Core& core, uint32_t listId) {
    return core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
        auto* list = List::records(lists, listId);
        if (list == nullptr) return TV_NOT_FOUND;
        list->clear();
        List::changed(lists, listId, 0, change);
        return TV_OK;
    });
}

/** Plugs the functions that all three lists have. */
template <typename List, auto Clean, auto Delete, auto Get, auto GetByIndex, auto Update,
          auto Count, auto QueryId>
void plugList(switchboard::Switchboard& board, Core& core) {
    using Record = typename List::Record;
    board.on<Clean>([&core](uint16_t list) { return cleanRecords<List>(core, list); });
    board.on<Delete>([&core](uint16_t list, uint16_t id) { return remove<List>(core, list, id); });
    board.on<Get>([&core](uint16_t list, uint16_t id, Record* to) {
        return readById<List>(core, list, id, to);
    });
    board.on<GetByIndex>([&core](uint16_t list, uint16_t index, Record* to) {
        return readByIndex<List>(core, list, index, to);
    });
    board.on<Update>([&core](uint16_t list, const Record* wanted, bool force) {
        return update<List>(core, list, wanted, force);
    });
    board.on<Count>(
            [&core](uint16_t list, uint16_t* to) { return countRecords<List>(core, list, to); });
    board.on<QueryId>([&core](auto list, auto index, uint16_t* to) {
        return idAt<List>(core, static_cast<uint32_t>(list), index, to);
    });
}

/** Plugs the functions that read the records of one satellite. */
template <typename List, auto Count, auto Read>
void plugOfSatellite(switchboard::Switchboard& board, Core& core) {
    board.on<Count>([&core](uint16_t list, uint16_t satellite, uint16_t* to) {
        return countOfSatellite<List>(core, list, satellite, to);
    });
    board.on<Read>([&core](uint16_t list, uint16_t satellite, uint16_t start, uint16_t count,
                           uint16_t total, typename List::Record* to) {
        return readOfSatellite<List>(core, list, satellite, start, count, total, to);
    });
}

}  // namespace

void plugInstallationLists(switchboard::Switchboard& board, Core& core) {
    plugList<Satellites, &a_qortvapi_satllist_clean, &a_qortvapi_satllist_del_rec,
             &a_qortvapi_satllist_get_rec, &a_qortvapi_satllist_get_rec_by_rec_idx,
             &a_qortvapi_satllist_update_rec, &a_qortvapi_satllist_get_num_recs,
             &a_qortvapi_satllist_qry_rec_id>(board, core);
    plugList<Multiplexes, &a_qortvapi_tsl_clean, &a_qortvapi_tsl_del_rec, &a_qortvapi_tsl_get_rec,
             &a_qortvapi_tsl_get_rec_by_rec_idx, &a_qortvapi_tsl_update_rec,
             &a_qortvapi_tsl_get_num_recs, &a_qortvapi_tsl_qry_rec_id>(board, core);
    plugList<Networks, &a_qortvapi_nwl_clean, &a_qortvapi_nwl_del_rec, &a_qortvapi_nwl_get_rec,
             &a_qortvapi_nwl_get_rec_by_rec_idx, &a_qortvapi_nwl_update_rec,
             &a_qortvapi_nwl_get_num_recs, &a_qortvapi_nwl_qry_rec_id>(board, core);
    plugOfSatellite<Multiplexes, &a_qortvapi_tsl_get_tsl_num_rec_by_satl_rec_id,
                    &a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id>(board, core);
    plugOfSatellite<Networks, &a_qortvapi_nwl_get_nwl_num_rec_by_satl_rec_id,
                    &a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id>(board, core);
    const auto lock = [&core](uint16_t) { return core.satelliteLock.lock(); };
    const auto unlock = [&core](uint16_t) { return core.satelliteLock.unlock(); };
    board.on<&a_qortvapi_satllist_lock_database>(lock);
    board.on<&a_qortvapi_satllist_unlock_database>(unlock);
    board.on<&a_qortvapi_satllist_read_lock_database>(lock);
    board.on<&a_qortvapi_satllist_read_unlock_database>(unlock);
}

}  // namespace television
