// The width and the letter case of UTF-8 texts.
#include "qortvctl/text/utf8.h"

#include <gtest/gtest.h>

namespace qortvctl {
namespace {

class ToolUtf8 : public testing::Test {
  protected:
    static void SetUpTestSuite() { useUtf8(); }
};

TEST_F(ToolUtf8, MeasuresColumnsOfATerminal) {
    EXPECT_EQ(displayWidth(""), 0U);
    EXPECT_EQ(displayWidth("plain"), 5U);
    EXPECT_EQ(displayWidth("Télé"), 4U);
    EXPECT_EQ(displayWidth("e\xCC\x81"), 1U);  // combining accent
    EXPECT_EQ(displayWidth("中央"), 4U);       // wide
    EXPECT_EQ(displayWidth("a\xFFz"), 3U);     // stray byte
}

TEST_F(ToolUtf8, LowersLettersWithAccents) {
    EXPECT_EQ(lowerCase("ÄRZTE im TV 2"), "ärzte im tv 2");
    EXPECT_EQ(lowerCase("ΣKAÏ"), "σkaï");
}

}  // namespace
}  // namespace qortvctl
