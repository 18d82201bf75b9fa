// Events of the CAM as qortvctl shows them.
#include "qortvctl/presentation/cam_event_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "qortvctl/text/utf8.h"

namespace qortvctl {
namespace {

using Lines = std::vector<std::string>;

qortv::CamMenu menu() {
    qortv::CamMenu shown;
    shown.id = 5;
    shown.title = "Title";
    shown.bottom = "";
    shown.items = {"one", "tw\x1B[2Jo"};
    return shown;
}

TEST(ToolCamEventText, AMenuIsNumberedAndSafeForATerminal) {
    useUtf8();
    EXPECT_EQ(toLines(menu()), (Lines{"Title", "  1  one", "  2  tw?[2Jo"}));
    auto shown = menu();
    shown.items.assign(10, "x");
    shown.subtitle = "Sub";
    shown.bottom = "End";
    const Lines lines = toLines(shown);
    ASSERT_EQ(lines.size(), 13U);
    EXPECT_EQ(lines[1], "Sub");
    EXPECT_EQ(lines[2], "   1  x");
    EXPECT_EQ(lines[11], "  10  x");
    EXPECT_EQ(lines[12], "End");
    EXPECT_EQ(toLines(qortv::CamMenu{}), (Lines{"  (no items)"}));
    EXPECT_EQ(toLines(qortv::CamList{menu()}), (Lines{"Title", "  one", "  tw?[2Jo"}));
}

TEST(ToolCamEventText, OtherEventsAreSentences) {
    using By = qortv::CamClosed::By;
    using Kind = qortv::CamFault::Kind;
    EXPECT_EQ(toLines(qortv::CamEnquiry{1, "Code?", 4, true}), Lines{"Code?"});
    EXPECT_EQ(toLines(qortv::CamEnquiry{}), Lines{});
    EXPECT_EQ(toLines(qortv::CamClosed{By::kHost}), Lines{"the dialogue is over"});
    EXPECT_EQ(toLines(qortv::CamClosed{By::kRemoval}), Lines{"the dialogue broke off"});
    EXPECT_EQ(toLines(qortv::CamCard{true}), Lines{"a CAM was inserted"});
    EXPECT_EQ(toLines(qortv::CamCard{false}), Lines{"the CAM was removed"});
    EXPECT_EQ(toLines(qortv::CamPinReply{qortv::CamPin::kLocked}), Lines{"PIN locked"});
    EXPECT_EQ(toLines(qortv::CamUpgrade{7}), Lines{"firmware upgrade to version 7"});
    EXPECT_EQ(toLines(qortv::CamUpgradeProgress{40}), Lines{"firmware upgrade: 40 %"});
    EXPECT_EQ(toLines(qortv::CamFault{Kind::kUnusable, 0}), Lines{"the CAM cannot be used"});
    EXPECT_EQ(toLines(qortv::CamFault{Kind::kUpgradeBroken, 40}),
              Lines{"the firmware upgrade broke off at 40 %"});
}

TEST(ToolCamEventText, JsonKeepsEverything) {
    using By = qortv::CamClosed::By;
    using Kind = qortv::CamFault::Kind;
    EXPECT_EQ(toJsonLine(menu()),
              R"({"event":"menu","id":5,"title":"Title","subtitle":null,"bottom":"",)"
              R"("items":["one","tw\u001b[2Jo"]})");
    EXPECT_EQ(toJsonLine(qortv::CamList{}),
              R"({"event":"list","id":0,"title":null,"subtitle":null,"bottom":null,"items":[]})");
    EXPECT_EQ(toJsonLine(qortv::CamEnquiry{1, "Code?", 4, true}),
              R"({"event":"enquiry","id":1,"text":"Code?","answerLength":4,"blind":true})");
    EXPECT_EQ(toJsonLine(qortv::CamClosed{By::kModule}), R"({"event":"closed","by":"module"})");
    EXPECT_EQ(toJsonLine(qortv::CamClosed{By::kHost}), R"({"event":"closed","by":"host"})");
    EXPECT_EQ(toJsonLine(qortv::CamClosed{By::kRemoval}), R"({"event":"closed","by":"removal"})");
    EXPECT_EQ(toJsonLine(qortv::CamCard{true}), R"({"event":"inserted"})");
    EXPECT_EQ(toJsonLine(qortv::CamCard{false}), R"({"event":"removed"})");
    EXPECT_EQ(toJsonLine(qortv::CamPinReply{qortv::CamPin::kRight}),
              R"({"event":"pin","state":"right"})");
    EXPECT_EQ(toJsonLine(qortv::CamUpgrade{7}), R"({"event":"upgrade","version":7})");
    EXPECT_EQ(toJsonLine(qortv::CamUpgradeProgress{40}),
              R"({"event":"upgradeProgress","percent":40})");
    EXPECT_EQ(toJsonLine(qortv::CamFault{Kind::kUnusable, 0}), R"({"event":"unusable"})");
    EXPECT_EQ(toJsonLine(qortv::CamFault{Kind::kUpgradeBroken, 40}),
              R"({"event":"upgradeBroken","percent":40})");
}

}  // namespace
}  // namespace qortvctl
