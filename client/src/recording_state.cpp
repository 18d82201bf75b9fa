#include "qortv/recording_state.h"

#include <optional>

#include "middleware/record.h"
#include "recording_codes.h"

namespace qortv {

namespace {

std::optional<RecordingEvent> toEvent(int32_t code, uint64_t arg1, uint64_t arg2) {
    // The middleware passes 32-bit numbers on as pointers.
    const auto id = static_cast<uint32_t>(arg1);
    const auto value = static_cast<uint32_t>(arg2);
    switch (code) {
        case RECORD_NFY_STARTED:
            return RecordingStarted{id, value};
        case RECORD_NFY_STOPPED:
            return RecordingStopped{id, recordingEnd(value)};
        case RECORD_NFY_FAILED:
            return RecordingFailed{id, recordingError(value)};
        case RECORD_NFY_SCHEDULE_CHANGED:
            return ScheduleChanged{id, scheduleState(value)};
        default:
            return std::nullopt;
    }
}

}  // namespace

const char* describe(RecordingError error) {
    switch (error) {
        case RecordingError::kNone:
            return "";
        case RecordingError::kNoDisk:
            return "there is no folder for recordings that can be written";
        case RecordingError::kDiskFull:
            return "the disk is full";
        case RecordingError::kNoSignal:
            return "there is no signal";
        case RecordingError::kScrambled:
            return "the channel is scrambled";
        case RecordingError::kWrite:
            return "the disk could not be written";
    }
    return "";
}

const char* name(RecordingError error) {
    switch (error) {
        case RecordingError::kNone:
            return "none";
        case RecordingError::kNoDisk:
            return "no-disk";
        case RecordingError::kDiskFull:
            return "disk-full";
        case RecordingError::kNoSignal:
            return "no-signal";
        case RecordingError::kScrambled:
            return "scrambled";
        case RecordingError::kWrite:
            return "write";
    }
    return "";
}

const char* name(RecordingEnd end) {
    switch (end) {
        case RecordingEnd::kUnknown:
            return "unknown";
        case RecordingEnd::kStopped:
            return "stopped";
        case RecordingEnd::kComplete:
            return "complete";
        case RecordingEnd::kDiskFull:
            return "disk-full";
        case RecordingEnd::kNoSignal:
            return "no-signal";
        case RecordingEnd::kClosed:
            return "closed";
    }
    return "";
}

const char* name(ScheduleState state) {
    switch (state) {
        case ScheduleState::kWaiting:
            return "waiting";
        case ScheduleState::kRunning:
            return "running";
        case ScheduleState::kDone:
            return "done";
        case ScheduleState::kFailed:
            return "failed";
        case ScheduleState::kDeleted:
            return "deleted";
    }
    return "";
}

void RecordingListener::notifyRecord(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2) {
    const auto event = toEvent(code, arg1, arg2);
    if (!event) return Listener::notifyRecord(code, tag, arg1, arg2);
    onRecordingEvent(*event);
}

}  // namespace qortv
