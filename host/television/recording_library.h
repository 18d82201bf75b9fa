/** The folder of recordings: what is in it, room for new ones, and which are being made. */
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "core.h"
#include "middleware/record.h"
#include "recording_info.h"

namespace television {

class RecordingLibrary;

/** The file of a recording that is being made. One thread writes; the library reads. */
class RecordingFile {
  public:
    ~RecordingFile();
    RecordingFile(const RecordingFile&) = delete;
    RecordingFile& operator=(const RecordingFile&) = delete;

    /** Appends whole packets, or nothing. 0, or an errno: ENOSPC also where the library's own limit
     * is reached. */
    int write(const uint8_t* data, size_t size);
    /** How much of the service is in it, seconds; written beside the recording now and then. */
    void setDuration(uint32_t seconds);
    /** Completes the recording: closes the file and notes how it ended. */
    void finish(int32_t stopReason);

    const std::string& path() const { return mPath; }
    uint64_t size() const { return mSize; }
    /** As it stands. Any thread. */
    RecordingInfo info() const;

  private:
    friend class RecordingLibrary;
    RecordingFile(RecordingLibrary& library, int file, const RecordingInfo& info);
    void note();

    RecordingLibrary& mLibrary;
    const std::string mPath;
    int mFile;
    std::atomic<uint64_t> mSize{0};
    uint32_t mNoted = 0;  ///< duration that the note tells
    mutable std::mutex mMutex;
    RecordingInfo mInfo;  // guarded by mMutex
};

/** Any thread. Its lock is held while the folder is read, and inside no other but the recorder's.
 */
class RecordingLibrary {
  public:
    /** `core` outlives this. `folder`: used until another one is set; empty: none. It is never that
     * of the streams, where a recording would be received as one. */
    RecordingLibrary(Core& core, const std::string& folder, std::string streams);

    /** Uses another folder, from now on and after a restart. TV_INVALID_ARGUMENT when it is no
     * folder that can be written, that of the streams, or its path is too long; TV_BUSY while a
     * recording is made. */
    int32_t setFolder(const std::string& path, const RECORD_DEV_PARAM_T& parameter);
    /** Empty when there is none. */
    std::string folder() const;

    /** Bytes on the file system of the folder, as far as recordings may have them. */
    struct Space {
        uint64_t total = 0;
        uint64_t free = 0;
    };
    /** Empty when there is no folder. */
    std::optional<Space> space() const;

    /** Makes the file of a recording, named after `name`, which may come from anywhere, and its
     * note. Null, and RECORD_ERROR_… in `error`, when that cannot be done. */
    std::shared_ptr<RecordingFile> create(const std::string& name, const RecordingInfo& info,
                                          int32_t& error);

    /** All recordings, by start time and path. */
    std::vector<RecordingInfo> list() const;
    size_t count() const;
    std::optional<RecordingInfo> at(int64_t index) const;
    std::optional<RecordingInfo> byPath(const std::string& path) const;
    /** Those that are being made, the oldest first. */
    std::vector<RecordingInfo> active() const;
    /** The one that is being made, or was made last; empty when there is none. */
    std::optional<RecordingInfo> latest() const;
    /** TV_BUSY while it is being made. */
    int32_t remove(uint32_t index);

  private:
    friend class RecordingFile;

    /** What tells one state of the folder from another. */
    struct Stamp {
        std::string folder;
        int64_t seconds = -1;
        int64_t nanoseconds = 0;
        bool operator==(const Stamp& other) const {
            return folder == other.folder && seconds == other.seconds &&
                   nanoseconds == other.nanoseconds;
        }
    };

    bool makeFolder() const;
    bool reserve(uint64_t bytes);
    void release(uint64_t bytes);
    // With the lock held:
    std::vector<std::shared_ptr<RecordingFile>> activeFiles() const;
    RecordingInfo live(const RecordingInfo& known) const;
    void refresh() const;
    void countUsed();

    Core& mCore;
    const std::string mStreams;
    mutable std::mutex mMutex;
    std::string mFolder;  // guarded by mMutex, as all below
    std::vector<std::weak_ptr<RecordingFile>> mActive;
    mutable Stamp mStamp;                       ///< of what mKnown tells
    mutable bool mSettled = false;              ///< the folder can change no more unnoticed
    mutable std::vector<RecordingInfo> mKnown;  ///< by start time and path
    std::optional<std::string> mLatest;         ///< path
    std::atomic<uint64_t> mLimit{0};            ///< bytes; 0: none. Not guarded
    std::atomic<uint64_t> mUsed{0};             ///< bytes of all recordings. Not guarded
};

}  // namespace television
