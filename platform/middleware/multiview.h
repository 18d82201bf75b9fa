/** Picture-and-picture: main and sub video, and which of them is heard. Part of the TV middleware client library. */
#pragma once

#include <assert.h>
#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Pictures on the screen. */
enum { MULTIVIEW_MODE_NORMAL = 0, MULTIVIEW_MODE_PIP = 1, MULTIVIEW_MODE_POP = 2 };

/** What has the focus. */
enum { MULTIVIEW_FOCUS_MAIN = 0, MULTIVIEW_FOCUS_SUB = 1 };

/** Where a video is on the screen, in pixels. */
typedef struct QORTVAPI_MULTIVIEW_REGION_T {
    uint32_t ui4_x;
    uint32_t ui4_y;
    uint32_t ui4_width;
    uint32_t ui4_height;
} QORTVAPI_MULTIVIEW_REGION_T;

int32_t a_qortvapi_multiview_getPOPTunerFocus(void);
int32_t a_qortvapi_multiview_setAudioFocusbySourceid(uint8_t ui1_source_id);
int32_t a_qortvapi_multiview_setAudioFocus(const char* ps_video_path);
int32_t a_qortvapi_multiview_getAudioFocus(void);
int32_t a_qortvapi_multiview_setNewTvMode(uint8_t ui1_mode);
int32_t a_qortvapi_multiview_is_source_available_bysourceidandpath(uint8_t ui1_source_id, const char* ps_video_path, uint8_t* pui1_available);
int32_t a_qortvapi_multiview_startMainVideo(uint8_t ui1_source_id, const QORTVAPI_MULTIVIEW_REGION_T* pt_region);
int32_t a_qortvapi_multiview_startSubVideo(uint8_t ui1_source_id, const QORTVAPI_MULTIVIEW_REGION_T* pt_region);
int32_t a_qortvapi_multiview_stopMainVideo(void);
int32_t a_qortvapi_multiview_stopSubVideo(void);
int32_t a_qortvapi_multiview_startVideoWithoutVideoPath(uint8_t ui1_source_id, const char* ps_video_path);
int32_t a_qortvapi_multiview_stopVideoWithoutVideoPath(const char* ps_video_path);
int32_t a_qortvapi_multiview_getVideoResource(const char* ps_video_path);
int32_t a_qortvapi_multiview_setChgSource(bool b_changing);
int32_t a_qortvapi_multiview_getChgSource(void);
int32_t a_qortvapi_multiview_get_video_state(const char* ps_video_path);
int32_t a_qortvapi_multiview_set_video_state(const char* ps_video_path, bool b_playing);
int32_t a_qortvapi_multiview_only_chg_focus(const char* ps_video_path);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(QORTVAPI_MULTIVIEW_REGION_T) == 16, "multiview region");
