/** A client in the test's own process that records the calls it receives. */
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
 * A call is recorded as the text `method(first, second, ...)`: numbers in decimal with the sign of
 * their interface type, texts in quotes, bytes in hexadecimal between angle brackets, an enquiry or
 * menu as its id. Any thread.
 */
class RecordingClient : public IQorTvApiCallback {
  public:
    /** Returned by every call. */
    Status status;
    /** Called inside every call, after it was recorded. */
    std::function<void()> onCall;
    /** Answer queryAndroid() and isMheg5MimeTypeSupported(); without one of these functions the
     * client never calls the result callback of its method. */
    std::function<void(const queryAndroid_cb&)> answerQuery;
    std::function<void(const isMheg5MimeTypeSupported_cb&)> answerMimeType;
    /** Returned by linkToDeath(), and the arguments that it was called with. */
    bool linked = true;
    Status linkStatus;
    std::vector<uint64_t> cookies;
    sp<hidl_death_recipient> recipient;
    /** Address of the bytes of the last call that had any. */
    const uint8_t* lastData = nullptr;

    /** Returns the recorded calls in their order. */
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

    Return<void> queryAndroid(uint32_t code, uint64_t tag, uint32_t attribute,
                              queryAndroid_cb _hidl_cb) override {
        Return<void> outcome = record("queryAndroid", code, tag, attribute);
        if (outcome.isOk() && answerQuery) answerQuery(_hidl_cb);
        return outcome;
    }
    Return<void> isMheg5MimeTypeSupported(const hidl_string& mime_type, uint64_t tag, int32_t arg1,
                                          isMheg5MimeTypeSupported_cb _hidl_cb) override {
        Return<void> outcome = record("isMheg5MimeTypeSupported", mime_type, tag, arg1);
        if (outcome.isOk() && answerMimeType) answerMimeType(_hidl_cb);
        return outcome;
    }

    // All other callbacks.
#define QORTV_CALLBACK(method, ...) record(#method, __VA_ARGS__)
#include "callback_overrides.inc"
#undef QORTV_CALLBACK

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
    static std::string text(const HIDL_CI_MMI_ENQ_T& enquiry) {
        return std::to_string(enquiry.id);
    }
    static std::string text(const HIDL_CI_MMI_MENU_T& menu) {
        return std::to_string(menu.id);
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
