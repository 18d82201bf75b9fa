/** The channel scan: starts and cancels it, and reports its progress. */
#pragma once

#include <cstdint>
#include <variant>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiScan.h>

#include "qortv/channel.h"
#include "qortv/connect.h"
#include "qortv/listener.h"

namespace qortv {

/** A scan has started. */
struct ScanStarted {
    Medium medium = Medium::kUnknown;  ///< kUnknown: all media
    uint32_t multiplexes = 0;          ///< number of multiplexes that it will search
};

/** A multiplex was searched. The numbers of channels are those of the whole scan so far. */
struct ScanProgress {
    uint32_t percent = 0;       ///< 100 only after the last multiplex
    uint32_t television = 0;    ///< television channels
    uint32_t radio = 0;         ///< radio channels
    uint32_t frequencyKhz = 0;  ///< of the multiplex; 0 if it has no services of the medium
};

/** The scan has ended and the channel lists have changed. */
struct ScanCompleted {
    uint32_t services = 0;    ///< all services, including those that are neither of the next two
    uint32_t television = 0;  ///< television channels
    uint32_t radio = 0;       ///< radio channels
    uint32_t multiplexes = 0;
};

/** The scan was cancelled; the channel lists have not changed. */
struct ScanCancelled {
    uint32_t percent = 0;  ///< progress of the scan when it ended
};

/** The scan failed; the channel lists have not changed. */
struct ScanFailed {
    int32_t code = 0;  ///< result code of the television, negative
};

/** Each scan begins with ScanStarted and ends with one of the last three. */
using ScanEvent = std::variant<ScanStarted, ScanProgress, ScanCompleted, ScanCancelled, ScanFailed>;

/** Returns "started", "progress", "completed", "cancelled" or "failed". */
const char* name(const ScanEvent& event);

/** Returns whether the scan ends with this event, so that the next one may be started. */
bool isEnd(const ScanEvent& event);

/**
 * A listener that receives the notifications of scans as events, whichever application started the
 * scan. Codes of scans that this library does not know, and all other notifications, reach
 * onNotification().
 */
class ScanListener : public Listener {
  public:
    /** Called on a thread of the runtime, like the methods of Listener: must return soon. */
    virtual void onScanEvent(const ScanEvent& event) = 0;

    void notifyScan(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                    uint64_t arg4) override;
};

/** What to scan, and what to keep of the present channels. */
struct ScanRequest {
    Medium medium = Medium::kUnknown;  ///< kUnknown: all media
    /** Only adds and refreshes channels. Otherwise channels that were not found are removed. */
    bool update = false;
    /** Also resets what viewers changed in the channels of the medium: names, numbers, favourites.
     * Has no effect with `update`. */
    bool clear = false;
};

/**
 * Starts and cancels scans. One scan at a time runs for all applications. Its events are received
 * by a ScanListener whose Subscription was made before.
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
     * Starts a scan and returns immediately.
     *
     * @throws Error also kRefused, for example while a scan runs or when the television has no
     *     streams; the message says so
     */
    void start(const ScanRequest& request = {});

    /**
     * Cancels the scan, whichever application started it. ScanCancelled follows when it has ended.
     *
     * @return false when no scan runs, or when it is changing the channel lists already
     * @throws Error also kRefused
     */
    bool cancel();

    /** Returns whether a scan runs. */
    bool active();

  private:
    android::sp<Interface> mProxy;
};

}  // namespace qortv
