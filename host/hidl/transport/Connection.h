// One socket of a session.
#pragma once

#include <cstdint>

#include <transport/Frame.h>
#include <transport/ThreadPool.h>
#include <utils/StrongPointer.h>

namespace android::hardware::transport {

class Session;

// What this process does on a connection.
enum class Role {
    kNotices,  // both send notices and oneway calls at any time
    kCalls,    // this process calls, the peer answers
    kServes,   // the peer calls, this process answers
};

// Belongs to one thread at a time: the thread that took it from the session's idle ones, or the
// pool thread that its event came to. Only shutDown() may be called by others.
class Connection : public Pollable {
  public:
    // Takes over `socket`.
    Connection(int socket, Role role, const sp<Session>& session);
    ~Connection() override;

    void onReady() override;
    int fd() const override { return mSocket; }

    Role role() const { return mRole; }
    FrameReader& reader() { return mReader; }
    // Milliseconds: a thread that lingers here after an answer must come back soon; one that waits
    // for an answer waits on, see Session::await().
    int receiveTimeout() const;

    // Ends what any thread is doing on the connection.
    void shutDown();

    // Number of the next call on this connection.
    uint64_t nextSequence() { return ++mSequence; }

  private:
    // Receives and serves one message; false if the connection is over.
    enum class Step { kServed, kNothing, kOver };
    Step step();

    const int mSocket;
    const Role mRole;
    const sp<Session> mSession;
    FrameReader mReader;
    uint64_t mSequence = 0;
};

}  // namespace android::hardware::transport
