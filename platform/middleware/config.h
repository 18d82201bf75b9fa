/** Configuration items. Part of the TV middleware client library. */
#pragma once

#include <assert.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Codes of configuration: the value of an item changed. pv_arg1: CRC-32 of the key, as in zip files; pv_arg2: group; pv_arg3: value; pv_arg4: update flag. */
enum { CONFIG_NFY_VALUE_CHANGED = 1 };

/** Groups of items. */
enum { CONFIG_GROUP_GENERAL = 0, CONFIG_GROUP_PICTURE = 1, CONFIG_GROUP_SOUND = 2, CONFIG_GROUP_SETUP = 3, CONFIG_GROUP_LOCK = 4 };

/** The picture that is shown. */
typedef struct CONFIG_VIDEO_RESOLUTION_T {
    uint32_t ui4_width;
    uint32_t ui4_height;
    uint32_t ui4_frame_rate;      /**< thousandths a second */
    uint8_t ui1_interlaced;
    uint8_t ui1_valid;            /**< 0 without a picture */
    uint8_t aui1_reserved[2];
    char s_text[64];              /**< such as "1920x1080i" */
    uint8_t aui1_more[52];
} CONFIG_VIDEO_RESOLUTION_T;

/** A configuration item changed. */
typedef void (*a_qortvapi_config_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_config_reg_callback(a_qortvapi_config_nfy_fct pf_callback, void* pv_tag);

/* Numbers. */
int32_t a_qortvapi_config_get_minmaxvalue(int16_t i2_group, const char* ps_key, int32_t* pi4_min_max);
int32_t a_qortvapi_config_get_value(int16_t i2_group, const char* ps_key, int32_t* pi4_value);
int32_t a_qortvapi_config_set_value(int16_t i2_group, const char* ps_key, int32_t i4_value, int16_t i2_update_flag);
int32_t a_qortvapi_config_set_value_for_all_elems(int16_t i2_group, const char* ps_key, int32_t i4_value, int16_t i2_update_flag);
int32_t a_qortvapi_config_is_visible(int16_t i2_group, const char* ps_key);
int32_t a_qortvapi_config_is_enabled(int16_t i2_group, const char* ps_key);
int32_t a_qortvapi_config_reset_values(int16_t i2_group);

/* Texts. */
/* pui4_length: the room in pc_value before, what was written after. */
int32_t a_qortvapi_config_get_str_value(const char* ps_key, char* pc_value, uint32_t* pui4_length);
int32_t a_qortvapi_config_set_str_value(const char* ps_key, const char* ps_value);
int32_t a_qortvapi_config_set_str_value_ex(const char* ps_key, const char* ps_value, uint32_t ui4_option);

/* Reports of changes. */
int32_t a_qortvapi_config_add_value_changed_callback(const char* ps_key);
int32_t a_qortvapi_config_remove_value_changed_callback(const char* ps_key);

/* Choices and the set. */
/* pui4_length as for get_str_value. */
int32_t a_qortvapi_config_get_items_enabled(int16_t i2_group, const char* ps_key, char* pc_items, uint32_t* pui4_length, uint32_t* pui4_count);
int32_t a_qortvapi_config_set_android_world_info(int16_t i2_country, int16_t i2_language);
int32_t a_qortvapi_config_get_video_resolution(CONFIG_VIDEO_RESOLUTION_T* pt_resolution);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(CONFIG_VIDEO_RESOLUTION_T) == 132, "video resolution");
