// This process as others see it: the socket it listens on, its sessions, the services it published.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
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

// One for the process, never destroyed. Any thread.
class Process {
  public:
    static Process& instance();

    // Ends a process that was forked from one that used the runtime: it shares the sockets and the
    // epoll set of its parent, whose threads would meet its objects.
    static void requireOwn();

    // Random number that tells this process from all others.
    uint64_t token() const { return mToken; }

    // Connects to the process that listens at `path`, checks its user, and greets it. The socket,
    // which the caller closes, or -errno: -EACCES for a process that is not trusted, -EPROTO for
    // one that speaks otherwise, -EAGAIN for one that has no room.
    static int greet(const std::string& path, wire::Purpose purpose, uint64_t session,
                     int timeoutMilliseconds, Peer* peer, wire::HelloReply* reply);

    // The session with the process of a registry entry, opened if there is none; null and *error
    // (as for greet()) where that fails.
    sp<Session> sessionWith(const Registry::Entry& entry, int* error);

    // Publishes an object as a service, listening first if the process does not yet. OK,
    // ALREADY_EXISTS, or NAME_NOT_FOUND without a usable runtime folder; logs what is wrong.
    status_t publish(const std::string& name, const sp<IBinder>& binder);
    // The object that this process published under the name; null if it has none.
    sp<IBinder> published(const std::string& name);

    // The object that peers look services up with.
    const sp<BHwBinder>& root() const { return mRoot; }

    // A session is over.
    void forget(Session* session);

    size_t sessionCount();

  private:
    class Listener;
    class Greeting;
    class Root;

    Process();
    status_t listen(Registry* registry);
    // Lets a silent one of too many connections go. False where none is: this process is behind.
    bool makeRoomForGreeting();
    void welcome(int socket, const Peer& peer, const wire::Hello& hello);
    wire::HelloReply replyTo(const wire::Hello& hello);

    const uint64_t mToken;
    const sp<BHwBinder> mRoot;
    std::mutex mMutex;
    std::string mSocketName;                               // empty while not listening
    std::unordered_map<uint64_t, sp<Session>> mAccepted;   // by number
    std::unordered_map<uint64_t, sp<Session>> mByProcess;  // by token of the peer
    std::set<uint64_t> mOpening;                           // tokens of peers
    std::condition_variable mOpened;
    uint64_t mLastSession;
    std::map<std::string, sp<IBinder>> mPublished;
    std::deque<sp<Greeting>> mGreetings;  // oldest first
};

}  // namespace android::hardware::transport
