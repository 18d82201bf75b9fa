// What qortvctl cam shows of the module, and how it reads answers from a pipe and a terminal.
#include <gtest/gtest.h>
#include <pty.h>
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "cam_input.h"
#include "cam_output.h"
#include "output.h"

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

TEST(ClientCamOutput, AMenuIsNumberedAndHarmless) {
    prepareOutput();
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

TEST(ClientCamOutput, OtherEventsAreSentences) {
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

TEST(ClientCamOutput, JsonKeepsEverything) {
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

/** Standard input, replaced while a test runs. */
class ClientCamInput : public testing::Test {
  protected:
    ClientCamInput() : mSaved(dup(STDIN_FILENO)) {}
    ~ClientCamInput() override {
        dup2(mSaved, STDIN_FILENO);
        close(mSaved);
        finish();
    }

    void usePipe() {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        replace(ends[0], ends[1]);
    }

    void useTerminal() {
        int master = -1;
        int slave = -1;
        ASSERT_EQ(openpty(&master, &slave, nullptr, nullptr, nullptr), 0);
        replace(slave, master);
    }

    void type(const std::string& text) {
        ASSERT_EQ(write(mOther, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    void finish() {
        if (mOther >= 0) close(mOther);
        mOther = -1;
    }

    /** Whether the terminal shows what is typed. */
    bool echoes() const {
        termios state = {};
        EXPECT_EQ(tcgetattr(mOther, &state), 0);
        return (state.c_lflag & ECHO) != 0;
    }

  private:
    void replace(int input, int other) {
        dup2(input, STDIN_FILENO);
        close(input);
        mOther = other;
    }

    const int mSaved;
    int mOther = -1;
};

TEST_F(ClientCamInput, APipeGivesItsLinesAndItsLastRest) {
    usePipe();
    CamInput input;
    EXPECT_FALSE(input.isTerminal());
    EXPECT_EQ(input.takeLine(), std::nullopt);
    type("one\ntw\ro\r\n\nth");
    input.read();
    EXPECT_EQ(input.takeLine(), "one");
    EXPECT_EQ(input.takeLine(), "tw\ro") << "lines of other systems end with a return too";
    EXPECT_EQ(input.takeLine(), "");
    EXPECT_EQ(input.takeLine(), std::nullopt);
    type("ree");
    finish();
    input.read();
    EXPECT_EQ(input.takeLine(), std::nullopt);
    EXPECT_FALSE(input.ended());
    input.read();
    EXPECT_FALSE(input.ended());
    EXPECT_EQ(input.takeLine(), "three");
    EXPECT_EQ(input.takeLine(), std::nullopt);
    EXPECT_TRUE(input.ended());
}

TEST_F(ClientCamInput, ALineWithoutEndIsAnError) {
    usePipe();
    CamInput input;
    const std::string some(4096, 'x');
    EXPECT_THROW(
            for (int i = 0; i < 20; ++i) {
                type(some);
                input.read();
            },
            std::runtime_error);
}

TEST_F(ClientCamInput, ATerminalDoesNotShowWhatIsTypedBlindly) {
    useTerminal();
    ASSERT_TRUE(echoes());
    {
        CamInput input;
        EXPECT_TRUE(input.isTerminal());
        EXPECT_TRUE(echoes());
        input.setBlind(true);
        EXPECT_FALSE(echoes());
        type("4815\n");
        input.read();
        EXPECT_EQ(input.takeLine(), "4815");
        input.setBlind(false);
        EXPECT_TRUE(echoes());
        input.setBlind(true);
        EXPECT_FALSE(echoes());
    }
    EXPECT_TRUE(echoes()) << "left as it was found";
}

TEST_F(ClientCamInput, WhatWasTypedForOneQuestionIsNotGivenToAnother) {
    useTerminal();
    CamInput input;
    input.setBlind(true);
    type("4815\n16");
    input.read();
    input.setBlind(false);
    EXPECT_EQ(input.takeLine(), std::nullopt);
    type("1\n");
    input.read();
    EXPECT_EQ(input.takeLine(), "1");
}

TEST_F(ClientCamInput, IsBlindAgainAfterTheTerminalWasSomebodyElses) {
    useTerminal();
    CamInput input;
    termios sane = {};
    ASSERT_EQ(tcgetattr(STDIN_FILENO, &sane), 0);
    input.setBlind(true);
    ASSERT_EQ(tcsetattr(STDIN_FILENO, TCSANOW, &sane), 0);
    EXPECT_TRUE(echoes());
    input.restoreBlindness();
    EXPECT_FALSE(echoes());
}

}  // namespace
}  // namespace qortvctl
