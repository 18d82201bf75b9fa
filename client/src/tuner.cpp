#include "qortv/tuner.h"

#include <utility>

#include "middleware/broadcast.h"
#include "middleware/result_codes.h"
#include "result.h"

namespace qortv {

namespace {

Tuning toTuning(uint64_t state) {
    switch (state) {
        case BROADCAST_TUNING_SEARCHING:
            return Tuning::kSearching;
        case BROADCAST_TUNING_LOCKED:
            return Tuning::kLocked;
        case BROADCAST_TUNING_FAILED:
            return Tuning::kFailed;
        default:
            return Tuning::kIdle;
    }
}

TuningError toTuningError(uint64_t error) {
    switch (error) {
        case BROADCAST_TUNING_ERROR_NONE:
            return TuningError::kNone;
        case BROADCAST_TUNING_ERROR_NO_SIGNAL:
            return TuningError::kNoSignal;
        case BROADCAST_TUNING_ERROR_NO_SERVICE:
            return TuningError::kNoService;
        default:
            return TuningError::kOther;
    }
}

/** Returns nothing while no channel is selected. */
std::optional<int> percent(int32_t result, const char* what) {
    if (result == TV_NOT_FOUND) return std::nullopt;
    return checkResult(result, what);
}

}  // namespace

const char* name(Tuning tuning) {
    switch (tuning) {
        case Tuning::kSearching:
            return "searching";
        case Tuning::kLocked:
            return "locked";
        case Tuning::kFailed:
            return "failed";
        case Tuning::kIdle:
            break;
    }
    return "idle";
}

const char* name(TuningError error) {
    switch (error) {
        case TuningError::kNone:
            return "none";
        case TuningError::kNoSignal:
            return "no signal";
        case TuningError::kNoService:
            return "no service";
        case TuningError::kOther:
            break;
    }
    return "unknown error";
}

void TuningListener::notifyBroadcast(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                     uint64_t arg3, uint64_t arg4) {
    if (code == BROADCAST_NFY_TUNING) {
        onTuningEvent(
                {toTuning(arg1), toTuningError(arg2), static_cast<uint32_t>(arg3), arg4 == 0});
    } else {
        Listener::notifyBroadcast(code, tag, arg1, arg2, arg3, arg4);
    }
}

Tuner::Tuner(android::sp<Interface> proxy) : mProxy(std::move(proxy)) {}

void Tuner::tune(uint32_t channelId) {
    checkResult(
            valueOf(mProxy->a_hidl_a_qortvapi_broadcast_select_channel_by_chan_id(channelId, true),
                    "select_channel_by_chan_id"),
            "tune to channel id ", channelId);
}

void Tuner::up() {
    press(BROADCAST_KEY_CHANNEL_UP, "go one channel up");
}

void Tuner::down() {
    press(BROADCAST_KEY_CHANNEL_DOWN, "go one channel down");
}

void Tuner::press(uint32_t key, const char* what) {
    const int32_t result =
            valueOf(mProxy->a_hidl_a_qortvapi_broadcast_key_handler(key), "key_handler");
    if (result == TV_NOT_FOUND) throwRefused(what, result, "there is no channel");
    checkResult(result, what);
}

Tuning Tuner::state() {
    uint32_t state = BROADCAST_TUNING_IDLE;
    int32_t result = TV_FAILED;
    check(mProxy->a_hidl_a_qortvapi_broadcast_get_tuning_status([&](uint32_t status, int32_t code) {
        state = status;
        result = code;
    }),
          "get_tuning_status");
    checkResult(result, "tell the state of the tuner");
    return toTuning(state);
}

std::optional<int> Tuner::signalLevel() {
    return percent(
            valueOf(mProxy->a_hidl_a_qortvapi_broadcast_get_signal_level(), "get_signal_level"),
            "tell the signal level");
}

std::optional<int> Tuner::signalQuality() {
    return percent(
            valueOf(mProxy->a_hidl_a_qortvapi_broadcast_get_signal_quality(), "get_signal_quality"),
            "tell the signal quality");
}

}  // namespace qortv
