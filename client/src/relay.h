/** The object that the service calls: passes notifications on to a listener until it is closed. */
#pragma once

#include <mutex>
#include <utility>

#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiCallback.h>

#include "qortv/listener.h"

namespace qortv {

/**
 * The service holds on to a callback until the death of our process, so this object may outlive
 * the subscription and its listener; once closed it swallows what it hears. Its mutex is held while
 * the listener is called: the calls come one at a time, and close() waits for one that is running.
 */
class Relay : public vendor::corvanta::tv::qortvapi::V1_0::IQorTvApiCallback {
  public:
    explicit Relay(Listener& listener) : mListener(&listener) {}

    /** Ends the calls of the listener. Any thread but one that the listener is being called on. */
    void close() {
        std::lock_guard lock(mMutex);
        mListener = nullptr;
    }

    /** Calls a method of the listener without a result. Any thread. */
    template <typename... A, typename... B>
    android::hardware::Return<void> pass(void (Listener::*method)(A...), B&&... arguments) {
        std::lock_guard lock(mMutex);
        if (mListener != nullptr) (mListener->*method)(std::forward<B>(arguments)...);
        return {};
    }

    template <typename T>
    using Return = android::hardware::Return<T>;
    using hidl_string = android::hardware::hidl_string;
    template <typename T>
    using hidl_vec = android::hardware::hidl_vec<T>;
    using HIDL_CI_MMI_ENQ_T = vendor::corvanta::tv::qortvapi::V1_0::HIDL_CI_MMI_ENQ_T;
    using HIDL_CI_MMI_MENU_T = vendor::corvanta::tv::qortvapi::V1_0::HIDL_CI_MMI_MENU_T;

    Return<void> notifySvctxListener(uint32_t svctx, uint16_t condition, uint16_t code,
                                     uint16_t stream_type, uint64_t tag) override;
    Return<void> notifySvctxSelect(uint32_t svctx, uint16_t condition, uint16_t code,
                                   uint16_t stream_type, uint64_t tag) override;
    Return<void> notifyInputSourceDetect(uint32_t component, int32_t condition, uint64_t tag,
                                         int32_t data, int32_t data2) override;
    Return<void> notifyHighlevel(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) override;
    Return<void> notify3dMode(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                              uint64_t arg3, uint64_t arg4) override;
    Return<void> notifyReserved5(int32_t code, uint64_t tag) override;
    Return<void> notifyReserved6(int32_t code, uint64_t tag) override;
    Return<void> notifyNoUsedKey(int32_t keycode, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) override;
    Return<void> queryAndroid(uint32_t code, uint64_t tag, uint32_t attribute,
                              queryAndroid_cb _hidl_cb) override;
    Return<void> notifyEas(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                           uint64_t arg4) override;
    Return<void> notifyGinga(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                             uint64_t arg3) override;
    Return<void> notifyGingaVolume(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3) override;
    Return<void> notifyGingaUpdate(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3) override;
    Return<void> notifyScan(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                            uint64_t arg4) override;
    Return<void> notifyBroadcast(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) override;
    Return<void> notifyScreensaverMsg(int32_t message_id, uint64_t tag, int64_t arg1, int64_t arg2,
                                      int64_t arg3) override;
    Return<void> notifyWarningMsg(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                  uint64_t arg3, uint64_t arg4) override;
    Return<void> notifyBanner(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                              uint64_t arg3, uint64_t arg4) override;
    Return<void> notifyRating(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                              uint64_t arg3, uint64_t arg4) override;
    Return<void> notifyChannelLogo(int32_t type, uint64_t tag, int32_t arg1, int32_t arg2,
                                   int32_t arg3, int32_t arg4) override;
    Return<void> notifySubtitle(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                uint64_t arg3, uint64_t arg4) override;
    Return<void> notifyPwdDlgMsg(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) override;
    Return<void> notifyEventUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3, uint64_t arg4) override;
    Return<void> notifyTimeshift(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2) override;
    Return<void> notifyDateTime(int32_t code, uint64_t tag, uint64_t arg1) override;
    Return<void> notifySleepTimer(int32_t code, uint64_t tag, uint64_t arg1) override;
    Return<void> notifySyncSource(int32_t code, uint64_t tag, uint64_t arg1) override;
    Return<void> notifyPcl(uint32_t pcl, uint64_t tag, uint32_t condition, uint32_t data) override;
    Return<void> notifyEventAtsc(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) override;
    Return<void> notifyConfig(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                              uint64_t arg3, uint64_t arg4) override;
    Return<void> notifyIom(uint64_t tag, uint64_t condition,
                           const hidl_vec<uint8_t>& data) override;
    Return<void> notifyApptv(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                             uint64_t arg3, uint64_t arg4) override;
    Return<void> notifyHbbtvMsg(int32_t code, uint64_t tag, const hidl_vec<uint8_t>& data) override;
    Return<void> notifyOad(int32_t code, uint64_t tag, const hidl_string& info, int32_t progress,
                           uint8_t flag, int32_t arg) override;
    Return<void> notifyMheg5(int32_t type, uint64_t tag, int32_t arg1, int32_t arg2,
                             int32_t arg3) override;
    Return<void> notifyMheg5LaunchHbbtv(const hidl_string& location, uint64_t tag,
                                        int32_t arg1) override;
    Return<void> isMheg5MimeTypeSupported(const hidl_string& mime_type, uint64_t tag, int32_t arg1,
                                          isMheg5MimeTypeSupported_cb _hidl_cb) override;
    Return<void> notifyRecord(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2) override;
    Return<void> notifyAudioInfo(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) override;
    Return<void> notifyUpgrade(int32_t type, int32_t state, int32_t progress,
                               uint64_t tag) override;
    Return<void> notifyChannelListUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                         uint64_t arg3, uint64_t arg4) override;
    Return<void> notifyTvProviderUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                        uint64_t arg3, uint64_t arg4) override;
    Return<void> notifySvlIdUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3, uint64_t arg4) override;
    Return<void> notifyTslIdUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3, uint64_t arg4) override;
    Return<void> notifyNwlUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) override;
    Return<void> notifyListModeUpdate(int32_t code, uint64_t tag, uint64_t arg1,
                                      uint64_t arg2) override;
    Return<void> notifyOclScanInfo(int32_t code, uint64_t tag, uint64_t arg1,
                                   uint64_t arg2) override;
    Return<void> notifyEwspa(int32_t type, uint64_t tag) override;
    Return<void> notifyTeletext(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                uint64_t arg3) override;
    Return<void> notifyBisskeyUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                     uint64_t arg3, uint64_t arg4) override;
    Return<void> notifySatlListUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                      uint64_t arg3, uint64_t arg4) override;
    Return<void> notifyCi(uint64_t ci, uint64_t tag, int32_t condition,
                          const hidl_vec<uint8_t>& data) override;
    Return<void> notifyCiMmiEnquiry(uint64_t ci, uint64_t tag, int32_t condition,
                                    const HIDL_CI_MMI_ENQ_T& enquiry) override;
    Return<void> notifyCiMmiMenu(uint64_t ci, uint64_t tag, int32_t condition,
                                 const HIDL_CI_MMI_MENU_T& menu) override;
    Return<void> notifyConcernColumn(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                     uint64_t arg3, uint64_t arg4) override;
    Return<void> notifyBmlMsg(int32_t code, uint64_t tag, const hidl_vec<uint8_t>& data) override;
    Return<void> notifyHtmlAgent(int32_t code, uint64_t tag,
                                 const hidl_vec<uint8_t>& data) override;
    Return<void> notifyVideoInfo(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4, uint64_t arg5,
                                 uint64_t arg6) override;
    Return<void> notifyReserved58(int32_t code, uint64_t tag) override;
    Return<void> notifyTtsMsg(uint64_t tag, const hidl_string& data, uint32_t length) override;
    Return<void> notifyMdsMsg(uint64_t tag, const hidl_string& data, uint32_t length) override;
    Return<void> notifyEws(int32_t type, uint64_t tag) override;

  private:
    /** Asks the listener; a closed relay declines, which is what an empty answer says. */
    template <typename R, typename... A, typename... B>
    R ask(R (Listener::*method)(A...), B&&... arguments) {
        std::lock_guard lock(mMutex);
        return mListener == nullptr ? R{} : (mListener->*method)(std::forward<B>(arguments)...);
    }

    std::mutex mMutex;
    Listener* mListener;
};

}  // namespace qortv
