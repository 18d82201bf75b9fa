/** Conversion of the middleware's numbers for states of recordings and schedules. */
#pragma once

#include <cstdint>

#include "qortv/recording_state.h"

namespace qortv {

/** Returns kIdle for an unknown number. */
RecordingState recordingState(int64_t number);

/** Returns kWrite for an unknown number. */
RecordingError recordingError(int64_t number);

/** Returns kUnknown for an unknown number. */
RecordingEnd recordingEnd(int64_t number);

/** Returns kFailed for an unknown number. */
ScheduleState scheduleState(int64_t number);

}  // namespace qortv
