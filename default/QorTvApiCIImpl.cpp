#define LOG_TAG "QorTvApiCIImpl(service)"

#include "QorTvApiCIImpl.h"

#include <algorithm>
#include <iterator>

#include "bridge.h"
#include "hhandler/hh_qortvapi_ci.h"
#include "log.h"
#include "middleware/ci.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

/** How the property of a type is read from the module. */
struct Property {
    uint32_t type;
    bool takes_info;
    uint32_t capacity;   // size of the buffer, in bytes
    uint32_t length;     // length of the buffer that the middleware is told, in units
    uint32_t unit;       // size of a unit, in bytes
    const char* buffer;  // name of an allocated buffer in the log; null for one on the stack
};

constexpr size_t kStackBytes = 16;
constexpr size_t kQueryBytes = 12;

constexpr Property kProperties[] = {
        // The buffer of a name is as long as the client says.
        {QORTVAPI_CI_GET_TYPE_CAM_NAME, true, 0, 0, sizeof(uint16_t), "utf16_cam_name"},
        {1, false, 1, 1, 1, nullptr},
        {2, true, 8, 8, 1, nullptr},
        {7, false, 4, 4, 1, nullptr},
        {8, false, 4, 4, 1, nullptr},
        {10, true, 1, 1, 1, nullptr},
        {13, true, 1, 1, 1, nullptr},
        // The middleware is told the length in bytes, though it counts in units.
        {QORTVAPI_CI_GET_TYPE_PROFILE_NAME, true, 200, 200, sizeof(uint16_t), "utf16_profile_name"},
        {QORTVAPI_CI_GET_TYPE_QUERY_BLOCK, true, kQueryBytes, kQueryBytes, 1, nullptr},
        {17, false, 16, 16, 1, nullptr},
        {QORTVAPI_CI_GET_TYPE_CAM_ID, true, 9, 8, 1, "pui1_cam_id"},
        {19, true, 1, 1, 1, nullptr},
        {QORTVAPI_CI_GET_TYPE_LANG_CODE, true, 4, 3, 1, "c_lang_code"},
        {26, true, 1, 1, 1, nullptr},
        {27, true, 1, 1, 1, nullptr},
        {28, true, 1, 1, 1, nullptr},
        {30, true, 4, 4, 1, nullptr},
        {31, true, 4, 4, 1, nullptr},
        {32, true, 4, 4, 1, nullptr},
};

/** Returns how many units `text` has before its first zero, or in all if there is none. */
int unitsBeforeZero(const hidl_vec<uint16_t>& text) {
    return static_cast<int>(std::find(text.begin(), text.end(), 0) - text.begin());
}

}  // namespace

Return<void> QorTvApiCIImpl::a_hidl_a_qortvapi_ci_get(uint32_t type, uint32_t info,
                                                      const hidl_vec<uint8_t>& in_data,
                                                      uint32_t in_data_length,
                                                      a_hidl_a_qortvapi_ci_get_cb _hidl_cb) {
    TVAPI_DEBUG(
            "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_get with e_get_type:%d, pv_get_info:%d, "
            "pv_data.size():%d, in_data_len:%d \n",
            type, info, static_cast<int>(in_data.size()), in_data_length);
    const auto* const property = std::find_if(std::begin(kProperties), std::end(kProperties),
                                              [&](const auto& row) { return row.type == type; });
    if (property == std::end(kProperties)) return Void();

    const auto read = [&](void* buffer, uint64_t capacity, uint32_t length) {
        const int32_t result =
                a_qortvapi_ci_get(type, property->takes_info ? info : 0, buffer, &length);
        // The module may report more than the buffer holds.
        const uint64_t bytes = std::min(uint64_t{length} * property->unit, capacity);
        const bool is_query = type == QORTVAPI_CI_GET_TYPE_QUERY_BLOCK;
        _hidl_cb(borrowedBytes(buffer, bytes), is_query ? in_data_length : length, result);
    };

    if (property->buffer == nullptr) {
        alignas(uint64_t) uint8_t block[kStackBytes] = {};
        if (type == QORTVAPI_CI_GET_TYPE_QUERY_BLOCK) boundedCopy(block, kQueryBytes, in_data);
        read(block, property->capacity, property->length);
        return Void();
    }
    uint64_t capacity = property->capacity;
    uint32_t length = property->length;
    if (type == QORTVAPI_CI_GET_TYPE_CAM_NAME) {
        if (in_data_length == 0) {  // the client asks for the length of the name
            read(nullptr, 0, 0);
            return Void();
        }
        length = in_data_length;
        capacity = uint64_t{length} * property->unit;
    }
    const CallerArray<uint8_t> buffer(capacity, CallerArray<uint8_t>::kOptional);
    if (buffer.data() == nullptr) {
        TVAPI_LOG("%s alloc memory fail!\n", property->buffer);
        return Void();
    }
    read(buffer.data(), capacity, length);
    return Void();
}

Return<void> QorTvApiCIImpl::a_hidl_a_qortvapi_ci_get_cam_pin_code(
        uint32_t type, uint32_t info, a_hidl_a_qortvapi_ci_get_cam_pin_code_cb _hidl_cb) {
    constexpr uint16_t kPlaceholder[] = {'0', '0', '0', '0', 0};
    constexpr size_t kDigits = std::size(kPlaceholder) - 1;
    TVAPI_DEBUG(
            "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_get_cam_pin_code with e_get_type:%d, "
            "pv_get_info:%d\n",
            type, info);
    if (type != QORTVAPI_CI_GET_TYPE_CAM_PIN_CODE) {
        TVAPI_DEBUG(
                "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_get_cam_pin_code with e_get_type:%d not "
                "handle here\n",
                type);
        return Void();
    }
    const CallerArray<uint16_t> digits(std::size(kPlaceholder), CallerArray<uint16_t>::kOptional);
    if (digits.data() == nullptr) {
        TVAPI_LOG("pui1_cam_id alloc memory fail!\n");
        return Void();
    }
    std::copy(std::begin(kPlaceholder), std::end(kPlaceholder), digits.data());
    HIDL_CI_CAM_PIN_CODE_T pin_code{};
    CI_CAM_PIN_CODE_T query = {&pin_code.ui1_valid, digits.data()};
    uint32_t length = kDigits * sizeof(uint16_t);
    const int32_t result = a_qortvapi_ci_get(type, info, &query, &length);
    pin_code.w2s_pin_code = borrowedVector(digits.data(), kDigits);

    TVAPI_DEBUG("QorTvApiCIImpl, a_hidl_cam_pin_code.ui1_valid:%d!\n", pin_code.ui1_valid);
    const int units = unitsBeforeZero(pin_code.w2s_pin_code);
    TVAPI_DEBUG("QorTvApiCIImpl, a_hidl_a_qortvapi_ci_get_cam_pin_code len:%d", units);
    for (int i = 0; i < units; ++i) {
        TVAPI_DEBUG("QorTvApiCIImpl, a_hidl_a_qortvapi_ci_get_cam_pin_code t_enq_ans[%d]:%d", i,
                    pin_code.w2s_pin_code[i]);
    }
    _hidl_cb(pin_code, result);
    return Void();
}

Return<int32_t> QorTvApiCIImpl::a_hidl_a_qortvapi_ci_set(uint32_t type, uint32_t info,
                                                         const hidl_vec<uint8_t>& data) {
    TVAPI_DEBUG(
            "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_set with e_set_type:%d, ui4_set_info:%d, "
            "pv_data.size:%d \n",
            type, info, static_cast<int>(data.size()));
    switch (type) {
        case 0:
        case 1:
        case 6:
        case 24:
        case 81:
            return a_qortvapi_ci_set(type, info, nullptr);
        case QORTVAPI_CI_SET_TYPE_MMI_MENU_ANS: {
            const InputImage<CI_MMI_MENU_ANS_T> menu_ans(data);
            const int32_t result = a_qortvapi_ci_set(type, 0, menu_ans);
            if (result != 0) {
                TVAPI_DEBUG(
                        "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_set "
                        "HIDL_QORTVAPI_CI_SET_TYPE_MMI_MENU_ANS, return:%d\n",
                        result);
            }
            return result;
        }
        case QORTVAPI_CI_SET_TYPE_PIN_CMD: {
            if (data.size() == 0) {
                TVAPI_DEBUG(
                        "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_set "
                        "HIDL_QORTVAPI_CI_SET_TYPE_PIN_CMD, pv_data.size(): 0\n");
                return 0;
            }
            // The byte of 0 that the array has at its end is the NUL of the text.
            const CallerArray<uint8_t> text(data.size(), CallerArray<uint8_t>::kOptional);
            if (text.data() == nullptr) {
                TVAPI_LOG("Alloc memory fail!!!!\n");
                return 0;
            }
            std::copy(data.begin(), data.end(), text.data());
            const int32_t result = a_qortvapi_ci_set(type, 0, text.data());
            if (result != 0) {
                TVAPI_DEBUG(
                        "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_set "
                        "HIDL_QORTVAPI_CI_SET_TYPE_PIN_CMD, return:%d\n",
                        result);
            }
            return result;
        }
        case QORTVAPI_CI_SET_TYPE_SAS_DTID_EVENT: {
            uint32_t event = 0;
            boundedCopy(&event, sizeof(event), data);
            TVAPI_DEBUG(
                    "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_set "
                    "QORTVAPI_CI_SET_TYPE_SAS_DTID_EVENT, event:%d\n",
                    event);
            return a_qortvapi_ci_set(type, info, &event);
        }
        case QORTVAPI_CI_SET_TYPE_HDS_CONFIRM:
            TVAPI_DEBUG(
                    "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_set QORTVAPI_CI_SET_TYPE_HDS_CONFIRM, "
                    "hds_confirm:%d\n",
                    info);
            return a_qortvapi_ci_set(type, info, nullptr);
        case QORTVAPI_CI_SET_TYPE_NAV_CAM_SCAN: {
            uint8_t flag = 0;
            boundedCopy(&flag, sizeof(flag), data);
            TVAPI_DEBUG(
                    "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_set QORTVAPI_CI_SET_TYPE_NAV_CAM_SCAN, "
                    "flag:%d\n",
                    flag);
            return a_qortvapi_ci_set(type, info, reinterpret_cast<const void*>(uintptr_t{flag}));
        }
        default:
            TVAPI_DEBUG("QorTvApiCIImpl, a_hidl_a_qortvapi_ci_set not support with e_set_type:%d\n",
                        type);
            return 0;
    }
}

Return<int32_t> QorTvApiCIImpl::a_hidl_a_qortvapi_ci_set_mmi_enq_ans(
        uint32_t type, uint32_t info, const HIDL_CI_MMI_ENQ_ANS_T& enq_ans) {
    TVAPI_DEBUG(
            "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_set_mmi_enq_ans with e_set_type:%d, "
            "ui4_set_info:%d\n",
            type, info);
    if (type != QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS) {
        TVAPI_DEBUG(
                "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_set_mmi_enq_ans with e_set_type:%d not "
                "handle here\n",
                type);
        return 0;
    }
    CI_MMI_ENQ_ANS_T record = {};
    record.ui4_id = enq_ans.ui4_id;
    record.ui1_answer = enq_ans.answer;
    record.w2s_text = enq_ans.w2s_text.data();

    const int units = unitsBeforeZero(enq_ans.w2s_text);
    TVAPI_DEBUG("QorTvApiCIImpl, QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS ui4_id:%d", record.ui4_id);
    TVAPI_DEBUG("QorTvApiCIImpl, with QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS answer:%d",
                record.ui1_answer);
    TVAPI_DEBUG(
            "QorTvApiCIImpl, with QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS t_enq_ans.w2s_text data start");
    TVAPI_DEBUG(
            "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_set with QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS len:%d",
            units);
    for (int i = 0; i < units; ++i) {
        TVAPI_DEBUG("QorTvApiCIImpl, with QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS t_enq_ans[%d]:%d", i,
                    enq_ans.w2s_text[i]);
    }
    TVAPI_DEBUG(
            "QorTvApiCIImpl, with QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS t_enq_ans.w2s_text data end");

    const int32_t result = a_qortvapi_ci_set(type, 0, &record);
    if (result != 0) {
        TVAPI_DEBUG(
                "QorTvApiCIImpl, a_hidl_a_qortvapi_ci_set HIDL_QORTVAPI_CI_SET_TYPE_MMI_ENQ_ANS, "
                "return:%d\n",
                result);
    }
    return result;
}

Return<void> QorTvApiCIImpl::a_hidl_a_qortvapi_ci_get_virtual_channel_info(
        uint32_t size, a_hidl_a_qortvapi_ci_get_virtual_channel_info_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const CallerArray<char> channel(size, CallerArray<char>::kOptional);
    if (channel.data() == nullptr) {
        TVAPI_LOG("pc_vir_channel Alloc memory fail!!!!\n");
        return Void();
    }
    uint32_t value = 0;
    const int32_t result = a_qortvapi_ci_get_virtual_channel_info(channel.data(), &value);
    _hidl_cb(borrowedText(channel.data()), value, result);
    return Void();
}

// The host's CI+ keys.

Return<int32_t> QorTvApiCIImpl::a_hidl_a_qortvapi_ci_key_erase() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ci_key_erase();
}

Return<void> QorTvApiCIImpl::a_hidl_a_qortvapi_ci_key_get_host_id(
        uint8_t size, a_hidl_a_qortvapi_ci_key_get_host_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    const CallerArray<uint8_t> host_id(size, CallerArray<uint8_t>::kOptional);
    if (host_id.data() == nullptr) {
        TVAPI_LOG("host_id Alloc memory fail!!!!\n");
        return Void();
    }
    uint8_t length = size;
    const int32_t result = a_qortvapi_ci_key_get_host_id(host_id.data(), &length);
    _hidl_cb(borrowedVector(host_id.data(), size), length, result);
    return Void();
}

Return<void> QorTvApiCIImpl::a_hidl_a_qortvapi_ci_key_query(
        a_hidl_a_qortvapi_ci_key_query_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    // The middleware fills the first 1024 bytes. Clients expect 1024 entries of two bytes, of which
    // the second half is zero.
    uint16_t area[1024] = {};
    const int32_t result = a_qortvapi_ci_key_query(area);
    _hidl_cb(borrowedVector(area, std::size(area)), result);
    return Void();
}

Return<void> QorTvApiCIImpl::a_hidl_a_qortvapi_ci_key_query_exist(
        a_hidl_a_qortvapi_ci_key_query_exist_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerFlag(_hidl_cb, a_qortvapi_ci_key_query_exist);
}

Return<void> QorTvApiCIImpl::a_hidl_a_qortvapi_ci_key_query_exist_ex(
        uint32_t key, a_hidl_a_qortvapi_ci_key_query_exist_ex_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answerFlag(_hidl_cb, a_qortvapi_ci_key_query_exist_ex, key);
}

Return<int32_t> QorTvApiCIImpl::a_hidl_a_qortvapi_ci_key_update() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ci_key_update();
}

Return<int32_t> QorTvApiCIImpl::a_hidl_a_qortvapi_ci_key_update_with_path(const hidl_string& path) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ci_key_update_with_path(path.c_str());
}

Return<int32_t> QorTvApiCIImpl::a_hidl_a_qortvapi_ci_key_update_with_path_ex(
        const hidl_string& path, uint32_t key) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ci_key_update_with_path_ex(path.c_str(), key);
}

Return<int32_t> QorTvApiCIImpl::a_hidl_a_qortvapi_ci_key_update_ex(uint32_t key) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ci_key_update_ex(key);
}

Return<int32_t> QorTvApiCIImpl::a_hidl_a_qortvapi_ci_key_write(const hidl_vec<uint8_t>& key,
                                                               uint32_t length) {
    TVAPI_LOG("pui1_key_buffer.size() = %d, ui4_key_buffer_len = %d.\n",
              static_cast<int>(key.size()), length);
    return a_qortvapi_ci_key_write(key.data(), length);
}

Return<int32_t> QorTvApiCIImpl::a_hidl_a_qortvapi_ci_key_activate() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_ci_key_activate();
}

// Registration for what the module reports.

Return<void> QorTvApiCIImpl::a_hidl_a_qortvapi_ci_reg_callback(
        uint32_t number, uint32_t category_tag, a_hidl_a_qortvapi_ci_reg_callback_cb _hidl_cb) {
    uint32_t h_ci = 0;
    const int32_t result = hh_a_qortvapi_ci_reg_callback(&h_ci, number, category_tag);
    _hidl_cb(h_ci, result);
    return Void();
}

Return<int32_t> QorTvApiCIImpl::a_hidl_a_qortvapi_ci_unreg_callback(uint32_t ci) {
    return hh_a_qortvapi_ci_unreg_callback(ci);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
