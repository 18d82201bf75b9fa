/**
 * Input and output manager: remote controls, front panel and similar devices. Part of the TV
 * middleware client library.
 */
#pragma once

#include <assert.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** A device sent `ui4_length` bytes, which are valid during the call. */
typedef void (*c_iom_nfy_fct)(void* pv_tag, uint32_t ui4_cond, const uint8_t* pui1_data, uint32_t ui4_length);

/** The bytes for c_iom_output. */
typedef struct IOM_OUTPUT_T {
    uint32_t ui4_length;
    const uint8_t* pui1_data;
} IOM_OUTPUT_T;

/* This television has no serial devices: TV_NOT_SUPPORTED. */
int32_t c_iom_open_uart(uint16_t ui2_device, uint16_t ui2_port, const char* ps_name, void* pv_setting, void* pv_tag, c_iom_nfy_fct pf_iom, uint32_t* ph_iom);
int32_t c_iom_close(uint32_t ui4_iom);
int32_t c_iom_get(uint32_t h_iom, uint16_t ui2_type, void* pv_data, uint32_t* pui4_size);
int32_t c_iom_set(uint32_t h_iom, uint16_t ui2_type, const void* pv_data, uint32_t ui4_size);
int32_t c_iom_output(uint32_t h_iom, const IOM_OUTPUT_T* pt_output);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(IOM_OUTPUT_T) == 2 * sizeof(uintptr_t), "iom record");
