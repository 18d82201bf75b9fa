#include "support/television_test.h"

namespace {

class TelevisionInstallation : public TelevisionTest {
  protected:
    TelevisionInstallation() { startWithDemo(); }

    static uint16_t satellites() {
        uint16_t count = 0;
        EXPECT_EQ(a_qortvapi_satllist_get_num_recs(SATL_ID_MAIN, &count), TV_OK);
        return count;
    }
};

TEST_F(TelevisionInstallation, SatellitesComeFromTheNetworks) {
    ASSERT_EQ(satellites(), 2);
    SATL_REC_T first;
    ASSERT_EQ(a_qortvapi_satllist_get_rec_by_rec_idx(SATL_ID_MAIN, 0, &first), TV_OK);
    EXPECT_STREQ(first.s_name, "19.2° East");
    EXPECT_EQ(first.ui2_orbital_position, 192);
    EXPECT_EQ(first.ui4_lnb_low_khz, 9'750'000u);
    uint16_t id = 0;
    EXPECT_EQ(a_qortvapi_satllist_qry_rec_id(SATL_ID_MAIN, 1, &id), TV_OK);
    SATL_REC_T second;
    EXPECT_EQ(a_qortvapi_satllist_get_rec(SATL_ID_MAIN, id, &second), TV_OK);
    EXPECT_STREQ(second.s_name, "13.0° East");
    EXPECT_EQ(a_qortvapi_satllist_qry_rec_id(SATL_ID_MAIN, -1, &id), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_satllist_qry_rec_id(-3, 0, &id), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_satllist_get_rec(SATL_ID_MAIN, 0, &second), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_satllist_get_rec(SATL_ID_MAIN, id, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_satllist_get_num_recs(1, &id), TV_NOT_FOUND);
    uint32_t handle = 0;
    EXPECT_EQ(a_qortvapi_channellist_get_satl_handle_by_satl_id(SATL_ID_MAIN, &handle), TV_OK);
    EXPECT_EQ(a_qortvapi_channellist_get_satl_handle_by_satl_id(1, &handle), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_channellist_get_lol_handle_by_lol_id(1, &handle), TV_OK);
}

TEST_F(TelevisionInstallation, SatelliteSettingsSurviveARestart) {
    SATL_REC_T record;
    ASSERT_EQ(a_qortvapi_satllist_get_rec_by_rec_idx(SATL_ID_MAIN, 0, &record), TV_OK);
    record.ui1_diseqc_port = 3;
    EXPECT_EQ(a_qortvapi_satllist_update_rec(SATL_ID_MAIN, &record, false), TV_OK);
    SATL_REC_T added = record;
    added.ui2_satl_rec_id = 40;
    EXPECT_EQ(a_qortvapi_satllist_update_rec(SATL_ID_MAIN, &added, false), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_satllist_update_rec(SATL_ID_MAIN, &added, true), TV_OK);
    added.ui2_satl_rec_id = 0;
    EXPECT_EQ(a_qortvapi_satllist_update_rec(SATL_ID_MAIN, &added, true), TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_satllist_update_rec(SATL_ID_MAIN, nullptr, true), TV_INVALID_ARGUMENT);
    restart();
    EXPECT_EQ(satellites(), 3);
    ASSERT_EQ(a_qortvapi_satllist_get_rec_by_rec_idx(SATL_ID_MAIN, 0, &record), TV_OK);
    EXPECT_EQ(record.ui1_diseqc_port, 3);
    EXPECT_EQ(a_qortvapi_satllist_del_rec(SATL_ID_MAIN, 40), TV_OK);
    EXPECT_EQ(a_qortvapi_satllist_del_rec(SATL_ID_MAIN, 40), TV_NOT_FOUND);
    EXPECT_EQ(satellites(), 2);
}

TEST_F(TelevisionInstallation, SatelliteSnapshots) {
    uint32_t id = 0;
    ASSERT_EQ(a_qortvapi_satllist_create_snapshot(SATL_ID_MAIN, &id), TV_OK);
    ASSERT_EQ(a_qortvapi_satllist_clean(SATL_ID_MAIN), TV_OK);
    EXPECT_EQ(satellites(), 0);
    // The id of a channel-list snapshot is none of a satellite snapshot, and the other way round.
    EXPECT_EQ(a_qortvapi_channellist_restore_snapshot(static_cast<int32_t>(id)), TV_NOT_FOUND);
    ASSERT_EQ(a_qortvapi_satllist_restore_snapshot(id), TV_OK);
    EXPECT_EQ(satellites(), 2);
    EXPECT_EQ(a_qortvapi_satllist_free_snapshot(id), TV_OK);
    EXPECT_EQ(a_qortvapi_satllist_free_snapshot(id), TV_NOT_FOUND);
    EXPECT_EQ(a_qortvapi_satllist_create_snapshot(1, &id), TV_NOT_FOUND);
}

TEST_F(TelevisionInstallation, MultiplexesOfASatellite) {
    SATL_REC_T satellite;
    ASSERT_EQ(a_qortvapi_satllist_get_rec_by_rec_idx(SATL_ID_MAIN, 0, &satellite), TV_OK);
    uint16_t count = 0;
    EXPECT_EQ(a_qortvapi_tsl_get_tsl_num_rec_by_satl_rec_id(SVL_ID_SATELLITE,
                                                            satellite.ui2_satl_rec_id, &count),
              TV_OK);
    EXPECT_EQ(count, 2);
    std::vector<TSL_REC_T> records(4);
    std::memset(records.data(), 0x55, records.size() * sizeof(TSL_REC_T));
    const TSL_REC_T untouched = records[0];
    const auto read = [&](uint16_t start, uint16_t number, uint16_t total, TSL_REC_T* to) {
        return a_qortvapi_tsl_get_tsl_recs_by_satl_rec_id(
                SVL_ID_SATELLITE, satellite.ui2_satl_rec_id, start, number, total, to);
    };
    EXPECT_EQ(read(1, 3, 4, records.data()), TV_OK);
    EXPECT_STREQ(records[0].s_source, "dvb-s-2.ts");
    EXPECT_EQ(std::memcmp(&records[1], &untouched, sizeof(untouched)), 0);
    records.assign(4, untouched);
    EXPECT_EQ(read(0, 10, 1, records.data()), TV_OK);  // memory for one record only
    EXPECT_STREQ(records[0].s_source, "dvb-s-1.ts");
    EXPECT_EQ(std::memcmp(&records[1], &untouched, sizeof(untouched)), 0);
    EXPECT_EQ(read(5, 3, 5, nullptr), TV_OK);  // nothing to write
    EXPECT_EQ(read(0, 3, 5, nullptr), TV_INVALID_ARGUMENT);
    EXPECT_EQ(read(65535, 65535, 65535, nullptr), TV_OK);
}

TEST_F(TelevisionInstallation, MultiplexRecords) {
    uint16_t id = 0;
    EXPECT_EQ(a_qortvapi_tsl_qry_rec_id(SVL_ID_CABLE, 2, &id), TV_OK);
    EXPECT_EQ(a_qortvapi_tsl_qry_rec_id(SVL_ID_CABLE, 3, &id), TV_NOT_FOUND);
    TSL_REC_T record;
    ASSERT_EQ(a_qortvapi_tsl_get_rec_by_rec_idx(SVL_ID_CABLE, 2, &record), TV_OK);
    EXPECT_EQ(record.ui2_tsl_rec_id, id);
    record.ui4_frequency_khz = 1234;
    EXPECT_EQ(a_qortvapi_tsl_update_rec(SVL_ID_CABLE, &record, false), TV_OK);
    TSL_REC_T read;
    EXPECT_EQ(a_qortvapi_tsl_get_rec(SVL_ID_CABLE, id, &read), TV_OK);
    EXPECT_EQ(read.ui4_frequency_khz, 1234u);
    EXPECT_EQ(a_qortvapi_tsl_del_rec(SVL_ID_CABLE, id), TV_OK);
    EXPECT_EQ(a_qortvapi_tsl_get_rec(SVL_ID_CABLE, id, &read), TV_NOT_FOUND);
    // Its services stay, with an empty multiplex.
    SVL_REC_T service;
    EXPECT_EQ(a_qortvapi_channellist_get_channel_by_id(channel(SVL_ID_CABLE, "Türkçe"), 0, &service,
                                                       &read),
              TV_OK);
    EXPECT_EQ(read.ui2_tsl_rec_id, 0);
    EXPECT_EQ(a_qortvapi_tsl_clean(SVL_ID_CABLE), TV_OK);
    EXPECT_EQ(a_qortvapi_tsl_get_num_recs(SVL_ID_CABLE, &id), TV_OK);
    EXPECT_EQ(id, 0);
}

TEST_F(TelevisionInstallation, NetworkRecords) {
    uint16_t count = 0;
    EXPECT_EQ(a_qortvapi_nwl_get_num_recs(SVL_ID_TERRESTRIAL, &count), TV_OK);
    EXPECT_EQ(count, 1);
    NWL_REC_T record;
    ASSERT_EQ(a_qortvapi_nwl_get_rec_by_rec_idx(SVL_ID_TERRESTRIAL, 0, &record), TV_OK);
    EXPECT_STREQ(record.s_name, "Corvanta Antenna");
    EXPECT_EQ(record.ui2_network_id, 0x3101);
    EXPECT_EQ(record.ui2_transport_stream_count, 3);
    // One network on two satellites: a record for each.
    EXPECT_EQ(a_qortvapi_nwl_get_num_recs(SVL_ID_SATELLITE, &count), TV_OK);
    EXPECT_EQ(count, 2);
    ASSERT_EQ(a_qortvapi_nwl_get_rec_by_rec_idx(SVL_ID_SATELLITE, 1, &record), TV_OK);
    EXPECT_EQ(a_qortvapi_nwl_get_nwl_num_rec_by_satl_rec_id(SVL_ID_SATELLITE,
                                                            record.ui2_satl_rec_id, &count),
              TV_OK);
    EXPECT_EQ(count, 1);
    NWL_REC_T one = {};
    EXPECT_EQ(a_qortvapi_nwl_get_nwl_recs_by_satl_rec_id(SVL_ID_SATELLITE, record.ui2_satl_rec_id,
                                                         0, 5, 1, &one),
              TV_OK);
    EXPECT_EQ(one.ui2_nwl_rec_id, record.ui2_nwl_rec_id);
    uint16_t id = 0;
    EXPECT_EQ(a_qortvapi_nwl_qry_rec_id(SVL_ID_SATELLITE, 1, &id), TV_OK);
    EXPECT_EQ(id, record.ui2_nwl_rec_id);
    std::strcpy(record.s_name, "Renamed");
    EXPECT_EQ(a_qortvapi_nwl_update_rec(SVL_ID_SATELLITE, &record, false), TV_OK);
    EXPECT_EQ(a_qortvapi_nwl_get_rec(SVL_ID_SATELLITE, id, &one), TV_OK);
    EXPECT_STREQ(one.s_name, "Renamed");
    EXPECT_EQ(a_qortvapi_nwl_del_rec(SVL_ID_SATELLITE, id), TV_OK);
    EXPECT_EQ(a_qortvapi_nwl_clean(SVL_ID_SATELLITE), TV_OK);
    EXPECT_EQ(a_qortvapi_nwl_get_num_recs(SVL_ID_SATELLITE, &count), TV_OK);
    EXPECT_EQ(count, 0);
}

TEST_F(TelevisionInstallation, BissKeys) {
    uint32_t list = 0;
    ASSERT_EQ(a_qortvapi_bisskey_get_bsl_handle_by_bsl_id(BSL_ID_MAIN, &list), TV_OK);
    EXPECT_EQ(a_qortvapi_bisskey_get_bsl_handle_by_bsl_id(2, &list), TV_NOT_FOUND);
    BSL_REC_T key;
    ASSERT_EQ(a_qortvapi_bisskey_get_default_record(&key), TV_OK);
    EXPECT_EQ(key.ui1_key_length, 8);
    key.t_header.ui4_frequency_khz = 10'792'250;
    key.t_header.ui2_program_id = 0x1101;
    key.aui1_key[0] = 0x12;
    uint32_t id = 0;
    ASSERT_EQ(a_qortvapi_bisskey_set_bsl_rec_info(list, BISSKEY_ADD, &key, &id), TV_OK);
    EXPECT_EQ(id, 1u);
    BSL_REC_T other = key;
    other.t_header.ui4_frequency_khz = 1;
    ASSERT_EQ(a_qortvapi_bisskey_set_bsl_rec_info(list, BISSKEY_ADD, &other, &id), TV_OK);
    EXPECT_EQ(id, 2u);
    restart();
    uint16_t count = 0;
    uint32_t version = 0;
    EXPECT_EQ(a_qortvapi_bisskey_get_recs_number(list, &count, &version), TV_OK);
    EXPECT_EQ(count, 2);
    BSL_REC_T read;
    EXPECT_EQ(a_qortvapi_bisskey_get_bsl_rec_by_bsl_rec_id(list, 1, &read, &version), TV_OK);
    EXPECT_EQ(a_qortvapi_bisskey_is_same_record(&read, &key), 1);
    EXPECT_EQ(a_qortvapi_bisskey_is_same_record(&read, &other), 0);
    EXPECT_EQ(a_qortvapi_bisskey_get_bsl_rec_by_idx(list, 1, &read, &version), TV_OK);
    EXPECT_EQ(read.t_header.ui4_frequency_khz, 1u);
    EXPECT_EQ(a_qortvapi_bisskey_get_bsl_rec_by_idx(list, 2, &read, &version), TV_NOT_FOUND);
    BSL_HEADER_T header = {};
    header.ui2_program_id = 0x1101;
    EXPECT_EQ(a_qortvapi_bisskey_get_recs_number_by_header(list, &header, &count, &version), TV_OK);
    EXPECT_EQ(count, 2);
    header.ui4_frequency_khz = 1;
    EXPECT_EQ(a_qortvapi_bisskey_get_bsl_rec_by_header(list, &header, 0, &read, &version), TV_OK);
    EXPECT_EQ(read.ui2_bsl_rec_id, 2);
    EXPECT_EQ(a_qortvapi_bisskey_get_bsl_rec_by_header(list, &header, 1, &read, &version),
              TV_NOT_FOUND);
    // The key of the current channel.
    EXPECT_EQ(a_qortvapi_bisskey_set_key_for_current_channel(), TV_NOT_FOUND);
    a_qortvapi_channellist_set_current_channel(channel(SVL_ID_SATELLITE, "World News HD"));
    EXPECT_EQ(a_qortvapi_bisskey_set_key_for_current_channel(), TV_OK);
    // Changing and deleting.
    read.aui1_key[7] = 9;
    EXPECT_EQ(a_qortvapi_bisskey_set_bsl_rec_info(list, BISSKEY_MODIFY, &read, &id), TV_OK);
    EXPECT_EQ(a_qortvapi_bisskey_set_bsl_rec_info(list, BISSKEY_DELETE, &key, &id), TV_NOT_FOUND);
    key.ui2_bsl_rec_id = 1;
    EXPECT_EQ(a_qortvapi_bisskey_set_bsl_rec_info(list, BISSKEY_DELETE, &key, &id), TV_OK);
    EXPECT_EQ(a_qortvapi_bisskey_set_bsl_rec_info(list, 3, &key, &id), TV_NOT_SUPPORTED);
    key.ui1_key_length = 9;
    EXPECT_EQ(a_qortvapi_bisskey_set_bsl_rec_info(list, BISSKEY_ADD, &key, &id),
              TV_INVALID_ARGUMENT);
    EXPECT_EQ(a_qortvapi_bisskey_clean(list), TV_OK);
    EXPECT_EQ(a_qortvapi_bisskey_get_recs_number(list, &count, &version), TV_OK);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(a_qortvapi_bisskey_clean(1), TV_NOT_FOUND);
}

}  // namespace
