#include "television/viewing/channel_scan.h"

#include <unistd.h>

#include <exception>
#include <system_error>

#include "middleware/result_codes.h"
#include "middleware/scan.h"
#include "television/base/log.h"
#include "television/lists/scan_records.h"

namespace television {

ChannelScan::ChannelScan(Core& core, StreamFolder& folder, std::mutex& loading,
                         std::chrono::milliseconds pause)
    : mCore(core), mFolder(folder), mLoading(loading), mPause(pause) {}

int32_t ChannelScan::start(int32_t medium, int32_t type, bool clear) {
    if (medium < BRDCST_MEDIUM_UNKNOWN || medium > BRDCST_MEDIUM_DIG_SATELLITE) {
        return TV_INVALID_ARGUMENT;
    }
    if (type != SCAN_TYPE_FULL && type != SCAN_TYPE_UPDATE) return TV_INVALID_ARGUMENT;
    if (mFolder.path().empty() || access((mFolder.path() + "/").c_str(), R_OK | X_OK) != 0) {
        return TV_NOT_FOUND;
    }
    MergeScope scope;
    scope.medium = static_cast<uint8_t>(medium);
    scope.keepGone = type == SCAN_TYPE_UPDATE;
    scope.forgetEdits = type == SCAN_TYPE_FULL && clear;
    std::lock_guard<std::mutex> lock(mMutex);
    if (mStopped) return TV_FAILED;
    if (mPhase != Phase::kIdle) return TV_BUSY;
    // The thread of the previous scan has nothing left to do but return.
    if (mThread.joinable()) mThread.join();
    try {
        mThread = std::thread([this, scope] { run(scope); });
    } catch (const std::system_error& error) {
        LOG_TV_ERROR("cannot start a scan of {}: {}", mFolder.path(), error.code().message());
        return TV_FAILED;
    }
    mPhase = Phase::kSearching;
    mCancel = false;
    const Outcome last = mStatus.last;
    mStatus = {};
    mStatus.active = true;
    mStatus.last = last;
    mStatus.medium = scope.medium;
    mFound.clear();
    return TV_OK;
}

int32_t ChannelScan::cancel() {
    std::lock_guard<std::mutex> lock(mMutex);
    if (mPhase == Phase::kIdle) return TV_NOT_FOUND;
    if (mPhase == Phase::kChanging) return TV_BUSY;
    mCancel = true;
    mWake.notify_all();
    return TV_OK;
}

void ChannelScan::stop() {
    std::thread thread;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        mStopped = true;
        mCancel = true;
        mWake.notify_all();
        thread = std::move(mThread);
    }
    if (thread.joinable()) thread.join();
}

ChannelScan::Status ChannelScan::status() const {
    std::lock_guard<std::mutex> lock(mMutex);
    return mStatus;
}

void ChannelScan::run(const MergeScope& scope) {
    // A load of the folder that is running ends first; one that becomes due meanwhile runs after
    // the scan and finds what changed in the folder.
    std::lock_guard<std::mutex> loading(mLoading);
    try {
        search(scope);
    } catch (const std::exception& error) {
        LOG_TV_ERROR("the scan of {} failed: {}", mFolder.path(), error.what());
        end(Outcome::kFailed, TV_FAILED);
    }
}

void ChannelScan::search(const MergeScope& scope) {
    StreamFolder::Steps steps(mFolder, [&](const ParsedMultiplex& multiplex) {
        return scope.covers(listIdOf(multiplex.delivery.medium));
    });
    {
        std::lock_guard<std::mutex> lock(mMutex);
        notify(SCAN_NFY_STARTED, {scope.medium, static_cast<uint32_t>(steps.count()), 0, 0});
    }
    if (!steps.folderRead()) return end(Outcome::kFailed, TV_NOT_FOUND);
    for (size_t step = 1; steps.left(); ++step) {
        if (!waitForLock()) return end(Outcome::kCancelled);
        const ParsedMultiplex* multiplex = steps.next();
        reportProgress(step, steps.count(), multiplex, scope);
    }
    const bool changed = mCore.merge(steps.finish(), scope, [this] { return beginChange(); });
    end(changed ? Outcome::kCompleted : Outcome::kCancelled);
}

/** Waits as long as a tuner would need to lock; false when the scan was cancelled. */
bool ChannelScan::waitForLock() {
    std::unique_lock<std::mutex> lock(mMutex);
    mWake.wait_for(lock, mPause, [this] { return mCancel; });
    return !mCancel;
}

/** `step` of `steps` is done; `multiplex` is what it read, null for a stream that carries none. */
void ChannelScan::reportProgress(size_t step, size_t steps, const ParsedMultiplex* multiplex,
                                 const MergeScope& scope) {
    std::lock_guard<std::mutex> lock(mMutex);
    uint32_t frequency = 0;
    if (multiplex != nullptr && scope.covers(listIdOf(multiplex->delivery.medium))) {
        count(*multiplex);
        frequency = multiplex->delivery.frequencyKhz;
    }
    mStatus.percent = static_cast<uint32_t>(100 * step / steps);
    notify(SCAN_NFY_PROGRESS, {mStatus.percent, mStatus.television, mStatus.radio, frequency});
}

void ChannelScan::count(const ParsedMultiplex& multiplex) {
    ++mStatus.multiplexes;
    for (const ParsedService& service : multiplex.services) {
        const ServiceKey key{listIdOf(multiplex.delivery.medium), multiplex.originalNetworkId,
                             multiplex.transportStreamId, service.serviceId};
        if (!mFound.insert(key).second) continue;
        const uint32_t mask = networkMask(service);
        ++mStatus.services;
        if ((mask & SB_VNET_TV_SERVICE) != 0) ++mStatus.television;
        if ((mask & SB_VNET_RADIO_SERVICE) != 0) ++mStatus.radio;
    }
}

/** Begins the phase in which the scan cannot be cancelled; false when it already was. */
bool ChannelScan::beginChange() {
    std::lock_guard<std::mutex> lock(mMutex);
    if (mCancel) return false;
    mPhase = Phase::kChanging;
    return true;
}

void ChannelScan::end(Outcome outcome, int32_t code) {
    std::lock_guard<std::mutex> lock(mMutex);
    switch (outcome) {
        case Outcome::kCompleted:
            notify(SCAN_NFY_COMPLETED,
                   {mStatus.services, mStatus.television, mStatus.radio, mStatus.multiplexes});
            break;
        case Outcome::kCancelled:
            notify(SCAN_NFY_CANCELLED, {mStatus.percent, 0, 0, 0});
            break;
        default:
            notify(SCAN_NFY_FAILED, {static_cast<uint32_t>(code), 0, 0, 0});
            break;
    }
    mStatus.active = false;
    mStatus.last = outcome;
    mPhase = Phase::kIdle;
}

void ChannelScan::notify(int32_t code, const std::array<uint32_t, 4>& arguments) {
    mCore.notifier.post({registration<&a_qortvapi_scan_reg_callback>(), code, arguments});
}

}  // namespace television
