// Processes for the runtime's tests: this program, started again with other arguments.
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

// Waits until `condition` holds. Returns false if it does not within kPatience.
template <typename Condition>
bool eventually(Condition condition) {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

// A child process that runs this program with other arguments (see main.cpp). The destructor kills
// it if it is still running.
class Child {
  public:
    Child() = default;
    explicit Child(const std::vector<std::string>& arguments);
    ~Child();
    Child(Child&& other) noexcept { *this = std::move(other); }
    Child& operator=(Child&& other) noexcept;

    pid_t pid() const { return mPid; }
    // Returns the next line of its standard output; an empty one at the end.
    std::string readLine();
    // Writes a line to its standard input.
    void writeLine(const std::string& line);
    // Stops it with SIGSTOP, and waits until all its threads have stopped: some may go on for a
    // while without that.
    void stop();
    // Lets it go on after stop().
    void goOn();
    // Kills it with SIGKILL, and waits until it is gone.
    void kill();
    // Waits for its end. Returns its exit status, or -1 if a signal ended it.
    int wait();

  private:
    pid_t mPid = -1;
    int mInput = -1;
    int mOutput = -1;
};

// A test with a runtime folder of its own, in which it may start a service process.
class ServiceTest : public ::testing::Test {
  protected:
    ServiceTest();
    ~ServiceTest() override;

    // Starts an EchoService with a pool of `threads` threads, registered as "default". `more`:
    // further arguments of the process.
    void startService(int threads = 4, const std::vector<std::string>& more = {});
    // Returns a proxy of it; null if it cannot be had.
    sp<IEcho> echo();

    // Returns the log lines of the service process that have the tag "hidl".
    std::vector<std::string> serviceLog() const;

    std::string mFolder;  // contains the runtime folder "run" and the service's log file "log"
    Child mService;
};

// Records the log lines of this process that have the tag "hidl", as long as the object lives.
class LogCapture {
  public:
    LogCapture();
    ~LogCapture();
    std::vector<std::string> lines() const;
};

// A listener that records its events.
class Listener : public IListener {
  public:
    Return<int32_t> notify(int32_t event, uint64_t a, uint64_t b, uint64_t c, uint64_t d,
                           uint64_t e, uint64_t f) override;
    Return<void> post(int32_t event) override;
    Return<void> tell(const hidl_string& text, tell_cb _hidl_cb) override;

    std::vector<int32_t> events();
    // If set, runs in each notify() and provides its result.
    std::function<int32_t(int32_t)> onNotify;

  private:
    std::mutex mMutex;
    std::vector<int32_t> mEvents;
};

}  // namespace qortv::test
