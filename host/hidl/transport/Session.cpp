#include <transport/Session.h>

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include <transport/Log.h>
#include <transport/Process.h>
#include <transport/RemoteBinder.h>
#include <transport/Socket.h>

namespace android::hardware::transport {

using wire::Purpose;

Session::Session(const Peer& peer, uint64_t process, uint64_t id, std::string path)
    : mPeer(peer), mProcess(process), mId(id), mPath(std::move(path)), mObjects(this) {}

Session::~Session() = default;

sp<Session> Session::open(const std::string& path, uint64_t process, int* error) {
    Peer peer;
    wire::HelloReply reply;
    const int socket = Process::greet(path, Purpose::kSession, 0, 0, &peer, &reply);
    if (socket < 0) {
        *error = socket;
        return nullptr;
    }
    if (reply.process != process) {
        close(socket);
        *error = -EPROTO;
        return nullptr;
    }
    sp<Session> session = new Session(peer, process, reply.session, path);
    session->mNoticeConnection = new Connection(socket, Role::kNotices, session);
    session->mConnections.push_back(session->mNoticeConnection);
    if (ThreadPool::instance().started()) session->watch();
    return session;
}

sp<Session> Session::accept(int socket, const Peer& peer, uint64_t process, uint64_t id) {
    sp<Session> session = new Session(peer, process, id, "");
    session->mNoticeConnection = new Connection(socket, Role::kNotices, session);
    session->mConnections.push_back(session->mNoticeConnection);
    return session;
}

bool Session::join(int socket, Role role, const wire::HelloReply& reply) {
    sp<Connection> connection;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        if (isDead() || mConnections.size() >= limits::kSessionConnections) return false;
        connection = new Connection(socket, role, this);
        mConnections.push_back(connection);
    }
    if (!sendExactly(socket, &reply, sizeof(reply))) {
        end(nullptr);
    } else if (role == Role::kServes) {
        if (!ThreadPool::instance().add(connection)) end("connection that cannot be watched");
    } else {
        std::lock_guard<std::mutex> lock(mMutex);
        if (!isDead()) {
            ++mCallConnections;
            mConnectionAsked = false;
            mIdle.push_back(connection);
            mIdleChanged.notify_one();
        }
    }
    return true;
}

bool Session::watch() {
    sp<Connection> notices;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        if (isDead()) return false;
        notices = mNoticeConnection;
        if (!mWatched) {
            mWatched = true;
            ThreadPool::instance().add(notices);
        }
    }
    pollfd state{notices->fd(), POLLRDHUP, 0};
    if (poll(&state, 1, 0) == 1 && (state.revents & (POLLRDHUP | POLLHUP | POLLERR)) != 0) {
        end(nullptr);
        return false;
    }
    return true;
}

void Session::end(const char* reason) {
    // References are dropped at the end of the function, without the lock.
    std::vector<sp<Connection>> connections;
    std::vector<sp<Connection>> idle;
    std::unordered_map<uint64_t, std::vector<sp<IBinder>>> unconfirmed;
    sp<Connection> notices;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        if (mDead.exchange(true)) return;
        connections.swap(mConnections);
        idle.swap(mIdle);
        unconfirmed.swap(mUnconfirmed);
        std::swap(notices, mNoticeConnection);
        mIdleChanged.notify_all();
    }
    if (reason != nullptr) {
        HIDL_LOGE("Session with process %d of user %u ended: %s", mPeer.pid, mPeer.uid, reason);
    }
    for (const sp<Connection>& connection : connections) connection->shutDown();

    std::vector<sp<IBinder>> dropped;
    std::vector<sp<RemoteBinder>> remotes;
    mObjects.close(&dropped, &remotes);
    Process::instance().forget(this);
    std::vector<sp<RemoteBinder>> watched;
    for (const sp<RemoteBinder>& remote : remotes) {
        if (remote->isWatched()) watched.push_back(remote);
    }
    if (!watched.empty()) {
        ThreadPool::instance().post([watched] {
            for (const sp<RemoteBinder>& remote : watched) remote->notifyDeath();
        });
    }
}

}  // namespace android::hardware::transport
