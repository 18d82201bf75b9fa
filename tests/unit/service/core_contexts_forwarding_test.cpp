/** The methods of power control and devices that only pass on: a row each. */
#include "core_contexts_fixture.h"
#include "forwarding.h"
#include "middleware/iom.h"
#include "middleware/pcl.h"

namespace {

struct Row {
    const char* function;
    void (*check)(QorTvApiImpl&, const char*);
};

template <auto Method, auto Function>
void check(QorTvApiImpl& impl, const char* name) {
    forwarding::Forwarding<decltype(Method), decltype(Function)>::template check<Function>(
            impl, Method, name);
}

// clang-format off
#define ROW(function) {#function, &check<&QorTvApiImpl::a_hidl_##function, &function>}
// clang-format on

const Row kRows[] = {
#include "core_rows_contexts.inc"
};

class ServiceCoreContextsForwarding : public CoreContextsTest,
                                      public testing::WithParamInterface<Row> {};

TEST_P(ServiceCoreContextsForwarding, passesArgumentsAndOutputsOn) {
    const Row& row = GetParam();
    const std::string method = std::string("a_hidl_") + row.function;
    row.check(*impl, row.function);
    EXPECT_EQ(log.take(),
              std::vector<LogLine>(4, debugLine("QorTvApiImpl(service)", method, method)))
            << "an entry line for each of the four calls";

    mTvApiDebug = 0;
    row.check(*impl, row.function);
    EXPECT_TRUE(log.take().empty());
}

INSTANTIATE_TEST_SUITE_P(, ServiceCoreContextsForwarding, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.function); });

}  // namespace
