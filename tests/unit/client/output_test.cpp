// Tables and letter case of qortvctl.
#include "output.h"

#include <gtest/gtest.h>

namespace qortvctl {
namespace {

class ClientOutput : public testing::Test {
  protected:
    static void SetUpTestSuite() { prepareOutput(); }
};

TEST_F(ClientOutput, MeasuresWhatATerminalShows) {
    EXPECT_EQ(displayWidth(""), 0U);
    EXPECT_EQ(displayWidth("plain"), 5U);
    EXPECT_EQ(displayWidth("Télé"), 4U);
    EXPECT_EQ(displayWidth("e\xCC\x81"), 1U);  // combining accent
    EXPECT_EQ(displayWidth("中央"), 4U);       // wide
    EXPECT_EQ(displayWidth("a\xFFz"), 3U);     // stray byte
}

TEST_F(ClientOutput, LowersLettersWithAccents) {
    EXPECT_EQ(lowerCase("ÄRZTE im TV 2"), "ärzte im tv 2");
    EXPECT_EQ(lowerCase("ΣKAÏ"), "σkaï");
}

TEST_F(ClientOutput, AlignsColumnsByWidth) {
    Table table({{"NO", Table::Align::kRight}, {"NAME"}, {"END"}});
    table.add({"1", "Télé", "x"});
    table.add({"100", "中央台", "y"});
    table.add({"7", "last", ""});
    testing::internal::CaptureStdout();
    table.print();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              " NO  NAME    END\n"
              "  1  Télé    x\n"
              "100  中央台  y\n"
              "  7  last\n");
}

TEST_F(ClientOutput, ShowsControlCharactersHarmless) {
    Table table({{"NAME"}});
    table.add({"a\x1B[2Jb\nc"});
    testing::internal::CaptureStdout();
    table.print();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "NAME\na?[2Jb?c\n");
}

}  // namespace
}  // namespace qortvctl
