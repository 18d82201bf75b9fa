/** States of recordings and schedules, and the listener that receives their events. */
#pragma once

#include <cstdint>
#include <variant>

#include "qortv/listener.h"

namespace qortv {

/** State of a recorder. */
enum class RecordingState { kIdle, kRecording, kStopped, kFailed };

/** Why a recording did not start or ended early. */
enum class RecordingError {
    kNone,
    kNoDisk,     ///< there is no writable folder for recordings
    kDiskFull,   ///< what was recorded before is kept
    kNoSignal,   ///< no channel is selected, or its stream is not or no longer received
    kScrambled,  ///< scrambled channels are not recorded
    kWrite,      ///< writing to the disk failed
};

/** Why a recording ended. */
enum class RecordingEnd {
    kUnknown,   ///< the television died or the disk failed: the reason was not stored
    kStopped,   ///< an application stopped it
    kComplete,  ///< its schedule ended, or it reached the length that was set
    kDiskFull,
    kNoSignal,
    kClosed,  ///< its recorder was closed, or the television was switched off
};

/** State of a schedule. */
enum class ScheduleState { kWaiting, kRunning, kDone, kFailed, kDeleted };

/** Returns a clause for messages, such as "the disk is full". Empty for kNone. */
const char* describe(RecordingError error);

/** Returns "none", "no-disk", "disk-full", "no-signal", "scrambled" or "write", for scripts. */
const char* name(RecordingError error);

/** Returns "unknown", "stopped", "complete", "disk-full", "no-signal" or "closed". */
const char* name(RecordingEnd end);

/** Returns "waiting", "running", "done", "failed" or "deleted". */
const char* name(ScheduleState state);

/** A recording has started. */
struct RecordingStarted {
    uint32_t recorder = 0;  ///< Recorder::id()
    uint32_t channelId = 0;
};

/** A recording that had started has ended. This is its last event. */
struct RecordingStopped {
    uint32_t recorder = 0;
    RecordingEnd end = RecordingEnd::kUnknown;
};

/** A recording could not start, or ends early; RecordingStopped follows if it had started. */
struct RecordingFailed {
    uint32_t recorder = 0;
    RecordingError error = RecordingError::kNone;
};

/** A schedule was added or removed, or its time begins or ends. */
struct ScheduleChanged {
    uint32_t id = 0;
    ScheduleState state = ScheduleState::kWaiting;
};

using RecordingEvent =
        std::variant<RecordingStarted, RecordingStopped, RecordingFailed, ScheduleChanged>;

/**
 * A listener that receives the events of the recordings and schedules of all applications.
 * Notifications of recordings that are none of these events, and all other notifications, reach
 * onNotification() as for any listener.
 */
class RecordingListener : public Listener {
  public:
    /** Called on a thread of the runtime, like the methods of Listener: must return soon. */
    virtual void onRecordingEvent(const RecordingEvent& event) = 0;

    void notifyRecord(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2) override;
};

}  // namespace qortv
