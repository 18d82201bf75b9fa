/**
 * The part of the hardware abstraction library that serves HDMI-CEC's enhanced audio return channel
 * (eARC). Functions return 0, or the library's own code for a failure.
 */
#pragma once

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Initialises the library. May be called again. */
int32_t QRAL_Init(void);

/** Writes 1 if the television supports eARC. */
int32_t QRCEC_GetEARCCaps(uint32_t* pui4_caps);
int32_t QRCEC_SetEARCEnable(bool b_enabled);
/** Writes 1 if eARC is active on an HDMI port; ports count from 1. */
int32_t QRCEC_GetEARCStatus(int32_t i4_port, uint8_t* pui1_status);

#ifdef __cplusplus
}
#endif
