// The target regions: the regions for which broadcasts can be meant.
#include <algorithm>
#include <iterator>

#include "middleware/broadcast.h"
#include "middleware/result_codes.h"
#include "television/core/client_memory.h"
#include "television/modules/modules.h"
#include "television/stream/dvb_text.h"

namespace television {
namespace {

/** A region. Codes are unique over all levels. */
struct Region {
    uint16_t level;   ///< BROADCAST_REGION_…, from 1
    uint16_t parent;  ///< code of the region that it is in; 0 at the first level
    uint16_t code;
    const char* name;
};
constexpr Region kRegions[] = {
        {1, 0, 1, "North"},           {1, 0, 2, "South"},        {2, 1, 11, "North Coast"},
        {2, 1, 12, "Northern Lakes"}, {2, 2, 21, "South Coast"}, {2, 2, 22, "Southern Hills"},
        {3, 11, 111, "Harbour"},      {3, 11, 112, "Islands"},   {3, 12, 121, "Lake Town"},
        {3, 21, 211, "Bay"},          {3, 22, 221, "High Hill"}, {3, 22, 222, "Low Hill"},
};

const Region* regionOf(uint16_t code) {
    const auto* found = std::find_if(std::begin(kRegions), std::end(kRegions),
                                     [&](const Region& region) { return region.code == code; });
    return found == std::end(kRegions) ? nullptr : found;
}

bool isRegionLevel(uint16_t level) {
    return level >= BROADCAST_REGION_PRIMARY && level <= BROADCAST_REGION_TERTIARY;
}

int32_t readRegion(uint16_t level, uint16_t parent, uint16_t index, QORTVAPI_SB_DVB_REGION_T* to) {
    if (!writable(to) || !isRegionLevel(level)) return TV_INVALID_ARGUMENT;
    for (const Region& region : kRegions) {
        if (region.level != level || region.parent != parent || index-- != 0) continue;
        *to = {};
        to->ui1_depth = static_cast<uint8_t>(level);
        uint16_t* const codes[] = {&to->ui2_primary, &to->ui2_secondary, &to->ui2_tertiary};
        for (const Region* at = &region; at != nullptr; at = regionOf(at->parent)) {
            *codes[at->level - 1] = at->code;
        }
        copyText(to->s_name, region.name);
        return TV_OK;
    }
    return TV_NOT_FOUND;
}

}  // namespace

void plugBroadcastRegions(switchboard::Switchboard& board) {
    board.on<&a_qortvapi_broadcast_get_target_region_num>(
            [](uint16_t level, uint16_t* count) -> int32_t {
                if (!writable(count) || !isRegionLevel(level)) return TV_INVALID_ARGUMENT;
                *count = static_cast<uint16_t>(
                        std::count_if(std::begin(kRegions), std::end(kRegions),
                                      [&](const Region& region) { return region.level == level; }));
                return TV_OK;
            });
    board.on<&a_qortvapi_broadcast_get_target_regions>(readRegion);
}

}  // namespace television
