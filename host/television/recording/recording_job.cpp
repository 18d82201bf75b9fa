#include "television/recording/recording_job.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <utility>

#include "television/base/log.h"
#include "television/recording/program_clock.h"
#include "television/stream/packet_reader.h"

namespace television {
namespace {

/** Packets of the multiplex that are played between two waits: some tens of milliseconds. */
constexpr uint64_t kPacketsOfATurn = 200;
/** The recording is written when so many bytes have come, */
constexpr size_t kWriteSize = 64 * 1024;
/** or so many seconds of the stream. */
constexpr double kWriteInterval = 0.5;

/** Returns how a recording ends that cannot be written because of an errno. */
RecordingOutcome outcomeOf(int error) {
    const bool full = error == ENOSPC || error == EDQUOT || error == EFBIG;
    return full ? RecordingOutcome{RECORD_STOP_DISK_FULL, RECORD_ERROR_DISK_FULL}
                : RecordingOutcome{RECORD_STOP_UNKNOWN, RECORD_ERROR_WRITE};
}

}  // namespace

/** The file of the multiplex, read from its beginning. */
class RecordingJob::Input {
  public:
    explicit Input(const std::string& path)
        // O_NONBLOCK: a pipe with that name must not be waited for.
        : mFile(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
        if (mFile < 0 || fstat(mFile, &mStatus) != 0) {
            mError = errno;
        } else if (!S_ISREG(mStatus.st_mode)) {
            mError = EINVAL;
        }
    }
    ~Input() {
        if (mFile >= 0) close(mFile);
    }
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    /** The errno of opening or reading it; 0: none. */
    int error() const { return mError; }
    long read(uint8_t* data, size_t size) {
        for (;;) {
            const ssize_t got = ::read(mFile, data, size);
            if (got < 0 && errno == EINTR) continue;
            if (got < 0) mError = errno;
            return got;
        }
    }
    void rewind() { lseek(mFile, 0, SEEK_SET); }
    /** Whether the file has been deleted or replaced. */
    bool gone() const {
        struct stat status = {};
        return fstat(mFile, &status) != 0 || status.st_nlink == 0;
    }
    /** Whether it is the file with this status, unchanged. */
    bool sameAs(const struct stat& other) const {
        return mStatus.st_dev == other.st_dev && mStatus.st_ino == other.st_ino &&
               mStatus.st_size == other.st_size && mStatus.st_mtim.tv_sec == other.st_mtim.tv_sec &&
               mStatus.st_mtim.tv_nsec == other.st_mtim.tv_nsec;
    }
    const struct stat& status() const { return mStatus; }

  private:
    int mFile;
    int mError = 0;
    struct stat mStatus = {};
};

RecordingJob::RecordingJob(RecordingTask task, std::shared_ptr<RecordingFile> file,
                           std::function<void(const RecordingOutcome&)> ended)
    : mTask(std::move(task)), mFile(std::move(file)), mEnded(std::move(ended)) {}

RecordingJob::~RecordingJob() {
    stop(RECORD_STOP_CLOSED);
    if (mThread.joinable()) mThread.join();
}

void RecordingJob::start() {
    mBegin = std::chrono::steady_clock::now();
    mThread = std::thread([this] { run(); });
}

void RecordingJob::stop(int32_t reason) {
    std::lock_guard<std::mutex> lock(mMutex);
    if (mStop == RECORD_STOP_UNKNOWN) mStop = reason;
    mChanged.notify_all();
}

void RecordingJob::wait() {
    std::unique_lock<std::mutex> lock(mMutex);
    mChanged.wait(lock, [this] { return mDone; });
}

void RecordingJob::run() {
    RecordingOutcome outcome = record();
    const int error = flush();  // does nothing when a write has failed: mOut is empty then
    if (error != 0) outcome = outcomeOf(error);
    mFile->setDuration(position());
    mFile->finish(outcome.stopReason);
    mEnded(outcome);
    std::lock_guard<std::mutex> lock(mMutex);
    mDone = true;
    mChanged.notify_all();
}

/** Records until the end. Returns how the recording ended. */
RecordingOutcome RecordingJob::record() {
    ServiceFilter filter(mTask.transportStreamId, mTask.program, mTask.describe);
    struct stat measured = {};
    std::optional<uint64_t> bitRate;
    for (;;) {
        Input input(mTask.stream);
        if (input.error() != 0) {
            LOG_TV_ERROR("the recording {} has no signal: cannot read {}: {}", mFile->path(),
                         mTask.stream, std::strerror(input.error()));
            return {RECORD_STOP_NO_SIGNAL, RECORD_ERROR_NO_SIGNAL};
        }
        if (!bitRate || !input.sameAs(measured)) {
            measured = input.status();
            bitRate = measureBitRate(
                    [&](uint8_t* data, size_t size) { return input.read(data, size); });
            input.rewind();
        }
        const auto outcome = pass(filter, input, bitRate.value_or(kUsualBitRate));
        if (outcome) return *outcome;
        filter.restart();
    }
}

/** Plays the file once. Returns how the recording ended, empty when it goes on. */
std::optional<RecordingOutcome> RecordingJob::pass(ServiceFilter& filter, Input& input,
                                                   uint64_t bitRate) {
    PacketReader packets([&](uint8_t* data, size_t size) { return input.read(data, size); });
    const uint64_t before = filter.passed();
    for (uint64_t count = 1;; ++count) {
        const uint8_t* packet = packets.next();
        if (packet != nullptr) filter.push(packet, mOut);
        if (packet != nullptr && count % kPacketsOfATurn != 0) continue;
        const uint64_t turn = packet != nullptr ? kPacketsOfATurn : (count - 1) % kPacketsOfATurn;
        const auto outcome = advance(turn * kPacketSize * 8, bitRate);
        if (outcome) return outcome;
        if (packet == nullptr) break;
        if (input.gone()) return std::nullopt;  // the next pass opens the file in its place
    }
    if (packets.failed()) {
        LOG_TV_ERROR("the recording {} has no signal: cannot read {}: {}", mFile->path(),
                     mTask.stream, std::strerror(input.error()));
    } else if (filter.passed() == before) {
        LOG_TV_ERROR("the recording {} has no signal: {} has nothing of program {}", mFile->path(),
                     mTask.stream, mTask.program);
    } else {
        return std::nullopt;
    }
    return RecordingOutcome{RECORD_STOP_NO_SIGNAL, RECORD_ERROR_NO_SIGNAL};
}

/** `bits` of the stream have been played: writes what is due, and waits for the time at which a
 * receiver would have received them. Returns how the recording ended, empty when it goes on. */
std::optional<RecordingOutcome> RecordingJob::advance(uint64_t bits, uint64_t bitRate) {
    mSeconds += static_cast<double>(bits) / static_cast<double>(bitRate);
    const uint32_t limit = mLimit;
    const bool complete = limit != 0 && mSeconds >= limit;
    mMilliseconds = static_cast<uint64_t>(complete ? limit * 1000.0 : mSeconds * 1000);
    if (mOut.size() >= kWriteSize || mSeconds >= mFlushed + kWriteInterval) {
        const int error = flush();
        if (error != 0) return outcomeOf(error);
        mFile->setDuration(position());
    }
    std::unique_lock<std::mutex> lock(mMutex);
    const auto stopped = [this] { return mStop != RECORD_STOP_UNKNOWN; };
    if (mTask.speed > 0 && !complete) {
        const std::chrono::duration<double> due(mSeconds / mTask.speed);
        mChanged.wait_until(
                lock, mBegin + std::chrono::duration_cast<std::chrono::steady_clock::duration>(due),
                stopped);
    }
    if (stopped()) return RecordingOutcome{mStop, RECORD_ERROR_NONE};
    if (complete) return RecordingOutcome{RECORD_STOP_SCHEDULE, RECORD_ERROR_NONE};
    return std::nullopt;
}

/** Writes what has come so far. Returns 0, or an errno after a line on the log. */
int RecordingJob::flush() {
    mFlushed = mSeconds;
    if (mOut.empty()) return 0;
    const int error = mFile->write(mOut.data(), mOut.size());
    mOut.clear();
    if (error != 0) {
        LOG_TV_ERROR("cannot write the recording {}: {}", mFile->path(), std::strerror(error));
    }
    return error;
}

}  // namespace television
