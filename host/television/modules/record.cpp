// Recordings and their handles, the disk, schedules.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstring>
#include <string>
#include <vector>

#include "middleware/record.h"
#include "middleware/result_codes.h"
#include "television/base/log.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/modules/modules.h"
#include "television/recording/personal_video_recorder.h"
#include "television/recording/recording_name.h"

namespace television {
namespace {

constexpr uint32_t kDisk = 0;  ///< the only one
constexpr uint32_t kFileNameRoom = 256;
constexpr size_t kLongestEventText = 1024;
constexpr uint64_t kMegabyte = 1024 * 1024;
constexpr int32_t kLongestSpeedTest = 64;  ///< MiB
/** The file that marks a disk as registered. */
constexpr char kRegisterFile[] = ".qortv_disk";
constexpr char kSpeedTestFile[] = ".qortv_speed_test.XXXXXX";

/** Reads the absolute path of a folder; empty when it is none. */
std::string folderOf(const char* path) {
    const auto text = readText(path, kLongestPath);
    struct stat status = {};
    if (!text || text->empty() || (*text)[0] != '/' || stat(text->c_str(), &status) != 0 ||
        !S_ISDIR(status.st_mode)) {
        return {};
    }
    return *text;
}

int32_t createRegisterFile(const char* path) {
    if (!readText(path, kLongestPath)) return TV_INVALID_ARGUMENT;
    const std::string folder = folderOf(path);
    if (folder.empty()) return TV_NOT_FOUND;
    const std::string name = folder + "/" + kRegisterFile;
    const int file =
            open(name.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK, 0644);
    if (file < 0) {
        LOG_TV_ERROR("cannot register the disk: cannot write {}: {}", name, std::strerror(errno));
        return TV_FAILED;
    }
    close(file);
    return TV_OK;
}

int32_t checkRegisterFile(const char* path, bool* registered) {
    if (!readText(path, kLongestPath)) return TV_INVALID_ARGUMENT;
    const std::string folder = folderOf(path);
    struct stat status = {};
    const bool found = !folder.empty() &&
                       lstat((folder + "/" + kRegisterFile).c_str(), &status) == 0 &&
                       S_ISREG(status.st_mode);
    put(registered, found);
    return found ? TV_OK : TV_NOT_FOUND;
}

/** Writes a file of `size` MiB and deletes it. Returns MiB a second, at least 1, or a negative
 * code.
 */
int32_t testSpeed(const std::string& folder, int32_t size) {
    std::string name = folder + "/" + kSpeedTestFile;
    const int file = mkostemp(name.data(), O_CLOEXEC);
    if (file < 0) {
        LOG_TV_ERROR("cannot test the disk: cannot write in {}: {}", folder, std::strerror(errno));
        return TV_FAILED;
    }
    unlink(name.c_str());
    const std::vector<uint8_t> bytes(kMegabyte);
    const auto begin = std::chrono::steady_clock::now();
    bool good = true;
    for (uint64_t left = static_cast<uint64_t>(size) * kMegabyte; good && left > 0;) {
        const ssize_t put = write(file, bytes.data(), std::min<uint64_t>(left, bytes.size()));
        if (put > 0) left -= static_cast<uint64_t>(put);
        good = put > 0 || (put < 0 && errno == EINTR);
    }
    good = good && fdatasync(file) == 0;
    const int error = errno;
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    close(file);
    if (!good) {
        LOG_TV_ERROR("cannot test the disk: cannot write {} MiB in {}: {}", size, folder,
                     std::strerror(error));
        return error == ENOSPC || error == EDQUOT ? TV_FULL : TV_FAILED;
    }
    return std::max(static_cast<int32_t>(size / std::max(took.count(), 1e-6)), 1);
}

/** Returns MiB, at most what the result's type can hold. */
int32_t megabytes(uint64_t bytes) {
    return static_cast<int32_t>(std::min<uint64_t>(bytes / kMegabyte, INT32_MAX));
}

void plugDisk(switchboard::Switchboard& board, RecordingLibrary& library) {
    board.on<&a_qortvapi_record_create_register_file>(createRegisterFile);
    board.on<&a_qortvapi_record_check_register_file>(checkRegisterFile);
    board.on<&a_qortvapi_record_hdd_speed_test>(
            [&library](const char* path, int32_t size) -> int32_t {
                const auto text = readText(path, kLongestPath);
                if (!text || size < 1 || size > kLongestSpeedTest) return TV_INVALID_ARGUMENT;
                const std::string folder = text->empty() ? library.folder() : folderOf(path);
                return folder.empty() ? int32_t{TV_NOT_FOUND} : testSpeed(folder, size);
            });
    board.on<&a_qortvapi_record_pvr_get_disk_total_size>([&library](uint32_t disk) -> int32_t {
        const auto space = disk == kDisk ? library.space() : std::nullopt;
        return space ? megabytes(space->total) : int32_t{TV_NOT_FOUND};
    });
    board.on<&a_qortvapi_record_pvr_get_disk_free_size>([&library](uint32_t disk) -> int32_t {
        const auto space = disk == kDisk ? library.space() : std::nullopt;
        return space ? megabytes(space->free) : int32_t{TV_NOT_FOUND};
    });
    board.on<&a_qortvapi_record_pvr_get_disk>(
            [&library](uint32_t disk, char* path, uint32_t length) -> int32_t {
                const std::string folder = disk == kDisk ? library.folder() : std::string();
                if (folder.empty()) return TV_NOT_FOUND;
                // The buffer has one byte more than the length that the client gives.
                return putText(path, std::min<uint32_t>(length, kLongestRecordingPath) + 1, folder);
            });
    board.on<&a_qortvapi_record_pvr_set_disk>(
            [&library](uint32_t disk, const char* path,
                       const RECORD_DEV_PARAM_T* parameter) -> int32_t {
                if (disk != kDisk) return TV_NOT_FOUND;
                const auto text = readText(path, kLongestPath);
                if (!text) return TV_INVALID_ARGUMENT;
                const RECORD_DEV_PARAM_T noLimit = {};
                return library.setFolder(*text, writable(parameter) ? *parameter : noLimit);
            });
}

void plugHandles(switchboard::Switchboard& board, Recorder& recorder) {
    board.on<&a_qortvapi_record_pvr_open>([&](int32_t source) { return recorder.open(source); });
    // The second argument asks for a recording in the background, as all recordings are.
    board.on<&a_qortvapi_record_pvr_open_ex>(
            [&](int32_t source, bool) { return recorder.open(source); });
    board.on<&a_qortvapi_record_pvr_close>([&](uint32_t handle) { return recorder.close(handle); });
    board.on<&a_qortvapi_record_pvr_select_svc>(
            [&](uint32_t handle, uint32_t channelId, uint16_t listId) {
                return recorder.select(handle, channelId, listId);
            });
    board.on<&a_qortvapi_record_pvr_start>([&](uint32_t handle) { return recorder.start(handle); });
    board.on<&a_qortvapi_record_pvr_stop>([&](uint32_t handle) { return recorder.stop(handle); });
    board.on<&a_qortvapi_record_pvr_set_mode>(
            [&](uint32_t handle, int32_t mode, uint32_t, int32_t value) {
                return recorder.setMode(handle, mode, value);
            });
    board.on<&a_qortvapi_record_pvr_get_mode>(
            [&](uint32_t handle) { return recorder.mode(handle); });
    board.on<&a_qortvapi_record_pvr_get_status>(
            [&](uint32_t handle) { return recorder.status(handle); });
    board.on<&a_qortvapi_record_pvr_get_error_id>(
            [&](uint32_t handle) { return recorder.error(handle); });
    board.on<&a_qortvapi_record_pvr_get_source_type>(
            [&](uint32_t handle) { return recorder.source(handle); });
    board.on<&a_qortvapi_get_recording_position>(
            [&](uint32_t handle) { return recorder.position(handle); });
    board.on<&a_qortvapi_record_pvr_get_recording_file_size>(
            [&](uint32_t handle) { return recorder.megabytes(handle); });
    board.on<&a_qortvapi_record_pvr_get_current_handle>([&] { return recorder.currentHandle(); });
    board.on<&a_qortvapi_record_pvr_set_recording_file_name>(
            [&](uint32_t handle, const char* name) -> int32_t {
                const auto text = readText(name, kFileNameRoom);
                return text ? recorder.setFileName(handle, *text) : int32_t{TV_INVALID_ARGUMENT};
            });
    board.on<&a_qortvapi_record_pvr_get_recording_file_name>(
            [&](uint32_t handle, char* name, uint32_t length) -> int32_t {
                std::string text;
                const int32_t result = recorder.fileName(handle, text);
                if (result != TV_OK) return result;
                return putText(name, std::min(length, kFileNameRoom), text);
            });
}

void plugSchedules(switchboard::Switchboard& board, Schedules& schedules) {
    board.on<&a_qortvapi_set_schedule_record>([&](const SCHEDULE_RECORD_T* record,
                                                  int32_t operation) -> int32_t {
        return writable(record) ? schedules.set(*record, operation) : int32_t{TV_INVALID_ARGUMENT};
    });
    board.on<&a_qortvapi_get_schedule_record>(
            [&](int32_t index, SCHEDULE_RECORD_T* record) -> int32_t {
                if (!writable(record)) return TV_INVALID_ARGUMENT;
                return schedules.at(index, *record);
            });
    board.on<&a_qortvapi_del_schedule_record>([&](int32_t id) { return schedules.remove(id); });
    board.on<&a_qortvapi_pvr_get_booking_count>([&] { return schedules.bookings(); });
    board.on<&a_qortvapi_record_pvr_chk_src_conflict>(
            [&](const RECORD_SOURCE_T* source, const RECORD_SOURCE_T* other) -> int32_t {
                if (!writable(source)) return TV_INVALID_ARGUMENT;
                const bool withAll = !writable(other) || other->ui4_channel_id == 0;
                return schedules.conflicts(*source, withAll ? nullptr : other);
            });
}

int32_t notifyEvent(Core& core, uint32_t event, uint32_t argument) {
    core.notifier.post({registration<&a_qortvapi_record_pvr_register_callback>(),
                        RECORD_NFY_EVENT,
                        {event, argument, 0, 0}});
    return TV_OK;
}

}  // namespace

void plugRecorder(switchboard::Switchboard& board, Core& core, PersonalVideoRecorder& pvr) {
    plugDisk(board, pvr.library);
    plugHandles(board, pvr.recorder);
    plugSchedules(board, pvr.schedules);
    board.on<&a_qortvapi_pvr_set_event>([&core](uint32_t event, uint32_t argument) {
        return notifyEvent(core, event, argument);
    });
    board.on<&a_qortvapi_pvr_set_event_extra>(
            [&core](uint32_t event, uint32_t argument, uint32_t, const char* text) -> int32_t {
                if (!readText(text, kLongestEventText)) return TV_INVALID_ARGUMENT;
                return notifyEvent(core, event, argument);
            });
}

}  // namespace television
