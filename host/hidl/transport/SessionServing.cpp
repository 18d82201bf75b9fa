// The calls that a session's peer makes, and the replies to them.
#include <transport/Session.h>

#include <exception>
#include <string>
#include <utility>

#include <hidl/FatalCallError.h>
#include <hidl/HidlBinderSupport.h>
#include <transport/FrameSender.h>
#include <transport/Log.h>
#include <transport/Process.h>
#include <transport/ServedCall.h>

namespace android::hardware::transport {

using wire::FrameHeader;
using wire::FrameType;

// The reply to a call that is being served: sent once. What the implementation sends after that is
// dropped.
class Session::PendingReply {
  public:
    // wanted: false for a oneway call.
    PendingReply(Session* session, Connection* connection, const FrameHeader& call, bool wanted)
        : mSession(session), mConnection(connection), mCall(call), mWanted(wanted) {}

    // False after sending has ended the session.
    bool sessionIsAlive() const { return mAlive; }

    // Sends `status` and, if that is OK, the parcel. `served` is the call while its implementation
    // runs: after the reply its caller does not wait on the connection any more.
    void send(status_t status, Parcel* reply, ServedCall* served = nullptr) {
        if (!mWanted) return;
        mWanted = false;
        if (served != nullptr) served->connection = nullptr;
        FrameHeader header{};
        header.type = FrameType::kReply;
        header.sequence = mCall.sequence;
        ParcelContents* contents = reply != nullptr ? reply->contentsOrNull() : nullptr;
        std::vector<sp<IBinder>> returned;
        if (!measureFrame(contents, &header)) {
            HIDL_LOGE("Answer to call %u of process %d is longer than allowed", mCall.code,
                      mSession->mPeer.pid);
            status = FAILED_TRANSACTION;
        } else if (status == OK) {
            status = mSession->describeBinders(contents, &returned);
        }
        if (status != OK) {
            contents = nullptr;
            measureFrame(nullptr, &header);
        } else if (!returned.empty()) {
            header.target = mSession->keepUntilConfirmed(std::move(returned));
            if (header.target == 0) return endSession("answers that it never confirms");
        }
        header.code = static_cast<uint32_t>(status);
        if (sendFrame(mConnection->fd(), header, contents) != SendResult::kSent) {
            endSession(nullptr);
        }
    }

  private:
    void endSession(const char* reason) {
        mAlive = false;
        mSession->end(reason);
    }

    Session* const mSession;
    Connection* const mConnection;
    const FrameHeader& mCall;
    bool mWanted;
    bool mAlive = true;
};

bool Session::refuse(Connection& connection, const FrameHeader& header, status_t status) {
    if (header.type != FrameType::kCall || connection.role() == Role::kNotices) {
        end("message whose descriptors were lost");
        return false;
    }
    HIDL_LOGE("Call %u of process %d refused: no room for its descriptors", header.code, mPeer.pid);
    PendingReply reply(this, &connection, header, true);
    reply.send(status, nullptr);
    return reply.sessionIsAlive();
}

bool Session::serve(Connection& connection, const FrameHeader& header,
                    ParcelContentsOwner contents) {
    Parcel data;
    data.adopt(std::move(contents));
    const bool notices = connection.role() == Role::kNotices;
    switch (header.type) {
        case FrameType::kCall:
            if (((header.flags & wire::kOneway) != 0) != notices) {
                end("call on the wrong connection");
                return false;
            }
            return serveCall(connection, header, data);
        case FrameType::kNotices:
            if (!notices) {
                end("notices on the wrong connection");
                return false;
            }
            return serveNotices(header, data);
        case FrameType::kReply:
            end("answer to no call");
            return false;
    }
    end("message of an unknown type");
    return false;
}

// Returns what the caller is told about a served call that threw.
static std::string describeFailure(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "unknown exception";
    }
}

// Finds the call's object and the binders among its arguments. Returns null or what is wrong.
const char* Session::resolveCall(const FrameHeader& header, Parcel& data, sp<BHwBinder>* target) {
    const char* reason = resolveBinders(data.contents());
    if (reason != nullptr) return reason;
    *target = header.target == wire::kRootObject ? Process::instance().root()
                                                 : mObjects.find(header.target);
    return *target != nullptr ? nullptr : "call to an object that it does not have";
}

bool Session::serveCall(Connection& connection, const FrameHeader& header, Parcel& data) {
    sp<BHwBinder> target;
    const char* reason = resolveCall(header, data, &target);
    if (reason != nullptr) {
        end(reason);
        return false;
    }

    const bool oneway = (header.flags & wire::kOneway) != 0;
    Parcel reply;
    PendingReply pending(this, &connection, header, !oneway);
    status_t status = OK;
    std::exception_ptr failure;
    {
        ServedCall served(this, oneway ? nullptr : &connection);
        details::ServingScope scope;
        try {
            status = target->transact(
                    header.code, data, &reply, oneway ? IBinder::FLAG_ONEWAY : 0,
                    [&pending, &served](Parcel& parcel) { pending.send(OK, &parcel, &served); });
        } catch (...) {
            failure = std::current_exception();
        }
    }
    if (failure != nullptr) {
        const std::string text = describeFailure(failure);
        HIDL_LOGE("Call %u of process %d failed: %s", header.code, mPeer.pid, text.c_str());
        reply.reset();
        writeToParcel(Status::fromExceptionCode(Status::EX_TRANSACTION_FAILED, text.c_str()),
                      &reply);
        pending.send(OK, &reply);
    } else if (data.malformedReason() != nullptr) {
        end(data.malformedReason());
        return false;
    } else if (status != OK) {
        HIDL_LOGE("Call %u of process %d refused: %s", header.code, mPeer.pid,
                  details::statusName(status).c_str());
        pending.send(status, nullptr);
    } else {
        // A method without results may have left its reply to the caller.
        if (!oneway && reply.contentsOrNull() == nullptr) writeToParcel(Status::ok(), &reply);
        pending.send(OK, &reply);
    }
    return pending.sessionIsAlive();
}

}  // namespace android::hardware::transport
