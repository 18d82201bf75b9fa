#include "qortv/cam.h"

#include <algorithm>
#include <cstring>
#include <type_traits>
#include <utility>

#include "middleware/ci.h"
#include "middleware/result_codes.h"
#include "qortv/channel.h"
#include "refused.h"
#include "utf16.h"

namespace qortv {

namespace {

using vendor::corvanta::tv::qortvapi::V1_0::HIDL_CI_MMI_ENQ_ANS_T;
using vendor::corvanta::tv::qortvapi::V1_0::IQorTvApi;
using Units = android::hardware::hidl_vec<uint16_t>;
using Bytes = android::hardware::hidl_vec<uint8_t>;

// Types whose information word says nothing, and registrations that nobody tells apart.
constexpr uint32_t kNoInfo = 0;
constexpr uint32_t kAnyNumber = 0;
constexpr uint32_t kNoTag = 0;

/** The text, or nothing when the module sent none: an empty one has its terminator. */
std::optional<std::string> text(const Units& units) {
    if (units.size() == 0) return std::nullopt;
    return toUtf8(units.data(), units.size());
}

/** As much of `data` as there is room for. */
template <typename Data>
void copyFront(void* to, size_t room, const Data& data) {
    if (data.size() > 0) std::memcpy(to, data.data(), std::min<size_t>(room, data.size()));
}

/** The number at the front of bytes, zero-extended when there are fewer of them. */
template <typename T, typename Data>
T number(const Data& data) {
    static_assert(std::is_integral_v<T>);
    T value = 0;
    copyFront(&value, sizeof value, data);
    return value;
}

CamMenu toMenu(const Listener::HIDL_CI_MMI_MENU_T& menu) {
    CamMenu decoded;
    decoded.id = menu.id;
    decoded.title = text(menu.title);
    decoded.subtitle = text(menu.subtitle);
    decoded.bottom = text(menu.bottom);
    // The count is the module's, and not checked on the way.
    const size_t count = std::min<size_t>(menu.item_count, menu.items.size());
    for (size_t i = 0; i < count; ++i) {
        decoded.items.push_back(toUtf8(menu.items[i].data(), menu.items[i].size()));
    }
    return decoded;
}

std::optional<CamEvent> toClosed(const Bytes& data) {
    switch (number<uint8_t>(data)) {
        case CI_MMI_CLOSE_BY_HOST:
            return CamClosed{CamClosed::By::kHost};
        case CI_MMI_CLOSE_REMOVED:
            return CamClosed{CamClosed::By::kRemoval};
        default:
            return CamClosed{CamClosed::By::kModule};
    }
}

std::optional<CamEvent> toPinReply(const Bytes& data) {
    switch (number<uint32_t>(data)) {
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
    CI_ERROR_T record = {};
    copyFront(&record, sizeof record, data);
    switch (record.ui4_error) {
        case CI_ERROR_UNUSABLE_MODULE:
            return CamFault{CamFault::Kind::kUnusable, 0};
        case CI_ERROR_UPGRADE_BROKEN:
            return CamFault{CamFault::Kind::kUpgradeBroken, record.ui4_value};
        default:
            return std::nullopt;
    }
}

/** Nothing for what is no event, or none that is known. */
std::optional<CamEvent> toEvent(int32_t condition, const Bytes& data) {
    switch (condition) {
        case QORTVAPI_CI_NFY_COND_CARD_INSERT:
            return CamCard{number<uint32_t>(data) != CI_CARD_REMOVED};
        case QORTVAPI_CI_NFY_COND_MMI_CLOSE:
            return toClosed(data);
        case QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE:
            return CamUpgrade{number<uint32_t>(data)};
        case QORTVAPI_CI_NFY_COND_FIRMWARE_UPGRADE_PROGRESS:
            return CamUpgradeProgress{number<uint16_t>(data)};
        case QORTVAPI_CI_NFY_COND_ERROR:
            return toFault(data);
        case QORTVAPI_CI_NFY_COND_PIN_REPLY:
            return toPinReply(data);
        default:
            return std::nullopt;
    }
}

void require(int32_t result, const char* what) {
    if (result < 0) throwRefusedTo(what, result);
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

const char* name(CamSlot slot) {
    switch (slot) {
        case CamSlot::kEmpty:
            return "empty";
        case CamSlot::kUpgrading:
            return "upgrading";
        case CamSlot::kReady:
            break;
    }
    return "ready";
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
    onCamEvent(CamEnquiry{enquiry.id, text(enquiry.text), enquiry.answer_length,
                          enquiry.blind_answer});
}

void CamListener::notifyCiMmiMenu(uint64_t, uint64_t, int32_t condition,
                                  const HIDL_CI_MMI_MENU_T& menu) {
    CamMenu decoded = toMenu(menu);
    if (condition == QORTVAPI_CI_NFY_COND_MMI_LIST) return onCamEvent(CamList{std::move(decoded)});
    onCamEvent(std::move(decoded));
}

struct Cam::Answer {
    std::vector<uint8_t> data;
    uint32_t length = 0;
    int32_t result = 0;

    /** The bytes as UTF-16 up to a zero unit. */
    std::string text() const {
        std::vector<uint16_t> units(data.size() / sizeof(uint16_t));
        copyFront(units.data(), units.size() * sizeof(uint16_t), data);
        return toUtf8(units.data(), units.size());
    }
};

Cam::Cam(android::sp<Interface> proxy) : mProxy(std::move(proxy)) {}

/** @param units for a name, how many there is room for; else 0 */
Cam::Answer Cam::get(uint32_t type, uint32_t units) {
    Answer answer;
    check(mProxy->a_hidl_a_qortvapi_ci_get(type, kNoInfo, {}, units,
                                           [&](const Bytes& data, uint32_t length, int32_t result) {
                                               answer = {data, length, result};
                                           }),
          "ci_get");
    return answer;
}

CamSlot Cam::slot() {
    const Answer answer = get(QORTVAPI_CI_GET_TYPE_SLOT_STATE, 0);
    require(answer.result, "read the state of the CAM's slot");
    switch (number<uint8_t>(answer.data)) {
        case CI_SLOT_STATE_EMPTY:
            return CamSlot::kEmpty;
        case CI_SLOT_STATE_UPGRADING:
            return CamSlot::kUpgrading;
        default:
            return CamSlot::kReady;
    }
}

std::optional<uint8_t> Cam::pinTries() {
    const Answer answer = get(QORTVAPI_CI_GET_TYPE_PIN_TRIES, 0);
    if (answer.result == TV_NOT_SUPPORTED) return std::nullopt;
    require(answer.result, "tell the tries for the CAM's PIN");
    return number<uint8_t>(answer.data);
}

std::string Cam::name() {
    constexpr char kWhat[] = "read the CAM's name";
    const Answer size = get(QORTVAPI_CI_GET_TYPE_CAM_NAME, 0);
    require(size.result, kWhat);
    if (size.length == 0) return "";
    const Answer name = get(QORTVAPI_CI_GET_TYPE_CAM_NAME, size.length);
    require(name.result, kWhat);
    return name.text();
}

std::array<uint8_t, 8> Cam::id() {
    const Answer answer = get(QORTVAPI_CI_GET_TYPE_CAM_ID, 0);
    require(answer.result, "read the CAM's id");
    std::array<uint8_t, 8> id = {};
    std::copy_n(answer.data.begin(), std::min(id.size(), answer.data.size()), id.begin());
    return id;
}

std::string Cam::language() {
    const Answer answer = get(QORTVAPI_CI_GET_TYPE_LANG_CODE, 0);
    require(answer.result, "read the CAM's language");
    const auto end = std::find(answer.data.begin(), answer.data.end(), 0);
    return validUtf8({answer.data.begin(), end});
}

std::string Cam::profile() {
    const Answer answer = get(QORTVAPI_CI_GET_TYPE_PROFILE_NAME, 0);
    require(answer.result, "read the CAM's profile");
    return answer.text();
}

void Cam::listen() {
    int32_t result = 0;
    check(mProxy->a_hidl_a_qortvapi_ci_reg_callback(kAnyNumber, kNoTag,
                                                    [&](uint32_t, int32_t code) { result = code; }),
          "ci_reg_callback");
    require(result, "listen to the CAM");
}

int32_t Cam::ask(uint32_t type, const std::vector<uint8_t>& data) {
    return valueOf(mProxy->a_hidl_a_qortvapi_ci_set(type, kNoInfo, data), "ci_set");
}

void Cam::set(uint32_t type, const std::vector<uint8_t>& data, const char* what) {
    require(ask(type, data), what);
}

void Cam::openMenu() {
    const int32_t result = ask(QORTVAPI_CI_SET_TYPE_MMI_ENTER, {});
    if (result == TV_NOT_SUPPORTED) throw Error(Error::Kind::kRefused, "the CAM has no menu");
    require(result, "open the CAM's menu");
}

void Cam::close() {
    set(QORTVAPI_CI_SET_TYPE_MMI_CLOSE, {}, "close the CAM's dialogue");
}

void Cam::answerMenu(uint32_t id, uint8_t answer, const char* what) {
    CI_MMI_MENU_ANS_T record = {};
    record.ui4_id = id;
    record.ui1_answer = answer;
    std::vector<uint8_t> image(sizeof record);
    std::memcpy(image.data(), &record, sizeof record);
    set(QORTVAPI_CI_SET_TYPE_MMI_MENU_ANS, image, what);
}

void Cam::choose(const CamMenu& menu, uint8_t item) {
    if (item < 1 || item > menu.items.size()) {
        throw Error(Error::Kind::kArgument,
                    menu.items.empty() ? "there is nothing to choose from"
                                       : "the items are 1 to " + std::to_string(menu.items.size()) +
                                                 ", not " + std::to_string(item));
    }
    answerMenu(menu.id, item, "take this choice");
}

void Cam::back(const CamMenu& menu) {
    answerMenu(menu.id, CI_MMI_MENU_BACK, "leave this menu");
}

void Cam::answerEnquiry(uint32_t id, uint8_t answer, const std::vector<uint16_t>& text,
                        const char* what) {
    HIDL_CI_MMI_ENQ_ANS_T record;
    record.ui4_id = id;
    record.answer = answer;
    record.w2s_text = text;
    require(valueOf(mProxy->a_hidl_a_qortvapi_ci_set_mmi_enq_ans(QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS,
                                                                 kNoInfo, record),
                    "ci_set_mmi_enq_ans"),
            what);
}

void Cam::answer(const CamEnquiry& enquiry, const std::string& text) {
    std::vector<uint16_t> units = toUtf16(text);
    if (units.size() > enquiry.answerLength) {
        throw Error(Error::Kind::kArgument, "the answer is longer than the " +
                                                    std::to_string(enquiry.answerLength) +
                                                    " characters that the CAM asks for");
    }
    units.push_back(0);  // the module reads on until a zero
    answerEnquiry(enquiry.id, CI_MMI_ENQ_ANSWERED, units, "take this answer");
}

void Cam::back(const CamEnquiry& enquiry) {
    answerEnquiry(enquiry.id, CI_MMI_ENQ_CANCELLED, {0}, "leave this question");
}

void Cam::enterPin(const std::string& digits) {
    const bool good = !digits.empty() && std::all_of(digits.begin(), digits.end(),
                                                     [](char c) { return c >= '0' && c <= '9'; });
    if (!good) throw Error(Error::Kind::kArgument, "a PIN has digits and nothing else");
    set(QORTVAPI_CI_SET_TYPE_PIN_CMD, {digits.begin(), digits.end()}, "look at the PIN");
}

void setCamInserted(const android::sp<IQorTvApi>& television, bool inserted) {
    const char* const what = inserted ? "insert the CAM" : "remove the CAM";
    constexpr int32_t kKind = 0;
    const Bytes flag = {uint8_t{inserted}};
    const int32_t result = valueOf(
            television->a_hidl_a_qortvapi_util_set(CI_SLOT_UTIL_NAME, kKind, flag, flag.size()),
            "util_set");
    if (inserted && result == TV_NOT_FOUND) {
        throw Error(Error::Kind::kRefused, "there is no usable cam.json in the folder of streams");
    }
    require(result, what);
}

}  // namespace qortv
