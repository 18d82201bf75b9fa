// BISS keys. Their values are secrets of the viewer: clients can write and read them, and they are
// never logged.
#include <algorithm>
#include <cstring>

#include "middleware/channellist.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/modules/channel_list/handles.h"
#include "television/modules/modules.h"

namespace television {
namespace {

constexpr size_t kMostKeys = 1000;

bool isKeyList(uint32_t handle) {
    return handle == makeHandle(kBissKeyListHandle, BSL_ID_MAIN);
}

/** Returns whether the header of a key matches `header`, of which a field of 0 matches everything.
 */
bool matches(const BSL_HEADER_T& key, const BSL_HEADER_T& header) {
    return (header.ui4_frequency_khz == 0 || header.ui4_frequency_khz == key.ui4_frequency_khz) &&
           (header.ui4_symbol_rate == 0 || header.ui4_symbol_rate == key.ui4_symbol_rate) &&
           (header.ui2_program_id == 0 || header.ui2_program_id == key.ui2_program_id) &&
           (header.ui1_polarization == 0 || header.ui1_polarization == key.ui1_polarization);
}

/** Reads the key at `index` among those for which `wanted(key)` is true. */
template <typename Wanted>
int32_t readKey(const Core& core, uint32_t handle, uint32_t index, Wanted wanted, BSL_REC_T* to,
                uint32_t* version) {
    if (!isKeyList(handle)) return TV_NOT_FOUND;
    if (!writable(to)) return TV_INVALID_ARGUMENT;
    return core.read([&](const ChannelLists& lists) -> int32_t {
        uint32_t seen = 0;
        for (const BSL_REC_T& key : lists.bissKeys) {
            if (!wanted(key) || seen++ != index) continue;
            *to = key;
            put(version, lists.bissVersion);
            return TV_OK;
        }
        return TV_NOT_FOUND;
    });
}

template <typename Wanted>
int32_t countKeys(const Core& core, uint32_t handle, Wanted wanted, uint16_t* count,
                  uint32_t* version) {
    if (!isKeyList(handle)) return TV_NOT_FOUND;
    return core.read([&](const ChannelLists& lists) -> int32_t {
        put(count, std::count_if(lists.bissKeys.begin(), lists.bissKeys.end(), wanted));
        put(version, lists.bissVersion);
        return TV_OK;
    });
}

/** Adds a key. Returns its id, or a negative code. */
int32_t add(std::vector<BSL_REC_T>& keys, const BSL_REC_T& wanted) {
    if (keys.size() >= kMostKeys) return TV_FULL;
    uint16_t id = 1;  // becomes the lowest free id; keys are in the order of their ids
    auto place = keys.begin();
    while (place != keys.end() && place->ui2_bsl_rec_id == id) {
        ++place;
        ++id;
    }
    keys.insert(place, wanted)->ui2_bsl_rec_id = id;
    return id;
}

/** Changes or deletes a key. Returns its id, or a negative code. */
int32_t changeKey(std::vector<BSL_REC_T>& keys, const BSL_REC_T& wanted, bool remove) {
    const auto found = std::find_if(keys.begin(), keys.end(), [&](const BSL_REC_T& key) {
        return key.ui2_bsl_rec_id == wanted.ui2_bsl_rec_id;
    });
    if (found == keys.end()) return TV_NOT_FOUND;
    if (remove) {
        keys.erase(found);
    } else {
        *found = wanted;
    }
    return wanted.ui2_bsl_rec_id;
}

int32_t setKey(Core& core, uint32_t handle, uint32_t operation, const BSL_REC_T* wanted,
               uint32_t* to) {
    if (!isKeyList(handle)) return TV_NOT_FOUND;
    if (wanted == nullptr || wanted->ui1_key_length > sizeof(wanted->aui1_key)) {
        return TV_INVALID_ARGUMENT;
    }
    if (operation > BISSKEY_DELETE) return TV_NOT_SUPPORTED;
    return core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
        const int32_t id = operation == BISSKEY_ADD ? add(lists.bissKeys, *wanted)
                                                    : changeKey(lists.bissKeys, *wanted,
                                                                operation == BISSKEY_DELETE);
        if (id < 0) return id;
        put(to, id);
        ++lists.bissVersion;
        change.bissKeysChanged(lists, static_cast<uint16_t>(id));
        return TV_OK;
    });
}

bool isSameKey(const BSL_REC_T& a, const BSL_REC_T& b) {
    return std::memcmp(&a.t_header, &b.t_header, sizeof(a.t_header)) == 0 &&
           a.ui1_service_mode == b.ui1_service_mode && a.ui1_key_length == b.ui1_key_length &&
           std::memcmp(a.aui1_key, b.aui1_key, sizeof(a.aui1_key)) == 0;
}

/** Returns TV_OK when there is a key for the current channel, else TV_NOT_FOUND. */
int32_t findKeyOfCurrentChannel(const Core& core) {
    return core.read([](const ChannelLists& lists) -> int32_t {
        const ChannelList* list = lists.listOf(lists.current[0]);
        if (list == nullptr) return TV_NOT_FOUND;
        const SVL_REC_T& service = list->byChannel(lists.current[0])->record;
        const TSL_REC_T* multiplex = list->multiplex(service.ui2_tsl_rec_id);
        if (multiplex == nullptr) return TV_NOT_FOUND;
        const BSL_HEADER_T header = {multiplex->ui4_frequency_khz,
                                     multiplex->ui4_symbol_rate,
                                     service.ui2_service_id,
                                     multiplex->ui1_polarization,
                                     {}};
        // The other way round than in a search: here a field of 0 is one that the key leaves open.
        const bool found =
                std::any_of(lists.bissKeys.begin(), lists.bissKeys.end(),
                            [&](const BSL_REC_T& key) { return matches(header, key.t_header); });
        return found ? TV_OK : TV_NOT_FOUND;
    });
}

const auto kEveryKey = [](const BSL_REC_T&) { return true; };

auto withHeader(const BSL_HEADER_T& header) {
    return [header](const BSL_REC_T& key) { return matches(key.t_header, header); };
}

void plugBissKeyReads(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_bisskey_get_bsl_handle_by_bsl_id>([](uint16_t id, uint32_t* handle) {
        if (!writable(handle)) return int32_t{TV_INVALID_ARGUMENT};
        if (id != BSL_ID_MAIN) return int32_t{TV_NOT_FOUND};
        *handle = makeHandle(kBissKeyListHandle, id);
        return int32_t{TV_OK};
    });
    board.on<&a_qortvapi_bisskey_get_recs_number>(
            [&core](uint32_t handle, uint16_t* count, uint32_t* version) {
                return countKeys(core, handle, kEveryKey, count, version);
            });
    board.on<&a_qortvapi_bisskey_get_recs_number_by_header>(
            [&core](uint32_t handle, const BSL_HEADER_T* header, uint16_t* count,
                    uint32_t* version) {
                if (header == nullptr) return int32_t{TV_INVALID_ARGUMENT};
                return countKeys(core, handle, withHeader(*header), count, version);
            });
    board.on<&a_qortvapi_bisskey_get_bsl_rec_by_bsl_rec_id>(
            [&core](uint32_t handle, uint16_t id, BSL_REC_T* to, uint32_t* version) {
                return readKey(
                        core, handle, 0,
                        [id](const BSL_REC_T& key) { return key.ui2_bsl_rec_id == id; }, to,
                        version);
            });
    board.on<&a_qortvapi_bisskey_get_bsl_rec_by_idx>(
            [&core](uint32_t handle, uint16_t index, BSL_REC_T* to, uint32_t* version) {
                return readKey(core, handle, index, kEveryKey, to, version);
            });
    board.on<&a_qortvapi_bisskey_get_bsl_rec_by_header>(
            [&core](uint32_t handle, const BSL_HEADER_T* header, uint16_t index, BSL_REC_T* to,
                    uint32_t* version) {
                if (header == nullptr) return int32_t{TV_INVALID_ARGUMENT};
                return readKey(core, handle, index, withHeader(*header), to, version);
            });
}

}  // namespace

void plugBissKeys(switchboard::Switchboard& board, Core& core) {
    plugBissKeyReads(board, core);
    board.on<&a_qortvapi_bisskey_lock_database>([&core](uint32_t) { return core.bissLock.lock(); });
    board.on<&a_qortvapi_bisskey_unlock_database>(
            [&core](uint32_t) { return core.bissLock.unlock(); });
    board.on<&a_qortvapi_bisskey_set_bsl_rec_info>(
            [&core](uint32_t handle, uint32_t operation, const BSL_REC_T* wanted, uint32_t* to) {
                return setKey(core, handle, operation, wanted, to);
            });
    board.on<&a_qortvapi_bisskey_clean>([&core](uint32_t handle) {
        if (!isKeyList(handle)) return int32_t{TV_NOT_FOUND};
        return core.change([&](ChannelLists& lists, Identities&, Change& change) -> int32_t {
            lists.bissKeys.clear();
            ++lists.bissVersion;
            change.bissKeysChanged(lists, 0);
            return TV_OK;
        });
    });
    board.on<&a_qortvapi_bisskey_is_same_record>([](const BSL_REC_T* a, const BSL_REC_T* b) {
        if (a == nullptr || b == nullptr) return int32_t{TV_INVALID_ARGUMENT};
        return int32_t{isSameKey(*a, *b)};
    });
    board.on<&a_qortvapi_bisskey_get_default_record>([](BSL_REC_T* to) {
        if (!writable(to)) return int32_t{TV_INVALID_ARGUMENT};
        *to = {};
        to->ui1_key_length = sizeof(to->aui1_key);
        return int32_t{TV_OK};
    });
    board.on<&a_qortvapi_bisskey_set_key_for_current_channel>(
            [&core] { return findKeyOfCurrentChannel(core); });
}

}  // namespace television
