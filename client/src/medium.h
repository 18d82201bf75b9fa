/** Conversion of the middleware's number of a broadcast medium. */
#pragma once

#include <cstdint>

#include "middleware/records.h"
#include "qortv/channel.h"

namespace qortv {

static_assert(int{BRDCST_MEDIUM_UNKNOWN} == static_cast<int>(Medium::kUnknown) &&
              int{BRDCST_MEDIUM_DIG_TERRESTRIAL} == static_cast<int>(Medium::kTerrestrial) &&
              int{BRDCST_MEDIUM_DIG_CABLE} == static_cast<int>(Medium::kCable) &&
              int{BRDCST_MEDIUM_DIG_SATELLITE} == static_cast<int>(Medium::kSatellite));

/** Returns kUnknown for a number that names no medium. */
inline Medium toMedium(uint64_t number) {
    return number <= BRDCST_MEDIUM_DIG_SATELLITE ? static_cast<Medium>(number) : Medium::kUnknown;
}

inline int32_t numberOf(Medium medium) {
    return static_cast<int32_t>(medium);
}

}  // namespace qortv
