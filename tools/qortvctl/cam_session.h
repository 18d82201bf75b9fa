/** What a command that talks with the CAM waits for: events of the CAM, typed lines, interrupts. */
#pragma once

#include <chrono>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <variant>

#include "cam_input.h"
#include "qortv/cam.h"
#include "qortv/subscription.h"

namespace qortvctl {

/** Wakes the main thread from poll(), from any thread and from signal handlers. */
class WakeUp {
  public:
    WakeUp();
    ~WakeUp();
    WakeUp(const WakeUp&) = delete;
    WakeUp& operator=(const WakeUp&) = delete;

    int fd() const { return mFd; }
    void ring() const;
    /** What was rung for is looked at. */
    void silence() const;

  private:
    const int mFd;
};

/** Keeps what the CAM says until the main thread asks for it. */
class CamEvents : public qortv::CamListener {
  public:
    /** @param wakeUp rung when there is something; the caller's */
    explicit CamEvents(const WakeUp& wakeUp) : mWakeUp(wakeUp) {}

    void onCamEvent(const qortv::CamEvent& event) override;
    void onDisconnected() override;

    /** The oldest event that was not taken yet. */
    std::optional<qortv::CamEvent> take();
    void forget();
    /** Whether the service died. */
    bool lost();

  private:
    const WakeUp& mWakeUp;
    std::mutex mMutex;
    std::deque<qortv::CamEvent> mEvents;
    bool mLost = false;
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
    void forgetEvents() { mEvents.forget(); }

  private:
    std::optional<Happening> happened(bool lines);

    const WakeUp mWakeUp;
    CamInput mInput;
    CamEvents mEvents;
    qortv::Subscription mSubscription;
    qortv::Cam mCam;
};

}  // namespace qortvctl
