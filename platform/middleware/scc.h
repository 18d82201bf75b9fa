/** Stream components: the presentation elements of a service context. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The source detection of a video plane reports a condition. Returns 0. */
typedef int32_t (*c_scc_src_detect_nfy_fct)(uint32_t h_comp, int32_t i4_cond, void* pv_tag, int32_t i4_data, int32_t i4_data2);

#ifdef __cplusplus
}
#endif
