#include "television/recording/recording_library.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <fmt/format.h>

#include "middleware/result_codes.h"
#include "television/base/log.h"
#include "television/recording/recording_name.h"
#include "television/recording/recording_sidecar.h"
#include "television/stream/stream_name.h"

namespace television {
namespace {

// The names under which the core remembers the folder and its limit in bytes.
constexpr char kFolderName[] = "record.disk";
constexpr char kLimitName[] = "record.disk.limit";
/** Recordings of one name: after the first, `name (2)` and so on. */
constexpr int kMostOfAName = 999;

/** RECORD_ERROR_… for an errno. */
int32_t errorOf(int error) {
    switch (error) {
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return RECORD_ERROR_DISK_FULL;
        case ENOENT:
        case ENOTDIR:
        case EACCES:
        case EPERM:
        case EROFS:
            return RECORD_ERROR_NO_DISK;
        default:
            return RECORD_ERROR_WRITE;
    }
}

bool sameFolder(const std::string& a, const std::string& b) {
    struct stat first = {};
    struct stat second = {};
    return stat(a.c_str(), &first) == 0 && stat(b.c_str(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

uint64_t parseSize(const std::string& text) {
    return std::strtoull(text.c_str(), nullptr, 10);
}

}  // namespace

RecordingLibrary::RecordingLibrary(Core& core, const std::string& folder, std::string streams)
    : mCore(core),
      mStreams(std::move(streams)),
      mFolder(core.remembered(kFolderName)),
      mIndex(core.clock) {
    if (mFolder.empty()) mFolder = folder;
    mQuota.setLimit(parseSize(core.remembered(kLimitName)));
    if (mFolder.size() > kLongestRecordingFolder) {
        LOG_TV_ERROR("the path of the folder of recordings is longer than {} bytes: {}",
                     kLongestRecordingFolder, mFolder);
        mFolder.clear();
    }
    if (sameFolder(mFolder, mStreams)) {
        LOG_TV_ERROR("recordings cannot be in the folder of streams {}", mFolder);
        mFolder.clear();
    }
    if (!mFolder.empty()) makeFolder();  // a failure is logged when a recording is made
}

std::string RecordingLibrary::folder() const {
    std::lock_guard<std::mutex> lock(mMutex);
    return mFolder;
}

int32_t RecordingLibrary::setFolder(const std::string& path, const RECORD_DEV_PARAM_T& parameter) {
    if (path.empty() || path[0] != '/') return TV_INVALID_ARGUMENT;
    std::string folder = path;
    while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
    struct stat status = {};
    if (folder.size() > kLongestRecordingFolder || stat(folder.c_str(), &status) != 0 ||
        !S_ISDIR(status.st_mode) || access(folder.c_str(), W_OK | X_OK) != 0 ||
        sameFolder(folder, mStreams)) {
        return TV_INVALID_ARGUMENT;
    }
    {
        std::lock_guard<std::mutex> lock(mMutex);
        if (!activeFiles().empty()) return TV_BUSY;
        mFolder = folder;
        mQuota.setLimit(parameter.ui8_size);
        mLatest.reset();
    }
    mCore.remember(kFolderName, folder);
    mCore.remember(kLimitName,
                   parameter.ui8_size == 0 ? std::string() : fmt::format("{}", mQuota.limit()));
    return TV_OK;
}

std::optional<RecordingLibrary::Space> RecordingLibrary::space() const {
    const std::string folder = this->folder();
    struct statvfs status = {};
    if (folder.empty() || statvfs(folder.c_str(), &status) != 0) return std::nullopt;
    Space space{uint64_t{status.f_blocks} * status.f_frsize,
                uint64_t{status.f_bavail} * status.f_frsize};
    if (const uint64_t limit = mQuota.limit(); limit != 0) {
        uint64_t used = 0;
        for (const RecordingInfo& info : list()) used += info.size;
        space.total = std::min(space.total, limit);
        space.free = std::min(space.free, limit - std::min(used, limit));
    }
    return space;
}

/** Makes the folder unless it exists, but not its parent: when a disk is not mounted, nothing may
 * be written into the folder on which it would be. With the lock held. */
bool RecordingLibrary::makeFolder() const {
    return mkdir(mFolder.c_str(), 0755) == 0 || errno == EEXIST;
}

std::vector<std::shared_ptr<RecordingFile>> RecordingLibrary::activeFiles() const {
    std::vector<std::shared_ptr<RecordingFile>> files;
    for (const auto& weak : mActive) {
        if (auto file = weak.lock(); file != nullptr && file->info().recording) {
            files.push_back(std::move(file));
        }
    }
    return files;
}

void RecordingLibrary::countUsed() {
    uint64_t used = 0;
    for (const RecordingInfo& info : known()) {
        struct stat status = {};
        if (stat(info.path.c_str(), &status) == 0) used += static_cast<uint64_t>(status.st_size);
    }
    mQuota.setUsed(used);
}

/** Creates the empty file of a new recording under the first free name and sets `info.path`.
 * Returns its descriptor, or a negative errno. */
int RecordingLibrary::createFile(const std::string& name, RecordingInfo& info) const {
    if (!makeFolder()) return -errno;
    const std::string stem = mFolder + "/" + safeFileName(name);
    for (int number = 1; number <= kMostOfAName; ++number) {
        info.path = number == 1 ? stem + std::string(kStreamNameEnding)
                                : fmt::format("{} ({}){}", stem, number, kStreamNameEnding);
        // Another recording's sidecar file must neither be overwritten nor be taken for this one's.
        if (access(sidecarPath(info.path).c_str(), F_OK) == 0) continue;
        const int file =
                open(info.path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644);
        if (file >= 0) return file;
        if (errno != EEXIST) return -errno;
    }
    return -EEXIST;
}

std::shared_ptr<RecordingFile> RecordingLibrary::create(const std::string& name,
                                                        const RecordingInfo& info, int32_t& error) {
    std::lock_guard<std::mutex> lock(mMutex);
    if (mFolder.empty()) {
        error = RECORD_ERROR_NO_DISK;
        LOG_TV_ERROR("no folder for recordings: QORTV_RECORDINGS names none");
        return nullptr;
    }
    const auto gone = [](const auto& weak) { return weak.expired(); };
    mActive.erase(std::remove_if(mActive.begin(), mActive.end(), gone), mActive.end());
    if (activeFiles().empty()) countUsed();
    if (mQuota.exhausted()) {
        error = RECORD_ERROR_DISK_FULL;
        LOG_TV_ERROR("recordings in {} take all of the {} bytes that they may", mFolder,
                     mQuota.limit());
        return nullptr;
    }
    RecordingInfo made = info;
    made.recording = true;
    made.stopReason = RECORD_STOP_UNKNOWN;  // stays when the recording is cut off by a crash
    const int file = createFile(name, made);
    const int fault = file < 0 ? -file : writeSidecar(made);
    if (fault != 0) {
        if (file >= 0) {
            close(file);
            unlink(made.path.c_str());
        }
        error = errorOf(fault);
        LOG_TV_ERROR("cannot make the recording {}: {}", made.path.empty() ? mFolder : made.path,
                     std::strerror(fault));
        return nullptr;
    }
    auto recording = std::make_shared<RecordingFile>(mQuota, file, made);
    mActive.push_back(recording);
    mLatest = made.path;
    return recording;
}

const std::vector<RecordingInfo>& RecordingLibrary::known() const {
    return mIndex.recordings(mFolder);
}

/** Returns a recording of the index as it is now: one that is being made grows. */
RecordingInfo RecordingLibrary::current(const RecordingInfo& listed) const {
    for (const auto& file : activeFiles()) {
        if (file->path() == listed.path) return file->info();
    }
    RecordingInfo info = listed;
    struct stat status = {};
    if (stat(info.path.c_str(), &status) == 0) info.size = static_cast<uint64_t>(status.st_size);
    return info;
}

std::vector<RecordingInfo> RecordingLibrary::list() const {
    std::lock_guard<std::mutex> lock(mMutex);
    std::vector<RecordingInfo> result;
    for (const RecordingInfo& info : known()) result.push_back(current(info));
    return result;
}

size_t RecordingLibrary::count() const {
    std::lock_guard<std::mutex> lock(mMutex);
    return known().size();
}

std::optional<RecordingInfo> RecordingLibrary::at(int64_t index) const {
    std::lock_guard<std::mutex> lock(mMutex);
    const auto& recordings = known();
    if (index < 0 || index >= static_cast<int64_t>(recordings.size())) return std::nullopt;
    return current(recordings[static_cast<size_t>(index)]);
}

std::optional<RecordingInfo> RecordingLibrary::byPath(const std::string& path) const {
    std::lock_guard<std::mutex> lock(mMutex);
    const auto& recordings = known();
    const auto found = std::find_if(recordings.begin(), recordings.end(),
                                    [&](const RecordingInfo& info) { return info.path == path; });
    return found == recordings.end() ? std::nullopt : std::make_optional(current(*found));
}

std::vector<RecordingInfo> RecordingLibrary::active() const {
    std::lock_guard<std::mutex> lock(mMutex);
    std::vector<RecordingInfo> result;
    for (const auto& file : activeFiles()) result.push_back(file->info());
    return result;
}

std::optional<RecordingInfo> RecordingLibrary::latest() const {
    std::string path;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        path = mLatest.value_or("");
    }
    if (auto info = byPath(path)) return info;
    return at(static_cast<int64_t>(count()) - 1);  // the last one of an earlier run
}

int32_t RecordingLibrary::remove(uint32_t index) {
    std::lock_guard<std::mutex> lock(mMutex);
    const auto& recordings = known();
    if (index >= recordings.size()) return TV_NOT_FOUND;
    const RecordingInfo info = recordings[index];
    for (const auto& file : activeFiles()) {
        if (file->path() == info.path) return TV_BUSY;
    }
    if (unlink(info.path.c_str()) != 0) {
        LOG_TV_ERROR("cannot delete the recording {}: {}", info.path, std::strerror(errno));
        return TV_FAILED;
    }
    mIndex.invalidate();
    mQuota.release(info.size);
    const std::string sidecar = sidecarPath(info.path);
    if (unlink(sidecar.c_str()) != 0 && errno != ENOENT) {
        LOG_TV_ERROR("cannot delete {}: {}", sidecar, std::strerror(errno));
    }
    return TV_OK;
}

}  // namespace television
