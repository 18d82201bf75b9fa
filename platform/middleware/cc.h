/** Closed captions: ISDB, ATSC and analogue. Part of the TV middleware client library. */
#pragma once

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * The number of caption streams of each family. get_CCString returns the current stream, from 1, or
 * 0 while the family is off.
 */
enum { ISDBCC_STREAM_COUNT = 2, ATSCCC_STREAM_COUNT = 6, ANALOGCC_STREAM_COUNT = 8 };
int32_t a_qortvapi_isdbcc_enable(bool b_enable);
int32_t a_qortvapi_isdbcc_next_stream(void);
int32_t a_qortvapi_isdbcc_get_CCString(void);
int32_t a_qortvapi_atsccc_enable(bool b_enable);
int32_t a_qortvapi_atsccc_next_stream(void);
int32_t a_qortvapi_atsccc_get_CCString(void);
int32_t a_qortvapi_atsccc_set_visible(bool b_visible);
int32_t a_qortvapi_atsccc_demo_set(int32_t i4_item, int32_t i4_value);
int32_t a_qortvapi_analogcc_enable(bool b_enable);
int32_t a_qortvapi_analogcc_next_stream(void);
int32_t a_qortvapi_analogcc_get_CCString(void);
int32_t a_qortvapi_analogcc_set_visible(bool b_visible);

#ifdef __cplusplus
}
#endif
