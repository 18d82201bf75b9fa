#define LOG_TAG "hh_qortvapi_upgrade"

#include "hhandler/hh_qortvapi_upgrade.h"

#include "hhandler/fan_out.h"
#include "hhandler/record_text.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/upgrade.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _qortvapi_upgrade_callback_fct(int32_t i4_type, int32_t i4_state, int32_t i4_progress,
                                    void* pv_tag) {
    const FanOut clients(LOG_TAG);
    clients.call(&IQorTvApiCallback::notifyUpgrade, i4_type, i4_state, i4_progress, pv_tag);
}

}  // namespace

// The registration is taken back at once: the middleware learns of the service, but reports no
// progress to it.
int32_t hh_a_qortvapi_update_init() {
    a_qortvapi_upgrade_register_callback(_qortvapi_upgrade_callback_fct, registrationTag(1111));
    return a_qortvapi_upgrade_unregister_callback(_qortvapi_upgrade_callback_fct,
                                                  registrationTag(2222));
}

HIDL_QORTVAPI_UPGRADE_FW_INFO_T toInterface(const QORTVAPI_UPGRADE_FW_INFO_T& info) {
    HIDL_QORTVAPI_UPGRADE_FW_INFO_T result{};
    result.version = info.ui4_version;
    result.size = info.ui4_size;
    result.release_time = info.ui4_release_time;
    result.item_count = info.ui4_item_count;
    result.version_text = textOf(info.s_version_text);
    result.model = textOf(info.s_model);
    result.description = textOf(info.s_description);
    return result;
}

HIDL_QORTVAPI_UPGRADE_ITEM_T toInterface(const QORTVAPI_UPGRADE_ITEM_T& item) {
    HIDL_QORTVAPI_UPGRADE_ITEM_T result{};
    result.index = item.ui4_index;
    result.version = item.ui4_version;
    result.size = item.ui4_size;
    result.name = textOf(item.s_name);
    result.path = textOf(item.s_path);
    return result;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
