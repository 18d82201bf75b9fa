// Utilities: named values, versions, tuner diagnosis, the password dialog, wake on network.
#include <algorithm>
#include <cstring>
#include <memory>
#include <mutex>

#include <fmt/format.h>

#include "calls.h"
#include "cam_slot.h"
#include "client_text.h"
#include "middleware/ci.h"
#include "middleware/network.h"
#include "middleware/pwddlg.h"
#include "middleware/util.h"
#include "playing.h"

namespace television {
namespace {

constexpr char kValuePrefix[] = "util.";
constexpr char kPasswordName[] = "password";
constexpr size_t kLongestPassword = 64;

/** The password is compared, never answered. */
bool isPassword(const std::string& name, int32_t kind) {
    return kind == 0 && name == PWDDLG_UTIL_NAME;
}

std::string valueName(const std::string& name, int32_t kind) {
    return fmt::format("{}{}.{}", kValuePrefix, kind, name);
}

/** What is told in the place of a value: put the module in, or take it out. */
int32_t moveCam(CamSlot& cam, const std::string& bytes) {
    if (bytes.size() != 1 || bytes[0] < 0 || bytes[0] > 1) return TV_INVALID_ARGUMENT;
    return bytes[0] == 0 ? cam.remove() : cam.insert();
}

int32_t setValue(Core& core, CamSlot& cam, std::mutex& mutex, const char* name, int32_t kind,
                 const void* data, uint64_t size) {
    const auto text = readText(name, UTIL_NAME_MAX + 1);
    if (!text || text->empty() || size > UTIL_VALUE_MAX || (data == nullptr && size != 0)) {
        return TV_INVALID_ARGUMENT;
    }
    const std::string bytes(size == 0 ? "" : static_cast<const char*>(data), size);
    if (isPassword(*text, kind)) {
        // As a C string or as bare characters; nothing gives the default back.
        const std::string password = bytes.substr(0, bytes.find('\0'));
        if (password.size() >= kLongestPassword) return TV_INVALID_ARGUMENT;
        core.remember(kPasswordName, password);
        return TV_OK;
    }
    if (*text == CI_SLOT_UTIL_NAME) return moveCam(cam, bytes);
    const std::string key = valueName(*text, kind);
    std::lock_guard<std::mutex> lock(mutex);
    if (!bytes.empty() && core.remembered(key).empty() &&
        core.rememberedCount(kValuePrefix) >= UTIL_VALUE_COUNT) {
        return TV_FULL;
    }
    core.remember(key, bytes);
    return TV_OK;
}

int32_t getValue(const Core& core, const char* name, int32_t kind, void* data, uint32_t* size) {
    const auto text = readText(name, UTIL_NAME_MAX + 1);
    if (!text || !writable(size)) return TV_INVALID_ARGUMENT;
    if (isPassword(*text, kind)) return TV_NOT_SUPPORTED;
    const std::string bytes = core.remembered(valueName(*text, kind));
    if (bytes.empty()) return TV_NOT_FOUND;
    if (writable(data)) std::memcpy(data, bytes.data(), std::min<size_t>(*size, bytes.size()));
    *size = static_cast<uint32_t>(bytes.size());
    return TV_OK;
}

void plugVersions(switchboard::Switchboard& board) {
    constexpr uint32_t kVersionSize = 100;
    board.on<&a_qortvapi_util_get_sys_version>([](int32_t kind, char* to) -> int32_t {
        switch (kind) {
            case SYS_VERSION_SOFTWARE:
                return putText(to, kVersionSize, QORTV_VERSION);
            case SYS_VERSION_MIDDLEWARE:
                return putText(to, kVersionSize, "software television " QORTV_VERSION);
            case SYS_VERSION_MODEL:
                return putText(to, kVersionSize, "Linux");
            default:
                return TV_INVALID_ARGUMENT;
        }
    });
}

/** Figures of the multiplex in the main window, in the order in which they are asked for. */
void plugDiagnosis(switchboard::Switchboard& board, Core& core) {
    constexpr uint16_t kDiagnosisVersion = 1;
    struct Open {
        std::mutex mutex;
        bool open = false;  // guarded by mutex
    };
    const auto state = std::make_shared<Open>();
    board.on<&a_qortvapi_util_tuner_fac_open_diag>(
            [=](bool, uint8_t* tuner, uint16_t* version) -> int32_t {
                std::lock_guard<std::mutex> lock(state->mutex);
                state->open = true;
                put(tuner, 0);
                put(version, kDiagnosisVersion);
                return TV_OK;
            });
    board.on<&a_qortvapi_util_tuner_fac_close_diag>([=](bool) -> int32_t {
        std::lock_guard<std::mutex> lock(state->mutex);
        if (!state->open) return TV_BUSY;
        state->open = false;
        return TV_OK;
    });
    board.on<&a_qortvapi_util_tuner_fac_query_diag>([=, &core](bool, uint8_t entries, void* names,
                                                               void* values) -> int32_t {
        {
            std::lock_guard<std::mutex> lock(state->mutex);
            if (!state->open) return TV_BUSY;
        }
        if (entries != 0 && (!writable(names) || !writable(values))) {
            return TV_INVALID_ARGUMENT;
        }
        const auto playing =
                core.read([](const ChannelLists& lists) { return playingIn(lists, 0); });
        if (!playing) return TV_NOT_FOUND;
        const TSL_REC_T& multiplex = playing->multiplex;
        const std::pair<const char*, uint32_t> figures[] = {
                {"frequency kHz", multiplex.ui4_frequency_khz},
                {"symbol rate", multiplex.ui4_symbol_rate},
                {"packets", multiplex.ui4_packets},
                {"damaged packets", multiplex.ui4_damaged_packets},
                {"damaged sections", multiplex.ui4_damaged_sections}};
        size_t at = 0;
        for (const auto& [name, value] : figures) {
            if (at / UTIL_DIAG_ENTRY_SIZE == entries) break;
            putText(static_cast<char*>(names) + at, UTIL_DIAG_ENTRY_SIZE, name);
            putText(static_cast<char*>(values) + at, UTIL_DIAG_ENTRY_SIZE, std::to_string(value));
            at += UTIL_DIAG_ENTRY_SIZE;
        }
        return TV_OK;
    });
}

void plugPassword(switchboard::Switchboard& board, Core& core) {
    struct Dialog {
        std::mutex mutex;
        uint32_t wrong = 0;  // guarded by mutex
    };
    const auto dialog = std::make_shared<Dialog>();
    const auto tell = [&core](int32_t message, uint32_t wrong) {
        core.notifier.post({registration<&a_qortvapi_pwddlg_register_msg_callback>(),
                            message,
                            {wrong, 0, 0, 0}});
    };
    board.on<&a_qortvapi_PWDDLG_show>([=] {
        std::lock_guard<std::mutex> lock(dialog->mutex);
        tell(PWDDLG_MSG_SHOW, dialog->wrong);
        return int32_t{TV_OK};
    });
    board.on<&a_qortvapi_PWDDLG_checkPWD>([=, &core](const char* password) -> int32_t {
        const std::string kept = core.remembered(kPasswordName);
        const auto given = readText(password, kLongestPassword);
        const bool right = given && *given == (kept.empty() ? PWDDLG_DEFAULT_PASSWORD : kept);
        std::lock_guard<std::mutex> lock(dialog->mutex);
        dialog->wrong = right ? 0 : dialog->wrong + 1;
        tell(right ? PWDDLG_MSG_ACCEPTED : PWDDLG_MSG_WRONG, dialog->wrong);
        return right ? TV_OK : TV_INVALID_ARGUMENT;
    });
}

/** A wake-up that can be switched, by name. */
int32_t setWake(Core& core, const char* name, int32_t control) {
    if (control != NETWORK_WOL_OFF && control != NETWORK_WOL_ON) return TV_INVALID_ARGUMENT;
    core.rememberNumber(name, control);
    return TV_OK;
}
int32_t getWake(const Core& core, const char* name, int32_t* control) {
    if (!writable(control)) return TV_INVALID_ARGUMENT;
    *control = core.rememberedNumber(name, NETWORK_WOL_OFF);
    return TV_OK;
}

}  // namespace

void plugUtilities(switchboard::Switchboard& board, Core& core, CamSlot& cam) {
    const auto mutex = std::make_shared<std::mutex>();
    board.on<&a_qortvapi_util_set>(
            [=, &core, &cam](const char* name, int32_t kind, const void* data, uint64_t size) {
                return setValue(core, cam, *mutex, name, kind, data, size);
            });
    board.on<&a_qortvapi_util_get>(
            [&core](const char* name, int32_t kind, void* data, uint32_t* size) {
                return getValue(core, name, kind, data, size);
            });
    board.on<&a_qortvapi_util_set_android_osd_opacity>([&core](uint32_t opacity) -> int32_t {
        constexpr uint32_t kOpaque = 255;
        if (opacity > kOpaque) return TV_INVALID_ARGUMENT;
        core.rememberNumber("osd.opacity", static_cast<int32_t>(opacity));
        return TV_OK;
    });
    board.on<&a_qortvapi_util_start_native_app>([](uint8_t) { return int32_t{TV_NOT_SUPPORTED}; });
    plugVersions(board);
    plugDiagnosis(board, core);
    plugPassword(board, core);
    board.on<&a_qortvapi_network_set_wifi_wol_ctrl>(
            [&core](int32_t control) { return setWake(core, "wake.wifi", control); });
    board.on<&a_qortvapi_network_get_wifi_wol_ctrl>(
            [&core](int32_t* control) { return getWake(core, "wake.wifi", control); });
    board.on<&a_qortvapi_network_set_eth_wol_ctrl>(
            [&core](int32_t control) { return setWake(core, "wake.ethernet", control); });
    board.on<&a_qortvapi_network_get_eth_wol_ctrl>(
            [&core](int32_t* control) { return getWake(core, "wake.ethernet", control); });
}

}  // namespace television
