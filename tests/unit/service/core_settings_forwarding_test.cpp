/** The methods of the set and of its services that only pass on: a row each. */
#include "core_fixture.h"
#include "forwarding.h"
#include "middleware/audio_info.h"
#include "middleware/av_mode.h"
#include "middleware/banner.h"
#include "middleware/cc.h"
#include "middleware/eas.h"
#include "middleware/event_atsc.h"
#include "middleware/ewspa.h"
#include "middleware/mds.h"
#include "middleware/network.h"
#include "middleware/oad.h"
#include "middleware/parser.h"
#include "middleware/pwddlg.h"
#include "middleware/screenmode.h"
#include "middleware/screensaver.h"
#include "middleware/subtitle.h"
#include "middleware/teletext.h"
#include "middleware/upgrade.h"
#include "middleware/util.h"
#include "middleware/videoinfo.h"
#include "middleware/volctrl.h"

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
#include "core_rows_settings.inc"
};

class ServiceCoreSettingsForwarding : public CoreTest, public testing::WithParamInterface<Row> {};

TEST_P(ServiceCoreSettingsForwarding, passesArgumentsAndOutputsOn) {
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

INSTANTIATE_TEST_SUITE_P(, ServiceCoreSettingsForwarding, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.function); });

}  // namespace
