#include "relay.h"

namespace qortv {

using android::hardware::Return;

Return<void> Relay::queryAndroid(uint32_t code, uint64_t tag, uint32_t attribute,
                                 queryAndroid_cb _hidl_cb) {
    const AndroidAnswer answer = ask(&Listener::queryAndroid, code, tag, attribute);
    _hidl_cb(answer.attribute, answer.data);
    return {};
}

Return<void> Relay::isMheg5MimeTypeSupported(const hidl_string& mime_type, uint64_t tag,
                                             int32_t arg1, isMheg5MimeTypeSupported_cb _hidl_cb) {
    const MimeTypeAnswer answer = ask(&Listener::isMheg5MimeTypeSupported, mime_type, tag, arg1);
    _hidl_cb(answer.supported, answer.result);
    return {};
}

}  // namespace qortv
