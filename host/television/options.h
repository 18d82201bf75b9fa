/** What a television is started with: its folders, its configuration file and its timing. */
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

namespace television {

struct Options {
    std::string streams;  ///< folder of `.ts` files, one for each multiplex, which may also have
                          ///< the CAM's `cam.json`; empty: none
    std::string state = ":memory:";  ///< folder of the database, made when missing; ":memory:": the
                                     ///< database is kept in memory only
    std::string readiness;    ///< folder of the readiness files, made when missing; empty: none are
                              ///< written
    std::string config;       ///< configuration file for calls that name none; empty: none
    std::string inputSocket;  ///< path of the socket for key and pointer events; empty: none
    std::chrono::milliseconds tick{1000};  ///< between two notifications of date and time
    std::chrono::milliseconds calm{300};  ///< how long the folder of streams must not change before
                                          ///< it is loaded again
    bool watch = true;  ///< load the folder of streams again, and the CAM, when it changes
    std::chrono::milliseconds scanPause{100};   ///< of a channel scan at each multiplex
    std::chrono::milliseconds digitTime{2000};  ///< how long a further digit of a channel number is
                                                ///< waited for
    std::string recordings;         ///< folder of recordings, made when missing; empty: none
    double recordingSpeed = 1;      ///< a multiple of real time; 0: as fast as possible
    std::function<int64_t()> time;  ///< stands in for the machine's clocks: milliseconds since 1970
                                    ///< UTC, called on any thread; empty: the machine's clocks

    /**
     * From QORTV_STREAMS, QORTV_STATE (else $XDG_STATE_HOME/qortv, else ~/.local/state/qortv),
     * QORTV_CONFIG (else config.ini in the state folder), QORTV_RECORDINGS (else recordings in the
     * state folder) and the folder of platform/vendor_tmp.h, which holds the readiness files and
     * the input socket.
     */
    static Options fromEnvironment();
};

}  // namespace television
