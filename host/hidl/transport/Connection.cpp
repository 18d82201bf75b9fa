#include <transport/Connection.h>

#include <sys/socket.h>
#include <unistd.h>

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
    return mRole == Role::kCalls ? limits::kSlowAnswerMilliseconds : limits::kLingerMilliseconds;
}

void Connection::shutDown() {
    shutdown(mSocket, SHUT_RDWR);
}

Connection::Step Connection::step() {
    ParcelContents* contents = ParcelContents::acquire();
    wire::FrameHeader header;
    const char* reason = nullptr;
    switch (mReader.receive(mSocket, &header, contents, &reason)) {
        case ReceiveResult::kFrame:
            return mSession->serve(*this, header, contents) ? Step::kServed : Step::kOver;
        case ReceiveResult::kDescriptorsLost:
            ParcelContents::release(contents);
            return mSession->refuse(*this, header, NO_MEMORY) ? Step::kServed : Step::kOver;
        case ReceiveResult::kNothing:
            ParcelContents::release(contents);
            return Step::kNothing;
        case ReceiveResult::kClosed:
        case ReceiveResult::kMalformed:
            break;
    }
    ParcelContents::release(contents);
    mSession->end(reason);
    return Step::kOver;
}

void Connection::onReady() {
    ThreadPool& pool = ThreadPool::instance();
    for (;;) {
        switch (step()) {
            case Step::kServed:
                // A busy peer sends its next call soon: wait here for it, without the cost of the
                // epoll set, as long as that keeps nobody waiting.
                if (mReader.hasMore() || pool.othersFree()) continue;
                [[fallthrough]];
            case Step::kNothing:
                pool.arm(this);
                return;
            case Step::kOver:
                pool.remove(this);
                return;
        }
    }
}

}  // namespace android::hardware::transport
