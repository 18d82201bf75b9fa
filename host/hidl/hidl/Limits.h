// What the runtime allows a peer, and why.
#pragma once

#include <cstddef>

namespace android::hardware::limits {

// Bytes of one call or answer. As on a device, where it is what the driver maps for a process, so
// that nothing that works here fails there.
constexpr size_t kTransactionBytes = 1024 * 1024 - 8 * 1024;

// Descriptors of one call or answer: what the kernel passes in one message (SCM_MAX_FD).
constexpr size_t kTransactionDescriptors = 253;

// Connections between two processes. Each stands for a thread that waits for an answer at the same
// time; further ones queue. Three times the threads of a busy application.
constexpr size_t kSessionConnections = 64;

// Processes connected to a service. A television runs some dozens of applications; each costs three
// descriptors, and the soft limit of descriptors is 1024.
constexpr size_t kSessions = 256;

// Connections that have not said yet which session they belong to. With so many, one that says
// nothing goes, the oldest first; where all are about to speak, further ones wait in the socket's
// queue.
constexpr size_t kUnknownConnections = 64;

// Milliseconds after which a connection that says nothing may go. They say at once what they are.
constexpr int kSilenceMilliseconds = 100;

// Objects that one process may hold of another: references leak slowly, and this stops them before
// memory does.
constexpr size_t kSessionObjects = 16384;

// Answers that carry the caller's own objects and that it has not confirmed: it does so at once.
constexpr size_t kUnconfirmedAnswers = 1024;

// Milliseconds for which a thread goes on reading from the connection that it has just answered on,
// before the connection joins the waiting ones: longer than a caller needs for its next call, short
// enough not to be missed by the others.
constexpr int kLingerMilliseconds = 3;

// Milliseconds after which half a message is given up when more of it comes. No thread waits for
// the other half.
constexpr int kMessageMilliseconds = 5000;

// Milliseconds after which a caller that waits for an answer says so, once a call: the peer may be
// stopped, and hold up more than this caller.
constexpr int kSlowAnswerMilliseconds = 5000;

// Milliseconds for which a oneway call waits for a peer that does not read; it fails then.
constexpr int kOnewayMilliseconds = 5000;

// Milliseconds without accepting connections after the process ran out of descriptors.
constexpr int kAcceptPauseMilliseconds = 100;

// Milliseconds that a listing of services waits for each.
constexpr int kInquiryMilliseconds = 1000;

// Most threads that configureRpcThreadpool gives.
constexpr size_t kPoolThreads = 256;

}  // namespace android::hardware::limits
