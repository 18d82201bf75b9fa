/** Waits for changes of the streams, or of other files, in a folder. */
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "television/stream/stream_folder.h"

namespace television {

/**
 * Watches one folder with inotify, also one that does not exist yet. One thread may wait at a time;
 * any thread may call stop().
 */
class FolderWatch {
  public:
    /** `calm` is how long there must be no further change before a change is reported, since
     * copying a file takes a while. `concerns(name)` says whether changes of a file are to be
     * reported; those of the folder itself always are. */
    FolderWatch(std::string folder, std::chrono::milliseconds calm,
                std::function<bool(const std::string&)> concerns = isStreamName);
    ~FolderWatch();
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    /** Waits for a change. Returns false when `stop` was called. */
    bool wait();
    /** Ends all waiting, now and later. */
    void stop();

  private:
    bool watch();
    bool takeEvents();
    int poll(std::chrono::milliseconds timeout) const;

    const std::string mFolder;
    const std::chrono::milliseconds mCalm;
    const std::function<bool(const std::string&)> mConcerns;
    int mNotify = -1;  ///< inotify descriptor
    int mStop = -1;    ///< eventfd that stop() makes readable
    int mWatch = -1;   ///< inotify's watch of the folder; -1 while the folder is not there
};

}  // namespace television
