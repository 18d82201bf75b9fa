// Records of the middleware as channels.
#include "qortv/channel.h"

#include <gtest/gtest.h>

#include <cstring>

#include "middleware/records.h"

namespace qortv {
namespace {

TEST(ClientChannel, TakesEveryFieldFromItsRecord) {
    SVL_REC_T service = {};
    service.ui2_svl_id = SVL_ID_CABLE;
    service.ui2_svl_rec_id = 11;
    service.ui4_channel_id = 0x12345;
    service.ui4_nw_mask = SB_VNET_VISIBLE | SB_VNET_FAVORITE3;
    service.ui2_original_network_id = 1;
    service.ui2_transport_stream_id = 1101;
    service.ui2_service_id = 28106;
    service.ui2_channel_number = 7;
    service.ui1_brdcst_medium = BRDCST_MEDIUM_DIG_CABLE;
    service.ui1_service_type = 25;
    service.ui1_free_ca_mode = 1;
    std::strcpy(service.s_audio_lang, "deu");
    std::strcpy(service.s_service_name, "Télé Zürich");
    std::strcpy(service.s_provider_name, "Anbieter");
    TSL_REC_T multiplex = {};
    multiplex.ui4_frequency_khz = 474000;
    std::strcpy(multiplex.s_network_name, "Kabelnetz");
    std::strcpy(multiplex.s_source, "kabel.ts");

    const Channel channel = toChannel(service, multiplex);
    EXPECT_EQ(channel.id, 0x12345U);
    EXPECT_EQ(channel.number, 7);
    EXPECT_EQ(channel.name, "Télé Zürich");
    EXPECT_EQ(channel.provider, "Anbieter");
    EXPECT_EQ(channel.medium, Medium::kCable);
    EXPECT_EQ(channel.type, ChannelType::kHdTelevision);
    EXPECT_EQ(channel.list, kCableList);
    EXPECT_EQ(channel.record, 11);
    EXPECT_EQ(channel.serviceId, 28106);
    EXPECT_EQ(channel.networkId, 1);
    EXPECT_EQ(channel.multiplexId, 1101);
    EXPECT_EQ(channel.multiplex, "Kabelnetz");
    EXPECT_EQ(channel.frequencyKhz, 474000U);
    EXPECT_EQ(channel.audioLanguage, "deu");
    EXPECT_TRUE(channel.scrambled);
    EXPECT_TRUE(channel.visible);
    EXPECT_TRUE(channel.favourite);
}

TEST(ClientChannel, ListIdsAreTheMiddlewares) {
    EXPECT_EQ(kTerrestrialList, SVL_ID_TERRESTRIAL);
    EXPECT_EQ(kCableList, SVL_ID_CABLE);
    EXPECT_EQ(kSatelliteList, SVL_ID_SATELLITE);
}

TEST(ClientChannel, NamesAMultiplexWithoutANetworkAfterItsFile) {
    TSL_REC_T multiplex = {};
    std::strcpy(multiplex.s_source, "recording.ts");
    EXPECT_EQ(toChannel({}, multiplex).multiplex, "recording.ts");
}

TEST(ClientChannel, ReadsTextsThatFillTheirBlockWithoutTerminator) {
    SVL_REC_T service = {};
    std::memset(service.s_service_name, 'x', sizeof service.s_service_name);
    EXPECT_EQ(toChannel(service, {}).name, std::string(256, 'x'));
}

TEST(ClientChannel, TypesFollowTheServiceDescriptorElseTheMask) {
    const auto type = [](uint8_t serviceType, uint32_t mask) {
        SVL_REC_T service = {};
        service.ui1_service_type = serviceType;
        service.ui4_nw_mask = mask;
        return std::string(name(toChannel(service, {}).type));
    };
    EXPECT_EQ(type(1, 0), "tv");
    EXPECT_EQ(type(22, 0), "tv");
    EXPECT_EQ(type(2, 0), "radio");
    EXPECT_EQ(type(10, 0), "radio");
    EXPECT_EQ(type(17, 0), "hd");
    EXPECT_EQ(type(25, 0), "hd");
    EXPECT_EQ(type(31, 0), "uhd");
    EXPECT_EQ(type(12, 0), "other");
    EXPECT_EQ(type(0, SB_VNET_RADIO_SERVICE), "radio");
    EXPECT_EQ(type(0, SB_VNET_TV_SERVICE), "tv");
}

TEST(ClientChannel, MediaHaveNames) {
    const auto medium = [](uint8_t value) {
        SVL_REC_T service = {};
        service.ui1_brdcst_medium = value;
        return std::string(name(toChannel(service, {}).medium));
    };
    EXPECT_EQ(medium(BRDCST_MEDIUM_DIG_TERRESTRIAL), "terrestrial");
    EXPECT_EQ(medium(BRDCST_MEDIUM_DIG_CABLE), "cable");
    EXPECT_EQ(medium(BRDCST_MEDIUM_DIG_SATELLITE), "satellite");
    EXPECT_EQ(medium(200), "unknown");
}

TEST(ClientChannel, KeepsWellFormedUtf8) {
    for (const char* text :
         {"", "plain", "é", "中央电视台", "\xF0\x9F\x93\xBA", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_EQ(validUtf8(text), text);
    }
}

TEST(ClientChannel, ReplacesWhatIsNotUtf8) {
    const std::string bad = "\xEF\xBF\xBD";
    EXPECT_EQ(validUtf8("a\xFFz"), "a" + bad + "z");
    EXPECT_EQ(validUtf8("\xC3"), bad);                                // cut off at the end
    EXPECT_EQ(validUtf8("\xE4\xB8"), bad + bad);                      // cut off in the middle
    EXPECT_EQ(validUtf8("\xC0\xAF"), bad + bad);                      // overlong
    EXPECT_EQ(validUtf8("\xE0\x80\xAF"), bad + bad + bad);            // overlong
    EXPECT_EQ(validUtf8("\xED\xA0\x80"), bad + bad + bad);            // surrogate
    EXPECT_EQ(validUtf8("\xF4\x90\x80\x80"), bad + bad + bad + bad);  // beyond U+10FFFF
    EXPECT_EQ(validUtf8("\x80q"), bad + "q");
}

}  // namespace
}  // namespace qortv
