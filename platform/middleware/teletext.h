/** Teletext. Part of the TV middleware client library. */
#pragma once

#include <assert.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Notification codes. PAGE: another page was asked for. pv_arg1: magazine; pv_arg2: page; pv_arg3:
 * sub-page.
 */
enum { TELETEXT_NFY_PAGE = 1 };
/** A page or the state of teletext changed. */
typedef void (*a_qortvapi_teletext_nfy_fct)(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3);
int32_t a_qortvapi_teletext_register_msg_callback(a_qortvapi_teletext_nfy_fct pf_callback, void* pv_tag);

/** The address of a page: magazine 1 to 8, page of two hexadecimal digits. */
typedef struct QORTVAPI_TTX_PAGE_ADDR_T {
    uint8_t ui1_magazine;
    uint8_t ui1_page;
    uint16_t ui2_sub_page;
} QORTVAPI_TTX_PAGE_ADDR_T;

/** One entry of a TOP table. */
typedef struct QORTVAPI_TTX_TOP_ENTRY_T {
    QORTVAPI_TTX_PAGE_ADDR_T t_page;
    char s_name[14];
} QORTVAPI_TTX_TOP_ENTRY_T;

/** A TOP table: the pages of a block, of a group, or below a page. */
typedef struct QORTVAPI_TTX_TOP_TABLE_T {
    uint32_t ui4_count;
    QORTVAPI_TTX_TOP_ENTRY_T at_entry[100];
} QORTVAPI_TTX_TOP_TABLE_T;

/*
 * The first page is 100. The streams have no TOP tables: is_top_stream returns 0, and the tables
 * are TV_NOT_SUPPORTED.
 */
int32_t a_qortvapi_teletext_get_cur_page(QORTVAPI_TTX_PAGE_ADDR_T* pt_page);
int32_t a_qortvapi_teletext_set_page(const QORTVAPI_TTX_PAGE_ADDR_T* pt_page);
int32_t a_qortvapi_teletext_is_top_stream(void);
int32_t a_qortvapi_teletext_top_get_block_content(QORTVAPI_TTX_TOP_TABLE_T* pt_table);
int32_t a_qortvapi_teletext_top_get_group_content(const QORTVAPI_TTX_PAGE_ADDR_T* pt_page, QORTVAPI_TTX_TOP_TABLE_T* pt_table);
int32_t a_qortvapi_teletext_top_get_page_content(const QORTVAPI_TTX_PAGE_ADDR_T* pt_page, QORTVAPI_TTX_TOP_TABLE_T* pt_table);
int32_t a_qortvapi_teletext_get_ttx_rating_on(void);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(QORTVAPI_TTX_PAGE_ADDR_T) == 4, "teletext record");
static_assert(sizeof(QORTVAPI_TTX_TOP_TABLE_T) == 1804, "teletext record");
