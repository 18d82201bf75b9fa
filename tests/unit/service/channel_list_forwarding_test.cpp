/** The channel-list methods that only pass on: a row each. */
#include "QorTvApiChannelListImpl.h"
#include "forwarding.h"
#include "middleware/channellist.h"
#include "service_fixture.h"

namespace {

struct Row {
    const char* function;
    void (*check)(const char*);
};

template <auto Method, auto Function>
constexpr auto kCheck = &forwarding::check<QorTvApiChannelListImpl, Method, Function>;

// clang-format off
#define ROW(function) {#function, kCheck<&QorTvApiChannelListImpl::a_hidl_##function, &function>}
// clang-format on

const Row kRows[] = {
#include "channel_list_rows.inc"
};

class ServiceChannelListForwarding : public ServiceTest, public testing::WithParamInterface<Row> {};

TEST_P(ServiceChannelListForwarding, passesArgumentsAndOutputsOn) {
    const Row& row = GetParam();
    const std::string method = std::string("a_hidl_") + row.function;
    row.check(row.function);
    const std::vector<LogLine> lines = log.take();
    ASSERT_EQ(lines.size(), 4u) << "an entry line for each of the four calls";
    EXPECT_EQ(lines[0], debugLine("QorTvApiChannelListImpl(service)", method, method));

    mTvApiDebug = 0;
    row.check(row.function);
    EXPECT_TRUE(log.take().empty());
}

INSTANTIATE_TEST_SUITE_P(, ServiceChannelListForwarding, testing::ValuesIn(kRows),
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
