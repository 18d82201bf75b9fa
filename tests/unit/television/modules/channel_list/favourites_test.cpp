#include "support/television_test.h"

namespace {

using Names = std::vector<std::string>;

class TelevisionFavourites : public TelevisionTest {
  protected:
    TelevisionFavourites() { startWithDemo(); }

    void add(const std::string& name, uint8_t list = 1) {
        EXPECT_EQ(a_qortvapi_favorite_list_add_tail(SVL_ID_CABLE, list, cable(name)), TV_OK);
    }
    static uint32_t cable(const std::string& name) { return channel(SVL_ID_CABLE, name); }
};

TEST_F(TelevisionFavourites, AddMoveSwapDelete) {
    for (const char* name : {"Movies 1", "Cable One", "Jazz Radio"}) add(name);
    EXPECT_EQ(favourites(SVL_ID_CABLE, 1), (Names{"Movies 1", "Cable One", "Jazz Radio"}));
    EXPECT_EQ(favourites(SVL_ID_CABLE, 0), Names());
    EXPECT_EQ(favourites(SVL_ID_TERRESTRIAL, 1), Names());
    add("Movies 1");  // moves to the end
    EXPECT_EQ(favourites(SVL_ID_CABLE, 1), (Names{"Cable One", "Jazz Radio", "Movies 1"}));
    EXPECT_EQ(a_qortvapi_favorite_list_swap_by_channel_id(SVL_ID_CABLE, 1, cable("Cable One"),
                                                          cable("Movies 1")),
              TV_OK);
    EXPECT_EQ(favourites(SVL_ID_CABLE, 1), (Names{"Movies 1", "Jazz Radio", "Cable One"}));
    EXPECT_EQ(a_qortvapi_channellist_swap_favorites(1, cable("Movies 1"), cable("Jazz Radio"),
                                                    SVL_ID_CABLE),
              TV_OK);
    EXPECT_EQ(favourites(SVL_ID_CABLE, 1), (Names{"Jazz Radio", "Movies 1", "Cable One"}));
    EXPECT_EQ(a_qortvapi_favorite_list_delete(SVL_ID_CABLE, 1, cable("Movies 1")), TV_OK);
    EXPECT_EQ(a_qortvapi_favorite_list_delete(SVL_ID_CABLE, 1, cable("Movies 1")), TV_NOT_FOUND);
    EXPECT_EQ(favourites(SVL_ID_CABLE, 1), (Names{"Jazz Radio", "Cable One"}));
    const SVL_REC_T gone = service(SVL_ID_CABLE, "Movies 1");
    EXPECT_EQ(gone.aui2_fav_index[1], 0);
    EXPECT_EQ(gone.ui4_nw_mask & SB_VNET_FAVORITE2, 0u);
}

TEST_F(TelevisionFavourites, SurviveARestartAndALoad) {
    for (const char* name : {"Movies 1", "Cable One"}) add(name);
    restart();
    EXPECT_EQ(favourites(SVL_ID_CABLE, 1), (Names{"Movies 1", "Cable One"}));
    std::filesystem::remove(streams() + "/dvb-c-1.ts");
    restart();
    EXPECT_EQ(favourites(SVL_ID_CABLE, 1), (Names{"Movies 1"}));
}

TEST_F(TelevisionFavourites, InsertMoveCountsTheOnesThatMatch) {
    for (const char* name : {"Jazz Radio", "Cable One", "Volksmusik"}) add(name);
    const auto insert = [&](const std::string& name, uint32_t mask, uint32_t position) {
        EXPECT_EQ(a_qortvapi_favorite_list_insert_move(SVL_ID_CABLE, 1, mask, mask, cable(name),
                                                       position),
                  TV_OK);
        return favourites(SVL_ID_CABLE, 1);
    };
    EXPECT_EQ(insert("Volksmusik", 0, 0), (Names{"Volksmusik", "Jazz Radio", "Cable One"}));
    EXPECT_EQ(insert("Movies 1", 0, 99),
              (Names{"Volksmusik", "Jazz Radio", "Cable One", "Movies 1"}));
    // Before the second television channel.
    EXPECT_EQ(insert("Volksmusik", SB_VNET_TV_SERVICE, 1),
              (Names{"Jazz Radio", "Cable One", "Volksmusik", "Movies 1"}));
    EXPECT_EQ(a_qortvapi_favorite_list_insert_move(SVL_ID_CABLE, 1, 0, 0, 5, 0), TV_NOT_FOUND);
}

TEST_F(TelevisionFavourites, AllThatMatch) {
    EXPECT_EQ(a_qortvapi_favorite_list_add_all(SVL_ID_CABLE, 3, SB_VNET_RADIO_SERVICE,
                                               SB_VNET_RADIO_SERVICE),
              TV_OK);
    EXPECT_EQ(favourites(SVL_ID_CABLE, 3), (Names{"Jazz Radio", "Volksmusik", "Nyhetsradio"}));
    EXPECT_EQ(a_qortvapi_favorite_list_add_all(SVL_ID_CABLE, 3, 0, 0), TV_OK);
    EXPECT_EQ(a_qortvapi_favorite_list_number_by_mask(SVL_ID_CABLE, 3, 0, 0), 12);
    EXPECT_EQ(a_qortvapi_favorite_list_number_by_mask(SVL_ID_CABLE, 3, SB_VNET_SCRAMBLED,
                                                      SB_VNET_SCRAMBLED),
              2);
    EXPECT_EQ(a_qortvapi_favorite_list_del_all(SVL_ID_CABLE, 3, SB_VNET_RADIO_SERVICE, 0), TV_OK);
    EXPECT_EQ(favourites(SVL_ID_CABLE, 3), (Names{"Jazz Radio", "Volksmusik", "Nyhetsradio"}));
    EXPECT_EQ(a_qortvapi_favorite_list_number_by_mask(9, 3, 0, 0), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_favorite_list_number_by_mask(SVL_ID_CABLE, 4, 0, 0), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_favorite_list_number_by_mask(SVL_ID_CABLE, 2, 0, 0), 0);
}

TEST_F(TelevisionFavourites, SetById) {
    uint32_t place = 77;
    const auto set = [&](const std::string& name, uint32_t position, bool favourite) {
        return a_qortvapi_channellist_set_favorites_by_id(2, SVL_ID_CABLE, cable(name), position, 0,
                                                          favourite, &place);
    };
    EXPECT_EQ(set("Movies 1", 0, true), TV_OK);
    EXPECT_EQ(place, 1u);
    EXPECT_EQ(set("Movies 2", 0, true), TV_OK);
    EXPECT_EQ(place, 2u);
    EXPECT_EQ(set("Cable One", 1, true), TV_OK);
    EXPECT_EQ(place, 1u);
    EXPECT_EQ(favourites(SVL_ID_CABLE, 2), (Names{"Cable One", "Movies 1", "Movies 2"}));
    EXPECT_EQ(set("Movies 1", 0, false), TV_OK);
    EXPECT_EQ(place, 0u);
    EXPECT_EQ(favourites(SVL_ID_CABLE, 2), (Names{"Cable One", "Movies 2"}));
    EXPECT_EQ(a_qortvapi_channellist_set_favorites_by_id(4, SVL_ID_CABLE, cable("Movies 1"), 0, 0,
                                                         true, &place),
              TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionFavourites, IndexesHandlesAndPairs) {
    for (const char* name : {"Jazz Radio", "Cable One"}) add(name);
    uint32_t index = 9;
    EXPECT_EQ(a_qortvapi_favorite_list_get_index_by_channel(SVL_ID_CABLE, 1, 0, 0,
                                                            cable("Cable One"), &index),
              TV_OK);
    EXPECT_EQ(index, 1u);
    EXPECT_EQ(a_qortvapi_favorite_list_get_index_by_channel(SVL_ID_CABLE, 1, SB_VNET_TV_SERVICE,
                                                            SB_VNET_TV_SERVICE, cable("Cable One"),
                                                            &index),
              TV_OK);
    EXPECT_EQ(index, 0u);
    SVL_REC_T record;
    TSL_REC_T multiplex;
    EXPECT_EQ(a_qortvapi_favorite_list_get_svl_tsl_rec_by_index(SVL_ID_CABLE, 1, 0, 0, 1, &record,
                                                                &multiplex),
              TV_OK);
    EXPECT_STREQ(record.s_service_name, "Cable One");
    EXPECT_STREQ(multiplex.s_source, "dvb-c-1.ts");
    EXPECT_EQ(a_qortvapi_favorite_list_get_svl_tsl_rec_by_index(SVL_ID_CABLE, 1, 0, 0, 2, &record,
                                                                &multiplex),
              TV_NOT_FOUND);
    uint32_t one = 0;
    uint32_t other = 0;
    EXPECT_EQ(a_qortvapi_favorite_list_get_svl_handle_by_favorite_list_idx(SVL_ID_CABLE, 1, &one),
              TV_OK);
    EXPECT_EQ(a_qortvapi_favorite_list_get_svl_handle_by_favorite_list_idx(SVL_ID_CABLE, 2, &other),
              TV_OK);
    EXPECT_NE(one, other);
    EXPECT_EQ(a_qortvapi_favorite_list_get_svl_handle_by_favorite_list_idx(SVL_ID_CABLE, 4, &one),
              TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionFavourites, ListOfTheCurrentChannel) {
    const auto select = [&](const std::string& name) {
        ASSERT_EQ(a_qortvapi_channellist_set_current_channel(cable(name)), TV_OK);
    };
    for (const char* name : {"Cable One", "Movies 1", "Movies 2"}) {
        select(name);
        EXPECT_EQ(a_qortvapi_favoritelist_add_favoritelist_channel(), TV_OK);
    }
    select("Jazz Radio");
    EXPECT_EQ(a_qortvapi_favoritelist_add_favoritelist_channel_by_index(1), TV_OK);
    FAV_LIST_T block;
    ASSERT_EQ(a_qortvapi_favoritelist_get_crnt_fav_lst_by_filter(&block), TV_OK);
    EXPECT_EQ(block.ui2_svl_id, SVL_ID_CABLE);
    ASSERT_EQ(block.ui4_count, 4u);
    EXPECT_EQ(block.at_entry[1].ui4_channel_id, cable("Jazz Radio"));
    EXPECT_EQ(block.at_entry[1].ui2_channel_number, 130);
    EXPECT_EQ(a_qortvapi_favoritelist_swap_favoritelist_by_index(0, 3), TV_OK);
    EXPECT_EQ(a_qortvapi_favoritelist_swap_favoritelist_by_index(0, 4), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_favoritelist_remove_favoritelist_channel(1), TV_OK);
    EXPECT_EQ(a_qortvapi_favoritelist_remove_favoritelist_channel_by_index_without_show_fav_icon(2),
              TV_OK);
    EXPECT_EQ(a_qortvapi_favoritelist_remove_favoritelist_channel(2), TV_NOT_FOUND);
    EXPECT_EQ(favourites(SVL_ID_CABLE, 0), (Names{"Movies 2", "Movies 1"}));
    EXPECT_EQ(a_qortvapi_favoritelist_fs_store(), TV_OK);
}

TEST_F(TelevisionFavourites, AListHasAnEnd) {
    tv.reset();
    std::filesystem::remove_all(streams());
    stream_generator::writeStreams(streams(), stream_generator::largePlans(1, FAV_LIST_MAX + 1));
    start();
    const auto all = services(SVL_ID_TERRESTRIAL);
    ASSERT_EQ(all.size(), size_t{FAV_LIST_MAX + 1});
    EXPECT_EQ(a_qortvapi_favorite_list_add_all(SVL_ID_TERRESTRIAL, 0, 0, 0), TV_FULL);
    EXPECT_EQ(a_qortvapi_favorite_list_number_by_mask(SVL_ID_TERRESTRIAL, 0, 0, 0), 0);
    for (size_t i = 0; i < FAV_LIST_MAX; ++i) {
        ASSERT_EQ(a_qortvapi_favorite_list_add_tail(SVL_ID_TERRESTRIAL, 0, all[i].ui4_channel_id),
                  TV_OK);
    }
    EXPECT_EQ(a_qortvapi_favorite_list_add_tail(SVL_ID_TERRESTRIAL, 0, all.back().ui4_channel_id),
              TV_FULL);
    EXPECT_EQ(a_qortvapi_favorite_list_add_tail(SVL_ID_TERRESTRIAL, 0, all.front().ui4_channel_id),
              TV_OK);
    FAV_LIST_T block;
    ASSERT_EQ(a_qortvapi_favoritelist_get_crnt_fav_lst_by_filter(&block), TV_OK);
    EXPECT_EQ(block.ui4_count, uint32_t{FAV_LIST_MAX});
    EXPECT_EQ(block.at_entry[FAV_LIST_MAX - 1].ui4_channel_id, all.front().ui4_channel_id);
}

}  // namespace
