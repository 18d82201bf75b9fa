// The serving half of a session: calls that come in, and their answers.
#include <exception>

#include <hidl/FatalCallError.h>
#include <hidl/HidlBinderSupport.h>
#include <transport/Log.h>
#include <transport/Process.h>
#include <transport/Serving.h>
#include <transport/Session.h>

namespace android::hardware::transport {

using wire::FrameHeader;
using wire::FrameType;

// The answer to a call that is being served: sent once.
struct Session::Answer {
    Session& session;
    Connection& connection;
    const FrameHeader& call;
    bool due;                    // false for a oneway call, and after the answer
    Serving* serving = nullptr;  // the call, while its implementation runs
    bool alive = true;

    void send(status_t status, Parcel* reply) {
        if (!due) return;
        due = false;
        if (serving != nullptr) serving->connection = nullptr;
        FrameHeader header{};
        header.type = FrameType::kReply;
        header.sequence = call.sequence;
        ParcelContents* contents = reply != nullptr ? reply->contentsOrNull() : nullptr;
        std::vector<sp<IBinder>> returned;
        if (!measureFrame(contents, &header)) {
            HIDL_LOGE("Answer to call %u of process %d is longer than allowed", call.code,
                      session.mPeer.pid);
            status = FAILED_TRANSACTION;
        } else if (contents != nullptr && contents->binderCount > 0) {
            status = session.describeBinders(contents, &returned);
        }
        if (status != OK) {
            contents = nullptr;
            measureFrame(nullptr, &header);
        } else if (!returned.empty()) {
            header.target = session.keepUntilConfirmed(std::move(returned));
            if (header.target == 0) {
                alive = false;
                session.end("answers that it never confirms");
                return;
            }
        }
        header.code = static_cast<uint32_t>(status);
        if (sendFrame(connection.fd(), header, contents) != SendResult::kSent) {
            alive = false;
            session.end(nullptr);
        }
    }
};

// The peer's own objects in an answer must be kept until it has read that: their release, on
// another connection, might overtake it. The number of the receipt; 0 if too many are open.
uint64_t Session::keepUntilConfirmed(std::vector<sp<IBinder>> returned) {
    std::lock_guard<std::mutex> lock(mMutex);
    if (mUnconfirmed.size() >= limits::kUnconfirmedAnswers) return 0;
    if (!isDead()) mUnconfirmed[++mLastReceipt] = std::move(returned);
    return mLastReceipt;
}

bool Session::refuse(Connection& connection, const FrameHeader& header, status_t status) {
    if (header.type != FrameType::kCall || connection.role() == Role::kNotices) {
        end("message whose descriptors were lost");
        return false;
    }
    HIDL_LOGE("Call %u of process %d refused: no room for its descriptors", header.code, mPeer.pid);
    Answer answer{*this, connection, header, true};
    answer.send(status, nullptr);
    return answer.alive;
}

bool Session::serve(Connection& connection, const FrameHeader& header, ParcelContents* contents) {
    Parcel data;
    data.adopt(contents);
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

// What the caller is told about a served call that threw.
static std::string describeFailure(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "unknown exception";
    }
}

bool Session::serveCall(Connection& connection, const FrameHeader& header, Parcel& data) {
    const bool oneway = (header.flags & wire::kOneway) != 0;
    const char* reason = resolveBinders(data.contents());
    sp<BHwBinder> target;
    if (reason == nullptr) {
        target = header.target == wire::kRootObject ? Process::instance().root()
                                                    : mObjects.find(header.target);
        if (target == nullptr) reason = "call to an object that it does not have";
    }
    if (reason != nullptr) {
        end(reason);
        return false;
    }

    Parcel reply;
    Answer answer{*this, connection, header, !oneway};
    status_t status = OK;
    std::exception_ptr failure;
    {
        Serving serving(this, oneway ? nullptr : &connection);
        answer.serving = &serving;
        details::ServingScope scope;
        try {
            status = target->transact(header.code, data, &reply, oneway ? IBinder::FLAG_ONEWAY : 0,
                                      [&answer](Parcel& parcel) { answer.send(OK, &parcel); });
        } catch (...) {
            failure = std::current_exception();
        }
        answer.serving = nullptr;
    }
    if (failure != nullptr) {
        const std::string text = describeFailure(failure);
        HIDL_LOGE("Call %u of process %d failed: %s", header.code, mPeer.pid, text.c_str());
        reply.reset();
        writeToParcel(Status::fromExceptionCode(Status::EX_TRANSACTION_FAILED, text.c_str()),
                      &reply);
        answer.send(OK, &reply);
    } else if (data.malformedReason() != nullptr) {
        end(data.malformedReason());
        return false;
    } else if (status != OK) {
        HIDL_LOGE("Call %u of process %d refused: %s", header.code, mPeer.pid,
                  details::statusName(status).c_str());
        answer.send(status, nullptr);
    } else {
        // A stub that wrote nothing is content.
        if (!oneway && reply.contentsOrNull() == nullptr) writeToParcel(Status::ok(), &reply);
        answer.send(OK, &reply);
    }
    return answer.alive;
}

}  // namespace android::hardware::transport
