#include <transport/Listener.h>

#include <sys/socket.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <utility>

#include <hidl/Limits.h>
#include <transport/Log.h>
#include <transport/Process.h>
#include <transport/Trust.h>
#include <transport/wire.h>

namespace android::hardware::transport {

// The timer that ends a pause. Lives as long as the process.
class Listener::Pause : public Pollable {
  public:
    explicit Pause(Listener* listener)
        : mListener(listener),
          mTimer(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK)) {}

    void begin() {
        itimerspec time{};
        time.it_value.tv_nsec = limits::kAcceptPauseMilliseconds * 1000000L;
        timerfd_settime(mTimer, 0, &time, nullptr);
    }
    void onReady() override {
        uint64_t count;
        if (read(mTimer, &count, sizeof(count)) < 0) return ThreadPool::instance().arm(this);
        ThreadPool::instance().arm(this);
        ThreadPool::instance().arm(mListener);
    }
    int fd() const override { return mTimer; }

  private:
    Listener* const mListener;
    const int mTimer;
};

// A connection whose greeting has not come yet.
class Listener::Greeting : public Pollable {
  public:
    // Takes over the socket.
    Greeting(Listener* listener, int socket, const Peer& peer)
        : mListener(listener), mSocket(socket), mPeer(peer) {}
    ~Greeting() override {
        if (mSocket >= 0) close(mSocket);
    }
    void onReady() override;
    int fd() const override { return mSocket; }
    void shutDown() { shutdown(mSocket, SHUT_RDWR); }
    // Whether the peer has sent nothing for kSilenceMilliseconds. To be asked only of a greeting in
    // the listener's list, under its lock: such a one still has its socket.
    bool isSilent() const {
        char byte;
        return Clock::now() - mSince >= std::chrono::milliseconds(limits::kSilenceMilliseconds) &&
               recv(mSocket, &byte, 1, MSG_PEEK | MSG_DONTWAIT) < 0;
    }

  private:
    using Clock = std::chrono::steady_clock;

    // Whether the whole greeting came and is of this version. Logs why not.
    bool isSound() const;

    Listener* const mListener;
    int mSocket;  // -1 after it was handed over
    const Peer mPeer;
    const Clock::time_point mSince = Clock::now();
    wire::Hello mHello;
    size_t mReceived = 0;  // bytes of mHello
};

void Listener::Greeting::onReady() {
    const ssize_t got = recv(mSocket, reinterpret_cast<char*>(&mHello) + mReceived,
                             sizeof(mHello) - mReceived, MSG_DONTWAIT);
    if (got > 0) mReceived += static_cast<size_t>(got);
    const bool moreToCome =
            got > 0 ? mReceived < sizeof(mHello) : got < 0 && (errno == EAGAIN || errno == EINTR);
    if (moreToCome) return ThreadPool::instance().arm(this);

    sp<Greeting> self(this);
    ThreadPool::instance().remove(this);
    mListener->remove(self);
    if (!isSound()) return;
    mListener->mProcess->welcome(std::exchange(mSocket, -1), mPeer, mHello);
}

bool Listener::Greeting::isSound() const {
    if (mReceived < sizeof(mHello)) {
        if (mReceived > 0) {
            HIDL_LOGE("Process %d of user %u left without a greeting", mPeer.pid, mPeer.uid);
        }
        return false;
    }
    if (mHello.magic != wire::kMagic || mHello.version != wire::kVersion) {
        HIDL_LOGE("Process %d of user %u refused: not a greeting of version %u", mPeer.pid,
                  mPeer.uid, wire::kVersion);
        return false;
    }
    return true;
}

Listener::Listener(Process* process, int socket) : mProcess(process), mSocket(socket) {}

Listener::~Listener() {
    close(mSocket);
}

bool Listener::start() {
    mPause = new Pause(this);
    return mPause->fd() >= 0 && ThreadPool::instance().add(mPause) &&
           ThreadPool::instance().add(this);
}

void Listener::onReady() {
    for (;;) {
        if (!makeRoom()) return mPause->begin();
        const int socket = accept4(mSocket, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0) {
            if (errno == EINTR || errno == ECONNABORTED) continue;
            if (errno == EAGAIN || errno == EWOULDBLOCK) return ThreadPool::instance().arm(this);
            if (!mOutOfDescriptors) {
                HIDL_LOGE("No further connections for now: %s", strerror(errno));
            }
            mOutOfDescriptors = true;
            return mPause->begin();
        }
        mOutOfDescriptors = false;
        awaitGreeting(socket);
    }
}

bool Listener::makeRoom() {
    sp<Greeting> silent;  // goes after the lock
    std::lock_guard<std::mutex> lock(mMutex);
    if (mGreetings.size() < limits::kUnknownConnections) return true;
    const auto found = std::find_if(mGreetings.begin(), mGreetings.end(),
                                    [](const sp<Greeting>& g) { return g->isSilent(); });
    if (found == mGreetings.end()) return false;
    silent = std::move(*found);
    mGreetings.erase(found);
    silent->shutDown();
    return true;
}

void Listener::awaitGreeting(int socket) {
    Peer peer;
    if (!peerOf(socket, &peer) || !isTrusted(peer)) {
        HIDL_LOGE("Process %d of user %u refused: not trusted", peer.pid, peer.uid);
        close(socket);
        return;
    }
    sp<Greeting> greeting = new Greeting(this, socket, peer);
    {
        std::lock_guard<std::mutex> lock(mMutex);
        mGreetings.push_back(greeting);
    }
    ThreadPool::instance().add(greeting);
}

void Listener::remove(const sp<Greeting>& greeting) {
    std::lock_guard<std::mutex> lock(mMutex);
    const auto known = std::find(mGreetings.begin(), mGreetings.end(), greeting);
    if (known != mGreetings.end()) mGreetings.erase(known);
}

}  // namespace android::hardware::transport
