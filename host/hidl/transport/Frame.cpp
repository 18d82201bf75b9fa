#include <transport/Frame.h>

#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <utility>

#include <hidl/Limits.h>

namespace android::hardware::transport {

namespace {

using wire::FrameHeader;

constexpr size_t kMaxFrame = sizeof(FrameHeader) + limits::kTransactionBytes;
// First read of a message: most have less than this and come whole.
constexpr size_t kFirstRead = 4096;
// Behind each message lie so many zeros: who reads a text without an end at the message's end finds
// one there, and nothing of an earlier message.
constexpr size_t kZerosBehind = 8;
// Messages up to this size are copied together: cheaper than a list of small pieces.
constexpr size_t kCopyWhole = 8 * 1024;
// In longer messages, buffers from this size on are sent from where they are.
constexpr size_t kSendInPlace = 1024;
constexpr size_t kMaxPieces = 1024;  // IOV_MAX

constexpr size_t kControlSize = CMSG_SPACE(sizeof(int) * limits::kTransactionDescriptors);

// What a thread needs for sending, kept from one message to the next.
struct Scratch {
    std::vector<uint8_t> bytes;
    std::vector<iovec> pieces;
};
thread_local Scratch tScratch;

// Sends all pieces, the descriptors with the first byte.
SendResult sendAll(int socket, iovec* pieces, size_t pieceCount, const std::vector<int>* fds,
                   int flags) {
    alignas(cmsghdr) char control[kControlSize];
    msghdr message{};
    if (fds != nullptr && !fds->empty()) {
        const size_t size = sizeof(int) * fds->size();
        message.msg_control = control;
        message.msg_controllen = CMSG_SPACE(size);
        cmsghdr* head = CMSG_FIRSTHDR(&message);
        head->cmsg_level = SOL_SOCKET;
        head->cmsg_type = SCM_RIGHTS;
        head->cmsg_len = CMSG_LEN(size);
        memcpy(CMSG_DATA(head), fds->data(), size);
    }
    bool started = false;
    while (pieceCount > 0) {
        message.msg_iov = pieces;
        message.msg_iovlen = std::min(pieceCount, kMaxPieces);
        ssize_t sent = sendmsg(socket, &message, MSG_NOSIGNAL | flags);
        if (sent < 0) {
            if (errno == EINTR) continue;
            const bool full = errno == EAGAIN || errno == EWOULDBLOCK;
            return full && !started ? SendResult::kWouldBlock : SendResult::kBroken;
        }
        started = true;
        message.msg_control = nullptr;
        message.msg_controllen = 0;
        while (pieceCount > 0 && static_cast<size_t>(sent) >= pieces->iov_len) {
            sent -= static_cast<ssize_t>(pieces->iov_len);
            ++pieces;
            --pieceCount;
        }
        if (sent > 0) {
            pieces->iov_base = static_cast<uint8_t*>(pieces->iov_base) + sent;
            pieces->iov_len -= static_cast<size_t>(sent);
        }
    }
    return SendResult::kSent;
}

// Calls visit(pointer, length) for each buffer of `contents`, in order.
template <typename Visitor>
void visitBuffers(const ParcelContents& contents, Visitor visit) {
    for (const binder_size_t offset : contents.objects) {
        const auto* object =
                reinterpret_cast<const binder_buffer_object*>(contents.data.data() + offset);
        if (object->hdr.type != BINDER_TYPE_PTR || object->length == 0) continue;
        visit(reinterpret_cast<const void*>(static_cast<uintptr_t>(object->buffer)),
              static_cast<size_t>(object->length));
    }
}

uint8_t* putPadded(uint8_t* to, const void* bytes, size_t length) {
    if (length > 0) memcpy(to, bytes, length);
    const size_t padded = padTo8(length);
    memset(to + length, 0, padded - length);
    return to + padded;
}

}  // namespace

bool measureFrame(const ParcelContents* contents, FrameHeader* header) {
    header->dataSize = header->objectCount = header->bufferSize = 0;
    header->descriptorCount = 0;
    size_t size = sizeof(FrameHeader);
    if (contents != nullptr) {
        const size_t objects = contents->objects.size() * sizeof(binder_size_t);
        size += padTo8(contents->data.size()) + objects + contents->bufferBytes;
        if (size > kMaxFrame || contents->fds.size() > limits::kTransactionDescriptors)
            return false;
        header->dataSize = static_cast<uint32_t>(contents->data.size());
        header->objectCount = static_cast<uint32_t>(contents->objects.size());
        header->bufferSize = static_cast<uint32_t>(contents->bufferBytes);
        header->descriptorCount = static_cast<uint16_t>(contents->fds.size());
    }
    header->size = static_cast<uint32_t>(size);
    return true;
}

SendResult sendFrame(int socket, const FrameHeader& header, const ParcelContents* contents) {
    Scratch& scratch = tScratch;
    const bool whole = header.size <= kCopyWhole;
    size_t copied = header.size;
    if (!whole && contents != nullptr) {
        visitBuffers(*contents, [&](const void*, size_t length) {
            if (length >= kSendInPlace) copied -= length;
        });
    }
    if (scratch.bytes.size() < copied) scratch.bytes.resize(copied);
    scratch.pieces.clear();

    // `start` is where the copied run begins that has not become a piece yet.
    uint8_t* start = scratch.bytes.data();
    uint8_t* at = putPadded(start, &header, sizeof(header));
    if (contents != nullptr) {
        at = putPadded(at, contents->data.data(), contents->data.size());
        at = putPadded(at, contents->objects.data(),
                       contents->objects.size() * sizeof(binder_size_t));
        visitBuffers(*contents, [&](const void* bytes, size_t length) {
            if (whole || length < kSendInPlace) {
                at = putPadded(at, bytes, length);
                return;
            }
            scratch.pieces.push_back({start, static_cast<size_t>(at - start)});
            scratch.pieces.push_back({const_cast<void*>(bytes), length});
            start = at;
            const size_t padding = padTo8(length) - length;
            memset(at, 0, padding);
            at += padding;
        });
    }
    if (at != start) scratch.pieces.push_back({start, static_cast<size_t>(at - start)});
    const SendResult result = sendAll(socket, scratch.pieces.data(), scratch.pieces.size(),
                                      contents != nullptr ? &contents->fds : nullptr, 0);
    if (scratch.bytes.size() > 8 * kCopyWhole) std::vector<uint8_t>().swap(scratch.bytes);
    return result;
}

SendResult sendNotices(int socket, const wire::Notice* notices, size_t count) {
    FrameHeader header{};
    header.type = wire::FrameType::kNotices;
    header.dataSize = static_cast<uint32_t>(count * sizeof(wire::Notice));
    header.size = static_cast<uint32_t>(sizeof(header) + header.dataSize);
    iovec pieces[] = {{&header, sizeof(header)},
                      {const_cast<wire::Notice*>(notices), header.dataSize}};
    return sendAll(socket, pieces, 2, nullptr, MSG_DONTWAIT);
}

FrameReader::~FrameReader() {
    for (int fd : mRestFds) close(fd);
}

ReceiveResult FrameReader::receive(int socket, FrameHeader* header, ParcelContents* contents,
                                   const char** reason) {
    auto malformed = [&](const char* why) {
        *reason = why;
        return ReceiveResult::kMalformed;
    };
    size_t have = mRest.size();
    size_t room = std::max(kFirstRead, have);
    uint8_t* bytes = contents->storage(room + kZerosBehind, 0);
    if (have > 0) {
        memcpy(bytes, mRest.data(), have);
        mRest.clear();
        contents->fds.swap(mRestFds);
    }
    bool descriptorsLost = std::exchange(mDescriptorsLost, false);
    mHalf = false;
    size_t need = sizeof(FrameHeader);
    bool headerRead = false;
    for (;;) {
        if (!headerRead && have >= sizeof(FrameHeader)) {
            memcpy(header, bytes, sizeof(FrameHeader));
            if (header->size < sizeof(FrameHeader) || header->size % 8 != 0) {
                return malformed("message of an impossible size");
            }
            if (header->size > kMaxFrame) return malformed("message longer than allowed");
            if (header->descriptorCount > limits::kTransactionDescriptors) {
                return malformed("more descriptors than allowed");
            }
            headerRead = true;
            need = header->size;
            if (need > room) {
                bytes = contents->storage(need + kZerosBehind, have);
                room = need;
            }
        }
        if (have >= need) break;

        alignas(cmsghdr) char control[kControlSize];
        iovec piece{bytes + have, room - have};
        msghdr message{};
        message.msg_iov = &piece;
        message.msg_iovlen = 1;
        message.msg_control = control;
        message.msg_controllen = sizeof(control);
        const ssize_t got = recvmsg(socket, &message, MSG_CMSG_CLOEXEC);
        if (got < 0) {
            if (errno == EINTR) continue;
            if (errno != EAGAIN && errno != EWOULDBLOCK) return ReceiveResult::kClosed;
            if (have == 0) return ReceiveResult::kNothing;
            // The thread has other peers to serve; the half is kept for whoever reads on.
            const auto now = Clock::now();
            if (mHalfSince == Clock::time_point{}) mHalfSince = now;
            if (now - mHalfSince >= std::chrono::milliseconds(limits::kMessageMilliseconds)) {
                return malformed("message that stopped half-way");
            }
            mRest.assign(bytes, bytes + have);
            mRestFds.swap(contents->fds);
            mDescriptorsLost = descriptorsLost;
            mHalf = true;
            return ReceiveResult::kNothing;
        }
        for (cmsghdr* head = CMSG_FIRSTHDR(&message); head != nullptr;
             head = CMSG_NXTHDR(&message, head)) {
            if (head->cmsg_level != SOL_SOCKET || head->cmsg_type != SCM_RIGHTS) continue;
            const size_t count = (head->cmsg_len - CMSG_LEN(0)) / sizeof(int);
            const auto* fds = reinterpret_cast<const int*>(CMSG_DATA(head));
            contents->fds.insert(contents->fds.end(), fds, fds + count);
        }
        if ((message.msg_flags & MSG_CTRUNC) != 0) descriptorsLost = true;
        if (got == 0) {
            if (have == 0) return ReceiveResult::kClosed;
            return malformed("message cut off by the end of the connection");
        }
        have += static_cast<size_t>(got);
        if (contents->fds.size() > 2 * limits::kTransactionDescriptors) {
            return malformed("more descriptors than allowed");
        }
    }

    mHalfSince = {};
    if (have > need) {
        if (!mManyFrames) return malformed("message before the answer to the last one");
        mRest.assign(bytes + need, bytes + have);
    }
    memset(bytes + need, 0, kZerosBehind);
    const size_t expected = header->descriptorCount;
    if (contents->fds.size() > expected) {
        if (!hasMore()) return malformed("descriptors that no message mentions");
        mRestFds.assign(contents->fds.begin() + static_cast<ptrdiff_t>(expected),
                        contents->fds.end());
        contents->fds.resize(expected);
    } else if (contents->fds.size() < expected) {
        // With messages behind it nobody could tell whose descriptors were lost.
        if (!descriptorsLost || mManyFrames) return malformed("descriptors that did not come");
        return ReceiveResult::kDescriptorsLost;
    }

    if (header->type == wire::FrameType::kNotices) {
        if (header->dataSize != header->size - sizeof(FrameHeader) || expected != 0 ||
            header->dataSize % sizeof(wire::Notice) != 0) {
            return malformed("notices of an impossible size");
        }
        return ReceiveResult::kFrame;
    }
    if (header->dataSize > header->size) return malformed("message whose parts do not add up");
    const uint64_t parts = padTo8(size_t{header->dataSize}) +
                           uint64_t{header->objectCount} * sizeof(binder_size_t) +
                           uint64_t{header->bufferSize};
    if (parts != header->size - sizeof(FrameHeader) || header->bufferSize % 8 != 0) {
        return malformed("message whose parts do not add up");
    }
    *reason = contents->accept(sizeof(FrameHeader), header->dataSize, header->objectCount,
                               header->bufferSize);
    return *reason == nullptr ? ReceiveResult::kFrame : ReceiveResult::kMalformed;
}

}  // namespace android::hardware::transport
