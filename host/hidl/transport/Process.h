// This process as others see it: the socket it listens on, its sessions, the services it published.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <unordered_map>

#include <hwbinder/IBinder.h>
#include <transport/Registry.h>
#include <transport/Session.h>
#include <transport/ThreadPool.h>
#include <transport/Trust.h>
#include <transport/wire.h>

namespace android::hardware::transport {

// There is one object, which is never destroyed. Any thread.
class Process {
  public:
    static Process& instance();

    // Aborts a process that was forked from one that used the runtime: it shares the sockets and
    // the epoll set of its parent, so the threads of one would handle events of the other.
    static void requireOwn();

    // Random number that identifies this process.
    uint64_t token() const { return mToken; }

    // Connects to the process that listens at `path`, checks its user, and greets it. Returns the
    // socket, which the caller closes, or -errno: -EACCES for a process that is not trusted,
    // -EPROTO for one that uses another protocol, -EAGAIN for one that takes no further connection.
    // timeoutMilliseconds as for connectTo().
    static int greet(const std::string& path, wire::Purpose purpose, uint64_t session,
                     int timeoutMilliseconds, Peer* peer, wire::HelloReply* reply);

    // Returns the session with the process of a registry entry, and opens one if there is none.
    // Returns null, and *error as for greet(), if that fails.
    sp<Session> sessionWith(const Registry::Entry& entry, int* error);

    // Publishes an object as a service, listening first if the process does not yet. Returns OK, or
    // after a log line ALREADY_EXISTS if another process has the name, NAME_NOT_FOUND without a
    // usable runtime folder.
    status_t publish(const std::string& name, const sp<IBinder>& binder);
    // Returns the object that this process published under the name; null if there is none.
    sp<IBinder> published(const std::string& name);

    // The object by which peers look services up.
    const sp<BHwBinder>& root() const { return mRoot; }

    // Takes over a socket after its greeting: replies to it and does what it asks for.
    void welcome(int socket, const Peer& peer, const wire::Hello& hello);

    // Drops a session that is over.
    void forget(Session* session);

  private:
    class Root;

    Process();
    // Makes the process listen in the runtime folder if it does not yet.
    status_t listen(Registry* registry);
    void beginSession(int socket, const Peer& peer, const wire::Hello& hello,
                      wire::HelloReply reply);
    // Returns the session with this number if `peer` opened it; else null.
    sp<Session> acceptedSession(uint64_t id, const Peer& peer);
    wire::HelloReply replyTo(const wire::Hello& hello);
    size_t sessionCount();

    const uint64_t mToken;
    const sp<BHwBinder> mRoot;

    std::mutex mMutex;                                     // guards what follows
    std::string mSocketName;                               // empty while not listening
    std::unordered_map<uint64_t, sp<Session>> mAccepted;   // by number of the session
    std::unordered_map<uint64_t, sp<Session>> mByProcess;  // by token of the peer
    std::set<uint64_t> mOpening;                           // peers to which a session is opened
    std::condition_variable mOpened;                       // mOpening has changed
    uint64_t mLastSession;                                 // number of the last accepted session
    std::map<std::string, sp<IBinder>> mPublished;         // by name of the service
};

}  // namespace android::hardware::transport
