#define LOG_TAG "QorTvApiImpl(service)"

#include "QorTvApiImpl.h"

#include <time.h>
#include <unistd.h>

#include <string>

#include "hhandler/registration.h"
#include "log.h"
#include "middleware/bringup.h"
#include "middleware/svctx.h"
#include "vendor_tmp.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

constexpr timespec kReadinessPeriod = {0, 30'000'000};
constexpr uint32_t kLastReadinessCheck = 2999;
constexpr uint32_t kHandleCount = 4096;
constexpr uint32_t kMemorySize = 12 << 20;

bool exists(const std::string& file) {
    return access(file.c_str(), F_OK) == 0;
}

}  // namespace

QorTvApiImpl::QorTvApiImpl() {
    TVAPI_DEBUG(".");
    initRPC();
    initCallback();
    mDeathRecipient = new ClientDeathRecipient();
}

Return<void> QorTvApiImpl::initRPC() {
    TVAPI_DEBUG(".");
    const std::string folder = qortv_vendor_tmp();
    const std::string service_ready = folder + "/dtv_svc_is_ready";
    const std::string api_ready = folder + "/tv_api_is_init";
    for (uint32_t count = 0; !exists(service_ready) || !exists(api_ready); ++count) {
        TVAPI_DEBUG("waiting dtv_svc count:%d", count);
        nanosleep(&kReadinessPeriod, nullptr);
        if (count == kLastReadinessCheck) {
            TVAPI_LOG("dtv_svc rpc server failed.");
            return ::android::hardware::Void();
        }
    }
    TVAPI_DEBUG("dtv_svc rpc server confirmed ready.");

    int32_t ret = x_rtos_init(nullptr);
    if (ret != 0) TVAPI_LOG("x_rtos_init failed.");
    TVAPI_DEBUG("x_rtos_init ret=%d\n", ret);

    void* memory = nullptr;
    uint32_t size = kMemorySize;
    ret = handle_init(kHandleCount, &memory, &size);
    if (ret != 0) TVAPI_LOG("handle_init failed.");
    TVAPI_DEBUG("handle_init ret=%d\n", ret);

    ret = os_init(memory, size);
    if (ret != 0) TVAPI_LOG("os_init failed.");
    TVAPI_DEBUG("os_init ret=%d\n", ret);

    c_svctx_prepare_process_env(0);
    return ::android::hardware::Void();
}

Return<void> QorTvApiImpl::initCallback() {
    hh_c_svctx_init();
    hh_a_qortvapi_highlevel_init();
    hh_a_qortvapi_3dmode_init();
    hh_a_qortvapi_util_init();
    hh_a_qortvapi_eas_init();
    hh_a_qortvapi_ginga_init();
    hh_a_qortvapi_scan_init();
    hh_a_qortvapi_broadcast_init();
    hh_a_qortvapi_screensaver_init();
    hh_a_qortvapi_rating_init();
    hh_a_qortvapi_dfmngr_init();
    hh_a_qortvapi_banner_init();
    hh_a_qortvapi_warningmsg_init();
    hh_a_qortvapi_subtitle_init();
    hh_a_qortvapi_pwddlg_init();
    hh_a_qortvapi_event_init();
    hh_a_qortvapi_timeshift_init();
    hh_a_qortvapi_time_init();
    hh_c_pcl_init();
    hh_a_qortvapi_event_atsc_init();
    hh_a_qortvapi_config_init();
    hh_a_qortvapi_apptv_init();
    hh_a_qortvapi_oad_init();
    hh_a_qortvapi_hbbtv_init();
    hh_a_qortvapi_mheg5_init();
    hh_a_qortvapi_record_init();
    hh_a_qortvapi_audio_info_init();
    hh_a_qortvapi_update_init();
    hh_a_qortvapi_channellist_init();
    hh_a_qortvapi_ewspa_init();
    hh_a_qortvapi_tt_init();
    hh_a_qortvapi_ci_init();
    hh_a_qortvapi_bml_init();
    hh_a_qortvapi_html_agent_init();
    hh_a_qortvapi_video_info_init();
    // The CI module has two places in this order and registers nothing in either: applications ask
    // for its notifications.
    hh_a_qortvapi_ci_init();
    hh_a_qortvapi_wakelock_init();
    hh_a_qortvapi_tts_init();
    hh_a_qortvapi_mds_init();
    hh_a_qortvapi_ews_init();
    return ::android::hardware::Void();
}

std::mutex& QorTvApiImpl::getCallbackMutex() {
    return implementation::getCallbackMutex();
}

CallbackHandlers& QorTvApiImpl::getCallbackHandlers() {
    return implementation::getCallbackHandlers();
}

Return<void> QorTvApiImpl::setCallback(const sp<IQorTvApiCallback>& callback) {
    implementation::setCallback(callback, mDeathRecipient);
    return ::android::hardware::Void();
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
