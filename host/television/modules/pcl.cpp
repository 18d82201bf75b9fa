// Power control: reasons, wake-up set-up and GPIO lines are kept. A request to power down is
// notified to the handlers; the television stays on.
#include <array>
#include <cstring>
#include <memory>
#include <mutex>

#include "middleware/pcl.h"
#include "middleware/result_codes.h"
#include "television/base/log.h"
#include "television/core/client_memory.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** The names under which the core remembers a reason and its data, and the default reason. */
struct ReasonNames {
    const char* reason;
    const char* data;
    uint32_t fallback;
};
constexpr ReasonNames kWakeUp = {"wake.reason", "wake.data", PCL_WAKE_UP_REASON_REMOTE_CONTROL};
constexpr ReasonNames kPowerDown = {"power.reason", "power.data", 0};

int32_t getReason(const Core& core, const ReasonNames& names, uint32_t* reason, uint32_t* data) {
    if (!writable(reason)) return TV_INVALID_ARGUMENT;
    *reason = static_cast<uint32_t>(
            core.rememberedNumber(names.reason, static_cast<int32_t>(names.fallback)));
    put(data, static_cast<uint32_t>(core.rememberedNumber(names.data, 0)));
    return TV_OK;
}

int32_t setReason(Core& core, const ReasonNames& names, uint32_t reason, const void* data) {
    uint32_t word = 0;
    if (data != nullptr) std::memcpy(&word, data, sizeof(word));
    core.rememberNumber(names.reason, static_cast<int32_t>(reason));
    core.rememberNumber(names.data, static_cast<int32_t>(word));
    return TV_OK;
}

int32_t getSetup(const Core& core, uint32_t* setup) {
    if (!writable(setup)) return TV_INVALID_ARGUMENT;
    *setup = static_cast<uint32_t>(core.rememberedNumber("wake.setup", 0));
    return TV_OK;
}

int32_t setSetup(Core& core, uint32_t setup) {
    core.rememberNumber("wake.setup", static_cast<int32_t>(setup));
    return TV_OK;
}

/** The GPIO lines. Any thread; the lock is held while notifications are queued. */
struct Lines {
    std::mutex mutex;
    std::array<uint8_t, PCL_GPIO_COUNT> states = {};  // guarded by mutex
    std::array<bool, PCL_GPIO_COUNT> monitored = {};  // guarded by mutex
};

void plugLines(switchboard::Switchboard& board, Core& core) {
    const auto lines = std::make_shared<Lines>();
    board.on<&c_pcl_get_gpio>([=](uint32_t id, uint32_t, uint32_t* status) -> int32_t {
        if (id >= PCL_GPIO_COUNT) return TV_NOT_FOUND;
        if (!writable(status)) return TV_INVALID_ARGUMENT;
        std::lock_guard<std::mutex> lock(lines->mutex);
        *status = lines->states[id];
        return TV_OK;
    });
    board.on<&c_pcl_set_gpio>([=, &core](uint32_t id, uint32_t status) -> int32_t {
        if (id >= PCL_GPIO_COUNT) return TV_NOT_FOUND;
        if (status > PCL_GPIO_HIGH) return TV_INVALID_ARGUMENT;
        std::lock_guard<std::mutex> lock(lines->mutex);
        const bool changed = lines->states[id] != status;
        lines->states[id] = static_cast<uint8_t>(status);
        if (changed && lines->monitored[id]) {
            core.notifier.post({registration<&c_pcl_reg_nfy_fct>(),
                                PCL_COND_GPIO_CHANGED,
                                {id << 16 | status, 0, 0, 0}});
        }
        return TV_OK;
    });
    board.on<&c_pcl_set_gpio_monitor_ctrl_ex>(
            [=](const PCL_GPIO_MONITOR_CTRL_EX_T* control) -> int32_t {
                if (control == nullptr) return TV_INVALID_ARGUMENT;
                if (control->ui4_id >= PCL_GPIO_COUNT) return TV_NOT_FOUND;
                std::lock_guard<std::mutex> lock(lines->mutex);
                lines->monitored[control->ui4_id] = true;
                return TV_OK;
            });
}

}  // namespace

void plugPowerControl(switchboard::Switchboard& board, Core& core) {
    board.on<&c_pcl_get_wakeup_reason>([&core](uint32_t* reason, uint32_t* data) {
        return getReason(core, kWakeUp, reason, data);
    });
    board.on<&a_qortvapi_pcl_get_wakeup_reason>([&core](uint32_t* reason, uint32_t* data) {
        return getReason(core, kWakeUp, reason, data);
    });
    board.on<&c_pcl_set_wakeup_reason>([&core](uint32_t reason, const void* data) {
        return setReason(core, kWakeUp, reason, data);
    });
    board.on<&c_pcl_get_power_down_reason>([&core](uint32_t* reason, uint32_t* data) {
        return getReason(core, kPowerDown, reason, data);
    });
    board.on<&c_pcl_set_power_down_reason>([&core](uint32_t reason, const void* data) {
        return setReason(core, kPowerDown, reason, data);
    });
    const auto request = [&core](int32_t condition, const char* what) {
        LOG_TV_WARN("a client asks for {}: the television stays on", what);
        core.notifier.post({registration<&c_pcl_reg_nfy_fct>(), condition, {}});
        return int32_t{TV_OK};
    };
    board.on<&c_pcl_set_power_down>([=] { return request(PCL_COND_POWER_DOWN, "power down"); });
    board.on<&c_pcl_set_request_suspend>([=] { return request(PCL_COND_SUSPEND, "suspend"); });
    board.on<&c_pcl_set_request_powerdown_envent>(
            [=] { return request(PCL_COND_POWER_DOWN_EVENT, "the event of powering down"); });
    board.on<&c_pcl_get_wakeup_irkey>([](PCL_WAKEUP_KEY_T*) { return int32_t{TV_NOT_FOUND}; });
    board.on<&c_pcl_get_wakeup_setup>([&core](uint32_t* setup) { return getSetup(core, setup); });
    board.on<&a_qortvapi_pcl_get_wakeup_setup>(
            [&core](uint32_t* setup) { return getSetup(core, setup); });
    board.on<&c_pcl_set_wakeup_setup>([&core](uint32_t setup) { return setSetup(core, setup); });
    board.on<&a_qortvapi_pcl_set_wakeup_setup>(
            [&core](uint32_t setup) { return setSetup(core, setup); });
    plugLines(board, core);
}

}  // namespace television
