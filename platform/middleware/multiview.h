/**
 * Picture-and-picture: main and sub video, and which of them has the sound. Part of the TV
 * middleware client library.
 */
#pragma once

#include <assert.h>
#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Modes of the screen: one picture; picture-in-picture; picture-out-of-picture. */
enum { MULTIVIEW_MODE_NORMAL = 0, MULTIVIEW_MODE_PIP = 1, MULTIVIEW_MODE_POP = 2 };

/** The video that has the focus, of the keys or of the sound. */
enum { MULTIVIEW_FOCUS_MAIN = 0, MULTIVIEW_FOCUS_SUB = 1 };

/** Values of getVideoResource: the resource that a video uses. */
enum { MULTIVIEW_RESOURCE_NONE = 0, MULTIVIEW_RESOURCE_TUNER = 1, MULTIVIEW_RESOURCE_ANALOGUE = 2, MULTIVIEW_RESOURCE_DIGITAL = 3 };

/** The size of the screen for regions, in pixels. */
enum { MULTIVIEW_SCREEN_WIDTH = 1920, MULTIVIEW_SCREEN_HEIGHT = 1080 };

/**
 * The region of a video on the screen, in pixels. It must not be empty, and must be inside the
 * screen.
 */
typedef struct QORTVAPI_MULTIVIEW_REGION_T {
    uint32_t ui4_x;
    uint32_t ui4_y;
    uint32_t ui4_width;
    uint32_t ui4_height;
} QORTVAPI_MULTIVIEW_REGION_T;

/*
 * Sources and video paths are those of inputsource.h, and change by its rules, with priority 0. In
 * the normal mode there is no sub video: to start it or to give it a focus is TV_NOT_FOUND. A
 * change to the normal mode stops it and gives both foci to main. The television starts in the
 * normal mode.
 */
int32_t a_qortvapi_multiview_getPOPTunerFocus(void);
/* Gives both foci to the path that plays the source, main first; TV_NOT_FOUND if none plays it. */
int32_t a_qortvapi_multiview_setAudioFocusbySourceid(uint8_t ui1_source_id);
/* Gives both foci to the path. */
int32_t a_qortvapi_multiview_setAudioFocus(const char* ps_video_path);
int32_t a_qortvapi_multiview_getAudioFocus(void);
int32_t a_qortvapi_multiview_setNewTvMode(uint8_t ui1_mode);
int32_t a_qortvapi_multiview_is_source_available_bysourceidandpath(uint8_t ui1_source_id, const char* ps_video_path, uint8_t* pui1_available);
/* To stop a video that does not play is no failure. */
int32_t a_qortvapi_multiview_startMainVideo(uint8_t ui1_source_id, const QORTVAPI_MULTIVIEW_REGION_T* pt_region);
int32_t a_qortvapi_multiview_startSubVideo(uint8_t ui1_source_id, const QORTVAPI_MULTIVIEW_REGION_T* pt_region);
int32_t a_qortvapi_multiview_stopMainVideo(void);
int32_t a_qortvapi_multiview_stopSubVideo(void);
/* The region of the video does not change. */
int32_t a_qortvapi_multiview_startVideoWithoutVideoPath(uint8_t ui1_source_id, const char* ps_video_path);
int32_t a_qortvapi_multiview_stopVideoWithoutVideoPath(const char* ps_video_path);
/* MULTIVIEW_RESOURCE_…; NONE while nothing plays. */
int32_t a_qortvapi_multiview_getVideoResource(const char* ps_video_path);
/* A flag for applications: one of them is changing a source. */
int32_t a_qortvapi_multiview_setChgSource(bool b_changing);
int32_t a_qortvapi_multiview_getChgSource(void);
/* 1 while the path plays, otherwise 0. To set it to 1 starts the source of the path. */
int32_t a_qortvapi_multiview_get_video_state(const char* ps_video_path);
int32_t a_qortvapi_multiview_set_video_state(const char* ps_video_path, bool b_playing);
/* Changes the focus of the keys, not that of the sound. */
int32_t a_qortvapi_multiview_only_chg_focus(const char* ps_video_path);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(QORTVAPI_MULTIVIEW_REGION_T) == 16, "multiview region");
