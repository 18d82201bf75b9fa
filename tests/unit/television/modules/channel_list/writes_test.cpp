#include "support/television_test.h"

namespace {

using Names = std::vector<std::string>;

class TelevisionWrites : public TelevisionTest {
  protected:
    TelevisionWrites() { startWithDemo(); }

    static int32_t write(const SVL_REC_T& record, uint32_t operation = CHANNEL_WRITE_SERVICE,
                         const TSL_REC_T* multiplex = nullptr) {
        return a_qortvapi_channellist_set_svl_tsl_rec_info(record.ui2_svl_id, 0, 0, 0, 0, operation,
                                                           &record, multiplex);
    }
};

TEST_F(TelevisionWrites, NameNumberAndMasksSurviveARestart) {
    SVL_REC_T record = service(SVL_ID_CABLE, "Cable One");
    std::strcpy(record.s_service_name, "My One");
    record.ui2_channel_number = 500;
    record.ui4_option_mask = 0xABCD;
    record.ui4_nw_mask &= ~static_cast<uint32_t>(SB_VNET_VISIBLE);
    record.ui4_nw_mask |= SB_VNET_FAVORITE1 | SB_VNET_SCRAMBLED;  // not the application's to change
    ASSERT_EQ(write(record), TV_OK);
    for (int run = 0; run < 3; ++run) {
        const SVL_REC_T read = service(SVL_ID_CABLE, "My One");
        EXPECT_EQ(read.ui4_channel_id, record.ui4_channel_id);
        EXPECT_EQ(read.ui2_channel_number, 500);
        EXPECT_EQ(read.ui4_option_mask, 0xABCDu);
        EXPECT_EQ(read.ui4_nw_mask, uint32_t{SB_VNET_ACTIVE | SB_VNET_EPG | SB_VNET_TV_SERVICE});
        EXPECT_EQ(names(SVL_ID_CABLE).back(), "My One");
        if (run == 0) restart();
        if (run == 1) tv->reload();
    }
}

TEST_F(TelevisionWrites, NumbersInUseAndWrongOnesAreRefused) {
    SVL_REC_T record = service(SVL_ID_CABLE, "Cable One");
    record.ui2_channel_number = 102;
    EXPECT_EQ(write(record), TV_BUSY);
    record.ui2_channel_number = 0;
    EXPECT_EQ(write(record), TV_INVALID_ARGUMENT);
    record.ui2_channel_number = 101;
    record.ui4_channel_id = 7;
    EXPECT_EQ(write(record), TV_NOT_FOUND);
    record = service(SVL_ID_CABLE, "Cable One");
    EXPECT_EQ(write(record, 3), TV_NOT_SUPPORTED);
    EXPECT_EQ(write(record, CHANNEL_WRITE_BOTH, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_channellist_set_svl_tsl_rec_info(SVL_ID_CABLE, 0, 0, 0, 0, 1, nullptr,
                                                          nullptr),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_channellist_set_svl_tsl_rec_info(SVL_ID_CABLE, 0, 0, 4711, 0, 1, &record,
                                                          nullptr),
              TV_NOT_FOUND);
}

TEST_F(TelevisionWrites, NameWithoutItsEndIsCut) {
    SVL_REC_T record = service(SVL_ID_CABLE, "Cable One");
    std::memset(record.s_service_name, 'x', sizeof(record.s_service_name));
    ASSERT_EQ(write(record), TV_OK);
    EXPECT_EQ(std::strlen(services(SVL_ID_CABLE).front().s_service_name),
              sizeof(record.s_service_name) - 1);
}

TEST_F(TelevisionWrites, MultiplexNames) {
    SVL_REC_T record;
    TSL_REC_T multiplex;
    ASSERT_EQ(a_qortvapi_channellist_get_channel_by_id(channel(SVL_ID_CABLE, "Cable One"),
                                                       SVL_ID_CABLE, &record, &multiplex),
              TV_OK);
    std::strcpy(multiplex.s_network_name, "Other Network");
    ASSERT_EQ(write(record, CHANNEL_WRITE_BOTH, &multiplex), TV_OK);
    ASSERT_EQ(a_qortvapi_tsl_get_rec(SVL_ID_CABLE, multiplex.ui2_tsl_rec_id, &multiplex), TV_OK);
    EXPECT_STREQ(multiplex.s_network_name, "Other Network");
    multiplex.ui2_tsl_rec_id = 99;
    EXPECT_EQ(write(record, CHANNEL_WRITE_BOTH, &multiplex), TV_NOT_FOUND);
}

TEST_F(TelevisionWrites, SwappedChannelsExchangeTheirNumbers) {
    const uint32_t one = channel(SVL_ID_CABLE, "Cable One");
    const uint32_t other = channel(SVL_ID_CABLE, "Nyhetsradio");
    ASSERT_EQ(a_qortvapi_channellist_swap_channels(one, other, SVL_ID_CABLE), TV_OK);
    EXPECT_EQ(a_qortvapi_channellist_swap_channels(one, 5, SVL_ID_CABLE), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_channellist_swap_channels(one, other, SVL_ID_SATELLITE), TV_NOT_FOUND);
    for (int run = 0; run < 2; ++run) {
        EXPECT_EQ(names(SVL_ID_CABLE).front(), "Nyhetsradio");
        EXPECT_EQ(a_qortvapi_channellist_get_channel_number(one), 132);
        EXPECT_EQ(a_qortvapi_channellist_get_channel_number(other), 101);
        restart();
    }
}

TEST_F(TelevisionWrites, DeletedChannelsStayAwayUntilTheStreamComesAgain) {
    const SVL_REC_T record = service(SVL_ID_CABLE, "Cable One");
    ASSERT_EQ(
            a_qortvapi_channellist_delete_channel_without_lcn(SVL_ID_CABLE, record.ui2_svl_rec_id),
            TV_OK);
    EXPECT_EQ(
            a_qortvapi_channellist_delete_channel_without_lcn(SVL_ID_CABLE, record.ui2_svl_rec_id),
            TV_NOT_FOUND);
    EXPECT_EQ(services(SVL_ID_CABLE).size(), 11u);
    EXPECT_EQ(services(SVL_ID_CABLE).front().ui2_channel_number, 102);  // the others keep theirs
    restart();
    EXPECT_EQ(services(SVL_ID_CABLE).size(), 11u);
    const std::string file = streams() + "/dvb-c-1.ts";
    std::filesystem::rename(file, file + ".away");
    tv->reload();
    EXPECT_EQ(services(SVL_ID_CABLE).size(), 8u);
    std::filesystem::rename(file + ".away", file);
    tv->reload();
    EXPECT_EQ(service(SVL_ID_CABLE, "Cable One").ui4_channel_id, record.ui4_channel_id);
}

TEST_F(TelevisionWrites, DeletesByTypeSatelliteAndMultiplex) {
    const auto multiplexes = [](uint16_t list) {
        uint16_t count = 99;
        EXPECT_EQ(a_qortvapi_tsl_get_num_recs(list, &count), TV_OK);
        return count;
    };
    EXPECT_EQ(a_qortvapi_channellist_delete_by_brdcst(SVL_ID_TERRESTRIAL, BRDCST_TYPE_ATSC),
              TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_channellist_delete_by_brdcst(SVL_ID_TERRESTRIAL, BRDCST_TYPE_DVB), TV_OK);
    EXPECT_EQ(services(SVL_ID_TERRESTRIAL).size(), 0u);
    EXPECT_EQ(multiplexes(SVL_ID_TERRESTRIAL), 3);
    EXPECT_EQ(a_qortvapi_channellist_and_ts_del_by_brdcst(SVL_ID_CABLE, BRDCST_TYPE_DVB), TV_OK);
    EXPECT_EQ(multiplexes(SVL_ID_CABLE), 0);
    // Two satellites; a favourite of the first one stays.
    const SVL_REC_T kept = service(SVL_ID_SATELLITE, "Meteo Alpen");
    ASSERT_EQ(a_qortvapi_favorite_list_add_tail(SVL_ID_SATELLITE, 2, kept.ui4_channel_id), TV_OK);
    TSL_REC_T multiplex;
    ASSERT_EQ(a_qortvapi_tsl_get_rec(SVL_ID_SATELLITE, kept.ui2_tsl_rec_id, &multiplex), TV_OK);
    EXPECT_EQ(a_qortvapi_channellist_del_tsl_svl_rec_by_satl_rec_id(
                      SVL_ID_SATELLITE, multiplex.ui2_satl_rec_id, true),
              TV_OK);
    EXPECT_EQ(services(SVL_ID_SATELLITE).size(), 5u);
    EXPECT_EQ(multiplexes(SVL_ID_SATELLITE), 2);
    EXPECT_EQ(a_qortvapi_channellist_delete_by_satl(SVL_ID_SATELLITE, multiplex.ui2_satl_rec_id,
                                                    false),
              TV_OK);
    EXPECT_EQ(services(SVL_ID_SATELLITE).size(), 4u);
    const uint16_t last = services(SVL_ID_SATELLITE).front().ui2_tsl_rec_id;
    EXPECT_EQ(a_qortvapi_channellist_del_tsl_svl_rec_by_tsl_rec_id(SVL_ID_SATELLITE, last), TV_OK);
    EXPECT_EQ(services(SVL_ID_SATELLITE).size(), 0u);
    EXPECT_EQ(a_qortvapi_channellist_get_current_chan_id(), TV_NOT_FOUND);
    restart();
    for (const uint32_t list : {1u, 2u, 3u}) EXPECT_EQ(services(list).size(), 0u);
}

TEST_F(TelevisionWrites, CleanedListIsEmpty) {
    EXPECT_EQ(a_qortvapi_channellist_svl_tsl_lol_clean(SVL_ID_CABLE, true, true), TV_OK);
    uint16_t count = 9;
    EXPECT_EQ(a_qortvapi_tsl_get_num_recs(SVL_ID_CABLE, &count), TV_OK);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(services(SVL_ID_CABLE).size(), 0u);
    EXPECT_EQ(a_qortvapi_channellist_svl_tsl_lol_clean(7, true, true), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_channellist_clean_lol(1), TV_OK);
    EXPECT_EQ(a_qortvapi_channellist_clean_lol(7), TV_NOT_FOUND);
}

TEST_F(TelevisionWrites, SnapshotBringsAListBack) {
    const auto before = names(SVL_ID_CABLE);
    const uint32_t favourite = channel(SVL_ID_CABLE, "Movies 1");
    ASSERT_EQ(a_qortvapi_favorite_list_add_tail(SVL_ID_CABLE, 0, favourite), TV_OK);
    int32_t id = 0;
    ASSERT_EQ(a_qortvapi_channellist_create_snapshot(SVL_ID_CABLE, &id), TV_OK);
    EXPECT_GT(id, 0);
    ASSERT_EQ(a_qortvapi_channellist_svl_tsl_lol_clean(SVL_ID_CABLE, true, true), TV_OK);
    ASSERT_EQ(a_qortvapi_channellist_restore_snapshot(id), TV_OK);
    for (int run = 0; run < 2; ++run) {
        EXPECT_EQ(names(SVL_ID_CABLE), before);
        EXPECT_EQ(favourites(SVL_ID_CABLE, 0), Names{"Movies 1"});
        if (run == 0) {
            EXPECT_EQ(a_qortvapi_channellist_free_snapshot(id), TV_OK);
            EXPECT_EQ(a_qortvapi_channellist_free_snapshot(id), TV_NOT_FOUND);
            EXPECT_EQ(a_qortvapi_channellist_restore_snapshot(id), TV_NOT_FOUND);
            restart();
        }
    }
}

TEST_F(TelevisionWrites, SnapshotsAreLimited) {
    int32_t id = 0;
    for (int i = 0; i < 16; ++i) {
        ASSERT_EQ(a_qortvapi_channellist_create_snapshot(SVL_ID_CABLE, &id), TV_OK);
    }
    EXPECT_EQ(a_qortvapi_channellist_create_snapshot(SVL_ID_CABLE, &id), TV_FULL);
    EXPECT_EQ(a_qortvapi_channellist_free_snapshot(id), TV_OK);
    EXPECT_EQ(a_qortvapi_channellist_create_snapshot(SVL_ID_CABLE, &id), TV_OK);
    EXPECT_EQ(a_qortvapi_channellist_create_snapshot(SVL_ID_CABLE, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_channellist_restore_snapshot(-1), TV_NOT_FOUND);
}

}  // namespace
