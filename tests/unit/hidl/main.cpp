// The test program. The tests start it again in other processes, with these arguments:
//   --service THREADS LOG [UID [SETUID]]
//                             serves an EchoService until it is killed. Its log lines go to the
//                             file LOG. It takes itself for a process of user UID (-1: its own),
//                             and becomes one of user SETUID.
//   --listener COUNT          adds COUNT listeners, prints "ready", keeps them until it reads a
//   line
//   --callers THREADS CALLS   makes CALLS calls from each thread, prints how many had the right
//   result
//   --watched COOKIE          lets the service watch a listener's death, prints "ready", ends when
//   it
//                             reads a line
//   --brief                   registers a service, prints "registered", ends in order when it reads
//   a
//                             line
#include <android/log.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <thread>

#include <hidl/HidlTransportSupport.h>
#include <transport/Trust.h>

#include "ServiceProcess.h"

namespace qortv::test {
namespace {

int sLogFile = -1;
constexpr uid_t kNoUid = static_cast<uid_t>(-1);

void print(const std::string& line) {
    std::cout << line << std::endl;
}

int service(int threads, const char* logFile, uid_t ownUid, uid_t realUid) {
    ::android::hardware::transport::setOwnUidForTest(ownUid);
    if (realUid != kNoUid && setuid(realUid) != 0) return 1;
    sLogFile = open(logFile, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    __android_log_set_logger([](const __android_logger_data* data, const char* message) {
        if (data->tag == nullptr || strcmp(data->tag, "hidl") != 0) return;
        const std::string line = std::string(message) + "\n";
        if (write(sLogFile, line.data(), line.size()) < 0) abort();
    });
    ::android::hardware::configureRpcThreadpool(static_cast<size_t>(threads), true);
    sp<IEcho> echo = new EchoService;
    if (echo->registerAsService() != ::android::OK) return 1;
    print("ready");
    ::android::hardware::joinRpcThreadpool();
}

int listener(int count) {
    sp<IEcho> echo = IEcho::getService();
    for (int i = 0; i < count; ++i) {
        if (!echo->addListener(new Listener).isOk()) return 1;
    }
    print("ready");
    std::string line;
    std::getline(std::cin, line);
    return 0;
}

int callers(int threads, int calls) {
    sp<IEcho> echo = IEcho::getService();
    std::atomic<int> right{0};
    std::vector<std::thread> running;
    for (int t = 0; t < threads; ++t) {
        running.emplace_back([&, t] {
            for (int i = 0; i < calls; ++i) {
                const int64_t number = int64_t{getpid()} * 1000000 + t * 10000 + i;
                if (echo->echoI64(number).withDefault(-1) != number) continue;
                std::string text;
                echo->echoString(std::to_string(number), [&](const hidl_string& t2) { text = t2; });
                if (text == std::to_string(number)) ++right;
            }
        });
    }
    for (std::thread& thread : running) thread.join();
    print(std::to_string(right));
    return 0;
}

int watched(uint64_t cookie) {
    sp<IEcho> echo = IEcho::getService();
    sp<IListener> listener = new Listener;
    if (!echo->watchDeath(listener, cookie).withDefault(false)) return 1;
    print("ready");
    std::string line;
    std::getline(std::cin, line);
    return 0;
}

int brief() {
    sp<IEcho> service = new EchoService;
    if (service->registerAsService() != ::android::OK) return 1;
    print("registered");
    std::string line;
    std::getline(std::cin, line);
    return 0;
}

}  // namespace
}  // namespace qortv::test

int main(int argc, char** argv) {
    using namespace ::qortv::test;
    const std::string role = argc > 1 ? argv[1] : "";
    if (role == "--service") {
        return service(atoi(argv[2]), argv[3],
                       argc > 4 ? static_cast<uid_t>(atoi(argv[4])) : kNoUid,
                       argc > 5 ? static_cast<uid_t>(atoi(argv[5])) : kNoUid);
    }
    if (role == "--listener") return listener(atoi(argv[2]));
    if (role == "--callers") return callers(atoi(argv[2]), atoi(argv[3]));
    if (role == "--watched") return watched(strtoull(argv[2], nullptr, 10));
    if (role == "--brief") return brief();
    __android_log_set_logger(__android_log_stderr_logger);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
