#define LOG_TAG "qortvapi-service"

#include "startup.h"

#include <android-base/logging.h>
#include <android/log.h>
#include <hidl/HidlTransportSupport.h>

#include "QorTvApiBroadcastImpl.h"
#include "QorTvApiCIImpl.h"
#include "QorTvApiCec.h"
#include "QorTvApiChannelListImpl.h"
#include "QorTvApiConfigImpl.h"
#include "QorTvApiEventImpl.h"
#include "QorTvApiImpl.h"
#include "QorTvApiInputSrcImpl.h"
#include "QorTvApiMultiviewImpl.h"
#include "QorTvApiPvrbrowserImpl.h"
#include "QorTvApiRatingImpl.h"
#include "QorTvApiRecordImpl.h"
#include "QorTvApiScanImpl.h"
#include "QorTvApiTimeImpl.h"
#include "QorTvApiTimeshiftImpl.h"
#include "custom/qortvapicustom.h"
#include "log.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

using ::android::OK;
using ::android::sp;
using ::android::status_t;

constexpr size_t kMaxRpcThreads = 20;

/** Creates an implementation and registers it. `failure` is the format of the message that ends the
 * process, with the registration's status; `success` is logged otherwise. */
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
    // irregular on purpose: whoever watches the log looks for exactly these.
    Services services = {
            publish<QorTvApiImpl>("Could not register IQorTvApi as service, status=%d",
                                  "register QorTvApi as service"),
            publish<QorTvApiConfigImpl>("Could not register IQorTvApiConfig as service, status=%d",
                                        "register QorTvApiConfig as service"),
            publish<QorTvApiCec>("Could not register IQorTvApiCec as service, status=%d",
                                 "register IQorTvApiCec as service"),
            publish<QorTvApiScanImpl>("Could not register IQorTvApiScan as service, status=%d",
                                      "register QorTvApiScan as service"),
            publish<QorTvApiBroadcastImpl>(
                    "Could not register IQorTvApiBroadcast as service, status=%d",
                    "register QorTvApiBroadcastImpl as service"),
            publish<QorTvApiRatingImpl>("Could not register IQorTvApiRating as service, status=%d",
                                        "register QorTvApiRatingImpl as service"),
            publish<QorTvApiTimeshiftImpl>(
                    "Could not register IQorTvApiTimeshift as service, status=%d",
                    "register QorTvApiTimeshiftImpl as service"),
            publish<QorTvApiTimeImpl>("Could not register IQorTvApiTime as service, status=%d",
                                      "register QorTvApiTimeImpl as service"),
            publish<QorTvApiEventImpl>("Could not register IQorTvApiEvent as service, status=%d",
                                       "register QorTvApiEventImpl as service"),
            publish<QorTvApiPvrbrowserImpl>(
                    "Could not register IQorTvApiPvrbrowser as service, status=%d",
                    "register QorTvApiPvrbrowserImpl as service"),
            publish<QorTvApiInputSrcImpl>(
                    "Could not register QorTvApInputSrc as service, status=%d",
                    "register QorTvApiInputSrcImpl as service"),
            publish<QorTvApiRecordImpl>("Could not register IQorTvApiRecord as service, status=%d",
                                        "register QorTvApiRecordImpl as service"),
            publish<QorTvApiMultiviewImpl>(
                    "Could not register IQorTvApiMultiview as service, status=%d",
                    "register QorTvApiMultiviewImpl as service"),
            publish<QorTvApiChannelListImpl>(
                    "Could not register IQorTvApiChannelList as service, status=%d",
                    "register QorTvApiChannelListImpl as service"),
            publish<QorTvApiCIImpl>("Could not register IQorTvApiCI as service, status=%d",
                                    "register IQorTvApiCI as service"),
    };

    hh_qortvapi_tvapi_custom_init();
    return services;
}

void releaseInReverse(Services& services) {
    while (!services.empty()) services.pop_back();
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
