/** Password dialog. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Messages of the dialog. pv_arg1: number of wrong passwords in a row. */
enum { PWDDLG_MSG_SHOW = 1, PWDDLG_MSG_ACCEPTED = 2, PWDDLG_MSG_WRONG = 3 };
/**
 * The default password. One that the viewer sets is stored as the value PWDDLG_UTIL_NAME, kind 0,
 * of a_qortvapi_util_set.
 */
#define PWDDLG_DEFAULT_PASSWORD "1234"
#define PWDDLG_UTIL_NAME "password"
/** The dialog is to be shown, changed or closed. */
typedef void (*a_qortvapi_pwddlg_nfy_fct)(int32_t i4_msg_type, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3, void* pv_arg4);
int32_t a_qortvapi_pwddlg_register_msg_callback(a_qortvapi_pwddlg_nfy_fct pf_callback, void* pv_tag);

/* checkPWD returns 0 if the password is right, otherwise TV_INVALID_ARGUMENT. */
int32_t a_qortvapi_PWDDLG_checkPWD(const char* ps_password);
int32_t a_qortvapi_PWDDLG_show(void);

#ifdef __cplusplus
}
#endif
