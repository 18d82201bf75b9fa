/**
 * The software television: the TV middleware of a Linux machine. It receives the transport streams
 * in a folder, keeps channel lists of them, answers the middleware client's C functions through the
 * switchboard, and notifies the handlers that clients register.
 */
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "input_listener.h"

namespace television {

struct Options {
    std::string streams;  ///< folder of `.ts` files, one for each multiplex, and perhaps of the
                          ///< CAM's `cam.json`; empty: none
    std::string state =
            ":memory:";       ///< folder of the database, made when missing; ":memory:": none
    std::string readiness;    ///< folder of the readiness files, made when missing; empty: none are
                              ///< written
    std::string config;       ///< configuration file of calls that name none; empty: none
    std::string inputSocket;  ///< where key and pointer events come in; empty: nowhere
    std::chrono::milliseconds tick{1000};  ///< between two notifications of date and time
    std::chrono::milliseconds calm{
            300};       ///< without changes in the folder before it is loaded anew
    bool watch = true;  ///< load anew when the folder changes
    std::chrono::milliseconds scanPause{100};   ///< of a scan at each multiplex, as a tuner's
    std::chrono::milliseconds digitTime{2000};  ///< without another digit before those typed select
    std::string recordings;         ///< folder of recordings, made when missing; empty: none
    double recordingSpeed = 1;      ///< times real time; 0: without waiting
    std::function<int64_t()> time;  ///< stands in for the machine's clocks: milliseconds since 1970
                                    ///< UTC, from any thread; empty: those of the machine

    /**
     * From QORTV_STREAMS, QORTV_STATE (else $XDG_STATE_HOME/qortv, else ~/.local/state/qortv),
     * QORTV_CONFIG (else config.ini in the state folder), QORTV_RECORDINGS (else recordings in the
     * state folder) and the folder of platform/vendor_tmp.h, where the input socket is too.
     */
    static Options fromEnvironment();
};

/**
 * One television; a process has one at a time, since the C functions are the process's. Faults of
 * the streams or the database never stop it: it goes on with what it has, and its log names the
 * file.
 */
class Television {
  public:
    explicit Television(Options options);
    /** Stops it. No call may still be running in one of its functions. */
    ~Television();
    Television(const Television&) = delete;
    Television& operator=(const Television&) = delete;

    /** Removes readiness files of an earlier run. Done by `start` too; for those who must be sure
     * of it before. */
    void removeReadiness() const;

    /** Plugs the functions, loads the streams, writes the readiness files, starts the threads. */
    void start();
    /** Ends the threads and unplugs the functions; waits for a running handler. Not from a handler.
     */
    void stop();

    /** Loads the streams anew and looks at the CAM, as changes in the folder do. Any thread, but
     * not a handler. */
    void reload();

    /** The key and pointer events that came in last, the oldest first. Any thread, between start
     * and stop. */
    std::vector<InputEvent> inputEvents() const;

  private:
    class Parts;

    bool makeReadinessFolder() const;
    void writeReadiness() const;

    const Options mOptions;
    std::unique_ptr<Parts> mParts;  ///< null while stopped
};

}  // namespace television
