/** The registration for the notifications of the CI module. Any thread. */
#pragma once

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

/**
 * The first call in the process registers with the middleware, writes the handle of the
 * registration and returns the result. Later calls, even after a failure, leave `h_ci` alone and
 * return 0.
 */
int32_t hh_a_qortvapi_ci_reg_callback(uint32_t* h_ci, uint32_t number, uint32_t category_tag);

/** Has no effect: the registration with the middleware serves all clients. Returns 0. */
int32_t hh_a_qortvapi_ci_unreg_callback(uint32_t h_ci);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
