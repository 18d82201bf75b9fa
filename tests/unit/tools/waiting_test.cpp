// How the main thread of qortvctl is woken by events and by signals.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "qortvctl/waiting/event_queue.h"
#include "qortvctl/waiting/interrupts.h"
#include "qortvctl/waiting/wake_up.h"

namespace qortvctl {
namespace {

using std::chrono::steady_clock;

TEST(ToolWaiting, EventsOfAnotherThreadWakeTheMainThread) {
    const WakeUp wakeUp;
    EventQueue<int> queue(wakeUp);
    EXPECT_FALSE(wakeUp.waitUntil(steady_clock::now()));
    std::thread other([&] {
        queue.push(1);
        queue.push(2);
        queue.setDisconnected();
    });
    while (!queue.disconnected()) EXPECT_TRUE(wakeUp.waitUntil(steady_clock::time_point::max()));
    other.join();
    EXPECT_EQ(queue.take(), 1) << "events from before the service died can still be taken";
    EXPECT_EQ(queue.take(), 2);
    EXPECT_EQ(queue.take(), std::nullopt);
    queue.push(3);
    queue.clear();
    EXPECT_EQ(queue.take(), std::nullopt);
}

TEST(ToolWaiting, ASignalIsTakenOnce) {
    const WakeUp wakeUp;
    Interrupts interrupts(wakeUp);
    EXPECT_EQ(interrupts.takeSignal(), std::nullopt);
    raise(SIGINT);
    EXPECT_TRUE(wakeUp.waitUntil(steady_clock::time_point::max()));
    EXPECT_EQ(interrupts.takeSignal(), SIGINT);
    EXPECT_EQ(interrupts.takeSignal(), std::nullopt);
    EXPECT_FALSE(interrupts.takeContinued());
    raise(SIGCONT);
    EXPECT_TRUE(wakeUp.waitUntil(steady_clock::time_point::max()));
    EXPECT_EQ(interrupts.takeSignal(), std::nullopt);
    EXPECT_TRUE(interrupts.takeContinued());
    EXPECT_EQ(exitStatusOfSignal(SIGINT), 130);
}

}  // namespace
}  // namespace qortvctl
