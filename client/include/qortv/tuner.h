/** Tuning to channels, and hearing whether they come in. */
#pragma once

#include <cstdint>
#include <optional>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiBroadcast.h>

#include "qortv/connect.h"
#include "qortv/listener.h"

namespace qortv {

/** What the tuner is doing. */
enum class Tuning {
    kIdle,  ///< nothing is selected
    kSearching,
    kLocked,  ///< the channel comes in
    kFailed
};

/** Why tuning failed. */
enum class TuningError {
    kNone,
    kNoSignal,   ///< the multiplex does not come in
    kNoService,  ///< it does, but has no streams of the channel
    kOther
};

/** The tuner's state changed: kSearching, then kLocked or kFailed. */
struct TuningEvent {
    Tuning tuning = Tuning::kIdle;
    TuningError error = TuningError::kNone;
    uint32_t channelId = 0;
    bool mainWindow = true;  ///< else the sub window
};

/** "idle", "searching", "locked" or "failed". */
const char* name(Tuning tuning);

/** "none", "no signal", "no service" or "unknown error". */
const char* name(TuningError error);

/** A listener that hears the tuner. All other notifications reach onNotification(). */
class TuningListener : public Listener {
  public:
    /** On a thread of the runtime, as the methods of Listener are: return soon. */
    virtual void onTuningEvent(const TuningEvent& event) = 0;

    void notifyBroadcast(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                         uint64_t arg4) override;
};

/**
 * The tuner of the main window, which all applications share. Requests only ask: what becomes of
 * them is heard by a TuningListener whose Subscription was made before, or read from state().
 *
 * Methods may be called by several threads at once. All throw Error kLost and kTransport, and
 * kRefused for a negative answer.
 */
class Tuner {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiBroadcast;

    /** @param proxy the interface, from connect<Tuner::Interface>() */
    explicit Tuner(android::sp<Interface> proxy);

    /** Tunes to a channel, anew when it is the current one: there is always a TuningEvent. */
    void tune(uint32_t channelId);

    /** To the channel with the next number, around the end, as the keys of a remote control do. */
    void up();
    void down();

    Tuning state();

    /** Strength of the signal in per cent; nothing while no channel is selected. */
    std::optional<int> signalLevel();
    /** How undamaged the signal is, in per cent; nothing while no channel is selected. */
    std::optional<int> signalQuality();

  private:
    void press(uint32_t key, const char* what);

    android::sp<Interface> mProxy;
};

}  // namespace qortv
