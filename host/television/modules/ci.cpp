// The Common Interface: properties of the module in the slot, dialogues with it, the host's CI+
// keys.
#include <algorithm>
#include <cctype>
#include <cstring>
#include <memory>
#include <utility>

#include "middleware/ci.h"
#include "middleware/result_codes.h"
#include "television/cam/cam_keys.h"
#include "television/cam/cam_slot.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** The television's own host id. */
constexpr uint8_t kHostId[] = {0x48, 0x30, 0x53, 0x54, 0x00, 0x00, 0x00, 0x01};
/** Bytes in which a PIN's NUL has to be; more than a PIN has. */
constexpr size_t kMostPinBytes = 32;

/** Writes a value of fixed size, all of it or nothing. */
int32_t putBytes(void* to, uint32_t capacity, uint32_t& written, const void* bytes, size_t size) {
    if (!writable(to) || capacity < size) return TV_INVALID_ARGUMENT;
    std::memcpy(to, bytes, size);
    written = static_cast<uint32_t>(size);
    return TV_OK;
}

uint8_t slotState(const CamSlot::Status& status) {
    if (status.card == nullptr) return CI_SLOT_STATE_EMPTY;
    return status.upgrading ? CI_SLOT_STATE_UPGRADING : CI_SLOT_STATE_READY;
}

/** Writes the module's PIN, once it has been entered rightly; before that nothing. */
int32_t putPin(void* to, uint32_t capacity, uint32_t& written, const CamSlot::Status& status) {
    constexpr uint32_t kBytes = CamCard::kPinDigits * sizeof(uint16_t);
    if (!writable(to) || capacity < kBytes) return TV_INVALID_ARGUMENT;
    const auto* query = static_cast<const CI_CAM_PIN_CODE_T*>(to);
    if (!writable(query->pui1_valid) || !writable(query->pui2_pin_code)) {
        return TV_INVALID_ARGUMENT;
    }
    if (!status.pin.known()) return TV_OK;
    std::copy(status.card->pin.begin(), status.card->pin.end(), query->pui2_pin_code);
    *query->pui1_valid = 1;
    written = kBytes;
    return TV_OK;
}

int32_t getFromModule(const CamSlot::Status& status, uint32_t type, void* to, uint32_t capacity,
                      uint32_t& written) {
    constexpr uint32_t kMostProfileUnits = 100;
    const CamCard& card = *status.card;
    switch (type) {
        case QORTVAPI_CI_GET_TYPE_CAM_NAME:
            written = putUnits(static_cast<uint16_t*>(to), capacity, card.name);
            return TV_OK;
        case QORTVAPI_CI_GET_TYPE_PIN_TRIES: {
            if (card.pin.empty()) return TV_NOT_SUPPORTED;
            const uint8_t tries = status.pin.triesLeft();
            return putBytes(to, capacity, written, &tries, sizeof(tries));
        }
        case QORTVAPI_CI_GET_TYPE_PROFILE_NAME:
            if (!writable(to)) return TV_INVALID_ARGUMENT;
            written = putUnits(static_cast<uint16_t*>(to), std::min(capacity, kMostProfileUnits),
                               card.profile);
            return TV_OK;
        case QORTVAPI_CI_GET_TYPE_CAM_ID:
            return putBytes(to, capacity, written, card.id.data(), card.id.size());
        case QORTVAPI_CI_GET_TYPE_LANG_CODE:
            return putBytes(to, capacity, written, card.language.data(), card.language.size());
        default:
            return putPin(to, capacity, written, status);
    }
}

int32_t get(const CamSlot& slot, uint32_t type, void* to, uint32_t* length) {
    if (!writable(length)) return TV_INVALID_ARGUMENT;
    const uint32_t capacity = std::exchange(*length, 0);
    const CamSlot::Status status = slot.status();
    switch (type) {
        case QORTVAPI_CI_GET_TYPE_SLOT_STATE: {
            const uint8_t state = slotState(status);
            return putBytes(to, capacity, *length, &state, sizeof(state));
        }
        case QORTVAPI_CI_GET_TYPE_MMI_STATE:
            return putBytes(to, capacity, *length, &status.dialogue, sizeof(status.dialogue));
        case QORTVAPI_CI_GET_TYPE_CAM_NAME:
        case QORTVAPI_CI_GET_TYPE_PIN_TRIES:
        case QORTVAPI_CI_GET_TYPE_PROFILE_NAME:
        case QORTVAPI_CI_GET_TYPE_CAM_ID:
        case QORTVAPI_CI_GET_TYPE_LANG_CODE:
        case QORTVAPI_CI_GET_TYPE_CAM_PIN_CODE:
            if (status.card == nullptr) return TV_NOT_FOUND;
            return getFromModule(status, type, to, capacity, *length);
        default:
            return TV_NOT_SUPPORTED;
    }
}

int32_t enterPin(CamSlot& slot, const void* data) {
    const auto digits = readText(static_cast<const char*>(data), kMostPinBytes);
    const auto isDigit = [](unsigned char c) { return std::isdigit(c) != 0; };
    if (!digits || digits->empty() || !std::all_of(digits->begin(), digits->end(), isDigit)) {
        return TV_INVALID_ARGUMENT;
    }
    return slot.enterPin(*digits);
}

/** `data` is used only by the types below: of others it may be no pointer at all. */
int32_t set(CamSlot& slot, uint32_t type, const void* data) {
    switch (type) {
        case QORTVAPI_CI_SET_TYPE_MMI_ENTER:
            return slot.enterMenu();
        case QORTVAPI_CI_SET_TYPE_MMI_CLOSE:
            return slot.closeDialogue();
        case QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS:
            if (data == nullptr) return TV_INVALID_ARGUMENT;
            return slot.answer(*static_cast<const CI_MMI_ENQ_ANS_T*>(data));
        case QORTVAPI_CI_SET_TYPE_MMI_MENU_ANS:
            if (data == nullptr) return TV_INVALID_ARGUMENT;
            return slot.choose(*static_cast<const CI_MMI_MENU_ANS_T*>(data));
        case QORTVAPI_CI_SET_TYPE_PIN_CMD:
            return enterPin(slot, data);
        default:
            return TV_NOT_SUPPORTED;
    }
}

int32_t getHostId(const CamSlot& slot, uint8_t* to, uint8_t* length) {
    if (!writable(length)) return TV_INVALID_ARGUMENT;
    const auto card = slot.status().card;
    std::vector<uint8_t> id(std::begin(kHostId), std::end(kHostId));
    if (card != nullptr && !card->hostId.empty()) id = card->hostId;
    const uint8_t capacity = std::exchange(*length, static_cast<uint8_t>(id.size()));
    if (!writable(to) || capacity < id.size()) return TV_INVALID_ARGUMENT;
    std::copy(id.begin(), id.end(), to);
    return TV_OK;
}

void plugKeys(switchboard::Switchboard& board, Core& core) {
    const auto keys = std::make_shared<CamKeys>(core);
    const auto updateFrom = [=](const char* path, uint32_t number) {
        const auto text = readText(path, kLongestPath);
        return text ? keys->updateFrom(*text, number) : int32_t{TV_INVALID_ARGUMENT};
    };
    board.on<&a_qortvapi_ci_key_write>([=](const uint8_t* key, uint32_t length) -> int32_t {
        if (key == nullptr || length != CI_KEY_SIZE) return TV_INVALID_ARGUMENT;
        keys->write(key);
        return TV_OK;
    });
    board.on<&a_qortvapi_ci_key_update>([=] { return keys->update(0); });
    board.on<&a_qortvapi_ci_key_update_ex>([=](uint32_t number) { return keys->update(number); });
    board.on<&a_qortvapi_ci_key_update_with_path>(
            [=](const char* path) { return updateFrom(path, 0); });
    board.on<&a_qortvapi_ci_key_update_with_path_ex>(updateFrom);
    board.on<&a_qortvapi_ci_key_activate>([=] { return keys->activate(); });
    board.on<&a_qortvapi_ci_key_erase>([=] {
        keys->erase();
        return int32_t{TV_OK};
    });
    board.on<&a_qortvapi_ci_key_query_exist>([=](uint8_t* exists) -> int32_t {
        if (!writable(exists)) return TV_INVALID_ARGUMENT;
        *exists = keys->existsAny();
        return TV_OK;
    });
    board.on<&a_qortvapi_ci_key_query_exist_ex>([=](uint32_t number, uint8_t* exists) -> int32_t {
        if (!writable(exists) || number >= CI_KEY_COUNT) return TV_INVALID_ARGUMENT;
        *exists = keys->exists(number);
        return TV_OK;
    });
    board.on<&a_qortvapi_ci_key_query>([=](uint16_t* area) -> int32_t {
        if (!writable(area)) return TV_INVALID_ARGUMENT;
        CI_KEY_INFO_T all[CI_KEY_AREA_SIZE / sizeof(CI_KEY_INFO_T)] = {};
        static_assert(sizeof(all) == CI_KEY_AREA_SIZE && std::size(all) >= CI_KEY_COUNT);
        for (uint32_t number = 0; number < CI_KEY_COUNT; ++number) all[number] = keys->info(number);
        std::memcpy(area, all, sizeof(all));
        return TV_OK;
    });
}

}  // namespace

void plugCommonInterface(switchboard::Switchboard& board, Core& core, CamSlot& slot) {
    board.on<&a_qortvapi_ci_reg_cb>([&slot](uint32_t* handle, uint32_t number, uint32_t tag,
                                            a_qortvapi_ci_nfy_fct handler) -> int32_t {
        if (!writable(handle)) return TV_INVALID_ARGUMENT;
        return slot.registerHandler(number, tag, handler, *handle);
    });
    board.on<&a_qortvapi_ci_get>([&slot](uint32_t type, uint32_t, void* data, uint32_t* length) {
        return get(slot, type, data, length);
    });
    board.on<&a_qortvapi_ci_set>(
            [&slot](uint32_t type, uint32_t, const void* data) { return set(slot, type, data); });
    board.on<&a_qortvapi_ci_get_virtual_channel_info>(
            [&slot](char* text, uint32_t* value) -> int32_t {
                if (!writable(text) || !writable(value)) return TV_INVALID_ARGUMENT;
                *text = '\0';
                const auto card = slot.status().card;
                *value = card != nullptr && card->menu != nullptr ? 1 : 0;
                return card == nullptr ? TV_NOT_FOUND : TV_OK;
            });
    board.on<&a_qortvapi_ci_key_get_host_id>(
            [&slot](uint8_t* id, uint8_t* length) { return getHostId(slot, id, length); });
    plugKeys(board, core);
}

}  // namespace television
