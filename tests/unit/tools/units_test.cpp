// Durations and sizes as qortvctl shows them.
#include "qortvctl/text/units.h"

#include <gtest/gtest.h>

namespace qortvctl {
namespace {

using std::chrono::seconds;

TEST(ToolUnits, DurationsAreShownAsAClockShowsThem) {
    EXPECT_EQ(durationText(seconds{0}), "0:00");
    EXPECT_EQ(durationText(seconds{59}), "0:59");
    EXPECT_EQ(durationText(seconds{3599}), "59:59");
    EXPECT_EQ(durationText(seconds{3600}), "1:00:00");
    EXPECT_EQ(durationText(seconds{360000}), "100:00:00");
}

TEST(ToolUnits, SizesHaveTheUnitThatFits) {
    EXPECT_EQ(sizeText(0), "0 B");
    EXPECT_EQ(sizeText(999), "999 B");
    EXPECT_EQ(sizeText(1000), "1 kB");
    EXPECT_EQ(sizeText(999499), "999 kB");
    EXPECT_EQ(sizeText(999500), "1.0 MB");
    EXPECT_EQ(sizeText(999949999), "999.9 MB");
    EXPECT_EQ(sizeText(999950000), "1.0 GB");
    EXPECT_EQ(sizeText(12345678901), "12.3 GB");
}

}  // namespace
}  // namespace qortvctl
