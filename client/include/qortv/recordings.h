/** The recordings on the disk of the television. */
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

/** A recording. Texts are valid UTF-8. Most are empty if the television did not record the file. */
struct Recording {
    std::string path;    ///< of the file on the television; identifies the recording
    uint32_t index = 0;  ///< position in the list; changes when others are added or removed
    uint32_t channelId = 0;
    int32_t channelNumber = 0;
    std::string channel;  ///< name of the channel
    std::string program;  ///< title of the programme
    int64_t start = 0;    ///< seconds since 1970-01-01 00:00 UTC
    std::string date;     ///< local date of the start, such as "2026-11-21"
    std::string time;     ///< local time of the start, such as "20:15:00"
    std::string weekDay;  ///< such as "Sat"
    std::chrono::seconds duration{0};
    uint64_t bytes = 0;
    int32_t minimumAge = 0;                     ///< 0: not rated
    int32_t retentionDays = 0;                  ///< how long it is kept; 0: not limited
    bool recording = false;                     ///< still running: duration and size grow
    RecordingEnd end = RecordingEnd::kUnknown;  ///< why it ended; of no meaning while it runs
};

/**
 * The list of all recordings, whichever application or schedule made them.
 *
 *     qortv::Recordings recordings(qortv::connect<qortv::Recordings::Interface>());
 *     for (const auto& recording : recordings.list()) std::cout << recording.path << '\n';
 *
 * Methods may be called by several threads at once. All throw Error kLost, kTransport and kRefused.
 */
class Recordings {
  public:
    using Interface = vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiPvrbrowser;

    /** @param proxy the interface, from connect<Recordings::Interface>() */
    explicit Recordings(android::sp<Interface> proxy);

    /** Returns all recordings, by start time. */
    std::vector<Recording> list();

    /** Returns the recording with this path, without its index. Returns nothing if there is none.
     */
    std::optional<Recording> find(const std::string& path);

    /**
     * Deletes the file. The television deletes by position in the list. This method first checks
     * that the recording is still at its position, but cannot detect a change between the check and
     * the deletion.
     *
     * @param recording an element of the result of list()
     * @throws Error kRefused also while it is being recorded, and when the list has changed
     */
    void remove(const Recording& recording);

  private:
    std::optional<Recording> at(uint32_t index);

    const android::sp<Interface> mProxy;
};

}  // namespace qortv
