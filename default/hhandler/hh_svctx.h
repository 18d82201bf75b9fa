/** The service contexts of the process and the handler of a service selection. */
#pragma once

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

/** Handles of the contexts "main_svctx" and "sub_svctx", 0 until they are opened at start-up. */
extern uint32_t gMainSvctx;
extern uint32_t gSubSvctx;

/** Reports the progress of a selection to the clients; passed to the middleware with the selection.
 */
void _svctx_select_nfy_fct(uint32_t h_svctx, uint32_t ui4_cond, uint32_t ui4_code,
                           uint32_t ui4_stream, void* pv_tag);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
