/** The plain bridges of the core interface: a row each. */
#include "middleware/apptv.h"
#include "middleware/audio_info.h"
#include "middleware/av_mode.h"
#include "middleware/banner.h"
#include "middleware/bml.h"
#include "middleware/cc.h"
#include "middleware/eas.h"
#include "middleware/event_atsc.h"
#include "middleware/ewspa.h"
#include "middleware/ginga.h"
#include "middleware/hbbtv.h"
#include "middleware/highlevel.h"
#include "middleware/iom.h"
#include "middleware/mds.h"
#include "middleware/network.h"
#include "middleware/oad.h"
#include "middleware/parser.h"
#include "middleware/pcl.h"
#include "middleware/pwddlg.h"
#include "middleware/screenmode.h"
#include "middleware/screensaver.h"
#include "middleware/subtitle.h"
#include "middleware/teletext.h"
#include "middleware/upgrade.h"
#include "middleware/util.h"
#include "middleware/videoinfo.h"
#include "middleware/volctrl.h"
#include "support/core_fixture.h"
#include "support/forwarding.h"

namespace {

struct Row {
    forwarding::Bridge bridge;
    const char* tag;
    const char* prefix;  // of the function that writes the entry line
};

// clang-format off
#define BRIDGE(function) \
    forwarding::bridge<QorTvApiImpl, &QorTvApiImpl::a_hidl_##function, &function>(#function)
#define ROW(function) {BRIDGE(function), "QorTvApiImpl(service)", "a_hidl_"}
#define HBBTV_ROW(function) {BRIDGE(function), "hh_hbbtv", "hh_"}
// clang-format on

const Row kRows[] = {
#include "rows/core_applications.inc"
#include "rows/core_contexts.inc"
#include "rows/core_settings.inc"
};

class ServiceCoreForwarding : public CoreTest, public testing::WithParamInterface<Row> {};

TEST_P(ServiceCoreForwarding, passesArgumentsAndOutputsOn) {
    const Row& row = GetParam();
    const std::string writer = std::string(row.prefix) + row.bridge.function;
    forwarding::check(row.bridge, impl.get());
    EXPECT_EQ(log.take(),
              std::vector<LogLine>(forwarding::kCalls, debugLine(row.tag, writer, writer)))
            << "an entry line for each call";

    mTvApiDebug = 0;
    forwarding::check(row.bridge, impl.get());
    EXPECT_TRUE(log.take().empty());
}

INSTANTIATE_TEST_SUITE_P(, ServiceCoreForwarding, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.bridge.function); });

}  // namespace
