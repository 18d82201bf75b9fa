// Utilities: named values, versions, tuner diagnosis, freezing the picture.
#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <mutex>

#include <fmt/format.h>

#include "middleware/ci.h"
#include "middleware/pwddlg.h"
#include "middleware/result_codes.h"
#include "middleware/util.h"
#include "television/cam/cam_slot.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/core/playing.h"
#include "television/modules/modules.h"
#include "television/modules/password.h"

namespace television {
namespace {

constexpr char kValuePrefix[] = "util.";

/** Returns whether a named value is the password, which can be set but not read. */
bool isPassword(const std::string& name, int32_t kind) {
    return kind == 0 && name == PWDDLG_UTIL_NAME;
}

std::string valueName(const std::string& name, int32_t kind) {
    return fmt::format("{}{}.{}", kValuePrefix, kind, name);
}

/** The value that inserts (1) or removes (0) the CAM. */
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
        // With or without a NUL at the end; an empty password restores the default.
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

/** Tuner diagnosis: names and figures of the multiplex that plays in the main window. */
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
        const auto playing = core.playing(0);
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

/** Freezing the picture of a window. */
void plugFreezing(switchboard::Switchboard& board) {
    struct Frozen {
        std::mutex mutex;
        std::array<bool, kWindowCount> windows = {};  // guarded by mutex
    };
    const auto frozen = std::make_shared<Frozen>();
    board.on<&a_qortvapi_freeze_set_freeze>([frozen](const char* name, bool freeze) -> int32_t {
        const std::optional<size_t> window = windowNamed(name);
        if (!window) return TV_INVALID_ARGUMENT;
        std::lock_guard<std::mutex> lock(frozen->mutex);
        frozen->windows[*window] = freeze;
        return TV_OK;
    });
    board.on<&a_qortvapi_freeze_is_freeze>([frozen](const char* name) -> int32_t {
        const std::optional<size_t> window = windowNamed(name);
        if (!window) return TV_INVALID_ARGUMENT;
        std::lock_guard<std::mutex> lock(frozen->mutex);
        return frozen->windows[*window] ? 1 : 0;
    });
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
    plugFreezing(board);
}

}  // namespace television
