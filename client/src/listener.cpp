// The methods of Listener whose default body is not like the others; make_callbacks.py writes
// those.
#include "qortv/listener.h"

#include "menu_items.h"
#include "utf16.h"

namespace qortv {

void Listener::onNotification(const Notification&) {}

void Listener::onDisconnected() {}

void Listener::onConnected() {}

AndroidAnswer Listener::queryAndroid(uint32_t code, uint64_t tag, uint32_t attribute) {
    onNotification({"queryAndroid", {{"code", code}, {"tag", tag}, {"attribute", attribute}}});
    return {};
}

MimeTypeAnswer Listener::isMheg5MimeTypeSupported(const hidl_string& mime_type, uint64_t tag,
                                                  int32_t arg1) {
    onNotification(
            {"isMheg5MimeTypeSupported", {{"mime_type", mime_type}, {"tag", tag}, {"arg1", arg1}}});
    return {};
}

void Listener::notifyCiMmiEnquiry(uint64_t ci, uint64_t tag, int32_t condition,
                                  const HIDL_CI_MMI_ENQ_T& enquiry) {
    onNotification({"notifyCiMmiEnquiry",
                    {{"ci", ci},
                     {"tag", tag},
                     {"condition", condition},
                     {"id", enquiry.id},
                     {"answer_length", enquiry.answer_length},
                     {"blind_answer", enquiry.blind_answer},
                     {"text", toUtf8(enquiry.text)},
                     {"path_valid", enquiry.path_valid},
                     {"path_id", enquiry.path_id}}});
}

void Listener::notifyCiMmiMenu(uint64_t ci, uint64_t tag, int32_t condition,
                               const HIDL_CI_MMI_MENU_T& menu) {
    onNotification({"notifyCiMmiMenu",
                    {{"ci", ci},
                     {"tag", tag},
                     {"condition", condition},
                     {"id", menu.id},
                     {"title", toUtf8(menu.title)},
                     {"subtitle", toUtf8(menu.subtitle)},
                     {"bottom", toUtf8(menu.bottom)},
                     {"items", itemsOf(menu)},
                     {"path_valid", menu.path_valid},
                     {"path_id", menu.path_id}}});
}

}  // namespace qortv
