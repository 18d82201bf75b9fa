// What a call costs over the runtime, as a ratio to a raw socket ping-pong of the same bytes between
// the same number of processes, measured in turns in the same run.
//
//   runtime_bench [REPETITIONS]
//
// Each figure is taken twice: with all processes on one processor, and free. Waking another processor
// costs more than the call itself on a virtual machine, so only figures of one placement compare.
// Prints medians; exits with 1 if a ratio is above its goal.
#include <sched.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <android/log.h>
#include <hidl/HidlTransportSupport.h>

#include "EchoService.h"

namespace {

using namespace ::qortv::test;
using Clock = std::chrono::steady_clock;

constexpr int kClients = 20;
// Bytes on the wire of IEcho::number() and of IListener::notify(), header included: see
// docs/host-protocol.md. The texts are the interface tokens.
constexpr size_t kFrameHeader = 40;
constexpr size_t kCallBytes = kFrameHeader + 24;                      // "qortv.test@1.0::IEcho"
constexpr size_t kNotifyBytes = kFrameHeader + 28 + 4 + 6 * 8;        // "...::IListener", arguments
constexpr size_t kAnswerBytes = kFrameHeader + 4 + 4;                 // status, result

[[noreturn]] void fail(const char* what) {
    perror(what);
    exit(2);
}

void pin(bool pinned) {
    cpu_set_t set;
    CPU_ZERO(&set);
    for (int cpu = 0; cpu < (pinned ? 1 : CPU_SETSIZE); ++cpu) CPU_SET(cpu, &set);
    if (sched_setaffinity(0, sizeof(set), &set) != 0) fail("sched_setaffinity");
}

class Child {
  public:
    template <typename Body>
    explicit Child(Body body) : mPid(fork()) {
        if (mPid < 0) fail("fork");
        if (mPid == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            body();
            _exit(0);
        }
    }
    ~Child() {
        if (mPid <= 0) return;
        kill(mPid, SIGKILL);
        waitpid(mPid, nullptr, 0);
    }
    Child(Child&& other) noexcept : mPid(other.mPid) { other.mPid = -1; }

  private:
    pid_t mPid;
};

bool readAll(int fd, char* bytes, size_t size) {
    while (size > 0) {
        const ssize_t got = recv(fd, bytes, size, 0);
        if (got <= 0) return false;
        bytes += got;
        size -= static_cast<size_t>(got);
    }
    return true;
}

// A process that answers `question` bytes with `answer` bytes over a socket.
class RawPeer {
  public:
    RawPeer(size_t question, size_t answer)
        : mQuestion(question), mAnswer(answer), mSocket(openSockets()), mChild([&] {
              char bytes[4096] = {};
              while (readAll(mTheirs, bytes, question)) {
                  if (send(mTheirs, bytes, answer, MSG_NOSIGNAL) < 0) break;
              }
          }) {
        close(mTheirs);
    }
    ~RawPeer() {
        if (mSocket >= 0) close(mSocket);
    }
    RawPeer(RawPeer&& other) noexcept
        : mQuestion(other.mQuestion),
          mAnswer(other.mAnswer),
          mSocket(other.mSocket),
          mChild(std::move(other.mChild)) {
        other.mSocket = -1;
    }

    void roundTrip() {
        char bytes[4096] = {};
        if (send(mSocket, bytes, mQuestion, MSG_NOSIGNAL) < 0) fail("send");
        if (!readAll(mSocket, bytes, mAnswer)) fail("recv");
    }

  private:
    int openSockets() {
        int sockets[2];
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets) != 0) fail("socketpair");
        mTheirs = sockets[1];
        return sockets[0];
    }

    size_t mQuestion;
    size_t mAnswer;
    int mTheirs = -1;
    int mSocket;
    Child mChild;
};

class Listener : public IListener {
  public:
    Return<int32_t> notify(int32_t event, uint64_t, uint64_t, uint64_t, uint64_t, uint64_t,
                           uint64_t) override {
        return event;
    }
    Return<void> post(int32_t) override { return Void(); }
    Return<void> tell(const hidl_string& text, tell_cb _hidl_cb) override {
        _hidl_cb(text);
        return Void();
    }
};

// Hands its listeners to the benchmark: the rest of the service is not used here.
class Collector : public EchoService {
  public:
    Return<void> addListener(const sp<IListener>& value) override {
        std::lock_guard<std::mutex> lock(mutex);
        listeners.push_back(value);
        changed.notify_one();
        return Void();
    }
    std::mutex mutex;
    std::condition_variable changed;
    std::vector<sp<IListener>> listeners;
};

// Microseconds that one of `count` calls of `body` takes.
template <typename Body>
double measure(int count, Body body) {
    for (int i = 0; i < count / 10; ++i) body();
    const auto begin = Clock::now();
    for (int i = 0; i < count; ++i) body();
    return std::chrono::duration<double, std::micro>(Clock::now() - begin).count() / count;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// Measures both in turns, prints, and says whether the goal is met.
template <typename Raw, typename Runtime>
bool compare(const char* what, const char* placement, int repetitions, int count, double goal,
             Raw raw, Runtime runtime) {
    std::vector<double> rawTimes;
    std::vector<double> runtimeTimes;
    std::vector<double> ratios;
    for (int i = 0; i < repetitions; ++i) {
        rawTimes.push_back(measure(count, raw));
        runtimeTimes.push_back(measure(count, runtime));
        ratios.push_back(runtimeTimes.back() / rawTimes.back());
    }
    const double ratio = median(ratios);
    printf("%-22s %-14s raw %8.2f us  runtime %8.2f us  ratio %.2f  (goal %.1f)%s\n", what,
           placement, median(rawTimes), median(runtimeTimes), ratio, goal,
           ratio <= goal ? "" : "  MISSED");
    fflush(stdout);
    return ratio <= goal;
}

// Each placement runs in a process of its own, which then is caller, service, or both.
bool benchCalls(bool pinned, int repetitions) {
    pin(pinned);
    RawPeer raw(kCallBytes, kAnswerBytes);
    Child service([] {
        ::android::hardware::configureRpcThreadpool(4, true);
        sp<IEcho> echo = new EchoService;
        if (echo->registerAsService() != ::android::OK) fail("registerAsService");
        ::android::hardware::joinRpcThreadpool();
    });
    sp<IEcho> echo = IEcho::getService();
    return compare("null call", pinned ? "one processor" : "free", repetitions, 20000,
                   pinned ? 2.0 : 1.3, [&] { raw.roundTrip(); },
                   [&] {
                       if (echo->number().withDefault(0) != 42) fail("number");
                   });
}

bool benchNotifications(bool pinned, int repetitions) {
    pin(pinned);
    std::vector<RawPeer> raw;
    for (int i = 0; i < kClients; ++i) raw.emplace_back(kNotifyBytes, kAnswerBytes);
    std::vector<Child> clients;
    for (int i = 0; i < kClients; ++i) {
        clients.emplace_back([] {
            sp<IEcho> echo = IEcho::getService();
            if (!echo->addListener(new Listener).isOk()) fail("addListener");
            for (;;) pause();
        });
    }
    ::android::hardware::configureRpcThreadpool(4, false);
    sp<Collector> collector = new Collector;
    if (collector->registerAsService() != ::android::OK) fail("registerAsService");
    std::vector<sp<IListener>> listeners;
    {
        std::unique_lock<std::mutex> lock(collector->mutex);
        collector->changed.wait(lock, [&] { return collector->listeners.size() == kClients; });
        listeners = collector->listeners;
    }
    return compare("20 notifications", pinned ? "one processor" : "free", repetitions, 1000, 1.5,
                   [&] {
                       for (RawPeer& peer : raw) peer.roundTrip();
                   },
                   [&] {
                       for (const sp<IListener>& listener : listeners) {
                           if (listener->notify(1, 2, 3, 4, 5, 6, 7).withDefault(0) != 1) {
                               fail("notify");
                           }
                       }
                   });
}

}  // namespace

int main(int argc, char** argv) {
    const int repetitions = argc > 1 ? atoi(argv[1]) : 9;
    char folder[] = "/tmp/runtime-bench-XXXXXX";
    if (mkdtemp(folder) == nullptr) fail("mkdtemp");
    setenv("QORTV_RUNTIME_DIR", folder, 1);
    bool met = true;
    for (bool pinned : {true, false}) {
        for (auto* bench : {benchCalls, benchNotifications}) {
            const pid_t pid = fork();
            if (pid == 0) _exit(bench(pinned, repetitions) ? 0 : 1);
            int status = 0;
            waitpid(pid, &status, 0);
            if (!WIFEXITED(status) || WEXITSTATUS(status) > 1) fail("benchmark");
            met = met && WEXITSTATUS(status) == 0;
        }
    }
    std::filesystem::remove_all(folder);
    return met ? 0 : 1;
}
