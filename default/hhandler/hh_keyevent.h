/** Injection of key and pointer events into the graphics layer. */
#pragma once

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

/**
 * Sends one event of `kind` to the input socket in the middleware's folder, over a connection of
 * its own. The kind decides which of the arguments the event carries; kind 1 and unknown kinds are
 * refused. Returns -1 if the kind is refused or there is no connection, 0 otherwise, even if the
 * event could not be written. Failures are logged, except a refused kind. Any thread.
 */
int32_t hh_send_key_and_mouse(int32_t kind, int32_t a1, uint32_t a2, int32_t a3, int32_t a4,
                              int32_t a5, int32_t a6, int32_t a7);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
