#define LOG_TAG "qortvapi-service"

#include "startup.h"

#include <android-base/logging.h>
#include <android/log.h>
#include <hidl/HidlTransportSupport.h>

#include "QorTvApiCIImpl.h"
#include "QorTvApiChannelListImpl.h"
#include "QorTvApiImpl.h"
#include "custom/qortvapicustom.h"
#include "log.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

using ::android::OK;
using ::android::sp;
using ::android::status_t;

constexpr size_t kMaxRpcThreads = 20;

/** Creates an implementation and registers it. `failure` is a format for the registration's status.
 */
template <typename Implementation>
sp<Implementation> publish(const char* failure, const char* success) {
    const sp<Implementation> implementation = new Implementation();
    const status_t status = implementation->registerAsService("default");
    if (status != OK) __android_log_assert("status != OK", LOG_TAG, failure, status);
    LOG(INFO) << success;
    return implementation;
}

}  // namespace

Services startServices() {
    ::android::hardware::configureRpcThreadpool(kMaxRpcThreads, true);
    mTvApiDebug = static_cast<uint8_t>(hh_init_debug_level());

    // The first one connects to the middleware: nothing is registered before that. The messages are
    // as irregular as they look; whoever watches the log knows them by heart.
    Services services;
    services.push_back(publish<QorTvApiImpl>("Could not register IQorTvApi as service, status=%d",
                                             "register QorTvApi as service"));
    services.push_back(publish<QorTvApiChannelListImpl>(
            "Could not register IQorTvApiChannelList as service, status=%d",
            "register QorTvApiChannelListImpl as service"));
    services.push_back(
            publish<QorTvApiCIImpl>("Could not register IQorTvApiCI as service, status=%d",
                                    "register IQorTvApiCI as service"));

    hh_qortvapi_tvapi_custom_init();
    return services;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
