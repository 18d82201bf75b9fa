/** Configuration items. Part of the TV middleware client library. */
#pragma once

#include <assert.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Notification codes: the value of an item changed that add_value_changed_callback was called for,
 * whoever changed it. pv_arg1: CRC-32 of the key, as in zip files; pv_arg2: group; pv_arg3: value,
 * as 32 bits, 0 for a text; pv_arg4: the update flag or option of the call that changed it, 0 if
 * there was no call.
 */
enum { CONFIG_NFY_VALUE_CHANGED = 1 };

/**
 * Groups of items. The keys are listed in docs/configuration.md: lower-case words separated by
 * dots, of which the first names the group. A function with a group argument looks for the key in
 * that group only, otherwise TV_NOT_FOUND. An item is a number (also a switch or a choice) or a
 * text: a function for the other kind returns TV_NOT_SUPPORTED. Values are kept over a restart.
 */
enum { CONFIG_GROUP_GENERAL = 0, CONFIG_GROUP_PICTURE = 1, CONFIG_GROUP_SOUND = 2, CONFIG_GROUP_SETUP = 3, CONFIG_GROUP_LOCK = 4 };

/** The resolution of the current picture. */
typedef struct CONFIG_VIDEO_RESOLUTION_T {
    uint32_t ui4_width;
    uint32_t ui4_height;
    uint32_t ui4_frame_rate;      /**< thousandths of a frame per second */
    uint8_t ui1_interlaced;
    uint8_t ui1_valid;            /**< 0 without a picture */
    uint8_t aui1_reserved[2];
    char s_text[64];              /**< such as "1920x1080i" */
    uint8_t aui1_more[52];
} CONFIG_VIDEO_RESOLUTION_T;

/** A configuration item changed. */
typedef void (*a_qortvapi_config_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_config_reg_callback(a_qortvapi_config_nfy_fct pf_callback, void* pv_tag);

/* Numbers. TV_INVALID_ARGUMENT for a value out of range. */
/* Writes the minimum in the lower and the maximum in the upper 16 bits, both signed. */
int32_t a_qortvapi_config_get_minmaxvalue(int16_t i2_group, const char* ps_key, int32_t* pi4_min_max);
int32_t a_qortvapi_config_get_value(int16_t i2_group, const char* ps_key, int32_t* pi4_value);
int32_t a_qortvapi_config_set_value(int16_t i2_group, const char* ps_key, int32_t i4_value, int16_t i2_update_flag);
/* The same as set_value: an item has one value for all inputs and modes. */
int32_t a_qortvapi_config_set_value_for_all_elems(int16_t i2_group, const char* ps_key, int32_t i4_value, int16_t i2_update_flag);
/*
 * Returns 1 or 0: whether a menu shows the item; whether it lets the viewer change it. Values can
 * be set in either case.
 */
int32_t a_qortvapi_config_is_visible(int16_t i2_group, const char* ps_key);
int32_t a_qortvapi_config_is_enabled(int16_t i2_group, const char* ps_key);
/* Sets all items of the group to their defaults, except those that no menu ever shows. */
int32_t a_qortvapi_config_reset_values(int16_t i2_group);

/* Texts. */
/*
 * pui4_length: in, the size of pc_value; out, the length of the text without its NUL. A text that
 * does not fit is cut.
 */
int32_t a_qortvapi_config_get_str_value(const char* ps_key, char* pc_value, uint32_t* pui4_length);
/*
 * An empty text sets the default. _ex: the option is passed on with the notification of the change.
 */
int32_t a_qortvapi_config_set_str_value(const char* ps_key, const char* ps_value);
int32_t a_qortvapi_config_set_str_value_ex(const char* ps_key, const char* ps_value, uint32_t ui4_option);

/*
 * Notifications of changes, until the television stops. Registrations are counted: each has to be
 * removed; TV_NOT_FOUND if there is none.
 */
int32_t a_qortvapi_config_add_value_changed_callback(const char* ps_key);
int32_t a_qortvapi_config_remove_value_changed_callback(const char* ps_key);

/* The choices of an item; the television as a whole. */
/*
 * The names of the values that a switch or choice can have, separated by commas; none while it is
 * not enabled. pui4_length as for get_str_value; pui4_count: the number of names written, none of
 * them cut.
 */
int32_t a_qortvapi_config_get_items_enabled(int16_t i2_group, const char* ps_key, char* pc_items, uint32_t* pui4_length, uint32_t* pui4_count);
/* Stored as general.android_country and general.android_language, which must not be negative. */
int32_t a_qortvapi_config_set_android_world_info(int16_t i2_country, int16_t i2_language);
/* For the main window. */
int32_t a_qortvapi_config_get_video_resolution(CONFIG_VIDEO_RESOLUTION_T* pt_resolution);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(CONFIG_VIDEO_RESOLUTION_T) == 132, "video resolution");
