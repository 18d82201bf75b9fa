#include "RawClient.h"

#include <linux/android/binder.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>

namespace qortv::test {

RawFrame RawFrame::call(uint64_t target, uint32_t code, const std::string& token) {
    RawFrame frame;
    frame.header.type = wire::FrameType::kCall;
    frame.header.target = target;
    frame.header.code = code;
    frame.header.sequence = 1;
    frame.data.assign(token.begin(), token.end());
    frame.data.push_back(0);
    frame.data.resize((frame.data.size() + 3) & ~size_t{3});
    return frame;
}

void RawFrame::addInt(uint32_t value) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(&value);
    data.insert(data.end(), bytes, bytes + sizeof(value));
}

Bytes RawFrame::bytes() const {
    wire::FrameHeader head = header;
    const size_t paddedData = (data.size() + 7) & ~size_t{7};
    const size_t offsetBytes = offsets.size() * sizeof(uint64_t);
    Bytes all(sizeof(head) + paddedData + offsetBytes + buffers.size());
    if (head.dataSize == 0) head.dataSize = static_cast<uint32_t>(data.size());
    if (head.objectCount == 0) head.objectCount = static_cast<uint32_t>(offsets.size());
    if (head.bufferSize == 0) head.bufferSize = static_cast<uint32_t>(buffers.size());
    if (head.size == 0) head.size = static_cast<uint32_t>(all.size());
    uint8_t* at = all.data();
    memcpy(at, &head, sizeof(head));
    at += sizeof(head);
    std::copy(data.begin(), data.end(), at);
    at += paddedData;
    if (offsetBytes > 0) memcpy(at, offsets.data(), offsetBytes);
    std::copy(buffers.begin(), buffers.end(), at + offsetBytes);
    return all;
}

std::string RawClient::socketIn(const std::string& folder) {
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
        if (file.is_socket() && !file.is_symlink()) return file.path();
    }
    return "";
}

RawClient::RawClient(const std::string& folder) : mPath(socketIn(folder)) {}

RawClient::~RawClient() {
    closeAll();
}

void RawClient::closeAll() {
    for (int* fd : {&mNotices, &mCalls}) {
        if (*fd >= 0) close(*fd);
        *fd = -1;
    }
}

static int connectRaw(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    strncpy(address.sun_path, path.c_str(), sizeof(address.sun_path) - 1);
    const int fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (connect(fd, reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0) return fd;
    close(fd);
    return -1;
}

static bool receiveReply(int socket, wire::HelloReply* reply) {
    return recv(socket, reply, sizeof(*reply), MSG_WAITALL) == sizeof(*reply) &&
           reply->accepted == 1;
}

bool RawClient::sendHello(int socket, wire::Purpose purpose) const {
    wire::Hello hello{wire::kMagic, wire::kVersion, purpose, 0x1234, mSession, getpid(), 0};
    return ::send(socket, &hello, sizeof(hello), MSG_NOSIGNAL) == sizeof(hello);
}

int RawClient::greet(wire::Purpose purpose, wire::HelloReply* reply) {
    const int fd = connectRaw(mPath);
    if (fd >= 0 && sendHello(fd, purpose) && receiveReply(fd, reply)) return fd;
    if (fd >= 0) close(fd);
    return -1;
}

bool RawClient::connectOnly() {
    mNotices = connectRaw(mPath);
    return mNotices >= 0;
}

bool RawClient::beginSession() {
    return sendHello(mNotices, wire::Purpose::kSession);
}

bool RawClient::isAccepted() {
    wire::HelloReply reply;
    return receiveReply(mNotices, &reply);
}

bool RawClient::openSession() {
    wire::HelloReply reply;
    mNotices = greet(wire::Purpose::kSession, &reply);
    mSession = reply.session;
    return mNotices >= 0;
}

bool RawClient::openCalls() {
    wire::HelloReply reply;
    mCalls = greet(wire::Purpose::kCalls, &reply);
    return mCalls >= 0;
}

uint64_t RawClient::lookUp() {
    RawFrame frame =
            RawFrame::call(wire::kRootObject, wire::kLookUp, "qortv.test@1.0::IEcho/default");
    wire::FrameHeader header;
    Bytes rest;
    if (!send(mCalls, frame.bytes()) || !receive(mCalls, &header, &rest)) return 0;
    flat_binder_object object;
    memcpy(&object, rest.data(), sizeof(object));
    return object.cookie;
}

bool RawClient::send(int socket, const Bytes& bytes, const std::vector<int>& fds) {
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int) * 253)];
    iovec piece{const_cast<uint8_t*>(bytes.data()), bytes.size()};
    msghdr message{};
    message.msg_iov = &piece;
    message.msg_iovlen = 1;
    if (!fds.empty()) {
        message.msg_control = control;
        message.msg_controllen = CMSG_SPACE(sizeof(int) * fds.size());
        cmsghdr* head = CMSG_FIRSTHDR(&message);
        head->cmsg_level = SOL_SOCKET;
        head->cmsg_type = SCM_RIGHTS;
        head->cmsg_len = CMSG_LEN(sizeof(int) * fds.size());
        memcpy(CMSG_DATA(head), fds.data(), sizeof(int) * fds.size());
    }
    return sendmsg(socket, &message, MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
}

bool RawClient::receive(int socket, wire::FrameHeader* header, Bytes* rest) {
    if (recv(socket, header, sizeof(*header), MSG_WAITALL) != sizeof(*header)) return false;
    rest->resize(header->size - sizeof(*header));
    return rest->empty() || recv(socket, rest->data(), rest->size(), MSG_WAITALL) ==
                                    static_cast<ssize_t>(rest->size());
}

bool RawClient::isClosed(int socket) {
    pollfd state{socket, POLLIN, 0};
    constexpr int kMilliseconds = 120'000;  // far beyond what a slow machine needs
    if (poll(&state, 1, kMilliseconds) != 1) return false;
    char byte;
    return recv(socket, &byte, 1, 0) <= 0;
}

}  // namespace qortv::test
