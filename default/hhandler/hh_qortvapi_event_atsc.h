/** Conversion of the records of ATSC events between the middleware and the interface. */
#pragma once

#include <vendor/corvanta/tv/qortvapi/1.0/types.h>

#include "middleware/event_atsc.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

/** The texts of the results refer to the arguments, which must outlive them. */
HIDL_QORTVAPI_EVENT_ATSC_INFO_T toInterface(const QORTVAPI_EVENT_ATSC_INFO_T& info,
                                            const QORTVAPI_EVENT_ATSC_TEXT_T& text);
HIDL_T_RATING_MAP_TO_G toInterface(const QORTVAPI_EVENT_ATSC_RATING_MAP_T& rating_map);

/** Texts are cut to the size of their fields, in which the NUL counts. */
QORTVAPI_EVENT_ATSC_RATING_MAP_T toMiddleware(const HIDL_T_RATING_MAP_TO_G& rating_map);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
