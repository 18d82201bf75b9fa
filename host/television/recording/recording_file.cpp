#include "television/recording/recording_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "television/base/log.h"
#include "television/recording/recording_sidecar.h"
#include "television/stream/packet_reader.h"

namespace television {
namespace {

/** Seconds of a recording between two writes of its sidecar file. */
constexpr uint32_t kSidecarInterval = 10;
/** Bytes given back when the disk is full, to have room for the sidecar file. */
constexpr uint64_t kRoomForSidecar = 16 * 1024;

}  // namespace

RecordingFile::RecordingFile(RecordingQuota& quota, int file, const RecordingInfo& info)
    : mQuota(quota), mPath(info.path), mFile(file), mInfo(info) {}

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
    if (!mQuota.reserve(size)) return ENOSPC;
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
    // The file ends with whole packets: a part that was written is removed again.
    mQuota.release(size);
    if (ftruncate(mFile, static_cast<off_t>(mSize)) == 0) {
        lseek(mFile, static_cast<off_t>(mSize), SEEK_SET);
    }
    return error;
}

void RecordingFile::updateSidecar() {
    const int error = writeSidecar(info());
    if (error != 0) {
        LOG_TV_ERROR("cannot write {}: {}", sidecarPath(mPath), std::strerror(error));
    }
}

void RecordingFile::setDuration(uint32_t seconds) {
    {
        std::lock_guard<std::mutex> lock(mMutex);
        mInfo.duration = seconds;
    }
    if (seconds < mSidecarDuration + kSidecarInterval) return;
    mSidecarDuration = seconds;
    updateSidecar();
}

void RecordingFile::finish(int32_t stopReason) {
    if (stopReason == RECORD_STOP_DISK_FULL && mSize > 2 * kRoomForSidecar) {
        const uint64_t kept = (mSize - kRoomForSidecar) / kPacketSize * kPacketSize;
        if (ftruncate(mFile, static_cast<off_t>(kept)) == 0) {
            mQuota.release(mSize - kept);
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
    updateSidecar();
}

}  // namespace television
