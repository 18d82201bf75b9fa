/**
 * Stream components: the presentation elements of a service context. Part of the TV middleware
 * client library.
 */
#pragma once

#include <assert.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The source detection of a video plane reports a condition. Returns 0. */
typedef int32_t (*c_scc_src_detect_nfy_fct)(uint32_t h_comp, int32_t i4_cond, void* pv_tag, int32_t i4_data, int32_t i4_data2);

/**
 * One pair of a command array; the array ends with a pair whose code is 0. A value is a number or a
 * pointer.
 */
typedef struct SCC_CMD_T {
    uint32_t ui4_code;
    uintptr_t ui4_value;
} SCC_CMD_T;

/** Command codes of c_scc_comp_open. */
#define SCC_CMD_COMP_TYPE 0x80000000u
#define SCC_CMD_SINK_NAME 16u
#define SCC_CMD_END 0u

/** Component types and sinks. */
enum { SCC_COMP_VIDEO = 0, SCC_COMP_AUDIO = 1, SCC_COMP_SUBTITLE = 2, SCC_COMP_COUNT = 3 };
#define SCC_SINK_MAIN "snk_MainDisp"
#define SCC_SINK_SUB "snk_SubDisp"
/** The most pairs that a command array can have; a longer one is refused. */
enum { SCC_CMD_MAX = 16 };

/** Conditions of source detection. i4_data, i4_data2: width and height in pixels. */
enum { SCC_DETECT_NO_SIGNAL = 0, SCC_DETECT_SIGNAL = 1 };
int32_t c_scc_comp_open(const SCC_CMD_T* pt_commands, uint32_t* ph_comp);
/**
 * For video components only. The handler is called with the present condition at once, and with
 * every later one.
 */
int32_t c_scc_vid_set_src_detect_nfy(uint32_t h_comp, c_scc_src_detect_nfy_fct pf_detect, void* pv_tag);

#ifdef __cplusplus
}
#endif

static_assert(sizeof(SCC_CMD_T) == 2 * sizeof(uintptr_t), "scc record");
