/** Records a channel immediately. */
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiRecord.h>

#include "qortv/connect.h"
#include "qortv/recording_state.h"

namespace qortv {

/**
 * A recorder of the television, which makes one recording at a time. The constructor opens it. The
 * destructor closes it, which ends a running recording; what was recorded is kept.
 *
 *     qortv::Recorder recorder(qortv::connect<qortv::Recorder::Interface>());
 *     recorder.select(channel);
 *     recorder.start();
 *     ...
 *     recorder.stop();
 *     std::cout << recorder.path() << '\n';
 *
 * A television has few recorders and one tuner for all of them: channels that are recorded at the
 * same time must be of one multiplex. When the process of a recorder is killed, the recorder stays
 * open until the television is switched off, or until running() takes it over while it records.
 *
 * Methods may be called by several threads at once. All throw Error kLost, kTransport and kRefused.
 */
class Recorder {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiRecord;

    /**
     * Opens a recorder for the channel that is current when start() is called.
     *
     * @param proxy the interface, from connect<Recorder::Interface>()
     */
    explicit Recorder(android::sp<Interface> proxy);

    /**
     * Takes over a recorder that is recording, whichever application or schedule started it; of
     * several the one that started last. Returns nullptr when no recorder is recording.
     */
    static std::unique_ptr<Recorder> running(const android::sp<Interface>& proxy);

    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /** Returns the id by which the events of a RecordingListener identify it. */
    uint32_t id() const { return mId; }

    /** Selects a channel to record instead of the current one. Not possible while recording. */
    void select(uint32_t channelId);

    /**
     * Sets the length after which the television ends the recording by itself, even if this process
     * has ended.
     *
     * @param length rounded up to whole seconds; 0: not limited
     * @throws Error also kArgument for a length that is negative or above 68 years
     */
    void setLength(std::chrono::milliseconds length);

    /**
     * Starts the recording.
     *
     * @throws Error kRefused with the reason as its message; programs read the reason with error()
     */
    void start();

    /** Ends the recording and returns when the file is complete. Does nothing when no recording
     * runs. */
    void stop();

    RecordingState state();

    /** Returns why the last recording failed. */
    RecordingError error();

    /** Returns the length that is recorded so far. */
    std::chrono::seconds length();

    /** Returns the full path of the file on the television; empty before the first start. */
    std::string path();

  private:
    Recorder(android::sp<Interface> proxy, uint32_t id);

    const android::sp<Interface> mProxy;
    const uint32_t mId;
};

}  // namespace qortv
