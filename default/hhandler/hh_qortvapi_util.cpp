#define LOG_TAG "hh_qortvapi_util"

#include "hhandler/hh_qortvapi_util.h"

#include <algorithm>

#include "hhandler/fan_out.h"
#include "hhandler/registration.h"
#include "log.h"
#include "middleware/util.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

void _noused_key_nfy_fct(int32_t i4_keycode, void* pv_tag, void* pv_arg1, void* pv_arg2,
                         void* pv_arg3, void* pv_arg4) {
    FanOut(LOG_TAG).forward("i4_keycode", &IQorTvApiCallback::notifyNoUsedKey, i4_keycode, pv_tag,
                            pv_arg1, pv_arg2, pv_arg3, pv_arg4);
}

}  // namespace

int32_t hh_a_qortvapi_util_init() {
    return a_qortvapi_util_register_nousedkey_callback(_noused_key_nfy_fct, registrationTag(1234));
}

void hh_a_qortvapi_util_get(
        const hidl_string& name, int32_t kind, const hidl_vec<uint8_t>& data, uint64_t size,
        const std::function<void(uint64_t, const hidl_vec<uint8_t>&, int32_t)>& answer) {
    // All bytes that the client sent are copied, even if they are more than the size that it names.
    const auto capacity = static_cast<uint32_t>(size);
    const CallerArray<uint8_t> buffer(std::max<int64_t>(capacity, data.size()),
                                      CallerArray<uint8_t>::kOptional);
    if (buffer.data() == nullptr) {
        TVAPI_LOG("Alloc memory fail!!!!\n");
        return answer(size, {}, -1);
    }
    std::copy_n(data.data(), data.size(), buffer.data());
    uint32_t size_out = capacity;
    const int32_t result = a_qortvapi_util_get(name.c_str(), kind, buffer.data(), &size_out);
    answer(size_out, borrowedVector(buffer.data(), capacity), result);
}

int32_t hh_a_qortvapi_util_tuner_fac_query_diag(
        bool flag, uint64_t size,
        const std::function<void(int32_t, const hidl_vec<uint8_t>&, const hidl_vec<uint8_t>&)>&
                answer) {
    constexpr uint64_t kEntrySize = 32;
    // A size of 2^63 or more becomes a negative count, for which there is no memory either.
    const auto count = static_cast<int64_t>(size);
    const CallerArray<uint8_t> names(count, CallerArray<uint8_t>::kOptional);
    const CallerArray<uint8_t> values(count, CallerArray<uint8_t>::kOptional);
    if (names.data() == nullptr || values.data() == nullptr) {
        TVAPI_LOG("Alloc memory fail!!!!\n");
        answer(-1, {}, {});
        return -1;
    }
    const int32_t result = a_qortvapi_util_tuner_fac_query_diag(
            flag, static_cast<uint8_t>(size / kEntrySize), names.data(), values.data());
    answer(result, borrowedVector(names.data(), size), borrowedVector(values.data(), size));
    return result;
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
