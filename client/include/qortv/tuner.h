/** Tunes to channels and reports whether they are received. */
#pragma once

#include <cstdint>
#include <optional>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiBroadcast.h>

#include "qortv/connect.h"
#include "qortv/listener.h"

namespace qortv {

/** State of the tuner. */
enum class Tuning {
    kIdle,       ///< no channel is selected
    kSearching,  ///< the tuner tries to lock
    kLocked,     ///< the channel is received
    kFailed
};

/** Why tuning failed. */
enum class TuningError {
    kNone,
    kNoSignal,   ///< the multiplex is not received
    kNoService,  ///< the multiplex is received, but has no streams of the channel
    kOther
};

/** The state of a tuner changed: to kSearching, then to kLocked or kFailed. */
struct TuningEvent {
    Tuning tuning = Tuning::kIdle;
    TuningError error = TuningError::kNone;
    uint32_t channelId = 0;
    bool mainWindow = true;  ///< false: the sub window
};

/** Returns "idle", "searching", "locked" or "failed". */
const char* name(Tuning tuning);

/** Returns "none", "no signal", "no service" or "unknown error". */
const char* name(TuningError error);

/** A listener that receives the notifications of the tuner as events. All others reach
 * onNotification(). */
class TuningListener : public Listener {
  public:
    /** Called on a thread of the runtime, like the methods of Listener: must return soon. */
    virtual void onTuningEvent(const TuningEvent& event) = 0;

    void notifyBroadcast(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                         uint64_t arg4) override;
};

/**
 * The tuner of the main window, which all applications share. Requests return before the channel is
 * received. The outcome is received by a TuningListener whose Subscription was made before, or read
 * with state().
 *
 * Methods may be called by several threads at once. All throw Error kLost, kTransport and kRefused.
 */
class Tuner {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiBroadcast;

    /** @param proxy the interface, from connect<Tuner::Interface>() */
    explicit Tuner(android::sp<Interface> proxy);

    /** Tunes to a channel, again if it is the current one. Always causes a TuningEvent. */
    void tune(uint32_t channelId);

    /** Tune to the channel with the next higher or lower number, like the keys of a remote control;
     * the first channel follows the last. */
    void up();
    void down();

    Tuning state();

    /** Returns the strength of the signal in per cent, or nothing while no channel is selected. */
    std::optional<int> signalLevel();
    /** Returns the quality of the signal in per cent, or nothing while no channel is selected. */
    std::optional<int> signalQuality();

  private:
    void press(uint32_t key, const char* what);

    android::sp<Interface> mProxy;
};

}  // namespace qortv
