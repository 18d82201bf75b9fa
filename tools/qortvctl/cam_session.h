/** What a command that talks with the CAM waits for: events of the CAM, typed lines, interrupts. */
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <variant>

#include "cam_input.h"
#include "event_queue.h"
#include "qortv/cam.h"
#include "qortv/subscription.h"
#include "wake_up.h"

namespace qortvctl {

/** Keeps what the CAM says until the main thread asks for it. */
class CamEvents : public qortv::CamListener {
  public:
    /** @param wakeUp rung when there is something; the caller's */
    explicit CamEvents(const WakeUp& wakeUp) : mQueue(wakeUp) {}

    void onCamEvent(const qortv::CamEvent& event) override { mQueue.push(event); }
    void onDisconnected() override { mQueue.lose(); }

    EventQueue<qortv::CamEvent>& queue() { return mQueue; }

  private:
    EventQueue<qortv::CamEvent> mQueue;
};

/** A conversation with the CAM. One at a time: it takes the signals that end a program. */
class CamSession {
  public:
    /**
     * Subscribes and listens. From here SIGINT, SIGTERM, SIGHUP and SIGQUIT are waited for.
     *
     * @param timeout how long to wait for the service
     * @throws qortv::Error as connect() and Cam do
     */
    explicit CamSession(std::chrono::milliseconds timeout);
    ~CamSession();
    CamSession(const CamSession&) = delete;
    CamSession& operator=(const CamSession&) = delete;

    qortv::Cam& cam() { return mCam; }
    CamInput& input() { return mInput; }

    struct Interrupted {};
    struct TimeIsUp {};
    struct InputEnded {};
    struct Line {
        std::string text;
    };
    using Happening = std::variant<Interrupted, TimeIsUp, InputEnded, Line, qortv::CamEvent>;

    /**
     * Waits for the next thing to happen; an interrupt comes before events, events before lines.
     *
     * @param lines whether standard input is read
     * @param limit how long; nothing: for ever
     * @throws qortv::Error kLost when the service dies
     */
    Happening wait(bool lines, std::optional<std::chrono::milliseconds> limit);

    /** Forgets the events that were not waited for. */
    void forgetEvents() { mEvents.queue().forget(); }

  private:
    std::optional<Happening> happened(bool lines);

    const WakeUp mWakeUp;
    CamInput mInput;
    CamEvents mEvents;
    qortv::Subscription mSubscription;
    qortv::Cam mCam;
    std::optional<Interrupts> mInterrupts;
};

}  // namespace qortvctl
