// Real processes for the runtime's tests: this binary started again in another role.
#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <chrono>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "EchoService.h"

namespace qortv::test {

// Waits until `condition` holds; false after a time that no machine should need.
template <typename Condition>
bool eventually(Condition condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

// A child process with this binary's roles (see main.cpp). Killed at the latest with the object.
class Child {
  public:
    Child() = default;
    explicit Child(const std::vector<std::string>& arguments);
    ~Child();
    Child(Child&& other) noexcept { *this = std::move(other); }
    Child& operator=(Child&& other) noexcept;

    pid_t pid() const { return mPid; }
    // Next line of its standard output; empty at the end.
    std::string readLine();
    // Lets it go on where it waits for a line of input.
    void writeLine(const std::string& line);
    // SIGKILL, and waits until it is gone.
    void kill();
    // Waits for its end; exit status, or -1 after a signal.
    int wait();

  private:
    pid_t mPid = -1;
    int mInput = -1;
    int mOutput = -1;
};

// A runtime folder of its own, and a service process in it on demand.
class ServiceTest : public ::testing::Test {
  protected:
    ServiceTest();
    ~ServiceTest() override;

    // Starts an EchoService with so many threads, registered as "default".
    void startService(int threads = 4, const std::vector<std::string>& more = {});
    // A proxy of it.
    sp<IEcho> echo();

    // Lines with the tag "hidl" that the service process wrote.
    std::vector<std::string> serviceLog() const;

    std::string mFolder;  // holds the runtime folder "run" and the service's "log"
    Child mService;
};

// Keeps the lines with the tag "hidl" that this process writes while the object lives.
class LogCapture {
  public:
    LogCapture();
    ~LogCapture();
    std::vector<std::string> lines() const;
};

// A listener that counts and remembers.
class Listener : public IListener {
  public:
    Return<int32_t> notify(int32_t event, uint64_t a, uint64_t b, uint64_t c, uint64_t d,
                           uint64_t e, uint64_t f) override;
    Return<void> post(int32_t event) override;
    Return<void> tell(const hidl_string& text, tell_cb _hidl_cb) override;

    std::vector<int32_t> events();
    // Runs in each notify(); its result is the answer.
    std::function<int32_t(int32_t)> onNotify;

  private:
    std::mutex mMutex;
    std::vector<int32_t> mEvents;
};

}  // namespace qortv::test
