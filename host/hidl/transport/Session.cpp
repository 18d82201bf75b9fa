#include <transport/Session.h>

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <transport/Log.h>
#include <transport/Process.h>
#include <transport/RemoteBinder.h>
#include <transport/Serving.h>
#include <transport/Socket.h>

namespace android::hardware::transport {

using wire::FrameHeader;
using wire::FrameType;
using wire::Notice;
using wire::NoticeType;
using wire::Purpose;

namespace {

// Notices that go into one message.
constexpr size_t kNoticeBatch = 256;

FrameHeader callHeader(uint64_t target, uint32_t code, bool oneway) {
    FrameHeader header{};
    header.type = FrameType::kCall;
    header.flags = oneway ? wire::kOneway : 0;
    header.target = target;
    header.code = code;
    return header;
}

}  // namespace

Session::Session(const Peer& peer, uint64_t process, uint64_t id, std::string path)
    : mPeer(peer), mProcess(process), mId(id), mPath(std::move(path)), mObjects(this) {}

Session::~Session() = default;

// Beginning and end.

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
    session->mNotices = new Connection(socket, Role::kNotices, session);
    session->mConnections.push_back(session->mNotices);
    if (ThreadPool::instance().started()) session->watch();
    return session;
}

sp<Session> Session::accept(int socket, const Peer& peer, uint64_t process, uint64_t id) {
    sp<Session> session = new Session(peer, process, id, "");
    session->mNotices = new Connection(socket, Role::kNotices, session);
    session->mConnections.push_back(session->mNotices);
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
            ++mCalling;
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
        notices = mNotices;
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
        std::swap(notices, mNotices);
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
            for (const sp<RemoteBinder>& remote : watched) remote->tellDeath();
        });
    }
}

// Connections for calls.

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
        if (opener() && !mFull && mCalling + mServing + 1 < limits::kSessionConnections) {
            ++mCalling;
            lock.unlock();
            int error = 0;
            sp<Connection> connection = openConnection(Purpose::kCalls, &error);
            if (connection != nullptr) return connection;
            lock.lock();
            --mCalling;
            if (error == -EAGAIN) mFull = true;
            if (mCalling == 0) {
                lock.unlock();
                if (error != -EMFILE && error != -ENFILE && error != -EAGAIN) end(nullptr);
                *status = isDead() ? DEAD_OBJECT : NO_MEMORY;
                return nullptr;
            }
        } else if (!opener() && mCalling == 0 && !mConnectionAsked) {
            mConnectionAsked = true;
            lock.unlock();
            queueNotice({NoticeType::kConnectionWanted, 0, 0});
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
            if (mServing >= pool.maxThreads() || (mServing > 0 && mFull) ||
                mCalling + mServing + 2 >= limits::kSessionConnections) {
                return OK;
            }
            ++mServing;
        }
        int error = 0;
        sp<Connection> connection = openConnection(Purpose::kServes, &error);
        if (connection == nullptr || !pool.add(connection)) {
            std::lock_guard<std::mutex> lock(mMutex);
            --mServing;
            if (isDead()) return DEAD_OBJECT;
            if (mServing == 0) return NO_MEMORY;
            mFull = true;
            return OK;
        }
    }
}

// Binders in messages.

status_t Session::describeBinders(ParcelContents* contents, std::vector<sp<IBinder>>* returned) {
    if (opener()) {
        for (const sp<IBinder>& binder : contents->binders) {
            if (binder == nullptr || binder->localBinder() == nullptr) continue;
            status_t status = openServing();
            if (status != OK) return status;
            break;
        }
    }
    status_t status = OK;
    size_t index = 0;
    contents->visitBinders(contents->data.data(), contents->objects.data(),
                           contents->objects.size(), [&](flat_binder_object* description) {
                               const sp<IBinder>& binder = contents->binders[index];
                               status = mObjects.send(binder, description);
                               if (status != OK) return false;
                               ++index;
                               if (description->hdr.type == BINDER_TYPE_HANDLE)
                                   returned->push_back(binder);
                               return true;
                           });
    if (status == OK) return OK;
    takeBackBinders(contents);
    if (status == INVALID_OPERATION) {
        HIDL_LOGE("An object of another process cannot be passed to process %d", mPeer.pid);
    } else if (status == NO_MEMORY) {
        HIDL_LOGE("Process %d holds more objects than allowed", mPeer.pid);
    }
    return status;
}

void Session::takeBackBinders(ParcelContents* contents) {
    contents->visitBinders(
            contents->data.data(), contents->objects.data(), contents->objects.size(),
            [&](flat_binder_object* description) {
                sp<IBinder> dropped;
                if (description->hdr.type == BINDER_TYPE_BINDER && description->cookie != 0) {
                    mObjects.release(description->cookie, 1, &dropped);
                }
                return true;
            });
}

const char* Session::resolveBinders(ParcelContents* contents) {
    const char* reason = nullptr;
    contents->visitBinders(contents->receivedData, contents->receivedObjects,
                           contents->receivedObjectCount, [&](flat_binder_object* description) {
                               contents->binders.emplace_back();
                               reason = mObjects.receive(*description, &contents->binders.back());
                               description->hdr.type = BINDER_TYPE_BINDER;
                               return reason == nullptr;
                           });
    return reason;
}

// Calls out.

status_t Session::transact(uint64_t target, uint32_t code, const Parcel& data, Parcel* reply,
                           uint32_t flags) {
    Process::requireOwn();
    if (isDead()) return DEAD_OBJECT;
    const bool oneway = (flags & IBinder::FLAG_ONEWAY) != 0;
    ParcelContents* contents = data.contentsOrNull();
    FrameHeader header = callHeader(target, code, oneway);
    if (!measureFrame(contents, &header)) {
        HIDL_LOGE("Call %u to process %d is longer than allowed", code, mPeer.pid);
        return FAILED_TRANSACTION;
    }
    if (contents != nullptr && contents->binderCount > 0) {
        std::vector<sp<IBinder>> returned;
        status_t status = describeBinders(contents, &returned);
        if (status != OK) return status;
    }
    if (mPendingCount.load(std::memory_order_relaxed) > 0) flushNotices();
    if (oneway) return sendOneway(header, contents);

    sp<Connection> taken;
    Connection* connection = Serving::connectionTo(this);
    if (connection == nullptr) {
        status_t status = OK;
        taken = takeConnection(&status);
        if (taken == nullptr) {
            if (contents != nullptr && contents->binderCount > 0) takeBackBinders(contents);
            return status;
        }
        connection = taken.get();
    }
    header.sequence = connection->nextSequence();
    if (sendFrame(connection->fd(), header, contents) != SendResult::kSent) {
        end(nullptr);
        return DEAD_OBJECT;
    }
    const status_t status = await(*connection, header.sequence, reply);
    if (taken != nullptr) giveBack(taken);
    return status;
}

status_t Session::await(Connection& connection, uint64_t sequence, Parcel* reply) {
    // A connection that lingers (a nested call) must not wake the thread all the time, and one
    // answer that takes long is told of once.
    struct Patience {
        explicit Patience(const Connection& c) : socket(c.fd()), usual(c.receiveTimeout()) {}
        ~Patience() {
            if (now != usual) setReceiveTimeout(socket, usual);
        }
        void become(int milliseconds) { setReceiveTimeout(socket, now = milliseconds); }
        const int socket;
        const int usual;
        int now = usual;
    } patience(connection);

    for (;;) {
        ParcelContents* contents = ParcelContents::acquire();
        FrameHeader header;
        const char* reason = nullptr;
        const ReceiveResult result =
                connection.reader().receive(connection.fd(), &header, contents, &reason);
        if (result == ReceiveResult::kNothing) {
            ParcelContents::release(contents);
            if (patience.now != limits::kSlowAnswerMilliseconds) {
                patience.become(limits::kSlowAnswerMilliseconds);
            } else {
                HIDL_LOGW("Process %d has not answered a call for %d s: waiting on", mPeer.pid,
                          limits::kSlowAnswerMilliseconds / 1000);
                patience.become(0);
            }
            continue;
        }
        const bool usable =
                result == ReceiveResult::kFrame || result == ReceiveResult::kDescriptorsLost;
        if (usable && header.type == FrameType::kCall) {
            bool alive;
            if (result == ReceiveResult::kFrame) {
                alive = serve(connection, header, contents);
            } else {
                ParcelContents::release(contents);
                alive = refuse(connection, header, NO_MEMORY);
            }
            if (!alive) return DEAD_OBJECT;
            continue;
        }
        if (usable && (header.type != FrameType::kReply || header.sequence != sequence)) {
            reason = "message that is no answer to the call";
        } else if (result == ReceiveResult::kFrame) {
            reason = resolveBinders(contents);
        }
        if (!usable || reason != nullptr) {
            ParcelContents::release(contents);
            end(reason);
            return DEAD_OBJECT;
        }
        if (header.target != 0) queueNotice({NoticeType::kReceived, 0, header.target});
        if (result == ReceiveResult::kDescriptorsLost) {
            ParcelContents::release(contents);
            return NO_MEMORY;
        }
        if (reply != nullptr) {
            reply->adopt(contents);
        } else {
            ParcelContents::release(contents);
        }
        return static_cast<status_t>(header.code);
    }
}

status_t Session::sendOneway(const FrameHeader& header, ParcelContents* contents) {
    sp<Connection> notices;
    {
        std::lock_guard<std::mutex> lock(mMutex);
        notices = mNotices;
    }
    if (notices == nullptr) return DEAD_OBJECT;
    SendResult result;
    {
        std::lock_guard<std::mutex> lock(mSendMutex);
        result = sendFrame(notices->fd(), header, contents);
    }
    if (result == SendResult::kSent) {
        flushNotices();
        return OK;
    }
    if (result == SendResult::kWouldBlock) {
        if (contents != nullptr && contents->binderCount > 0) takeBackBinders(contents);
        HIDL_LOGE("Process %d does not read: oneway call %u dropped", mPeer.pid, header.code);
        return TIMED_OUT;
    }
    end(nullptr);
    return DEAD_OBJECT;
}

status_t Session::lookUp(const std::string& name, sp<IBinder>* binder) {
    Parcel data;
    Parcel reply;
    status_t status = data.writeCString(name.c_str());
    if (status == OK) status = transact(wire::kRootObject, wire::kLookUp, data, &reply, 0);
    if (status == OK) status = reply.readNullableStrongBinder(binder);
    if (status == OK && *binder == nullptr) status = NAME_NOT_FOUND;
    return status;
}

// Notices.

bool Session::serveNotices(const FrameHeader& header, const Parcel& data) {
    const uint8_t* at = data.contentsOrNull()->storage(0, 0) + sizeof(FrameHeader);
    for (size_t left = header.dataSize; left > 0; left -= sizeof(Notice), at += sizeof(Notice)) {
        Notice notice;
        memcpy(&notice, at, sizeof(notice));
        switch (notice.type) {
            case NoticeType::kReleased: {
                sp<IBinder> dropped;
                if (mObjects.release(notice.id, notice.count, &dropped)) continue;
                end("release of an object that it does not have");
                return false;
            }
            case NoticeType::kReceived: {
                std::vector<sp<IBinder>> dropped;
                std::lock_guard<std::mutex> lock(mMutex);
                auto known = mUnconfirmed.find(notice.id);
                if (known == mUnconfirmed.end()) break;
                dropped = std::move(known->second);
                mUnconfirmed.erase(known);
                continue;
            }
            case NoticeType::kConnectionWanted:
                if (!opener()) break;
                openServing();
                continue;
        }
        if (isDead()) return false;
        end("notice that makes no sense");
        return false;
    }
    return true;
}

void Session::forget(uint64_t id, const RemoteBinder* remote) {
    const uint32_t count = mObjects.forget(id, remote);
    if (count > 0 && !isDead()) queueNotice({NoticeType::kReleased, count, id});
}

void Session::queueNotice(const Notice& notice) {
    {
        std::lock_guard<std::mutex> lock(mPendingMutex);
        mPending.push_back(notice);
        mPendingCount = mPending.size();
    }
    flushNotices();
}

// Whoever holds the send mutex looks once more after giving it back, so a notice that was queued
// meanwhile is not left behind. One that the peer's full socket refuses waits for the next
// occasion.
void Session::flushNotices() {
    while (mPendingCount > 0) {
        sp<Connection> notices;
        {
            std::lock_guard<std::mutex> lock(mMutex);
            notices = mNotices;
        }
        std::unique_lock<std::mutex> sending(mSendMutex, std::try_to_lock);
        if (notices == nullptr || !sending.owns_lock()) return;

        std::lock_guard<std::mutex> lock(mPendingMutex);
        const size_t count = std::min(mPending.size(), kNoticeBatch);
        if (count == 0) continue;
        const SendResult result = sendNotices(notices->fd(), mPending.data(), count);
        if (result != SendResult::kSent) return;  // a broken connection shows to its reader
        mPending.erase(mPending.begin(), mPending.begin() + static_cast<ptrdiff_t>(count));
        mPendingCount = mPending.size();
    }
}

}  // namespace android::hardware::transport
