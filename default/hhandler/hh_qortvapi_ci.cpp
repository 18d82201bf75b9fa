#define LOG_TAG "hh_qortvapi_ci"

#include "hhandler/hh_qortvapi_ci.h"

#include <algorithm>
#include <atomic>

#include "bridge.h"
#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/ci.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

/** Returns the number of 32 bits that the middleware passes in place of a pointer. */
uint32_t valueOf(const void* pointer) {
    return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(pointer));
}

/** Returns the length of a text in units with its terminator, 0 for a null pointer. */
uint32_t _getStrSize(const uint16_t* text) {
    if (text == nullptr) {
        TVAPI_DEBUG("%s", __func__);
        return 0;
    }
    uint32_t size = 1;
    while (text[size - 1] != 0) ++size;
    TVAPI_DEBUG("%s size:%d", __func__, size);
    return size;
}

/** Returns a vector that refers to the middleware's text. */
hidl_vec<uint16_t> borrowedUnits(const uint16_t* text) {
    return borrowedVector(const_cast<uint16_t*>(text), _getStrSize(text));
}

HIDL_CI_MMI_ENQ_T borrowedEnquiry(const CI_MMI_ENQ_T& record) {
    HIDL_CI_MMI_ENQ_T enquiry{};
    enquiry.id = record.ui4_id;
    enquiry.answer_length = record.ui1_answer_length;
    enquiry.blind_answer = record.b_blind_answer != 0;
    enquiry.text = borrowedUnits(record.w2s_text);
    enquiry.path_valid = record.b_path_valid != 0;
    enquiry.path_id = record.ui1_path_id;
    return enquiry;
}

HIDL_CI_MMI_MENU_T borrowedMenu(const CI_MMI_MENU_T& record) {
    HIDL_CI_MMI_MENU_T menu{};
    menu.id = record.ui4_id;
    menu.title = borrowedUnits(record.w2s_title);
    menu.subtitle = borrowedUnits(record.w2s_subtitle);
    menu.bottom = borrowedUnits(record.w2s_bottom);
    menu.item_count = record.ui1_item_count;
    // The count is passed on unchanged, but there are at most as many items as the record has room
    // for.
    const int items = std::min<int>(record.ui1_item_count, CI_MMI_MENU_MAX_ITEMS);
    for (int i = 0; i < items; ++i) menu.items[i] = borrowedUnits(record.aw2s_items[i]);
    menu.path_valid = record.b_path_valid != 0;
    menu.path_id = record.ui1_path_id;
    return menu;
}

// Nothing is copied: clients get the middleware's bytes and texts, valid until the handler returns.
void _ci_nfy_fct(uint32_t h_ci, void* pv_tag, int32_t cond, void* pv_data) {
    const FanOut clients(LOG_TAG);
    TVAPI_DEBUG("e_nfy_cond = %d\n", cond);
    const uint32_t tag = valueOf(pv_tag);
    const uint32_t value = valueOf(pv_data);
    const auto notify = [&](const void* data, size_t length) {
        clients.call(&IQorTvApiCallback::notifyCi, h_ci, tag, cond, borrowedBytes(data, length));
    };
    switch (cond) {
        case QORTVAPI_CI_NFY_COND_CARD_INSERT:
            TVAPI_DEBUG("%s QORTVAPI_CI_NFY_COND_CARD_INSERT", __func__);
            TVAPI_DEBUG("%s no CI_IGNORE_CAM_INSERT_BOOTUP", __func__);
            return notify(&value, sizeof(value));
        case 1:
        case 2:
        case 17:
        case 21:
        case 22:
        case 30:
        case 31:
        case 32:
        case 57:
        case 58:
        case 59:
        case 60:
            return notify(&value, sizeof(value));
        case QORTVAPI_CI_NFY_COND_MMI_ENQUIRY:
            TVAPI_DEBUG("%s QORTVAPI_CI_NFY_COND_MMI_ENQUIRY", __func__);
            return clients.call(&IQorTvApiCallback::notifyCiMmiEnquiry, h_ci, tag, cond,
                                borrowedEnquiry(*static_cast<const CI_MMI_ENQ_T*>(pv_data)));
        case QORTVAPI_CI_NFY_COND_MMI_MENU:
        case QORTVAPI_CI_NFY_COND_MMI_LIST:
            TVAPI_DEBUG("%s QORTVAPI_CI_NFY_COND_MMI_MENU/LIST", __func__);
            return clients.call(&IQorTvApiCallback::notifyCiMmiMenu, h_ci, tag, cond,
                                borrowedMenu(*static_cast<const CI_MMI_MENU_T*>(pv_data)));
        case QORTVAPI_CI_NFY_COND_MMI_CLOSE:
            TVAPI_DEBUG("%s QORTVAPI_CI_NFY_COND_MMI_CLOSE", __func__);
            TVAPI_DEBUG("%s sizeof(CI_MMI_ENQ_CLOSE_T):%d", __func__,
                        static_cast<int>(sizeof(CI_MMI_ENQ_CLOSE_T)));
            return notify(pv_data, sizeof(CI_MMI_ENQ_CLOSE_T));
        case QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE:
            TVAPI_DEBUG("%s QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE", __func__);
            return notify(pv_data, 4);
        case QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE_PROGRESS:
            TVAPI_DEBUG("%s QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE_PROGRESS", __func__);
            return notify(pv_data, 2);
        case QORTVAPI_CI_NFY_COND_ERROR:
            TVAPI_DEBUG("%s QORTVAPI_CI_NFY_COND_ERROR", __func__);
            return notify(pv_data, 8);
        case 29:
            return notify(pv_data, 20);
        case QORTVAPI_CI_NFY_COND_PIN_REPLY:
            TVAPI_DEBUG("%s QORTVAPI_CI_NFY_COND_PIN_REPLY, pin_code_status:%d", __func__, value);
            return notify(&value, sizeof(value));
        case QORTVAPI_NAV_CI_BEFORE_SVC_CHANGE_SILENTLY:
            TVAPI_DEBUG("%s QORTVAPI_NAV_CI_BEFORE_SVC_CHANGE_SILENTLY", __func__);
            return notify(nullptr, 0);
        case QORTVAPI_NAV_CI_BEFORE_SVC_CHANGE:
            TVAPI_DEBUG("%s QORTVAPI_NAV_CI_BEFORE_SVC_CHANGE", __func__);
            return notify(nullptr, 0);
        case QORTVAPI_CI_NFY_COND_HDS_REQUEST:
            TVAPI_DEBUG("%s QORTVAPI_CI_NFY_COND_HDS_REQUEST, hds_cmd:%d", __func__, value);
            return notify(&value, sizeof(value));
        default:
            TVAPI_DEBUG("%s doesn't notify this msg(nfy_cond:%d)", __func__, cond);
    }
}

}  // namespace

// Registers nothing: a client asks for the registration with hh_a_qortvapi_ci_reg_callback.
int32_t hh_a_qortvapi_ci_init() {
    return 0;
}

int32_t hh_a_qortvapi_ci_reg_callback(uint32_t* h_ci, uint32_t number, uint32_t category_tag) {
    TVAPI_DEBUG("%s ui4_nfy_category_tag:%x", __func__, category_tag);
    static std::atomic_flag registered = ATOMIC_FLAG_INIT;
    if (registered.test_and_set()) return 0;
    return a_qortvapi_ci_reg_cb(h_ci, number, category_tag, _ci_nfy_fct);
}

int32_t hh_a_qortvapi_ci_unreg_callback(uint32_t h_ci) {
    TVAPI_DEBUG("%s h_ci:%d", __func__, h_ci);
    return 0;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
