// Favourite lists.
#define LOG_TAG "QorTvApiChannelListImpl(service)"

#include "QorTvApiChannelListImpl.h"

#include "bridge.h"
#include "log.h"
#include "middleware/channellist.h"

namespace vendor::corvanta::tv::qortvapi::V1_0::implementation {

// Favourites of any list, by channel.

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_swap_favorites(
        uint8_t fav_list, uint32_t channel_id, uint32_t other_channel_id, uint16_t svl_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_channellist_swap_favorites(fav_list, channel_id, other_channel_id, svl_id);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_channellist_set_favorites_by_id(
        uint8_t fav_list, uint32_t svl_id, uint32_t channel_id, uint32_t position, uint8_t window,
        bool favourite, a_hidl_a_qortvapi_channellist_set_favorites_by_id_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_channellist_set_favorites_by_id, fav_list, svl_id,
                  channel_id, position, window, favourite);
}

// Favourite list 0 of the current channel's service list.

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favoritelist_get_crnt_fav_lst_by_filter(
        a_hidl_a_qortvapi_favoritelist_get_crnt_fav_lst_by_filter_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_favoritelist_get_crnt_fav_lst_by_filter);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favoritelist_add_favoritelist_channel() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favoritelist_add_favoritelist_channel();
}

Return<int32_t>
QorTvApiChannelListImpl::a_hidl_a_qortvapi_favoritelist_add_favoritelist_channel_by_index(
        uint16_t index) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favoritelist_add_favoritelist_channel_by_index(index);
}

Return<int32_t> QorTvApiChannelListImpl::
        a_hidl_a_qortvapi_favoritelist_remove_favoritelist_channel_by_index_without_show_fav_icon(
                uint16_t index) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favoritelist_remove_favoritelist_channel_by_index_without_show_fav_icon(
            index);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favoritelist_remove_favoritelist_channel(
        uint16_t index) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favoritelist_remove_favoritelist_channel(index);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favoritelist_fs_store() {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favoritelist_fs_store();
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favoritelist_swap_favoritelist_by_index(
        uint16_t index, uint16_t other_index) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favoritelist_swap_favoritelist_by_index(index, other_index);
}

// Favourite lists by number.

Return<void>
QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_get_svl_handle_by_favorite_list_idx(
        uint16_t svl_id, uint8_t fav_list,
        a_hidl_a_qortvapi_favorite_list_get_svl_handle_by_favorite_list_idx_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_favorite_list_get_svl_handle_by_favorite_list_idx, svl_id,
                  fav_list);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_add_tail(
        uint16_t svl_id, uint8_t fav_list, uint32_t channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favorite_list_add_tail(svl_id, fav_list, channel_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_add_all(
        uint16_t svl_id, uint8_t fav_list, uint32_t mask, uint32_t mask_value) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favorite_list_add_all(svl_id, fav_list, mask, mask_value);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_delete(
        uint16_t svl_id, uint8_t fav_list, uint32_t channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favorite_list_delete(svl_id, fav_list, channel_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_del_all(
        uint16_t svl_id, uint8_t fav_list, uint32_t mask, uint32_t mask_value) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favorite_list_del_all(svl_id, fav_list, mask, mask_value);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_swap_by_channel_id(
        uint16_t svl_id, uint8_t fav_list, uint32_t channel_id, uint32_t other_channel_id) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favorite_list_swap_by_channel_id(svl_id, fav_list, channel_id,
                                                       other_channel_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_number_by_mask(
        uint16_t svl_id, uint8_t fav_list, uint32_t mask, uint32_t mask_value) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favorite_list_number_by_mask(svl_id, fav_list, mask, mask_value);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_get_svl_rec_by_index(
        uint16_t svl_id, uint8_t fav_list, uint32_t mask, uint32_t mask_value, uint32_t index,
        a_hidl_a_qortvapi_favorite_list_get_svl_rec_by_index_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_favorite_list_get_svl_rec_by_index, svl_id, fav_list, mask,
                  mask_value, index);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_get_svl_tsl_rec_by_index(
        uint16_t svl_id, uint8_t fav_list, uint32_t mask, uint32_t mask_value, uint32_t index,
        a_hidl_a_qortvapi_favorite_list_get_svl_tsl_rec_by_index_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_favorite_list_get_svl_tsl_rec_by_index, svl_id, fav_list,
                  mask, mask_value, index);
}

Return<void> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_get_index_by_channel(
        uint16_t svl_id, uint8_t fav_list, uint32_t mask, uint32_t mask_value, uint32_t channel_id,
        a_hidl_a_qortvapi_favorite_list_get_index_by_channel_cb _hidl_cb) {
    TVAPI_DEBUG("%s", __func__);
    return answer(_hidl_cb, a_qortvapi_favorite_list_get_index_by_channel, svl_id, fav_list, mask,
                  mask_value, channel_id);
}

Return<int32_t> QorTvApiChannelListImpl::a_hidl_a_qortvapi_favorite_list_insert_move(
        uint16_t svl_id, uint8_t fav_list, uint32_t mask, uint32_t mask_value, uint32_t channel_id,
        uint32_t position) {
    TVAPI_DEBUG("%s", __func__);
    return a_qortvapi_favorite_list_insert_move(svl_id, fav_list, mask, mask_value, channel_id,
                                                position);
}

}  // namespace vendor::corvanta::tv::qortvapi::V1_0::implementation
