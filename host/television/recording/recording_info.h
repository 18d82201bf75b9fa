/** What is known of one recording. */
#pragma once

#include <cstdint>
#include <string>

#include "middleware/record.h"

namespace television {

/** One recording. Texts are UTF-8. All but path and size is kept in its sidecar file. */
struct RecordingInfo {
    std::string path;   ///< of the `.ts` file
    uint64_t size = 0;  ///< of the `.ts` file, bytes
    uint32_t channelId = 0;
    int32_t channelNumber = 0;
    std::string channelName;
    std::string programName;
    int64_t startTime = 0;                     ///< seconds since 1970-01-01 00:00 UTC
    int32_t localOffset = 0;                   ///< local time less UTC at the start, seconds
    uint32_t duration = 0;                     ///< seconds; 0 when unknown
    int32_t stopReason = RECORD_STOP_UNKNOWN;  ///< RECORD_STOP_…
    int32_t rating = 0;                        ///< minimum age, years; 0: not rated
    int32_t retention = 0;                     ///< days to keep it; 0: for ever
    bool recording = false;                    ///< it is being recorded
};

}  // namespace television
