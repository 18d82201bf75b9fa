#include "support/television_test.h"

namespace {

class TelevisionQueries : public TelevisionTest {
  protected:
    TelevisionQueries() { startWithDemo(); }
};

TEST_F(TelevisionQueries, CountsByFilterAndMask) {
    EXPECT_EQ(a_qortvapi_channellist_get_number_by_filter(SVL_ID_TERRESTRIAL, 0), 15);
    EXPECT_EQ(
            a_qortvapi_channellist_get_number_by_filter(SVL_ID_TERRESTRIAL, SB_VNET_RADIO_SERVICE),
            2);
    EXPECT_EQ(a_qortvapi_channellist_get_number_by_filter(SVL_ID_TERRESTRIAL,
                                                          SB_VNET_TV_SERVICE | SB_VNET_SCRAMBLED),
              1);
    EXPECT_EQ(a_qortvapi_channellist_get_number_by_mask(SVL_ID_TERRESTRIAL, 0, SB_VNET_VISIBLE, 0,
                                                        0, 0),
              1);
    EXPECT_EQ(
            a_qortvapi_channellist_get_num_by_mask_and_brdcst(SVL_ID_CABLE, 0, 0, BRDCST_TYPE_DVB),
            12);
    EXPECT_EQ(
            a_qortvapi_channellist_get_num_by_mask_and_brdcst(SVL_ID_CABLE, 0, 0, BRDCST_TYPE_ISDB),
            0);
}

TEST_F(TelevisionQueries, IndexesGoBothWays) {
    SVL_REC_T record;
    ASSERT_EQ(a_qortvapi_channellist_get_svl_rec_by_index(SVL_ID_CABLE, SB_VNET_RADIO_SERVICE,
                                                          SB_VNET_RADIO_SERVICE, 1, &record),
              TV_OK);
    EXPECT_STREQ(record.s_service_name, "Volksmusik");
    uint32_t index = 0;
    EXPECT_EQ(a_qortvapi_channellist_get_index_by_channel(SVL_ID_CABLE, SB_VNET_RADIO_SERVICE,
                                                          SB_VNET_RADIO_SERVICE,
                                                          record.ui4_channel_id, &index),
              TV_OK);
    EXPECT_EQ(index, 1u);
    EXPECT_EQ(a_qortvapi_channellist_get_index_by_channel(SVL_ID_CABLE, SB_VNET_RADIO_SERVICE, 0,
                                                          record.ui4_channel_id, &index),
              TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_channellist_get_svl_rec_by_index(SVL_ID_CABLE, 0, 0, 12, &record),
              TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_channellist_get_svl_rec_by_index(SVL_ID_CABLE, 0, 0, 0xFFFFFFFF, &record),
              TV_NOT_FOUND);
    ASSERT_EQ(a_qortvapi_channellist_get_svl_rec_by_mask_and_brdcst(SVL_ID_CABLE, 0, 0, 0,
                                                                    BRDCST_TYPE_DVB, &record),
              TV_OK);
    EXPECT_STREQ(record.s_service_name, "Cable One");
}

TEST_F(TelevisionQueries, NamesMatchInAnyCaseAndScript) {
    const auto count = [](uint32_t list, const char* name) {
        return a_qortvapi_channellist_get_number_by_name(list, 0, 0, name);
    };
    EXPECT_EQ(count(SVL_ID_TERRESTRIAL, "premiÈRE"), 1);
    EXPECT_EQ(count(SVL_ID_TERRESTRIAL, "НОВОСТИ"), 1);
    EXPECT_EQ(count(SVL_ID_TERRESTRIAL, "łÓD"), 1);
    EXPECT_EQ(count(SVL_ID_TERRESTRIAL, "radio"), 1);  // Rádio has an accent
    EXPECT_EQ(count(SVL_ID_TERRESTRIAL, ""), 15);
    EXPECT_EQ(count(SVL_ID_TERRESTRIAL, "\xFF\xFE"), 0);
    EXPECT_EQ(count(SVL_ID_TERRESTRIAL, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(count(SVL_ID_SATELLITE, "电视"), 1);
    EXPECT_EQ(count(8, "x"), TV_NOT_FOUND);
    SVL_REC_T record;
    ASSERT_EQ(a_qortvapi_channellist_get_svl_rec_by_index_and_name(SVL_ID_CABLE, 0, 0, "MOVIES", 1,
                                                                   &record),
              TV_OK);
    EXPECT_STREQ(record.s_service_name, "Movies 2");
    EXPECT_EQ(a_qortvapi_channellist_get_svl_rec_by_index_and_name(SVL_ID_CABLE, 0, 0, "MOVIES", 2,
                                                                   &record),
              TV_NOT_FOUND);
}

TEST_F(TelevisionQueries, QueriesByBlock) {
    CHANNEL_QUERY_T query = {};
    EXPECT_EQ(
            a_qortvapi_channellist_get_channel_number_by_query_info(SVL_ID_SATELLITE, 0, 0, &query),
            13);
    query.ui1_service_type = 0x19;
    EXPECT_EQ(
            a_qortvapi_channellist_get_channel_number_by_query_info(SVL_ID_SATELLITE, 0, 0, &query),
            4);
    query.ui4_nw_mask = SB_VNET_SCRAMBLED;
    EXPECT_EQ(
            a_qortvapi_channellist_get_channel_number_by_query_info(SVL_ID_SATELLITE, 0, 0, &query),
            2);
    query.ui2_original_network_id = 1;
    EXPECT_EQ(
            a_qortvapi_channellist_get_channel_number_by_query_info(SVL_ID_SATELLITE, 0, 0, &query),
            0);
    query.ui2_original_network_id = 0x47;
    SVL_REC_T record;
    TSL_REC_T multiplex;
    ASSERT_EQ(a_qortvapi_channellist_get_channellist_by_query_info(SVL_ID_SATELLITE, 0, 0, &query,
                                                                   1, 0, &record, &multiplex),
              TV_OK);
    EXPECT_STREQ(record.s_service_name, "World News HD");
    EXPECT_EQ(a_qortvapi_channellist_get_channel_number_by_query_info(SVL_ID_SATELLITE, 0, 0,
                                                                      nullptr),
              TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionQueries, ChannelNumbersExist) {
    EXPECT_EQ(a_qortvapi_channellist_is_exist_by_channel_number(SVL_ID_TERRESTRIAL, 99), 1);
    EXPECT_EQ(a_qortvapi_channellist_is_exist_by_channel_number(SVL_ID_TERRESTRIAL, 98), 0);
    EXPECT_EQ(a_qortvapi_channellist_is_exist_by_channel_number(SVL_ID_TERRESTRIAL, 65536 + 99), 0);
    EXPECT_EQ(a_qortvapi_channellist_is_exist_by_channel_number(9, 99), TV_NOT_FOUND);
}

TEST_F(TelevisionQueries, StepsBackAroundTheRing) {
    const auto all = services(SVL_ID_CABLE);
    const auto back = [&](size_t place, uint32_t filter, uint32_t steps) {
        uint32_t id = 0;
        EXPECT_EQ(a_qortvapi_channellist_get_prev_channel_id_by_filter(
                          SVL_ID_CABLE, filter, all[place].ui4_channel_id, steps, &id),
                  TV_OK);
        return id;
    };
    EXPECT_EQ(back(5, 0, 1), all[4].ui4_channel_id);
    EXPECT_EQ(back(0, 0, 1), all[11].ui4_channel_id);
    EXPECT_EQ(back(3, 0, 12), all[3].ui4_channel_id);
    EXPECT_EQ(back(3, 0, 0xFFFFFFFF), all[0].ui4_channel_id);  // 4294967295 is 3 in a ring of 12
    EXPECT_EQ(back(0, SB_VNET_RADIO_SERVICE, 1), all[11].ui4_channel_id);
    uint32_t id = 5;
    EXPECT_EQ(a_qortvapi_channellist_get_prev_channel_id_by_filter(
                      SVL_ID_CABLE, SB_VNET_RADIO_SERVICE | SB_VNET_TV_SERVICE,
                      all[0].ui4_channel_id, 1, &id),
              TV_NOT_FOUND);
    EXPECT_EQ(id, 5u);
}

}  // namespace
