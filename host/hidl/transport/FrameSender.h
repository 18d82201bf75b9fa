// Sends messages ("frames") over a socket: gathers a parcel's parts into one system call.
#pragma once

#include <cstddef>

#include <hwbinder/ParcelContents.h>
#include <transport/wire.h>

namespace android::hardware::transport {

// Fills in the sizes of a header for a message with these contents (null: none). Returns false if
// the message is longer than a call may be, or has too many descriptors.
bool measureFrame(const ParcelContents* contents, wire::FrameHeader* header);

enum class SendResult {
    kSent,
    kWouldBlock,  // nothing was sent: the peer does not read (only where a time limit is set)
    kBroken,      // the connection cannot be used any more
};

// Sends a measured message with its descriptors. Blocks while the peer does not read, at most for
// the socket's time limit.
SendResult sendFrame(int socket, const wire::FrameHeader& header, const ParcelContents* contents);

// Sends `count` notices as one message without ever blocking.
SendResult sendNotices(int socket, const wire::Notice* notices, size_t count);

}  // namespace android::hardware::transport
