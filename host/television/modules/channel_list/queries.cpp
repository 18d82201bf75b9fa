// Counting and finding the channels that match a mask, a name or other properties.
#include <algorithm>

#include "middleware/channellist.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/lists/name_match.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** Returns for how many channels of a list `wanted(record)` is true. */
template <typename Wanted>
int32_t count(const Core& core, uint32_t listId, Wanted wanted) {
    return core.read([&](const ChannelLists& lists) -> int32_t {
        const ChannelList* list = lists.list(listId);
        if (list == nullptr) return TV_NOT_FOUND;
        return static_cast<int32_t>(
                std::count_if(list->services.begin(), list->services.end(),
                              [&](const Service& service) { return wanted(service.record); }));
    });
}

/** Reads the channel at `index` among those for which `wanted(record)` is true. */
template <typename Wanted>
int32_t readAt(const Core& core, uint32_t listId, uint32_t index, Wanted wanted, SVL_REC_T* service,
               TSL_REC_T* multiplex) {
    return core.read([&](const ChannelLists& lists) -> int32_t {
        const ChannelList* list = lists.list(listId);
        if (list == nullptr) return TV_NOT_FOUND;
        uint32_t seen = 0;
        for (const Service& candidate : list->services) {
            if (!wanted(candidate.record) || seen++ != index) continue;
            putPair(*list, candidate.record, service, multiplex);
            return TV_OK;
        }
        return TV_NOT_FOUND;
    });
}

// What is wanted of a record:

/** A match with a mask, and a broadcast type (BRDCST_TYPE_…, 0: any). */
auto ofType(uint32_t mask, uint32_t value, uint8_t type) {
    return [match = Match{mask, value, 0, 0}, type](const SVL_REC_T& record) {
        return (type == BRDCST_TYPE_UNKNOWN || record.ui1_brdcst_type == type) && match(record);
    };
}

auto named(uint32_t mask, uint32_t value, const char* name) {
    return [match = Match{mask, value, 0, 0}, name = NameMatch(name)](const SVL_REC_T& record) {
        return match(record) && name(record.s_service_name);
    };
}

auto queried(const CHANNEL_QUERY_T& query) {
    return [query](const SVL_REC_T& record) {
        return Match{query.ui4_nw_mask, query.ui4_nw_mask_value, 0, 0}(record) &&
               (query.ui1_service_type == 0 || query.ui1_service_type == record.ui1_service_type) &&
               (query.ui1_brdcst_type == 0 || query.ui1_brdcst_type == record.ui1_brdcst_type) &&
               (query.ui2_original_network_id == 0 ||
                query.ui2_original_network_id == record.ui2_original_network_id);
    };
}

/** Writes the index of a channel among the matching ones. */
int32_t indexOf(const Core& core, uint32_t listId, const Match& match, uint32_t channelId,
                uint32_t* index) {
    return core.read([&](const ChannelLists& lists) -> int32_t {
        const ChannelList* list = lists.list(listId);
        if (list == nullptr) return TV_NOT_FOUND;
        uint32_t seen = 0;
        for (const Service& candidate : list->services) {
            if (!match(candidate.record)) continue;
            if (candidate.record.ui4_channel_id == channelId) {
                put(index, seen);
                return TV_OK;
            }
            ++seen;
        }
        return TV_NOT_FOUND;
    });
}

/** Writes the id of the matching channel that is `steps` before a channel, around the list. */
int32_t stepBack(const Core& core, uint32_t listId, const Match& match, uint32_t channelId,
                 uint32_t steps, uint32_t* previous) {
    return core.read([&](const ChannelLists& lists) -> int32_t {
        const ChannelList* list = lists.list(listId);
        const auto start = list == nullptr ? std::nullopt : list->placeOf(channelId);
        if (!start) return TV_NOT_FOUND;
        std::vector<uint32_t> run;
        size_t place = 0;  // in the run: of the channel, or of the first match after it
        for (size_t i = 0; i < list->services.size(); ++i) {
            const SVL_REC_T& record = list->services[i].record;
            if (i == *start) place = run.size();
            if (match(record)) run.push_back(record.ui4_channel_id);
        }
        if (run.empty()) return TV_NOT_FOUND;
        put(previous, run[(place + run.size() - steps % run.size()) % run.size()]);
        return TV_OK;
    });
}

void plugByMask(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_channellist_get_number_by_filter>(
            [&core](uint32_t listId, uint32_t filter) {
                return count(core, listId, Match::filter(filter));
            });
    board.on<&a_qortvapi_channellist_get_number_by_mask>(
            [&core](uint32_t listId, uint32_t, uint32_t mask, uint32_t value,
                    uint32_t attributeMask, uint32_t attributeValue) {
                return count(core, listId, Match{mask, value, attributeMask, attributeValue});
            });
    board.on<&a_qortvapi_channellist_get_svl_rec_by_index>([&core](uint32_t listId, uint32_t mask,
                                                                   uint32_t value, uint32_t index,
                                                                   SVL_REC_T* service) {
        return readAt(core, listId, index, Match{mask, value, 0, 0}, service, nullptr);
    });
    board.on<&a_qortvapi_channellist_get_index_by_channel>(
            [&core](uint32_t listId, uint32_t mask, uint32_t value, uint32_t channelId,
                    uint32_t* index) {
                return indexOf(core, listId, Match{mask, value, 0, 0}, channelId, index);
            });
    board.on<&a_qortvapi_channellist_get_prev_channel_id_by_filter>(
            [&core](uint32_t listId, uint32_t filter, uint32_t channelId, uint32_t steps,
                    uint32_t* previous) {
                return stepBack(core, listId, Match::filter(filter), channelId, steps, previous);
            });
    board.on<&a_qortvapi_channellist_get_num_by_mask_and_brdcst>(
            [&core](uint32_t listId, uint32_t mask, uint32_t value, uint8_t type) {
                return count(core, listId, ofType(mask, value, type));
            });
    board.on<&a_qortvapi_channellist_get_svl_rec_by_mask_and_brdcst>(
            [&core](uint32_t listId, uint32_t mask, uint32_t value, uint32_t index, uint8_t type,
                    SVL_REC_T* service) {
                return readAt(core, listId, index, ofType(mask, value, type), service, nullptr);
            });
}

void plugByName(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_channellist_get_number_by_name>(
            [&core](uint32_t listId, uint32_t mask, uint32_t value, const char* name) {
                if (name == nullptr) return int32_t{TV_INVALID_ARGUMENT};
                return count(core, listId, named(mask, value, name));
            });
    board.on<&a_qortvapi_channellist_get_svl_rec_by_index_and_name>(
            [&core](uint32_t listId, uint32_t mask, uint32_t value, const char* name,
                    uint32_t index, SVL_REC_T* service) {
                if (name == nullptr) return int32_t{TV_INVALID_ARGUMENT};
                return readAt(core, listId, index, named(mask, value, name), service, nullptr);
            });
}

void plugByQuery(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_channellist_get_channel_number_by_query_info>(
            [&core](uint32_t listId, uint32_t, uint16_t, const CHANNEL_QUERY_T* query) {
                if (query == nullptr) return int32_t{TV_INVALID_ARGUMENT};
                return count(core, listId, queried(*query));
            });
    board.on<&a_qortvapi_channellist_get_channellist_by_query_info>(
            [&core](uint32_t listId, uint32_t, uint16_t, const CHANNEL_QUERY_T* query,
                    uint32_t index, uint64_t, SVL_REC_T* service, TSL_REC_T* multiplex) {
                if (query == nullptr) return int32_t{TV_INVALID_ARGUMENT};
                return readAt(core, listId, index, queried(*query), service, multiplex);
            });
    board.on<&a_qortvapi_channellist_is_exist_by_channel_number>(
            [&core](uint16_t listId, uint32_t channelNumber) {
                return core.read([&](const ChannelLists& lists) -> int32_t {
                    const ChannelList* list = lists.list(listId);
                    if (list == nullptr) return TV_NOT_FOUND;
                    return list->byNumber(channelNumber) != nullptr ? 1 : 0;
                });
            });
}

/** The ids of the lists that have channels. */
std::vector<uint16_t> usedLists(const Core& core) {
    return core.read([](const ChannelLists& lists) {
        std::vector<uint16_t> ids;
        for (const ChannelList& list : lists.lists) {
            if (!list.services.empty()) ids.push_back(list.id);
        }
        return ids;
    });
}

void plugTvProvider(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_tvprovider_get_all_svlid_count>([&core](uint16_t* to) {
        if (!writable(to)) return int32_t{TV_INVALID_ARGUMENT};
        *to = static_cast<uint16_t>(usedLists(core).size());
        return int32_t{TV_OK};
    });
    board.on<&a_qortvapi_tvprovider_get_all_svlid>(
            [&core](uint16_t* ids, uint16_t room, uint16_t* filled) {
                if (room > 0 && !writable(ids)) return int32_t{TV_INVALID_ARGUMENT};
                const std::vector<uint16_t> used = usedLists(core);
                const size_t number = std::min<size_t>(used.size(), room);
                std::copy_n(used.begin(), number, ids);
                put(filled, number);
                return int32_t{TV_OK};
            });
}

}  // namespace

void plugChannelQueries(switchboard::Switchboard& board, Core& core) {
    plugByMask(board, core);
    plugByName(board, core);
    plugByQuery(board, core);
    plugTvProvider(board, core);
}

}  // namespace television
