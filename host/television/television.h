/**
 * The software television: the TV middleware of a Linux machine. It receives the transport streams
 * in a folder, keeps channel lists of them, implements the C functions of the middleware client
 * library through the switchboard, and notifies the handlers that clients register.
 */
#pragma once

#include <memory>
#include <vector>

#include "television/input_listener.h"
#include "television/options.h"
#include "television/readiness_files.h"

namespace television {

/**
 * One television; a process has one at a time, since there is one set of C functions in a process.
 * Faults of the streams or the database never stop it: it goes on with what it has, and its log
 * names the file. One thread starts, stops and destroys it.
 */
class Television {
  public:
    explicit Television(Options options);
    /** Stops it. No middleware function may be running any more. */
    ~Television();
    Television(const Television&) = delete;
    Television& operator=(const Television&) = delete;

    /** Removes the readiness files of an earlier run. `start` does so too; this is for a caller
     * that starts the television on another thread. */
    void removeReadiness() const;

    /** Plugs the middleware functions, loads the streams, starts the threads, writes the readiness
     * files. */
    void start();
    /** Ends the threads and unplugs the functions; waits for a running handler. Not from a handler.
     */
    void stop();

    /** Loads the streams and the CAM's description again, as changes in the folder do. Any thread,
     * but not from a handler. */
    void reload();

    /** The last key and pointer events, the oldest first. Any thread, between start and stop. */
    std::vector<InputEvent> inputEvents() const;

  private:
    class Parts;

    const Options mOptions;
    const ReadinessFiles mReadiness;
    std::unique_ptr<Parts> mParts;  ///< null while stopped
};

}  // namespace television
