/**
 * Conditional access: the Common Interface module (CAM), its dialogues (MMI), its keys. Part of the
 * TV middleware client library.
 *
 * Texts are UTF-16. The length of a text counts units of two bytes, any other length bytes.
 * Functions return 0 or a negative code of middleware/result_codes.h.
 */
#pragma once

#include <assert.h>
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Types of ci_get that have a name. All but SLOT_STATE and MMI_STATE need a module. */
enum {
    QORTVAPI_CI_GET_TYPE_CAM_NAME = 0,     /**< a text; without a buffer only its length is written */
    QORTVAPI_CI_GET_TYPE_SLOT_STATE = 1,   /**< a byte: CI_SLOT_STATE_... */
    QORTVAPI_CI_GET_TYPE_MMI_STATE = 2,    /**< a CI_MMI_STATE_T: the question that the module waits for an answer to */
    QORTVAPI_CI_GET_TYPE_PIN_TRIES = 13,   /**< a byte: wrong PINs that the module still accepts; 0 if it is locked */
    QORTVAPI_CI_GET_TYPE_PROFILE_NAME = 15, /**< a text of at most 100 units, whatever length is passed */
    QORTVAPI_CI_GET_TYPE_QUERY_BLOCK = 16, /**< 12 bytes, which hold the query before the call */
    QORTVAPI_CI_GET_TYPE_CAM_ID = 18,      /**< 8 bytes */
    QORTVAPI_CI_GET_TYPE_LANG_CODE = 20,   /**< three letters */
    QORTVAPI_CI_GET_TYPE_CAM_PIN_CODE = 29 /**< a CI_CAM_PIN_CODE_T; not written until the right PIN was entered */
};

/** States of the slot. */
enum {
    CI_SLOT_STATE_EMPTY = 0,
    CI_SLOT_STATE_READY = 1,    /**< a module that can be used */
    CI_SLOT_STATE_UPGRADING = 2 /**< a module that installs new firmware, and opens no dialogue meanwhile */
};

/** Types of ci_set that have a name. */
enum {
    QORTVAPI_CI_SET_TYPE_MMI_ENTER = 0,       /**< no data: opens the module's main menu, also during another dialogue */
    QORTVAPI_CI_SET_TYPE_MMI_CLOSE = 1,       /**< no data: ends the dialogue */
    QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS = 2,     /**< a CI_MMI_ENQ_ANS_T */
    QORTVAPI_CI_SET_TYPE_MMI_MENU_ANS = 3,    /**< a CI_MMI_MENU_ANS_T */
    QORTVAPI_CI_SET_TYPE_PIN_CMD = 34,        /**< the module's PIN: digits and a NUL; the module replies with PIN_REPLY */
    QORTVAPI_CI_SET_TYPE_SAS_DTID_EVENT = 40, /**< a word of 32 bits */
    QORTVAPI_CI_SET_TYPE_HDS_CONFIRM = 47,    /**< no data: the answer is in ui4_info */
    QORTVAPI_CI_SET_TYPE_NAV_CAM_SCAN = 80    /**< a flag, passed by value in place of the pointer */
};

/**
 * Conditions that have a name. "A value" is a number that is passed in place of the data pointer.
 */
enum {
    QORTVAPI_CI_NFY_COND_CARD_INSERT = 0,                /**< a value: CI_CARD_... */
    QORTVAPI_CI_NFY_COND_MMI_ENQUIRY = 3,                /**< a CI_MMI_ENQ_T */
    QORTVAPI_CI_NFY_COND_MMI_MENU = 4,                   /**< a CI_MMI_MENU_T */
    QORTVAPI_CI_NFY_COND_MMI_LIST = 5,                   /**< a CI_MMI_MENU_T */
    QORTVAPI_CI_NFY_COND_MMI_CLOSE = 6,                  /**< a CI_MMI_ENQ_CLOSE_T */
    QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE = 15,          /**< 4 bytes: the version that the module begins to install */
    QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE_PROGRESS = 16, /**< 2 bytes: per cent */
    QORTVAPI_CI_NFY_COND_ERROR = 23,                     /**< a CI_ERROR_T */
    QORTVAPI_CI_NFY_COND_PIN_REPLY = 42,                 /**< a value: CI_PIN_STATE_... */
    QORTVAPI_NAV_CI_BEFORE_SVC_CHANGE_SILENTLY = 61,     /**< nothing */
    QORTVAPI_NAV_CI_BEFORE_SVC_CHANGE = 62,              /**< nothing */
    QORTVAPI_CI_NFY_COND_HDS_REQUEST = 66                /**< a value: the command */
};

/** Values of CARD_INSERT. A module that is in the slot already is notified on registration. */
enum { CI_CARD_REMOVED = 0, CI_CARD_INSERTED = 1 };

/**
 * Values of PIN_REPLY. The reply to the PIN that uses up the last try, and to every later one, is
 * LOCKED.
 */
enum { CI_PIN_STATE_WRONG = 0, CI_PIN_STATE_RIGHT = 1, CI_PIN_STATE_LOCKED = 2 };

/**
 * The name of a value of one byte for a_qortvapi_util_set, with any kind: 0 removes the module from
 * the slot, 1 inserts it again. The value is not stored.
 */
#define CI_SLOT_UTIL_NAME "cam_slot"

/** The most items that a menu can have. */
enum { CI_MMI_MENU_MAX_ITEMS = 64 };

/** Kinds of questions in a dialogue. */
enum { CI_MMI_KIND_NONE = 0, CI_MMI_KIND_MENU = 1, CI_MMI_KIND_LIST = 2, CI_MMI_KIND_ENQUIRY = 3 };

/** The open question, for applications that start in the middle of a dialogue. */
typedef struct CI_MMI_STATE_T {
    uint32_t ui4_id;           /**< 0 without a dialogue */
    uint8_t ui1_kind;          /**< CI_MMI_KIND_... */
    uint8_t ui1_item_count;    /**< of a menu or list */
    uint8_t ui1_answer_length; /**< of an enquiry */
    uint8_t b_blind_answer;    /**< of an enquiry */
} CI_MMI_STATE_T;

/** Answers to an enquiry. */
enum { CI_MMI_ENQ_CANCELLED = 0, CI_MMI_ENQ_ANSWERED = 1 };

/** The answer to a menu or list that goes back one step; items count from 1. */
enum { CI_MMI_MENU_BACK = 0 };

/**
 * The viewer's answer to an enquiry. The text belongs to the caller. Its size is not passed: it
 * ends with a zero unit, or with the answer length of the enquiry. Null is an empty text.
 */
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

/** Pointers to where the PIN is written: four digits, and whether they are valid. */
typedef struct CI_CAM_PIN_CODE_T {
    uint8_t* pui1_valid;
    uint16_t* pui2_pin_code;
} CI_CAM_PIN_CODE_T;

/**
 * An enquiry. Texts here and in a menu end with a zero unit and may be null; they are valid during
 * the notification.
 */
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

/** Who ended a dialogue. */
enum { CI_MMI_CLOSE_BY_MODULE = 0, CI_MMI_CLOSE_BY_HOST = 1, CI_MMI_CLOSE_REMOVED = 2 };

/** The end of a dialogue: CI_MMI_CLOSE_..., and a byte of 0. */
typedef struct CI_MMI_ENQ_CLOSE_T {
    uint8_t aui1_data[2];
} CI_MMI_ENQ_CLOSE_T;

/** Errors of the module. */
enum {
    CI_ERROR_UNUSABLE_MODULE = 1, /**< the module that was inserted cannot be used; value 0 */
    CI_ERROR_UPGRADE_BROKEN = 2   /**< the module was removed during an upgrade; value: its progress in per cent */
};

/** An error of the module. */
typedef struct CI_ERROR_T {
    uint32_t ui4_error; /**< CI_ERROR_... */
    uint32_t ui4_value;
} CI_ERROR_T;

/** The module reports a condition. */
typedef void (*a_qortvapi_ci_nfy_fct)(uint32_t h_ci, void* pv_tag, int32_t i4_cond, void* pv_data);
/**
 * Registers a handler and writes the handle of the registration, above 0. The same handler under
 * the same number gets the new tag and keeps its handle.
 */
int32_t a_qortvapi_ci_reg_cb(uint32_t* ph_ci, uint32_t ui4_number, uint32_t ui4_tag, a_qortvapi_ci_nfy_fct pf_callback);

/**
 * pui4_length: in, the size of the buffer; out, the length that was written. A text is cut to fit;
 * any other data need a buffer of their size. TV_NOT_FOUND without a module.
 */
int32_t a_qortvapi_ci_get(uint32_t ui4_type, uint32_t ui4_info, void* pv_data, uint32_t* pui4_length);
/** TV_NOT_FOUND without a module, and for an answer to a question that is not open. */
int32_t a_qortvapi_ci_set(uint32_t ui4_type, uint32_t ui4_info, const void* pv_data);
/**
 * The size of the buffer is not passed and may be a single byte, so the text is always empty. The
 * value is 1 if the module has a main menu.
 */
int32_t a_qortvapi_ci_get_virtual_channel_info(char* pc_info, uint32_t* pui4_value);

/**
 * The host's CI+ keys, at most CI_KEY_COUNT of CI_KEY_SIZE bytes each. They are kept over a restart
 * and need no module. A key that was written waits until an update stores it under a number (0 if
 * the function has no number). activate puts all stored keys into use. A stored key cannot be read.
 */
enum { CI_KEY_SIZE = 64, CI_KEY_COUNT = 16, CI_KEY_AREA_SIZE = 1024 };

/** The information of key_query about a key. */
typedef struct CI_KEY_INFO_T {
    uint8_t b_exists;
    uint8_t b_active;
    uint16_t ui2_size;
    uint32_t ui4_checksum; /**< FNV-1a of the key's bytes, 32 bits */
} CI_KEY_INFO_T;

int32_t a_qortvapi_ci_key_erase(void);
/**
 * pui1_length: in, the size of the buffer; out, the length of the id. TV_INVALID_ARGUMENT, and
 * nothing is written, if the buffer is too small.
 */
int32_t a_qortvapi_ci_key_get_host_id(uint8_t* pui1_host_id, uint8_t* pui1_length);
/** Fills CI_KEY_AREA_SIZE bytes: a CI_KEY_INFO_T for each number, then zeros. */
int32_t a_qortvapi_ci_key_query(uint16_t* pui2_area);
/** Whether there is any key. */
int32_t a_qortvapi_ci_key_query_exist(uint8_t* pb_exists);
int32_t a_qortvapi_ci_key_query_exist_ex(uint32_t ui4_key, uint8_t* pb_exists);
/** TV_NOT_FOUND if no key was written. */
int32_t a_qortvapi_ci_key_update(void);
/** Reads the key from a file, which must have exactly CI_KEY_SIZE bytes. */
int32_t a_qortvapi_ci_key_update_with_path(const char* ps_path);
int32_t a_qortvapi_ci_key_update_with_path_ex(const char* ps_path, uint32_t ui4_key);
int32_t a_qortvapi_ci_key_update_ex(uint32_t ui4_key);
/**
 * TV_INVALID_ARGUMENT unless ui4_length is CI_KEY_SIZE. As many bytes are read, which the caller
 * must provide.
 */
int32_t a_qortvapi_ci_key_write(const uint8_t* pui1_key, uint32_t ui4_length);
/** TV_NOT_FOUND if there is no key. */
int32_t a_qortvapi_ci_key_activate(void);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(CI_MMI_MENU_ANS_T) == 8, "ci record");
static_assert(sizeof(CI_MMI_STATE_T) == 8, "ci record");
static_assert(sizeof(CI_MMI_ENQ_CLOSE_T) == 2, "ci record");
static_assert(sizeof(CI_ERROR_T) == 8, "ci record");
static_assert(sizeof(CI_KEY_INFO_T) == 8, "ci record");

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
