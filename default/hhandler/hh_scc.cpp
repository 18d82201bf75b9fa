#define LOG_TAG "hh_sm"

#include "hhandler/hh_scc.h"

#include <array>
#include <cstring>

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/scc.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

using CommandArray = std::array<SCC_CMD_T, 4>;

constexpr uint32_t kTypeCount = 3;
constexpr const char* kSinks[] = {"snk_MainDisp", "snk_SubDisp"};

// The handles of the components by type and sink, 0 until a component is opened. A component stays
// open until the process ends. Read and written without a lock.
uint32_t sComponents[kTypeCount][std::size(kSinks)] = {};

/** Returns where the handle of a component is kept, null if there is no such component. */
uint32_t* componentOf(uint32_t type, const char* sink) {
    if (type >= kTypeCount) return nullptr;
    for (size_t i = 0; i < std::size(kSinks); ++i) {
        if (strncmp(sink, kSinks[i], strlen(sink)) == 0) return &sComponents[type][i];
    }
    return nullptr;
}

/** Returns the commands that open a component. They refer to the client's text and bytes. */
CommandArray _set_cmd_array(uint32_t type, const char* sink, uint32_t code,
                            const hidl_vec<uint8_t>& data) {
    TVAPI_LOG("%d, %s, %d", type, sink, code);
    return {{{SCC_CMD_COMP_TYPE, type},
             {SCC_CMD_SINK_NAME, reinterpret_cast<uintptr_t>(sink)},
             {code, reinterpret_cast<uintptr_t>(data.data())},
             {SCC_CMD_END, 0}}};
}

}  // namespace

int32_t _inps_detect_cb(uint32_t h_comp, int32_t i4_cond, void* pv_tag, int32_t i4_data,
                        int32_t i4_data2) {
    const FanOut clients(LOG_TAG);
    // Like other entry lines this one shows the first two arguments: "%p" is for the condition.
    TVAPI_DEBUG("_inps_detect_cb e_code = %d, %p\n", h_comp,
                reinterpret_cast<void*>(static_cast<uintptr_t>(i4_cond)));
    clients.call(&IQorTvApiCallback::notifyInputSourceDetect, h_comp, i4_cond, pv_tag, i4_data,
                 i4_data2);
    return 0;
}

void hh_c_scc_comp_open(uint32_t type, const hidl_string& sink, uint32_t code,
                        const hidl_vec<uint8_t>& data,
                        const std::function<void(uint32_t, int32_t)>& answer) {
    uint32_t* const component = componentOf(type, sink.c_str());
    if (component == nullptr) return answer(0, -1);
    if (*component != 0) {
        TVAPI_DEBUG("already open. %d", *component);
        return answer(*component, -1);
    }
    const CommandArray commands = _set_cmd_array(type, sink.c_str(), code, data);
    const int32_t i4_ret = c_scc_comp_open(commands.data(), component);
    if (i4_ret != 0) {
        TVAPI_LOG("Can't Open SCC handle");
        return answer(0, i4_ret);
    }
    TVAPI_DEBUG("%d", *component);
    answer(*component, 0);
}

int32_t hh_c_scc_comp_close(uint32_t h_comp) {
    TVAPI_DEBUG("%d", h_comp);
    return 0;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
