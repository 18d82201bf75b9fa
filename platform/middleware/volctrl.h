/** Volume and mute. Part of the TV middleware client library. */
#pragma once

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Types of outputs, which have a volume and a mute state each. Functions without a type act on the
 * speaker.
 */
enum { VOLCTRL_TYPE_SPEAKER = 0, VOLCTRL_TYPE_HEADPHONE = 1, VOLCTRL_TYPE_AUDIO_DESCRIPTION = 2, VOLCTRL_TYPE_LINE_OUT = 3, VOLCTRL_TYPE_COUNT = 4 };
/** A volume is 0 to VOLCTRL_MAX. Mute and volume do not affect each other. */
enum { VOLCTRL_MAX = 100, VOLCTRL_STEP = 1 };

/*
 * The incr, decr and get functions return the volume (getMute_by_type 0 or 1), the set functions 0;
 * all return a negative code for an unknown type.
 */
int32_t a_qortvapi_volctrl_incrVolume(void);
int32_t a_qortvapi_volctrl_incrVolume_by_type(int32_t i4_type);
int32_t a_qortvapi_volctrl_decrVolume(void);
int32_t a_qortvapi_volctrl_decrVolume_by_type(int32_t i4_type);
int32_t a_qortvapi_volctrl_setVolume(int16_t i2_volume);
int32_t a_qortvapi_volctrl_setVolume_by_type(int32_t i4_type, int16_t i2_volume);
int32_t a_qortvapi_volctrl_getVolume(void);
int32_t a_qortvapi_volctrl_getVolume_by_type(int32_t i4_type);
int32_t a_qortvapi_volctrl_setMute(bool b_mute);
int32_t a_qortvapi_volctrl_setMute_by_type(int32_t i4_type, bool b_mute);
int32_t a_qortvapi_volctrl_getMute_by_type(int32_t i4_type);

#ifdef __cplusplus
}
#endif
