/** Screen-saver messages such as "no signal". Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Messages that are shown while there is no picture. */
enum { SCREENSAVER_MSG_NONE = 0, SCREENSAVER_MSG_NO_SIGNAL = 1, SCREENSAVER_MSG_RADIO = 2 };
/** A message is to be shown or removed. */
typedef void (*a_qortvapi_screensaver_msg_nfy_fct)(int32_t i4_msg_id, void* pv_tag, int32_t i4_arg1, int32_t i4_arg2, int32_t i4_arg3);
int32_t a_qortvapi_screensaver_register_msg_callback(a_qortvapi_screensaver_msg_nfy_fct pf_callback, void* pv_tag);

int32_t a_qortvapi_screensaver_get_msgID(void);

#ifdef __cplusplus
}
#endif
