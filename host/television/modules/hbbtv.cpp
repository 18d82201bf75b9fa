// Audio and subtitle tracks as HbbTV applications select them.
#include <memory>
#include <optional>
#include <string>

#include "middleware/hbbtv.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/modules/modules.h"
#include "television/viewing/track_selection.h"

namespace television {
namespace {

constexpr size_t kLongestLanguage = 16;

/** Reads the three letters of a language. Of a longer text the first three letters count; an empty
 * text is no language. Returns empty for one or two letters. */
std::optional<std::string> readLanguage(const char* from) {
    const std::optional<std::string> text = readText(from, kLongestLanguage);
    if (!text || text->size() == 1 || text->size() == 2) return std::nullopt;
    return text->substr(0, 3);
}

}  // namespace

void plugHbbtv(switchboard::Switchboard& board, Core& core,
               const std::shared_ptr<TrackSelection>& tracks) {
    board.on<&c_hbbtv_stm_set_audio>([=](uint16_t index) { return tracks->selectAudio(index); });
    board.on<&c_hbbtv_stm_get_audio>([=](uint16_t* index) -> int32_t {
        const auto state = tracks->state();
        if (!state || state->tracks.audio.empty()) return TV_NOT_FOUND;
        if (!writable(index)) return TV_INVALID_ARGUMENT;
        *index = static_cast<uint16_t>(state->audio);
        return TV_OK;
    });
    board.on<&c_hbbtv_stm_get_audio_num>([=](uint16_t* count) -> int32_t {
        const auto state = tracks->state();
        if (!state) return TV_NOT_FOUND;
        if (!writable(count)) return TV_INVALID_ARGUMENT;
        *count = static_cast<uint16_t>(state->tracks.audio.size());
        return TV_OK;
    });
    board.on<&c_hbbtv_stm_get_audio_lang>([=](uint16_t index, char* to) -> int32_t {
        const auto state = tracks->state();
        if (!state || index >= state->tracks.audio.size()) return TV_NOT_FOUND;
        constexpr uint32_t kLettersAndNul = 4;
        return putText(to, kLettersAndNul, state->tracks.audio[index].language);
    });
    board.on<&c_hbbtv_set_default_audio_lang>([=](const char* language) -> int32_t {
        const auto text = readLanguage(language);
        if (!text) return TV_INVALID_ARGUMENT;
        tracks->preferAudio(*text);
        return TV_OK;
    });
    board.on<&c_hbbtv_set_default_subtitle_lang>([=](const char* language, int32_t) -> int32_t {
        const auto text = readLanguage(language);
        if (!text) return TV_INVALID_ARGUMENT;
        tracks->preferSubtitle(*text);
        return TV_OK;
    });
    board.on<&a_qortvapi_hbbtv_exchange_data>(
            [](uint32_t*, uint32_t) { return int32_t{TV_NOT_SUPPORTED}; });
    board.on<&c_hbbtv_set_audio_desc>([&core](bool on) {
        core.rememberNumber(kAudioDescriptionName, on ? 1 : 0);
        return int32_t{TV_OK};
    });
}

}  // namespace television
