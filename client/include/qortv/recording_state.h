/** How recordings and schedules stand, why they ended, and hearing of it. */
#pragma once

#include <cstdint>
#include <variant>

#include "qortv/listener.h"

namespace qortv {

/** How a recorder stands. */
enum class RecordingState { kIdle, kRecording, kStopped, kFailed };

/** Why a recording could not start, or broke off. */
enum class RecordingError {
    kNone,
    kNoDisk,     ///< there is no folder that can be written
    kDiskFull,   ///< what was recorded until then is kept
    kNoSignal,   ///< no channel is on, or the stream has nothing of it (any more)
    kScrambled,  ///< scrambled channels are not recorded
    kWrite,      ///< the disk failed
};

/** Why a recording ended. */
enum class RecordingEnd {
    kUnknown,   ///< nobody was left to tell, or the disk failed
    kStopped,   ///< an application stopped it
    kComplete,  ///< its schedule or the length that was set was over
    kDiskFull,
    kNoSignal,
    kClosed,  ///< its recorder was closed, or the television went off
};

/** How a schedule stands. */
enum class ScheduleState { kWaiting, kRunning, kDone, kFailed, kDeleted };

/** A sentence's end for people: "the disk is full". Empty for kNone. */
const char* describe(RecordingError error);

/** One word for scripts: "none", "no-disk", "disk-full", "no-signal", "scrambled" or "write". */
const char* name(RecordingError error);

/** "unknown", "stopped", "complete", "disk-full", "no-signal" or "closed". */
const char* name(RecordingEnd end);

/** "waiting", "running", "done", "failed" or "deleted". */
const char* name(ScheduleState state);

/** A recorder began. */
struct RecordingStarted {
    uint32_t recorder = 0;  ///< Recorder::id()
    uint32_t channelId = 0;
};

/** A recording that was started has ended, for whatever reason: the last that is heard of it. */
struct RecordingStopped {
    uint32_t recorder = 0;
    RecordingEnd end = RecordingEnd::kUnknown;
};

/** A recording could not start, or breaks off: then RecordingStopped follows. */
struct RecordingFailed {
    uint32_t recorder = 0;
    RecordingError error = RecordingError::kNone;
};

/** A schedule is new, begins, ends or is gone. */
struct ScheduleChanged {
    uint32_t id = 0;
    ScheduleState state = ScheduleState::kWaiting;
};

using RecordingEvent =
        std::variant<RecordingStarted, RecordingStopped, RecordingFailed, ScheduleChanged>;

/**
 * A listener that hears of the recordings and schedules of all applications. Notifications of
 * recordings that are none of these events, and those of everything else, reach onNotification() as
 * for any listener.
 */
class RecordingListener : public Listener {
  public:
    /** On a thread of the runtime, as the methods of Listener are: return soon. */
    virtual void onRecordingEvent(const RecordingEvent& event) = 0;

    void notifyRecord(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2) override;
};

}  // namespace qortv
