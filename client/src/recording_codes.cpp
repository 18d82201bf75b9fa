#include "recording_codes.h"

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

}  // namespace qortv
