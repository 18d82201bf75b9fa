#include "television/recording/recording_index.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <memory>
#include <tuple>
#include <utility>

#include "television/base/log.h"
#include "television/recording/recording_name.h"
#include "television/recording/recording_sidecar.h"
#include "television/stream/stream_name.h"

namespace television {
namespace {

/** Recordings that are listed; further ones in the folder are left out. */
constexpr size_t kMostListed = 10'000;
/** Seconds within which a second change of a folder may get the time stamp of the first. */
constexpr int64_t kStampUncertain = 2;

bool earlier(const RecordingInfo& a, const RecordingInfo& b) {
    return std::tie(a.startTime, a.path) < std::tie(b.startTime, b.path);
}

std::string nameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

}  // namespace

const std::vector<RecordingInfo>& RecordingIndex::recordings(const std::string& folder) {
    struct stat status = {};
    if (folder.empty() || stat(folder.c_str(), &status) != 0) {
        mRecordings.clear();
        mStamp = {};
        return mRecordings;
    }
    const Stamp stamp{folder, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
    if (mSettled && stamp == mStamp) return mRecordings;
    mStamp = stamp;
    mSettled = status.st_mtim.tv_sec + kStampUncertain <= std::time(nullptr);
    readFolder(folder);
    return mRecordings;
}

void RecordingIndex::readFolder(const std::string& folder) {
    mRecordings.clear();
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.c_str()), closedir);
    if (entries == nullptr) {
        LOG_TV_ERROR("cannot read the folder of recordings {}: {}", folder, std::strerror(errno));
        return;
    }
    while (const dirent* entry = readdir(entries.get())) {
        if (!isStreamName(entry->d_name)) continue;
        const std::string path = folder + "/" + entry->d_name;
        struct stat status = {};
        if (lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) continue;
        if (path.size() > kLongestRecordingPath || mRecordings.size() == kMostListed) {
            LOG_TV_WARN("the recording {} is not listed: {}", path,
                        path.size() > kLongestRecordingPath ? "its path is too long"
                                                            : "there are too many");
            if (mRecordings.size() == kMostListed) break;
            continue;
        }
        mRecordings.push_back(
                describe(path, static_cast<uint64_t>(status.st_size), status.st_mtim.tv_sec));
    }
    std::sort(mRecordings.begin(), mRecordings.end(), earlier);
}

/** Returns what is known of the file at `path`: its sidecar file's contents, or without one what
 * the file itself shows. `changed`: seconds since 1970. */
RecordingInfo RecordingIndex::describe(const std::string& path, uint64_t size,
                                       int64_t changed) const {
    auto info = readSidecar(path);
    if (!info) {
        info.emplace();
        info->startTime = changed;
        info->localOffset = mClock.offsetAt(info->startTime).seconds;
        info->programName = withoutStreamEnding(nameOf(path));
    }
    info->path = path;
    info->size = size;
    return *std::move(info);
}

}  // namespace television
