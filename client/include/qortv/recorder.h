/** Recording a channel, from now until it is stopped. */
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
 * A recorder of the television, for one recording at a time: opened by the constructor, closed by
 * the destructor, which ends what it still records. What was recorded is kept.
 *
 *     qortv::Recorder recorder(qortv::connect<qortv::Recorder::Interface>());
 *     recorder.select(channel);
 *     recorder.start();
 *     …
 *     recorder.stop();
 *     std::cout << recorder.path() << '\n';
 *
 * A television has few recorders and one tuner for them: recordings that run at the same time are
 * of channels of one multiplex. A recorder whose process is killed stays open until the television
 * is switched off, or somebody takes it over while it records: see running().
 *
 * Methods may be called by several threads at once. All throw Error kLost and kTransport, and
 * kRefused when the television answers with a negative code.
 */
class Recorder {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiRecord;

    /**
     * Opens a recorder that will record the channel that is on when it starts.
     *
     * @param proxy the interface, from connect<Recorder::Interface>()
     */
    explicit Recorder(android::sp<Interface> proxy);

    /**
     * Takes the recorder over whose recording runs, whoever started it, also a schedule; of several
     * the one that began last. Nothing when none records.
     */
    static std::unique_ptr<Recorder> running(const android::sp<Interface>& proxy);

    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /** What the events of a RecordingListener call it. */
    uint32_t id() const { return mId; }

    /** Records this channel instead, whatever is on. Not while it records. */
    void select(uint32_t channelId);

    /**
     * Ends the recording by itself when it is so long, also without this process.
     *
     * @param length rounded up to whole seconds; 0: no end
     * @throws Error also kArgument for a length that is negative or beyond 68 years
     */
    void setLength(std::chrono::milliseconds length);

    /**
     * @throws Error kRefused tells why: error() for programs, what() for people
     */
    void start();

    /** Returns when the file is complete. Does nothing when the recording has ended already. */
    void stop();

    RecordingState state();

    /** Why the last recording failed. */
    RecordingError error();

    /** How much is recorded. */
    std::chrono::seconds length();

    /** Full path of the file on the television; empty before the first start. */
    std::string path();

  private:
    Recorder(android::sp<Interface> proxy, uint32_t id);

    const android::sp<Interface> mProxy;
    const uint32_t mId;
};

}  // namespace qortv
