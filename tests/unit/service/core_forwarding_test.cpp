/** The methods of the core interface that only pass on: a row each. */
#include "core_fixture.h"
#include "forwarding.h"
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

namespace {

struct Row {
    const char* function;
    void (*check)(QorTvApiImpl&, const char*);
    const char* tag;
    const char* prefix;  // of the function that writes the entry line
};

template <auto Method, auto Function>
void check(QorTvApiImpl& impl, const char* name) {
    forwarding::Forwarding<decltype(Method), decltype(Function)>::template check<Function>(
            impl, Method, name);
}

// clang-format off
#define ROW(function) \
    {#function, &check<&QorTvApiImpl::a_hidl_##function, &function>, "QorTvApiImpl(service)", "a_hidl_"}
#define HBBTV_ROW(function) \
    {#function, &check<&QorTvApiImpl::a_hidl_##function, &function>, "hh_hbbtv", "hh_"}
// clang-format on

const Row kRows[] = {
#include "core_rows_applications.inc"
#include "core_rows_contexts.inc"
#include "core_rows_settings.inc"
};

class ServiceCoreForwarding : public CoreTest, public testing::WithParamInterface<Row> {};

TEST_P(ServiceCoreForwarding, passesArgumentsAndOutputsOn) {
    const Row& row = GetParam();
    const std::string writer = std::string(row.prefix) + row.function;
    row.check(*impl, row.function);
    EXPECT_EQ(log.take(), std::vector<LogLine>(4, debugLine(row.tag, writer, writer)))
            << "an entry line for each of the four calls";

    mTvApiDebug = 0;
    row.check(*impl, row.function);
    EXPECT_TRUE(log.take().empty());
}

INSTANTIATE_TEST_SUITE_P(, ServiceCoreForwarding, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.function); });

}  // namespace
