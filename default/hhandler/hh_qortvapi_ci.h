/** The registration for what the CI module reports. Any thread. */
#pragma once

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

/**
 * The first call of the process, whatever its result, registers with the middleware and writes the
 * handle that it gives; later ones leave `h_ci` alone and return 0.
 */
int32_t hh_a_qortvapi_ci_reg_callback(uint32_t* h_ci, uint32_t number, uint32_t category_tag);

/** Returns 0. The middleware's registration stays: it is there for all clients. */
int32_t hh_a_qortvapi_ci_unreg_callback(uint32_t h_ci);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
