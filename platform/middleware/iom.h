/** Input and output manager: remote controls, front panel and similar devices. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A device reports `ui4_length` bytes, which live for the call. */
typedef void (*c_iom_nfy_fct)(void* pv_tag, uint32_t ui4_cond, const uint8_t* pui1_data, uint32_t ui4_length);

#ifdef __cplusplus
}
#endif
