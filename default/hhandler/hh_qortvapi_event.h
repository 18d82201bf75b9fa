/** Conversion of the records of programme events from the middleware to the interface. */
#pragma once

#include <vendor/corvanta/tv/qortvapi/1.0/types.h>

#include "middleware/event.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

/** The texts of the result refer to `rating_map`, which must outlive them. */
HIDL_T_RATING_MAP_TO_G toInterface(const RATING_MAP_T& rating_map);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
