// One socket of a session.
#pragma once

#include <cstdint>

#include <transport/FrameReader.h>
#include <transport/ThreadPool.h>
#include <utils/StrongPointer.h>

namespace android::hardware::transport {

class Session;

// What this process does on a connection.
enum class Role {
    kNotices,  // both ends send notices and oneway calls at any time
    kCalls,    // this process calls, the peer replies
    kServes,   // the peer calls, this process replies
};

// Used by one thread at a time: the one that took it from the session's idle connections, or the
// pool thread that its event woke. Only shutDown() may be called by others.
class Connection : public Pollable {
  public:
    // Takes over `socket`.
    Connection(int socket, Role role, const sp<Session>& session);
    ~Connection() override;

    void onReady() override;
    int fd() const override { return mSocket; }

    Role role() const { return mRole; }
    FrameReader& reader() { return mReader; }
    // Usual time limit of a read, in milliseconds: kLingerMilliseconds where a thread waits for the
    // next call, kSlowReplyMilliseconds where it waits for a reply (Session::awaitReply() waits on
    // after that).
    int receiveTimeout() const;

    // Shuts the socket down, which ends every read and write on it.
    void shutDown();

    // Number of the next call on this connection.
    uint64_t nextSequence() { return ++mSequence; }

  private:
    enum class Outcome { kServed, kNothing, kOver };
    // Receives and serves one message. kNothing: none came within the time limit.
    Outcome serveOne();

    const int mSocket;
    const Role mRole;
    const sp<Session> mSession;
    FrameReader mReader;
    uint64_t mSequence = 0;
};

}  // namespace android::hardware::transport
