// Input sources: records, names, signals, settings, and changing the source.
#include <algorithm>

#include "middleware/inputsource.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/modules/modules.h"
#include "television/settings/video_paths.h"
#include "television/stream/dvb_text.h"

namespace television {
namespace {

/** Bytes of every buffer for a name, whatever length the client gives. */
constexpr uint32_t kSourceNameRoom = 256;

/** The GPIO line of power control (pcl.h) for each input line; -1: there is none. */
constexpr int32_t kLines[INPUT_GPIO_COUNT] = {32, -1, 33};

int32_t putName(char* to, uint32_t length, const std::string& name) {
    return putText(to, std::min(length, kSourceNameRoom), name);
}

/** Returns `use(source)`; TV_NOT_FOUND when there is no such source. */
template <typename Use>
int32_t withSource(int32_t sourceId, Use use) {
    const InputSource* const source = inputSource(sourceId);
    return source == nullptr ? int32_t{TV_NOT_FOUND} : use(*source);
}

/** Returns `use(path)`; TV_INVALID_ARGUMENT when there is no such video path. */
template <typename Use>
int32_t onPath(const char* name, Use use) {
    const std::optional<size_t> path = windowNamed(name);
    return path ? use(*path) : int32_t{TV_INVALID_ARGUMENT};
}

/** Writes a value; TV_INVALID_ARGUMENT when the address is not writable. */
template <typename Value>
int32_t putRequired(Value* to, Value value) {
    if (!writable(to)) return TV_INVALID_ARGUMENT;
    *to = value;
    return TV_OK;
}

int32_t putFlag(uint8_t* to, bool value) {
    return putRequired(to, uint8_t{value ? uint8_t{1} : uint8_t{0}});
}

/** Plugs a function that writes 1 or 0: what `ask(source)` returns. */
template <auto Function, typename Ask>
void plugQuestion(switchboard::Switchboard& board, Ask ask) {
    board.on<Function>([ask](int32_t sourceId, uint8_t* to) {
        return withSource(sourceId,
                          [&](const InputSource& source) { return putFlag(to, ask(source)); });
    });
}

void plugRecords(switchboard::Switchboard& board, const InputSources& inputs) {
    board.on<&a_qortvapi_inputsource_get_sourcetotalnum>(
            [] { return static_cast<int32_t>(kInputSources.size()); });
    board.on<&a_qortvapi_inputsource_get_sourcerec_byidx>(
            [&inputs](int32_t index, QORTVAPI_INPUT_SOURCE_RECORD_T* to) {
                return withSource(index, [&](const InputSource& source) -> int32_t {
                    if (!writable(to)) return TV_INVALID_ARGUMENT;
                    QORTVAPI_INPUT_SOURCE_RECORD_T record = {};
                    record.ui1_source_id = source.id;
                    record.ui1_device_type = source.type;
                    record.ui1_internal_index = source.index;
                    copyText(record.s_name, source.name);
                    record.ui4_flags = source.flags;
                    record.ui1_connected = inputs.connected(source) ? 1 : 0;
                    *to = record;
                    return TV_OK;
                });
            });
    board.on<&a_qortvapi_inputsource_get_sharepinrec_byidx>(
            [](int32_t index, QORTVAPI_INPUT_SHARE_PIN_RECORD_T* to) -> int32_t {
                int32_t place = 0;
                for (const InputSource& source : kInputSources) {
                    if (!source.samePlug || *source.samePlug < source.id) continue;
                    if (place++ == index) return putRequired(to, {source.id, *source.samePlug});
                }
                return TV_NOT_FOUND;
            });
    board.on<&a_qortvapi_inputsource_get_hybrid_video_internal_id>(
            [] { return int32_t{INPUT_SOURCE_AV}; });
    board.on<&a_qortvapi_inputsource_get_hybrid_comp_internal_id>(
            [] { return int32_t{INPUT_SOURCE_COMPONENT}; });
    board.on<&a_qortvapi_inputsource_get_gpioid_byidx>([](uint32_t index, uint32_t* to) -> int32_t {
        if (index >= INPUT_GPIO_COUNT || kLines[index] < 0) return TV_NOT_FOUND;
        return putRequired(to, static_cast<uint32_t>(kLines[index]));
    });
    board.on<&a_qortvapi_inputsource_get_mhl_port_num>(
            [](uint8_t* count) { return putRequired(count, uint8_t{0}); });
}

void plugNames(switchboard::Switchboard& board, InputSources& inputs, const VideoPaths& paths) {
    const auto current = [&](size_t path) {
        return inputs.name(*inputSource(paths.state(path).source));
    };
    board.on<&a_qortvapi_inputsource_get_currentsourcename>(
            [=](char* name, uint32_t length) { return putName(name, length, current(0)); });
    board.on<&a_qortvapi_inputsource_get_currentsourcename_bypath>(
            [=](char* name, uint32_t length, const char* path) {
                return onPath(path, [&](size_t at) { return putName(name, length, current(at)); });
            });
    board.on<&a_qortvapi_inputsource_get_sourcename_bysourceid>(
            [&inputs](int32_t id, char* name, uint32_t length) {
                return withSource(id, [&](const InputSource& source) {
                    return putName(name, length, inputs.name(source));
                });
            });
    board.on<&a_qortvapi_inputsource_get_userdefname_bysourceid>(
            [&inputs](int32_t id, char* name, uint32_t length) {
                return withSource(id, [&](const InputSource& source) {
                    return putName(name, length, inputs.userName(source));
                });
            });
    board.on<&a_qortvapi_inputsource_set_userdefname_bysourceid>(
            [&inputs](int32_t id, const char* name) {
                return withSource(id, [&](const InputSource& source) -> int32_t {
                    const auto text = readText(name, INPUT_USER_NAME_MAX + 1);
                    return text ? inputs.setUserName(source, *text) : int32_t{TV_INVALID_ARGUMENT};
                });
            });
}

/** Returns whether a source has a signal: the television when what plays in a window has one with
 * that stream, another source when a device is connected. */
bool hasSignal(const Core& core, const InputSources& inputs, const InputSource& source,
               size_t window, bool (Playing::*stream)() const) {
    if (source.id != kTelevisionSource) return inputs.connected(source);
    const auto playing = core.playing(window);
    return playing && core.reception.hasSignal(playing->multiplex) && ((*playing).*stream)();
}

void plugSignals(switchboard::Switchboard& board, const Core& core, const InputSources& inputs,
                 const VideoPaths& paths) {
    const auto pathHas = [&](size_t path, uint32_t flags, bool (Playing::*stream)() const) {
        const VideoPaths::State state = paths.state(path);
        const InputSource& source = *inputSource(state.source);
        return state.playing && (source.flags & flags) == flags &&
               hasSignal(core, inputs, source, path, stream);
    };
    board.on<&a_qortvapi_inputsource_isVideoSignalAvailable>(
            [=](const char* path, uint8_t* available) {
                return onPath(path, [&](size_t at) {
                    return putFlag(available, pathHas(at, 0, &Playing::hasVideo));
                });
            });
    board.on<&a_qortvapi_inputsource_isAudioSignalAvailable>([=](const char* path,
                                                                 uint8_t* available) {
        return onPath(path, [&](size_t at) {
            return putFlag(available, pathHas(at, INPUT_SOURCE_HAS_AUDIO, &Playing::hasAudio));
        });
    });
    board.on<&a_qortvapi_inputsource_get_external_device_has_signal>(
            [&core, &inputs](uint32_t type, int32_t index, uint8_t* signal) -> int32_t {
                for (const InputSource& source : kInputSources) {
                    if (source.type != type || source.index != index) continue;
                    return putFlag(signal, hasSignal(core, inputs, source, 0, &Playing::hasVideo));
                }
                return TV_NOT_FOUND;
            });
}

void plugChange(switchboard::Switchboard& board, VideoPaths& paths) {
    const auto change = [&paths](int32_t id, const char* path, uint16_t priority) {
        return withSource(id, [&](const InputSource& source) {
            return onPath(path, [&](size_t at) { return paths.change(at, source, priority); });
        });
    };
    board.on<&a_qortvapi_inputsource_changesource_bysourceid>(
            [=](int32_t id) { return change(id, "main", 0); });
    board.on<&a_qortvapi_inputsource_changesource_bysourceidandpath>(
            [=](int32_t id, const char* path) { return change(id, path, 0); });
    board.on<&a_qortvapi_inputsource_cs_bysourceidandpathandpriority>(change);
    board.on<&a_qortvapi_inputsource_is_source_available_bysourceidandpath>(
            [&paths](int32_t id, const char* path, uint8_t* available) {
                return withSource(id, [&](const InputSource& source) {
                    return onPath(path, [&](size_t at) {
                        return putFlag(available, paths.available(at, source));
                    });
                });
            });
    board.on<&a_qortvapi_inputsource_query_conflict>(
            [](int32_t id, int32_t otherId, uint8_t* conflict) {
                return withSource(id, [&](const InputSource& source) {
                    return withSource(otherId, [&](const InputSource& other) {
                        return putFlag(conflict, inputsConflict(source, other));
                    });
                });
            });
    board.on<&a_qortvapi_inputsource_sync_stop>([&paths](const char* path, bool) {
        return onPath(path, [&](size_t at) -> int32_t {
            paths.stop(at);
            return TV_OK;
        });
    });
}

void plugSettings(switchboard::Switchboard& board, InputSources& inputs) {
    plugQuestion<&a_qortvapi_inputsource_is_block_bysourceid>(
            board, [&inputs](const InputSource& source) { return inputs.blocked(source); });
    plugQuestion<&a_qortvapi_inputsource_is_source_block_bysourceid>(
            board, [&inputs](const InputSource& source) { return inputs.blockSet(source); });
    plugQuestion<&a_qortvapi_inputsource_is_source_autodetect_bysourceid>(
            board, [&inputs](const InputSource& source) { return inputs.autodetect(source); });
    board.on<&a_qortvapi_inputsource_check_menu_tv_block>([&inputs](uint8_t* blocked) {
        return putFlag(blocked, inputs.blocked(*inputSource(kTelevisionSource)));
    });
    board.on<&a_qortvapi_inputsource_set_source_blockstatus_bysourceid>(
            [&inputs](int32_t id, bool on) {
                return withSource(
                        id, [&](const InputSource& source) { return inputs.setBlock(source, on); });
            });
    board.on<&a_qortvapi_inputsource_set_source_autodetectstatus_bysourceid>([&inputs](int32_t id,
                                                                                       bool on) {
        return withSource(
                id, [&](const InputSource& source) { return inputs.setAutodetect(source, on); });
    });
    board.on<&a_qortvapi_inputsource_set_scart_auto_jump>([&inputs](bool on) {
        for (const InputSource& source : kInputSources) {
            if (source.type == INPUT_DEVICE_TYPE_SCART) inputs.setAutodetect(source, on);
        }
        return int32_t{TV_OK};
    });
    board.on<&a_qortvapi_inputsource_get_source_inputlabelidx_bysourceid>(
            [&inputs](int32_t id, uint8_t* label) {
                return withSource(id, [&](const InputSource& source) {
                    return putRequired(label, inputs.label(source));
                });
            });
    board.on<&a_qortvapi_inputsource_set_source_inputlabelidx_bysourceid>([&inputs](int32_t id,
                                                                                    uint8_t label) {
        return withSource(
                id, [&](const InputSource& source) { return inputs.setLabel(source, label); });
    });
}

}  // namespace

void plugInputSources(switchboard::Switchboard& board, const Core& core, InputSources& inputs,
                      VideoPaths& paths) {
    plugRecords(board, inputs);
    plugNames(board, inputs, paths);
    plugSignals(board, core, inputs, paths);
    plugChange(board, paths);
    plugSettings(board, inputs);
}

}  // namespace television
