#include "support/fan_out_check.h"

#include <unistd.h>

#include <atomic>
#include <fstream>
#include <mutex>
#include <thread>

namespace {

std::vector<LogLine> linesOf(const ExpectedFanOut& expected, bool debugging) {
    std::vector<LogLine> lines;
    for (const std::string& text : expected.debug_lines) {
        if (debugging) lines.push_back(debugLine(expected.tag, expected.handler, text));
    }
    for (const std::string& text : expected.always_lines) {
        lines.push_back(debugLine(expected.tag, expected.handler, text));
    }
    return lines;
}

}  // namespace

bool sleeps(pid_t thread) {
    std::ifstream file("/proc/self/task/" + std::to_string(thread) + "/stat");
    std::string stat;
    std::getline(file, stat);
    const size_t name_end = stat.rfind(") ");
    return name_end != std::string::npos && stat[name_end + 2] == 'S';
}

std::vector<LogLine> nextLines(LogCapture& log) {
    std::vector<LogLine> lines;
    while (lines.empty()) lines = log.take();
    return lines;
}

void expectToWaitForTheRegistry(const std::function<void()>& task,
                                const std::function<void()>& meanwhile) {
    std::unique_lock<std::mutex> held(QorTvApiImpl::getCallbackMutex());
    std::atomic<pid_t> id{0};
    std::atomic<bool> ended{false};
    std::thread thread([&] {
        id = gettid();
        task();
        ended = true;
    });
    while (!ended && (id == 0 || !sleeps(id))) std::this_thread::yield();
    EXPECT_FALSE(ended) << "the mutex was not waited for";
    meanwhile();
    held.unlock();
    thread.join();
}

void checkFanOut(const ExpectedFanOut& expected, LogCapture& log,
                 const std::function<void()>& notify) {
    const sp<QorTvApiImpl> impl = new QorTvApiImpl();
    QorTvApiImpl::getCallbackHandlers().clear();
    for (const bool debugging : {true, false}) {
        SCOPED_TRACE(debugging ? "debugging" : "not debugging");
        mTvApiDebug = debugging ? 1 : 0;
        log.take();
        expectToWaitForTheRegistry(
                notify, [&] { EXPECT_TRUE(log.take().empty()) << "before the mutex is taken"; });
        EXPECT_EQ(log.take(), linesOf(expected, debugging)) << "without a client";

        impl->setCallback(new RecordingClient());
        impl->setCallback(new RecordingClient());
        std::vector<RecordingClient*> clients;  // in the order of the map
        for (const auto& entry : QorTvApiImpl::getCallbackHandlers()) {
            clients.push_back(static_cast<RecordingClient*>(entry.second.get()));
        }
        clients.front()->status = Status::fromStatusT(::android::DEAD_OBJECT);
        log.take();
        notify();
        std::vector<LogLine> lines = linesOf(expected, debugging);
        lines.push_back(
                debugLine(expected.tag, expected.handler, clients.front()->status.description()));
        EXPECT_EQ(log.take(), lines) << "with a failing client";
        for (const RecordingClient* client : clients) {
            EXPECT_EQ(client->calls(), std::vector<std::string>{expected.call});
        }
        EXPECT_EQ(QorTvApiImpl::getCallbackHandlers().size(), 2u) << "a failure removes nobody";
        QorTvApiImpl::getCallbackHandlers().clear();
    }
}
