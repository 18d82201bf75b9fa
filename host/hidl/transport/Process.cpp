#include <transport/Process.h>

#include <pthread.h>
#include <sys/random.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

#include <hidl/HidlInternal.h>
#include <hidl/Limits.h>
#include <hwbinder/Parcel.h>
#include <transport/Listener.h>
#include <transport/Log.h>
#include <transport/Socket.h>

namespace android::hardware::transport {

using wire::Hello;
using wire::HelloReply;
using wire::Purpose;

// The object with number wire::kRootObject: looks up services of this process.
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
    // Two processes share one session: the first thread opens it, others wait for it.
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
    // A session that ended before this could not find itself in the table.
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
    if (!listener->start()) return NO_MEMORY;
    // A process that ends in order removes its names and its socket.
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
    std::vector<sp<Session>> dropped;  // goes after the lock
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

// Connections that other processes open.

void Process::welcome(int socket, const Peer& peer, const Hello& hello) {
    HelloReply reply = replyTo(hello);
    if (hello.purpose == Purpose::kSession && reply.sessions < limits::kSessions) {
        return beginSession(socket, peer, hello, reply);
    }
    if (hello.purpose == Purpose::kCalls || hello.purpose == Purpose::kServes) {
        const sp<Session> session = acceptedSession(hello.session, peer);
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

void Process::beginSession(int socket, const Peer& peer, const Hello& hello, HelloReply reply) {
    sp<Session> session;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        reply.session = ++mLastSession;
        session = Session::accept(socket, peer, hello.process, reply.session);
        mAccepted[reply.session] = session;
        mByProcess.insert({hello.process, session});
    }
    // Nothing else is sent before this: the peer does not call yet, and no object of the peer is
    // known here.
    if (!sendExactly(socket, &reply, sizeof(reply))) session->end(nullptr);
    session->watch();
}

sp<Session> Process::acceptedSession(uint64_t id, const Peer& peer) {
    std::lock_guard<std::mutex> lock(mMutex);
    auto known = mAccepted.find(id);
    if (known == mAccepted.end() || known->second->peer().pid != peer.pid) return nullptr;
    return known->second;
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

}  // namespace android::hardware::transport
