// Which channels qortvctl takes a number or a name for.
#include "qortvctl/parsing/channel_match.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "qortvctl/text/utf8.h"

namespace qortvctl {
namespace {

class ToolChannelMatch : public testing::Test {
  protected:
    static void SetUpTestSuite() { useUtf8(); }
};

TEST_F(ToolChannelMatch, ANumberComesBeforeANameAndANameBeforeItsPart) {
    std::vector<qortv::Channel> channels(4);
    channels[0].number = 1;
    channels[0].name = "24";
    channels[1].number = 24;
    channels[1].name = "Sport";
    channels[2].number = 3;
    channels[2].name = "Sport Plus";
    channels[3].number = 24;
    channels[3].name = "\u0141\u00d3D\u0179 TV";
    const auto namesOf = [&](const char* text) {
        std::string names;
        for (const auto& channel : matchingChannels(channels, text)) names += channel.name + "|";
        return names;
    };
    EXPECT_EQ(namesOf("24"), "Sport|\u0141\u00d3D\u0179 TV|");
    EXPECT_EQ(namesOf("SPORT"), "Sport|");
    EXPECT_EQ(namesOf("port"), "Sport|Sport Plus|");
    EXPECT_EQ(namesOf("\u0142\u00f3d\u017a"), "\u0141\u00d3D\u0179 TV|");
    EXPECT_EQ(namesOf("nothing"), "");
    channels[0].name = "5";
    channels[1].name = "Sport 24";
    channels[1].number = 2;
    channels[3].number = 4;
    EXPECT_EQ(namesOf("5"), "5|") << "a whole name may be a number";
    EXPECT_EQ(namesOf("24"), "") << "a number is no part of a name";
    EXPECT_EQ(namesOf("t 24"), "Sport 24|");
}

}  // namespace
}  // namespace qortvctl
