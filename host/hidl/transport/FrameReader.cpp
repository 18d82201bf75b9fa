#include <transport/FrameReader.h>

#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include <hidl/Limits.h>

namespace android::hardware::transport {

using wire::FrameHeader;

namespace {

// Bytes of the first read of a message: most are shorter than this and come whole.
constexpr size_t kFirstRead = 4096;
// Zeros behind each message: who reads a text without an end at the message's end finds one there,
// and nothing of an earlier message.
constexpr size_t kZerosBehind = 8;

// Moves the descriptors that came with a read to the end of `fds`.
void takeDescriptors(msghdr* message, std::vector<int>* fds) {
    for (cmsghdr* head = CMSG_FIRSTHDR(message); head != nullptr;
         head = CMSG_NXTHDR(message, head)) {
        if (head->cmsg_level != SOL_SOCKET || head->cmsg_type != SCM_RIGHTS) continue;
        const size_t count = (head->cmsg_len - CMSG_LEN(0)) / sizeof(int);
        const auto* received = reinterpret_cast<const int*>(CMSG_DATA(head));
        fds->insert(fds->end(), received, received + count);
    }
}

// Checks that the parts of a whole message add up, and its objects. Returns null or what is wrong.
const char* checkFrame(const FrameHeader& header, ParcelContents* contents) {
    if (header.type == wire::FrameType::kNotices) {
        if (header.dataSize != header.size - sizeof(FrameHeader) || header.descriptorCount != 0 ||
            header.dataSize % sizeof(wire::Notice) != 0) {
            return "notices of an impossible size";
        }
        return nullptr;
    }
    if (header.dataSize > header.size) return "message whose parts do not add up";
    const uint64_t parts = padTo8(size_t{header.dataSize}) +
                           uint64_t{header.objectCount} * sizeof(binder_size_t) +
                           uint64_t{header.bufferSize};
    if (parts != header.size - sizeof(FrameHeader) || header.bufferSize % 8 != 0) {
        return "message whose parts do not add up";
    }
    return contents->accept(sizeof(FrameHeader), header.dataSize, header.objectCount,
                            header.bufferSize);
}

ReceiveResult malformed(const char* why, const char** reason) {
    *reason = why;
    return ReceiveResult::kMalformed;
}

}  // namespace

// A message while it is received. Its bytes are in the contents' storage.
struct FrameReader::Incoming {
    explicit Incoming(ParcelContents* received) : contents(received) {}

    bool isWhole() const { return headerRead && have >= need; }

    // Makes room for `size` bytes (and the zeros behind them), keeping those that are there.
    void makeRoom(size_t size) {
        bytes = contents->storage(size + kZerosBehind, have);
        room = size;
    }

    // Copies the header out as soon as its bytes are there. Returns null or what is wrong with it.
    const char* readHeader(FrameHeader* header) {
        if (headerRead || have < sizeof(FrameHeader)) return nullptr;
        memcpy(header, bytes, sizeof(FrameHeader));
        if (header->size < sizeof(FrameHeader) || header->size % 8 != 0) {
            return "message of an impossible size";
        }
        if (header->size > wire::kMaxFrameSize) return "message longer than allowed";
        if (header->descriptorCount > limits::kTransactionDescriptors) {
            return "more descriptors than allowed";
        }
        headerRead = true;
        need = header->size;
        if (need > room) makeRoom(need);
        return nullptr;
    }

    // One read. Returns what recvmsg returned, with its errno, and takes the descriptors over.
    ssize_t read(int socket) {
        alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int) * limits::kTransactionDescriptors)];
        iovec piece{bytes + have, room - have};
        msghdr message{};
        message.msg_iov = &piece;
        message.msg_iovlen = 1;
        message.msg_control = control;
        message.msg_controllen = sizeof(control);
        const ssize_t got = recvmsg(socket, &message, MSG_CMSG_CLOEXEC);
        if (got < 0) return got;
        takeDescriptors(&message, &contents->fds);
        if ((message.msg_flags & MSG_CTRUNC) != 0) descriptorsLost = true;
        return got;
    }

    ParcelContents* const contents;
    uint8_t* bytes = nullptr;
    size_t room = 0;  // capacity of `bytes`, without the zeros behind
    size_t have = 0;  // bytes received so far
    size_t need = 0;  // length of the message, once the header is read
    bool headerRead = false;
    bool descriptorsLost = false;
};

FrameReader::~FrameReader() {
    for (int fd : mRestFds) close(fd);
}

ReceiveResult FrameReader::receive(int socket, FrameHeader* header, ParcelContents* contents,
                                   const char** reason) {
    Incoming incoming(contents);
    resume(&incoming);
    const ReceiveResult received = receiveBytes(socket, &incoming, header, reason);
    if (received != ReceiveResult::kFrame) return received;
    const ReceiveResult separated = separateFrame(incoming, *header, reason);
    if (separated != ReceiveResult::kFrame) return separated;
    const char* why = checkFrame(*header, contents);
    return why == nullptr ? ReceiveResult::kFrame : malformed(why, reason);
}

// Begins with what was received beyond the last message.
void FrameReader::resume(Incoming* incoming) {
    incoming->makeRoom(std::max(kFirstRead, mRest.size()));
    if (!mRest.empty()) {
        memcpy(incoming->bytes, mRest.data(), mRest.size());
        incoming->have = mRest.size();
        mRest.clear();
        incoming->contents->fds.swap(mRestFds);
    }
    incoming->descriptorsLost = std::exchange(mRestLostDescriptors, false);
    mRestIsHalf = false;
}

// Reads until the message is whole (kFrame), nothing more is there, or something is wrong.
ReceiveResult FrameReader::receiveBytes(int socket, Incoming* incoming, FrameHeader* header,
                                        const char** reason) {
    for (;;) {
        const char* why = incoming->readHeader(header);
        if (why != nullptr) return malformed(why, reason);
        if (incoming->isWhole()) return ReceiveResult::kFrame;

        const ssize_t got = incoming->read(socket);
        if (got < 0) {
            if (errno == EINTR) continue;
            if (errno != EAGAIN && errno != EWOULDBLOCK) return ReceiveResult::kClosed;
            if (incoming->have == 0) return ReceiveResult::kNothing;
            return keepHalf(incoming, reason);
        }
        if (got == 0) {
            if (incoming->have == 0) return ReceiveResult::kClosed;
            return malformed("message cut off by the end of the connection", reason);
        }
        incoming->have += static_cast<size_t>(got);
        if (incoming->contents->fds.size() > 2 * limits::kTransactionDescriptors) {
            return malformed("more descriptors than allowed", reason);
        }
    }
}

// Keeps half a message for the next receive(): the thread has other peers to serve meanwhile.
ReceiveResult FrameReader::keepHalf(Incoming* incoming, const char** reason) {
    const auto now = Clock::now();
    if (mHalfSince == Clock::time_point{}) mHalfSince = now;
    if (now - mHalfSince >= std::chrono::milliseconds(limits::kMessageMilliseconds)) {
        return malformed("message that stopped half-way", reason);
    }
    mRest.assign(incoming->bytes, incoming->bytes + incoming->have);
    mRestFds.swap(incoming->contents->fds);
    mRestLostDescriptors = incoming->descriptorsLost;
    mRestIsHalf = true;
    return ReceiveResult::kNothing;
}

// Leaves the contents with the bytes and descriptors of one message and keeps those behind it.
ReceiveResult FrameReader::separateFrame(const Incoming& incoming, const FrameHeader& header,
                                         const char** reason) {
    mHalfSince = {};
    uint8_t* const end = incoming.bytes + incoming.need;
    if (incoming.have > incoming.need) {
        if (!mManyFrames) return malformed("message before the answer to the last one", reason);
        mRest.assign(end, incoming.bytes + incoming.have);
    }
    memset(end, 0, kZerosBehind);

    std::vector<int>& fds = incoming.contents->fds;
    const size_t expected = header.descriptorCount;
    if (fds.size() > expected) {
        if (!hasMore()) return malformed("descriptors that no message mentions", reason);
        mRestFds.assign(fds.begin() + static_cast<ptrdiff_t>(expected), fds.end());
        fds.resize(expected);
    } else if (fds.size() < expected) {
        // With messages behind it nobody could tell whose descriptors were lost.
        if (!incoming.descriptorsLost || mManyFrames) {
            return malformed("descriptors that did not come", reason);
        }
        return ReceiveResult::kDescriptorsLost;
    }
    return ReceiveResult::kFrame;
}

}  // namespace android::hardware::transport
