// The joint of two processes: their connections, and the objects they hold of each other.
//
// The process that looked a service up opens the session and all of its connections: one for
// notices and oneway calls, one for each of its threads that waits for an answer, and one for each
// of its pool threads, on which the service calls back. A call is one message out and one back on
// one connection. While a thread waits for an answer it serves what comes on that connection, and a
// thread that serves a call uses the call's connection for calls the other way: so nested calls
// need no further thread, as with the binder driver.
//
// A session lives until one of its connections fails. Then all of them are closed, both processes
// drop what they hold of each other, and calls fail with DEAD_OBJECT.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include <hidl/Limits.h>
#include <hwbinder/IBinder.h>
#include <hwbinder/Parcel.h>
#include <transport/Connection.h>
#include <transport/ObjectTable.h>
#include <transport/Trust.h>
#include <transport/wire.h>

namespace android::hardware::transport {

class Session : public virtual RefBase {
  public:
    // Opens a session with the process that listens at `path` and has the token `process`. Null if
    // that fails; *error is the -errno of a failed connect, or -EPROTO, -EACCES, -EAGAIN (no room
    // there).
    static sp<Session> open(const std::string& path, uint64_t process, int* error);

    // The other end's session, on a socket whose greeting asked for it. Takes over the socket.
    static sp<Session> accept(int socket, const Peer& peer, uint64_t process, uint64_t id);

    // Takes over a socket whose greeting named this session, and sends the reply. False, and
    // nothing was sent and the socket stays the caller's, if there are too many or the session is
    // over.
    bool join(int socket, Role role, const wire::HelloReply& reply);

    // Calls object `target` of the peer; see IBinder::transact().
    status_t transact(uint64_t target, uint32_t code, const Parcel& data, Parcel* reply,
                      uint32_t flags);

    // The peer's service with this name. NAME_NOT_FOUND if it has none.
    status_t lookUp(const std::string& name, sp<IBinder>* binder);

    // Serves a received message; takes over `contents`. False if the session is over.
    bool serve(Connection& connection, const wire::FrameHeader& header, ParcelContents* contents);
    // Answers a call that could not be received whole. False if the session is over.
    bool refuse(Connection& connection, const wire::FrameHeader& header, status_t status);

    // Ends the session, once. `reason` says how the peer broke the rules (one log line), or is null
    // if it just went.
    void end(const char* reason);
    bool isDead() const { return mDead.load(std::memory_order_acquire); }

    // Makes the pool watch for the peer's notices and its end. False if the peer is gone.
    bool watch();

    // The last reference to the peer's object is gone.
    void forget(uint64_t id, const RemoteBinder* remote);

    const Peer& peer() const { return mPeer; }
    uint64_t process() const { return mProcess; }
    uint64_t id() const { return mId; }
    ObjectTable& objects() { return mObjects; }

  protected:
    ~Session() override;

  private:
    struct Answer;

    Session(const Peer& peer, uint64_t process, uint64_t id, std::string path);
    bool opener() const { return !mPath.empty(); }

    // Connections on which this process calls.
    sp<Connection> takeConnection(status_t* status);
    void giveBack(const sp<Connection>& connection);
    // Opener: opens one more; the result is a socket, or -errno as in open().
    int openSocket(wire::Purpose purpose) const;
    sp<Connection> openConnection(wire::Purpose purpose, int* error);
    // Opener: makes sure that the peer can call back.
    status_t openServing();

    status_t await(Connection& connection, uint64_t sequence, Parcel* reply);
    status_t sendOneway(const wire::FrameHeader& header, ParcelContents* contents);
    bool serveCall(Connection& connection, const wire::FrameHeader& header, Parcel& data);
    bool serveNotices(const wire::FrameHeader& header, const Parcel& data);

    // Describes a message's binders to the peer. *returned: those that are the peer's own.
    status_t describeBinders(ParcelContents* contents, std::vector<sp<IBinder>>* returned);
    // Undoes that for a message that was not sent.
    void takeBackBinders(ParcelContents* contents);
    uint64_t keepUntilConfirmed(std::vector<sp<IBinder>> returned);
    // Puts the binders of a received message in place; what is wrong with them, or null.
    const char* resolveBinders(ParcelContents* contents);

    void queueNotice(const wire::Notice& notice);
    void flushNotices();

    const Peer mPeer;
    const uint64_t mProcess;
    const uint64_t mId;
    const std::string mPath;  // where the peer listens; empty at the accepter's end
    ObjectTable mObjects;
    std::atomic<bool> mDead{false};

    // Guards what follows, and is never held while anything blocks or foreign code runs.
    std::mutex mMutex;
    std::condition_variable mIdleChanged;
    std::vector<sp<Connection>> mConnections;
    sp<Connection> mNotices;
    bool mWatched = false;
    std::vector<sp<Connection>> mIdle;
    size_t mCalling = 0;  // connections on which this process calls
    size_t mServing = 0;  // connections on which the peer calls
    bool mFull = false;   // the peer takes no further connections
    bool mConnectionAsked = false;
    std::unordered_map<uint64_t, std::vector<sp<IBinder>>> mUnconfirmed;
    uint64_t mLastReceipt = 0;

    // Held while something is sent on the notices' connection.
    std::mutex mSendMutex;
    std::mutex mPendingMutex;
    std::vector<wire::Notice> mPending;
    std::atomic<size_t> mPendingCount{0};
};

}  // namespace android::hardware::transport
