/** Waiting for the end of a recording. */
#pragma once

#include <optional>
#include <string>

#include "qortv/recorder.h"
#include "qortv/recordings.h"
#include "qortvctl/waiting/event_queue.h"
#include "qortvctl/waiting/interrupts.h"

namespace qortvctl {

/** Wakes the main thread whenever the state of a recording changes or the service dies. */
class RecordingEvents : public qortv::RecordingListener {
  public:
    /** @param wakeUp must outlive this object */
    explicit RecordingEvents(const WakeUp& wakeUp) : mQueue(wakeUp) {}

    void onRecordingEvent(const qortv::RecordingEvent& event) override { mQueue.push(event); }
    void onDisconnected() override { mQueue.setDisconnected(); }

    void clear() { mQueue.clear(); }
    /** Whether the service died. */
    bool disconnected() { return mQueue.disconnected(); }

  private:
    EventQueue<qortv::RecordingEvent> mQueue;
};

/** The state of a recorder; nothing when another program closed it, as `record stop` does. */
std::optional<qortv::RecordingState> stateUnlessClosed(qortv::Recorder& recorder);

/**
 * Waits until the recording ends by itself, or stops it after a signal. Shows its length and size
 * meanwhile, if standard error is a terminal.
 *
 * @param path of the recording
 * @param show whether to show anything at all
 * @return whether a signal stopped it
 * @throws qortv::Error when the service dies
 */
bool waitForEnd(qortv::Recorder& recorder, qortv::Recordings& recordings, const std::string& path,
                bool show, const WakeUp& wakeUp, Interrupts& interrupts, RecordingEvents& events);

}  // namespace qortvctl
