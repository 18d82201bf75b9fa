/** Following what the tuner does. */
#pragma once

#include <cstdint>
#include <optional>

#include "qortv/tuner.h"
#include "qortvctl/waiting/event_queue.h"

namespace qortvctl {

/** Hands the tuning events of the main window to the main thread. */
class TuningEvents : public qortv::TuningListener {
  public:
    /** @param wakeUp woken by every event; must outlive this object */
    explicit TuningEvents(const WakeUp& wakeUp) : mWakeUp(wakeUp), mQueue(wakeUp) {}

    void onTuningEvent(const qortv::TuningEvent& event) override {
        if (event.mainWindow) mQueue.push(event);
    }
    void onDisconnected() override { mQueue.setDisconnected(); }

    /** Forgets the events of earlier tuning. */
    void clear() { mQueue.clear(); }

    /**
     * Waits until the tuner has locked or failed. Call clear() before tuning.
     *
     * @param channelId of the channel that is tuned to; 0: that of the first event
     * @return nothing when the tuner does not report the end in time
     * @throws qortv::Error when the service dies
     */
    std::optional<qortv::TuningEvent> waitForEnd(uint32_t channelId);

  private:
    const WakeUp& mWakeUp;
    EventQueue<qortv::TuningEvent> mQueue;
};

}  // namespace qortvctl
