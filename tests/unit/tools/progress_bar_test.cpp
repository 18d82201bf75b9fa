// The progress bar of qortvctl.
#include "qortvctl/terminal/progress_bar.h"

#include <gtest/gtest.h>

#include <string>

#include "qortvctl/text/utf8.h"

namespace qortvctl {
namespace {

class ToolProgressBar : public testing::Test {
  protected:
    static void SetUpTestSuite() { useUtf8(); }
};

TEST_F(ToolProgressBar, TheBarTakesTheColumnsThatAreLeft) {
    EXPECT_EQ(progressLine("Scan", 50, "4 tv", 30), "Scan [#####......]  50 %  4 tv");
    EXPECT_EQ(progressLine("Scan", 0, "", 25), "Scan [..........]   0 %  ");
    EXPECT_EQ(progressLine("Scan", 100, "", 25), "Scan [##########] 100 %  ");
    EXPECT_EQ(progressLine("Scan", 4000000000U, "", 25), "Scan [##########] 100 %  ");
    EXPECT_EQ(displayWidth(progressLine("Scan", 1, "", 500)), 55U) << "longer bars say no more";
}

TEST_F(ToolProgressBar, TheBarIsNeverWiderThanTheTerminal) {
    const std::string wide = "\u4e2d\u592e\u7535\u89c6";  // two columns each
    for (size_t columns = 0; columns < 60; ++columns) {
        EXPECT_LE(displayWidth(progressLine("Scan", 33, wide, columns)), columns);
    }
    EXPECT_EQ(progressLine("Scan", 33, wide, 17),
              "Scan  33 %  "
              "\u4e2d\u592e");
    EXPECT_EQ(progressLine("Scan", 33, "a\x1b[2J", 17), "Scan  33 %  a?[2J");
}

}  // namespace
}  // namespace qortvctl
