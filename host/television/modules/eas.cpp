// Emergency alerts: the broadcasts carry none. Applications keep here whether they launched for
// one.
#include <memory>
#include <mutex>

#include "middleware/eas.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/modules/modules.h"

namespace television {

void plugEmergencyAlerts(switchboard::Switchboard& board) {
    board.on<&a_qortvapi_eas_get_status>(
            [](int32_t* status, int32_t* a, int32_t* b, int32_t* c) -> int32_t {
                if (!writable(status)) return TV_INVALID_ARGUMENT;
                *status = EAS_STATUS_IDLE;
                put(a, 0);
                put(b, 0);
                put(c, 0);
                return TV_OK;
            });
    struct Launch {
        std::mutex mutex;
        bool launched = false;  // guarded by mutex
    };
    const auto launch = std::make_shared<Launch>();
    board.on<&a_qortvapi_eas_set_android_launch_status>([=](bool launched) {
        std::lock_guard<std::mutex> lock(launch->mutex);
        launch->launched = launched;
        return int32_t{TV_OK};
    });
    board.on<&a_qortvapi_eas_get_android_launch_status>([=] {
        std::lock_guard<std::mutex> lock(launch->mutex);
        return int32_t{launch->launched ? 1 : 0};
    });
    board.on<&a_qortvapi_eas_set_android_exit_eas_no_change_channel_status>(
            [](bool) { return int32_t{TV_OK}; });
}

}  // namespace television
