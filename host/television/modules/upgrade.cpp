// Software upgrade as a state machine: nothing is downloaded, installed or restarted.
#include <memory>
#include <mutex>

#include "middleware/result_codes.h"
#include "middleware/upgrade.h"
#include "television/base/log.h"
#include "television/core/client_memory.h"
#include "television/core/client_text.h"
#include "television/core/progress.h"
#include "television/modules/modules.h"
#include "television/stream/dvb_text.h"

namespace television {
namespace {

constexpr size_t kLongestLocation = 1024;

constexpr bool isDelivery(uint32_t type) {
    return type == UPGRADE_DELIVERY_INTERNET || type == UPGRADE_DELIVERY_FILE_SYS;
}

/** Returns the firmware that an upgrade would bring: the present version. */
QORTVAPI_UPGRADE_FW_INFO_T firmware() {
    QORTVAPI_UPGRADE_FW_INFO_T info = {};
    info.ui4_version = 1;
    info.ui4_item_count = 1;
    copyText(info.s_version_text, QORTV_VERSION);
    copyText(info.s_model, "Linux");
    copyText(info.s_description, "software television");
    return info;
}

/** Any thread; the lock is held while notifications are queued. */
class Upgrade : public std::enable_shared_from_this<Upgrade> {
  public:
    explicit Upgrade(Core& core)
        : mCore(core),
          mProgress(std::make_shared<Progress>(
                  core.notifier, registration<&a_qortvapi_upgrade_register_callback>())) {}

    int32_t start(uint32_t type) {
        if (!isDelivery(type)) return TV_NOT_SUPPORTED;
        std::lock_guard<std::mutex> lock(mMutex);
        if (mState == UPGRADE_STATE_DOWNLOADING) return TV_BUSY;
        mType = type;
        mState = UPGRADE_STATE_DOWNLOADING;
        mProgress->start([self = shared_from_this()](int32_t percent) { self->advance(percent); });
        return TV_OK;
    }

    int32_t cancel(uint32_t type) {
        if (!isDelivery(type)) return TV_NOT_SUPPORTED;
        std::lock_guard<std::mutex> lock(mMutex);
        if (mState != UPGRADE_STATE_DOWNLOADING || type != mType) return TV_BUSY;
        mProgress->stop();
        mState = UPGRADE_STATE_CANCELLED;
        notify(mState, mPercent);
        return TV_OK;
    }

    int32_t reboot(uint32_t type) {
        if (!isDelivery(type)) return TV_NOT_SUPPORTED;
        std::lock_guard<std::mutex> lock(mMutex);
        if (mState != UPGRADE_STATE_DOWNLOADED || type != mType) return TV_BUSY;
        LOG_TV_INFO("an upgrade asks for a restart: the television stays on");
        mState = UPGRADE_STATE_REBOOT_REQUESTED;
        notify(mState, 100);
        return TV_OK;
    }

    int32_t result(uint32_t type) {
        if (!isDelivery(type)) return TV_NOT_SUPPORTED;
        std::lock_guard<std::mutex> lock(mMutex);
        if (mState == UPGRADE_STATE_IDLE || type != mType) return UPGRADE_RESULT_NONE;
        if (mState == UPGRADE_STATE_DOWNLOADING) return UPGRADE_RESULT_RUNNING;
        return mState == UPGRADE_STATE_CANCELLED ? UPGRADE_RESULT_CANCELLED
                                                 : UPGRADE_RESULT_DOWNLOADED;
    }

  private:
    /** The download has come to `percent`; it may have been cancelled meanwhile. */
    void advance(int32_t percent) {
        std::lock_guard<std::mutex> lock(mMutex);
        if (mState != UPGRADE_STATE_DOWNLOADING) return;
        mPercent = percent;
        notify(UPGRADE_STATE_DOWNLOADING, percent);
        if (percent < 100) return;
        mState = UPGRADE_STATE_DOWNLOADED;
        notify(mState, percent);
    }

    void notify(int32_t state, int32_t percent) {
        mCore.notifier.post({registration<&a_qortvapi_upgrade_register_callback>(),
                             static_cast<int32_t>(mType),
                             {static_cast<uint32_t>(state), static_cast<uint32_t>(percent), 0, 0}});
    }

    Core& mCore;
    const std::shared_ptr<Progress> mProgress;
    std::mutex mMutex;
    uint32_t mType = UPGRADE_DELIVERY_INTERNET;  // guarded by mMutex, as all below
    int32_t mState = UPGRADE_STATE_IDLE;
    int32_t mPercent = 0;
};

}  // namespace

void plugUpgrade(switchboard::Switchboard& board, Core& core) {
    const auto upgrade = std::make_shared<Upgrade>(core);
    board.on<&a_qortvapi_upgrade_start>([=](uint32_t type, bool) { return upgrade->start(type); });
    board.on<&a_qortvapi_upgrade_trigger>([=](uint32_t type) { return upgrade->start(type); });
    board.on<&a_qortvapi_upgrade_start_download_firmware>(
            [=](uint32_t type, const char* url, const char* path) -> int32_t {
                if (!readText(url, kLongestLocation) || !readText(path, kLongestLocation)) {
                    return TV_INVALID_ARGUMENT;
                }
                return upgrade->start(type);
            });
    board.on<&a_qortvapi_upgrade_cancel_download_firmware>(
            [=](uint32_t type) { return upgrade->cancel(type); });
    board.on<&a_qortvapi_upgrade_start_reboot_upgrade>(
            [=](uint32_t type) { return upgrade->reboot(type); });
    board.on<&a_qortvapi_upgrade_query_upgrade_result>(
            [=](uint32_t type) { return upgrade->result(type); });
    board.on<&a_qortvapi_upgrade_check_update>([=](uint32_t type) -> int32_t {
        const int32_t result = upgrade->result(type);
        if (result < 0) return result;
        return result == UPGRADE_RESULT_DOWNLOADED ? 0 : 1;
    });
    board.on<&a_qortvapi_upgrade_is_supported>([](uint32_t type, uint8_t* supported) -> int32_t {
        if (!writable(supported)) return TV_INVALID_ARGUMENT;
        *supported = isDelivery(type);
        return TV_OK;
    });
    board.on<&a_qortvapi_upgrade_get_firmware_info>(
            [](QORTVAPI_UPGRADE_FW_INFO_T* info) -> int32_t {
                if (!writable(info)) return TV_INVALID_ARGUMENT;
                *info = firmware();
                return TV_OK;
            });
    board.on<&a_qortvapi_upgrade_get_item_info>(
            [](uint32_t index, QORTVAPI_UPGRADE_ITEM_T* item) -> int32_t {
                if (!writable(item)) return TV_INVALID_ARGUMENT;
                if (index >= firmware().ui4_item_count) return TV_NOT_FOUND;
                *item = {};
                item->ui4_version = firmware().ui4_version;
                copyText(item->s_name, "television");
                return TV_OK;
            });
    board.on<&a_qortvapi_upgrade_set>([](uint32_t, const uint32_t*, uint32_t, const uint32_t*) {
        return int32_t{TV_NOT_SUPPORTED};
    });
}

}  // namespace television
