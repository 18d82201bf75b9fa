/** Video of the current service. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Notification codes. pv_arg1: channel id; pv_arg2: width; pv_arg3: height; pv_arg4: 1 if
 * progressive; pv_arg5: frame rate in thousandths; pv_arg6: 0. Without a picture all but the
 * channel id are 0.
 */
enum { VIDEOINFO_NFY_FORMAT_CHANGED = 1 };
/** Ids of values, which can only be read. */
enum { VIDEOINFO_VALUE_WIDTH = 1, VIDEOINFO_VALUE_HEIGHT = 2, VIDEOINFO_VALUE_FRAME_RATE = 3, VIDEOINFO_VALUE_PROGRESSIVE = 4, VIDEOINFO_VALUE_STREAM_TYPE = 5, VIDEOINFO_VALUE_PID = 6 };
/** Format, resolution or state of the video changed. */
typedef void (*a_qortvapi_videoinfo_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4, void* pv_arg5, void* pv_arg6);
int32_t a_qortvapi_videoinfo_reg_common_nfy(a_qortvapi_videoinfo_nfy_fct pf_callback, void* pv_tag);

int32_t a_qortvapi_videoinfo_set_value(uint32_t ui4_id, uint32_t ui4_value);
int32_t a_qortvapi_videoinfo_get_value(uint32_t ui4_id, uint32_t* pui4_value);
int32_t a_qortvapi_videoinfo_set_data(uint32_t ui4_id, const void* pv_data, uint32_t ui4_size);
int32_t a_qortvapi_videoinfo_get_data(uint32_t ui4_id, void* pv_data, uint32_t ui4_size);

#ifdef __cplusplus
}
#endif
