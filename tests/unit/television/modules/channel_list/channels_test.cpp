#include "support/television_test.h"

#include <set>

namespace {

using Names = std::vector<std::string>;

class TelevisionChannels : public TelevisionTest {
  protected:
    TelevisionChannels() { startWithDemo(); }
};

TEST_F(TelevisionChannels, ListsAreByMediumAndInTheOrderOfNumbers) {
    EXPECT_EQ(names(SVL_ID_TERRESTRIAL),
              (Names{"Première", "Zweites Österreich", "Ærø Nyt", "Canal Niño", "Kanał Łódź",
                     "Česká Šest", "Новости 24", "Ελληνικά", "İstanbul Şehir", "Sport Plus",
                     "Number Three Too", "No Number", "Radio Ålesund", "Rádio Évora",
                     "Engineering Test"}));
    EXPECT_EQ(services(SVL_ID_TERRESTRIAL).size(), 15u);
    EXPECT_EQ(services(SVL_ID_CABLE).size(), 12u);
    EXPECT_EQ(services(SVL_ID_SATELLITE).size(), 13u);
    uint16_t last = 0;
    for (const SVL_REC_T& record : services(SVL_ID_TERRESTRIAL)) {
        EXPECT_GT(record.ui2_channel_number, last);
        last = record.ui2_channel_number;
    }
}

TEST_F(TelevisionChannels, NumbersFollowTheStreamAndThenTheNextFree) {
    EXPECT_EQ(service(SVL_ID_TERRESTRIAL, "Ærø Nyt").ui2_channel_number, 3);
    // The number 3 is taken, and so are those up to 10.
    EXPECT_EQ(service(SVL_ID_TERRESTRIAL, "Number Three Too").ui2_channel_number, 11);
    EXPECT_EQ(service(SVL_ID_TERRESTRIAL, "No Number").ui2_channel_number, 12);
    EXPECT_EQ(service(SVL_ID_TERRESTRIAL, "Engineering Test").ui2_channel_number, 99);
    EXPECT_EQ(services(SVL_ID_SATELLITE).front().ui2_channel_number, 1);
    EXPECT_EQ(services(SVL_ID_SATELLITE).back().ui2_channel_number, 13);
}

TEST_F(TelevisionChannels, RecordsSayWhatTheStreamSays) {
    const SVL_REC_T first = service(SVL_ID_TERRESTRIAL, "Première");
    EXPECT_EQ(first.ui2_svl_id, SVL_ID_TERRESTRIAL);
    EXPECT_EQ(first.ui1_brdcst_type, BRDCST_TYPE_DVB);
    EXPECT_EQ(first.ui1_brdcst_medium, BRDCST_MEDIUM_DIG_TERRESTRIAL);
    EXPECT_EQ(first.ui1_service_type, 0x19);
    EXPECT_EQ(first.ui1_audio_count, 2);
    EXPECT_STREQ(first.s_audio_lang, "fra");
    EXPECT_STREQ(first.s_provider_name, "Corvanta Media");
    EXPECT_EQ(first.ui4_nw_mask,
              uint32_t{SB_VNET_ACTIVE | SB_VNET_EPG | SB_VNET_VISIBLE | SB_VNET_TV_SERVICE});
    EXPECT_EQ(service(SVL_ID_TERRESTRIAL, "Radio Ålesund").ui4_nw_mask & 0xFF,
              uint32_t{SB_VNET_ACTIVE | SB_VNET_EPG | SB_VNET_VISIBLE | SB_VNET_RADIO_SERVICE});
    EXPECT_NE(service(SVL_ID_TERRESTRIAL, "Sport Plus").ui4_nw_mask & SB_VNET_SCRAMBLED, 0u);
    EXPECT_EQ(service(SVL_ID_TERRESTRIAL, "Engineering Test").ui4_nw_mask & SB_VNET_VISIBLE, 0u);
    TSL_REC_T multiplex;
    ASSERT_EQ(a_qortvapi_channellist_get_channel_by_id(first.ui4_channel_id, SVL_ID_TERRESTRIAL,
                                                       nullptr, &multiplex),
              TV_OK);
    EXPECT_STREQ(multiplex.s_source, "dvb-t-1.ts");
    EXPECT_STREQ(multiplex.s_network_name, "Corvanta Antenna");
    EXPECT_EQ(multiplex.ui4_frequency_khz, 482'000u);
    EXPECT_EQ(multiplex.ui2_service_count, 5);
    EXPECT_GT(multiplex.ui4_packets, 1000u);
}

TEST_F(TelevisionChannels, ChannelIdsAreUniqueAndPositive) {
    std::set<uint32_t> ids;
    for (const uint32_t list : {1u, 2u, 3u}) {
        for (const SVL_REC_T& record : services(list)) {
            EXPECT_TRUE(ids.insert(record.ui4_channel_id).second);
            EXPECT_GT(static_cast<int32_t>(record.ui4_channel_id), 0);
            EXPECT_EQ(a_qortvapi_is_one_part_channel_id(record.ui4_channel_id), 1);
        }
    }
    EXPECT_EQ(ids.size(), 40u);
}

TEST_F(TelevisionChannels, ReadsByIdFromOneListOrAny) {
    const uint32_t id = channel(SVL_ID_CABLE, "Cable One");
    SVL_REC_T record;
    TSL_REC_T multiplex;
    EXPECT_EQ(a_qortvapi_channellist_get_channel_by_id(id, SVL_ID_CABLE, &record, &multiplex),
              TV_OK);
    EXPECT_STREQ(record.s_service_name, "Cable One");
    EXPECT_EQ(a_qortvapi_channellist_get_channel_by_id(id, 0, &record, &multiplex), TV_OK);
    EXPECT_EQ(a_qortvapi_channellist_get_channel_by_id(id, SVL_ID_SATELLITE, &record, &multiplex),
              TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_channellist_get_channel_by_id(id, 77, &record, &multiplex), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_channellist_get_svl_rec_by_channel_id(SVL_ID_CABLE, id, &record), TV_OK);
    EXPECT_EQ(a_qortvapi_channellist_get_channel_number(id), 101);
    EXPECT_EQ(a_qortvapi_channellist_get_channel_number(1), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_channellist_get_svl_tsl_rec_by_svl_rec_id(
                      SVL_ID_CABLE, record.ui2_svl_rec_id, &record, &multiplex),
              TV_OK);
    EXPECT_EQ(record.ui4_channel_id, id);
    EXPECT_EQ(a_qortvapi_channellist_get_svl_tsl_rec_by_svl_rec_id(SVL_ID_CABLE, 999, &record,
                                                                   &multiplex),
              TV_NOT_FOUND);
}

TEST_F(TelevisionChannels, FailedReadsLeaveTheRecordsAlone) {
    SVL_REC_T record;
    TSL_REC_T multiplex;
    std::memset(&record, 0x77, sizeof(record));
    std::memset(&multiplex, 0x77, sizeof(multiplex));
    const SVL_REC_T before = record;
    EXPECT_EQ(a_qortvapi_channellist_get_channel_by_id(5, 1, &record, &multiplex), TV_NOT_FOUND);
    EXPECT_EQ(std::memcmp(&record, &before, sizeof(record)), 0);
}

TEST_F(TelevisionChannels, SelectionIsKeptInBothWindows) {
    EXPECT_EQ(a_qortvapi_channellist_get_current_chan_id(),
              static_cast<int32_t>(services(SVL_ID_TERRESTRIAL).front().ui4_channel_id));
    const uint32_t cable = channel(SVL_ID_CABLE, "Cable One");
    const uint32_t satellite = channel(SVL_ID_SATELLITE, "World News HD");
    EXPECT_EQ(a_qortvapi_channellist_set_current_channel(cable), TV_OK);
    EXPECT_EQ(a_qortvapi_channellist_set_2nd_current_channel_by_svlId(SVL_ID_SATELLITE, satellite),
              TV_OK);
    EXPECT_EQ(a_qortvapi_channellist_set_current_channel(12345), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_channellist_set_current_channel_by_svlId(SVL_ID_SATELLITE, cable),
              TV_NOT_FOUND);
    for (int run = 0; run < 2; ++run) {
        uint16_t list = 0;
        SVL_REC_T record;
        TSL_REC_T multiplex;
        ASSERT_EQ(a_qortvapi_channellist_get_current_channel(&list, &record, &multiplex), TV_OK);
        EXPECT_EQ(list, SVL_ID_CABLE);
        EXPECT_EQ(record.ui4_channel_id, cable);
        ASSERT_EQ(
                a_qortvapi_channellist_get_current_channel_from_nav(1, &list, &record, &multiplex),
                TV_OK);
        EXPECT_EQ(record.ui4_channel_id, satellite);
        EXPECT_EQ(
                a_qortvapi_channellist_get_current_channel_from_nav(2, &list, &record, &multiplex),
                TV_INVALID_ARGUMENT);
        restart();
    }
}

TEST_F(TelevisionChannels, HandlesLeadToRecords) {
    uint32_t svl = 0;
    uint32_t tsl = 0;
    ASSERT_EQ(a_qortvapi_channellist_get_svl_handle_by_svl_id(SVL_ID_CABLE, &svl), TV_OK);
    ASSERT_EQ(a_qortvapi_channellist_get_tsl_handle_by_svl_id(SVL_ID_CABLE, &tsl), TV_OK);
    EXPECT_NE(svl, tsl);
    EXPECT_EQ(a_qortvapi_channellist_get_svl_handle_by_svl_id(9, &svl), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_channellist_get_svl_handle_by_svl_id(SVL_ID_CABLE, nullptr),
              TV_INVALID_ARGUMENT);
    uint32_t svlVersion = 0;
    uint32_t tslVersion = 0;
    SVL_REC_T record;
    TSL_REC_T multiplex;
    ASSERT_EQ(a_qortvapi_channellist_get_svl_tsl_rec_by_handle(svl, tsl, 2, &svlVersion,
                                                               &tslVersion, &record, &multiplex),
              TV_OK);
    EXPECT_STREQ(record.s_service_name, names(SVL_ID_CABLE)[2].c_str());
    EXPECT_GT(svlVersion, 0u);
    EXPECT_EQ(a_qortvapi_channellist_get_svl_tsl_rec_by_handle(svl, tsl, 12, nullptr, nullptr,
                                                               &record, &multiplex),
              TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_channellist_get_svl_tsl_rec_by_handle(tsl, svl, 0, nullptr, nullptr,
                                                               &record, &multiplex),
              TV_NOT_FOUND);
    uint32_t version = 0;
    EXPECT_EQ(c_svl_get_rec(svl, record.ui2_svl_rec_id, &record, &version), TV_OK);
    EXPECT_EQ(version, svlVersion);
    EXPECT_EQ(c_tsl_get_rec(tsl, record.ui2_tsl_rec_id, &multiplex, &version), TV_OK);
    EXPECT_EQ(c_tsl_get_rec(svl, 1, &multiplex, &version), TV_NOT_FOUND);
    uint16_t svlId = 0;
    uint16_t tslId = 0;
    uint32_t handle = 0;
    EXPECT_EQ(a_qortvapi_channellist_get_svl_info_by_brdcast_medium(BRDCST_MEDIUM_DIG_CABLE, &svlId,
                                                                    &tslId, &handle),
              TV_OK);
    EXPECT_EQ(svlId, SVL_ID_CABLE);
    EXPECT_EQ(handle, svl);
    EXPECT_EQ(a_qortvapi_channellist_get_svl_info_by_brdcast_medium(9, &svlId, &tslId, &handle),
              TV_NOT_FOUND);
}

TEST_F(TelevisionChannels, ReceptionParameters) {
    const uint32_t id = channel(SVL_ID_SATELLITE, "World News HD");
    EXPECT_EQ(
            a_qortvapi_channellist_get_channel_rf_info(SVL_ID_SATELLITE, id, RF_INFO_FREQUENCY_KHZ),
            10'792'250);
    EXPECT_EQ(a_qortvapi_channellist_get_channel_rf_info(SVL_ID_SATELLITE, id, RF_INFO_SYMBOL_RATE),
              22'000'000);
    EXPECT_EQ(
            a_qortvapi_channellist_get_channel_rf_info(SVL_ID_SATELLITE, id, RF_INFO_POLARIZATION),
            POLARIZATION_VERTICAL);
    EXPECT_EQ(a_qortvapi_channellist_get_channel_rf_info(SVL_ID_SATELLITE, id, 99),
              TV_INVALID_ARGUMENT);
}

TEST_F(TelevisionChannels, TvProviderGetsTheListsInUse) {
    uint16_t count = 0;
    EXPECT_EQ(a_qortvapi_tvprovider_get_all_svlid_count(&count), TV_OK);
    EXPECT_EQ(count, 3);
    uint16_t ids[3] = {0xAAAA, 0xAAAA, 0xAAAA};
    EXPECT_EQ(a_qortvapi_tvprovider_get_all_svlid(ids, 2, &count), TV_OK);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(ids[1], SVL_ID_CABLE);
    EXPECT_EQ(ids[2], 0xAAAA);
    EXPECT_EQ(a_qortvapi_tvprovider_get_all_svlid(nullptr, 2, &count), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_tvprovider_get_all_svlid(nullptr, 0, &count), TV_OK);
}

TEST_F(TelevisionChannels, LockCounts) {
    EXPECT_EQ(a_qortvapi_channellist_unlock_database(1, 0), TV_BUSY);
    EXPECT_EQ(a_qortvapi_channellist_lock_database(1, 0), TV_OK);
    EXPECT_EQ(a_qortvapi_channellist_lock_database(1, 0), TV_OK);
    // The client that holds the lock can read and write.
    EXPECT_EQ(a_qortvapi_channellist_set_current_channel(channel(SVL_ID_CABLE, "Cable One")),
              TV_OK);
    EXPECT_EQ(a_qortvapi_channellist_unlock_database(1, 0), TV_OK);
    EXPECT_EQ(a_qortvapi_channellist_unlock_database(1, 0), TV_OK);
    EXPECT_EQ(a_qortvapi_channellist_unlock_database(1, 0), TV_BUSY);
    EXPECT_EQ(a_qortvapi_satllist_unlock_database(3), TV_BUSY);
    EXPECT_EQ(a_qortvapi_satllist_read_lock_database(3), TV_OK);
    EXPECT_EQ(a_qortvapi_satllist_read_unlock_database(3), TV_OK);
    EXPECT_EQ(a_qortvapi_bisskey_unlock_database(1), TV_BUSY);
}

TEST_F(TelevisionChannels, WhatThisTelevisionHasNotSaysSo) {
    EXPECT_EQ(a_qortvapi_channellist_interface(0, nullptr, 0, 0, 0), TV_NOT_SUPPORTED);
    EXPECT_EQ(a_qortvapi_channellist_slide_for_one_part_channel_id(1, 2, 3), TV_NOT_SUPPORTED);
    EXPECT_EQ(a_qortvapi_one_channellist_arrange_before(1, 2), TV_NOT_SUPPORTED);
    EXPECT_EQ(a_qortvapi_one_channellist_add_channel_to_max(1, 2), TV_NOT_SUPPORTED);
    EXPECT_EQ(a_qortvapi_channellist_get_ntsc_cable_last_channel(), TV_NOT_SUPPORTED);
    uint16_t mode = 9;
    EXPECT_EQ(a_qortvapi_channellist_getChannelListMode(&mode), TV_OK);
    EXPECT_EQ(mode, CHANNEL_LIST_MODE_BY_MEDIUM);
}

TEST_F(TelevisionChannels, PumpVersionIsKept) {
    uint32_t version = 9;
    EXPECT_EQ(a_qortvapi_channellist_getChannelPumpVer(SVL_ID_CABLE, &version), TV_OK);
    EXPECT_EQ(version, 0u);
    EXPECT_EQ(a_qortvapi_channellist_setChannelPumpVer(SVL_ID_CABLE, 77), TV_OK);
    EXPECT_EQ(a_qortvapi_channellist_setChannelPumpVer(44, 77), TV_NOT_FOUND);
    restart();
    EXPECT_EQ(a_qortvapi_channellist_getChannelPumpVer(SVL_ID_CABLE, &version), TV_OK);
    EXPECT_EQ(version, 77u);
    EXPECT_EQ(a_qortvapi_channellist_getChannelPumpVer(-1, &version), TV_NOT_FOUND);
}

TEST(TelevisionChannelIds, AreMadeAndTakenApart) {
    television::Options options;
    options.state = ":memory:";
    television::Television tv(options);
    tv.start();
    const auto two = static_cast<uint32_t>(a_qortvapi_channellist_gen_channel_id(1023, 7, 255));
    EXPECT_EQ(a_qortvapi_channellist_get_major_channel_num(two), 1023);
    EXPECT_EQ(a_qortvapi_channellist_get_minor_channel_num(two), 7);
    EXPECT_EQ(a_qortvapi_channellist_get_channel_index(two), 255);
    EXPECT_EQ(a_qortvapi_is_one_part_channel_id(two), 0);
    const auto one =
            static_cast<uint32_t>(a_qortvapi_channellist_gen_one_part_channel_id(1048575, 3));
    EXPECT_EQ(a_qortvapi_channellist_get_major_channel_num(one), 1048575);
    EXPECT_EQ(a_qortvapi_channellist_get_minor_channel_num(one), 0);
    EXPECT_EQ(a_qortvapi_is_one_part_channel_id(one), 1);
    const auto other =
            static_cast<uint32_t>(a_qortvapi_channellist_gen_non_psip_channel_id(255, 4095, 1));
    EXPECT_EQ(a_qortvapi_channellist_get_major_channel_num(other), 255);
    EXPECT_EQ(a_qortvapi_channellist_get_minor_channel_num(other), 4095);
    EXPECT_EQ(a_qortvapi_is_non_psip_channel_id(other), 1);
    EXPECT_EQ(a_qortvapi_channellist_gen_channel_id(1024, 0, 0), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_channellist_gen_channel_id(0xFFFFFFFF, 0xFFFFFFFF, 0),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_channellist_gen_channel_id(0, 1024, 0), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_channellist_gen_one_part_channel_id(1048576, 0), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_channellist_gen_one_part_channel_id(0, 256), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_channellist_get_major_channel_num(0), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_channellist_max_channel_index(), 255);
}

}  // namespace
