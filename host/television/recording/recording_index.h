/** The recordings found in a folder, read again when the folder changes. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "television/core/clock.h"
#include "television/recording/recording_info.h"

namespace television {

/** One thread at a time. */
class RecordingIndex {
  public:
    /** `clock` outlives this. */
    explicit RecordingIndex(const Clock& clock) : mClock(clock) {}

    /** Returns the recordings in `folder` by start time and path, valid until the next call; none
     * when there is no such folder. Sizes are those at the time when the folder was read. */
    const std::vector<RecordingInfo>& recordings(const std::string& folder);
    /** Makes the next call read the folder again. */
    void invalidate() { mSettled = false; }

  private:
    /** What differs between two states of the folder. */
    struct Stamp {
        std::string folder;
        int64_t seconds = -1;  ///< time of its last change
        int64_t nanoseconds = 0;
        bool operator==(const Stamp& other) const {
            return folder == other.folder && seconds == other.seconds &&
                   nanoseconds == other.nanoseconds;
        }
    };

    void readFolder(const std::string& folder);
    RecordingInfo describe(const std::string& path, uint64_t size, int64_t changed) const;

    const Clock& mClock;
    Stamp mStamp;           ///< of the folder that mRecordings are from
    bool mSettled = false;  ///< every later change of the folder gives it another stamp
    std::vector<RecordingInfo> mRecordings;
};

}  // namespace television
