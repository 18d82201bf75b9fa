/** The library of recordings: those in its folder, those being made, and the space for new ones. */
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "middleware/record.h"
#include "television/core/core.h"
#include "television/recording/recording_file.h"
#include "television/recording/recording_index.h"
#include "television/recording/recording_info.h"
#include "television/recording/recording_quota.h"

namespace television {

/** Any thread. The lock is held while the folder and sidecar files are read and written; it is
 * taken after those of schedules and recorder. */
class RecordingLibrary {
  public:
    /** `core` outlives this. `folder`: used until another one is set; empty: none. `streams`: the
     * folder of streams, where a recording would be received as a multiplex: it is never used. */
    RecordingLibrary(Core& core, const std::string& folder, std::string streams);

    /** Uses another folder, from now on and after a restart, and the limit in `parameter`. Returns
     * TV_OK; TV_INVALID_ARGUMENT when it is no writable folder, the folder of streams, or its path
     * is too long; TV_BUSY while a recording is being made. */
    int32_t setFolder(const std::string& path, const RECORD_DEV_PARAM_T& parameter);
    /** Empty when there is none. */
    std::string folder() const;

    /** Bytes on the file system of the folder, within the limit of the folder. */
    struct Space {
        uint64_t total = 0;
        uint64_t free = 0;
    };
    /** Empty when there is no folder. */
    std::optional<Space> space() const;

    /** Makes the file of a recording and its sidecar file. Their name is made of `name`, which may
     * be any text. Returns null, and RECORD_ERROR_… in `error`, when that cannot be done. */
    std::shared_ptr<RecordingFile> create(const std::string& name, const RecordingInfo& info,
                                          int32_t& error);

    /** All recordings, by start time and path. */
    std::vector<RecordingInfo> list() const;
    size_t count() const;
    /** Empty when there is none; so below. */
    std::optional<RecordingInfo> at(int64_t index) const;
    std::optional<RecordingInfo> byPath(const std::string& path) const;
    /** The recordings that are being made, the oldest first. */
    std::vector<RecordingInfo> active() const;
    /** The recording that was begun last, whether or not it is complete. */
    std::optional<RecordingInfo> latest() const;
    /** Deletes the recording at `index` of `list`. Returns TV_OK; TV_NOT_FOUND; TV_BUSY while it is
     * being made; TV_FAILED. */
    int32_t remove(uint32_t index);

  private:
    // With the lock held:
    bool makeFolder() const;
    int createFile(const std::string& name, RecordingInfo& info) const;
    std::vector<std::shared_ptr<RecordingFile>> activeFiles() const;
    const std::vector<RecordingInfo>& known() const;
    RecordingInfo current(const RecordingInfo& listed) const;
    void countUsed();

    Core& mCore;
    const std::string mStreams;  ///< the folder of streams
    RecordingQuota mQuota;
    mutable std::mutex mMutex;
    std::string mFolder;                                // guarded by mMutex, as all below
    std::vector<std::weak_ptr<RecordingFile>> mActive;  ///< being made, or just completed
    mutable RecordingIndex mIndex;
    std::optional<std::string> mLatest;  ///< path of the one made last in `mFolder`
};

}  // namespace television
