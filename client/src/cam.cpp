#include "qortv/cam.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "middleware/ci.h"
#include "middleware/result_codes.h"
#include "qortv/utf8.h"
#include "record_image.h"
#include "result.h"
#include "utf16.h"

namespace qortv {

namespace {

using vendor::corvanta::tv::qortvapi::V1_0::HIDL_CI_MMI_ENQ_ANS_T;
using vendor::corvanta::tv::qortvapi::V1_0::IQorTvApi;

// Arguments that make no difference for the types and the registration used here.
constexpr uint32_t kNoInfo = 0;
constexpr uint32_t kAnyNumber = 0;
constexpr uint32_t kNoTag = 0;

}  // namespace

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

struct Cam::Property {
    Bytes data;
    uint32_t length = 0;  ///< of a text, in UTF-16 units
    int32_t result = 0;

    /** Returns the data, UTF-16 units, as UTF-8 up to a zero unit. */
    std::string text() const {
        std::vector<uint16_t> units(data.size() / sizeof(uint16_t));
        if (!units.empty()) {
            std::memcpy(units.data(), data.data(), units.size() * sizeof(uint16_t));
        }
        return toUtf8(units.data(), units.size());
    }
};

Cam::Cam(android::sp<Interface> proxy) : mProxy(std::move(proxy)) {}

Cam::Property Cam::get(uint32_t type, uint32_t units) {
    Property property;
    check(mProxy->a_hidl_a_qortvapi_ci_get(type, kNoInfo, {}, units,
                                           [&](const Bytes& data, uint32_t length, int32_t result) {
                                               property = {data, length, result};
                                           }),
          "ci_get");
    return property;
}

CamSlot Cam::slot() {
    const Property property = get(QORTVAPI_CI_GET_TYPE_SLOT_STATE, 0);
    checkResult(property.result, "read the state of the CAM's slot");
    switch (recordAtFrontOf<uint8_t>(property.data)) {
        case CI_SLOT_STATE_EMPTY:
            return CamSlot::kEmpty;
        case CI_SLOT_STATE_UPGRADING:
            return CamSlot::kUpgrading;
        default:
            return CamSlot::kReady;
    }
}

std::optional<uint8_t> Cam::pinTries() {
    const Property property = get(QORTVAPI_CI_GET_TYPE_PIN_TRIES, 0);
    if (property.result == TV_NOT_SUPPORTED) return std::nullopt;
    checkResult(property.result, "tell the tries for the CAM's PIN");
    return recordAtFrontOf<uint8_t>(property.data);
}

std::string Cam::name() {
    constexpr char kWhat[] = "read the CAM's name";
    const Property size = get(QORTVAPI_CI_GET_TYPE_CAM_NAME, 0);
    checkResult(size.result, kWhat);
    if (size.length == 0) return "";
    const Property name = get(QORTVAPI_CI_GET_TYPE_CAM_NAME, size.length);
    checkResult(name.result, kWhat);
    return name.text();
}

std::array<uint8_t, 8> Cam::id() {
    const Property property = get(QORTVAPI_CI_GET_TYPE_CAM_ID, 0);
    checkResult(property.result, "read the CAM's id");
    std::array<uint8_t, 8> id = {};
    std::copy_n(property.data.begin(), std::min(id.size(), property.data.size()), id.begin());
    return id;
}

std::string Cam::language() {
    const Property property = get(QORTVAPI_CI_GET_TYPE_LANG_CODE, 0);
    checkResult(property.result, "read the CAM's language");
    const auto end = std::find(property.data.begin(), property.data.end(), 0);
    return validUtf8({property.data.begin(), end});
}

std::string Cam::profile() {
    const Property property = get(QORTVAPI_CI_GET_TYPE_PROFILE_NAME, 0);
    checkResult(property.result, "read the CAM's profile");
    return property.text();
}

void Cam::listen() {
    int32_t result = 0;
    check(mProxy->a_hidl_a_qortvapi_ci_reg_callback(kAnyNumber, kNoTag,
                                                    [&](uint32_t, int32_t code) { result = code; }),
          "ci_reg_callback");
    checkResult(result, "listen to the CAM");
}

int32_t Cam::request(uint32_t type, const std::vector<uint8_t>& data) {
    return valueOf(mProxy->a_hidl_a_qortvapi_ci_set(type, kNoInfo, data), "ci_set");
}

void Cam::set(uint32_t type, const std::vector<uint8_t>& data, const char* what) {
    checkResult(request(type, data), what);
}

void Cam::openMenu() {
    const int32_t result = request(QORTVAPI_CI_SET_TYPE_MMI_ENTER, {});
    if (result == TV_NOT_SUPPORTED) throw Error(Error::Kind::kRefused, "the CAM has no menu");
    checkResult(result, "open the CAM's menu");
}

void Cam::close() {
    set(QORTVAPI_CI_SET_TYPE_MMI_CLOSE, {}, "close the CAM's dialogue");
}

void Cam::answerMenu(uint32_t id, uint8_t answer, const char* what) {
    CI_MMI_MENU_ANS_T record = {};
    record.ui4_id = id;
    record.ui1_answer = answer;
    set(QORTVAPI_CI_SET_TYPE_MMI_MENU_ANS, imageOf(record), what);
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
    checkResult(valueOf(mProxy->a_hidl_a_qortvapi_ci_set_mmi_enq_ans(
                                QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS, kNoInfo, record),
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
    units.push_back(0);  // the module reads up to a zero unit
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
    checkResult(result, what);
}

}  // namespace qortv
