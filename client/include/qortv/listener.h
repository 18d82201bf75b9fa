/** The base class of objects that receive the notifications of the television. */
#pragma once

#include <cstdint>
#include <vector>

#include <vendor/corvanta/tv/qortvapi/1.0/types.h>

#include "qortv/notification.h"

namespace qortv {

/** The answer to queryAndroid(). By default it declines the query. */
struct AndroidAnswer {
    int32_t attribute = -1;  ///< -1 declines
    /** Must not be longer than the query allows: nobody checks its length on the way. */
    std::vector<uint8_t> data;
};

/** The answer to isMheg5MimeTypeSupported(). By default it declines the question. */
struct MimeTypeAnswer {
    bool supported = false;
    int32_t result = -1;  ///< -1 declines
};

/**
 * Has one method for each notification. To receive one kind of notification, override its method;
 * to receive all, override onNotification(), which the methods call that are not overridden. A
 * Subscription registers the listener with the television.
 *
 *     struct : qortv::Listener {
 *         void notifyDateTime(int32_t, uint64_t, uint64_t now) override { show(now); }
 *     } clock;
 *     qortv::Subscription subscription(clock);
 *
 * Methods are called by threads of the runtime, never two at a time for one subscription. A method
 * must return soon: the television waits for it, and all other applications wait for the
 * television. A listener may make calls to the service, but must neither create nor destroy a
 * subscription in a method: both would wait for the method itself. An exception that leaves a
 * notification method is reported to the service as a failed call and goes no further;
 * onConnected() and onDisconnected() must not throw.
 *
 * Names and arguments are those of IQorTvApiCallback.hal. The headers of platform/middleware
 * explain the codes and arguments. Arguments passed by reference are valid during the call.
 */
class Listener {
  public:
    using hidl_string = android::hardware::hidl_string;
    template <typename T>
    using hidl_vec = android::hardware::hidl_vec<T>;
    using HIDL_CI_MMI_ENQ_T = vendor::corvanta::tv::qortvapi::V1_0::HIDL_CI_MMI_ENQ_T;
    using HIDL_CI_MMI_MENU_T = vendor::corvanta::tv::qortvapi::V1_0::HIDL_CI_MMI_MENU_T;

    virtual ~Listener() = default;

    /** Receives every notification whose own method is not overridden. Does nothing by default. */
    virtual void onNotification(const Notification& notification);

    /** The service died; the subscription tries to reconnect. Does nothing by default. */
    virtual void onDisconnected();

    /** The service is back, and this listener is registered with it. Does nothing by default. */
    virtual void onConnected();

    virtual void notifySvctxListener(uint32_t svctx, uint16_t condition, uint16_t code,
                                     uint16_t stream_type, uint64_t tag);
    virtual void notifySvctxSelect(uint32_t svctx, uint16_t condition, uint16_t code,
                                   uint16_t stream_type, uint64_t tag);
    virtual void notifyInputSourceDetect(uint32_t component, int32_t condition, uint64_t tag,
                                         int32_t data, int32_t data2);
    virtual void notifyHighlevel(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4);
    virtual void notify3dMode(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                              uint64_t arg3, uint64_t arg4);
    virtual void notifyReserved5(int32_t code, uint64_t tag);
    virtual void notifyReserved6(int32_t code, uint64_t tag);
    virtual void notifyNoUsedKey(int32_t keycode, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4);
    virtual AndroidAnswer queryAndroid(uint32_t code, uint64_t tag, uint32_t attribute);
    virtual void notifyEas(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                           uint64_t arg4);
    virtual void notifyGinga(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                             uint64_t arg3);
    virtual void notifyGingaVolume(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3);
    virtual void notifyGingaUpdate(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3);
    virtual void notifyScan(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                            uint64_t arg4);
    virtual void notifyBroadcast(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4);
    virtual void notifyScreensaverMsg(int32_t message_id, uint64_t tag, int64_t arg1, int64_t arg2,
                                      int64_t arg3);
    virtual void notifyWarningMsg(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                  uint64_t arg3, uint64_t arg4);
    virtual void notifyBanner(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                              uint64_t arg3, uint64_t arg4);
    virtual void notifyRating(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                              uint64_t arg3, uint64_t arg4);
    virtual void notifyChannelLogo(int32_t type, uint64_t tag, int32_t arg1, int32_t arg2,
                                   int32_t arg3, int32_t arg4);
    virtual void notifySubtitle(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                uint64_t arg3, uint64_t arg4);
    virtual void notifyPwdDlgMsg(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4);
    virtual void notifyEventUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3, uint64_t arg4);
    virtual void notifyTimeshift(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2);
    virtual void notifyDateTime(int32_t code, uint64_t tag, uint64_t arg1);
    virtual void notifySleepTimer(int32_t code, uint64_t tag, uint64_t arg1);
    virtual void notifySyncSource(int32_t code, uint64_t tag, uint64_t arg1);
    virtual void notifyPcl(uint32_t pcl, uint64_t tag, uint32_t condition, uint32_t data);
    virtual void notifyEventAtsc(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4);
    virtual void notifyConfig(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                              uint64_t arg3, uint64_t arg4);
    virtual void notifyIom(uint64_t tag, uint64_t condition, const hidl_vec<uint8_t>& data);
    virtual void notifyApptv(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                             uint64_t arg3, uint64_t arg4);
    virtual void notifyHbbtvMsg(int32_t code, uint64_t tag, const hidl_vec<uint8_t>& data);
    virtual void notifyOad(int32_t code, uint64_t tag, const hidl_string& info, int32_t progress,
                           uint8_t flag, int32_t arg);
    virtual void notifyMheg5(int32_t type, uint64_t tag, int32_t arg1, int32_t arg2, int32_t arg3);
    virtual void notifyMheg5LaunchHbbtv(const hidl_string& location, uint64_t tag, int32_t arg1);
    virtual MimeTypeAnswer isMheg5MimeTypeSupported(const hidl_string& mime_type, uint64_t tag,
                                                    int32_t arg1);
    virtual void notifyRecord(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2);
    virtual void notifyAudioInfo(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4);
    virtual void notifyUpgrade(int32_t type, int32_t state, int32_t progress, uint64_t tag);
    virtual void notifyChannelListUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                         uint64_t arg3, uint64_t arg4);
    virtual void notifyTvProviderUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                        uint64_t arg3, uint64_t arg4);
    virtual void notifySvlIdUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3, uint64_t arg4);
    virtual void notifyTslIdUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3, uint64_t arg4);
    virtual void notifyNwlUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4);
    virtual void notifyListModeUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2);
    virtual void notifyOclScanInfo(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2);
    virtual void notifyEwspa(int32_t type, uint64_t tag);
    virtual void notifyTeletext(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                uint64_t arg3);
    virtual void notifyBisskeyUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                     uint64_t arg3, uint64_t arg4);
    virtual void notifySatlListUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                      uint64_t arg3, uint64_t arg4);
    virtual void notifyCi(uint64_t ci, uint64_t tag, int32_t condition,
                          const hidl_vec<uint8_t>& data);
    virtual void notifyCiMmiEnquiry(uint64_t ci, uint64_t tag, int32_t condition,
                                    const HIDL_CI_MMI_ENQ_T& enquiry);
    virtual void notifyCiMmiMenu(uint64_t ci, uint64_t tag, int32_t condition,
                                 const HIDL_CI_MMI_MENU_T& menu);
    virtual void notifyConcernColumn(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                     uint64_t arg3, uint64_t arg4);
    virtual void notifyBmlMsg(int32_t code, uint64_t tag, const hidl_vec<uint8_t>& data);
    virtual void notifyHtmlAgent(int32_t code, uint64_t tag, const hidl_vec<uint8_t>& data);
    virtual void notifyVideoInfo(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4, uint64_t arg5, uint64_t arg6);
    virtual void notifyReserved58(int32_t code, uint64_t tag);
    virtual void notifyTtsMsg(uint64_t tag, const hidl_string& data, uint32_t length);
    virtual void notifyMdsMsg(uint64_t tag, const hidl_string& data, uint32_t length);
    virtual void notifyEws(int32_t type, uint64_t tag);
};

}  // namespace qortv
