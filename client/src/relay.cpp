#include "relay.h"

namespace qortv {

using android::hardware::Return;

Return<void> Relay::notifySvctxListener(uint32_t svctx, uint16_t condition, uint16_t code,
                                        uint16_t stream_type, uint64_t tag) {
    return pass(&Listener::notifySvctxListener, svctx, condition, code, stream_type, tag);
}

Return<void> Relay::notifySvctxSelect(uint32_t svctx, uint16_t condition, uint16_t code,
                                      uint16_t stream_type, uint64_t tag) {
    return pass(&Listener::notifySvctxSelect, svctx, condition, code, stream_type, tag);
}

Return<void> Relay::notifyInputSourceDetect(uint32_t component, int32_t condition, uint64_t tag,
                                            int32_t data, int32_t data2) {
    return pass(&Listener::notifyInputSourceDetect, component, condition, tag, data, data2);
}

Return<void> Relay::notifyHighlevel(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                    uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyHighlevel, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notify3dMode(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notify3dMode, type, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyReserved5(int32_t code, uint64_t tag) {
    return pass(&Listener::notifyReserved5, code, tag);
}

Return<void> Relay::notifyReserved6(int32_t code, uint64_t tag) {
    return pass(&Listener::notifyReserved6, code, tag);
}

Return<void> Relay::notifyNoUsedKey(int32_t keycode, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                    uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyNoUsedKey, keycode, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::queryAndroid(uint32_t code, uint64_t tag, uint32_t attribute,
                                 queryAndroid_cb _hidl_cb) {
    const AndroidAnswer answer = ask(&Listener::queryAndroid, code, tag, attribute);
    _hidl_cb(answer.attribute, answer.data);
    return {};
}

Return<void> Relay::notifyEas(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                              uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyEas, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyGinga(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                uint64_t arg3) {
    return pass(&Listener::notifyGinga, type, tag, arg1, arg2, arg3);
}

Return<void> Relay::notifyGingaVolume(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                      uint64_t arg3) {
    return pass(&Listener::notifyGingaVolume, type, tag, arg1, arg2, arg3);
}

Return<void> Relay::notifyGingaUpdate(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                      uint64_t arg3) {
    return pass(&Listener::notifyGingaUpdate, type, tag, arg1, arg2, arg3);
}

Return<void> Relay::notifyScan(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                               uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyScan, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyBroadcast(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                    uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyBroadcast, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyScreensaverMsg(int32_t message_id, uint64_t tag, int64_t arg1,
                                         int64_t arg2, int64_t arg3) {
    return pass(&Listener::notifyScreensaverMsg, message_id, tag, arg1, arg2, arg3);
}

Return<void> Relay::notifyWarningMsg(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                     uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyWarningMsg, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyBanner(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyBanner, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyRating(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyRating, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyChannelLogo(int32_t type, uint64_t tag, int32_t arg1, int32_t arg2,
                                      int32_t arg3, int32_t arg4) {
    return pass(&Listener::notifyChannelLogo, type, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifySubtitle(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifySubtitle, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyPwdDlgMsg(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                    uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyPwdDlgMsg, type, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyEventUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                      uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyEventUpdate, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyTimeshift(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2) {
    return pass(&Listener::notifyTimeshift, code, tag, arg1, arg2);
}

Return<void> Relay::notifyDateTime(int32_t code, uint64_t tag, uint64_t arg1) {
    return pass(&Listener::notifyDateTime, code, tag, arg1);
}

Return<void> Relay::notifySleepTimer(int32_t code, uint64_t tag, uint64_t arg1) {
    return pass(&Listener::notifySleepTimer, code, tag, arg1);
}

Return<void> Relay::notifySyncSource(int32_t code, uint64_t tag, uint64_t arg1) {
    return pass(&Listener::notifySyncSource, code, tag, arg1);
}

Return<void> Relay::notifyPcl(uint32_t pcl, uint64_t tag, uint32_t condition, uint32_t data) {
    return pass(&Listener::notifyPcl, pcl, tag, condition, data);
}

Return<void> Relay::notifyEventAtsc(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                    uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyEventAtsc, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyConfig(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyConfig, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyIom(uint64_t tag, uint64_t condition, const hidl_vec<uint8_t>& data) {
    return pass(&Listener::notifyIom, tag, condition, data);
}

Return<void> Relay::notifyApptv(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyApptv, type, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyHbbtvMsg(int32_t code, uint64_t tag, const hidl_vec<uint8_t>& data) {
    return pass(&Listener::notifyHbbtvMsg, code, tag, data);
}

Return<void> Relay::notifyOad(int32_t code, uint64_t tag, const hidl_string& info, int32_t progress,
                              uint8_t flag, int32_t arg) {
    return pass(&Listener::notifyOad, code, tag, info, progress, flag, arg);
}

Return<void> Relay::notifyMheg5(int32_t type, uint64_t tag, int32_t arg1, int32_t arg2,
                                int32_t arg3) {
    return pass(&Listener::notifyMheg5, type, tag, arg1, arg2, arg3);
}

Return<void> Relay::notifyMheg5LaunchHbbtv(const hidl_string& location, uint64_t tag,
                                           int32_t arg1) {
    return pass(&Listener::notifyMheg5LaunchHbbtv, location, tag, arg1);
}

Return<void> Relay::isMheg5MimeTypeSupported(const hidl_string& mime_type, uint64_t tag,
                                             int32_t arg1, isMheg5MimeTypeSupported_cb _hidl_cb) {
    const MimeTypeAnswer answer = ask(&Listener::isMheg5MimeTypeSupported, mime_type, tag, arg1);
    _hidl_cb(answer.supported, answer.result);
    return {};
}

Return<void> Relay::notifyRecord(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2) {
    return pass(&Listener::notifyRecord, code, tag, arg1, arg2);
}

Return<void> Relay::notifyAudioInfo(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                    uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyAudioInfo, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyUpgrade(int32_t type, int32_t state, int32_t progress, uint64_t tag) {
    return pass(&Listener::notifyUpgrade, type, state, progress, tag);
}

Return<void> Relay::notifyChannelListUpdate(int32_t code, uint64_t tag, uint64_t arg1,
                                            uint64_t arg2, uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyChannelListUpdate, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyTvProviderUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                           uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyTvProviderUpdate, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifySvlIdUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                      uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifySvlIdUpdate, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyTslIdUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                      uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyTslIdUpdate, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyNwlUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                    uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyNwlUpdate, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyListModeUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2) {
    return pass(&Listener::notifyListModeUpdate, code, tag, arg1, arg2);
}

Return<void> Relay::notifyOclScanInfo(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2) {
    return pass(&Listener::notifyOclScanInfo, code, tag, arg1, arg2);
}

Return<void> Relay::notifyEwspa(int32_t type, uint64_t tag) {
    return pass(&Listener::notifyEwspa, type, tag);
}

Return<void> Relay::notifyTeletext(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3) {
    return pass(&Listener::notifyTeletext, code, tag, arg1, arg2, arg3);
}

Return<void> Relay::notifyBisskeyUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                        uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyBisskeyUpdate, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifySatlListUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                         uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifySatlListUpdate, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyCi(uint64_t ci, uint64_t tag, int32_t condition,
                             const hidl_vec<uint8_t>& data) {
    return pass(&Listener::notifyCi, ci, tag, condition, data);
}

Return<void> Relay::notifyCiMmiEnquiry(uint64_t ci, uint64_t tag, int32_t condition,
                                       const HIDL_CI_MMI_ENQ_T& enquiry) {
    return pass(&Listener::notifyCiMmiEnquiry, ci, tag, condition, enquiry);
}

Return<void> Relay::notifyCiMmiMenu(uint64_t ci, uint64_t tag, int32_t condition,
                                    const HIDL_CI_MMI_MENU_T& menu) {
    return pass(&Listener::notifyCiMmiMenu, ci, tag, condition, menu);
}

Return<void> Relay::notifyConcernColumn(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                        uint64_t arg3, uint64_t arg4) {
    return pass(&Listener::notifyConcernColumn, code, tag, arg1, arg2, arg3, arg4);
}

Return<void> Relay::notifyBmlMsg(int32_t code, uint64_t tag, const hidl_vec<uint8_t>& data) {
    return pass(&Listener::notifyBmlMsg, code, tag, data);
}

Return<void> Relay::notifyHtmlAgent(int32_t code, uint64_t tag, const hidl_vec<uint8_t>& data) {
    return pass(&Listener::notifyHtmlAgent, code, tag, data);
}

Return<void> Relay::notifyVideoInfo(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                    uint64_t arg3, uint64_t arg4, uint64_t arg5, uint64_t arg6) {
    return pass(&Listener::notifyVideoInfo, code, tag, arg1, arg2, arg3, arg4, arg5, arg6);
}

Return<void> Relay::notifyReserved58(int32_t code, uint64_t tag) {
    return pass(&Listener::notifyReserved58, code, tag);
}

Return<void> Relay::notifyTtsMsg(uint64_t tag, const hidl_string& data, uint32_t length) {
    return pass(&Listener::notifyTtsMsg, tag, data, length);
}

Return<void> Relay::notifyMdsMsg(uint64_t tag, const hidl_string& data, uint32_t length) {
    return pass(&Listener::notifyMdsMsg, tag, data, length);
}

Return<void> Relay::notifyEws(int32_t type, uint64_t tag) {
    return pass(&Listener::notifyEws, type, tag);
}

}  // namespace qortv
