#include "television/core/reception.h"

#include <unistd.h>

#include <algorithm>

#include "middleware/broadcast.h"

namespace television {

bool Reception::hasSignal(const TSL_REC_T& multiplex) const {
    if (mFolder.empty() || multiplex.s_source[0] == '\0') return false;
    return access((mFolder + "/" + multiplex.s_source).c_str(), R_OK) == 0;
}

Tuning Reception::tuning(const std::optional<Playing>& playing) const {
    if (!playing) return {BROADCAST_TUNING_IDLE, BROADCAST_TUNING_ERROR_NONE};
    if (!hasSignal(playing->multiplex)) {
        return {BROADCAST_TUNING_FAILED, BROADCAST_TUNING_ERROR_NO_SIGNAL};
    }
    const bool streams =
            playing->hasVideo() || playing->hasAudio() || playing->service.ui2_pcr_pid != kNoPid;
    if (!streams) return {BROADCAST_TUNING_FAILED, BROADCAST_TUNING_ERROR_NO_SERVICE};
    return {BROADCAST_TUNING_LOCKED, BROADCAST_TUNING_ERROR_NONE};
}

int32_t Reception::quality(const TSL_REC_T& multiplex) const {
    constexpr uint64_t kAll = 100;
    if (!hasSignal(multiplex) || multiplex.ui4_packets == 0) return 0;
    const uint64_t packets = multiplex.ui4_packets;
    const uint64_t sound = packets - std::min<uint64_t>(packets, multiplex.ui4_damaged_packets);
    return static_cast<int32_t>(kAll * sound / packets);
}

int32_t Reception::level(const TSL_REC_T& multiplex) const {
    constexpr int32_t kLeast = 50;
    return hasSignal(multiplex) ? kLeast + quality(multiplex) / 2 : 0;
}

}  // namespace television
