#include "recorder.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "log.h"
#include "middleware/result_codes.h"
#include "playing.h"
#include "service_tables.h"
#include "stream_folder.h"

namespace television {
namespace {

constexpr uint64_t kMegabyte = 1024 * 1024;
constexpr char kEnding[] = ".ts";

/** A text of a record, which may lack its NUL. */
template <size_t N>
std::string textOf(const char (&text)[N]) {
    return std::string(text, strnlen(text, N));
}

}  // namespace

/** What is recorded: the service and where it comes from, as the lists have it. */
struct Recorder::Source {
    SVL_REC_T service = {};
    TSL_REC_T multiplex = {};
};

Recorder::Recorder(Core& core, RecordingLibrary& library, std::string streams, double speed)
    : mCore(core), mLibrary(library), mStreams(std::move(streams)), mSpeed(speed) {}

/** Answers `read(handle)`. */
template <typename Read>
int32_t Recorder::look(uint32_t handle, Read read) const {
    std::lock_guard<std::mutex> lock(mMutex);
    const auto found = mHandles.find(handle);
    return found == mHandles.end() ? int32_t{TV_NOT_FOUND} : read(found->second);
}

/** Runs `apply(handle)` on one that does not record. */
template <typename Apply>
int32_t Recorder::prepare(uint32_t handle, Apply apply) {
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
    const int32_t known = look(handle, [](const Handle&) { return int32_t{TV_OK}; });
    if (known != TV_OK) return known;
    const auto multiplex = multiplexOf(channelId);
    if (!multiplex || (listId != 0 && multiplex->first != listId)) return TV_NOT_FOUND;
    return prepare(handle, [&](Handle& h) { h.channelId = channelId; });
}

int32_t Recorder::setFileName(uint32_t handle, const std::string& name) {
    std::string stem = name;
    if (isStreamName(stem)) stem.resize(stem.size() - (sizeof(kEnding) - 1));
    // A name that would have to be changed is refused: the caller could not find its file again.
    if (name.empty() || safeFileName(stem) != stem) return TV_INVALID_ARGUMENT;
    return prepare(handle, [&](Handle& h) {
        h.fileName = stem;
        h.renamed = true;
    });
}

int32_t Recorder::setTitle(uint32_t handle, const std::string& title) {
    return prepare(handle, [&](Handle& h) { h.title = title; });
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

/** RECORD_ERROR_…. */
int32_t Recorder::findSource(const Handle& handle, Source& source) const {
    return mCore.read([&](const ChannelLists& lists) -> int32_t {
        const uint32_t channelId = handle.channelId != 0
                                           ? handle.channelId
                                           : lists.current[static_cast<size_t>(handle.source)];
        const ChannelList* list = lists.listOf(channelId);
        if (list == nullptr) return RECORD_ERROR_NO_SIGNAL;
        source.service = list->byChannel(channelId)->record;
        const TSL_REC_T* multiplex = list->multiplex(source.service.ui2_tsl_rec_id);
        if (multiplex == nullptr) return RECORD_ERROR_NO_SIGNAL;
        source.multiplex = *multiplex;
        const bool scrambled = source.service.ui1_free_ca_mode != 0 ||
                               (source.service.ui4_nw_mask & SB_VNET_SCRAMBLED) != 0;
        return scrambled ? RECORD_ERROR_SCRAMBLED : RECORD_ERROR_NONE;
    });
}

ServiceFilter::Describe Recorder::describer(const Source& source) const {
    DescribedService service;
    service.key = {source.service.ui2_original_network_id, source.service.ui2_transport_stream_id,
                   source.service.ui2_service_id};
    service.type = source.service.ui1_service_type;
    service.name = textOf(source.service.s_service_name);
    service.provider = textOf(source.service.s_provider_name);
    const Core& core = mCore;
    const uint32_t channelId = source.service.ui4_channel_id;
    return [&core, channelId, service, version = uint8_t{0},
            told = std::pair<int, int>(-1, -1)]() mutable {
        const int64_t now = core.clock.utcSeconds();
        const Guide::EventPointer present = core.guide.presentEvent(channelId, now);
        const Guide::EventPointer following = core.guide.followingEvent(channelId, now);
        const std::pair<int, int> ids(present == nullptr ? -1 : present->eventId,
                                      following == nullptr ? -1 : following->eventId);
        if (ids != told) ++version;
        told = ids;
        return std::vector<ServiceFilter::Table>{
                describingTable(service),
                eventTable(service, present.get(), following.get(), version)};
    };
}

/** Null, and RECORD_ERROR_… in `error`, when it cannot be recorded. */
std::shared_ptr<RecordingJob> Recorder::makeJob(uint32_t handle, const Handle& settings,
                                                const Source& source, int32_t& error) {
    const std::string file = textOf(source.multiplex.s_source);
    const std::string stream = mStreams + "/" + file;
    if (mStreams.empty() || !isStreamName(file) || file.find('/') != std::string::npos ||
        access(stream.c_str(), R_OK) != 0) {
        LOG_TV_ERROR("no signal for a recording: cannot read {}", stream);
        error = RECORD_ERROR_NO_SIGNAL;
        return nullptr;
    }
    RecordingInfo info;
    info.startTime = mCore.clock.utcSeconds();
    info.localOffset = mCore.clock.offsetAt(info.startTime).seconds;
    info.channelId = source.service.ui4_channel_id;
    info.channelNumber = source.service.ui2_channel_number;
    info.channelName = textOf(source.service.s_service_name);
    info.programName = settings.title;
    if (const auto event = mCore.guide.presentEvent(info.channelId, info.startTime)) {
        if (info.programName.empty()) info.programName = event->title;
        info.rating = event->minimumAge();
    }
    std::string name = settings.fileName;
    if (name.empty()) {
        LocalTexts local = localTexts(info.startTime, info.localOffset);
        std::replace(local.time.begin(), local.time.end(), ':', '.');
        // The time is told also where the channel's name fills the file name.
        const std::string time = fmt::format(" {} {}", local.date, local.time);
        const std::string channel = safeFileName(info.channelName);
        name = cutText(channel, kLongestFileName - time.size()) + time;
    }
    const auto made = mLibrary.create(name, info, error);
    if (made == nullptr) return nullptr;
    RecordingTask task{stream, source.service.ui2_transport_stream_id,
                       source.service.ui2_service_id, describer(source), mSpeed};
    auto job = std::make_shared<RecordingJob>(
            std::move(task), made,
            [this, handle](const RecordingOutcome& outcome) { ended(handle, outcome); });
    return job;
}

int32_t Recorder::start(uint32_t handle) {
    std::lock_guard<std::mutex> starting(mStarting);
    Handle settings;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        const auto found = mHandles.find(handle);
        if (found == mHandles.end()) return TV_NOT_FOUND;
        if (found->second.closing || found->second.status == RECORD_STATUS_RECORDING) {
            return TV_BUSY;
        }
        found->second.starting = true;
        settings = found->second;
    }
    Source source;
    int32_t error = findSource(settings, source);
    const Multiplex multiplex{source.multiplex.ui2_tsl_id, source.multiplex.ui2_tsl_rec_id};
    const auto others = tuned();
    const bool conflict = error == RECORD_ERROR_NONE && others && *others != multiplex;
    std::shared_ptr<RecordingJob> job;
    if (error == RECORD_ERROR_NONE && !conflict) job = makeJob(handle, settings, source, error);
    std::shared_ptr<RecordingJob> before;  // goes without the lock: its thread is waited for
    std::lock_guard<std::mutex> lock(mMutex);
    Handle& kept = mHandles[handle];  // not closed while it starts
    kept.starting = false;
    if (conflict) {
        LOG_TV_WARN("a recording of another multiplex runs: channel {} cannot be recorded",
                    source.service.ui4_channel_id);
        return TV_BUSY;
    }
    kept.error = error;
    if (job == nullptr) {
        kept.status = RECORD_STATUS_FAILED;
        tell(RECORD_NFY_FAILED, handle, static_cast<uint32_t>(error));
        return TV_FAILED;
    }
    before = std::exchange(kept.job, job);
    kept.multiplex = multiplex;
    kept.status = RECORD_STATUS_RECORDING;
    kept.renamed = false;
    kept.order = ++mStarts;
    job->setLimit(kept.limit);
    LOG_TV_INFO("recording {}", job->file().path());
    tell(RECORD_NFY_STARTED, handle, source.service.ui4_channel_id);
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
    Handle& kept = mHandles[handle];  // closed only after this
    kept.error = outcome.error;
    kept.status = outcome.error == RECORD_ERROR_NONE ? RECORD_STATUS_STOPPED : RECORD_STATUS_FAILED;
    LOG_TV_INFO("recorded {}: {} bytes", kept.job->file().path(), kept.job->file().size());
    if (outcome.error != RECORD_ERROR_NONE) {
        tell(RECORD_NFY_FAILED, handle, static_cast<uint32_t>(outcome.error));
    }
    tell(RECORD_NFY_STOPPED, handle, static_cast<uint32_t>(outcome.stopReason));
}

void Recorder::tell(int32_t code, uint32_t handle, uint32_t value) {
    mCore.notifier.post({registration<&a_qortvapi_record_pvr_register_callback>(),
                         code,
                         {handle, value, 0, 0}});
}

int32_t Recorder::mode(uint32_t handle) const {
    return look(handle, [](const Handle& h) { return h.mode; });
}
int32_t Recorder::status(uint32_t handle) const {
    return look(handle, [](const Handle& h) { return h.status; });
}
int32_t Recorder::error(uint32_t handle) const {
    return look(handle, [](const Handle& h) { return h.error; });
}
int32_t Recorder::source(uint32_t handle) const {
    return look(handle, [](const Handle& h) { return h.source; });
}
int32_t Recorder::position(uint32_t handle) const {
    return look(handle, [](const Handle& h) {
        return h.job == nullptr ? 0 : static_cast<int32_t>(h.job->position());
    });
}
int32_t Recorder::megabytes(uint32_t handle) const {
    return look(handle, [](const Handle& h) {
        return h.job == nullptr ? 0 : static_cast<int32_t>(h.job->file().size() / kMegabyte);
    });
}

int32_t Recorder::fileName(uint32_t handle, std::string& name) const {
    return look(handle, [&](const Handle& h) -> int32_t {
        if (!h.fileName.empty()) name = h.fileName + kEnding;
        if (h.job != nullptr && !h.renamed) {
            const std::string& path = h.job->file().path();
            name = path.substr(path.rfind('/') + 1);
        }
        return TV_OK;
    });
}

int32_t Recorder::current() const {
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

std::optional<Recorder::Multiplex> Recorder::tuned() const {
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
