// The connections of a session on which this process calls, and those on which its peer calls back.
#include <transport/Session.h>

#include <unistd.h>

#include <cerrno>
#include <utility>

#include <transport/Process.h>

namespace android::hardware::transport {

using wire::Purpose;

int Session::openSocket(Purpose purpose) const {
    Peer peer;
    wire::HelloReply reply;
    const int socket = Process::greet(mPath, purpose, mId, 0, &peer, &reply);
    if (socket >= 0 && reply.process != mProcess) {
        close(socket);
        return -EPROTO;
    }
    return socket;
}

sp<Connection> Session::openConnection(Purpose purpose, int* error) {
    const int socket = openSocket(purpose);
    if (socket < 0) {
        *error = socket;
        return nullptr;
    }
    const Role role = purpose == Purpose::kCalls ? Role::kCalls : Role::kServes;
    sp<Connection> connection = new Connection(socket, role, this);
    std::lock_guard<std::mutex> lock(mMutex);
    if (isDead()) {
        *error = -EPIPE;
        return nullptr;
    }
    mConnections.push_back(connection);
    return connection;
}

sp<Connection> Session::takeConnection(status_t* status) {
    std::unique_lock<std::mutex> lock(mMutex);
    for (;;) {
        if (isDead()) {
            *status = DEAD_OBJECT;
            return nullptr;
        }
        if (!mIdle.empty()) {
            sp<Connection> connection = std::move(mIdle.back());
            mIdle.pop_back();
            return connection;
        }
        const bool mayOpen = isOpener() && !mPeerIsFull &&
                             mCallConnections + mServeConnections + 1 < limits::kSessionConnections;
        if (mayOpen) {
            ++mCallConnections;
            lock.unlock();
            int error = 0;
            sp<Connection> connection = openConnection(Purpose::kCalls, &error);
            if (connection != nullptr) return connection;
            lock.lock();
            --mCallConnections;
            if (error == -EAGAIN) mPeerIsFull = true;
            if (mCallConnections == 0) {
                lock.unlock();
                if (error != -EMFILE && error != -ENFILE && error != -EAGAIN) end(nullptr);
                *status = isDead() ? DEAD_OBJECT : NO_MEMORY;
                return nullptr;
            }
        } else if (!isOpener() && mCallConnections == 0 && !mConnectionAsked) {
            mConnectionAsked = true;
            lock.unlock();
            queueNotice({wire::NoticeType::kConnectionWanted, 0, 0});
            lock.lock();
            continue;
        }
        mIdleChanged.wait(lock, [this] { return isDead() || !mIdle.empty(); });
    }
}

void Session::giveBack(const sp<Connection>& connection) {
    std::lock_guard<std::mutex> lock(mMutex);
    if (isDead()) return;
    mIdle.push_back(connection);
    mIdleChanged.notify_one();
}

status_t Session::openServing() {
    ThreadPool& pool = ThreadPool::instance();
    pool.start();
    if (!watch()) return DEAD_OBJECT;
    for (;;) {
        {
            std::lock_guard<std::mutex> lock(mMutex);
            if (mServeConnections >= pool.maxThreads() || (mServeConnections > 0 && mPeerIsFull) ||
                mCallConnections + mServeConnections + 2 >= limits::kSessionConnections) {
                return OK;
            }
            ++mServeConnections;
        }
        int error = 0;
        sp<Connection> connection = openConnection(Purpose::kServes, &error);
        if (connection == nullptr || !pool.add(connection)) {
            std::lock_guard<std::mutex> lock(mMutex);
            --mServeConnections;
            if (isDead()) return DEAD_OBJECT;
            if (mServeConnections == 0) return NO_MEMORY;
            mPeerIsFull = true;
            return OK;
        }
    }
}

}  // namespace android::hardware::transport
