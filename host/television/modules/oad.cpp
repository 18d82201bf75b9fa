// Over-the-air download as a state machine. The package that it detects is a file that a client
// named: it is detected when it can be read, and neither read nor installed.
#include <unistd.h>

#include <memory>
#include <mutex>

#include "middleware/oad.h"
#include "middleware/result_codes.h"
#include "television/base/log.h"
#include "television/core/client_text.h"
#include "television/core/progress.h"
#include "television/modules/modules.h"

namespace television {
namespace {

/** By OAD_STATE_…. */
constexpr const char* kStateNames[] = {
        "idle",       "detecting", "detected", "not detected",     "downloading",
        "downloaded", "flashing",  "flashed",  "restart accepted", "postponed"};

/** Any thread; the lock is held while notifications are queued. */
class Download : public std::enable_shared_from_this<Download> {
  public:
    explicit Download(Core& core)
        : mCore(core), mProgress(std::make_shared<Progress>(core.notifier, oadRegistration())) {}

    int32_t detect() {
        std::lock_guard<std::mutex> lock(mMutex);
        if (runs()) return TV_BUSY;
        begin(OAD_STATE_DETECTING);
        return TV_OK;
    }
    int32_t download() {
        return beginFrom({OAD_STATE_DETECTED, OAD_STATE_POSTPONED}, OAD_STATE_DOWNLOADING);
    }
    int32_t flash() { return beginFrom({OAD_STATE_DOWNLOADED}, OAD_STATE_FLASHING); }
    /** Cancels the detection or download that is `state`. */
    int32_t stop(int32_t state) {
        std::lock_guard<std::mutex> lock(mMutex);
        if (mState != state) return TV_BUSY;
        mProgress->stop();
        become(OAD_STATE_IDLE, 0);
        return TV_OK;
    }
    /** Goes from one of the states to another one at once. */
    int32_t move(std::initializer_list<int32_t> from, int32_t to) {
        std::lock_guard<std::mutex> lock(mMutex);
        if (!isOneOf(from)) return TV_BUSY;
        become(to, 0);
        return TV_OK;
    }
    int32_t setPackage(const std::string& path) {
        std::lock_guard<std::mutex> lock(mMutex);
        if (runs()) return TV_BUSY;
        mPackage = path;
        return TV_OK;
    }
    void setAutomatic(bool on) { mCore.rememberNumber("oad.automatic", on ? 1 : 0); }

    int32_t state() {
        std::lock_guard<std::mutex> lock(mMutex);
        return mState;
    }
    std::string package() {
        std::lock_guard<std::mutex> lock(mMutex);
        return mPackage;
    }

  private:
    static RegistrationKey oadRegistration() {
        return registration<&a_qortvapi_oad_register_callback>();
    }

    bool isOneOf(std::initializer_list<int32_t> states) const {
        for (const int32_t state : states) {
            if (state == mState) return true;
        }
        return false;
    }
    bool runs() const {
        return isOneOf({OAD_STATE_DETECTING, OAD_STATE_DOWNLOADING, OAD_STATE_FLASHING});
    }

    /** Goes from one of the states to one that takes time. */
    int32_t beginFrom(std::initializer_list<int32_t> from, int32_t to) {
        std::lock_guard<std::mutex> lock(mMutex);
        if (!isOneOf(from)) return TV_BUSY;
        begin(to);
        return TV_OK;
    }

    void begin(int32_t state) {
        mState = state;
        mProgress->start([self = shared_from_this(), state](int32_t percent) {
            self->advance(state, percent);
        });
    }

    /** `state` has come to `percent`; another state may have begun meanwhile. */
    void advance(int32_t state, int32_t percent) {
        const bool automatic = mCore.rememberedNumber("oad.automatic", 0) != 0;
        std::lock_guard<std::mutex> lock(mMutex);
        if (mState != state) return;
        become(state, percent);
        if (percent < 100) return;
        if (state == OAD_STATE_DOWNLOADING) {
            become(OAD_STATE_DOWNLOADED, percent);
        } else if (state == OAD_STATE_FLASHING) {
            become(OAD_STATE_FLASHED, percent);
        } else if (mPackage.empty() || access(mPackage.c_str(), R_OK) != 0) {
            become(OAD_STATE_NOT_DETECTED, percent);
        } else {
            become(OAD_STATE_DETECTED, percent);
            if (automatic) begin(OAD_STATE_DOWNLOADING);
        }
    }

    void become(int32_t state, int32_t percent) {
        mState = state;
        Core& core = mCore;
        core.notifier.post(
                {oadRegistration(), state, {}, [&core, state, percent] {
                     const bool automatic = core.rememberedNumber("oad.automatic", 0) != 0;
                     core.registrations.each<a_qortvapi_oad_nfy_fct>(
                             oadRegistration(), [&](a_qortvapi_oad_nfy_fct handler, void* tag) {
                                 handler(state, tag, kStateNames[state], percent, automatic ? 1 : 0,
                                         0);
                             });
                 }});
    }

    Core& mCore;
    const std::shared_ptr<Progress> mProgress;
    std::mutex mMutex;
    int32_t mState = OAD_STATE_IDLE;  // guarded by mMutex, as all below
    std::string mPackage;
};

}  // namespace

void plugOverTheAirDownload(switchboard::Switchboard& board, Core& core) {
    const auto download = std::make_shared<Download>(core);
    board.on<&a_qortvapi_oad_start_manual_detect>([=] { return download->detect(); });
    board.on<&a_qortvapi_oad_stop_manual_detect>(
            [=] { return download->stop(OAD_STATE_DETECTING); });
    board.on<&a_qortvapi_oad_start_download>([=] { return download->download(); });
    board.on<&a_qortvapi_oad_stop_download>([=] { return download->stop(OAD_STATE_DOWNLOADING); });
    board.on<&a_qortvapi_oad_start_flash>([=] { return download->flash(); });
    board.on<&a_qortvapi_oad_accept_restart>([=] {
        const int32_t result = download->move({OAD_STATE_FLASHED}, OAD_STATE_RESTART_ACCEPTED);
        if (result == TV_OK) LOG_TV_INFO("a download asks for a restart: the television stays on");
        return result;
    });
    board.on<&a_qortvapi_oad_remind_me_later>(
            [=] { return download->move({OAD_STATE_DETECTED}, OAD_STATE_POSTPONED); });
    board.on<&a_qortvapi_oad_set_auto_download>([=](bool on) {
        download->setAutomatic(on);
        return int32_t{TV_OK};
    });
    board.on<&a_qortvapi_oad_get_power_on_status>([=] { return download->state(); });
    board.on<&a_qortvapi_oad_get_datainfo>([=](int32_t item, char* to, uint32_t size) -> int32_t {
        switch (item) {
            case OAD_INFO_PACKAGE:
                return putText(to, size, download->package());
            case OAD_INFO_STATE:
                return putText(to, size, kStateNames[download->state()]);
            default:
                return TV_NOT_FOUND;
        }
    });
    board.on<&a_qortvapi_set_pkg_pathname>([=](const char* path) -> int32_t {
        const auto text = readText(path, kLongestPath);
        return text ? download->setPackage(*text) : int32_t{TV_INVALID_ARGUMENT};
    });
    // The streams announce no downloads, and there is no loaded version to clear.
    board.on<&a_qortvapi_oad_get_scheduleinfo>(
            [](char*, uint32_t) { return int32_t{TV_NOT_FOUND}; });
    board.on<&a_qortvapi_oad_accept_schedule>([] { return int32_t{TV_NOT_FOUND}; });
    board.on<&a_qortvapi_oad_start_jump_channel>([] { return int32_t{TV_NOT_FOUND}; });
    board.on<&a_qortvapi_oad_clear_version>([] { return int32_t{TV_OK}; });
}

}  // namespace television
