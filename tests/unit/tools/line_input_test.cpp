// How qortvctl reads lines from a pipe and from a terminal.
#include "qortvctl/terminal/line_input.h"

#include <gtest/gtest.h>
#include <pty.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

namespace qortvctl {
namespace {

/** Replaces standard input while a test runs, by a pipe or a terminal of its own. */
class ToolLineInput : public testing::Test {
  protected:
    ToolLineInput() : mSaved(dup(STDIN_FILENO)) {}
    ~ToolLineInput() override {
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

TEST_F(ToolLineInput, APipeGivesItsLinesAndAnUnfinishedLastOne) {
    usePipe();
    LineInput input;
    EXPECT_FALSE(input.isTerminal());
    EXPECT_EQ(input.takeLine(), std::nullopt);
    type("one\ntw\ro\r\n\nth");
    input.read();
    EXPECT_EQ(input.takeLine(), "one");
    EXPECT_EQ(input.takeLine(), "tw\ro") << "only the return at the end of a line is removed";
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

TEST_F(ToolLineInput, ALineWithoutEndIsAnError) {
    usePipe();
    LineInput input;
    const std::string some(4096, 'x');
    EXPECT_THROW(
            for (int i = 0; i < 20; ++i) {
                type(some);
                input.read();
            },
            std::runtime_error);
}

TEST_F(ToolLineInput, ATerminalWithoutEchoShowsNothing) {
    useTerminal();
    ASSERT_TRUE(echoes());
    {
        LineInput input;
        EXPECT_TRUE(input.isTerminal());
        EXPECT_TRUE(echoes());
        input.setEcho(false);
        EXPECT_FALSE(echoes());
        type("4815\n");
        input.read();
        EXPECT_EQ(input.takeLine(), "4815");
        input.setEcho(true);
        EXPECT_TRUE(echoes());
        input.setEcho(false);
        EXPECT_FALSE(echoes());
    }
    EXPECT_TRUE(echoes()) << "left as it was found";
}

TEST_F(ToolLineInput, WhatWasTypedForOneQuestionIsNotGivenToAnother) {
    useTerminal();
    LineInput input;
    input.setEcho(false);
    type("4815\n16");
    input.read();
    input.setEcho(true);
    EXPECT_EQ(input.takeLine(), std::nullopt);
    type("1\n");
    input.read();
    EXPECT_EQ(input.takeLine(), "1");
}

TEST_F(ToolLineInput, TheEchoIsOffAgainAfterAnotherProgramUsedTheTerminal) {
    useTerminal();
    LineInput input;
    termios sane = {};
    ASSERT_EQ(tcgetattr(STDIN_FILENO, &sane), 0);
    input.setEcho(false);
    ASSERT_EQ(tcsetattr(STDIN_FILENO, TCSANOW, &sane), 0);
    EXPECT_TRUE(echoes());
    input.restoreEcho();
    EXPECT_FALSE(echoes());
}

}  // namespace
}  // namespace qortvctl
