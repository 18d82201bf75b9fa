// Receives messages ("frames") from a socket, mostly one with each system call.
#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

#include <hwbinder/ParcelContents.h>
#include <transport/wire.h>

namespace android::hardware::transport {

enum class ReceiveResult {
    kFrame,
    kNothing,          // no whole message came within the socket's time limit
    kClosed,           // the peer closed the connection
    kDescriptorsLost,  // a message came, but this process had no room for its descriptors
    kMalformed,
};

// Receives messages from one socket. Used by one thread at a time.
class FrameReader {
  public:
    // manyFrames: the peer may send a message before the previous one was served. The reader keeps
    // what one read brought beyond a message. Without it, more than one message is an error: the
    // peer has to wait for the reply.
    explicit FrameReader(bool manyFrames) : mManyFrames(manyFrames) {}
    ~FrameReader();
    FrameReader(const FrameReader&) = delete;
    FrameReader& operator=(const FrameReader&) = delete;

    // Receives one message into `contents`, which owns the descriptors that come along, whatever
    // the result. A message that is not made of notices has been checked by
    // ParcelContents::accept(). On kMalformed *reason says why (a literal). Half a message is kept
    // for the next call, unless it has been half for longer than limits::kMessageMilliseconds.
    ReceiveResult receive(int socket, wire::FrameHeader* header, ParcelContents* contents,
                          const char** reason);

    // Whether bytes of a further message have been received already.
    bool hasMore() const { return !mRest.empty() && !mRestIsHalf; }

  private:
    using Clock = std::chrono::steady_clock;
    struct Incoming;

    void resume(Incoming* incoming);
    ReceiveResult receiveBytes(int socket, Incoming* incoming, wire::FrameHeader* header,
                               const char** reason);
    ReceiveResult keepHalf(Incoming* incoming, const char** reason);
    ReceiveResult separateFrame(const Incoming& incoming, const wire::FrameHeader& header,
                                const char** reason);

    const bool mManyFrames;
    // What was received beyond the last message: further messages, the first part of one, or both.
    std::vector<uint8_t> mRest;
    std::vector<int> mRestFds;          // owned
    bool mRestIsHalf = false;           // it is part of one message, and a read has brought no more
    bool mRestLostDescriptors = false;  // there was no room for some descriptors of that message
    Clock::time_point mHalfSince{};     // time of the first such read; zero if there was none
};

}  // namespace android::hardware::transport
