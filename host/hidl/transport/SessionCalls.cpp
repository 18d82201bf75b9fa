// The calls that this process makes in a session.
#include <transport/Session.h>

#include <utility>

#include <transport/FrameSender.h>
#include <transport/Log.h>
#include <transport/Process.h>
#include <transport/ServedCall.h>
#include <transport/Socket.h>

namespace android::hardware::transport {

using wire::FrameHeader;
using wire::FrameType;

namespace {

FrameHeader callHeader(uint64_t target, uint32_t code, bool oneway) {
    FrameHeader header{};
    header.type = FrameType::kCall;
    header.flags = oneway ? wire::kOneway : 0;
    header.target = target;
    header.code = code;
    return header;
}

// The time limit of a connection's reads while a thread waits for a reply on it: the connection's
// usual one, then kSlowReplyMilliseconds, then none. A nested call waits on a connection whose
// usual limit is so short that the thread would wake all the time.
class ReplyTimeout {
  public:
    explicit ReplyTimeout(const Connection& connection)
        : mSocket(connection.fd()), mUsual(connection.receiveTimeout()), mMilliseconds(mUsual) {}
    ~ReplyTimeout() {
        if (mMilliseconds != mUsual) setReceiveTimeout(mSocket, mUsual);
    }
    ReplyTimeout(const ReplyTimeout&) = delete;
    ReplyTimeout& operator=(const ReplyTimeout&) = delete;

    // Sets the next limit after one that has passed. Returns true once: when the reply is slow.
    bool extend() {
        const bool slow = mMilliseconds == limits::kSlowReplyMilliseconds;
        mMilliseconds = slow ? 0 : limits::kSlowReplyMilliseconds;
        setReceiveTimeout(mSocket, mMilliseconds);
        return slow;
    }

  private:
    const int mSocket;
    const int mUsual;
    int mMilliseconds;
};

}  // namespace

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
    const status_t status = describeBinders(contents, nullptr);
    if (status != OK) return status;
    if (mPendingCount.load(std::memory_order_relaxed) > 0) flushNotices();
    return oneway ? sendOneway(header, contents) : sendAndWait(header, contents, reply);
}

status_t Session::sendAndWait(FrameHeader header, ParcelContents* contents, Parcel* reply) {
    sp<Connection> taken;
    Connection* connection = ServedCall::connectionTo(this);
    if (connection == nullptr) {
        status_t status = OK;
        taken = takeConnection(&status);
        if (taken == nullptr) {
            takeBackBinders(contents);
            return status;
        }
        connection = taken.get();
    }
    header.sequence = connection->nextSequence();
    if (sendFrame(connection->fd(), header, contents) != SendResult::kSent) {
        end(nullptr);
        return DEAD_OBJECT;
    }
    const status_t status = awaitReply(*connection, header.sequence, reply);
    if (taken != nullptr) giveBack(taken);
    return status;
}

// Waits for the reply to call `sequence`, and serves the calls that come meanwhile.
status_t Session::awaitReply(Connection& connection, uint64_t sequence, Parcel* reply) {
    ReplyTimeout timeout(connection);
    for (;;) {
        ParcelContentsOwner contents = ParcelContents::acquire();
        FrameHeader header;
        const char* reason = nullptr;
        const ReceiveResult result =
                connection.reader().receive(connection.fd(), &header, contents.get(), &reason);
        if (result == ReceiveResult::kNothing) {
            if (timeout.extend()) {
                HIDL_LOGW("Process %d has not answered a call for %d s: waiting on", mPeer.pid,
                          limits::kSlowReplyMilliseconds / 1000);
            }
            continue;
        }
        if (result == ReceiveResult::kClosed || result == ReceiveResult::kMalformed) {
            contents.reset();
            end(reason);
            return DEAD_OBJECT;
        }
        if (result == ReceiveResult::kDescriptorsLost) contents.reset();
        if (header.type != FrameType::kCall) {
            return takeReply(header, sequence, std::move(contents), reply);
        }
        const bool alive = contents != nullptr ? serve(connection, header, std::move(contents))
                                               : refuse(connection, header, NO_MEMORY);
        if (!alive) return DEAD_OBJECT;
    }
}

// `contents` are null if the message's descriptors were lost.
status_t Session::takeReply(const FrameHeader& header, uint64_t sequence,
                            ParcelContentsOwner contents, Parcel* reply) {
    const char* reason = nullptr;
    if (header.type != FrameType::kReply || header.sequence != sequence) {
        reason = "message that is no answer to the call";
    } else if (contents != nullptr) {
        reason = resolveBinders(contents.get());
    }
    if (reason != nullptr) {
        contents.reset();
        end(reason);
        return DEAD_OBJECT;
    }
    if (header.target != 0) queueNotice({wire::NoticeType::kReceived, 0, header.target});
    if (contents == nullptr) return NO_MEMORY;
    if (reply != nullptr) reply->adopt(std::move(contents));
    return static_cast<status_t>(header.code);
}

status_t Session::sendOneway(const FrameHeader& header, ParcelContents* contents) {
    const sp<Connection> notices = noticeConnection();
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
        takeBackBinders(contents);
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

}  // namespace android::hardware::transport
