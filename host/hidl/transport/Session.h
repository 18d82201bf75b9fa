// What joins two processes: their connections, and the objects that they hold of each other.
//
// The process that looked a service up opens the session and all of its connections: one for
// notices and oneway calls, one for each of its threads that waits for a reply, and one for each
// of its pool threads, on which the service calls back. A call is one message out and one back on
// one connection. While a thread waits for a reply it serves the calls that come on that
// connection, and a thread that serves a call uses the call's connection for calls to the caller:
// so nested calls need no further thread, as with the binder driver.
//
// A session lives until one of its connections fails. Then all of them are closed, both processes
// drop the objects that they hold of each other, and calls fail with DEAD_OBJECT.
//
// The class is implemented in Session.cpp (begin and end), SessionConnections.cpp (connections on
// which this process calls), SessionCalls.cpp, SessionServing.cpp (calls of the peer),
// SessionObjects.cpp (binders in messages) and SessionNotices.cpp.
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

// Any thread.
class Session : public virtual RefBase {
  public:
    // Opens a session with the process that listens at `path` and has the token `process`. Returns
    // null if that fails: *error is the -errno of a failed connect, or -EPROTO, -EACCES, -EAGAIN
    // as for Process::greet().
    static sp<Session> open(const std::string& path, uint64_t process, int* error);

    // Makes the accepter's end of a session, on a socket whose greeting asked for one. Takes over
    // the socket.
    static sp<Session> accept(int socket, const Peer& peer, uint64_t process, uint64_t id);

    // Takes over a socket whose greeting named this session, and sends the reply to that greeting.
    // Returns false if there are too many connections or the session is over; then nothing was
    // sent and the socket stays the caller's.
    bool join(int socket, Role role, const wire::HelloReply& reply);

    // Calls object `target` of the peer; see IBinder::transact().
    status_t transact(uint64_t target, uint32_t code, const Parcel& data, Parcel* reply,
                      uint32_t flags);

    // Asks the peer for its service with this name. NAME_NOT_FOUND if it has none.
    status_t lookUp(const std::string& name, sp<IBinder>* binder);

    // Serves a received message. Returns false if the session is over.
    bool serve(Connection& connection, const wire::FrameHeader& header,
               ParcelContentsOwner contents);
    // Replies `status` to a call whose descriptors were lost. Returns false if the session is over.
    bool refuse(Connection& connection, const wire::FrameHeader& header, status_t status);

    // Ends the session, once. `reason` tells how the peer broke the rules and is logged; null if
    // the peer just went away.
    void end(const char* reason);
    bool isDead() const { return mDead.load(std::memory_order_acquire); }

    // Makes the thread pool serve the peer's notices and notice its death. Returns false if the
    // peer is gone.
    bool watch();

    // Tells the peer that the last reference to its object is gone.
    void forget(uint64_t id, const RemoteBinder* remote);

    const Peer& peer() const { return mPeer; }
    uint64_t process() const { return mProcess; }  // token of the peer
    uint64_t id() const { return mId; }            // number that the accepter gave the session

  protected:
    ~Session() override;

  private:
    class PendingReply;

    Session(const Peer& peer, uint64_t process, uint64_t id, std::string path);
    bool isOpener() const { return !mPath.empty(); }

    // Takes an idle connection for a call, opens one, or waits for one. Returns null, with
    // *status, if the session is over or there is no connection at all.
    sp<Connection> takeConnection(status_t* status);
    // Makes the connection idle again.
    void giveBack(const sp<Connection>& connection);
    // Opener: opens one more connection. Returns the socket, or -errno as for Process::greet().
    int openSocket(wire::Purpose purpose) const;
    sp<Connection> openConnection(wire::Purpose purpose, int* error);
    // Opener: makes sure that the peer can call back.
    status_t openServing();

    status_t sendOneway(const wire::FrameHeader& header, ParcelContents* contents);
    status_t sendAndWait(wire::FrameHeader header, ParcelContents* contents, Parcel* reply);
    status_t awaitReply(Connection& connection, uint64_t sequence, Parcel* reply);
    status_t takeReply(const wire::FrameHeader& header, uint64_t sequence,
                       ParcelContentsOwner contents, Parcel* reply);

    const char* resolveCall(const wire::FrameHeader& header, Parcel& data, sp<BHwBinder>* target);
    bool serveCall(Connection& connection, const wire::FrameHeader& header, Parcel& data);
    bool serveNotices(const wire::FrameHeader& header, const Parcel& data);
    bool serveNotice(const wire::Notice& notice);

    // Describes the binders of a message (null: no contents) to the peer. Adds those that are the
    // peer's own to *returned, unless that is null.
    status_t describeBinders(ParcelContents* contents, std::vector<sp<IBinder>>* returned);
    // Undoes that for a message that was not sent.
    void takeBackBinders(ParcelContents* contents);
    // Keeps the peer's own objects of a reply until the peer confirms that it has read the reply:
    // their release, on another connection, might overtake it. Returns the number of the receipt
    // that the reply asks for; 0 if too many are open.
    uint64_t keepUntilConfirmed(std::vector<sp<IBinder>> returned);
    // Fills in the binders of a received message. Returns null or what is wrong with them.
    const char* resolveBinders(ParcelContents* contents);

    void queueNotice(const wire::Notice& notice);
    void flushNotices();
    sp<Connection> noticeConnection();

    const Peer mPeer;
    const uint64_t mProcess;
    const uint64_t mId;
    const std::string mPath;  // where the peer listens; empty at the accepter's end
    ObjectTable mObjects;
    std::atomic<bool> mDead{false};

    // Guards the members down to mLastReceipt. Never held while anything blocks or code outside the
    // session runs.
    std::mutex mMutex;
    std::condition_variable mIdleChanged;
    std::vector<sp<Connection>> mConnections;  // all
    sp<Connection> mNoticeConnection;
    bool mWatched = false;              // the pool has mNoticeConnection
    std::vector<sp<Connection>> mIdle;  // those on which this process may call
    size_t mCallConnections = 0;        // on which this process calls
    size_t mServeConnections = 0;       // opener: on which the peer calls
    bool mPeerIsFull = false;           // the peer takes no further connections
    bool mConnectionAsked = false;      // accepter: a kConnectionWanted is under way
    std::unordered_map<uint64_t, std::vector<sp<IBinder>>> mUnconfirmed;  // by number of receipt
    uint64_t mLastReceipt = 0;

    // Held while a thread sends on mNoticeConnection.
    std::mutex mSendMutex;
    std::mutex mPendingMutex;  // guards mPendingNotices
    std::vector<wire::Notice> mPendingNotices;
    std::atomic<size_t> mPendingCount{0};  // size of mPendingNotices, to be read without a lock
};

}  // namespace android::hardware::transport
