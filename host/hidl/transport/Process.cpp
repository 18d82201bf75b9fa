#include <transport/Process.h>

#include <pthread.h>
#include <sys/random.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>

#include <hidl/HidlInternal.h>
#include <hwbinder/Parcel.h>
#include <transport/Log.h>
#include <transport/Socket.h>

namespace android::hardware::transport {

using wire::Hello;
using wire::HelloReply;
using wire::Purpose;

// Takes connections. When the process runs out of descriptors it pauses: callers wait in the
// socket's queue, and the pool does not spin.
class Process::Listener : public Pollable {
  public:
    Listener(Process* process, int socket) : mProcess(process), mSocket(socket) {}
    void onReady() override;
    int fd() const override { return mSocket; }

    // The timer that ends a pause.
    class Pause : public Pollable {
      public:
        explicit Pause(Listener* listener)
            : mListener(listener),
              mTimer(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)) {}
        void begin() {
            itimerspec time{};
            time.it_value.tv_nsec = limits::kAcceptPauseMilliseconds * 1000000L;
            timerfd_settime(mTimer, 0, &time, nullptr);
        }
        void onReady() override {
            uint64_t count;
            if (read(mTimer, &count, sizeof(count)) < 0) return ThreadPool::instance().arm(this);
            ThreadPool::instance().arm(this);
            ThreadPool::instance().arm(mListener);
        }
        int fd() const override { return mTimer; }

      private:
        Listener* const mListener;  // neither ever ends
        const int mTimer;
    };

    bool add() {
        mPause = new Pause(this);
        return mPause->fd() >= 0 && ThreadPool::instance().add(mPause) &&
               ThreadPool::instance().add(this);
    }

  private:
    Process* const mProcess;
    const int mSocket;
    sp<Pause> mPause;
    bool mPausing = false;
};

// A connection that has not said yet what it is for.
class Process::Greeting : public Pollable {
  public:
    Greeting(Process* process, int socket, const Peer& peer)
        : mProcess(process), mSocket(socket), mPeer(peer) {}
    ~Greeting() override {
        if (mSocket >= 0) close(mSocket);
    }
    void onReady() override;
    int fd() const override { return mSocket; }
    void shutDown() { shutdown(mSocket, SHUT_RDWR); }
    // Whether the peer had its time and nothing of it waits to be read. For one of the list.
    bool isSilent() const {
        char byte;
        return Clock::now() - mSince >= std::chrono::milliseconds(limits::kSilenceMilliseconds) &&
               recv(mSocket, &byte, 1, MSG_PEEK | MSG_DONTWAIT) < 0;
    }

  private:
    using Clock = std::chrono::steady_clock;

    Process* const mProcess;
    int mSocket;
    const Peer mPeer;
    const Clock::time_point mSince = Clock::now();
    Hello mHello;
    size_t mHave = 0;
};

class Process::Root : public BHwBinder {
  protected:
    status_t onTransact(uint32_t code, const Parcel& data, Parcel* reply, uint32_t,
                        TransactCallback callback) override {
        if (code != wire::kLookUp) return UNKNOWN_TRANSACTION;
        const char* name = data.readCString();
        if (name == nullptr) return BAD_VALUE;
        status_t status = reply->writeStrongBinder(Process::instance().published(name));
        if (status == OK) callback(*reply);
        return status;
    }
};

static uint64_t randomNumber() {
    uint64_t number = 0;
    while (number == 0) {
        if (getrandom(&number, sizeof(number), 0) != sizeof(number)) continue;
    }
    return number;
}

Process& Process::instance() {
    static Process& process = *new Process;
    return process;
}

static std::atomic<bool> sForked{false};

Process::Process() : mToken(randomNumber()), mRoot(new Root), mLastSession(randomNumber()) {
    pthread_atfork(nullptr, nullptr, [] { sForked.store(true, std::memory_order_relaxed); });
}

void Process::requireOwn() {
    if (!sForked.load(std::memory_order_relaxed)) return;
    details::logAlwaysFatal(
            "HIDL in a process that was forked from one that uses it: execute a program instead");
}

int Process::greet(const std::string& path, Purpose purpose, uint64_t session,
                   int timeoutMilliseconds, Peer* peer, HelloReply* reply) {
    requireOwn();
    const int socket = connectTo(path, timeoutMilliseconds);
    if (socket < 0) return socket;
    int error = 0;
    Hello hello{wire::kMagic, wire::kVersion, purpose, instance().token(), session, getpid(), 0};
    if (!peerOf(socket, peer) || !isTrusted(*peer)) {
        HIDL_LOGE("Process %d of user %u at %s is not trusted", peer->pid, peer->uid, path.c_str());
        error = -EACCES;
    } else if (!sendExactly(socket, &hello, sizeof(hello)) ||
               !receiveExactly(socket, reply, sizeof(*reply))) {
        error = -ECONNRESET;
    } else if (reply->magic != wire::kMagic || reply->version != wire::kVersion) {
        error = -EPROTO;
    } else if (reply->accepted == 0) {
        error = -EAGAIN;
    }
    if (error == 0) return socket;
    close(socket);
    return error;
}

sp<Session> Process::sessionWith(const Registry::Entry& entry, int* error) {
    std::unique_lock<std::mutex> lock(mMutex);
    // One session for two processes, however many threads want it.
    mOpened.wait(lock, [&] { return mOpening.count(entry.process) == 0; });
    auto known = mByProcess.find(entry.process);
    if (known != mByProcess.end() && known->second->peer().pid == entry.pid) return known->second;
    mOpening.insert(entry.process);
    lock.unlock();
    sp<Session> session = Session::open(entry.socket, entry.process, error);
    lock.lock();
    mOpening.erase(entry.process);
    mOpened.notify_all();
    if (session == nullptr) return nullptr;
    mByProcess[entry.process] = session;
    // It may have ended before it stood in the table.
    if (session->isDead()) mByProcess.erase(entry.process);
    return session;
}

status_t Process::publish(const std::string& name, const sp<IBinder>& binder) {
    Registry registry;
    std::string socketName;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        status_t status = listen(&registry);
        if (status != OK) return status;
        socketName = mSocketName;
        mPublished[name] = binder;
    }
    status_t status = registry.publish(name, socketName);
    if (status != OK) {
        std::lock_guard<std::mutex> lock(mMutex);
        mPublished.erase(name);
    }
    return status;
}

status_t Process::listen(Registry* registry) {
    if (!mSocketName.empty()) return OK;
    if (!registry->prepare()) return NAME_NOT_FOUND;
    const int socket = registry->listen(mToken, &mSocketName);
    if (socket < 0) {
        HIDL_LOGE("Runtime folder %s takes no socket: %s", registry->path().c_str(),
                  strerror(-socket));
        mSocketName.clear();
        return NAME_NOT_FOUND;
    }
    sp<Listener> listener = new Listener(this, socket);
    if (!listener->add()) return NO_MEMORY;
    // A process that ends in order leaves nothing behind; one that is killed leaves stale names.
    static const pid_t owner = getpid();
    atexit([] {
        if (getpid() == owner) Registry().withdraw(Process::instance().mSocketName);
    });
    return OK;
}

sp<IBinder> Process::published(const std::string& name) {
    std::lock_guard<std::mutex> lock(mMutex);
    auto known = mPublished.find(name);
    return known != mPublished.end() ? known->second : nullptr;
}

void Process::forget(Session* session) {
    std::vector<sp<Session>> dropped;  // without the lock
    std::lock_guard<std::mutex> lock(mMutex);
    auto accepted = mAccepted.find(session->id());
    if (accepted != mAccepted.end() && accepted->second == session) {
        dropped.push_back(std::move(accepted->second));
        mAccepted.erase(accepted);
    }
    auto known = mByProcess.find(session->process());
    if (known != mByProcess.end() && known->second == session) {
        dropped.push_back(std::move(known->second));
        mByProcess.erase(known);
    }
}

size_t Process::sessionCount() {
    std::lock_guard<std::mutex> lock(mMutex);
    return mAccepted.size();
}

// Taking connections.

bool Process::makeRoomForGreeting() {
    sp<Greeting> silent;  // goes without the lock
    std::lock_guard<std::mutex> lock(mMutex);
    if (mGreetings.size() < limits::kUnknownConnections) return true;
    // A greeting leaves the list before it gives its socket away, so one of the list has it.
    const auto found = std::find_if(mGreetings.begin(), mGreetings.end(),
                                    [](const sp<Greeting>& g) { return g->isSilent(); });
    if (found == mGreetings.end()) return false;
    silent = std::move(*found);
    mGreetings.erase(found);
    silent->shutDown();
    return true;
}

void Process::Listener::onReady() {
    for (;;) {
        if (!mProcess->makeRoomForGreeting()) return mPause->begin();
        const int socket = accept4(mSocket, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0) {
            if (errno == EINTR || errno == ECONNABORTED) continue;
            if (errno == EAGAIN || errno == EWOULDBLOCK) return ThreadPool::instance().arm(this);
            if (!mPausing) HIDL_LOGE("No further connections for now: %s", strerror(errno));
            mPausing = true;
            return mPause->begin();
        }
        mPausing = false;
        Peer peer;
        if (!peerOf(socket, &peer) || !isTrusted(peer)) {
            HIDL_LOGE("Process %d of user %u refused: not trusted", peer.pid, peer.uid);
            close(socket);
            continue;
        }
        sp<Greeting> greeting = new Greeting(mProcess, socket, peer);
        {
            std::lock_guard<std::mutex> lock(mProcess->mMutex);
            mProcess->mGreetings.push_back(greeting);
        }
        ThreadPool::instance().add(greeting);
    }
}

void Process::Greeting::onReady() {
    const ssize_t got = recv(mSocket, reinterpret_cast<char*>(&mHello) + mHave,
                             sizeof(mHello) - mHave, MSG_DONTWAIT);
    if (got > 0) mHave += static_cast<size_t>(got);
    const bool waits =
            got > 0 ? mHave < sizeof(mHello) : got < 0 && (errno == EAGAIN || errno == EINTR);
    if (waits) return ThreadPool::instance().arm(this);

    sp<Greeting> self(this);
    ThreadPool::instance().remove(this);
    {
        auto& greetings = mProcess->mGreetings;
        std::lock_guard<std::mutex> lock(mProcess->mMutex);
        auto known = std::find(greetings.begin(), greetings.end(), self);
        if (known != greetings.end()) greetings.erase(known);
    }
    if (mHave < sizeof(mHello)) {
        if (mHave > 0)
            HIDL_LOGE("Process %d of user %u left without a greeting", mPeer.pid, mPeer.uid);
        return;
    }
    if (mHello.magic != wire::kMagic || mHello.version != wire::kVersion) {
        HIDL_LOGE("Process %d of user %u refused: not a greeting of version %u", mPeer.pid,
                  mPeer.uid, wire::kVersion);
        return;
    }
    const int socket = mSocket;
    mSocket = -1;
    mProcess->welcome(socket, mPeer, mHello);
}

HelloReply Process::replyTo(const Hello& hello) {
    const ThreadPool& pool = ThreadPool::instance();
    HelloReply reply{};
    reply.magic = wire::kMagic;
    reply.version = wire::kVersion;
    reply.accepted = 1;
    reply.process = mToken;
    reply.session = hello.session;
    reply.pid = getpid();
    reply.threads = static_cast<uint32_t>(pool.threads());
    reply.idleThreads = static_cast<uint32_t>(pool.idle());
    reply.maxThreads = static_cast<uint32_t>(pool.maxThreads());
    reply.sessions = static_cast<uint32_t>(sessionCount());
    return reply;
}

// Takes over the socket.
void Process::welcome(int socket, const Peer& peer, const Hello& hello) {
    HelloReply reply = replyTo(hello);
    if (hello.purpose == Purpose::kSession && reply.sessions < limits::kSessions) {
        sp<Session> session;
        {
            std::lock_guard<std::mutex> lock(mMutex);
            reply.session = ++mLastSession;
            session = Session::accept(socket, peer, hello.process, reply.session);
            mAccepted[reply.session] = session;
            mByProcess.insert({hello.process, session});
        }
        // Nothing else is sent before this: the peer does not call, and nobody here knows its
        // objects.
        if (!sendExactly(socket, &reply, sizeof(reply))) session->end(nullptr);
        session->watch();
        return;
    }
    if (hello.purpose == Purpose::kCalls || hello.purpose == Purpose::kServes) {
        sp<Session> session;
        {
            std::lock_guard<std::mutex> lock(mMutex);
            auto known = mAccepted.find(hello.session);
            if (known != mAccepted.end() && known->second->peer().pid == peer.pid) {
                session = known->second;
            }
        }
        const Role role = hello.purpose == Purpose::kCalls ? Role::kServes : Role::kCalls;
        if (session != nullptr && session->join(socket, role, reply)) return;
    }
    if (hello.purpose != Purpose::kInquiry) {
        HIDL_LOGE("Connection of process %d of user %u refused", peer.pid, peer.uid);
        reply.accepted = 0;
    }
    sendExactly(socket, &reply, sizeof(reply));
    close(socket);
}

}  // namespace android::hardware::transport
