#include "qortv/cam_events.h"

#include <utility>

#include "menu_items.h"
#include "middleware/ci.h"
#include "record_image.h"
#include "utf16.h"

namespace qortv {

namespace {

/** Returns nothing when the module sent no text. One that it sent has at least its terminator. */
std::optional<std::string> optionalText(const android::hardware::hidl_vec<uint16_t>& units) {
    if (units.size() == 0) return std::nullopt;
    return toUtf8(units);
}

CamMenu toMenu(const Listener::HIDL_CI_MMI_MENU_T& menu) {
    return {menu.id, optionalText(menu.title), optionalText(menu.subtitle),
            optionalText(menu.bottom), itemsOf(menu)};
}

std::optional<CamEvent> toClosed(const Bytes& data) {
    switch (recordAtFrontOf<uint8_t>(data)) {
        case CI_MMI_CLOSE_BY_HOST:
            return CamClosed{CamClosed::By::kHost};
        case CI_MMI_CLOSE_REMOVED:
            return CamClosed{CamClosed::By::kRemoval};
        default:
            return CamClosed{CamClosed::By::kModule};
    }
}

std::optional<CamEvent> toPinReply(const Bytes& data) {
    switch (recordAtFrontOf<uint32_t>(data)) {
        case CI_PIN_STATE_WRONG:
            return CamPinReply{CamPin::kWrong};
        case CI_PIN_STATE_RIGHT:
            return CamPinReply{CamPin::kRight};
        case CI_PIN_STATE_LOCKED:
            return CamPinReply{CamPin::kLocked};
        default:
            return std::nullopt;
    }
}

std::optional<CamEvent> toFault(const Bytes& data) {
    const auto record = recordAtFrontOf<CI_ERROR_T>(data);
    switch (record.ui4_error) {
        case CI_ERROR_UNUSABLE_MODULE:
            return CamFault{CamFault::Kind::kUnusable, 0};
        case CI_ERROR_UPGRADE_BROKEN:
            return CamFault{CamFault::Kind::kUpgradeBroken, record.ui4_value};
        default:
            return std::nullopt;
    }
}

/** Returns nothing for a condition or state that this library does not know. */
std::optional<CamEvent> toEvent(int32_t condition, const Bytes& data) {
    switch (condition) {
        case QORTVAPI_CI_NFY_COND_CARD_INSERT:
            return CamCard{recordAtFrontOf<uint32_t>(data) != CI_CARD_REMOVED};
        case QORTVAPI_CI_NFY_COND_MMI_CLOSE:
            return toClosed(data);
        case QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE:
            return CamUpgrade{recordAtFrontOf<uint32_t>(data)};
        case QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE_PROGRESS:
            return CamUpgradeProgress{recordAtFrontOf<uint16_t>(data)};
        case QORTVAPI_CI_NFY_COND_ERROR:
            return toFault(data);
        case QORTVAPI_CI_NFY_COND_PIN_REPLY:
            return toPinReply(data);
        default:
            return std::nullopt;
    }
}

}  // namespace

const char* name(CamClosed::By by) {
    switch (by) {
        case CamClosed::By::kHost:
            return "host";
        case CamClosed::By::kRemoval:
            return "removal";
        case CamClosed::By::kModule:
            break;
    }
    return "module";
}

const char* name(CamPin state) {
    switch (state) {
        case CamPin::kRight:
            return "right";
        case CamPin::kLocked:
            return "locked";
        case CamPin::kWrong:
            break;
    }
    return "wrong";
}

void CamListener::notifyCi(uint64_t ci, uint64_t tag, int32_t condition,
                           const hidl_vec<uint8_t>& data) {
    if (const auto event = toEvent(condition, data)) {
        onCamEvent(*event);
    } else {
        Listener::notifyCi(ci, tag, condition, data);
    }
}

void CamListener::notifyCiMmiEnquiry(uint64_t, uint64_t, int32_t,
                                     const HIDL_CI_MMI_ENQ_T& enquiry) {
    onCamEvent(CamEnquiry{enquiry.id, optionalText(enquiry.text), enquiry.answer_length,
                          enquiry.blind_answer});
}

void CamListener::notifyCiMmiMenu(uint64_t, uint64_t, int32_t condition,
                                  const HIDL_CI_MMI_MENU_T& menu) {
    CamMenu decoded = toMenu(menu);
    if (condition == QORTVAPI_CI_NFY_COND_MMI_LIST) return onCamEvent(CamList{std::move(decoded)});
    onCamEvent(std::move(decoded));
}

}  // namespace qortv
