/**
 * The customisation library vendor.corvanta.tv.qortvapicustom@1.0-impl, by which the maker of a
 * television customises the service.
 */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Returns the debug level. The service writes debug lines unless its low byte is 0. Called once,
 * before any interface is created.
 */
uint32_t hh_init_debug_level(void);
/**
 * The start-up of the library, called after the last interface is registered. The result is
 * ignored.
 */
int32_t hh_qortvapi_tvapi_custom_init(void);

#ifdef __cplusplus
}
#endif
