// The MHEG-5 engine (interactive television): it runs or not, and has no applications.
#include <memory>

#include "middleware/mheg5.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/modules/engine.h"
#include "television/modules/modules.h"

namespace television {

void plugMheg5(switchboard::Switchboard& board, Core& core) {
    const auto engine = std::make_shared<Engine>();
    const auto to = registration<&a_qortvapi_mheg5_register_msg_callback>();
    board.on<&a_qortvapi_mheg5_enabled>([=, &core] {
        return engine->set(core, true, {to, MHEG5_NFY_ENABLED, {1}});
    });
    board.on<&a_qortvapi_mheg5_disabled>([=, &core] {
        return engine->set(core, false, {to, MHEG5_NFY_ENABLED, {0}});
    });
    board.on<&a_qortvapi_mheg5_get_current_channel>(
            [&core](uint16_t* listId, SVL_REC_T* service, TSL_REC_T* multiplex) -> int32_t {
                const auto playing = core.playing(0);
                if (!playing) return TV_NOT_FOUND;
                put(listId, playing->service.ui2_svl_id);
                put(service, playing->service);
                put(multiplex, playing->multiplex);
                return TV_OK;
            });
    board.on<&a_qortvapi_mheg5_get_pfg_info_len>([](uint32_t* length) -> int32_t {
        if (!writable(length)) return TV_INVALID_ARGUMENT;
        *length = 0;
        return TV_OK;
    });
    board.on<&a_qortvapi_mheg5_get_pfg_info>([](char*, uint32_t* length, uint8_t* show) -> int32_t {
        if (!writable(length) || !writable(show)) return TV_INVALID_ARGUMENT;
        *length = 0;
        *show = 0;
        return TV_OK;
    });
    board.on<&a_qortvapi_mheg5_get_internal_scrn>([](uint8_t* internal) -> int32_t {
        if (!writable(internal)) return TV_INVALID_ARGUMENT;
        *internal = 0;
        return TV_OK;
    });
    board.on<&a_qortvapi_mheg5_set_pfg_result>([](bool) { return int32_t{TV_BUSY}; });
    board.on<&a_qortvapi_mheg5_set_hbbtv_status>([](uint32_t, bool) { return int32_t{TV_OK}; });
    board.on<&a_qortvapi_mheg5_set_mheg5_status>(
            [](int32_t, int32_t, int32_t, int32_t) { return int32_t{TV_OK}; });
}

}  // namespace television
