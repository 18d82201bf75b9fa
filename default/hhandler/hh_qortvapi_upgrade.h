/** Conversion of the records of a software upgrade from the middleware to the interface. */
#pragma once

#include <vendor/corvanta/tv/qortvapi/1.0/types.h>

#include "middleware/upgrade.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

/** The texts of the results refer to the arguments, which must outlive them. */
HIDL_QORTVAPI_UPGRADE_FW_INFO_T toInterface(const QORTVAPI_UPGRADE_FW_INFO_T& info);
HIDL_QORTVAPI_UPGRADE_ITEM_T toInterface(const QORTVAPI_UPGRADE_ITEM_T& item);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
