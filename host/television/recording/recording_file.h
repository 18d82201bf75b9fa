/** The file of a recording that is being made. */
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>

#include "television/recording/recording_info.h"
#include "television/recording/recording_quota.h"

namespace television {

/** Writes the `.ts` file and keeps its sidecar file up to date. One thread writes; `size` and
 * `info` may be called on any. */
class RecordingFile {
  public:
    /** `quota` outlives this. `file`: descriptor of the empty file at `info.path`, which this
     * closes.
     */
    RecordingFile(RecordingQuota& quota, int file, const RecordingInfo& info);
    ~RecordingFile();
    RecordingFile(const RecordingFile&) = delete;
    RecordingFile& operator=(const RecordingFile&) = delete;

    /** Appends whole packets, or nothing. Returns 0 or an errno: ENOSPC also when the quota is used
     * up. */
    int write(const uint8_t* data, size_t size);
    /** Sets how much of the service is in the file, seconds; the sidecar file follows every ten
     * seconds. */
    void setDuration(uint32_t seconds);
    /** Completes the recording: closes the file and writes how it ended into the sidecar file. */
    void finish(int32_t stopReason);

    const std::string& path() const { return mPath; }
    /** Bytes written so far. */
    uint64_t size() const { return mSize; }
    /** The recording as it stands. */
    RecordingInfo info() const;

  private:
    void updateSidecar();

    RecordingQuota& mQuota;
    const std::string mPath;
    int mFile;
    std::atomic<uint64_t> mSize{0};
    uint32_t mSidecarDuration = 0;  ///< duration in the sidecar file
    mutable std::mutex mMutex;
    RecordingInfo mInfo;  // guarded by mMutex
};

}  // namespace television
