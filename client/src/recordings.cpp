#include "qortv/recordings.h"

#include <utility>

#include "middleware/mmp.h"
#include "middleware/result_codes.h"
#include "record_image.h"
#include "recording_codes.h"
#include "result.h"
#include "stable_read.h"

namespace qortv {

namespace {

Recording toRecording(const PVR_BROWSER_ITEM_T& item) {
    Recording recording;
    recording.path = textIn(item.s_path);
    recording.channelId = item.ui4_channel_id;
    recording.channelNumber = item.i4_channel_major;
    recording.channel = textIn(item.s_channel_name);
    recording.program = textIn(item.s_program_name);
    recording.start = item.i8_start_time;
    recording.date = textIn(item.s_date);
    recording.time = textIn(item.s_time);
    recording.weekDay = textIn(item.s_week_day);
    recording.duration = std::chrono::seconds(item.ui4_duration);
    recording.bytes = item.ui8_size;
    recording.minimumAge = item.i4_first_rating;
    recording.retentionDays = item.i4_retention;
    recording.recording = item.ui1_recording != 0;
    recording.end = recordingEnd(item.i4_stop_reason);
    return recording;
}

/** Receives an item of the browser as the result of a call. */
class ItemReceiver {
  public:
    void operator()(const Bytes& image, int32_t code) {
        mResult = code;
        if (code >= 0) mRecording = toRecording(recordOf<PVR_BROWSER_ITEM_T>(image));
    }

    /** Returns nothing when there is no such item. */
    std::optional<Recording> recording() const {
        if (mResult != TV_NOT_FOUND) checkResult(mResult, "tell of a recording");
        return mRecording;
    }

  private:
    int32_t mResult = 0;
    std::optional<Recording> mRecording;
};

}  // namespace

Recordings::Recordings(android::sp<Interface> proxy) : mProxy(std::move(proxy)) {}

std::optional<Recording> Recordings::at(uint32_t index) {
    ItemReceiver received;
    check(mProxy->a_hidl_a_qortvapi_mmp_get_pvr_browser_item_by_index(
                  static_cast<int32_t>(index),
                  [&](const auto& item, int32_t code) { received(item, code); }),
          "get_pvr_browser_item_by_index");
    auto recording = received.recording();
    if (recording) recording->index = index;
    return recording;
}

std::vector<Recording> Recordings::list() {
    const auto read = [this] {
        std::vector<Recording> recordings;
        while (auto recording = at(static_cast<uint32_t>(recordings.size()))) {
            recordings.push_back(*std::move(recording));
        }
        return recordings;
    };
    return readStable(
            read, [](const Recording& recording) { return recording.path; },
            "the list of recordings");
}

std::optional<Recording> Recordings::find(const std::string& path) {
    ItemReceiver received;
    check(mProxy->a_hidl_a_qortvapi_mmp_get_pvr_browser_item_by_path(
                  path, [&](const auto& item, int32_t code) { received(item, code); }),
          "get_pvr_browser_item_by_path");
    return received.recording();
}

void Recordings::remove(const Recording& recording) {
    const auto present = at(recording.index);
    if (!present || present->path != recording.path) {
        throw Error(Error::Kind::kRefused,
                    "the list of recordings has changed: " + recording.path + " was not deleted");
    }
    const int32_t result =
            valueOf(mProxy->a_hidl_a_qortvapi_mmp_pvr_browser_delete_file_by_index(recording.index),
                    "pvr_browser_delete_file_by_index");
    if (result == TV_BUSY) {
        throw Error(Error::Kind::kRefused, recording.path + " is being recorded");
    }
    checkResult(result, "delete ", recording.path);
}

}  // namespace qortv
