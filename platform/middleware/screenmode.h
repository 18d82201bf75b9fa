/** Screen mode, zoom and overscan. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Screen modes: how a picture fills the screen. */
enum { SCREEN_MODE_AUTO = 0, SCREEN_MODE_NORMAL = 1, SCREEN_MODE_WIDE = 2, SCREEN_MODE_ZOOM = 3, SCREEN_MODE_LETTERBOX = 4, SCREEN_MODE_DOT_BY_DOT = 5, SCREEN_MODE_COUNT = 6 };
/** The most that can be cut off at each edge, in thousandths of the picture's height or width. */
enum { OVERSCAN_MAX = 200 };

/*
 * get_all_screen_mode writes at most `*pui4_count` modes and then the number written there; without
 * an array it writes the number of all modes there. An overscan is kept until the television stops;
 * update_overscan_ini stores it for the next start. zoom_is_enable returns 1 while a picture plays,
 * otherwise 0.
 */
int32_t a_qortvapi_screenmode_get_screen_mode(void);
int32_t a_qortvapi_screenmode_set_screen_mode(uint16_t ui2_screen_mode);
int32_t a_qortvapi_screenmode_get_all_screen_mode(uint16_t* pui2_modes, uint32_t* pui4_count);
int32_t a_qortvapi_screenmode_get_number_screen_mode(uint32_t* pui4_count);
int32_t a_qortvapi_zoom_is_enable(void);
int32_t a_qortvapi_screenmode_set_crnt_overscan(uint32_t ui4_top, uint32_t ui4_bottom, uint32_t ui4_left, uint32_t ui4_right);
int32_t a_qortvapi_screenmode_get_crnt_overscan(uint32_t* pui4_top, uint32_t* pui4_bottom, uint32_t* pui4_left, uint32_t* pui4_right);
int32_t a_qortvapi_screenmode_update_overscan_ini(void);

#ifdef __cplusplus
}
#endif
