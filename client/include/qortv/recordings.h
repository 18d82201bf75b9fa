/** The recordings on the television's disk. */
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiPvrbrowser.h>

#include "qortv/connect.h"
#include "qortv/recording_state.h"

namespace qortv {

/** One recording. Texts are valid UTF-8; of a file that came from elsewhere most of them are empty.
 */
struct Recording {
    std::string path;    ///< on the television: what tells it from the others
    uint32_t index = 0;  ///< its place in the list, which changes with the recordings before it
    uint32_t channelId = 0;
    int32_t channelNumber = 0;
    std::string channel;  ///< name of the channel
    std::string program;  ///< title of the programme
    int64_t start = 0;    ///< seconds since 1970-01-01 00:00 UTC
    std::string date;     ///< of the start, local: "2026-11-21"
    std::string time;     ///< "20:15:00"
    std::string weekDay;  ///< "Sat"
    std::chrono::seconds duration{0};
    uint64_t bytes = 0;
    int32_t minimumAge = 0;                     ///< 0: not rated
    int32_t retentionDays = 0;                  ///< how long it is kept; 0: for ever
    bool recording = false;                     ///< it is being made; duration and size still grow
    RecordingEnd end = RecordingEnd::kUnknown;  ///< why it ended, when it has
};

/**
 * The browser of recordings, which shows those of every application and schedule.
 *
 *     qortv::Recordings recordings(qortv::connect<qortv::Recordings::Interface>());
 *     for (const auto& recording : recordings.list()) std::cout << recording.path << '\n';
 *
 * Methods may be called by several threads at once. All throw Error kLost and kTransport, and
 * kRefused when the television answers with a negative code.
 */
class Recordings {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiPvrbrowser;

    /** @param proxy the interface, from connect<Recordings::Interface>() */
    explicit Recordings(android::sp<Interface> proxy);

    /** All of them, by start time. */
    std::vector<Recording> list();

    /** The recording with this path, its index left 0; nothing when there is none. */
    std::optional<Recording> find(const std::string& path);

    /**
     * Deletes the file. The television deletes by place in the list: this looks first that the
     * recording still is in its place, and does not see a change between the two calls.
     *
     * @param recording as list() answered it
     * @throws Error kRefused also when it is being made, and when the list has changed
     */
    void remove(const Recording& recording);

  private:
    std::optional<Recording> at(uint32_t index);

    const android::sp<Interface> mProxy;
};

}  // namespace qortv
