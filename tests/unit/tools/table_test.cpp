// Tables of qortvctl.
#include "qortvctl/terminal/table.h"

#include <gtest/gtest.h>

#include "qortvctl/text/utf8.h"

namespace qortvctl {
namespace {

class ToolTable : public testing::Test {
  protected:
    static void SetUpTestSuite() { useUtf8(); }
};

TEST_F(ToolTable, AlignsColumnsByWidth) {
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

TEST_F(ToolTable, ReplacesControlCharacters) {
    Table table({{"NAME"}});
    table.add({"a\x1B[2Jb\nc"});
    testing::internal::CaptureStdout();
    table.print();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "NAME\na?[2Jb?c\n");
}

}  // namespace
}  // namespace qortvctl
