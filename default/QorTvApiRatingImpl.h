/** Parental ratings. */
#pragma once

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>
#include <vendor/corvanta/tv/qortvapi/1.0/IQorTvApiRating.h>

#include <cstdint>

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_string;
using ::android::hardware::hidl_vec;
using ::android::hardware::Return;

/**
 * Each method calls the middleware function of its name without the prefix `a_hidl_`. There is no
 * state: any number of threads may call at a time.
 */
class QorTvApiRatingImpl : public IQorTvApiRating {
  public:
    QorTvApiRatingImpl();

    // United States and Canada.
    /** A byte of the middleware's record that is not 0 becomes true. */
    Return<void> a_hidl_a_qortvapi_rating_get_us_tv_setting_info(
            a_hidl_a_qortvapi_rating_get_us_tv_setting_info_cb _hidl_cb) override;
    /** Passes the bytes of `block` on as the client sent them. */
    Return<int32_t> a_hidl_a_qortvapi_rating_set_us_tv_setting_info(
            const HIDL_US_TV_Rating_BLOCK_T& block) override;
    Return<void> a_hidl_a_qortvapi_rating_get_us_movie_setting_info(
            a_hidl_a_qortvapi_rating_get_us_movie_setting_info_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_rating_set_us_movie_setting_info(uint8_t rating) override;
    Return<void> a_hidl_a_qortvapi_rating_get_can_eng_setting_info(
            a_hidl_a_qortvapi_rating_get_can_eng_setting_info_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_rating_set_can_eng_setting_info(uint8_t rating) override;
    Return<void> a_hidl_a_qortvapi_rating_get_can_fre_setting_info(
            a_hidl_a_qortvapi_rating_get_can_fre_setting_info_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_rating_set_can_fre_setting_info(uint8_t rating) override;
    Return<void> a_hidl_a_qortvapi_rating_get_block_unrated(
            a_hidl_a_qortvapi_rating_get_block_unrated_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_rating_set_block_unrated(bool blocked) override;
    Return<void> a_hidl_a_qortvapi_rating_get_enable(
            a_hidl_a_qortvapi_rating_get_enable_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_rating_get_us_tv_group_by_child(
            a_hidl_a_qortvapi_rating_get_us_tv_group_by_child_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_rating_set_enable(uint8_t enabled) override;

    // Rating tables that are broadcast.
    Return<void> a_hidl_a_qortvapi_rating_get_op_vchip_avail(
            a_hidl_a_qortvapi_rating_get_op_vchip_avail_cb _hidl_cb) override;
    Return<void> a_hidl_a_qortvapi_rating_get_op_vchip_info(
            const HIDL_Open_Vchip_Key_Param_T& key,
            a_hidl_a_qortvapi_rating_get_op_vchip_info_cb _hidl_cb) override;
    /** The middleware gets the three numbers of `block`, not its array. */
    Return<void> a_hidl_a_qortvapi_rating_get_op_vchip_setting_info(
            const HIDL_Open_Vchip_Block_Data_T& block,
            a_hidl_a_qortvapi_rating_get_op_vchip_setting_info_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_rating_set_op_vchip_setting_info(
            const HIDL_Open_Vchip_Block_Data_T& block) override;

    // ISDB and DVB.
    Return<void> a_hidl_a_qortvapi_rating_get_isdb_content_setting_info(
            a_hidl_a_qortvapi_rating_get_isdb_content_setting_info_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_rating_set_isdb_content_setting_info(
            uint8_t setting) override;
    Return<void> a_hidl_a_qortvapi_rating_get_isdb_age_setting_info(
            a_hidl_a_qortvapi_rating_get_isdb_age_setting_info_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_rating_set_isdb_age_setting_info(uint8_t age) override;
    Return<void> a_hidl_a_qortvapi_rating_get_dvb_age_setting_info(
            a_hidl_a_qortvapi_rating_get_dvb_age_setting_info_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_rating_set_dvb_age_setting_info(uint8_t age) override;

    // Ratings of programmes.
    /**
     * Hands the middleware a list in which every node is a copy of the first of `ratings`, and
     * every entry of a node a copy of its first entry, or zero if it has none. The list has as many
     * nodes as there is memory for, at most 4 MiB; without memory for one it is a null pointer.
     * There is no answer if `ratings` is empty.
     */
    Return<void> a_hidl_a_qortvapi_rating_convert_rating_info(
            const hidl_vec<HIDL_EVCTX_ATSC_RATING_LIST_T>& ratings,
            a_hidl_a_qortvapi_rating_convert_rating_info_cb _hidl_cb) override;
    Return<int32_t> a_hidl_a_qortvapi_rating_atsc_storage(bool stored) override;
    Return<void> a_hidl_a_qortvapi_rating_get_crnt_rating_info(
            a_hidl_a_qortvapi_rating_get_crnt_rating_info_cb _hidl_cb) override;
};

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
