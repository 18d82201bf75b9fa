#define LOG_TAG "hh_qortvapi_scan"

#include "hhandler/hh_qortvapi_scan.h"

#include <algorithm>
#include <cstring>

#include "bridge.h"
#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/scan.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _scan_callback_fct(int32_t i4_code, void* pv_tag, void* pv_arg1, void* pv_arg2, void* pv_arg3,
                        void* pv_arg4) {
    FanOut(LOG_TAG).forward("e_code", &IQorTvApiCallback::notifyScan, i4_code, pv_tag, pv_arg1,
                            pv_arg2, pv_arg3, pv_arg4);
}

using ScanEngine = int32_t (*)(int32_t*, uint32_t);

/** When the copy of the numbers is freed after a failure. */
enum class Freed { kAfterAnswer, kBeforeAnswer };

void exchange(ScanEngine engine, const hidl_vec<int32_t>& data, const ScanExchangeAnswer& answer,
              Freed freed, const char* method = __builtin_FUNCTION(), int line = __builtin_LINE()) {
    CallerArray<int32_t> numbers(data, method);
    const int32_t result = engine(numbers.data(), data.size());
    const auto logResult = [&] {
        if (mTvApiDebug == 0) return;
        __android_log_print(ANDROID_LOG_DEBUG, LOG_TAG, "<%s:%d> i4_ret:%d\n", method, line,
                            result);
    };
    if (result != 0) {
        logResult();
        if (freed == Freed::kBeforeAnswer) numbers.clear();
        answer({}, result);
        return;
    }
    answer(borrowedVector(numbers.data(), data.size()), result);
    logResult();
}

/** A buffer of `length` bytes and a NUL that begins with as much of `text` as fits. */
class TextCopy : public CallerText {
  public:
    TextCopy(const hidl_string& text, int64_t length, const char* method = __builtin_FUNCTION())
        : CallerText(length, method) {
        if (length < 0) return;
        memcpy(data(), text.c_str(), std::min(static_cast<size_t>(length), text.size()));
    }
};

}  // namespace

int32_t hh_a_qortvapi_scan_init() {
    return a_qortvapi_scan_reg_callback(_scan_callback_fct, registrationTag(11111));
}

void hh_a_scan_dvbs_exchange_data(const hidl_vec<int32_t>& data, const ScanExchangeAnswer& answer) {
    exchange(a_scan_dvbs_exchange_data, data, answer, Freed::kAfterAnswer);
}

void hh_a_scan_dvbc_exchange_data(const hidl_vec<int32_t>& data, const ScanExchangeAnswer& answer) {
    exchange(a_scan_dvbc_exchange_data, data, answer, Freed::kBeforeAnswer);
}

void hh_a_scan_dvbt_exchange_data(const hidl_vec<int32_t>& data, const ScanExchangeAnswer& answer) {
    exchange(a_scan_dvbt_exchange_data, data, answer, Freed::kAfterAnswer);
}

void hh_a_qortvapi_get_user_message(
        const hidl_string& message, uint32_t length,
        const std::function<void(const hidl_string&, uint32_t, int32_t)>& answer) {
    const TextCopy buffer(message, length);
    const int32_t result = a_qortvapi_get_user_message(buffer.data(), length);
    const hidl_string rewritten = buffer.forClient();
    if (result != 0) {
        TVAPI_LOG("a_qortvapi_get_user_message fail, i4_ret=%d, %s, %u\n", result, message.c_str(),
                  length);
        answer(rewritten, 0, result);
        return;
    }
    answer(rewritten, length, result);
    TVAPI_DEBUG("%s, %u, %s, %s, %d\n", message.c_str(), length, buffer.data(), rewritten.c_str(),
                result);
}

void hh_a_qortvapi_scan_dvbc_get_str_data(
        int32_t type, const hidl_string& text, int32_t length,
        const std::function<void(const hidl_string&, int32_t, int32_t)>& answer) {
    const TextCopy buffer(text, length);
    const int32_t result = a_qortvapi_scan_dvbc_get_str_data(type, buffer.data(), length);
    if (result != 0) {
        TVAPI_LOG("a_qortvapi_scan_dvbc_get_str_data fail, i4_ret=%d, %s, %u\n", result,
                  text.c_str(), length);
        return;
    }
    const hidl_string rewritten = buffer.forClient();
    answer(rewritten, length, result);
    TVAPI_DEBUG("%d, %s, %d, %s, %s, %d\n", type, text.c_str(), length, buffer.data(),
                rewritten.c_str(), result);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
