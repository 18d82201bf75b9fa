#include "recording_library.h"

#include <dirent.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <tuple>
#include <utility>

#include "log.h"
#include "middleware/result_codes.h"
#include "packet_reader.h"
#include "stream_folder.h"

namespace television {
namespace {

constexpr char kFolderName[] = "record.disk";
constexpr char kLimitName[] = "record.disk.limit";
constexpr char kEnding[] = ".ts";
/** Recordings of one name: after the first, `name (2)` and so on. */
constexpr int kMostOfAName = 999;
/** Recordings that are listed; what the folder holds beyond is left out. */
constexpr size_t kMostListed = 10'000;
/** Seconds between two notes of how long a recording is. */
constexpr uint32_t kNoteEvery = 10;
/** Given back when the disk is full, so that there is room to note how the recording ended. */
constexpr uint64_t kRoomForNote = 16 * 1024;
/** Within this time a second change of a folder may carry the same time stamp as the first. */
constexpr int64_t kStampUncertain = 2;

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

bool earlier(const RecordingInfo& a, const RecordingInfo& b) {
    return std::tie(a.startTime, a.path) < std::tie(b.startTime, b.path);
}

std::string nameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
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

RecordingFile::RecordingFile(RecordingLibrary& library, int file, const RecordingInfo& info)
    : mLibrary(library), mPath(info.path), mFile(file), mInfo(info) {}

RecordingFile::~RecordingFile() {
    if (mFile >= 0) close(mFile);
}

RecordingInfo RecordingFile::info() const {
    std::lock_guard<std::mutex> lock(mMutex);
    RecordingInfo info = mInfo;
    info.size = mSize;
    return info;
}

int RecordingFile::write(const uint8_t* data, size_t size) {
    if (!mLibrary.reserve(size)) return ENOSPC;
    size_t done = 0;
    int error = 0;
    while (done < size && error == 0) {
        const ssize_t put = ::write(mFile, data + done, size - done);
        if (put >= 0) {
            done += static_cast<size_t>(put);
        } else if (errno != EINTR) {
            error = errno;
        }
    }
    if (error == 0) {
        mSize += size;
        return 0;
    }
    // What was written in part is taken away again.
    mLibrary.release(size);
    if (ftruncate(mFile, static_cast<off_t>(mSize)) == 0) {
        lseek(mFile, static_cast<off_t>(mSize), SEEK_SET);
    }
    return error;
}

void RecordingFile::note() {
    const int error = writeNote(info());
    if (error != 0) {
        LOG_TV_ERROR("cannot write {}: {}", notePath(mPath), std::strerror(error));
    }
}

void RecordingFile::setDuration(uint32_t seconds) {
    {
        std::lock_guard<std::mutex> lock(mMutex);
        mInfo.duration = seconds;
    }
    if (seconds < mNoted + kNoteEvery) return;
    mNoted = seconds;
    note();
}

void RecordingFile::finish(int32_t stopReason) {
    if (stopReason == RECORD_STOP_DISK_FULL && mSize > 2 * kRoomForNote) {
        const uint64_t kept = (mSize - kRoomForNote) / kPacketSize * kPacketSize;
        if (ftruncate(mFile, static_cast<off_t>(kept)) == 0) {
            mLibrary.release(mSize - kept);
            mSize = kept;
        }
    }
    if (close(std::exchange(mFile, -1)) != 0) {
        LOG_TV_ERROR("cannot close the recording {}: {}", mPath, std::strerror(errno));
    }
    {
        std::lock_guard<std::mutex> lock(mMutex);
        mInfo.stopReason = stopReason;
        mInfo.recording = false;
    }
    note();
}

RecordingLibrary::RecordingLibrary(Core& core, const std::string& folder, std::string streams)
    : mCore(core), mStreams(std::move(streams)), mFolder(core.remembered(kFolderName)) {
    if (mFolder.empty()) mFolder = folder;
    mLimit = parseSize(core.remembered(kLimitName));
    if (mFolder.size() > kLongestRecordingFolder) {
        LOG_TV_ERROR("the path of the folder of recordings is longer than {} bytes: {}",
                     kLongestRecordingFolder, mFolder);
        mFolder.clear();
    }
    if (sameFolder(mFolder, mStreams)) {
        LOG_TV_ERROR("recordings cannot be in the folder of streams {}", mFolder);
        mFolder.clear();
    }
    if (!mFolder.empty()) makeFolder();  // what is wrong with it is said when it is needed
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
        mLimit = parameter.ui8_size;
        mLatest.reset();
    }
    mCore.remember(kFolderName, folder);
    mCore.remember(kLimitName,
                   parameter.ui8_size == 0 ? std::string() : fmt::format("{}", mLimit.load()));
    return TV_OK;
}

std::optional<RecordingLibrary::Space> RecordingLibrary::space() const {
    const std::string folder = this->folder();
    struct statvfs status = {};
    if (folder.empty() || statvfs(folder.c_str(), &status) != 0) return std::nullopt;
    Space space{uint64_t{status.f_blocks} * status.f_frsize,
                uint64_t{status.f_bavail} * status.f_frsize};
    if (const uint64_t limit = mLimit; limit != 0) {
        uint64_t used = 0;
        for (const RecordingInfo& info : list()) used += info.size;
        space.total = std::min(space.total, limit);
        space.free = std::min(space.free, limit - std::min(used, limit));
    }
    return space;
}

/** Makes the folder, but none that it would be in: a disk that is not there must not be written
 * into the folder where it would be. */
bool RecordingLibrary::makeFolder() const {
    return mkdir(mFolder.c_str(), 0755) == 0 || errno == EEXIST;
}

bool RecordingLibrary::reserve(uint64_t bytes) {
    const uint64_t limit = mLimit;
    if (mUsed.fetch_add(bytes) + bytes <= limit || limit == 0) return true;
    release(bytes);
    return false;
}

void RecordingLibrary::release(uint64_t bytes) {
    uint64_t used = mUsed;
    while (!mUsed.compare_exchange_weak(used, used - std::min(used, bytes))) {
    }
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
    refresh();
    uint64_t used = 0;
    for (const RecordingInfo& info : mKnown) {
        struct stat status = {};
        if (stat(info.path.c_str(), &status) == 0) used += static_cast<uint64_t>(status.st_size);
    }
    mUsed = used;
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
    if (mLimit != 0 && mUsed >= mLimit) {
        error = RECORD_ERROR_DISK_FULL;
        LOG_TV_ERROR("recordings in {} take all of the {} bytes that they may", mFolder,
                     mLimit.load());
        return nullptr;
    }
    RecordingInfo made = info;
    made.recording = true;
    made.stopReason = RECORD_STOP_UNKNOWN;  // until it is stopped: what is read of one that was cut
    const std::string stem = mFolder + "/" + safeFileName(name);
    int file = -1;
    if (makeFolder()) {
        for (int number = 1; file < 0 && number <= kMostOfAName; ++number) {
            made.path =
                    number == 1 ? stem + kEnding : fmt::format("{} ({}){}", stem, number, kEnding);
            // Another recording's note must not be taken for this one's, nor be lost.
            if (access(notePath(made.path).c_str(), F_OK) == 0) {
                errno = EEXIST;
                continue;
            }
            file = open(made.path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                        0644);
            if (file < 0 && errno != EEXIST) break;
        }
    }
    int fault = file < 0 ? errno : writeNote(made);
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
    std::shared_ptr<RecordingFile> recording(new RecordingFile(*this, file, made));
    mActive.push_back(recording);
    mLatest = made.path;
    return recording;
}

void RecordingLibrary::refresh() const {
    struct stat status = {};
    if (mFolder.empty() || stat(mFolder.c_str(), &status) != 0) {
        mKnown.clear();
        mStamp = {};
        return;
    }
    const Stamp stamp{mFolder, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
    if (mSettled && stamp == mStamp) return;
    mStamp = stamp;
    mSettled = status.st_mtim.tv_sec + kStampUncertain <= std::time(nullptr);
    mKnown.clear();
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(mFolder.c_str()), closedir);
    if (folder == nullptr) {
        LOG_TV_ERROR("cannot read the folder of recordings {}: {}", mFolder, std::strerror(errno));
        return;
    }
    while (const dirent* entry = readdir(folder.get())) {
        if (!isStreamName(entry->d_name)) continue;
        const std::string path = mFolder + "/" + entry->d_name;
        if (lstat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) continue;
        if (path.size() > kLongestRecordingPath || mKnown.size() == kMostListed) {
            LOG_TV_WARN("the recording {} is not listed: {}", path,
                        path.size() > kLongestRecordingPath ? "its path is too long"
                                                            : "there are too many");
            if (mKnown.size() == kMostListed) break;
            continue;
        }
        auto info = readNote(path);
        if (!info) {
            // A recording of somebody else's: all there is to know is the file.
            info.emplace();
            info->startTime = status.st_mtim.tv_sec;
            info->localOffset = mCore.clock.offsetAt(info->startTime).seconds;
            info->programName = nameOf(path).substr(0, nameOf(path).size() - (sizeof(kEnding) - 1));
        }
        info->path = path;
        info->size = static_cast<uint64_t>(status.st_size);
        mKnown.push_back(std::move(*info));
    }
    std::sort(mKnown.begin(), mKnown.end(), earlier);
}

/** A recording as it stands now. */
RecordingInfo RecordingLibrary::live(const RecordingInfo& known) const {
    for (const auto& file : activeFiles()) {
        if (file->path() == known.path) return file->info();
    }
    RecordingInfo info = known;
    struct stat status = {};
    if (stat(info.path.c_str(), &status) == 0) info.size = static_cast<uint64_t>(status.st_size);
    return info;
}

std::vector<RecordingInfo> RecordingLibrary::list() const {
    std::lock_guard<std::mutex> lock(mMutex);
    refresh();
    std::vector<RecordingInfo> result;
    for (const RecordingInfo& known : mKnown) result.push_back(live(known));
    return result;
}

size_t RecordingLibrary::count() const {
    std::lock_guard<std::mutex> lock(mMutex);
    refresh();
    return mKnown.size();
}

std::optional<RecordingInfo> RecordingLibrary::at(int64_t index) const {
    std::lock_guard<std::mutex> lock(mMutex);
    refresh();
    if (index < 0 || index >= static_cast<int64_t>(mKnown.size())) return std::nullopt;
    return live(mKnown[static_cast<size_t>(index)]);
}

std::optional<RecordingInfo> RecordingLibrary::byPath(const std::string& path) const {
    std::lock_guard<std::mutex> lock(mMutex);
    refresh();
    const auto found = std::find_if(mKnown.begin(), mKnown.end(),
                                    [&](const RecordingInfo& info) { return info.path == path; });
    return found == mKnown.end() ? std::nullopt : std::make_optional(live(*found));
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
    refresh();
    if (index >= mKnown.size()) return TV_NOT_FOUND;
    const RecordingInfo info = mKnown[index];
    for (const auto& file : activeFiles()) {
        if (file->path() == info.path) return TV_BUSY;
    }
    if (unlink(info.path.c_str()) != 0) {
        LOG_TV_ERROR("cannot delete the recording {}: {}", info.path, std::strerror(errno));
        return TV_FAILED;
    }
    mSettled = false;
    release(info.size);
    const std::string note = notePath(info.path);
    if (unlink(note.c_str()) != 0 && errno != ENOENT) {
        LOG_TV_ERROR("cannot delete {}: {}", note, std::strerror(errno));
    }
    return TV_OK;
}

}  // namespace television
