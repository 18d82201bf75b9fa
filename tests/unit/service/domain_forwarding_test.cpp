/** The plain bridges of the domain interfaces: a row each. */
#include "QorTvApiBroadcastImpl.h"
#include "QorTvApiConfigImpl.h"
#include "QorTvApiEventImpl.h"
#include "QorTvApiInputSrcImpl.h"
#include "QorTvApiMultiviewImpl.h"
#include "QorTvApiPvrbrowserImpl.h"
#include "QorTvApiRatingImpl.h"
#include "QorTvApiRecordImpl.h"
#include "QorTvApiScanImpl.h"
#include "QorTvApiTimeImpl.h"
#include "QorTvApiTimeshiftImpl.h"
#include "middleware/broadcast.h"
#include "middleware/config.h"
#include "middleware/event.h"
#include "middleware/inputsource.h"
#include "middleware/mmp.h"
#include "middleware/multiview.h"
#include "middleware/rating.h"
#include "middleware/record.h"
#include "middleware/scan.h"
#include "middleware/time.h"
#include "middleware/timeshift.h"
#include "support/forwarding.h"
#include "support/service_fixture.h"

namespace {

struct Row {
    const char* implementation;
    forwarding::Bridge bridge;
    void (*check_new)(const forwarding::Bridge& bridge);
    const char* entry_format;
};

// A row: class, middleware function, entry line. In the entry line "%s" stands for the method's
// name and each "%d" for the next number among its arguments; an empty one is not written.
// clang-format off
#define ROW(class, function, entry) \
    {#class, forwarding::bridge<class, &class::a_hidl_##function, &function>(#function), \
     &forwarding::checkNew<class>, entry}
// clang-format on

const Row kRows[] = {
#include "rows/broadcast.inc"
#include "rows/config.inc"
#include "rows/event.inc"
#include "rows/input_source.inc"
#include "rows/multiview.inc"
#include "rows/pvrbrowser.inc"
#include "rows/rating.inc"
#include "rows/record.inc"
#include "rows/scan.inc"
#include "rows/time.inc"
#include "rows/timeshift.inc"
};

class ServiceDomainForwarding : public ServiceTest, public testing::WithParamInterface<Row> {};

TEST_P(ServiceDomainForwarding, passesArgumentsAndOutputsOn) {
    const Row& row = GetParam();
    const std::string implementation = row.implementation;
    // The configuration logs as the core interface does.
    const bool is_config = implementation == "QorTvApiConfigImpl";
    const std::string tag = (is_config ? "QorTvApiImpl" : implementation) + "(service)";
    const std::string method = std::string("a_hidl_") + row.bridge.function;
    std::vector<LogLine> lines = {debugLine(tag, implementation, implementation)};
    for (const std::string& text : forwarding::entryLines(row.bridge, row.entry_format, method)) {
        lines.push_back(debugLine(tag, method, text));
    }
    row.check_new(row.bridge);
    EXPECT_EQ(log.take(), lines) << "one of the constructor and one for each call";

    mTvApiDebug = 0;
    row.check_new(row.bridge);
    EXPECT_TRUE(log.take().empty());
}

INSTANTIATE_TEST_SUITE_P(, ServiceDomainForwarding, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.bridge.function); });

}  // namespace
