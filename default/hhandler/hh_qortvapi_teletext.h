/** Conversion of the page address of teletext from the interface to the middleware. */
#pragma once

#include <vendor/corvanta/tv/qortvapi/1.0/types.h>

#include "middleware/teletext.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

QORTVAPI_TTX_PAGE_ADDR_T toMiddleware(const HIDL_QORTVAPI_TTX_PAGE_ADDR_T& page);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
