#include "qortv/scan.h"

#include <optional>
#include <utility>

#include "medium.h"
#include "middleware/result_codes.h"
#include "middleware/scan.h"
#include "result.h"

namespace qortv {

namespace {

std::optional<ScanEvent> toEvent(int32_t code, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                                 uint64_t arg4) {
    // The middleware passes 32-bit numbers on as pointers.
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
    const int32_t result = valueOf(
            mProxy->a_hidl_a_qortvapi_start_scan(numberOf(request.medium), type, request.clear),
            "start_scan");
    constexpr char kWhat[] = "start a scan";
    if (result == TV_BUSY) throwRefused(kWhat, result, "another scan is running");
    if (result == TV_NOT_FOUND) throwRefused(kWhat, result, "there is nothing to scan");
    checkResult(result, kWhat);
}

bool Scanner::cancel() {
    const int32_t result = valueOf(mProxy->a_hidl_a_qortvapi_cancel_scan(), "cancel_scan");
    if (result == TV_BUSY || result == TV_NOT_FOUND) return false;
    checkResult(result, "cancel the scan");
    return true;
}

bool Scanner::active() {
    return valueOf(mProxy->a_hidl_a_qortvapi_is_scan_active(), "is_scan_active");
}

}  // namespace qortv
