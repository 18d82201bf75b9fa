/**
 * High-level TV control: start and stop, third-party applications, questions to the applications.
 * Part of the TV middleware client library.
 */
#pragma once

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Notification codes. pv_arg1: the mode. */
enum { HIGHLEVEL_NFY_MODE_CHANGED = 1 };
/** Modes of the television. */
enum { HIGHLEVEL_TV_MODE_STOPPED = 0, HIGHLEVEL_TV_MODE_TV = 1, HIGHLEVEL_TV_MODE_3RD_PARTY = 2 };
/** Market regions. */
enum { HIGHLEVEL_MARKET_REGION_EUROPE = 1 };

/**
 * Ids of the generic functions. They are for testing an application: each makes the television send
 * one of its questions to the applications. The question is sent on the television's thread; the
 * answer is read afterwards with the READ ids of a_qortvapi_highlevel_generic_function_ex.
 */
enum {
    HIGHLEVEL_GENERIC_ASK_APPLICATIONS = 0x100,    /**< asks the registered responser; param1: code, param2: attribute */
    HIGHLEVEL_GENERIC_ASK_MIME_TYPE = 0x101,       /**< asks the first registered MIME handler; param1: 0 "application/vnd.hbbtv.xhtml+xml", 1 "text/plain" */
    HIGHLEVEL_GENERIC_ACQUIRE_WAKE_LOCK = 0x102,   /**< asks for the wake lock HIGHLEVEL_WAKE_LOCK */
    HIGHLEVEL_GENERIC_RELEASE_WAKE_LOCK = 0x103,   /**< asks for its release */
    HIGHLEVEL_GENERIC_LAUNCH_HBBTV = 0x104,        /**< asks for HbbTV at "http://127.0.0.1/", index 0; param1: the argument */
    HIGHLEVEL_GENERIC_READ_ANSWER = 0x110,         /**< _ex: writes the number of answers so far to param1, the last result to param2, and its data to the data */
    HIGHLEVEL_GENERIC_READ_MIME_ANSWER = 0x111     /**< _ex: writes the number of MIME answers so far to param1, and the last one to param2 */
};
#define HIGHLEVEL_WAKE_LOCK "television"
/** The most bytes that the data of an answer can have. */
enum { HIGHLEVEL_ANSWER_MAX = 256 };
/** An event of TV control; the meaning of the arguments depends on the code. */
typedef void (*a_qortvapi_highlevel_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_highlevel_register_callback(a_qortvapi_highlevel_nfy_fct pf_callback, void* pv_tag);

/**
 * Asks the applications a question. The answer goes into `pui4_result` and, if it has data, into
 * `pv_buffer`, which holds `ui4_length` bytes.
 */
typedef void (*a_qortvapi_highlevel_android_responser_fct)(uint32_t ui4_code, void* pv_tag, uint32_t ui4_attribute, uint32_t* pui4_result, void* pv_buffer, uint32_t ui4_length);
int32_t a_qortvapi_highlevel_register_android_responser(a_qortvapi_highlevel_android_responser_fct pf_responser, void* pv_tag);

/** The record of the argument test. */
typedef struct QORTVAPI_HIGHLEVEL_STRUCTURE_TYPE_1 {
    uint32_t ui4_value1;
    uint32_t ui4_value2;
    uint32_t ui4_value3;
} QORTVAPI_HIGHLEVEL_STRUCTURE_TYPE_1;

int32_t a_qortvapi_highlevel_start_tv(void);
int32_t a_qortvapi_highlevel_stop_tv(void);
int32_t a_qortvapi_highlevel_generic_function(uint32_t ui4_id, uint32_t ui4_param1, uint32_t ui4_param2);
int32_t a_qortvapi_highlevel_argument_test(int32_t i4_arg1, int32_t i4_arg2, QORTVAPI_HIGHLEVEL_STRUCTURE_TYPE_1* pt_structure);
int32_t a_qortvapi_highlevel_launch_3rd_party(uint8_t ui1_window, bool b_keep_tv, uint32_t ui4_app);
int32_t a_qortvapi_highlevel_launch_internal_ap(uint8_t ui1_window, bool b_keep_tv, uint32_t ui4_app);
int32_t a_qortvapi_highlevel_launch_hbbtv(const char* ps_url, const char* ps_app_id, const char* ps_parameters);
int32_t a_qortvapi_highlevel_stop_all(void);
int32_t a_qortvapi_highlevel_stop_hbbtv(void);
int32_t a_qortvapi_highlevel_set_displayregion(int32_t i4_window, uint32_t ui4_x, uint32_t ui4_y, uint32_t ui4_width, uint32_t ui4_height);
int32_t a_qortvapi_highlevel_set_viewport(bool b_enable, int32_t i4_x, int32_t i4_y, int32_t i4_width, int32_t i4_height);
int32_t a_qortvapi_highlevel_is_in_3rd_party_mode(void);
int32_t a_qortvapi_highlevel_get_current_tv_mode(void);
int32_t a_qortvapi_highlevel_generic_function_ex(uint32_t ui4_id, uint32_t* pui4_param1, uint32_t* pui4_param2, uint8_t* pui1_data, uint32_t ui4_length);
int32_t a_qortvapi_highlevel_get_market_region(uint8_t* pui1_region);

#ifdef __cplusplus
}
#endif
