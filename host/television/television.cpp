#include "television/television.h"

#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

#include "television/base/log.h"
#include "television/cam/cam_slot.h"
#include "television/core/core.h"
#include "television/modules/modules.h"
#include "television/recording/personal_video_recorder.h"
#include "television/settings/video_paths.h"
#include "television/stream/folder_watch.h"
#include "television/stream/stream_folder.h"
#include "television/viewing/channel_scan.h"
#include "television/viewing/track_selection.h"

namespace television {
namespace {

/** Runs a function on a thread of its own whenever files in a folder have changed. */
class Watcher {
  public:
    /** Watches from now on, with the arguments of FolderWatch. */
    template <typename... WatchArguments>
    explicit Watcher(WatchArguments&&... arguments)
        : mWatch(std::forward<WatchArguments>(arguments)...) {}
    ~Watcher() {
        mWatch.stop();
        if (mThread.joinable()) mThread.join();
    }
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

    /** Starts the thread; changes since the watch began count. */
    void run(std::function<void()> changed) {
        mThread = std::thread([this, changed = std::move(changed)] {
            while (mWatch.wait()) changed();
        });
    }

  private:
    FolderWatch mWatch;
    std::thread mThread;
};

}  // namespace

/** All that runs between start and stop. */
class Television::Parts {
  public:
    explicit Parts(const Options& options)
        : mCore(options.state, options.time, options.streams),
          mInputs(mCore),
          mPaths(mCore, mInputs),
          mFolder(options.streams),
          mScan(mCore, mFolder, mLoading, options.scanPause),
          mCam(std::make_shared<CamSlot>(mCore, options.streams)),
          mRecorder(mCore, options.streams, options.recordings, options.recordingSpeed) {
        plugRegistrations(mBoard, mCore.registrations);
        plugBringUp(mBoard);
        plugChannelLists();
        plugInputsPictureAndSound();
        plugSettingsAndUpkeep(options);
        plugGuideAndTime();
        plugWatching(options);
        plugRecording();
        plugApplications();
        // Before the first load, so that no change meanwhile is missed.
        if (options.watch && !options.streams.empty()) watch(options);
    }

    ~Parts() {
        mRecorder.stop();
        mScan.stop();  // before the watcher: a load on its thread may be waiting for the scan
        mStreamWatcher.reset();
        mCamWatcher.reset();
        mCore.notifier.stop();
    }

    void loadStreams() {
        if (mFolder.path().empty()) {
            LOG_TV_WARN("QORTV_STREAMS names no folder: the television receives nothing");
            mCore.merge({});
            return;
        }
        std::lock_guard<std::mutex> lock(mLoading);
        const ScanResult scan = mFolder.scan();
        mCore.merge(scan);
        LOG_TV_INFO("{} streams read from {}", scan.multiplexes.size(), mFolder.path());
    }

    void readCam() { mCam->readDescription(); }

    /** Null when there is none. */
    const InputListener* input() const { return mInput.get(); }

    void listen(const std::string& path) {
        if (!path.empty()) mInput = std::make_unique<InputListener>(path);
    }

    void run(std::chrono::milliseconds tick) {
        mCore.notifier.start(tick);
        mRecorder.start(tick);
        if (mStreamWatcher != nullptr) mStreamWatcher->run([this] { loadStreams(); });
        if (mCamWatcher != nullptr) mCamWatcher->run([this] { readCam(); });
    }

  private:
    void watch(const Options& options) {
        mStreamWatcher = std::make_unique<Watcher>(options.streams, options.calm);
        mCamWatcher = std::make_unique<Watcher>(
                options.streams, options.calm,
                [](const std::string& name) { return name == kCamFileName; });
    }

    void plugChannelLists() {
        plugChannelIds(mBoard);
        plugChannels(mBoard, mCore);
        plugChannelBulkReads(mBoard, mCore);
        plugChannelQueries(mBoard, mCore);
        plugChannelWrites(mBoard, mCore);
        plugChannelDeletion(mBoard, mCore);
        plugListSnapshots(mBoard, mCore);
        plugFavourites(mBoard, mCore);
        plugCurrentFavourites(mBoard, mCore);
        plugInstallationLists(mBoard, mCore);
        plugBissKeys(mBoard, mCore);
    }

    void plugInputsPictureAndSound() {
        plugInputSources(mBoard, mCore, mInputs, mPaths);
        plugMultiview(mBoard, mPaths);
        plugScreenMode(mBoard, mCore, mInputs);
        plugScreensaver(mBoard, mInputs);
        plugAvModes(mBoard, mCore);
        plugVolumeControl(mBoard, mCore);
    }

    void plugSettingsAndUpkeep(const Options& options) {
        plugConfiguration(mBoard, mCore, mInputs);
        plugParser(mBoard, options.config);
        plugPasswordDialog(mBoard, mCore);
        plugNetworkWakeUp(mBoard, mCore);
        plugPowerControl(mBoard, mCore);
        plugUpgrade(mBoard, mCore);
        plugOverTheAirDownload(mBoard, mCore);
        plugCommonInterface(mBoard, mCore, *mCam);
        plugUtilities(mBoard, mCore, *mCam);
    }

    /** At each tick handlers are notified in this order. */
    void plugGuideAndTime() {
        plugRatings(mBoard, mCore);
        plugTime(mBoard, mCore);
        plugEvents(mBoard, mCore);
    }

    void plugWatching(const Options& options) {
        plugBroadcast(mBoard, mCore, options.digitTime);
        plugBroadcastNumbers(mBoard, mCore);
        plugBroadcastRegions(mBoard);
        plugBroadcastTuning(mBoard, mCore, *mCam);
        plugScan(mBoard, mCore, mScan);
        plugServiceContexts(mBoard, mCore);
        plugStreamComponents(mBoard, mCore, mInputs);
        const auto tracks = std::make_shared<TrackSelection>(mCore);
        plugAudioInfo(mBoard, mCore, tracks);
        plugSubtitles(mBoard, tracks);
        plugHbbtv(mBoard, mCore, tracks);
        plugVideoInfo(mBoard, mCore);
        plugBanner(mBoard, mCore);
        plugTeletext(mBoard, mCore);
        plugClosedCaptions(mBoard, mCore);
    }

    void plugRecording() {
        plugRecorder(mBoard, mCore, mRecorder);
        plugTimeShift(mBoard, mRecorder);
        plugRecordingBrowser(mBoard, mRecorder);
    }

    void plugApplications() {
        plugTvApplication(mBoard, mCore);
        plugHighLevelControl(mBoard, mCore);
        plugGinga(mBoard, mCore);
        plugMheg5(mBoard, mCore);
        plugEmergencyAlerts(mBoard);
        plugEmergencyWarnings(mBoard);
        plugAbsentFeatures(mBoard);
    }

    Core mCore;
    InputSources mInputs;
    VideoPaths mPaths;
    StreamFolder mFolder;  // guarded by mLoading
    std::mutex mLoading;
    ChannelScan mScan;
    const std::shared_ptr<CamSlot> mCam;
    PersonalVideoRecorder mRecorder;
    std::unique_ptr<Watcher> mStreamWatcher;  ///< null when nothing is watched, as the next
    std::unique_ptr<Watcher> mCamWatcher;
    std::unique_ptr<InputListener> mInput;
    /** The last member: its functions are unplugged before the others are destroyed. */
    switchboard::Switchboard mBoard;
};

Television::Television(Options options)
    : mOptions(std::move(options)), mReadiness(mOptions.readiness) {}

Television::~Television() {
    stop();
}

void Television::removeReadiness() const {
    mReadiness.remove();
}

void Television::start() {
    if (mParts != nullptr) return;
    mReadiness.remove();
    mParts = std::make_unique<Parts>(mOptions);
    mParts->loadStreams();
    mParts->readCam();
    mParts->run(mOptions.tick);
    // The input socket is in the same folder, and has to be there before the readiness files are.
    const bool folder = mReadiness.makeFolder();
    mParts->listen(mOptions.inputSocket);
    if (folder) mReadiness.write();
}

void Television::stop() {
    if (mParts == nullptr) return;
    mReadiness.remove();
    mParts.reset();
}

std::vector<InputEvent> Television::inputEvents() const {
    const InputListener* input = mParts == nullptr ? nullptr : mParts->input();
    return input == nullptr ? std::vector<InputEvent>() : input->events();
}

void Television::reload() {
    if (mParts == nullptr) return;
    mParts->loadStreams();
    mParts->readCam();
}

}  // namespace television
