// Waking the set over the network.
#include "middleware/network.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** `name`: under which the core remembers whether this way to wake the set is on. */
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

void plugNetworkWakeUp(switchboard::Switchboard& board, Core& core) {
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
