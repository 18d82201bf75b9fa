#include <transport/FrameSender.h>

#include <sys/socket.h>
#include <sys/uio.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <vector>

#include <hidl/Limits.h>

namespace android::hardware::transport {

namespace {

using wire::FrameHeader;

// Messages up to this many bytes are copied together: that is cheaper than a list of small pieces.
constexpr size_t kCopyWhole = 8 * 1024;
// In longer messages, buffers of at least this many bytes are sent without a copy.
constexpr size_t kSendInPlace = 1024;
constexpr size_t kMaxPieces = 1024;  // IOV_MAX: what one sendmsg takes

// Memory that a thread keeps from one message to the next.
struct Scratch {
    std::vector<uint8_t> bytes;  // copied parts of the message
    std::vector<iovec> pieces;
};
thread_local Scratch tScratch;

// Makes `fds` go along with the message. `control` has room for them.
void attachDescriptors(const std::vector<int>& fds, char* control, msghdr* message) {
    const size_t size = sizeof(int) * fds.size();
    message->msg_control = control;
    message->msg_controllen = CMSG_SPACE(size);
    cmsghdr* head = CMSG_FIRSTHDR(message);
    head->cmsg_level = SOL_SOCKET;
    head->cmsg_type = SCM_RIGHTS;
    head->cmsg_len = CMSG_LEN(size);
    memcpy(CMSG_DATA(head), fds.data(), size);
}

// Sends all pieces, the descriptors (null: none) with the first byte. Changes the pieces.
SendResult sendAll(int socket, iovec* pieces, size_t pieceCount, const std::vector<int>* fds,
                   int flags) {
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int) * limits::kTransactionDescriptors)];
    msghdr message{};
    if (fds != nullptr && !fds->empty()) attachDescriptors(*fds, control, &message);
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

// Copies bytes and pads them with zeros to a multiple of 8. Returns the end.
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
        if (size > wire::kMaxFrameSize) return false;
        if (contents->fds.size() > limits::kTransactionDescriptors) return false;
        header->dataSize = static_cast<uint32_t>(contents->data.size());
        header->objectCount = static_cast<uint32_t>(contents->objects.size());
        header->bufferSize = static_cast<uint32_t>(contents->bufferBytes);
        header->descriptorCount = static_cast<uint16_t>(contents->fds.size());
    }
    header->size = static_cast<uint32_t>(size);
    return true;
}

// Returns how many bytes of the message are to be copied together; the rest is sent in place.
static size_t bytesToCopy(const FrameHeader& header, const ParcelContents* contents) {
    size_t copied = header.size;
    if (header.size <= kCopyWhole || contents == nullptr) return copied;
    visitBuffers(*contents, [&](const void*, size_t length) {
        if (length >= kSendInPlace) copied -= length;
    });
    return copied;
}

// Makes the message's pieces: runs of copied parts, and between them the buffers sent in place.
static void gatherPieces(const FrameHeader& header, const ParcelContents* contents,
                         Scratch* scratch) {
    const bool whole = header.size <= kCopyWhole;
    scratch->pieces.clear();
    uint8_t* runStart = scratch->bytes.data();
    uint8_t* at = putPadded(runStart, &header, sizeof(header));
    const auto endRun = [&] {
        if (at != runStart) {
            scratch->pieces.push_back({runStart, static_cast<size_t>(at - runStart)});
        }
        runStart = at;
    };
    if (contents != nullptr) {
        at = putPadded(at, contents->data.data(), contents->data.size());
        at = putPadded(at, contents->objects.data(),
                       contents->objects.size() * sizeof(binder_size_t));
        visitBuffers(*contents, [&](const void* bytes, size_t length) {
            if (whole || length < kSendInPlace) {
                at = putPadded(at, bytes, length);
                return;
            }
            endRun();
            scratch->pieces.push_back({const_cast<void*>(bytes), length});
            const size_t padding = padTo8(length) - length;
            memset(at, 0, padding);
            at += padding;
        });
    }
    endRun();
}

SendResult sendFrame(int socket, const FrameHeader& header, const ParcelContents* contents) {
    Scratch& scratch = tScratch;
    const size_t copied = bytesToCopy(header, contents);
    if (scratch.bytes.size() < copied) scratch.bytes.resize(copied);
    gatherPieces(header, contents, &scratch);
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

}  // namespace android::hardware::transport
