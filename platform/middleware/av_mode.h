/** Picture and sound modes. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Picture modes. */
enum { PICTURE_MODE_STANDARD = 0, PICTURE_MODE_VIVID = 1, PICTURE_MODE_CINEMA = 2, PICTURE_MODE_SPORT = 3, PICTURE_MODE_GAME = 4, PICTURE_MODE_USER = 5, PICTURE_MODE_COUNT = 6 };
/** Sound modes. */
enum { SOUND_EFFECT_STANDARD = 0, SOUND_EFFECT_MUSIC = 1, SOUND_EFFECT_SPEECH = 2, SOUND_EFFECT_CINEMA = 3, SOUND_EFFECT_USER = 4, SOUND_EFFECT_COUNT = 5 };
int32_t a_qortvapi_av_mode_get_picture_mode(void);
int32_t a_qortvapi_av_mode_set_picture_mode(uint16_t ui2_picture_mode);
int32_t a_qortvapi_av_mode_get_all_picture_mode(uint16_t* pui2_modes, uint32_t ui4_count);
int32_t a_qortvapi_av_mode_get_number_picture_mode(uint32_t* pui4_count);
int32_t a_qortvapi_av_mode_get_sound_effect(void);
int32_t a_qortvapi_av_mode_set_sound_effect(uint16_t ui2_sound_effect);
int32_t a_qortvapi_av_mode_get_all_sound_effect(uint16_t* pui2_effects, uint32_t ui4_count);
int32_t a_qortvapi_av_mode_get_number_sound_effect(uint32_t* pui4_count);

#ifdef __cplusplus
}
#endif
