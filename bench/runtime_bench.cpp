// What a call costs over the runtime, as a ratio to a raw socket ping-pong of the same bytes
// between the same number of processes, measured in turns in the same run.
//
//   runtime_bench [ROUNDS]
//
// Each figure is taken twice: with all processes on one processor, and free. Waking another
// processor costs more than the call itself on a virtual machine, so only figures of one placement
// compare. Prints medians; exits with 1 if a ratio is above its goal.
#include <sched.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <vector>

#include <hidl/HidlTransportSupport.h>

#include "EchoService.h"
#include "ratio.h"

namespace {

using namespace ::qortv::test;

constexpr int kClients = 20;
// Bytes on the wire of IEcho::number() and of IListener::notify(), header included: see
// docs/host-protocol.md. The texts are the interface tokens.
constexpr size_t kFrameHeader = 40;
constexpr size_t kCallBytes = kFrameHeader + 24;                // "qortv.test@1.0::IEcho"
constexpr size_t kNotifyBytes = kFrameHeader + 28 + 4 + 6 * 8;  // "...::IListener", arguments
constexpr size_t kAnswerBytes = kFrameHeader + 4 + 4;           // status, result
constexpr size_t kMostBytes = 256;

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
              char bytes[kMostBytes] = {};
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
        char bytes[kMostBytes] = {};
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

// Times both in turns, prints, and says whether the goal is met.
template <typename Raw, typename Runtime>
bool compare(const char* what, bool pinned, int rounds, int iterations, double goal, Raw raw,
             Runtime runtime) {
    const bench::Pair pair = bench::inTurns(rounds, iterations, runtime, raw);
    printf("%-18s %-14s raw %8.2f us  runtime %8.2f us  ratio %.2f  (goal %.1f)%s\n", what,
           pinned ? "one processor" : "free", pair.peer / 1000, pair.subject / 1000, pair.ratio(),
           goal, pair.ratio() <= goal ? "" : "  MISSED");
    fflush(stdout);
    return pair.ratio() <= goal;
}

// Each placement runs in a process of its own, which then is caller, service, or both.
bool benchCalls(bool pinned, int rounds) {
    pin(pinned);
    RawPeer raw(kCallBytes, kAnswerBytes);
    Child service([] {
        ::android::hardware::configureRpcThreadpool(4, true);
        sp<IEcho> echo = new EchoService;
        if (echo->registerAsService() != ::android::OK) fail("registerAsService");
        ::android::hardware::joinRpcThreadpool();
    });
    sp<IEcho> echo = IEcho::getService();
    return compare(
            "null call", pinned, rounds, 20000, pinned ? 2.0 : 1.3, [&] { raw.roundTrip(); },
            [&] {
                if (echo->number().withDefault(0) != 42) fail("number");
            });
}

bool benchNotifications(bool pinned, int rounds) {
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
    return compare(
            "20 notifications", pinned, rounds, 1000, 1.5,
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
    const int rounds = argc > 1 ? atoi(argv[1]) : 9;
    bool met = true;
    for (bool pinned : {true, false}) {
        for (auto* run : {benchCalls, benchNotifications}) {
            char folder[] = "/tmp/runtime-bench-XXXXXX";
            if (mkdtemp(folder) == nullptr) fail("mkdtemp");
            setenv("QORTV_RUNTIME_DIR", folder, 1);
            const pid_t pid = fork();
            if (pid == 0) _exit(run(pinned, rounds) ? 0 : 1);
            int status = 0;
            waitpid(pid, &status, 0);
            std::filesystem::remove_all(folder);
            if (!WIFEXITED(status) || WEXITSTATUS(status) > 1) fail("benchmark");
            met = met && WEXITSTATUS(status) == 0;
        }
    }
    return met ? 0 : 1;
}
