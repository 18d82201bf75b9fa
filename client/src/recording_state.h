/** The middleware's numbers of recordings and schedules as this library's; unknown ones become the
 * nearest thing there is to say. */
#pragma once

#include <cstdint>

#include "qortv/recording_state.h"

namespace qortv {

RecordingState recordingState(int64_t number);
RecordingError recordingError(int64_t number);
RecordingEnd recordingEnd(int64_t number);
ScheduleState scheduleState(int64_t number);

}  // namespace qortv
