/** What a command that talks with the CAM waits for: events of the CAM, typed lines, signals. */
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <variant>

#include "qortv/cam.h"
#include "qortv/subscription.h"
#include "qortvctl/terminal/line_input.h"
#include "qortvctl/waiting/event_queue.h"
#include "qortvctl/waiting/interrupts.h"

namespace qortvctl {

/** Hands the events of the CAM to the main thread. */
class CamEvents : public qortv::CamListener {
  public:
    /** @param wakeUp must outlive this object */
    explicit CamEvents(const WakeUp& wakeUp) : mQueue(wakeUp) {}

    void onCamEvent(const qortv::CamEvent& event) override { mQueue.push(event); }
    void onDisconnected() override { mQueue.setDisconnected(); }

    EventQueue<qortv::CamEvent>& queue() { return mQueue; }

  private:
    EventQueue<qortv::CamEvent> mQueue;
};

/**
 * A connection to the CAM, and the terminal of the person who talks with it. One object at a time,
 * because it handles signals.
 */
class CamSession {
  public:
    /**
     * Subscribes to the events of the CAM. From here on SIGINT, SIGTERM, SIGHUP and SIGQUIT do not
     * end the process: wait() returns Interrupted.
     *
     * @param timeout how long to wait for the service
     * @throws qortv::Error as connect() and Cam do
     */
    explicit CamSession(std::chrono::milliseconds timeout);
    ~CamSession();
    CamSession(const CamSession&) = delete;
    CamSession& operator=(const CamSession&) = delete;

    qortv::Cam& cam() { return mCam; }
    LineInput& input() { return mInput; }

    struct Interrupted {};
    struct TimeIsUp {};
    struct InputEnded {};
    struct Line {
        std::string text;
    };
    /** What wait() waited for. */
    using Occurrence = std::variant<Interrupted, TimeIsUp, InputEnded, Line, qortv::CamEvent>;

    /**
     * Waits for the next occurrence. Of several, a signal comes first, then events, then lines.
     *
     * @param lines whether to read standard input
     * @param limit how long to wait; nothing: for ever
     * @throws qortv::Error kLost when the service dies
     */
    Occurrence wait(bool lines, std::optional<std::chrono::milliseconds> limit);

    /** Discards the events that have come. */
    void clearEvents() { mEvents.queue().clear(); }

  private:
    std::optional<Occurrence> nextOccurrence(bool lines);

    const WakeUp mWakeUp;
    LineInput mInput;
    CamEvents mEvents;
    qortv::Subscription mSubscription;
    qortv::Cam mCam;
    std::optional<Interrupts> mInterrupts;
};

}  // namespace qortvctl
