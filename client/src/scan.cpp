#include "qortv/scan.h"

#include <optional>
#include <utility>

#include "middleware/records.h"
#include "middleware/scan.h"
#include "refused.h"

namespace qortv {

namespace {

static_assert(int{BRDCST_MEDIUM_UNKNOWN} == static_cast<int>(Medium::kUnknown) &&
              int{BRDCST_MEDIUM_DIG_TERRESTRIAL} == static_cast<int>(Medium::kTerrestrial) &&
              int{BRDCST_MEDIUM_DIG_CABLE} == static_cast<int>(Medium::kCable) &&
              int{BRDCST_MEDIUM_DIG_SATELLITE} == static_cast<int>(Medium::kSatellite));

Medium toMedium(uint64_t medium) {
    return medium <= BRDCST_MEDIUM_DIG_SATELLITE ? static_cast<Medium>(medium) : Medium::kUnknown;
}

std::optional<ScanEvent> toEvent(int32_t code, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                                 uint64_t arg4) {
    const auto number = [](uint64_t arg) { return static_cast<uint32_t>(arg); };
    switch (code) {
        case SCAN_NFY_STARTED:
            return ScanStarted{toMedium(arg1), number(arg2)};
        case SCAN_NFY_PROGRESS:
            return ScanProgress{number(arg1), number(arg2), number(arg3), number(arg4)};
        case SCAN_NFY_COMPLETED:
            return ScanCompleted{number(arg1), number(arg2), number(arg3), number(arg4)};
        case SCAN_NFY_CANCELLED:
            return ScanCancelled{number(arg1)};
        case SCAN_NFY_FAILED:
            return ScanFailed{static_cast<int32_t>(number(arg1))};
        default:
            return std::nullopt;
    }
}

}  // namespace

const char* name(const ScanEvent& event) {
    constexpr const char* kNames[] = {"started", "progress", "completed", "cancelled", "failed"};
    static_assert(std::size(kNames) == std::variant_size_v<ScanEvent>);
    return kNames[event.index()];
}

bool isEnd(const ScanEvent& event) {
    return !std::holds_alternative<ScanStarted>(event) &&
           !std::holds_alternative<ScanProgress>(event);
}

void ScanListener::notifyScan(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                              uint64_t arg3, uint64_t arg4) {
    if (const auto event = toEvent(code, arg1, arg2, arg3, arg4)) {
        onScanEvent(*event);
    } else {
        Listener::notifyScan(code, tag, arg1, arg2, arg3, arg4);
    }
}

Scanner::Scanner(android::sp<Interface> proxy) : mProxy(std::move(proxy)) {}

void Scanner::start(const ScanRequest& request) {
    const int32_t type = request.update ? SCAN_TYPE_UPDATE : SCAN_TYPE_FULL;
    const int32_t result =
            valueOf(mProxy->a_hidl_a_qortvapi_start_scan(static_cast<int32_t>(request.medium), type,
                                                         request.clear),
                    "start_scan");
    if (result >= 0) return;
    std::string reason;
    if (result == TV_BUSY) reason = "another scan is running";
    if (result == TV_NOT_FOUND) reason = "there is nothing to scan";
    throwRefusedTo("start a scan", result, reason);
}

bool Scanner::cancel() {
    const int32_t result = valueOf(mProxy->a_hidl_a_qortvapi_cancel_scan(), "cancel_scan");
    if (result == TV_BUSY || result == TV_NOT_FOUND) return false;
    if (result < 0) throwRefusedTo("cancel the scan", result);
    return true;
}

bool Scanner::active() {
    return valueOf(mProxy->a_hidl_a_qortvapi_is_scan_active(), "is_scan_active");
}

}  // namespace qortv
