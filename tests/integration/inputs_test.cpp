// Input sources, picture-and-picture, regions and frequencies: the service's interfaces as a real
// client calls them.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>

#include "middleware/broadcast.h"
#include "middleware/config.h"
#include "middleware/inputsource.h"
#include "middleware/multiview.h"
#include "middleware/records.h"
#include "middleware/result_codes.h"
#include "qortv/connect.h"
#include "support.h"
#include "vendor/corvanta/tv/qortvapi/1.0/IQorTvApiBroadcast.h"
#include "vendor/corvanta/tv/qortvapi/1.0/IQorTvApiConfig.h"
#include "vendor/corvanta/tv/qortvapi/1.0/IQorTvApiInputSrc.h"
#include "vendor/corvanta/tv/qortvapi/1.0/IQorTvApiMultiview.h"

namespace integration {
namespace {

using namespace vendor::corvanta::tv::qortvapi::V1_0;
using android::sp;
using qortv::check;

/** What a method answers beside the result, which has to be `expected`. */
template <typename Value, typename Call>
Value answerOf(const char* method, const Call& call, int32_t expected = TV_OK) {
    Value value{};
    int answers = 0;
    check(call([&](const auto& answered, int32_t result) {
              ++answers;
              EXPECT_EQ(result, expected) << method;
              value = Value(answered);
          }),
          method);
    EXPECT_EQ(answers, 1) << method;
    return value;
}

class IntegrationInputs : public testing::Test {
  protected:
    void SetUp() override {
        mStation.makeStreams();
        mStation.startAndWait();
        mStation.enter();
    }

    Station mStation;
};

class IntegrationInputSources : public IntegrationInputs {
  protected:
    void SetUp() override {
        IntegrationInputs::SetUp();
        mInputs = qortv::connect<IQorTvApiInputSrc>();
    }

    HIDL_QORTVAPI_INPUT_SOURCE_RECORD_T record(int32_t index, int32_t expected = TV_OK) {
        return answerOf<HIDL_QORTVAPI_INPUT_SOURCE_RECORD_T>(
                "get_sourcerec_byidx",
                [&](const auto& callback) {
                    return mInputs->a_hidl_a_qortvapi_inputsource_get_sourcerec_byidx(index,
                                                                                      callback);
                },
                expected);
    }
    std::string nameOn(const char* path, uint32_t length) {
        return answerOf<std::string>("get_currentsourcename_bypath", [&](const auto& callback) {
            return mInputs->a_hidl_a_qortvapi_inputsource_get_currentsourcename_bypath(length, path,
                                                                                       callback);
        });
    }
    bool hasVideo(const char* path) {
        return answerOf<bool>("isVideoSignalAvailable", [&](const auto& callback) {
            return mInputs->a_hidl_a_qortvapi_inputsource_isVideoSignalAvailable(path, callback);
        });
    }
    bool isBlocked(int32_t source) {
        return answerOf<bool>("is_source_block_bysourceid", [&](const auto& callback) {
            return mInputs->a_hidl_a_qortvapi_inputsource_is_source_block_bysourceid(source,
                                                                                     callback);
        });
    }

    sp<IQorTvApiInputSrc> mInputs;
};

TEST_F(IntegrationInputSources, HaveRecords) {
    EXPECT_EQ(qortv::valueOf(mInputs->a_hidl_a_qortvapi_inputsource_get_sourcetotalnum(), "total"),
              INPUT_SOURCE_COUNT);
    const auto hdmi = record(INPUT_SOURCE_HDMI_3);
    EXPECT_EQ(hdmi.source_id, INPUT_SOURCE_HDMI_3);
    EXPECT_EQ(hdmi.device_type, INPUT_DEVICE_TYPE_HDMI);
    EXPECT_EQ(hdmi.internal_index, 2);
    EXPECT_EQ(hdmi.name, "HDMI 3");
    EXPECT_EQ(hdmi.flags, uint32_t{INPUT_SOURCE_HAS_AUDIO | INPUT_SOURCE_DIGITAL});
    EXPECT_EQ(hdmi.connected, 0);
    EXPECT_EQ(record(INPUT_SOURCE_TV).connected, 1);
    EXPECT_EQ(record(-1, TV_NOT_FOUND).name, "");
}

TEST_F(IntegrationInputSources, AreShownAndNamed) {
    const int32_t source = INPUT_SOURCE_HDMI_3;
    EXPECT_EQ(nameOn("main", 256), "TV");
    EXPECT_EQ(qortv::valueOf(mInputs->a_hidl_a_qortvapi_inputsource_changesource_bysourceidandpath(
                                     source, "main"),
                             "changesource"),
              TV_OK);
    EXPECT_EQ(nameOn("main", 256), "HDMI 3");
    EXPECT_EQ(qortv::valueOf(mInputs->a_hidl_a_qortvapi_inputsource_set_userdefname_bysourceid(
                                     source, "Küche"),
                             "set_userdefname"),
              TV_OK);
    EXPECT_EQ(nameOn("main", 256), "Küche");
    EXPECT_EQ(nameOn("main", UINT32_MAX), "Küche");
    EXPECT_EQ(nameOn("main", 3), "K") << "cut at a character's edge";
}

TEST_F(IntegrationInputSources, HaveFlags) {
    EXPECT_FALSE(isBlocked(INPUT_SOURCE_VGA));
    EXPECT_EQ(
            qortv::valueOf(mInputs->a_hidl_a_qortvapi_inputsource_set_source_blockstatus_bysourceid(
                                   INPUT_SOURCE_VGA, true),
                           "set_source_blockstatus"),
            TV_OK);
    EXPECT_TRUE(isBlocked(INPUT_SOURCE_VGA));
    EXPECT_FALSE(isBlocked(INPUT_SOURCE_AV));

    EXPECT_EQ(qortv::valueOf(mInputs->a_hidl_a_qortvapi_inputsource_changesource_bysourceid(
                                     INPUT_SOURCE_AV),
                             "changesource"),
              TV_OK);
    EXPECT_FALSE(hasVideo("main"));
    EXPECT_EQ(qortv::valueOf(qortv::connect<IQorTvApiConfig>()->a_hidl_a_qortvapi_config_set_value(
                                     CONFIG_GROUP_GENERAL, "input.av.connected", 1, 0),
                             "set_value"),
              TV_OK);
    EXPECT_TRUE(hasVideo("main"));
}

TEST_F(IntegrationInputs, ASubVideoPlaysInItsRegion) {
    const auto views = qortv::connect<IQorTvApiMultiview>();
    const auto start = [&](uint32_t x, uint32_t y) {
        return qortv::valueOf(
                views->a_hidl_a_qortvapi_multiview_startSubVideo(INPUT_SOURCE_TV, {x, y, 481, 271}),
                "startSubVideo");
    };
    const auto state = [&] {
        return qortv::valueOf(views->a_hidl_a_qortvapi_multiview_get_video_state("sub"),
                              "get_video_state");
    };
    EXPECT_EQ(start(1439, 809), TV_NOT_FOUND) << "one picture only";
    EXPECT_EQ(qortv::valueOf(views->a_hidl_a_qortvapi_multiview_setNewTvMode(MULTIVIEW_MODE_PIP),
                             "setNewTvMode"),
              TV_OK);
    // Right into the corner of the screen, and beyond its edges.
    EXPECT_EQ(start(1440, 809), TV_INVALID_ARGUMENT);
    EXPECT_EQ(start(1439, 810), TV_INVALID_ARGUMENT);
    EXPECT_EQ(state(), 0);
    EXPECT_EQ(start(1439, 809), TV_OK);
    EXPECT_EQ(state(), 1);
    EXPECT_EQ(qortv::valueOf(views->a_hidl_a_qortvapi_multiview_getVideoResource("sub"),
                             "getVideoResource"),
              MULTIVIEW_RESOURCE_TUNER);
    EXPECT_EQ(qortv::valueOf(views->a_hidl_a_qortvapi_multiview_stopSubVideo(), "stopSubVideo"),
              TV_OK);
    EXPECT_EQ(state(), 0);
}

class IntegrationBroadcast : public IntegrationInputs {
  protected:
    void SetUp() override {
        IntegrationInputs::SetUp();
        mBroadcast = qortv::connect<IQorTvApiBroadcast>();
    }

    HIDL_QORTVAPI_SB_DVB_REGION_T region(uint16_t level, uint16_t parent, uint16_t index,
                                         int32_t expected = TV_OK) {
        return answerOf<HIDL_QORTVAPI_SB_DVB_REGION_T>(
                "get_target_regions",
                [&](const auto& callback) {
                    return mBroadcast->a_hidl_a_qortvapi_broadcast_get_target_regions(
                            level, parent, index, callback);
                },
                expected);
    }
    int32_t changeFrequency(const std::string& context, uint32_t khz, uint8_t medium) {
        HIDL_QORTVAPI_FREQ_INFO_T frequency{};
        frequency.frequency_khz = khz;
        frequency.brdcst_medium = medium;
        return qortv::valueOf(
                mBroadcast->a_hidl_a_qortvapi_broadcast_change_freq(context, frequency),
                "change_freq");
    }
    int32_t frequencyOf(const std::string& context, int32_t expected = TV_OK) {
        return answerOf<int32_t>(
                "get_connect_attr",
                [&](const auto& callback) {
                    return mBroadcast->a_hidl_a_qortvapi_broadcast_get_connect_attr(
                            context, BROADCAST_CONN_ATTR_FREQUENCY_KHZ, callback);
                },
                expected);
    }
    int32_t stop(const std::string& context) {
        return qortv::valueOf(mBroadcast->a_hidl_a_qortvapi_broadcast_sync_stop(context, true),
                              "sync_stop");
    }

    sp<IQorTvApiBroadcast> mBroadcast;
};

TEST_F(IntegrationBroadcast, TellsTargetRegions) {
    const auto bay = region(BROADCAST_REGION_TERTIARY, 21, 0);
    EXPECT_EQ(bay.depth, BROADCAST_REGION_TERTIARY);
    EXPECT_EQ(bay.primary, 2);
    EXPECT_EQ(bay.secondary, 21);
    EXPECT_NE(bay.tertiary, 0);
    EXPECT_EQ(bay.name, "Bay");
    EXPECT_EQ(region(BROADCAST_REGION_PRIMARY, 0, UINT16_MAX, TV_NOT_FOUND).name, "");
}

TEST_F(IntegrationBroadcast, GoesToAFrequency) {
    EXPECT_EQ(changeFrequency("main", 322'400, BRDCST_MEDIUM_DIG_CABLE), TV_OK);
    EXPECT_EQ(frequencyOf("main"), 322'000);
    EXPECT_EQ(changeFrequency("main", 322'400, BRDCST_MEDIUM_DIG_TERRESTRIAL), TV_NOT_FOUND);
    EXPECT_EQ(changeFrequency("main", 0, BRDCST_MEDIUM_DIG_CABLE), TV_INVALID_ARGUMENT);
    EXPECT_EQ(frequencyOf("main"), 322'000);
}

/** The interface cuts the names of contexts to five characters, and the television knows them. */
TEST_F(IntegrationBroadcast, KnowsContextsByTheirWholeNames) {
    for (const std::string name : {"main", "sub"}) {
        const std::string context = name + "_svctx";
        EXPECT_EQ(changeFrequency(context, 322'000, BRDCST_MEDIUM_DIG_CABLE), TV_OK);
        EXPECT_EQ(frequencyOf(context), 322'000);
        EXPECT_EQ(frequencyOf(name), 322'000) << "the same window";
        EXPECT_EQ(stop(context), TV_OK);
        EXPECT_EQ(frequencyOf(name, TV_NOT_FOUND), -1);
    }
    EXPECT_EQ(stop("m"), TV_NOT_FOUND);
    EXPECT_EQ(stop("third"), TV_NOT_FOUND);
}

}  // namespace
}  // namespace integration
