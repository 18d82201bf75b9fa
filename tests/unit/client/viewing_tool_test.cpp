// What qortvctl makes of scans and channels: the progress bar, the matching, the waiting.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <string>
#include <thread>
#include <vector>

#include "channel_choice.h"
#include "event_queue.h"
#include "output.h"
#include "progress_bar.h"
#include "wake_up.h"

namespace qortvctl {
namespace {

using std::chrono::steady_clock;

class ViewingTool : public testing::Test {
  protected:
    static void SetUpTestSuite() { prepareOutput(); }
};

TEST_F(ViewingTool, TheBarTakesWhatIsLeft) {
    EXPECT_EQ(progressLine("Scan", 50, "4 tv", 30), "Scan [#####......]  50 %  4 tv");
    EXPECT_EQ(progressLine("Scan", 0, "", 25), "Scan [..........]   0 %  ");
    EXPECT_EQ(progressLine("Scan", 100, "", 25), "Scan [##########] 100 %  ");
    EXPECT_EQ(progressLine("Scan", 4000000000U, "", 25), "Scan [##########] 100 %  ");
    EXPECT_EQ(displayWidth(progressLine("Scan", 1, "", 500)), 55U) << "longer bars say no more";
}

TEST_F(ViewingTool, TheBarIsNeverWiderThanTheTerminal) {
    const std::string wide = "\u4e2d\u592e\u7535\u89c6";  // two columns each
    for (size_t columns = 0; columns < 60; ++columns) {
        EXPECT_LE(displayWidth(progressLine("Scan", 33, wide, columns)), columns);
    }
    EXPECT_EQ(progressLine("Scan", 33, wide, 17),
              "Scan  33 %  "
              "\u4e2d\u592e");
    EXPECT_EQ(progressLine("Scan", 33, "a\x1b[2J", 17), "Scan  33 %  a?[2J");
}

TEST_F(ViewingTool, AChannelIsMeantByNumberThenNameThenPart) {
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
        for (const auto& channel : matches(channels, text)) names += channel.name + "|";
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

TEST_F(ViewingTool, EventsOfAnotherThreadWakeTheMainOne) {
    const WakeUp wakeUp;
    EventQueue<int> queue(wakeUp);
    EXPECT_FALSE(wakeUp.waitUntil(steady_clock::now()));
    std::thread other([&] {
        queue.push(1);
        queue.push(2);
        queue.lose();
    });
    while (!queue.lost()) EXPECT_TRUE(wakeUp.waitUntil(steady_clock::time_point::max()));
    other.join();
    EXPECT_EQ(queue.take(), 1) << "what was said before the death is still heard";
    EXPECT_EQ(queue.take(), 2);
    EXPECT_EQ(queue.take(), std::nullopt);
    queue.push(3);
    queue.forget();
    EXPECT_EQ(queue.take(), std::nullopt);
}

TEST_F(ViewingTool, AnInterruptIsTakenOnce) {
    const WakeUp wakeUp;
    Interrupts interrupts(wakeUp);
    EXPECT_EQ(interrupts.take(), std::nullopt);
    raise(SIGINT);
    EXPECT_TRUE(wakeUp.waitUntil(steady_clock::time_point::max()));
    EXPECT_EQ(interrupts.take(), SIGINT);
    EXPECT_EQ(interrupts.take(), std::nullopt);
    EXPECT_FALSE(interrupts.takeContinued());
    raise(SIGCONT);
    EXPECT_TRUE(wakeUp.waitUntil(steady_clock::time_point::max()));
    EXPECT_EQ(interrupts.take(), std::nullopt);
    EXPECT_TRUE(interrupts.takeContinued());
    EXPECT_EQ(statusOf(SIGINT), 130);
}

}  // namespace
}  // namespace qortvctl
