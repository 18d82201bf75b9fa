/** Power control. Part of the TV middleware client library. */
#pragma once

#include <assert.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Power control reports a condition. */
typedef void (*c_pcl_nfy_fct)(uint32_t h_pcl, void* pv_tag, uint32_t ui4_cond, uint32_t ui4_data);
/**
 * Registers a handler and writes the handle of the registration. Unlike elsewhere, the tag is the
 * first argument.
 */
int32_t c_pcl_reg_nfy_fct(void* pv_tag, c_pcl_nfy_fct pf_callback, uint32_t* ph_pcl);

/**
 * Conditions of power control. The television stays on: the applications that are notified decide.
 */
enum { PCL_COND_POWER_DOWN = 1, PCL_COND_SUSPEND = 2, PCL_COND_POWER_DOWN_EVENT = 3, PCL_COND_GPIO_CHANGED = 4 };
/** The number of GPIO lines, and the states of a line. */
enum { PCL_GPIO_COUNT = 64, PCL_GPIO_LOW = 0, PCL_GPIO_HIGH = 1 };
/** The reason why this television woke up: the viewer switched it on. There are no others. */
enum { PCL_WAKE_UP_REASON_REMOTE_CONTROL = 2 };
typedef uint32_t PCL_WAKE_UP_REASON_T;
typedef uint32_t PCL_POWER_DOWN_REASON_T;
typedef uint32_t PCL_GPIO_MODE_T;
typedef uint32_t PCL_GPIO_STATUS_T;
typedef uint32_t QORTVAPI_PCL_WAKEUP_REASON_T;

/** The key that woke the television. */
typedef struct PCL_WAKEUP_KEY_T {
    uint32_t ui4_key_code;
    uint32_t ui4_key_data;
} PCL_WAKEUP_KEY_T;

/** A GPIO line that is monitored, and the edge. */
typedef struct PCL_GPIO_MONITOR_CTRL_EX_T {
    uint32_t ui4_id;
    uint8_t ui1_polarity;
    uint8_t aui1_pad[3];
} PCL_GPIO_MONITOR_CTRL_EX_T;

/*
 * The data of a reason are one word of 32 bits; the pointer may be null. Reasons and the wake-up
 * set-up are kept over a restart. ui4_data of GPIO_CHANGED: the line in the upper 16 bits, its
 * state in the lower 16 bits. No key ever wakes this television: get_wakeup_irkey returns
 * TV_NOT_FOUND.
 */
int32_t c_pcl_get_wakeup_reason(PCL_WAKE_UP_REASON_T* pe_reason, uint32_t* pui4_data);
int32_t c_pcl_set_wakeup_reason(PCL_WAKE_UP_REASON_T e_reason, const void* pv_data);
int32_t c_pcl_get_power_down_reason(PCL_POWER_DOWN_REASON_T* pe_reason, uint32_t* pui4_data);
int32_t c_pcl_set_power_down_reason(PCL_POWER_DOWN_REASON_T e_reason, const void* pv_data);
int32_t c_pcl_set_power_down(void);
int32_t c_pcl_set_request_suspend(void);
int32_t c_pcl_set_request_powerdown_envent(void);
int32_t c_pcl_get_gpio(uint32_t ui4_id, PCL_GPIO_MODE_T e_mode, PCL_GPIO_STATUS_T* pe_status);
int32_t c_pcl_set_gpio(uint32_t ui4_id, PCL_GPIO_STATUS_T e_status);
int32_t c_pcl_set_gpio_monitor_ctrl_ex(const PCL_GPIO_MONITOR_CTRL_EX_T* pt_control);
int32_t c_pcl_get_wakeup_irkey(PCL_WAKEUP_KEY_T* pt_key);
int32_t c_pcl_get_wakeup_setup(uint32_t* pui4_setup);
int32_t c_pcl_set_wakeup_setup(uint32_t ui4_setup);
int32_t a_qortvapi_pcl_get_wakeup_reason(QORTVAPI_PCL_WAKEUP_REASON_T* pe_reason, uint32_t* pui4_data);
int32_t a_qortvapi_pcl_get_wakeup_setup(uint32_t* pui4_setup);
int32_t a_qortvapi_pcl_set_wakeup_setup(uint32_t ui4_setup);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(PCL_WAKEUP_KEY_T) == 8, "pcl record");
static_assert(sizeof(PCL_GPIO_MONITOR_CTRL_EX_T) == 8, "pcl record");
