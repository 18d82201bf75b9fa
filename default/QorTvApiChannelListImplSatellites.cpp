// The satellite list and the BISS keys.
#define LOG_TAG "QorTvApiChannelListImpl(service)"

#include "QorTvApiChannelListImpl.h"

#include "bridge.h"
#include "hhandler/hh_qortvapi_channellist.h"
#include "log.h"
#include "middleware/channellist.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

// Satellite list.

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_satllist_lock_database(
        uint16_t satl_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_satllist_lock_database(satl_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_satllist_unlock_database(
        uint16_t satl_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_satllist_unlock_database(satl_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_satllist_read_lock_database(
        uint16_t satl_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_satllist_read_lock_database(satl_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_satllist_read_unlock_database(
        uint16_t satl_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_satllist_read_unlock_database(satl_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_satllist_clean(uint16_t satl_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_satllist_clean(satl_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_satllist_get_rec(
        uint16_t satl_id, uint16_t satl_rec_id, a_hidl_a_qortvapi_satllist_get_rec_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_satllist_get_rec, satl_id, satl_rec_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_satllist_update_rec(
        uint16_t satl_id, const hidl_vec<uint8_t>& satl_rec, bool force) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_satllist_update_rec(satl_id, InputImage<SATL_REC_T>(satl_rec), force);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_satllist_get_num_recs(
        uint16_t satl_id, a_hidl_a_qortvapi_satllist_get_num_recs_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_satllist_get_num_recs, satl_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_satllist_qry_rec_id(
        int16_t satl_id, int8_t index, a_hidl_a_qortvapi_satllist_qry_rec_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_satllist_qry_rec_id, satl_id, index);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_satllist_del_rec(uint16_t satl_id,
                                                                            uint16_t satl_rec_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_satllist_del_rec(satl_id, satl_rec_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_satllist_get_rec_by_rec_idx(
        uint16_t satl_id, uint16_t index,
        a_hidl_a_qortvapi_satllist_get_rec_by_rec_idx_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_satllist_get_rec_by_rec_idx, satl_id, index);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_satllist_create_snapshot(
        uint16_t satl_id, a_hidl_a_qortvapi_satllist_create_snapshot_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_satllist_create_snapshot, satl_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_satllist_restore_snapshot(
        uint32_t snapshot_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_satllist_restore_snapshot(snapshot_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_satllist_free_snapshot(
        uint32_t snapshot_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_satllist_free_snapshot(snapshot_id);
}

// BISS keys.

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_bisskey_get_bsl_handle_by_bsl_id(
        uint16_t bsl_id, a_hidl_a_qortvapi_bisskey_get_bsl_handle_by_bsl_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_bisskey_get_bsl_handle_by_bsl_id, bsl_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_bisskey_lock_database(
        uint32_t bsl_handle) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_bisskey_lock_database(bsl_handle);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_bisskey_unlock_database(
        uint32_t bsl_handle) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_bisskey_unlock_database(bsl_handle);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_bisskey_get_recs_number(
        uint32_t bsl_handle, a_hidl_a_qortvapi_bisskey_get_recs_number_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_bisskey_get_recs_number, bsl_handle);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_bisskey_get_bsl_rec_by_bsl_rec_id(
        uint32_t bsl_handle, uint16_t bsl_rec_id,
        a_hidl_a_qortvapi_bisskey_get_bsl_rec_by_bsl_rec_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_bisskey_get_bsl_rec_by_bsl_rec_id, bsl_handle, bsl_rec_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_bisskey_get_bsl_rec_by_idx(
        uint32_t bsl_handle, uint16_t index,
        a_hidl_a_qortvapi_bisskey_get_bsl_rec_by_idx_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_bisskey_get_bsl_rec_by_idx, bsl_handle, index);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_bisskey_get_recs_number_by_header(
        uint32_t bsl_handle, const hidl_vec<uint8_t>& header,
        a_hidl_a_qortvapi_bisskey_get_recs_number_by_header_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_bisskey_get_recs_number_by_header, bsl_handle,
                  InputImage<BSL_HEADER_T>(header));
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_bisskey_get_bsl_rec_by_header(
        uint32_t bsl_handle, const hidl_vec<uint8_t>& header, uint16_t index,
        a_hidl_a_qortvapi_bisskey_get_bsl_rec_by_header_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_bisskey_get_bsl_rec_by_header, bsl_handle,
                  InputImage<BSL_HEADER_T>(header), index);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_bisskey_set_bsl_rec_info(
        uint32_t bsl_handle, uint32_t operation, const hidl_vec<uint8_t>& bsl_rec,
        a_hidl_a_qortvapi_bisskey_set_bsl_rec_info_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    hh_a_qortvapi_bisskey_set_bsl_rec_info(bsl_handle, operation, InputImage<BSL_REC_T>(bsl_rec),
                                           _hidl_cb);
    return Void();
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_bisskey_clean(uint32_t bsl_handle) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_bisskey_clean(bsl_handle);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_bisskey_is_same_record(
        const hidl_vec<uint8_t>& bsl_rec, const hidl_vec<uint8_t>& other_bsl_rec) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_bisskey_is_same_record(InputImage<BSL_REC_T>(bsl_rec),
                                             InputImage<BSL_REC_T>(other_bsl_rec));
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_bisskey_get_default_record(
        a_hidl_a_qortvapi_bisskey_get_default_record_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_bisskey_get_default_record);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_bisskey_set_key_for_current_channel() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_bisskey_set_key_for_current_channel();
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
