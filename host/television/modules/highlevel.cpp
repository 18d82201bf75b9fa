// High-level control: the television's mode, and the requests that it sends to the applications.
#include <algorithm>
#include <cstring>
#include <memory>
#include <mutex>
#include <vector>

#include "middleware/highlevel.h"
#include "middleware/mheg5.h"
#include "middleware/result_codes.h"
#include "middleware/wakelock.h"
#include "television/core/client_memory.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** Bytes of the buffer for an application's answer: a handler may copy a whole transaction into it
 * without regard to the length it was given. */
constexpr size_t kAnswerRoom = size_t{1} << 20;

constexpr const char* kMimeTypes[] = {"application/vnd.hbbtv.xhtml+xml", "text/plain"};

/** The last answers of applications, and how many there were. */
struct Answers {
    std::mutex mutex;  ///< guards all below
    uint32_t count = 0;
    uint32_t result = 0;
    std::vector<uint8_t> data = std::vector<uint8_t>(HIGHLEVEL_ANSWER_MAX);
    uint32_t mimeCount = 0;   ///< answers to questions about MIME types
    uint32_t mimeResult = 0;  ///< 1: the type is supported
};

/** Runs `call`, which calls the handlers of a registration, on the notifier's thread. TV_NOT_FOUND
 * when there are none. */
int32_t request(Core& core, RegistrationKey to, std::function<void()> call) {
    if (core.registrations.empty(to)) return TV_NOT_FOUND;
    core.notifier.post({to, 0, {}, std::move(call)});
    return TV_OK;
}

int32_t askApplications(Core& core, const std::shared_ptr<Answers>& answers, uint32_t code,
                        uint32_t attribute) {
    const auto to = registration<&a_qortvapi_highlevel_register_android_responser>();
    return request(core, to, [=, &core] {
        core.registrations.each<a_qortvapi_highlevel_android_responser_fct>(
                to, [&](a_qortvapi_highlevel_android_responser_fct responser, void* tag) {
                    std::vector<uint8_t> buffer(kAnswerRoom);
                    uint32_t result = 0;
                    responser(code, tag, attribute, &result, buffer.data(), HIGHLEVEL_ANSWER_MAX);
                    std::lock_guard<std::mutex> lock(answers->mutex);
                    ++answers->count;
                    answers->result = result;
                    buffer.resize(HIGHLEVEL_ANSWER_MAX);
                    answers->data = std::move(buffer);
                });
    });
}

int32_t askMimeType(Core& core, const std::shared_ptr<Answers>& answers, uint32_t type) {
    if (type >= std::size(kMimeTypes)) return TV_INVALID_ARGUMENT;
    const auto to = registration<&a_qortvapi_mheg5_reg_is_mime_type_support_fct>(0);
    return request(core, to, [=, &core] {
        core.registrations.each<a_qortvapi_mheg5_is_mime_type_support_fct>(
                to, [&](a_qortvapi_mheg5_is_mime_type_support_fct responder, void* tag) {
                    uint8_t supported = 0;
                    responder(kMimeTypes[type], &supported, tag, 0);
                    std::lock_guard<std::mutex> lock(answers->mutex);
                    ++answers->mimeCount;
                    answers->mimeResult = supported;
                });
    });
}

int32_t requestWakeLock(Core& core, bool acquire) {
    const auto to = registration<&a_qortvapi_wakelock_reg_callback>();
    return request(core, to, [=, &core] {
        core.registrations.each<a_qortvapi_wakelock_nfy_fct>(
                to, [&](a_qortvapi_wakelock_nfy_fct handler, void* tag) {
                    handler(tag, acquire ? 1 : 0, HIGHLEVEL_WAKE_LOCK);
                });
    });
}

int32_t requestHbbtv(Core& core, int32_t argument) {
    const auto to = registration<&a_qortvapi_mheg5_reg_launch_hbbtv_nfy>(0);
    return request(core, to, [=, &core] {
        core.registrations.each<a_qortvapi_mheg5_launch_hbbtv_fct>(
                to, [&](a_qortvapi_mheg5_launch_hbbtv_fct handler, void* tag) {
                    handler("http://127.0.0.1/", tag, argument);
                });
    });
}

int32_t generic(Core& core, const std::shared_ptr<Answers>& answers, uint32_t id, uint32_t param1,
                uint32_t param2) {
    switch (id) {
        case HIGHLEVEL_GENERIC_ASK_APPLICATIONS:
            return askApplications(core, answers, param1, param2);
        case HIGHLEVEL_GENERIC_ASK_MIME_TYPE:
            return askMimeType(core, answers, param1);
        case HIGHLEVEL_GENERIC_ACQUIRE_WAKE_LOCK:
        case HIGHLEVEL_GENERIC_RELEASE_WAKE_LOCK:
            return requestWakeLock(core, id == HIGHLEVEL_GENERIC_ACQUIRE_WAKE_LOCK);
        case HIGHLEVEL_GENERIC_LAUNCH_HBBTV:
            return requestHbbtv(core, static_cast<int32_t>(param1));
        default:
            return TV_NOT_SUPPORTED;
    }
}

int32_t genericEx(Core& core, const std::shared_ptr<Answers>& answers, uint32_t id,
                  uint32_t* param1, uint32_t* param2, uint8_t* data, uint32_t length) {
    if (!writable(param1) || !writable(param2)) return TV_INVALID_ARGUMENT;
    if (id != HIGHLEVEL_GENERIC_READ_ANSWER && id != HIGHLEVEL_GENERIC_READ_MIME_ANSWER) {
        return generic(core, answers, id, *param1, *param2);
    }
    std::lock_guard<std::mutex> lock(answers->mutex);
    if (id == HIGHLEVEL_GENERIC_READ_MIME_ANSWER) {
        *param1 = answers->mimeCount;
        *param2 = answers->mimeResult;
        return TV_OK;
    }
    *param1 = answers->count;
    *param2 = answers->result;
    if (writable(data)) {
        std::memcpy(data, answers->data.data(), std::min<size_t>(length, answers->data.size()));
    }
    return TV_OK;
}

/** The television's mode: HIGHLEVEL_TV_MODE_…. Any thread; the lock is held while notifications are
 * queued. */
class Mode {
  public:
    explicit Mode(Core& core) : mCore(core) {}

    int32_t set(int32_t mode) {
        std::lock_guard<std::mutex> lock(mMutex);
        if (mode == mMode) return TV_OK;
        mMode = mode;
        mCore.notifier.post({registration<&a_qortvapi_highlevel_register_callback>(),
                             HIGHLEVEL_NFY_MODE_CHANGED,
                             {static_cast<uint32_t>(mode), 0, 0, 0}});
        return TV_OK;
    }
    int32_t get() {
        std::lock_guard<std::mutex> lock(mMutex);
        return mMode;
    }

  private:
    Core& mCore;
    std::mutex mMutex;
    int32_t mMode = HIGHLEVEL_TV_MODE_TV;  // guarded by mMutex
};

void plugMode(switchboard::Switchboard& board, Core& core) {
    const auto mode = std::make_shared<Mode>(core);
    board.on<&a_qortvapi_highlevel_start_tv>([=] { return mode->set(HIGHLEVEL_TV_MODE_TV); });
    board.on<&a_qortvapi_highlevel_stop_tv>([=] { return mode->set(HIGHLEVEL_TV_MODE_STOPPED); });
    board.on<&a_qortvapi_highlevel_stop_all>([=] { return mode->set(HIGHLEVEL_TV_MODE_STOPPED); });
    const auto launch = [=](uint8_t window, bool, uint32_t) -> int32_t {
        if (window > 1) return TV_INVALID_ARGUMENT;
        return mode->set(HIGHLEVEL_TV_MODE_3RD_PARTY);
    };
    board.on<&a_qortvapi_highlevel_launch_3rd_party>(launch);
    // The set has neither applications of its own nor a browser.
    board.on<&a_qortvapi_highlevel_launch_internal_ap>(
            [](uint8_t, bool, uint32_t) { return int32_t{TV_NOT_SUPPORTED}; });
    board.on<&a_qortvapi_highlevel_launch_hbbtv>(
            [](const char*, const char*, const char*) { return int32_t{TV_NOT_SUPPORTED}; });
    board.on<&a_qortvapi_highlevel_stop_hbbtv>([] { return int32_t{TV_OK}; });
    board.on<&a_qortvapi_highlevel_is_in_3rd_party_mode>(
            [=] { return int32_t{mode->get() == HIGHLEVEL_TV_MODE_3RD_PARTY ? 1 : 0}; });
    board.on<&a_qortvapi_highlevel_get_current_tv_mode>([=] { return mode->get(); });
}

}  // namespace

void plugHighLevelControl(switchboard::Switchboard& board, Core& core) {
    plugMode(board, core);
    const auto answers = std::make_shared<Answers>();
    board.on<&a_qortvapi_highlevel_generic_function>(
            [=, &core](uint32_t id, uint32_t param1, uint32_t param2) {
                return generic(core, answers, id, param1, param2);
            });
    board.on<&a_qortvapi_highlevel_generic_function_ex>([=, &core](uint32_t id, uint32_t* param1,
                                                                   uint32_t* param2, uint8_t* data,
                                                                   uint32_t length) {
        return genericEx(core, answers, id, param1, param2, data, length);
    });
    board.on<&a_qortvapi_highlevel_argument_test>(
            [](int32_t, int32_t, QORTVAPI_HIGHLEVEL_STRUCTURE_TYPE_1* structure) {
                return int32_t{writable(structure) ? TV_OK : TV_INVALID_ARGUMENT};
            });
    board.on<&a_qortvapi_highlevel_set_displayregion>(
            [](int32_t window, uint32_t, uint32_t, uint32_t width, uint32_t height) -> int32_t {
                const bool good = (window == 0 || window == 1) && width != 0 && height != 0;
                return good ? TV_OK : TV_INVALID_ARGUMENT;
            });
    board.on<&a_qortvapi_highlevel_set_viewport>(
            [](bool on, int32_t, int32_t, int32_t width, int32_t height) -> int32_t {
                return !on || (width > 0 && height > 0) ? TV_OK : TV_INVALID_ARGUMENT;
            });
    board.on<&a_qortvapi_highlevel_get_market_region>([](uint8_t* region) -> int32_t {
        if (!writable(region)) return TV_INVALID_ARGUMENT;
        *region = HIGHLEVEL_MARKET_REGION_EUROPE;
        return TV_OK;
    });
}

}  // namespace television
