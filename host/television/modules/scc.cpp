// Stream components: the handles of the planes of each sink, and source detection on video planes.
#include "middleware/scc.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/core/playing.h"
#include "television/core/service_context.h"
#include "television/modules/modules.h"
#include "television/settings/input_sources.h"

namespace television {
namespace {

/** Returns the handle of the component and sink that a command array names; 0 when it does not. */
uint32_t componentOf(const SCC_CMD_T* commands) {
    std::optional<uintptr_t> type;
    std::optional<size_t> window;
    for (size_t i = 0; i < SCC_CMD_MAX; ++i) {
        const SCC_CMD_T& command = commands[i];
        if (command.ui4_code == SCC_CMD_END) {
            if (!type || !window || *type >= SCC_COMP_COUNT) return 0;
            return componentHandle(static_cast<uint32_t>(*type), *window);
        }
        if (command.ui4_code == SCC_CMD_COMP_TYPE) {
            type = command.ui4_value;
        } else if (command.ui4_code == SCC_CMD_SINK_NAME) {
            const auto name = readText(reinterpret_cast<const char*>(command.ui4_value), 16);
            if (!name) return 0;
            // The service passes the beginning of a sink's name, not always all of it.
            if (std::string(SCC_SINK_MAIN).compare(0, name->size(), *name) == 0) {
                window = 0;
            } else if (std::string(SCC_SINK_SUB).compare(0, name->size(), *name) == 0) {
                window = 1;
            }
        }
    }
    return 0;
}

}  // namespace

void plugStreamComponents(switchboard::Switchboard& board, Core& core, const InputSources& inputs) {
    board.on<&c_scc_comp_open>([](const SCC_CMD_T* commands, uint32_t* handle) -> int32_t {
        if (commands == nullptr || !writable(handle)) return TV_INVALID_ARGUMENT;
        const uint32_t component = componentOf(commands);
        if (component == 0) return TV_NOT_FOUND;
        *handle = component;
        return TV_OK;
    });
    board.on<&c_scc_vid_set_src_detect_nfy>([&](uint32_t handle, c_scc_src_detect_nfy_fct handler,
                                                void* tag) -> int32_t {
        for (size_t window = 0; window < kWindowCount; ++window) {
            if (handle != componentHandle(SCC_COMP_VIDEO, window)) continue;
            const int32_t result =
                    core.registrations.add(registration<&c_scc_vid_set_src_detect_nfy>(handle),
                                           reinterpret_cast<Registrations::Function>(handler), tag);
            if (result != TV_OK) return result;
            core.notifier.post(detectionNotification(inputs.pictureIn(window), window));
            return TV_OK;
        }
        return TV_NOT_FOUND;
    });
}

}  // namespace television
