#define LOG_TAG "QorTvApiRatingImpl(service)"

#include "QorTvApiRatingImpl.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "bridge.h"
#include "hhandler/hh_qortvapi_event.h"
#include "log.h"
#include "middleware/rating.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {
namespace {

// Flags. The bytes that a client sends may be other than 0 and 1, so they are copied as bytes.

US_TV_RATING_BLOCK_T toMiddleware(const HIDL_US_TV_Rating_BLOCK_T& block) {
    static_assert(sizeof(HIDL_US_TV_Rating_BLOCK_T) == sizeof(US_TV_RATING_BLOCK_T));
    US_TV_RATING_BLOCK_T result{};
    memcpy(result.ab_rating, block.rating.data(), sizeof(result.ab_rating));
    memcpy(result.ab_all, block.all.data(), sizeof(result.ab_all));
    return result;
}

HIDL_US_TV_Rating_BLOCK_T toInterface(const US_TV_RATING_BLOCK_T& block) {
    HIDL_US_TV_Rating_BLOCK_T result{};
    for (size_t i = 0; i < sizeof(block.ab_rating); ++i) result.rating[i] = block.ab_rating[i] != 0;
    for (size_t i = 0; i < sizeof(block.ab_all); ++i) result.all[i] = block.ab_all[i] != 0;
    return result;
}

// Rating tables that are broadcast.

constexpr size_t kOpenVchipInfoSize = 64;

OPEN_VCHIP_KEY_PARAM_T toMiddleware(const HIDL_Open_Vchip_Key_Param_T& key) {
    OPEN_VCHIP_KEY_PARAM_T result{};
    result.ui4_region = key.region;
    result.ui2_dimension = key.dimension;
    result.ui1_level = key.level;
    return result;
}

OPEN_VCHIP_BLOCK_DATA_T toMiddleware(const HIDL_Open_Vchip_Block_Data_T& block) {
    static_assert(sizeof(HIDL_Open_Vchip_Block_Data_T) == sizeof(OPEN_VCHIP_BLOCK_DATA_T));
    OPEN_VCHIP_BLOCK_DATA_T result{};
    result.ui1_region = block.region;
    result.ui1_dimension = block.dimension;
    result.ui1_level_count = block.level_count;
    memcpy(result.aui1_blocked, block.blocked.data(), sizeof(result.aui1_blocked));
    return result;
}

HIDL_Open_Vchip_Block_Data_T toInterface(const OPEN_VCHIP_BLOCK_DATA_T& block) {
    HIDL_Open_Vchip_Block_Data_T result{};
    result.region = block.ui1_region;
    result.dimension = block.ui1_dimension;
    result.level_count = block.ui1_level_count;
    memcpy(result.blocked.data(), block.aui1_blocked, sizeof(block.aui1_blocked));
    return result;
}

// Ratings of programmes.

/**
 * How much memory the list of one request may take, in bytes. A list grows until its memory is used
 * up: without a limit one request would take all the memory of the television. This limit allows
 * thousands of nodes, and keeps twenty requests at a time below 100 MiB.
 */
constexpr size_t kRatingListBudget = 4 << 20;
/** Bytes that an allocated block takes besides its own: the allocator's data, and rounding. */
constexpr size_t kBlockOverhead = 16;

/** A list for the middleware. A new node goes to the front. */
class RatingList {
  public:
    RatingList() = default;
    /** Frees each node with its name and entries, in the order of the list. */
    ~RatingList() {
        while (mHead != nullptr) {
            const RatingListNode* node = mHead;
            mHead = node->pt_next;
            discard(node);
        }
    }
    RatingList(const RatingList&) = delete;
    RatingList& operator=(const RatingList&) = delete;

    /** Adds a node for `rating`. Returns false, and adds nothing, if there is no memory for it. */
    bool add(const HIDL_EVCTX_ATSC_RATING_LIST_T& rating) {
        auto* node = take<RatingListNode>(1);
        if (node == nullptr) return false;
        node->ui2_region = rating.region;
        node->ui2_count = rating.count;
        if (!rating.name.empty()) {
            auto* name = take<char>(rating.name.size() + 1);
            if (name == nullptr) return discard(node);
            memcpy(name, rating.name.c_str(), rating.name.size());
            node->s_name = name;
        }
        auto* entries = take<RatingListEntry>(rating.count);
        if (entries == nullptr) return discard(node);
        if (rating.entries.size() != 0) {
            std::fill_n(entries, rating.count,
                        RatingListEntry{rating.entries[0].dimension, rating.entries[0].value});
        }
        node->at_entry = entries;
        node->pt_next = mHead;
        mHead = node;
        return true;
    }

    const RatingListNode* head() const { return mHead; }

  private:
    /** Returns zeroed memory for `count` elements, which counts against the budget; null if there
     * is none. */
    template <typename T>
    T* take(size_t count) {
        const size_t size = count * sizeof(T) + kBlockOverhead;
        if (size > mBudget) return nullptr;
        mBudget -= size;
        return static_cast<T*>(zeroedMemory(static_cast<int64_t>(count), sizeof(T)));
    }
    /** Frees a node with its name and entries, as far as it has them. Returns false. */
    static bool discard(const RatingListNode* node) {
        free(const_cast<char*>(node->s_name));
        free(const_cast<RatingListEntry*>(node->at_entry));
        free(const_cast<RatingListNode*>(node));
        return false;
    }

    size_t mBudget = kRatingListBudget;
    const RatingListNode* mHead = nullptr;
};

}  // namespace

QorTvApiRatingImpl::QorTvApiRatingImpl() {
    TVAPI_DEBUG("QorTvApiRatingImpl");
}

// United States and Canada.

Return<void> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_get_us_tv_setting_info(
        a_hidl_a_qortvapi_rating_get_us_tv_setting_info_cb _hidl_cb) {
    US_TV_RATING_BLOCK_T block{};
    const int32_t result = a_qortvapi_rating_get_us_tv_setting_info(&block);
    _hidl_cb(toInterface(block), result);
    return Void();
}

Return<int32_t> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_set_us_tv_setting_info(
        const HIDL_US_TV_Rating_BLOCK_T& block) {
    const US_TV_RATING_BLOCK_T record = toMiddleware(block);
    return a_qortvapi_rating_set_us_tv_setting_info(&record);
}

Return<void> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_get_us_movie_setting_info(
        a_hidl_a_qortvapi_rating_get_us_movie_setting_info_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_rating_get_us_movie_setting_info);
}

Return<int32_t> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_set_us_movie_setting_info(
        uint8_t rating) {
    return a_qortvapi_rating_set_us_movie_setting_info(rating);
}

Return<void> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_get_can_eng_setting_info(
        a_hidl_a_qortvapi_rating_get_can_eng_setting_info_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_rating_get_can_eng_setting_info);
}

Return<int32_t> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_set_can_eng_setting_info(
        uint8_t rating) {
    return a_qortvapi_rating_set_can_eng_setting_info(rating);
}

Return<void> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_get_can_fre_setting_info(
        a_hidl_a_qortvapi_rating_get_can_fre_setting_info_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_rating_get_can_fre_setting_info);
}

Return<int32_t> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_set_can_fre_setting_info(
        uint8_t rating) {
    return a_qortvapi_rating_set_can_fre_setting_info(rating);
}

Return<void> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_get_block_unrated(
        a_hidl_a_qortvapi_rating_get_block_unrated_cb _hidl_cb) {
    return answerFlag(_hidl_cb, a_qortvapi_rating_get_block_unrated);
}

Return<int32_t> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_set_block_unrated(bool blocked) {
    return a_qortvapi_rating_set_block_unrated(blocked);
}

Return<void> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_get_enable(
        a_hidl_a_qortvapi_rating_get_enable_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_rating_get_enable);
}

Return<void> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_get_us_tv_group_by_child(
        a_hidl_a_qortvapi_rating_get_us_tv_group_by_child_cb _hidl_cb) {
    return answerFlag(_hidl_cb, a_qortvapi_rating_get_us_tv_group_by_child);
}

Return<int32_t> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_set_enable(uint8_t enabled) {
    return a_qortvapi_rating_set_enable(enabled);
}

// Rating tables that are broadcast.

Return<void> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_get_op_vchip_avail(
        a_hidl_a_qortvapi_rating_get_op_vchip_avail_cb _hidl_cb) {
    return answerFlag(_hidl_cb, a_qortvapi_rating_get_op_vchip_avail);
}

Return<void> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_get_op_vchip_info(
        const HIDL_Open_Vchip_Key_Param_T& key,
        a_hidl_a_qortvapi_rating_get_op_vchip_info_cb _hidl_cb) {
    const OPEN_VCHIP_KEY_PARAM_T record = toMiddleware(key);
    uint8_t info[kOpenVchipInfoSize] = {};
    const int32_t result = a_qortvapi_rating_get_op_vchip_info(&record, info);
    _hidl_cb(borrowedBytes(info, sizeof(info)), result);
    return Void();
}

Return<void> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_get_op_vchip_setting_info(
        const HIDL_Open_Vchip_Block_Data_T& block,
        a_hidl_a_qortvapi_rating_get_op_vchip_setting_info_cb _hidl_cb) {
    OPEN_VCHIP_BLOCK_DATA_T record{};
    record.ui1_region = block.region;
    record.ui1_dimension = block.dimension;
    record.ui1_level_count = block.level_count;
    TVAPI_LOG("GET OPEN VCHIP setting IN! [%u, %u]", record.ui1_region, record.ui1_dimension);
    const int32_t result = a_qortvapi_rating_get_op_vchip_setting_info(&record);
    TVAPI_LOG("GET OPEN VCHIP setting RET = %d! [%u, %u]", result, record.ui1_region,
              record.ui1_dimension);
    _hidl_cb(toInterface(record), result);
    return Void();
}

Return<int32_t> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_set_op_vchip_setting_info(
        const HIDL_Open_Vchip_Block_Data_T& block) {
    const OPEN_VCHIP_BLOCK_DATA_T record = toMiddleware(block);
    return a_qortvapi_rating_set_op_vchip_setting_info(&record);
}

// ISDB and DVB.

Return<void> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_get_isdb_content_setting_info(
        a_hidl_a_qortvapi_rating_get_isdb_content_setting_info_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_rating_get_isdb_content_setting_info);
}

Return<int32_t> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_set_isdb_content_setting_info(
        uint8_t setting) {
    return a_qortvapi_rating_set_isdb_content_setting_info(setting);
}

Return<void> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_get_isdb_age_setting_info(
        a_hidl_a_qortvapi_rating_get_isdb_age_setting_info_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_rating_get_isdb_age_setting_info);
}

Return<int32_t> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_set_isdb_age_setting_info(
        uint8_t age) {
    return a_qortvapi_rating_set_isdb_age_setting_info(age);
}

Return<void> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_get_dvb_age_setting_info(
        a_hidl_a_qortvapi_rating_get_dvb_age_setting_info_cb _hidl_cb) {
    return answer(_hidl_cb, a_qortvapi_rating_get_dvb_age_setting_info);
}

Return<int32_t> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_set_dvb_age_setting_info(uint8_t age) {
    return a_qortvapi_rating_set_dvb_age_setting_info(age);
}

// Ratings of programmes.

Return<void> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_convert_rating_info(
        const hidl_vec<HIDL_EVCTX_ATSC_RATING_LIST_T>& ratings,
        a_hidl_a_qortvapi_rating_convert_rating_info_cb _hidl_cb) {
    if (ratings.size() == 0) {
        TVAPI_LOG("Alloc memore fail!!!!\n");
        return Void();
    }
    // Every node is made from the first rating, until the memory is used up: clients rely on a
    // service that never goes on to the second rating.
    RatingList list;
    while (list.add(ratings[0])) {
        if (ratings[0].entries.size() != 0) TVAPI_DEBUG("Warning:list exceed!!!!\n");
    }
    TVAPI_LOG("Alloc memore fail!!!!\n");
    RATING_MAP_T rating_map{};
    const int32_t result = a_qortvapi_rating_convert_rating_info(list.head(), &rating_map);
    _hidl_cb(toInterface(rating_map), result);
    return Void();
}

Return<int32_t> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_atsc_storage(bool stored) {
    return a_qortvapi_rating_atsc_storage(stored);
}

Return<void> QorTvApiRatingImpl::a_hidl_a_qortvapi_rating_get_crnt_rating_info(
        a_hidl_a_qortvapi_rating_get_crnt_rating_info_cb _hidl_cb) {
    RATING_MAP_T rating_map{};
    const int32_t result = a_qortvapi_rating_get_crnt_rating_info(&rating_map);
    _hidl_cb(toInterface(rating_map), result);
    return Void();
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
