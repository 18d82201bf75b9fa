/** The plain bridges of the channel-list interface: a row each. */
#include "QorTvApiChannelListImpl.h"
#include "middleware/channellist.h"
#include "support/forwarding.h"
#include "support/service_fixture.h"

namespace {

// clang-format off
#define ROW(function) \
    forwarding::bridge<QorTvApiChannelListImpl, &QorTvApiChannelListImpl::a_hidl_##function, \
                       &function>(#function)
// clang-format on

const forwarding::Bridge kBridges[] = {
#include "rows/channel_list.inc"
};

class ServiceChannelListForwarding : public ServiceTest,
                                     public testing::WithParamInterface<forwarding::Bridge> {};

TEST_P(ServiceChannelListForwarding, passesArgumentsAndOutputsOn) {
    const forwarding::Bridge& bridge = GetParam();
    const std::string method = std::string("a_hidl_") + bridge.function;
    forwarding::checkNew<QorTvApiChannelListImpl>(bridge);
    EXPECT_EQ(log.take(),
              std::vector<LogLine>(forwarding::kCalls,
                                   debugLine("QorTvApiChannelListImpl(service)", method, method)))
            << "an entry line for each call";

    mTvApiDebug = 0;
    forwarding::checkNew<QorTvApiChannelListImpl>(bridge);
    EXPECT_TRUE(log.take().empty());
}

INSTANTIATE_TEST_SUITE_P(, ServiceChannelListForwarding, testing::ValuesIn(kBridges),
                         [](const auto& row) { return std::string(row.param.function); });

TEST(ServiceChannelListRecords, haveTheSizesOfTheContract) {
    EXPECT_EQ(sizeof(SVL_REC_T), 396u);
    EXPECT_EQ(sizeof(TSL_REC_T), 628u);
    EXPECT_EQ(sizeof(SATL_REC_T), 276u);
    EXPECT_EQ(sizeof(NWL_REC_T), 304u);
    EXPECT_EQ(sizeof(BSL_REC_T), 32u);
    EXPECT_EQ(sizeof(BSL_HEADER_T), 16u);
    EXPECT_EQ(sizeof(FAV_LIST_T), 820u);
    EXPECT_EQ(sizeof(CHANNEL_QUERY_T), 12u);
    EXPECT_EQ(sizeof(CHANNEL_IF_BLOCK_T), 8u);
}

}  // namespace
