#include "television/recording/recorder.h"

#include <unistd.h>

#include <algorithm>
#include <vector>

#include "middleware/result_codes.h"
#include "television/base/log.h"
#include "television/recording/recording_name.h"
#include "television/stream/stream_name.h"

namespace television {
namespace {

constexpr uint64_t kMegabyte = 1024 * 1024;

}  // namespace

Recorder::Recorder(Core& core, RecordingLibrary& library, std::string streams, double speed)
    : mCore(core), mLibrary(library), mStreams(std::move(streams)), mSpeed(speed) {}

/** Returns `read(handle)`, or TV_NOT_FOUND when there is no such handle. */
template <typename Read>
int32_t Recorder::withHandle(uint32_t handle, Read read) const {
    std::lock_guard<std::mutex> lock(mMutex);
    const auto found = mHandles.find(handle);
    return found == mHandles.end() ? int32_t{TV_NOT_FOUND} : read(found->second);
}

/** Runs `apply(handle)` on a handle that does not record. */
template <typename Apply>
int32_t Recorder::configure(uint32_t handle, Apply apply) {
    std::lock_guard<std::mutex> lock(mMutex);
    const auto found = mHandles.find(handle);
    if (found == mHandles.end()) return TV_NOT_FOUND;
    if (found->second.starting || found->second.status == RECORD_STATUS_RECORDING) return TV_BUSY;
    apply(found->second);
    return TV_OK;
}

int32_t Recorder::open(int32_t source, Owner owner) {
    if (source != RECORD_SOURCE_MAIN && source != RECORD_SOURCE_SUB) return TV_INVALID_ARGUMENT;
    std::lock_guard<std::mutex> lock(mMutex);
    const auto ofApplications = std::count_if(
            mHandles.begin(), mHandles.end(),
            [](const auto& entry) { return entry.second.owner == Owner::kApplication; });
    if (mHandles.size() >= kMostHandles) return TV_FULL;
    if (owner == Owner::kApplication &&
        static_cast<size_t>(ofApplications) >= kMostOfApplications) {
        return TV_FULL;
    }
    do {
        mLast = mLast % INT32_MAX + 1;
    } while (mHandles.count(mLast) != 0);
    Handle& handle = mHandles[mLast];
    handle.source = source;
    handle.owner = owner;
    return static_cast<int32_t>(mLast);
}

int32_t Recorder::close(uint32_t handle) {
    std::shared_ptr<RecordingJob> job;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        const auto found = mHandles.find(handle);
        if (found == mHandles.end()) return TV_NOT_FOUND;
        if (found->second.starting || found->second.closing) return TV_BUSY;
        found->second.closing = true;
        job = found->second.job;
    }
    if (job != nullptr) {
        job->stop(RECORD_STOP_CLOSED);
        job->wait();
    }
    std::lock_guard<std::mutex> lock(mMutex);
    mHandles.erase(handle);
    return TV_OK;
}

int32_t Recorder::select(uint32_t handle, uint32_t channelId, uint16_t listId) {
    const int32_t known = withHandle(handle, [](const Handle&) { return int32_t{TV_OK}; });
    if (known != TV_OK) return known;
    const auto multiplex = multiplexOf(channelId);
    if (!multiplex || (listId != 0 && multiplex->first != listId)) return TV_NOT_FOUND;
    return configure(handle, [&](Handle& h) { h.channelId = channelId; });
}

int32_t Recorder::setFileName(uint32_t handle, const std::string& name) {
    std::string stem = name;
    if (isStreamName(stem)) stem = withoutStreamEnding(stem);
    // A name that would have to be changed is refused: the caller could not find the file.
    if (name.empty() || safeFileName(stem) != stem) return TV_INVALID_ARGUMENT;
    return configure(handle, [&](Handle& h) {
        h.fileName = stem;
        h.renamed = true;
    });
}

int32_t Recorder::setTitle(uint32_t handle, const std::string& title) {
    return configure(handle, [&](Handle& h) { h.title = title; });
}

int32_t Recorder::setMode(uint32_t handle, int32_t mode, int32_t value) {
    if (mode != RECORD_MODE_NORMAL && mode != RECORD_MODE_LIMITED) return TV_INVALID_ARGUMENT;
    if (mode == RECORD_MODE_LIMITED && value <= 0) return TV_INVALID_ARGUMENT;
    std::lock_guard<std::mutex> lock(mMutex);
    const auto found = mHandles.find(handle);
    if (found == mHandles.end()) return TV_NOT_FOUND;
    found->second.mode = mode;
    found->second.limit = mode == RECORD_MODE_LIMITED ? static_cast<uint32_t>(value) : 0;
    if (found->second.job != nullptr) found->second.job->setLimit(found->second.limit);
    return TV_OK;
}

/** Returns the recording, not yet started; null, and RECORD_ERROR_… in `error`, when the source
 * cannot be recorded. */
std::shared_ptr<RecordingJob> Recorder::makeJob(uint32_t handle, const Handle& settings,
                                                const RecordingSource& source, int32_t& error) {
    const std::string file = source.streamFile();
    const std::string stream = mStreams + "/" + file;
    if (mStreams.empty() || !isStreamName(file) || file.find('/') != std::string::npos ||
        access(stream.c_str(), R_OK) != 0) {
        LOG_TV_ERROR("no signal for a recording: cannot read {}", stream);
        error = RECORD_ERROR_NO_SIGNAL;
        return nullptr;
    }
    const RecordingInfo info = newRecordingInfo(mCore, source, settings.title);
    const std::string name = settings.fileName.empty() ? defaultFileName(info) : settings.fileName;
    const auto made = mLibrary.create(name, info, error);
    if (made == nullptr) return nullptr;
    RecordingTask task{stream, source.service.ui2_transport_stream_id,
                       source.service.ui2_service_id, describerOf(mCore, source), mSpeed};
    return std::make_shared<RecordingJob>(
            std::move(task), made,
            [this, handle](const RecordingOutcome& outcome) { ended(handle, outcome); });
}

/** Marks a handle as starting and copies its settings. With mStarting held. */
int32_t Recorder::beginStart(uint32_t handle, Handle& settings) {
    std::lock_guard<std::mutex> lock(mMutex);
    const auto found = mHandles.find(handle);
    if (found == mHandles.end()) return TV_NOT_FOUND;
    if (found->second.closing || found->second.status == RECORD_STATUS_RECORDING) return TV_BUSY;
    found->second.starting = true;
    settings = found->second;
    return TV_OK;
}

int32_t Recorder::start(uint32_t handle) {
    std::lock_guard<std::mutex> starting(mStarting);
    Handle settings;
    const int32_t result = beginStart(handle, settings);
    if (result != TV_OK) return result;
    RecordingSource source;
    int32_t error = findRecordingSource(mCore, settings.channelId,
                                        static_cast<size_t>(settings.source), source);
    const Multiplex multiplex{source.multiplex.ui2_tsl_id, source.multiplex.ui2_tsl_rec_id};
    const auto recorded = recordedMultiplex();
    const bool conflict = error == RECORD_ERROR_NONE && recorded && *recorded != multiplex;
    std::shared_ptr<RecordingJob> job;
    if (error == RECORD_ERROR_NONE && !conflict) job = makeJob(handle, settings, source, error);
    // The handle's previous recording; destroyed after the lock is released, since that waits.
    std::shared_ptr<RecordingJob> previous;
    std::lock_guard<std::mutex> lock(mMutex);
    Handle& kept = mHandles[handle];  // `starting` keeps it from being closed
    kept.starting = false;
    if (conflict) {
        LOG_TV_WARN("a recording of another multiplex runs: channel {} cannot be recorded",
                    source.service.ui4_channel_id);
        return TV_BUSY;
    }
    kept.error = error;
    if (job == nullptr) {
        kept.status = RECORD_STATUS_FAILED;
        notify(RECORD_NFY_FAILED, handle, static_cast<uint32_t>(error));
        return TV_FAILED;
    }
    previous = std::exchange(kept.job, job);
    kept.multiplex = multiplex;
    kept.status = RECORD_STATUS_RECORDING;
    kept.renamed = false;
    kept.order = ++mStarts;
    job->setLimit(kept.limit);
    LOG_TV_INFO("recording {}", job->file().path());
    notify(RECORD_NFY_STARTED, handle, source.service.ui4_channel_id);
    job->start();
    return TV_OK;
}

int32_t Recorder::stop(uint32_t handle, int32_t reason) {
    std::shared_ptr<RecordingJob> job;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        const auto found = mHandles.find(handle);
        if (found == mHandles.end()) return TV_NOT_FOUND;
        if (found->second.status != RECORD_STATUS_RECORDING) return TV_BUSY;
        job = found->second.job;
    }
    job->stop(reason);
    job->wait();
    return TV_OK;
}

void Recorder::stopAll() {
    std::lock_guard<std::mutex> starting(mStarting);
    std::vector<std::shared_ptr<RecordingJob>> jobs;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        for (const auto& entry : mHandles) {
            if (entry.second.job != nullptr) jobs.push_back(entry.second.job);
        }
    }
    for (const auto& job : jobs) job->stop(RECORD_STOP_CLOSED);
    for (const auto& job : jobs) job->wait();
}

void Recorder::ended(uint32_t handle, const RecordingOutcome& outcome) {
    std::lock_guard<std::mutex> lock(mMutex);
    Handle& kept = mHandles[handle];  // `close` waits for this before it removes the handle
    kept.error = outcome.error;
    kept.status = outcome.error == RECORD_ERROR_NONE ? RECORD_STATUS_STOPPED : RECORD_STATUS_FAILED;
    LOG_TV_INFO("recorded {}: {} bytes", kept.job->file().path(), kept.job->file().size());
    if (outcome.error != RECORD_ERROR_NONE) {
        notify(RECORD_NFY_FAILED, handle, static_cast<uint32_t>(outcome.error));
    }
    notify(RECORD_NFY_STOPPED, handle, static_cast<uint32_t>(outcome.stopReason));
}

void Recorder::notify(int32_t code, uint32_t handle, uint32_t value) {
    mCore.notifier.post({registration<&a_qortvapi_record_pvr_register_callback>(),
                         code,
                         {handle, value, 0, 0}});
}

int32_t Recorder::mode(uint32_t handle) const {
    return withHandle(handle, [](const Handle& h) { return h.mode; });
}
int32_t Recorder::status(uint32_t handle) const {
    return withHandle(handle, [](const Handle& h) { return h.status; });
}
int32_t Recorder::error(uint32_t handle) const {
    return withHandle(handle, [](const Handle& h) { return h.error; });
}
int32_t Recorder::source(uint32_t handle) const {
    return withHandle(handle, [](const Handle& h) { return h.source; });
}
int32_t Recorder::position(uint32_t handle) const {
    return withHandle(handle, [](const Handle& h) {
        return h.job == nullptr ? 0 : static_cast<int32_t>(h.job->position());
    });
}
int32_t Recorder::megabytes(uint32_t handle) const {
    return withHandle(handle, [](const Handle& h) {
        return h.job == nullptr ? 0 : static_cast<int32_t>(h.job->file().size() / kMegabyte);
    });
}

int32_t Recorder::fileName(uint32_t handle, std::string& name) const {
    return withHandle(handle, [&](const Handle& h) -> int32_t {
        if (!h.fileName.empty()) name = h.fileName + std::string(kStreamNameEnding);
        if (h.job != nullptr && !h.renamed) {
            const std::string& path = h.job->file().path();
            name = path.substr(path.rfind('/') + 1);
        }
        return TV_OK;
    });
}

int32_t Recorder::currentHandle() const {
    std::lock_guard<std::mutex> lock(mMutex);
    int32_t result = TV_NOT_FOUND;
    uint64_t latest = 0;
    for (const auto& [handle, kept] : mHandles) {
        if (kept.status != RECORD_STATUS_RECORDING || kept.order < latest) continue;
        latest = kept.order;
        result = static_cast<int32_t>(handle);
    }
    return result;
}

std::optional<Recorder::Multiplex> Recorder::recordedMultiplex() const {
    std::lock_guard<std::mutex> lock(mMutex);
    for (const auto& entry : mHandles) {
        if (entry.second.status == RECORD_STATUS_RECORDING) return entry.second.multiplex;
    }
    return std::nullopt;
}

std::optional<Recorder::Multiplex> Recorder::multiplexOf(uint32_t channelId) const {
    return mCore.read([&](const ChannelLists& lists) -> std::optional<Multiplex> {
        const ChannelList* list = lists.listOf(channelId);
        if (list == nullptr) return std::nullopt;
        return Multiplex{list->id, list->byChannel(channelId)->record.ui2_tsl_rec_id};
    });
}

}  // namespace television
