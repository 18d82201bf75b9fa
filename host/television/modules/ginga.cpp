// The Ginga engine (interactive television of ISDB): it runs or not, and has no applications.
#include <memory>

#include "middleware/ginga.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/modules/engine.h"
#include "television/modules/modules.h"

namespace television {

void plugGinga(switchboard::Switchboard& board, Core& core) {
    const auto engine = std::make_shared<Engine>();
    const auto to = registration<&a_qortvapi_ginga_register_callback>();
    board.on<&a_qortvapi_ginga_startGinga>([=, &core] {
        return engine->set(core, true, {to, GINGA_NFY_STARTED, {}});
    });
    board.on<&a_qortvapi_ginga_stopGinga>([=, &core] {
        return engine->set(core, false, {to, GINGA_NFY_STOPPED, {}});
    });
    const auto unknownApplication = [=](const char* id) -> int32_t {
        if (id == nullptr) return TV_INVALID_ARGUMENT;
        return engine->get() ? TV_NOT_FOUND : TV_BUSY;
    };
    board.on<&a_qortvapi_ginga_startApplication>(unknownApplication);
    board.on<&a_qortvapi_ginga_stopApplication>(unknownApplication);
    const auto whileItRuns = [=] { return int32_t{engine->get() ? TV_OK : TV_BUSY}; };
    board.on<&a_qortvapi_ginga_getApplicationInfo>(whileItRuns);
    board.on<&a_qortvapi_ginga_warning_start_cc>([=](bool) { return whileItRuns(); });
    board.on<&a_qortvapi_ginga_warning_start_ginga_app>([=](bool) { return whileItRuns(); });
    const auto none = [](uint32_t* count) -> int32_t {
        if (!writable(count)) return TV_INVALID_ARGUMENT;
        *count = 0;
        return TV_OK;
    };
    board.on<&a_qortvapi_ginga_getApplicationNum>(none);
    board.on<&a_qortvapi_ginga_getApplicationInfo_ex>(
            [=](void*, uint32_t* count) { return none(count); });
    board.on<&a_qortvapi_ginga_is_enable_screen_mode>([=](bool, uint8_t* enabled) -> int32_t {
        if (!writable(enabled)) return TV_INVALID_ARGUMENT;
        *enabled = !engine->get();
        return TV_OK;
    });
}

}  // namespace television
