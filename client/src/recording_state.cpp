#include "recording_state.h"

#include <optional>

#include "middleware/record.h"

namespace qortv {

RecordingState recordingState(int64_t number) {
    switch (number) {
        case RECORD_STATUS_RECORDING:
            return RecordingState::kRecording;
        case RECORD_STATUS_STOPPED:
            return RecordingState::kStopped;
        case RECORD_STATUS_FAILED:
            return RecordingState::kFailed;
        default:
            return RecordingState::kIdle;
    }
}

RecordingError recordingError(int64_t number) {
    switch (number) {
        case RECORD_ERROR_NONE:
            return RecordingError::kNone;
        case RECORD_ERROR_NO_DISK:
            return RecordingError::kNoDisk;
        case RECORD_ERROR_DISK_FULL:
            return RecordingError::kDiskFull;
        case RECORD_ERROR_NO_SIGNAL:
            return RecordingError::kNoSignal;
        case RECORD_ERROR_SCRAMBLED:
            return RecordingError::kScrambled;
        default:
            return RecordingError::kWrite;
    }
}

RecordingEnd recordingEnd(int64_t number) {
    switch (number) {
        case RECORD_STOP_USER:
            return RecordingEnd::kStopped;
        case RECORD_STOP_SCHEDULE:
            return RecordingEnd::kComplete;
        case RECORD_STOP_DISK_FULL:
            return RecordingEnd::kDiskFull;
        case RECORD_STOP_NO_SIGNAL:
            return RecordingEnd::kNoSignal;
        case RECORD_STOP_CLOSED:
            return RecordingEnd::kClosed;
        default:
            return RecordingEnd::kUnknown;
    }
}

ScheduleState scheduleState(int64_t number) {
    switch (number) {
        case SCHEDULE_STATE_WAITING:
            return ScheduleState::kWaiting;
        case SCHEDULE_STATE_RUNNING:
            return ScheduleState::kRunning;
        case SCHEDULE_STATE_DONE:
            return ScheduleState::kDone;
        case SCHEDULE_STATE_DELETED:
            return ScheduleState::kDeleted;
        default:
            return ScheduleState::kFailed;
    }
}

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

namespace {

std::optional<RecordingEvent> toEvent(int32_t code, uint64_t arg1, uint64_t arg2) {
    // The middleware hands numbers of 32 bits on as pointers.
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

void RecordingListener::notifyRecord(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2) {
    const auto event = toEvent(code, arg1, arg2);
    if (!event) return Listener::notifyRecord(code, tag, arg1, arg2);
    onRecordingEvent(*event);
}

}  // namespace qortv
