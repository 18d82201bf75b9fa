// Stream components: the planes of the sinks, and source detection on the video planes.
#include "calls.h"
#include "client_text.h"
#include "input_sources.h"
#include "middleware/scc.h"
#include "playing.h"
#include "service_context.h"

namespace television {
namespace {

/** The handle that a command array asks for; 0 when it names no component and sink. */
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
            // A name may be shortened from the end, as the service does.
            if (!name) return 0;
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

void plugComponents(switchboard::Switchboard& board, Core& core, const InputSources& inputs) {
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
            core.notifier.post(detectionEvent(inputs.pictureIn(window), window));
            return TV_OK;
        }
        return TV_NOT_FOUND;
    });
}

}  // namespace television
