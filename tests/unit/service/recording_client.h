/** A client in the test's own process that writes down what it is told. */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiCallback.h>

#include <functional>
#include <mutex>
#include <string>
#include <type_traits>
#include <vector>

using ::android::sp;
using ::android::hardware::hidl_death_recipient;
using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;
using ::android::hardware::Status;
using namespace ::vendor::corvanta::tv::qortvapi::V1_0;

/**
 * A call is written down as `method(first, second, ...)`: numbers in decimal with the sign of their
 * interface type, texts in quotes, bytes in hexadecimal between angle brackets. Any thread.
 */
class RecordingClient : public IQorTvApiCallback {
  public:
    /** What every call returns to the caller. */
    Status status;
    /** Runs inside every call, after it was written down. */
    std::function<void()> onCall;
    /** How the two questions are answered; a client without an answer never calls the callback. */
    std::function<void(const queryAndroid_cb&)> answerQuery;
    std::function<void(const isMheg5MimeTypeSupported_cb&)> answerMimeType;
    /** What linking to death returns, and what it was called with. */
    bool linked = true;
    Status linkStatus;
    std::vector<uint64_t> cookies;
    sp<hidl_death_recipient> recipient;
    /** Where the bytes of the last call lay. */
    const uint8_t* lastData = nullptr;

    std::vector<std::string> calls() const {
        std::lock_guard<std::mutex> lock(mMutex);
        return mCalls;
    }

    Return<bool> linkToDeath(const sp<hidl_death_recipient>& death_recipient,
                             uint64_t cookie) override {
        recipient = death_recipient;
        cookies.push_back(cookie);
        if (!linkStatus.isOk()) return linkStatus;
        return linked;
    }

    Return<void> notifySvctxListener(uint32_t svctx, uint16_t condition, uint16_t code,
                                     uint16_t stream_type, uint64_t tag) override {
        return record("notifySvctxListener", svctx, condition, code, stream_type, tag);
    }
    Return<void> notifySvctxSelect(uint32_t svctx, uint16_t condition, uint16_t code,
                                   uint16_t stream_type, uint64_t tag) override {
        return record("notifySvctxSelect", svctx, condition, code, stream_type, tag);
    }
    Return<void> notifyInputSourceDetect(uint32_t component, int32_t condition, uint64_t tag,
                                         int32_t data, int32_t data2) override {
        return record("notifyInputSourceDetect", component, condition, tag, data, data2);
    }
    Return<void> notifyHighlevel(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) override {
        return record("notifyHighlevel", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notify3dMode(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                              uint64_t arg3, uint64_t arg4) override {
        return record("notify3dMode", type, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyReserved5(int32_t code, uint64_t tag) override {
        return record("notifyReserved5", code, tag);
    }
    Return<void> notifyReserved6(int32_t code, uint64_t tag) override {
        return record("notifyReserved6", code, tag);
    }
    Return<void> notifyNoUsedKey(int32_t keycode, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) override {
        return record("notifyNoUsedKey", keycode, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> queryAndroid(uint32_t code, uint64_t tag, uint32_t attribute,
                              queryAndroid_cb _hidl_cb) override {
        Return<void> outcome = record("queryAndroid", code, tag, attribute);
        if (outcome.isOk() && answerQuery) answerQuery(_hidl_cb);
        return outcome;
    }
    Return<void> notifyEas(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                           uint64_t arg4) override {
        return record("notifyEas", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyGinga(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                             uint64_t arg3) override {
        return record("notifyGinga", type, tag, arg1, arg2, arg3);
    }
    Return<void> notifyGingaVolume(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3) override {
        return record("notifyGingaVolume", type, tag, arg1, arg2, arg3);
    }
    Return<void> notifyGingaUpdate(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3) override {
        return record("notifyGingaUpdate", type, tag, arg1, arg2, arg3);
    }
    Return<void> notifyScan(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                            uint64_t arg4) override {
        return record("notifyScan", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyBroadcast(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) override {
        return record("notifyBroadcast", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyScreensaverMsg(int32_t message_id, uint64_t tag, int64_t arg1, int64_t arg2,
                                      int64_t arg3) override {
        return record("notifyScreensaverMsg", message_id, tag, arg1, arg2, arg3);
    }
    Return<void> notifyWarningMsg(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                  uint64_t arg3, uint64_t arg4) override {
        return record("notifyWarningMsg", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyBanner(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                              uint64_t arg3, uint64_t arg4) override {
        return record("notifyBanner", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyRating(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                              uint64_t arg3, uint64_t arg4) override {
        return record("notifyRating", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyChannelLogo(int32_t type, uint64_t tag, int32_t arg1, int32_t arg2,
                                   int32_t arg3, int32_t arg4) override {
        return record("notifyChannelLogo", type, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifySubtitle(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                uint64_t arg3, uint64_t arg4) override {
        return record("notifySubtitle", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyPwdDlgMsg(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) override {
        return record("notifyPwdDlgMsg", type, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyEventUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3, uint64_t arg4) override {
        return record("notifyEventUpdate", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyTimeshift(int32_t code, uint64_t tag, uint64_t arg1,
                                 uint64_t arg2) override {
        return record("notifyTimeshift", code, tag, arg1, arg2);
    }
    Return<void> notifyDateTime(int32_t code, uint64_t tag, uint64_t arg1) override {
        return record("notifyDateTime", code, tag, arg1);
    }
    Return<void> notifySleepTimer(int32_t code, uint64_t tag, uint64_t arg1) override {
        return record("notifySleepTimer", code, tag, arg1);
    }
    Return<void> notifySyncSource(int32_t code, uint64_t tag, uint64_t arg1) override {
        return record("notifySyncSource", code, tag, arg1);
    }
    Return<void> notifyPcl(uint32_t pcl, uint64_t tag, uint32_t condition, uint32_t data) override {
        return record("notifyPcl", pcl, tag, condition, data);
    }
    Return<void> notifyEventAtsc(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) override {
        return record("notifyEventAtsc", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyConfig(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                              uint64_t arg3, uint64_t arg4) override {
        return record("notifyConfig", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyIom(uint64_t tag, uint64_t condition,
                           const hidl_vec<uint8_t>& data) override {
        return record("notifyIom", tag, condition, data);
    }
    Return<void> notifyApptv(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                             uint64_t arg3, uint64_t arg4) override {
        return record("notifyApptv", type, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyHbbtvMsg(int32_t code, uint64_t tag,
                                const hidl_vec<uint8_t>& data) override {
        return record("notifyHbbtvMsg", code, tag, data);
    }
    Return<void> notifyOad(int32_t code, uint64_t tag, const hidl_string& info, int32_t progress,
                           uint8_t flag, int32_t arg) override {
        return record("notifyOad", code, tag, info, progress, flag, arg);
    }
    Return<void> notifyMheg5(int32_t type, uint64_t tag, int32_t arg1, int32_t arg2,
                             int32_t arg3) override {
        return record("notifyMheg5", type, tag, arg1, arg2, arg3);
    }
    Return<void> notifyMheg5LaunchHbbtv(const hidl_string& location, uint64_t tag,
                                        int32_t arg1) override {
        return record("notifyMheg5LaunchHbbtv", location, tag, arg1);
    }
    Return<void> isMheg5MimeTypeSupported(const hidl_string& mime_type, uint64_t tag, int32_t arg1,
                                          isMheg5MimeTypeSupported_cb _hidl_cb) override {
        Return<void> outcome = record("isMheg5MimeTypeSupported", mime_type, tag, arg1);
        if (outcome.isOk() && answerMimeType) answerMimeType(_hidl_cb);
        return outcome;
    }
    Return<void> notifyRecord(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2) override {
        return record("notifyRecord", code, tag, arg1, arg2);
    }
    Return<void> notifyAudioInfo(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) override {
        return record("notifyAudioInfo", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyUpgrade(int32_t type, int32_t state, int32_t progress,
                               uint64_t tag) override {
        return record("notifyUpgrade", type, state, progress, tag);
    }
    Return<void> notifyChannelListUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                         uint64_t arg3, uint64_t arg4) override {
        return record("notifyChannelListUpdate", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyTvProviderUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                        uint64_t arg3, uint64_t arg4) override {
        return record("notifyTvProviderUpdate", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifySvlIdUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3, uint64_t arg4) override {
        return record("notifySvlIdUpdate", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyTslIdUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3, uint64_t arg4) override {
        return record("notifyTslIdUpdate", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyNwlUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) override {
        return record("notifyNwlUpdate", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyListModeUpdate(int32_t code, uint64_t tag, uint64_t arg1,
                                      uint64_t arg2) override {
        return record("notifyListModeUpdate", code, tag, arg1, arg2);
    }
    Return<void> notifyOclScanInfo(int32_t code, uint64_t tag, uint64_t arg1,
                                   uint64_t arg2) override {
        return record("notifyOclScanInfo", code, tag, arg1, arg2);
    }
    Return<void> notifyEwspa(int32_t type, uint64_t tag) override {
        return record("notifyEwspa", type, tag);
    }
    Return<void> notifyTeletext(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                uint64_t arg3) override {
        return record("notifyTeletext", code, tag, arg1, arg2, arg3);
    }
    Return<void> notifyBisskeyUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                     uint64_t arg3, uint64_t arg4) override {
        return record("notifyBisskeyUpdate", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifySatlListUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                      uint64_t arg3, uint64_t arg4) override {
        return record("notifySatlListUpdate", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyCi(uint64_t ci, uint64_t tag, int32_t condition,
                          const hidl_vec<uint8_t>& data) override {
        return record("notifyCi", ci, tag, condition, data);
    }
    Return<void> notifyCiMmiEnquiry(uint64_t ci, uint64_t tag, int32_t condition,
                                    const HIDL_CI_MMI_ENQ_T& enquiry) override {
        return record("notifyCiMmiEnquiry", ci, tag, condition, enquiry.id);
    }
    Return<void> notifyCiMmiMenu(uint64_t ci, uint64_t tag, int32_t condition,
                                 const HIDL_CI_MMI_MENU_T& menu) override {
        return record("notifyCiMmiMenu", ci, tag, condition, menu.id);
    }
    Return<void> notifyConcernColumn(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                     uint64_t arg3, uint64_t arg4) override {
        return record("notifyConcernColumn", code, tag, arg1, arg2, arg3, arg4);
    }
    Return<void> notifyBmlMsg(int32_t code, uint64_t tag, const hidl_vec<uint8_t>& data) override {
        return record("notifyBmlMsg", code, tag, data);
    }
    Return<void> notifyHtmlAgent(int32_t code, uint64_t tag,
                                 const hidl_vec<uint8_t>& data) override {
        return record("notifyHtmlAgent", code, tag, data);
    }
    Return<void> notifyVideoInfo(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4, uint64_t arg5,
                                 uint64_t arg6) override {
        return record("notifyVideoInfo", code, tag, arg1, arg2, arg3, arg4, arg5, arg6);
    }
    Return<void> notifyReserved58(int32_t code, uint64_t tag) override {
        return record("notifyReserved58", code, tag);
    }
    Return<void> notifyTtsMsg(uint64_t tag, const hidl_string& data, uint32_t length) override {
        return record("notifyTtsMsg", tag, data, length);
    }
    Return<void> notifyMdsMsg(uint64_t tag, const hidl_string& data, uint32_t length) override {
        return record("notifyMdsMsg", tag, data, length);
    }
    Return<void> notifyEws(int32_t type, uint64_t tag) override {
        return record("notifyEws", type, tag);
    }

  private:
    template <typename... Arguments>
    Return<void> record(const char* method, const Arguments&... arguments) {
        std::string call = method;
        call += '(';
        size_t written = 0;
        ((call += (written++ == 0 ? "" : ", ") + text(arguments)), ...);
        call += ')';
        {
            std::lock_guard<std::mutex> lock(mMutex);
            mCalls.push_back(call);
        }
        if (onCall) onCall();
        if (!status.isOk()) return status;
        return Return<void>();
    }

    template <typename Number>
    static std::string text(Number number) {
        static_assert(std::is_integral_v<Number>);
        return std::to_string(number);
    }
    static std::string text(const hidl_string& string) {
        return '"' + std::string(string.c_str()) + '"';
    }
    std::string text(const hidl_vec<uint8_t>& bytes) {
        static const char kDigits[] = "0123456789abcdef";
        lastData = bytes.data();
        std::string hexadecimal = "<";
        for (const uint8_t byte : bytes) {
            hexadecimal += kDigits[byte >> 4];
            hexadecimal += kDigits[byte & 15];
        }
        return hexadecimal + '>';
    }

    mutable std::mutex mMutex;
    std::vector<std::string> mCalls;  // guarded by mMutex
};
