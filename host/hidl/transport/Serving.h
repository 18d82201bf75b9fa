// Which calls the thread is serving.
#pragma once

namespace android::hardware::transport {

class Connection;
class Session;

// The calls that the thread is serving, innermost first. A call to the session of one of them goes
// out on that call's connection, where the caller's thread is waiting.
struct Serving {
    Serving(Session* servedSession, Connection* servedConnection)
        : session(servedSession), connection(servedConnection), outer(innermost) {
        innermost = this;
    }
    ~Serving() { innermost = outer; }
    Serving(const Serving&) = delete;
    Serving& operator=(const Serving&) = delete;

    static Connection* connectionTo(const Session* session) {
        for (Serving* serving = innermost; serving != nullptr; serving = serving->outer) {
            if (serving->session == session) return serving->connection;
        }
        return nullptr;
    }

    Session* const session;
    Connection* connection;  // null: nobody waits for an answer, or not any more
    Serving* const outer;
    static inline thread_local Serving* innermost = nullptr;
};

}  // namespace android::hardware::transport
