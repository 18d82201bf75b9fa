/** Broadcast channels: selection and tuning. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Codes of broadcast channels. Another channel was selected; pv_arg1: channel id; pv_arg2: 0 main window, 1 sub window; pv_arg3: list id; pv_arg4: 0. */
enum { BROADCAST_NFY_CHANNEL_CHANGED = 1 };

/** Tuning, channel change or signal state. */
typedef void (*a_qortvapi_broadcast_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_broadcast_register_callback(a_qortvapi_broadcast_nfy_fct pf_callback, void* pv_tag);

#ifdef __cplusplus
}
#endif
