#define LOG_TAG "hh_channellist"

#include <memory>
#include <mutex>
#include <new>

#include "QorTvApiShareMemory.h"
#include "bridge.h"
#include "hhandler/hh_qortvapi_channellist.h"
#include "log.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

using ::qortvapi::QorTvApiShareMemory;

// Serialises the three list reads. Taken before the middleware's database lock, released after the
// regions are committed.
std::mutex sListReadMutex;

// Returns the size of `count` records in bytes, or 0 if it does not fit in 32 bits. A region of 0
// bytes cannot be mapped, so the middleware never writes more records than its region holds.
uint32_t regionSize(uint64_t count, size_t record_size) {
    const uint64_t size = count * record_size;
    return size <= UINT32_MAX ? static_cast<uint32_t>(size) : 0;
}

/** The two regions of a bulk read, for `count` records each. */
class RecordRegions {
  public:
    RecordRegions(uint64_t count, const hidl_handle& svl_region, const hidl_handle& tsl_region)
        : mSvl(svl_region, regionSize(count, sizeof(SVL_REC_T))),
          mTsl(tsl_region, regionSize(count, sizeof(TSL_REC_T))) {}

    bool isOpen() const { return mSvl.getStatus() >= 0 && mTsl.getStatus() >= 0; }

    void map() {
        mSvlRecords = static_cast<SVL_REC_T*>(mSvl.getPointer());
        mTslRecords = static_cast<TSL_REC_T*>(mTsl.getPointer());
    }

    /** Returns the address of record `index`, null if the region could not be mapped. */
    SVL_REC_T* svl(size_t index = 0) const {
        return mSvlRecords == nullptr ? nullptr : mSvlRecords + index;
    }
    TSL_REC_T* tsl(size_t index = 0) const {
        return mTslRecords == nullptr ? nullptr : mTslRecords + index;
    }

    void commit() {
        mSvl.commit();
        mTsl.commit();
    }

  private:
    QorTvApiShareMemory mSvl;
    QorTvApiShareMemory mTsl;
    SVL_REC_T* mSvlRecords = nullptr;
    TSL_REC_T* mTslRecords = nullptr;
};

/** Calls `request` under the middleware's database lock and returns its result. */
template <typename Request>
int32_t underDatabaseLock(uint32_t svl_id, uint32_t flags, const Request& request) {
    a_qortvapi_channellist_lock_database(svl_id, flags);
    const int32_t result = request();
    a_qortvapi_channellist_unlock_database(svl_id, flags);
    return result;
}

uint16_t recordsToReturn(uint16_t start, uint16_t count, uint16_t total) {
    if (total <= start) return 0;
    return start + count < total ? count : static_cast<uint16_t>(total - start);
}

/**
 * Returns a zeroed buffer for an array read, null if memory is short. It is `records` times the
 * size of a transport-stream record, the larger one of the two types that are read this way.
 */
std::unique_ptr<uint8_t[]> recordBuffer(uint16_t records) {
    return std::unique_ptr<uint8_t[]>(new (std::nothrow) uint8_t[records * sizeof(TSL_REC_T)]());
}

}  // namespace

void hh_a_qortvapi_channellist_get_svl_tsl_rec_by_handle_ex(uint32_t svl_handle,
                                                            uint32_t tsl_handle, uint16_t count,
                                                            const hidl_handle& svl_region,
                                                            const hidl_handle& tsl_region,
                                                            const CountsAnswer& answer) {
    RecordRegions regions(count, svl_region, tsl_region);
    if (!regions.isOpen()) return answer(0, 0, 0);
    regions.map();
    uint32_t svl_version = 0;
    uint32_t tsl_version = 0;
    const int32_t result = underDatabaseLock(svl_handle, tsl_handle, [&] {
        int32_t last = 0;
        for (uint32_t i = 0; i < count; ++i) {
            last = a_qortvapi_channellist_get_svl_tsl_rec_by_handle(
                    svl_handle, tsl_handle, static_cast<uint16_t>(i), &svl_version, &tsl_version,
                    regions.svl(i), regions.tsl(i));
        }
        return last;
    });
    answer(svl_version, tsl_version, result);
    regions.commit();
}

int32_t hh_a_qortvapi_channellist_get_svl_tsl_rec_by_index_ex(
        uint16_t svl_id, uint32_t lock_svl_id, uint32_t lock_flags, uint8_t fav_list, uint32_t mask,
        uint32_t mask_value, uint32_t start, uint16_t count, uint16_t wrap,
        const hidl_handle& svl_region, const hidl_handle& tsl_region) {
    RecordRegions regions(count, svl_region, tsl_region);
    if (!regions.isOpen()) return 0;
    regions.map();
    const int32_t result = underDatabaseLock(lock_svl_id, lock_flags, [&] {
        int32_t last = 0;
        uint32_t index = start;
        for (uint32_t i = 0; i < count; ++i, ++index) {
            if (static_cast<uint16_t>(index) == wrap) index = 0;
            last = a_qortvapi_favorite_list_get_svl_tsl_rec_by_index(
                    svl_id, fav_list, mask, mask_value, index, regions.svl(i), regions.tsl(i));
        }
        return last;
    });
    regions.commit();
    return result;
}

void hh_a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type(
        uint32_t svl_id, uint32_t flags, uint32_t brdcst_type, uint32_t start_index, uint32_t count,
        const hidl_handle& svl_region, const hidl_handle& tsl_region, const CountsAnswer& answer) {
    RecordRegions regions(count, svl_region, tsl_region);
    if (!regions.isOpen()) return answer(0, 0, 0);
    regions.map();
    std::lock_guard<std::mutex> lock(sListReadMutex);
    uint32_t filled = 0;
    uint32_t total = 0;
    const int32_t result = underDatabaseLock(svl_id, flags, [&] {
        return a_qortvapi_channellist_get_svl_tsl_recs_by_brdcast_type(
                svl_id, flags, brdcst_type, start_index, count, regions.svl(), regions.tsl(),
                &filled, &total);
    });
    answer(filled, total, result);
    regions.commit();
}

void hh_a_qortvapi_channellist_get_svl_tsl_recs_by_filter(
        int32_t svl_id, int32_t flags, int32_t channel_id, bool wrap, int32_t filter,
        int32_t prev_count, int32_t next_count, const hidl_handle& svl_region,
        const hidl_handle& tsl_region, const CountsAnswer& answer) {
    // A negative count, converted to unsigned, is too large for any region.
    const uint64_t count =
            uint64_t{static_cast<uint32_t>(prev_count)} + static_cast<uint32_t>(next_count);
    RecordRegions regions(count, svl_region, tsl_region);
    if (!regions.isOpen()) return answer(0, 0, 0);
    regions.map();
    std::lock_guard<std::mutex> lock(sListReadMutex);
    uint32_t prev_filled = 0;
    uint32_t next_filled = 0;
    const int32_t result = underDatabaseLock(svl_id, flags, [&] {
        return a_qortvapi_channellist_get_svl_tsl_recs_by_filter(
                svl_id, flags, channel_id, wrap, filter, prev_count, next_count, regions.svl(),
                regions.tsl(), &prev_filled, &next_filled);
    });
    answer(prev_filled, next_filled, result);
    regions.commit();
}

int32_t hh_a_qortvapi_channellist_get_svl_tsl_recs_by_mask(
        uint32_t svl_id, uint32_t flags, uint32_t channel_id, uint32_t mask, uint32_t mask_value,
        uint32_t attr_mask, uint32_t attr_value, int32_t direction, uint32_t start_index,
        uint32_t count, const hidl_handle& svl_region, const hidl_handle& tsl_region) {
    RecordRegions regions(count, svl_region, tsl_region);
    if (!regions.isOpen()) return -2;
    regions.map();
    std::lock_guard<std::mutex> lock(sListReadMutex);
    const int32_t result = underDatabaseLock(svl_id, flags, [&] {
        return a_qortvapi_channellist_get_svl_tsl_recs_by_mask(
                svl_id, flags, channel_id, mask, mask_value, attr_mask, attr_value, direction,
                start_index, count, regions.svl(), regions.tsl());
    });
    regions.commit();
    return result;
}

int32_t hh_a_qortvapi_channellist_set_svl_tsl_rec_info(uint32_t svl_id, uint32_t flags,
                                                       uint16_t tsl_id, uint32_t svl_handle,
                                                       uint32_t tsl_handle, uint32_t operation,
                                                       const SVL_REC_T* svl_rec,
                                                       const TSL_REC_T* tsl_rec) {
    return underDatabaseLock(svl_id, flags, [&] {
        return a_qortvapi_channellist_set_svl_tsl_rec_info(svl_id, flags, tsl_id, svl_handle,
                                                           tsl_handle, operation, svl_rec, tsl_rec);
    });
}

int32_t hh_a_qortvapi_channellist_set_svl_tsl_rec_info_without_notify(
        uint32_t svl_id, uint32_t flags, uint16_t tsl_id, uint32_t svl_handle, uint32_t tsl_handle,
        uint32_t operation, const SVL_REC_T* svl_rec, const TSL_REC_T* tsl_rec) {
    return underDatabaseLock(svl_id, flags, [&] {
        return a_qortvapi_channellist_set_svl_tsl_rec_info_without_notify(
                svl_id, flags, tsl_id, svl_handle, tsl_handle, operation, svl_rec, tsl_rec);
    });
}

void hh_a_qortvapi_tvprovider_get_all_svlid(const hidl_handle& id_region, uint16_t count,
                                            const std::function<void(uint16_t, int32_t)>& answer) {
    QorTvApiShareMemory ids(id_region, regionSize(count, sizeof(uint16_t)));
    void* base = ids.getStatus() < 0 ? nullptr : ids.getPointer();
    if (base == nullptr) return answer(count, 0);
    uint16_t filled = 0;
    const int32_t result =
            a_qortvapi_tvprovider_get_all_svlid(static_cast<uint16_t*>(base), count, &filled);
    if (result < 0) TVAPI_DEBUG("a_qortvapi_tvprovider_get_all_svlid fail in hh_qortvapi\n");
    answer(filled, result);
    ids.commit();
}

void hh_a_qortvapi_bisskey_set_bsl_rec_info(uint32_t bsl_handle, uint32_t operation,
                                            const BSL_REC_T* bsl_rec,
                                            const std::function<void(uint32_t, int32_t)>& answer) {
    uint32_t bsl_rec_id = 0;
    a_qortvapi_bisskey_lock_database(bsl_handle);
    const int32_t result =
            a_qortvapi_bisskey_set_bsl_rec_info(bsl_handle, operation, bsl_rec, &bsl_rec_id);
    a_qortvapi_bisskey_unlock_database(bsl_handle);
    answer(bsl_rec_id, result);
}

void hh_a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id(uint16_t tsl_id, uint16_t satl_rec_id,
                                                   uint16_t start, uint16_t count, uint16_t total,
                                                   const BytesAnswer& answer) {
    const uint16_t records = recordsToReturn(start, count, total);
    const std::unique_ptr<uint8_t[]> buffer = recordBuffer(records);
    if (buffer == nullptr) TVAPI_DEBUG("pt_tsl_rec malloc fail \n");
    const int32_t result = a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id(
            tsl_id, satl_rec_id, start, count, total, reinterpret_cast<TSL_REC_T*>(buffer.get()));
    answer(borrowedBytes(buffer.get(), buffer == nullptr ? 0 : records * sizeof(TSL_REC_T)),
           result);
}

void hh_a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id(uint16_t nwl_id, uint16_t satl_rec_id,
                                                   uint16_t start, uint16_t count, uint16_t total,
                                                   const BytesAnswer& answer) {
    const uint16_t records = recordsToReturn(start, count, total);
    const std::unique_ptr<uint8_t[]> buffer = recordBuffer(records);
    if (buffer == nullptr) TVAPI_DEBUG("pt_nwl_rec malloc fail \n");
    const int32_t result = a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id(
            nwl_id, satl_rec_id, start, count, total, reinterpret_cast<NWL_REC_T*>(buffer.get()));
    answer(borrowedBytes(buffer.get(), buffer == nullptr ? 0 : records * sizeof(NWL_REC_T)),
           result);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
