/**
 * The request handlers of the channel-list module: bulk reads into the clients' shared regions,
 * reads into arrays, and writes under the middleware's database lock. Any thread.
 *
 * Each calls the middleware function of its name with the client's arguments. An `answer` is called
 * exactly once, before the function returns, with the outputs and then the middleware's result.
 */
#pragma once

#include <hidl/HidlSupport.h>

#include <cstdint>
#include <functional>

#include "middleware/channellist.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

using ::android::hardware::hidl_handle;
using ::android::hardware::hidl_vec;

using CountsAnswer = std::function<void(uint32_t, uint32_t, int32_t)>;
using BytesAnswer = std::function<void(const hidl_vec<uint8_t>&, int32_t)>;

/** Reads the first `count` records of the lists. Answers with the list versions and the result of
 * the last read. */
void hh_a_qortvapi_channellist_get_svl_tsl_rec_by_handle_ex(uint32_t svl_handle,
                                                            uint32_t tsl_handle, uint16_t count,
                                                            const hidl_handle& svl_region,
                                                            const hidl_handle& tsl_region,
                                                            const CountsAnswer& answer);

/**
 * Reads `count` records of a favourite list as a ring: from index `start` on, and from index 0 on
 * when the low 16 bits of the index reach `wrap`. Returns the result of the last read.
 */
int32_t hh_a_qortvapi_channellist_get_svl_tsl_rec_by_index_ex(
        uint16_t svl_id, uint32_t lock_svl_id, uint32_t lock_flags, uint8_t fav_list, uint32_t mask,
        uint32_t mask_value, uint32_t start, uint16_t count, uint16_t wrap,
        const hidl_handle& svl_region, const hidl_handle& tsl_region);

void hh_a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type(
        uint32_t svl_id, uint32_t flags, uint32_t brdcst_type, uint32_t start_index, uint32_t count,
        const hidl_handle& svl_region, const hidl_handle& tsl_region, const CountsAnswer& answer);

/** The regions have room for `prev_count` records before the channel and `next_count` from it on.
 */
void hh_a_qortvapi_channellist_get_svl_tsl_recs_by_filter(
        int32_t svl_id, int32_t flags, int32_t channel_id, bool wrap, int32_t filter,
        int32_t prev_count, int32_t next_count, const hidl_handle& svl_region,
        const hidl_handle& tsl_region, const CountsAnswer& answer);

/** Returns the middleware's result, or -2 if a region cannot be opened. */
int32_t hh_a_qortvapi_channellist_get_svl_tsl_recs_by_mask(
        uint32_t svl_id, uint32_t flags, uint32_t channel_id, uint32_t mask, uint32_t mask_value,
        uint32_t attr_mask, uint32_t attr_value, int32_t direction, uint32_t start_index,
        uint32_t count, const hidl_handle& svl_region, const hidl_handle& tsl_region);

int32_t hh_a_qortvapi_channellist_set_svl_tsl_rec_info(uint32_t svl_id, uint32_t flags,
                                                       uint16_t tsl_id, uint32_t svl_handle,
                                                       uint32_t tsl_handle, uint32_t operation,
                                                       const SVL_REC_T* svl_rec,
                                                       const TSL_REC_T* tsl_rec);
int32_t hh_a_qortvapi_channellist_set_svl_tsl_rec_info_without_notify(
        uint32_t svl_id, uint32_t flags, uint16_t tsl_id, uint32_t svl_handle, uint32_t tsl_handle,
        uint32_t operation, const SVL_REC_T* svl_rec, const TSL_REC_T* tsl_rec);

/** Fills `id_region` with at most `count` list ids of 16 bits. Answers with (`count`, 0) if the
 * region is unusable. */
void hh_a_qortvapi_tvprovider_get_all_svlid(const hidl_handle& id_region, uint16_t count,
                                            const std::function<void(uint16_t, int32_t)>& answer);

/** Writes a BISS key under the lock of its list. Answers with the id of the record and the result.
 */
void hh_a_qortvapi_bisskey_set_bsl_rec_info(uint32_t bsl_handle, uint32_t operation,
                                            const BSL_REC_T* bsl_rec,
                                            const std::function<void(uint32_t, int32_t)>& answer);

/** Answers with `count` records from index `start` on, or with fewer where the list of `total`
 * records ends. */
void hh_a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id(uint16_t tsl_id, uint16_t satl_rec_id,
                                                   uint16_t start, uint16_t count, uint16_t total,
                                                   const BytesAnswer& answer);
void hh_a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id(uint16_t nwl_id, uint16_t satl_rec_id,
                                                   uint16_t start, uint16_t count, uint16_t total,
                                                   const BytesAnswer& answer);

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
