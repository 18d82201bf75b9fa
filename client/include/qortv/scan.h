/** The channel scan: starting it, calling it off, and hearing how it goes. */
#pragma once

#include <cstdint>
#include <variant>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiScan.h>

#include "qortv/channel.h"
#include "qortv/connect.h"
#include "qortv/listener.h"

namespace qortv {

/** A scan begins. */
struct ScanStarted {
    Medium medium = Medium::kUnknown;  ///< kUnknown: all of them
    uint32_t multiplexes = 0;          ///< that it will look at
};

/** A multiplex was looked at. The counts are those of the whole scan so far. */
struct ScanProgress {
    uint32_t percent = 0;  ///< 100 after the last multiplex only
    uint32_t television = 0;
    uint32_t radio = 0;
    uint32_t frequencyKhz = 0;  ///< 0 where nothing of the medium was found
};

/** The scan is over and the channel lists have changed. */
struct ScanCompleted {
    uint32_t services = 0;  ///< of any kind, so maybe more than television and radio
    uint32_t television = 0;
    uint32_t radio = 0;
    uint32_t multiplexes = 0;
};

/** The scan was called off; the channel lists are as they were. */
struct ScanCancelled {
    uint32_t percent = 0;  ///< how far it had come
};

/** The scan could not be done; the channel lists are as they were. */
struct ScanFailed {
    int32_t code = 0;  ///< the television's, negative
};

/** Each scan tells ScanStarted first, and one of the last three at its end. */
using ScanEvent = std::variant<ScanStarted, ScanProgress, ScanCompleted, ScanCancelled, ScanFailed>;

/** "started", "progress", "completed", "cancelled" or "failed". */
const char* name(const ScanEvent& event);

/** Whether the scan is over with this event, and the next one may be started. */
bool isEnd(const ScanEvent& event);

/**
 * A listener that hears scans as events, whichever application started them. Codes of scans that
 * this library does not know, and all other notifications, reach onNotification().
 */
class ScanListener : public Listener {
  public:
    /** On a thread of the runtime, as the methods of Listener are: return soon. */
    virtual void onScanEvent(const ScanEvent& event) = 0;

    void notifyScan(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                    uint64_t arg4) override;
};

/** What to scan, and what becomes of what is there. */
struct ScanRequest {
    Medium medium = Medium::kUnknown;  ///< kUnknown: all of them
    /** Only adds and refreshes. Otherwise services that are no longer broadcast are left out. */
    bool update = false;
    /** Also forgets what viewers made of the medium's channels: names, numbers, favourites. No
     * effect on an update. */
    bool clear = false;
};

/**
 * Starts scans and calls them off. There is one scan at a time for all applications; what becomes
 * of it is heard by a ScanListener whose Subscription was made before.
 *
 *     qortv::Subscription subscription(listener);
 *     qortv::Scanner scanner(qortv::connect<qortv::Scanner::Interface>());
 *     scanner.start({qortv::Medium::kCable});
 *
 * Methods may be called by several threads at once. All throw Error kLost and kTransport.
 */
class Scanner {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiScan;

    /** @param proxy the interface, from connect<Scanner::Interface>() */
    explicit Scanner(android::sp<Interface> proxy);

    /**
     * Starts a scan and returns at once.
     *
     * @throws Error also kRefused, while a scan runs (its message says so) or without a source
     */
    void start(const ScanRequest& request = {});

    /**
     * Calls the scan off, whoever started it; ScanCancelled tells when it has ended.
     *
     * @return false when it is too late or no scan runs: the lists are being changed, or it is over
     * @throws Error also kRefused
     */
    bool cancel();

    /** Whether a scan runs. */
    bool active();

  private:
    android::sp<Interface> mProxy;
};

}  // namespace qortv
