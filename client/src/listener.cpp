#include "qortv/listener.h"

#include <algorithm>
#include <string>
#include <utility>

#include "utf16.h"

namespace qortv {

namespace {

using Units = android::hardware::hidl_vec<uint16_t>;

std::string toUtf8(const Units& units) {
    return qortv::toUtf8(units.data(), units.size());
}

void append(std::vector<Notification::Field>& fields, const Listener::HIDL_CI_MMI_ENQ_T& enquiry) {
    fields.insert(fields.end(), {{"id", enquiry.id},
                                 {"answer_length", enquiry.answer_length},
                                 {"blind_answer", enquiry.blind_answer},
                                 {"text", toUtf8(enquiry.text)},
                                 {"path_valid", enquiry.path_valid},
                                 {"path_id", enquiry.path_id}});
}

void append(std::vector<Notification::Field>& fields, const Listener::HIDL_CI_MMI_MENU_T& menu) {
    Notification::Texts items;
    const size_t count = std::min<size_t>(menu.item_count, menu.items.size());
    for (size_t i = 0; i < count; ++i) items.push_back(toUtf8(menu.items[i]));
    fields.insert(fields.end(), {{"id", menu.id},
                                 {"title", toUtf8(menu.title)},
                                 {"subtitle", toUtf8(menu.subtitle)},
                                 {"bottom", toUtf8(menu.bottom)},
                                 {"items", std::move(items)},
                                 {"path_valid", menu.path_valid},
                                 {"path_id", menu.path_id}});
}

}  // namespace

void Listener::onNotification(const Notification&) {}

void Listener::onDisconnected() {}

void Listener::onConnected() {}

void Listener::notifySvctxListener(uint32_t svctx, uint16_t condition, uint16_t code,
                                   uint16_t stream_type, uint64_t tag) {
    onNotification({"notifySvctxListener",
                    {{"svctx", svctx},
                     {"condition", condition},
                     {"code", code},
                     {"stream_type", stream_type},
                     {"tag", tag}}});
}

void Listener::notifySvctxSelect(uint32_t svctx, uint16_t condition, uint16_t code,
                                 uint16_t stream_type, uint64_t tag) {
    onNotification({"notifySvctxSelect",
                    {{"svctx", svctx},
                     {"condition", condition},
                     {"code", code},
                     {"stream_type", stream_type},
                     {"tag", tag}}});
}

void Listener::notifyInputSourceDetect(uint32_t component, int32_t condition, uint64_t tag,
                                       int32_t data, int32_t data2) {
    onNotification({"notifyInputSourceDetect",
                    {{"component", component},
                     {"condition", condition},
                     {"tag", tag},
                     {"data", data},
                     {"data2", data2}}});
}

void Listener::notifyHighlevel(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                               uint64_t arg3, uint64_t arg4) {
    onNotification({"notifyHighlevel",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notify3dMode(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                            uint64_t arg4) {
    onNotification({"notify3dMode",
                    {{"type", type},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyReserved5(int32_t code, uint64_t tag) {
    onNotification({"notifyReserved5", {{"code", code}, {"tag", tag}}});
}

void Listener::notifyReserved6(int32_t code, uint64_t tag) {
    onNotification({"notifyReserved6", {{"code", code}, {"tag", tag}}});
}

void Listener::notifyNoUsedKey(int32_t keycode, uint64_t tag, uint64_t arg1, uint64_t arg2,
                               uint64_t arg3, uint64_t arg4) {
    onNotification({"notifyNoUsedKey",
                    {{"keycode", keycode},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

AndroidAnswer Listener::queryAndroid(uint32_t code, uint64_t tag, uint32_t attribute) {
    onNotification({"queryAndroid", {{"code", code}, {"tag", tag}, {"attribute", attribute}}});
    return {};
}

void Listener::notifyEas(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                         uint64_t arg4) {
    onNotification({"notifyEas",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyGinga(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                           uint64_t arg3) {
    onNotification(
            {"notifyGinga",
             {{"type", type}, {"tag", tag}, {"arg1", arg1}, {"arg2", arg2}, {"arg3", arg3}}});
}

void Listener::notifyGingaVolume(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3) {
    onNotification(
            {"notifyGingaVolume",
             {{"type", type}, {"tag", tag}, {"arg1", arg1}, {"arg2", arg2}, {"arg3", arg3}}});
}

void Listener::notifyGingaUpdate(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3) {
    onNotification(
            {"notifyGingaUpdate",
             {{"type", type}, {"tag", tag}, {"arg1", arg1}, {"arg2", arg2}, {"arg3", arg3}}});
}

void Listener::notifyScan(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                          uint64_t arg4) {
    onNotification({"notifyScan",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyBroadcast(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                               uint64_t arg3, uint64_t arg4) {
    onNotification({"notifyBroadcast",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyScreensaverMsg(int32_t message_id, uint64_t tag, int64_t arg1, int64_t arg2,
                                    int64_t arg3) {
    onNotification({"notifyScreensaverMsg",
                    {{"message_id", message_id},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3}}});
}

void Listener::notifyWarningMsg(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                uint64_t arg3, uint64_t arg4) {
    onNotification({"notifyWarningMsg",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyBanner(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                            uint64_t arg4) {
    onNotification({"notifyBanner",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyRating(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                            uint64_t arg4) {
    onNotification({"notifyRating",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyChannelLogo(int32_t type, uint64_t tag, int32_t arg1, int32_t arg2,
                                 int32_t arg3, int32_t arg4) {
    onNotification({"notifyChannelLogo",
                    {{"type", type},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifySubtitle(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                              uint64_t arg3, uint64_t arg4) {
    onNotification({"notifySubtitle",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyPwdDlgMsg(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2,
                               uint64_t arg3, uint64_t arg4) {
    onNotification({"notifyPwdDlgMsg",
                    {{"type", type},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyEventUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) {
    onNotification({"notifyEventUpdate",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyTimeshift(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2) {
    onNotification(
            {"notifyTimeshift", {{"code", code}, {"tag", tag}, {"arg1", arg1}, {"arg2", arg2}}});
}

void Listener::notifyDateTime(int32_t code, uint64_t tag, uint64_t arg1) {
    onNotification({"notifyDateTime", {{"code", code}, {"tag", tag}, {"arg1", arg1}}});
}

void Listener::notifySleepTimer(int32_t code, uint64_t tag, uint64_t arg1) {
    onNotification({"notifySleepTimer", {{"code", code}, {"tag", tag}, {"arg1", arg1}}});
}

void Listener::notifySyncSource(int32_t code, uint64_t tag, uint64_t arg1) {
    onNotification({"notifySyncSource", {{"code", code}, {"tag", tag}, {"arg1", arg1}}});
}

void Listener::notifyPcl(uint32_t pcl, uint64_t tag, uint32_t condition, uint32_t data) {
    onNotification(
            {"notifyPcl", {{"pcl", pcl}, {"tag", tag}, {"condition", condition}, {"data", data}}});
}

void Listener::notifyEventAtsc(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                               uint64_t arg3, uint64_t arg4) {
    onNotification({"notifyEventAtsc",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyConfig(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                            uint64_t arg4) {
    onNotification({"notifyConfig",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyIom(uint64_t tag, uint64_t condition, const hidl_vec<uint8_t>& data) {
    onNotification({"notifyIom", {{"tag", tag}, {"condition", condition}, {"data", data}}});
}

void Listener::notifyApptv(int32_t type, uint64_t tag, uint64_t arg1, uint64_t arg2, uint64_t arg3,
                           uint64_t arg4) {
    onNotification({"notifyApptv",
                    {{"type", type},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyHbbtvMsg(int32_t code, uint64_t tag, const hidl_vec<uint8_t>& data) {
    onNotification({"notifyHbbtvMsg", {{"code", code}, {"tag", tag}, {"data", data}}});
}

void Listener::notifyOad(int32_t code, uint64_t tag, const hidl_string& info, int32_t progress,
                         uint8_t flag, int32_t arg) {
    onNotification({"notifyOad",
                    {{"code", code},
                     {"tag", tag},
                     {"info", info},
                     {"progress", progress},
                     {"flag", flag},
                     {"arg", arg}}});
}

void Listener::notifyMheg5(int32_t type, uint64_t tag, int32_t arg1, int32_t arg2, int32_t arg3) {
    onNotification(
            {"notifyMheg5",
             {{"type", type}, {"tag", tag}, {"arg1", arg1}, {"arg2", arg2}, {"arg3", arg3}}});
}

void Listener::notifyMheg5LaunchHbbtv(const hidl_string& location, uint64_t tag, int32_t arg1) {
    onNotification(
            {"notifyMheg5LaunchHbbtv", {{"location", location}, {"tag", tag}, {"arg1", arg1}}});
}

MimeTypeAnswer Listener::isMheg5MimeTypeSupported(const hidl_string& mime_type, uint64_t tag,
                                                  int32_t arg1) {
    onNotification(
            {"isMheg5MimeTypeSupported", {{"mime_type", mime_type}, {"tag", tag}, {"arg1", arg1}}});
    return {};
}

void Listener::notifyRecord(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2) {
    onNotification(
            {"notifyRecord", {{"code", code}, {"tag", tag}, {"arg1", arg1}, {"arg2", arg2}}});
}

void Listener::notifyAudioInfo(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                               uint64_t arg3, uint64_t arg4) {
    onNotification({"notifyAudioInfo",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyUpgrade(int32_t type, int32_t state, int32_t progress, uint64_t tag) {
    onNotification({"notifyUpgrade",
                    {{"type", type}, {"state", state}, {"progress", progress}, {"tag", tag}}});
}

void Listener::notifyChannelListUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                       uint64_t arg3, uint64_t arg4) {
    onNotification({"notifyChannelListUpdate",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyTvProviderUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                      uint64_t arg3, uint64_t arg4) {
    onNotification({"notifyTvProviderUpdate",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifySvlIdUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) {
    onNotification({"notifySvlIdUpdate",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyTslIdUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                 uint64_t arg3, uint64_t arg4) {
    onNotification({"notifyTslIdUpdate",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyNwlUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                               uint64_t arg3, uint64_t arg4) {
    onNotification({"notifyNwlUpdate",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyListModeUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2) {
    onNotification({"notifyListModeUpdate",
                    {{"code", code}, {"tag", tag}, {"arg1", arg1}, {"arg2", arg2}}});
}

void Listener::notifyOclScanInfo(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2) {
    onNotification(
            {"notifyOclScanInfo", {{"code", code}, {"tag", tag}, {"arg1", arg1}, {"arg2", arg2}}});
}

void Listener::notifyEwspa(int32_t type, uint64_t tag) {
    onNotification({"notifyEwspa", {{"type", type}, {"tag", tag}}});
}

void Listener::notifyTeletext(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                              uint64_t arg3) {
    onNotification(
            {"notifyTeletext",
             {{"code", code}, {"tag", tag}, {"arg1", arg1}, {"arg2", arg2}, {"arg3", arg3}}});
}

void Listener::notifyBisskeyUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3, uint64_t arg4) {
    onNotification({"notifyBisskeyUpdate",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifySatlListUpdate(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                    uint64_t arg3, uint64_t arg4) {
    onNotification({"notifySatlListUpdate",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyCi(uint64_t ci, uint64_t tag, int32_t condition,
                        const hidl_vec<uint8_t>& data) {
    onNotification(
            {"notifyCi", {{"ci", ci}, {"tag", tag}, {"condition", condition}, {"data", data}}});
}

void Listener::notifyCiMmiEnquiry(uint64_t ci, uint64_t tag, int32_t condition,
                                  const HIDL_CI_MMI_ENQ_T& enquiry) {
    std::vector<Notification::Field> fields = {{"ci", ci}, {"tag", tag}, {"condition", condition}};
    append(fields, enquiry);
    onNotification({"notifyCiMmiEnquiry", std::move(fields)});
}

void Listener::notifyCiMmiMenu(uint64_t ci, uint64_t tag, int32_t condition,
                               const HIDL_CI_MMI_MENU_T& menu) {
    std::vector<Notification::Field> fields = {{"ci", ci}, {"tag", tag}, {"condition", condition}};
    append(fields, menu);
    onNotification({"notifyCiMmiMenu", std::move(fields)});
}

void Listener::notifyConcernColumn(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                                   uint64_t arg3, uint64_t arg4) {
    onNotification({"notifyConcernColumn",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4}}});
}

void Listener::notifyBmlMsg(int32_t code, uint64_t tag, const hidl_vec<uint8_t>& data) {
    onNotification({"notifyBmlMsg", {{"code", code}, {"tag", tag}, {"data", data}}});
}

void Listener::notifyHtmlAgent(int32_t code, uint64_t tag, const hidl_vec<uint8_t>& data) {
    onNotification({"notifyHtmlAgent", {{"code", code}, {"tag", tag}, {"data", data}}});
}

void Listener::notifyVideoInfo(int32_t code, uint64_t tag, uint64_t arg1, uint64_t arg2,
                               uint64_t arg3, uint64_t arg4, uint64_t arg5, uint64_t arg6) {
    onNotification({"notifyVideoInfo",
                    {{"code", code},
                     {"tag", tag},
                     {"arg1", arg1},
                     {"arg2", arg2},
                     {"arg3", arg3},
                     {"arg4", arg4},
                     {"arg5", arg5},
                     {"arg6", arg6}}});
}

void Listener::notifyReserved58(int32_t code, uint64_t tag) {
    onNotification({"notifyReserved58", {{"code", code}, {"tag", tag}}});
}

void Listener::notifyTtsMsg(uint64_t tag, const hidl_string& data, uint32_t length) {
    onNotification({"notifyTtsMsg", {{"tag", tag}, {"data", data}, {"length", length}}});
}

void Listener::notifyMdsMsg(uint64_t tag, const hidl_string& data, uint32_t length) {
    onNotification({"notifyMdsMsg", {{"tag", tag}, {"data", data}, {"length", length}}});
}

void Listener::notifyEws(int32_t type, uint64_t tag) {
    onNotification({"notifyEws", {{"type", type}, {"tag", tag}}});
}

}  // namespace qortv
