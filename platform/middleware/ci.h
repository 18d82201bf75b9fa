/**
 * Conditional access: the Common Interface module (CAM), its dialogues (MMI), its keys. Part of the
 * TV middleware client library.
 *
 * Texts are UTF-16. Lengths of texts count units of two bytes, all others bytes. Functions return 0
 * or a negative code of middleware/result_codes.h.
 */
#pragma once

#include <assert.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** What ci_get reads, as far as it has a name. */
enum {
    QORTVAPI_CI_GET_TYPE_CAM_NAME = 0,     /**< a text; without a buffer only its length is answered */
    QORTVAPI_CI_GET_TYPE_PROFILE_NAME = 15, /**< a text of at most 100 units, whatever length is passed */
    QORTVAPI_CI_GET_TYPE_QUERY_BLOCK = 16, /**< 12 bytes, which hold the question before */
    QORTVAPI_CI_GET_TYPE_CAM_ID = 18,      /**< 8 bytes */
    QORTVAPI_CI_GET_TYPE_LANG_CODE = 20,   /**< three letters */
    QORTVAPI_CI_GET_TYPE_CAM_PIN_CODE = 29 /**< a CI_CAM_PIN_CODE_T */
};

/** What ci_set does, as far as it has a name. */
enum {
    QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS = 2,     /**< a CI_MMI_ENQ_ANS_T */
    QORTVAPI_CI_SET_TYPE_MMI_MENU_ANS = 3,    /**< a CI_MMI_MENU_ANS_T */
    QORTVAPI_CI_SET_TYPE_PIN_CMD = 34,        /**< a text of characters, ended by a NUL */
    QORTVAPI_CI_SET_TYPE_SAS_DTID_EVENT = 40, /**< a word of 32 bits */
    QORTVAPI_CI_SET_TYPE_HDS_CONFIRM = 47,    /**< no data: the answer is the information word */
    QORTVAPI_CI_SET_TYPE_NAV_CAM_SCAN = 80    /**< a flag, passed by value in the place of the pointer */
};

/** Conditions that have a name. Those of a value have it in the place of the data pointer. */
enum {
    QORTVAPI_CI_NFY_COND_CARD_INSERT = 0,                /**< a value */
    QORTVAPI_CI_NFY_COND_MMI_ENQUIRY = 3,                /**< a CI_MMI_ENQ_T */
    QORTVAPI_CI_NFY_COND_MMI_MENU = 4,                   /**< a CI_MMI_MENU_T */
    QORTVAPI_CI_NFY_COND_MMI_LIST = 5,                   /**< a CI_MMI_MENU_T */
    QORTVAPI_CI_NFY_COND_MMI_CLOSE = 6,                  /**< a CI_MMI_ENQ_CLOSE_T */
    QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE = 15,          /**< 4 bytes */
    QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE_PROGRESS = 16, /**< 2 bytes */
    QORTVAPI_CI_NFY_COND_ERROR = 23,                     /**< 8 bytes */
    QORTVAPI_CI_NFY_COND_PIN_REPLY = 42,                 /**< a value: the state of the PIN */
    QORTVAPI_NAV_CI_BEFORE_SVC_CHANGE_SILENTLY = 61,     /**< nothing */
    QORTVAPI_NAV_CI_BEFORE_SVC_CHANGE = 62,              /**< nothing */
    QORTVAPI_CI_NFY_COND_HDS_REQUEST = 66                /**< a value: the command */
};

/** Items that a menu has at most. */
enum { CI_MMI_MENU_MAX_ITEMS = 64 };

/** The viewer's answer to an enquiry. The text is the caller's; its terminator is optional. */
typedef struct CI_MMI_ENQ_ANS_T {
    uint32_t ui4_id;
    uint8_t ui1_answer;
    const uint16_t* w2s_text;
} CI_MMI_ENQ_ANS_T;

/** The viewer's choice from a menu or list. */
typedef struct CI_MMI_MENU_ANS_T {
    uint32_t ui4_id;
    uint8_t ui1_answer;
    uint8_t aui1_pad[3];
} CI_MMI_MENU_ANS_T;

/** Where a read of the PIN goes: four digits, and whether they are valid. */
typedef struct CI_CAM_PIN_CODE_T {
    uint8_t* pui1_valid;
    uint16_t* pui2_pin_code;
} CI_CAM_PIN_CODE_T;

/** An enquiry. Texts here and in a menu end with a zero unit and may be null; they are valid during the notification. */
typedef struct CI_MMI_ENQ_T {
    uint32_t ui4_id;
    uint8_t ui1_answer_length;
    uint8_t b_blind_answer;
    const uint16_t* w2s_text;
    uint8_t b_path_valid;
    uint8_t ui1_path_id;
} CI_MMI_ENQ_T;

/** A menu or list. */
typedef struct CI_MMI_MENU_T {
    uint32_t ui4_id;
    const uint16_t* w2s_title;
    const uint16_t* w2s_subtitle;
    const uint16_t* w2s_bottom;
    uint8_t ui1_item_count;
    const uint16_t* aw2s_items[CI_MMI_MENU_MAX_ITEMS];
    uint32_t ui4_reserved;
    uint8_t b_path_valid;
    uint8_t ui1_path_id;
} CI_MMI_MENU_T;

/** A dialogue is over. */
typedef struct CI_MMI_ENQ_CLOSE_T {
    uint8_t aui1_data[2];
} CI_MMI_ENQ_CLOSE_T;

/** The module reports a condition. */
typedef void (*a_qortvapi_ci_nfy_fct)(uint32_t h_ci, void* pv_tag, int32_t i4_cond, void* pv_data);
/** Registers a handler and writes the handle of the registration. */
int32_t a_qortvapi_ci_reg_cb(uint32_t* ph_ci, uint32_t ui4_number, uint32_t ui4_tag, a_qortvapi_ci_nfy_fct pf_callback);

/* pui4_length: what the buffer holds before, what was written after. */
int32_t a_qortvapi_ci_get(uint32_t ui4_type, uint32_t ui4_info, void* pv_data, uint32_t* pui4_length);
int32_t a_qortvapi_ci_set(uint32_t ui4_type, uint32_t ui4_info, const void* pv_data);
/* The buffer's size is agreed between caller and module. */
int32_t a_qortvapi_ci_get_virtual_channel_info(char* pc_info, uint32_t* pui4_value);

/* The host's CI+ keys. key_query fills 1024 bytes. */
int32_t a_qortvapi_ci_key_erase(void);
int32_t a_qortvapi_ci_key_get_host_id(uint8_t* pui1_host_id, uint8_t* pui1_length);
int32_t a_qortvapi_ci_key_query(uint16_t* pui2_area);
int32_t a_qortvapi_ci_key_query_exist(bool* pb_exists);
int32_t a_qortvapi_ci_key_query_exist_ex(uint32_t ui4_key, bool* pb_exists);
int32_t a_qortvapi_ci_key_update(void);
int32_t a_qortvapi_ci_key_update_with_path(const char* ps_path);
int32_t a_qortvapi_ci_key_update_with_path_ex(const char* ps_path, uint32_t ui4_key);
int32_t a_qortvapi_ci_key_update_ex(uint32_t ui4_key);
int32_t a_qortvapi_ci_key_write(const uint8_t* pui1_key, uint32_t ui4_length);
int32_t a_qortvapi_ci_key_activate(void);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(CI_MMI_MENU_ANS_T) == 8, "ci record");
static_assert(sizeof(CI_MMI_ENQ_CLOSE_T) == 2, "ci record");

/* The module's own layouts, with pointers of four bytes. */
static_assert(sizeof(void*) != 4 || (offsetof(CI_MMI_ENQ_ANS_T, ui1_answer) == 4 && offsetof(CI_MMI_ENQ_ANS_T, w2s_text) == 8 && sizeof(CI_MMI_ENQ_ANS_T) == 12), "ci record");
static_assert(sizeof(void*) != 4 || (offsetof(CI_CAM_PIN_CODE_T, pui2_pin_code) == 4 && sizeof(CI_CAM_PIN_CODE_T) == 8), "ci record");
static_assert(sizeof(void*) != 4 || (offsetof(CI_MMI_ENQ_T, ui1_answer_length) == 4 && offsetof(CI_MMI_ENQ_T, b_blind_answer) == 5 && offsetof(CI_MMI_ENQ_T, w2s_text) == 8 && offsetof(CI_MMI_ENQ_T, b_path_valid) == 12 && offsetof(CI_MMI_ENQ_T, ui1_path_id) == 13), "ci record");
static_assert(sizeof(void*) != 4 || (offsetof(CI_MMI_MENU_T, w2s_title) == 4 && offsetof(CI_MMI_MENU_T, w2s_subtitle) == 8 && offsetof(CI_MMI_MENU_T, w2s_bottom) == 12 && offsetof(CI_MMI_MENU_T, ui1_item_count) == 16 && offsetof(CI_MMI_MENU_T, aw2s_items) == 20 && offsetof(CI_MMI_MENU_T, b_path_valid) == 280 && offsetof(CI_MMI_MENU_T, ui1_path_id) == 281), "ci record");
/* The natural ones of pointers of eight. */
static_assert(sizeof(void*) != 8 || (offsetof(CI_MMI_ENQ_ANS_T, ui1_answer) == 4 && offsetof(CI_MMI_ENQ_ANS_T, w2s_text) == 8 && sizeof(CI_MMI_ENQ_ANS_T) == 16), "ci record");
static_assert(sizeof(void*) != 8 || (offsetof(CI_CAM_PIN_CODE_T, pui2_pin_code) == 8 && sizeof(CI_CAM_PIN_CODE_T) == 16), "ci record");
static_assert(sizeof(void*) != 8 || (offsetof(CI_MMI_ENQ_T, ui1_answer_length) == 4 && offsetof(CI_MMI_ENQ_T, b_blind_answer) == 5 && offsetof(CI_MMI_ENQ_T, w2s_text) == 8 && offsetof(CI_MMI_ENQ_T, b_path_valid) == 16 && offsetof(CI_MMI_ENQ_T, ui1_path_id) == 17), "ci record");
static_assert(sizeof(void*) != 8 || (offsetof(CI_MMI_MENU_T, w2s_title) == 8 && offsetof(CI_MMI_MENU_T, w2s_subtitle) == 16 && offsetof(CI_MMI_MENU_T, w2s_bottom) == 24 && offsetof(CI_MMI_MENU_T, ui1_item_count) == 32 && offsetof(CI_MMI_MENU_T, aw2s_items) == 40 && offsetof(CI_MMI_MENU_T, b_path_valid) == 556 && offsetof(CI_MMI_MENU_T, ui1_path_id) == 557), "ci record");
