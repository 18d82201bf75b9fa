// The calls that a thread is serving.
#pragma once

namespace android::hardware::transport {

class Connection;
class Session;

// Stands on the stack of a thread while it serves a call. A call that the thread makes meanwhile to
// the session of such a call goes out on that call's connection, where the caller's thread waits.
struct ServedCall {
    ServedCall(Session* servedSession, Connection* servedConnection)
        : session(servedSession), connection(servedConnection), outer(innermost) {
        innermost = this;
    }
    ~ServedCall() { innermost = outer; }
    ServedCall(const ServedCall&) = delete;
    ServedCall& operator=(const ServedCall&) = delete;

    // Returns the connection of the innermost call of that session; null if there is none, or
    // nobody waits on it.
    static Connection* connectionTo(const Session* session) {
        for (ServedCall* call = innermost; call != nullptr; call = call->outer) {
            if (call->session == session) return call->connection;
        }
        return nullptr;
    }

    Session* const session;
    Connection* connection;  // null for a oneway call, and after the reply was sent
    ServedCall* const outer;
    static inline thread_local ServedCall* innermost = nullptr;
};

}  // namespace android::hardware::transport
