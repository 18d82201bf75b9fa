/** Tells when the streams in a folder, or other files there, changed. */
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "stream_folder.h"

namespace television {

/**
 * Watches one folder with inotify, also one that does not exist yet. One thread waits; any thread
 * may wake it.
 */
class FolderWatch {
  public:
    /** `calm` is how long nothing may change before a change counts: copying a file takes a while.
     * `concerns` tells the names of the files that count; the folder itself always does.
     */
    FolderWatch(std::string folder, std::chrono::milliseconds calm,
                std::function<bool(const std::string&)> concerns = isStreamName);
    ~FolderWatch();
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    /** Waits for a change; false when `stop` was called. */
    bool wait();
    /** Ends all waiting, now and later. */
    void stop();

  private:
    bool watch();
    bool drain();
    int poll(std::chrono::milliseconds timeout) const;

    const std::string mFolder;
    const std::chrono::milliseconds mCalm;
    const std::function<bool(const std::string&)> mConcerns;
    int mNotify = -1;  ///< inotify
    int mStop = -1;    ///< eventfd
    int mWatch = -1;   ///< -1 while the folder is not there
};

}  // namespace television
