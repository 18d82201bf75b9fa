// The runtime's limits and time limits, and the reason for each.
#pragma once

#include <cstddef>

namespace android::hardware::limits {

// Bytes of one call or reply. The binder driver of a device maps as many for a process: with the
// same limit, what works here does not fail there.
constexpr size_t kTransactionBytes = 1024 * 1024 - 8 * 1024;

// Descriptors of one call or reply: what the kernel passes in one message (SCM_MAX_FD).
constexpr size_t kTransactionDescriptors = 253;

// Connections between two processes. Each thread that waits for a reply needs one; further threads
// wait for a connection. Three times the threads of a busy application.
constexpr size_t kSessionConnections = 64;

// Processes connected to a service. A television runs some dozens of applications; each takes three
// descriptors of the service, and the usual limit of open descriptors is 1024.
constexpr size_t kSessions = 256;

// Connections that have not sent their greeting yet. At this limit, the oldest that has been silent
// for kSilenceMilliseconds is closed for the next one; if there is none, further connections wait
// in the socket's queue.
constexpr size_t kUnknownConnections = 64;

// Milliseconds for which a connection may be silent before its greeting. Peers of the runtime send
// it at once.
constexpr int kSilenceMilliseconds = 100;

// Objects that one process may hold of another. A client that leaks references meets this limit
// before memory is exhausted.
constexpr size_t kSessionObjects = 16384;

// Replies that carry the caller's own objects and that the caller has not confirmed. The runtime
// confirms a reply as soon as it is read.
constexpr size_t kUnconfirmedReplies = 1024;

// Milliseconds for which a thread goes on reading from the connection on which it has just replied,
// before it gives the connection back to the epoll set: longer than a caller needs until its next
// call, short enough for the thread to be free for other connections soon.
constexpr int kLingerMilliseconds = 3;

// Milliseconds that half a message may be old when more of it comes; after that the session ends.
// No thread waits for the other half.
constexpr int kMessageMilliseconds = 5000;

// Milliseconds after which a caller that waits for a reply logs that, once for each call: the peer
// may be stopped, and delay more than this caller.
constexpr int kSlowReplyMilliseconds = 5000;

// Milliseconds for which a oneway call waits for a peer that does not read, before it fails.
constexpr int kOnewayMilliseconds = 5000;

// Milliseconds for which no connections are accepted after the process ran out of descriptors.
constexpr int kAcceptPauseMilliseconds = 100;

// Milliseconds that a listing of services waits for each process.
constexpr int kInquiryMilliseconds = 1000;

// Most threads that a process can configure its pool to have.
constexpr size_t kPoolThreads = 256;

}  // namespace android::hardware::limits
