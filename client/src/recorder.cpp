#include "qortv/recorder.h"

#include <limits>
#include <utility>

#include "middleware/record.h"
#include "middleware/result_codes.h"
#include "recording_codes.h"
#include "result.h"

namespace qortv {

namespace {

constexpr uint32_t kDisk = 0;        // the only disk
constexpr uint32_t kMaxPath = 4096;  // characters
constexpr uint32_t kMaxName = 256;   // characters
constexpr uint32_t kNoArgument = 0;
constexpr uint16_t kAnyList = 0;

uint32_t open(const android::sp<Recorder::Interface>& proxy) {
    const int32_t id = valueOf(proxy->a_hidl_a_qortvapi_record_pvr_open(RECORD_SOURCE_MAIN),
                               "record_pvr_open");
    if (id == TV_FULL) {
        throw Error(Error::Kind::kRefused, "all recorders of the television are in use");
    }
    return static_cast<uint32_t>(checkResult(id, "open a recorder"));
}

}  // namespace

Recorder::Recorder(android::sp<Interface> proxy) : mProxy(std::move(proxy)), mId(open(mProxy)) {}

Recorder::Recorder(android::sp<Interface> proxy, uint32_t id) : mProxy(std::move(proxy)), mId(id) {}

std::unique_ptr<Recorder> Recorder::running(const android::sp<Interface>& proxy) {
    const int32_t id = valueOf(proxy->a_hidl_a_qortvapi_record_pvr_get_current_handle(),
                               "record_pvr_get_current_handle");
    if (id == TV_NOT_FOUND) return nullptr;
    const auto recorder = static_cast<uint32_t>(checkResult(id, "tell what records"));
    return std::unique_ptr<Recorder>(new Recorder(proxy, recorder));
}

Recorder::~Recorder() {
    // A failure needs no handling: the recorder ended with the service, or stays open.
    static_cast<void>(mProxy->a_hidl_a_qortvapi_record_pvr_close(mId).isOk());
}

void Recorder::select(uint32_t channelId) {
    checkResult(valueOf(mProxy->a_hidl_a_qortvapi_record_pvr_select_svc(mId, channelId, kAnyList),
                        "record_pvr_select_svc"),
                "record channel id ", channelId);
}

void Recorder::setLength(std::chrono::milliseconds length) {
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(length).count();
    if (seconds < 0 || seconds > std::numeric_limits<int32_t>::max()) {
        throw Error(Error::Kind::kArgument,
                    "a recording cannot be " + std::to_string(seconds) + " seconds long");
    }
    const int32_t mode = seconds == 0 ? RECORD_MODE_NORMAL : RECORD_MODE_LIMITED;
    checkResult(valueOf(mProxy->a_hidl_a_qortvapi_record_pvr_set_mode(
                                mId, mode, kNoArgument, static_cast<int32_t>(seconds)),
                        "record_pvr_set_mode"),
                "record for ", seconds, " seconds");
}

void Recorder::start() {
    const int32_t result =
            valueOf(mProxy->a_hidl_a_qortvapi_record_pvr_start(mId), "record_pvr_start");
    if (result == TV_FAILED) {
        const RecordingError reason = error();
        if (reason != RecordingError::kNone) {
            throw Error(Error::Kind::kRefused, std::string("cannot record: ") + describe(reason));
        }
    }
    if (result == TV_BUSY && state() != RecordingState::kRecording) {
        throw Error(Error::Kind::kRefused,
                    "cannot record: the tuner records a channel of another multiplex");
    }
    checkResult(result, "record");
}

void Recorder::stop() {
    const int32_t result =
            valueOf(mProxy->a_hidl_a_qortvapi_record_pvr_stop(mId), "record_pvr_stop");
    if (result == TV_BUSY) return;  // nothing is being recorded
    checkResult(result, "stop the recording");
}

RecordingState Recorder::state() {
    return recordingState(checkResult(
            valueOf(mProxy->a_hidl_a_qortvapi_record_pvr_get_status(mId), "record_pvr_get_status"),
            "tell of the recorder"));
}

RecordingError Recorder::error() {
    return recordingError(
            checkResult(valueOf(mProxy->a_hidl_a_qortvapi_record_pvr_get_error_id(mId),
                                "record_pvr_get_error_id"),
                        "tell of the recorder"));
}

std::chrono::seconds Recorder::length() {
    return std::chrono::seconds(checkResult(
            valueOf(mProxy->a_hidl_a_qortvapi_get_recording_position(mId), "recording_position"),
            "tell of the recorder"));
}

std::string Recorder::path() {
    std::string file;
    int32_t result = 0;
    check(mProxy->a_hidl_a_qortvapi_record_pvr_get_recording_file_name(
                  mId, kMaxName,
                  [&](const auto& name, int32_t code) {
                      file = name.c_str();
                      result = code;
                  }),
          "record_pvr_get_recording_file_name");
    checkResult(result, "tell the name of the recording");
    if (file.empty()) return file;
    std::string folder;
    check(mProxy->a_hidl_a_qortvapi_record_pvr_get_disk(kDisk, kMaxPath,
                                                        [&](const auto& path, int32_t code) {
                                                            folder = path.c_str();
                                                            result = code;
                                                        }),
          "record_pvr_get_disk");
    checkResult(result, "tell the folder of the recordings");
    return folder + "/" + file;
}

}  // namespace qortv
