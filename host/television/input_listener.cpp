#include "television/input_listener.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "television/base/log.h"

namespace television {
namespace {

/** Returns whether there is a socket at the path. */
bool isSocket(const std::string& path) {
    struct stat status;
    return lstat(path.c_str(), &status) == 0 && S_ISSOCK(status.st_mode);
}

}  // namespace

InputListener::InputListener(std::string path) : mPath(std::move(path)) {
    if (!listen()) return;
    mStop = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (mStop < 0) {
        LOG_TV_ERROR("cannot watch the input socket {}: {}", mPath, std::strerror(errno));
        return;
    }
    mThread = std::thread([this] { run(); });
}

InputListener::~InputListener() {
    if (mThread.joinable()) {
        eventfd_write(mStop, 1);
        mThread.join();
    }
    for (const Peer& peer : mPeers) close(peer.socket);
    if (mStop >= 0) close(mStop);
    if (mSocket < 0) return;
    close(mSocket);
    unlink(mPath.c_str());
}

bool InputListener::listen() {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (mPath.size() >= sizeof(address.sun_path)) {
        LOG_TV_ERROR("the path of the input socket has {} bytes, at most {} can be used: {}",
                     mPath.size(), sizeof(address.sun_path) - 1, mPath);
        return false;
    }
    mPath.copy(address.sun_path, mPath.size());
    if (isSocket(mPath)) unlink(mPath.c_str());
    const int made = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (made < 0 || bind(made, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
        LOG_TV_ERROR("cannot make the input socket {}: {}", mPath, std::strerror(errno));
        if (made >= 0) close(made);
        return false;
    }
    // From here on the socket's file is ours to remove.
    mSocket = made;
    constexpr int kBacklog = 16;
    if (::listen(mSocket, kBacklog) != 0) {
        LOG_TV_ERROR("cannot listen on the input socket {}: {}", mPath, std::strerror(errno));
        return false;
    }
    return true;
}

void InputListener::run() {
    std::vector<pollfd> watched;
    while (true) {
        watched.assign({{mStop, POLLIN, 0}, {mSocket, POLLIN, 0}});
        for (const Peer& peer : mPeers) watched.push_back({peer.socket, POLLIN, 0});
        if (poll(watched.data(), watched.size(), -1) < 0) {
            if (errno == EINTR) continue;
            LOG_TV_ERROR("cannot watch the input socket {}: {}", mPath, std::strerror(errno));
            return;
        }
        if (watched[0].revents != 0) return;
        size_t at = 2;
        const auto ended = [&](Peer& peer) {
            if (watched[at++].revents == 0 || receive(peer)) return false;
            close(peer.socket);
            return true;
        };
        // remove_if calls `ended` once for each peer in order, so that `at` follows it.
        mPeers.erase(std::remove_if(mPeers.begin(), mPeers.end(), ended), mPeers.end());
        if (watched[1].revents != 0) accept();
    }
}

void InputListener::accept() {
    const int socket = accept4(mSocket, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (socket < 0) {
        if (errno == EAGAIN || errno == ECONNABORTED || errno == EINTR) return;
        if (!mWarned) {
            LOG_TV_WARN("cannot take a connection of the input socket {}: {}", mPath,
                        std::strerror(errno));
        }
        mWarned = true;
        // When the process has no descriptor left, poll would report the same connection again at
        // once; closing a peer frees one.
        if (mPeers.empty()) {
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
            return;
        }
    }
    if (mPeers.size() == kMostPeers || socket < 0) {
        close(mPeers.front().socket);
        mPeers.pop_front();
    }
    if (socket >= 0) mPeers.push_back({socket, {}, 0});
}

/** Reads what the peer has sent, at most 4096 bytes; false when the connection has ended. */
bool InputListener::receive(Peer& peer) {
    // One read for each turn, so that a peer that never stops sending leaves the others theirs.
    std::array<uint8_t, 4096> bytes;
    const ssize_t got = recv(peer.socket, bytes.data(), bytes.size(), 0);
    if (got < 0) return errno == EAGAIN || errno == EINTR;
    if (got == 0) return false;
    std::lock_guard<std::mutex> lock(mMutex);
    for (ssize_t i = 0; i < got; ++i) {
        peer.bytes[peer.filled++] = bytes[static_cast<size_t>(i)];
        if (peer.filled < peer.bytes.size()) continue;
        peer.filled = 0;
        InputEvent event;
        std::memcpy(event.data(), peer.bytes.data(), sizeof(event));
        if (mEvents.size() == kKept) mEvents.pop_front();
        mEvents.push_back(event);
        ++mCount;
    }
    return true;
}

std::vector<InputEvent> InputListener::events() const {
    std::lock_guard<std::mutex> lock(mMutex);
    return {mEvents.begin(), mEvents.end()};
}

uint64_t InputListener::count() const {
    std::lock_guard<std::mutex> lock(mMutex);
    return mCount;
}

}  // namespace television
