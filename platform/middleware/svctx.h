/** Service contexts: each plays one service on one display path. Part of the TV middleware client library. */
#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Prepares this process for service contexts. Returns 0, or a negative code. */
int32_t c_svctx_prepare_process_env(uint32_t ui4_flags);
/** Opens the context named `ps_name` ("main_svctx", "sub_svctx") and writes its handle, which is never 0. */
int32_t c_svctx_open(const char* ps_name, uint32_t* ph_svctx);

/** Conditions, codes and streams of a service context. */
enum { SVCTX_COND_SERVICE_CHANGED = 1 };
enum { SVCTX_CODE_SERVICE_SELECTED = 1 };
enum { SVCTX_STREAM_ALL = 0 };

/** A service context reports a condition; `ui4_stream` is the stream type concerned. */
typedef void (*c_svctx_nfy_fct)(uint32_t h_svctx, uint32_t ui4_cond, uint32_t ui4_code, uint32_t ui4_stream, void* pv_tag);
/** Has every condition of a context reported, whoever selected its service. */
int32_t c_svctx_set_listener(uint32_t h_svctx, c_svctx_nfy_fct pf_listener, void* pv_tag);

#ifdef __cplusplus
}
#endif
