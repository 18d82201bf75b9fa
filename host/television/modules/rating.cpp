// Parental ratings: the settings of each system, and the rating of the current programme.
#include <cstring>
#include <string>

#include "middleware/rating.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/modules/modules.h"
#include "television/modules/rating_settings.h"
#include "television/viewing/ratings.h"

namespace television {
namespace {

/** Plugs the two functions of a setting that is a number from 0 to `most`; `fallback` is its
 * default. */
template <auto Get, auto Set>
void plugSetting(switchboard::Switchboard& board, Core& core, const char* name, uint8_t most,
                 int32_t fallback = 0) {
    board.on<Get>([&core, name, fallback](uint8_t* to) -> int32_t {
        if (!writable(to)) return TV_INVALID_ARGUMENT;
        *to = static_cast<uint8_t>(core.rememberedNumber(name, fallback));
        return TV_OK;
    });
    board.on<Set>([&core, name, most](uint8_t value) -> int32_t {
        if (value > most) return TV_INVALID_ARGUMENT;
        core.rememberNumber(name, value);
        return TV_OK;
    });
}

void plugUsTelevision(switchboard::Switchboard& board, Core& core) {
    board.on<&a_qortvapi_rating_get_us_tv_setting_info>(
            [&core](US_TV_RATING_BLOCK_T* to) -> int32_t {
                if (!writable(to)) return TV_INVALID_ARGUMENT;
                const uint32_t bits = usTelevisionBits(core.remembered(kUsTelevision));
                uint8_t bytes[sizeof(*to)];
                for (size_t i = 0; i < sizeof(bytes); ++i) bytes[i] = bits >> i & 1;
                std::memcpy(to, bytes, sizeof(bytes));
                return TV_OK;
            });
    board.on<&a_qortvapi_rating_set_us_tv_setting_info>(
            [&core](const US_TV_RATING_BLOCK_T* block) -> int32_t {
                if (!writable(block)) return TV_INVALID_ARGUMENT;
                std::string bytes(reinterpret_cast<const char*>(block), sizeof(*block));
                for (char& byte : bytes) byte = byte != 0 ? 1 : 0;
                const bool any = bytes.find('\1') != std::string::npos;
                core.remember(kUsTelevision, any ? bytes : std::string());
                return TV_OK;
            });
    board.on<&a_qortvapi_rating_get_us_tv_group_by_child>([](uint8_t* to) -> int32_t {
        if (!writable(to)) return TV_INVALID_ARGUMENT;
        *to = 0;
        return TV_OK;
    });
}

}  // namespace

void plugRatings(switchboard::Switchboard& board, Core& core) {
    plugUsTelevision(board, core);
    plugSetting<&a_qortvapi_rating_get_us_movie_setting_info,
                &a_qortvapi_rating_set_us_movie_setting_info>(board, core, kUsMovie,
                                                              RATING_US_MOVIE_MAX);
    plugSetting<&a_qortvapi_rating_get_can_eng_setting_info,
                &a_qortvapi_rating_set_can_eng_setting_info>(board, core, kCanadianEnglish,
                                                             RATING_CAN_ENG_MAX);
    plugSetting<&a_qortvapi_rating_get_can_fre_setting_info,
                &a_qortvapi_rating_set_can_fre_setting_info>(board, core, kCanadianFrench,
                                                             RATING_CAN_FRE_MAX);
    plugSetting<&a_qortvapi_rating_get_block_unrated, &a_qortvapi_rating_set_block_unrated>(
            board, core, kUnratedBlocked, 1);
    plugSetting<&a_qortvapi_rating_get_enable, &a_qortvapi_rating_set_enable>(board, core,
                                                                              kRatingsOn, 1, 1);
    plugSetting<&a_qortvapi_rating_get_isdb_content_setting_info,
                &a_qortvapi_rating_set_isdb_content_setting_info>(board, core, kIsdbContents,
                                                                  RATING_ISDB_CONTENT_MAX);
    plugSetting<&a_qortvapi_rating_get_isdb_age_setting_info,
                &a_qortvapi_rating_set_isdb_age_setting_info>(board, core, kIsdbAge,
                                                              RATING_AGE_MAX);
    plugSetting<&a_qortvapi_rating_get_dvb_age_setting_info,
                &a_qortvapi_rating_set_dvb_age_setting_info>(board, core, kAgeAllowed,
                                                             RATING_AGE_MAX);
    board.on<&a_qortvapi_rating_get_crnt_rating_info>([&core](RATING_MAP_T* to) -> int32_t {
        if (!writable(to)) return TV_INVALID_ARGUMENT;
        const Guide::EventPointer event = currentProgramme(core);
        return event == nullptr ? int32_t{TV_NOT_FOUND} : putRatingMap(*event, to);
    });
    plugRatingTables(board, core);
    notifyRatingChanges(core);
}

}  // namespace television
