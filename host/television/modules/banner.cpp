// The texts of the channel banner, from the channel list: they describe what the main window plays.
#include <cstring>

#include "middleware/banner.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/core/playing.h"
#include "television/modules/modules.h"

namespace television {
namespace {

bool isItem(int32_t item, int32_t index) {
    return item >= BANNER_ITEM_CHANNEL_NUMBER && item <= BANNER_ITEM_LAST && index == 0;
}

/** Returns the text of an item; empty when there is nothing to show. */
std::string contentOf(const Core& core, int32_t item) {
    const auto playing = core.playing(0);
    if (!playing) return {};
    switch (item) {
        case BANNER_ITEM_CHANNEL_NUMBER:
            return std::to_string(playing->service.ui2_channel_number);
        case BANNER_ITEM_CHANNEL_NAME:
            return playing->service.s_service_name;
        case BANNER_ITEM_PROVIDER:
            return playing->service.s_provider_name;
        case BANNER_ITEM_NETWORK:
            return playing->multiplex.s_network_name;
        default:
            return std::string(playing->service.s_audio_lang,
                               strnlen(playing->service.s_audio_lang, 3));
    }
}

}  // namespace

void plugBanner(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_banner_get_item_state>(
            [&core](int32_t item, int32_t index, uint8_t* visible) -> int32_t {
                if (!isItem(item, index)) return TV_NOT_FOUND;
                if (!writable(visible)) return TV_INVALID_ARGUMENT;
                *visible = !contentOf(core, item).empty();
                return TV_OK;
            });
    board.on<&a_qortvapi_banner_get_item_id>(
            [](int32_t item, int32_t index, int32_t* id) -> int32_t {
                if (!isItem(item, index)) return TV_NOT_FOUND;
                if (!writable(id)) return TV_INVALID_ARGUMENT;
                *id = item;
                return TV_OK;
            });
    board.on<&a_qortvapi_banner_get_item_content>(
            [&core](int32_t item, int32_t index, char* content, uint32_t length) -> int32_t {
                if (!isItem(item, index)) return TV_NOT_FOUND;
                return putText(content, length, contentOf(core, item));
            });
    board.on<&a_qortvapi_banner_get_item_content_len>(
            [&core](int32_t item, int32_t index, uint32_t* length) -> int32_t {
                if (!isItem(item, index)) return TV_NOT_FOUND;
                if (!writable(length)) return TV_INVALID_ARGUMENT;
                *length = static_cast<uint32_t>(contentOf(core, item).size() + 1);
                return TV_OK;
            });
}

}  // namespace television
