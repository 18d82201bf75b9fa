#include <transport/Connection.h>

#include <sys/socket.h>
#include <unistd.h>

#include <utility>

#include <transport/Session.h>
#include <transport/Socket.h>

namespace android::hardware::transport {

Connection::Connection(int socket, Role role, const sp<Session>& session)
    : mSocket(socket), mRole(role), mSession(session), mReader(role == Role::kNotices) {
    setReceiveTimeout(socket, receiveTimeout());
    setSendTimeout(socket, role == Role::kNotices ? limits::kOnewayMilliseconds : 0);
}

Connection::~Connection() {
    close(mSocket);
}

int Connection::receiveTimeout() const {
    return mRole == Role::kCalls ? limits::kSlowReplyMilliseconds : limits::kLingerMilliseconds;
}

void Connection::shutDown() {
    shutdown(mSocket, SHUT_RDWR);
}

Connection::Outcome Connection::serveOne() {
    ParcelContentsOwner contents = ParcelContents::acquire();
    wire::FrameHeader header;
    const char* reason = nullptr;
    const ReceiveResult result = mReader.receive(mSocket, &header, contents.get(), &reason);
    bool alive = false;
    switch (result) {
        case ReceiveResult::kFrame:
            alive = mSession->serve(*this, header, std::move(contents));
            break;
        case ReceiveResult::kDescriptorsLost:
            contents.reset();
            alive = mSession->refuse(*this, header, NO_MEMORY);
            break;
        case ReceiveResult::kNothing:
            return Outcome::kNothing;
        case ReceiveResult::kClosed:
        case ReceiveResult::kMalformed:
            contents.reset();
            mSession->end(reason);
            break;
    }
    return alive ? Outcome::kServed : Outcome::kOver;
}

void Connection::onReady() {
    ThreadPool& pool = ThreadPool::instance();
    for (;;) {
        switch (serveOne()) {
            case Outcome::kServed:
                // A busy peer sends its next call soon. Waiting here for it saves the cost of the
                // epoll set, and harms nobody while another thread waits there.
                if (mReader.hasMore() || pool.othersFree()) continue;
                [[fallthrough]];
            case Outcome::kNothing:
                pool.arm(this);
                return;
            case Outcome::kOver:
                pool.remove(this);
                return;
        }
    }
}

}  // namespace android::hardware::transport
