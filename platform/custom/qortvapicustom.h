/** The customisation library vendor.corvanta.tv.qortvapicustom@1.0-impl: what a set's maker decides about the service. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The debug level; the service looks at its low byte and writes debug lines unless that is 0. Called once, before anything is created. */
uint32_t hh_init_debug_level(void);
/** The library's own start-up, after the last interface is registered. The result is not looked at. */
int32_t hh_qortvapi_tvapi_custom_init(void);

#ifdef __cplusplus
}
#endif
