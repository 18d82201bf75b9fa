/** The methods of the domain interfaces that only pass on: a row each. */
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
#include "forwarding.h"
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
#include "service_fixture.h"

namespace {

using Texts = std::vector<std::string>;

struct Row {
    const char* implementation;
    const char* function;
    void (*check)(const char*);
    Texts (*entry_lines)(const std::string& format, const std::string& method);
    const char* entry_format;
};

// A row: class, middleware function, entry line. In the entry line "%s" stands for the method's
// name and each "%d" for the next number among its arguments; an empty one is not written.
// clang-format off
#define ROW(class, function, entry) \
    {#class, #function, &forwarding::check<class, &class::a_hidl_##function, &function>, \
     &forwarding::entryLines<&class::a_hidl_##function, &function>, entry}
// clang-format on

const Row kRows[] = {
#include "domain_rows_broadcast.inc"
#include "domain_rows_config.inc"
#include "domain_rows_event.inc"
#include "domain_rows_input_source.inc"
#include "domain_rows_multiview.inc"
#include "domain_rows_pvrbrowser.inc"
#include "domain_rows_rating.inc"
#include "domain_rows_record.inc"
#include "domain_rows_scan.inc"
#include "domain_rows_time.inc"
#include "domain_rows_timeshift.inc"
};

class ServiceDomainForwarding : public ServiceTest, public testing::WithParamInterface<Row> {};

TEST_P(ServiceDomainForwarding, passesArgumentsAndOutputsOn) {
    const Row& row = GetParam();
    const std::string implementation = row.implementation;
    // The configuration logs as the core interface does.
    const bool is_config = implementation == "QorTvApiConfigImpl";
    const std::string tag = (is_config ? "QorTvApiImpl" : implementation) + "(service)";
    const std::string method = std::string("a_hidl_") + row.function;
    std::vector<LogLine> lines = {debugLine(tag, implementation, implementation)};
    for (const std::string& text : row.entry_lines(row.entry_format, method)) {
        lines.push_back(debugLine(tag, method, text));
    }
    row.check(row.function);
    EXPECT_EQ(log.take(), lines) << "one of the constructor and one for each call";

    mTvApiDebug = 0;
    row.check(row.function);
    EXPECT_TRUE(log.take().empty());
}

INSTANTIATE_TEST_SUITE_P(, ServiceDomainForwarding, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.function); });

}  // namespace
