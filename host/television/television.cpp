#include "television.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <mutex>
#include <thread>
#include <utility>

#include "calls.h"
#include "cam_slot.h"
#include "channel_scan.h"
#include "core.h"
#include "folder_watch.h"
#include "input_listener.h"
#include "log.h"
#include "recording.h"
#include "stream_folder.h"
#include "vendor_tmp.h"
#include "video_paths.h"

namespace television {
namespace {

/** In the order in which the service looks for them. */
constexpr const char* kReadinessFiles[] = {"dtv_svc_is_ready", "tv_api_is_init"};

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

std::string defaultStateFolder() {
    const std::string state = environment("XDG_STATE_HOME");
    if (!state.empty()) return state + "/qortv";
    const std::string home = environment("HOME");
    return home.empty() ? ":memory:" : home + "/.local/state/qortv";
}

/** Does something on a thread of its own whenever files of a folder changed. */
class Watcher {
  public:
    template <typename... WatchArguments>
    explicit Watcher(WatchArguments&&... arguments)
        : mWatch(std::forward<WatchArguments>(arguments)...) {}
    ~Watcher() {
        mWatch.stop();
        if (mThread.joinable()) mThread.join();
    }
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

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

Options Options::fromEnvironment() {
    Options options;
    options.streams = environment("QORTV_STREAMS");
    options.state = environment("QORTV_STATE");
    if (options.state.empty()) options.state = defaultStateFolder();
    options.readiness = qortv_vendor_tmp();
    options.inputSocket = options.readiness + "/DFBInput";
    options.config = environment("QORTV_CONFIG");
    if (options.config.empty() && options.state != ":memory:") {
        options.config = options.state + "/config.ini";
    }
    options.recordings = environment("QORTV_RECORDINGS");
    if (options.recordings.empty() && options.state != ":memory:") {
        options.recordings = options.state + "/recordings";
    }
    return options;
}

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
          mRecording(mCore, options.streams, options.recordings, options.recordingSpeed) {
        plugRegistrations(mBoard, mCore.registrations);
        plugBringUp(mBoard);
        plugChannelIds(mBoard);
        plugChannels(mBoard, mCore);
        plugBulkReads(mBoard, mCore);
        plugQueries(mBoard, mCore);
        plugChannelWrites(mBoard, mCore);
        plugSnapshots(mBoard, mCore);
        plugFavourites(mBoard, mCore);
        plugInstallation(mBoard, mCore);
        plugBissKeys(mBoard, mCore);
        plugVolume(mBoard, mCore);
        plugPicture(mBoard, mCore, mInputs);
        plugCaptions(mBoard, mCore);
        plugContext(mBoard, mCore);
        plugComponents(mBoard, mCore, mInputs);
        plugConfiguration(mBoard, mCore, mInputs);
        plugRatings(mBoard, mCore);
        plugInputSources(mBoard, mCore, mInputs, mPaths);
        plugMultiview(mBoard, mPaths);
        plugTracks(mBoard, mCore);
        plugBanner(mBoard, mCore);
        plugTeletext(mBoard, mCore);
        plugUtilities(mBoard, mCore, *mCam);
        plugUpgrade(mBoard, mCore);
        plugTime(mBoard, mCore);
        plugEvents(mBoard, mCore);
        plugDownload(mBoard, mCore);
        plugHighLevel(mBoard, mCore);
        plugEngines(mBoard, mCore);
        plugApplication(mBoard, mCore);
        plugPower(mBoard, mCore);
        plugCi(mBoard, mCore, *mCam);
        plugScan(mBoard, mCore, mScan);
        plugBroadcast(mBoard, mCore, options.digitTime);
        plugTuner(mBoard, mCore, *mCam);
        plugRecord(mBoard, mCore, mRecording);
        plugTimeShift(mBoard, mRecording);
        plugRecordings(mBoard, mRecording);
        plugParser(mBoard, options.config);
        // Before the first load, so that nothing that changes meanwhile is missed.
        if (options.watch && !options.streams.empty()) {
            mStreamWatcher = std::make_unique<Watcher>(options.streams, options.calm);
            mCamWatcher = std::make_unique<Watcher>(
                    options.streams, options.calm,
                    [](const std::string& name) { return name == kCamFileName; });
        }
    }

    ~Parts() {
        mRecording.stop();
        mScan.stop();  // a load may be waiting for it
        mStreamWatcher.reset();
        mCamWatcher.reset();
        mCore.notifier.stop();
    }

    void load() {
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

    void lookAtCam() { mCam->look(); }

    /** Null when there is none. */
    const InputListener* input() const { return mInput.get(); }

    void listen(const std::string& path) {
        if (!path.empty()) mInput = std::make_unique<InputListener>(path);
    }

    void run(std::chrono::milliseconds tick) {
        mCore.notifier.start(tick);
        mRecording.start(tick);
        if (mStreamWatcher != nullptr) mStreamWatcher->run([this] { load(); });
        if (mCamWatcher != nullptr) mCamWatcher->run([this] { lookAtCam(); });
    }

  private:
    Core mCore;
    InputSources mInputs;
    VideoPaths mPaths;
    StreamFolder mFolder;  // guarded by mLoading
    std::mutex mLoading;
    ChannelScan mScan;
    const std::shared_ptr<CamSlot> mCam;
    Recording mRecording;
    std::unique_ptr<Watcher> mStreamWatcher;
    std::unique_ptr<Watcher> mCamWatcher;
    std::unique_ptr<InputListener> mInput;
    switchboard::Switchboard
            mBoard;  ///< last, so that its functions are unplugged before all else goes
};

Television::Television(Options options) : mOptions(std::move(options)) {}

Television::~Television() {
    stop();
}

void Television::removeReadiness() const {
    if (mOptions.readiness.empty()) return;
    for (const char* name : kReadinessFiles) {
        const std::string path = mOptions.readiness + "/" + name;
        if (unlink(path.c_str()) != 0 && errno != ENOENT && errno != ENOTDIR) {
            LOG_TV_ERROR("cannot remove the old readiness file {}: {}", path, std::strerror(errno));
        }
    }
}

bool Television::makeReadinessFolder() const {
    const std::string& folder = mOptions.readiness;
    if (folder.empty()) return false;
    for (size_t at = folder.find('/', 1); at != std::string::npos; at = folder.find('/', at + 1)) {
        mkdir(folder.substr(0, at).c_str(), 0755);
    }
    if (mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST) return true;
    LOG_TV_ERROR(
            "cannot make the folder {} for the readiness files: {} (QORTV_VENDOR_TMP names "
            "another)",
            folder, std::strerror(errno));
    return false;
}

void Television::writeReadiness() const {
    const std::string& folder = mOptions.readiness;
    for (const char* name : kReadinessFiles) {
        const std::string path = folder + "/" + name;
        const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
        if (file < 0) {
            LOG_TV_ERROR("cannot write the readiness file {}: {}", path, std::strerror(errno));
        } else {
            close(file);
        }
    }
}

void Television::start() {
    if (mParts != nullptr) return;
    removeReadiness();
    mParts = std::make_unique<Parts>(mOptions);
    mParts->load();
    mParts->lookAtCam();
    mParts->run(mOptions.tick);
    // The socket is in the folder of the readiness files, and is there before they say "ready".
    const bool folder = makeReadinessFolder();
    mParts->listen(mOptions.inputSocket);
    if (folder) writeReadiness();
}

void Television::stop() {
    if (mParts == nullptr) return;
    removeReadiness();
    mParts.reset();
}

std::vector<InputEvent> Television::inputEvents() const {
    const InputListener* input = mParts == nullptr ? nullptr : mParts->input();
    return input == nullptr ? std::vector<InputEvent>() : input->events();
}

void Television::reload() {
    if (mParts == nullptr) return;
    mParts->load();
    mParts->lookAtCam();
}

}  // namespace television
