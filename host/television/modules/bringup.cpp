// The start of the client library, which needs none here, and the handles of the service contexts.
#include <cstring>

#include "middleware/bringup.h"
#include "middleware/result_codes.h"
#include "middleware/svctx.h"
#include "television/core/service_context.h"
#include "television/modules/modules.h"

namespace television {

void plugBringUp(switchboard::Switchboard& board) {
    board.on<&x_rtos_init>([](const void*) { return int32_t{TV_OK}; });
    // The handles are kept in the library's own memory: the caller's memory is not used.
    board.on<&handle_init>([](uint32_t handles, void** memory, uint32_t* size) {
        const bool good = handles > 0 && memory != nullptr && size != nullptr;
        return int32_t{good ? TV_OK : TV_INVALID_ARGUMENT};
    });
    board.on<&os_init>([](void*, uint32_t) { return int32_t{TV_OK}; });
    board.on<&c_svctx_prepare_process_env>([](uint32_t) { return int32_t{TV_OK}; });
    board.on<&c_svctx_open>([](const char* name, uint32_t* context) {
        if (name == nullptr || context == nullptr) return int32_t{TV_INVALID_ARGUMENT};
        if (std::strcmp(name, "main_svctx") == 0) {
            *context = kMainContext;
        } else if (std::strcmp(name, "sub_svctx") == 0) {
            *context = kSubContext;
        } else {
            return int32_t{TV_NOT_FOUND};
        }
        return int32_t{TV_OK};
    });
}

}  // namespace television
