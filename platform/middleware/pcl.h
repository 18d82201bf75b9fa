/** Power control. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Power control reports a condition. */
typedef void (*c_pcl_nfy_fct)(uint32_t h_pcl, void* pv_tag, uint32_t ui4_cond, uint32_t ui4_data);
/** Registers a handler and writes the handle of the registration. The tag comes first here. */
int32_t c_pcl_reg_nfy_fct(void* pv_tag, c_pcl_nfy_fct pf_callback, uint32_t* ph_pcl);

#ifdef __cplusplus
}
#endif
