/** Bring-up of the middleware client in this process. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Starts the operating-system layer. `pv_parameter` may be null. Returns 0, or a negative code. */
int32_t x_rtos_init(const void* pv_parameter);
/**
 * Provides for `ui4_handles` handles. The address and size of the memory that the client works in
 * are in and out: it may be moved. Returns 0, or a negative code.
 */
int32_t handle_init(uint32_t ui4_handles, void** ppv_memory, uint32_t* pui4_size);
/**
 * Starts the client's operating-system services in the memory that `handle_init` wrote. Returns 0,
 * or a negative code.
 */
int32_t os_init(void* pv_memory, uint32_t ui4_size);

#ifdef __cplusplus
}
#endif
