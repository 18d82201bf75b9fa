// Whole messages over a socket: gathered from a parcel's parts in one write, received in one read.
#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

#include <hwbinder/ParcelContents.h>
#include <transport/wire.h>

namespace android::hardware::transport {

// Fills in the sizes of a header for a message with these contents (null: none). False if the
// message is longer than a call may be, or has too many descriptors.
bool measureFrame(const ParcelContents* contents, wire::FrameHeader* header);

enum class SendResult {
    kSent,
    kWouldBlock,  // nothing was sent: the peer does not read (only where a time limit is set)
    kBroken,      // the connection is of no use any more
};

// Sends a measured message with its descriptors. Blocks while the peer does not read.
SendResult sendFrame(int socket, const wire::FrameHeader& header, const ParcelContents* contents);

// Sends notices without ever blocking.
SendResult sendNotices(int socket, const wire::Notice* notices, size_t count);

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
    // A reader that may find several messages in one read keeps the rest for the next ones; on
    // connections where the peer waits for an answer first, more than one is an error.
    explicit FrameReader(bool manyFrames) : mManyFrames(manyFrames) {}
    ~FrameReader();
    FrameReader(const FrameReader&) = delete;
    FrameReader& operator=(const FrameReader&) = delete;

    // Receives one message into `contents`, checked by ParcelContents::accept() unless it is made
    // of notices. On kMalformed *reason says why (a literal). Half a message is kept for the next
    // time, as long as that is not too late.
    ReceiveResult receive(int socket, wire::FrameHeader* header, ParcelContents* contents,
                          const char** reason);

    // Whether bytes of a further message are here already.
    bool hasMore() const { return !mRest.empty() && !mHalf; }

  private:
    using Clock = std::chrono::steady_clock;

    const bool mManyFrames;
    std::vector<uint8_t> mRest;
    std::vector<int> mRestFds;
    bool mHalf = false;              // the rest is half a message
    Clock::time_point mHalfSince{};  // when it was first seen to be
    bool mDescriptorsLost = false;   // some of its descriptors were
};

}  // namespace android::hardware::transport
