// The wire format of the socket transport, whole. docs/host-protocol.md explains it.
//
// Both ends run on one machine, so numbers are in the machine's order. Every structure is a
// multiple of 8 bytes long and free of hidden padding.
#pragma once

#include <cstdint>

namespace android::hardware::transport::wire {

constexpr uint32_t kMagic = 0x4c444948;  // "HIDL"
constexpr uint16_t kVersion = 1;

// What a new connection is for: said by the process that opened it.
enum class Purpose : uint16_t {
    kSession = 1,  // begin a session; this connection carries its notices and oneway calls
    kCalls = 2,    // the opener calls on it
    kServes = 3,   // the opener serves calls on it
    kInquiry = 4,  // only the answer to this greeting is wanted
};

// First message of each connection.
struct Hello {
    uint32_t magic;
    uint16_t version;
    Purpose purpose;
    uint64_t process;  // token of the opener's process
    uint64_t session;  // kCalls, kServes: which session; else 0
    int32_t pid;
    uint32_t reserved;
};
static_assert(sizeof(Hello) == 32, "wrong size");

// Its answer.
struct HelloReply {
    uint32_t magic;
    uint16_t version;
    uint16_t accepted;  // 0: no room for another one
    uint64_t process;   // token of the accepter's process
    uint64_t session;   // number of the session
    int32_t pid;
    uint32_t threads;      // threads that serve calls
    uint32_t idleThreads;  // those that wait
    uint32_t maxThreads;   // most that there may be
    uint32_t sessions;     // processes connected
    uint32_t reserved;
};
static_assert(sizeof(HelloReply) == 48, "wrong size");

enum class FrameType : uint8_t {
    kCall = 1,
    kReply = 2,
    kNotices = 3,
};

enum FrameFlags : uint8_t {
    kOneway = 1,
};

// Head of each message after the greeting. Behind it: `dataSize` bytes of flat data, padded to 8;
// objectCount offsets into it, 8 bytes each; `bufferSize` bytes of buffers, each padded to 8.
struct FrameHeader {
    uint32_t size;  // of the whole message, this header included; a multiple of 8
    FrameType type;
    uint8_t flags;
    uint16_t descriptorCount;
    uint64_t sequence;  // number of the call; its answer repeats it
    uint64_t target;  // call: the receiver's object; reply: receipt wanted under this number, or 0
    uint32_t code;    // call: method; reply: a status_t
    uint32_t dataSize;
    uint32_t objectCount;
    uint32_t bufferSize;
};
static_assert(sizeof(FrameHeader) == 40, "wrong size");

// The object that each process has without exporting it: it answers kLookUp.
constexpr uint64_t kRootObject = 0;
// Method of the root object: the name as a text; answers a status_t and, if that is OK, a binder.
constexpr uint32_t kLookUp = 1;

// In flat_binder_object::cookie: number of an object. Type BINDER_TYPE_BINDER: the sender's own (0:
// null); BINDER_TYPE_HANDLE: the receiver's.

enum class NoticeType : uint32_t {
    kReleased = 1,         // the sender dropped object `id`, which it had been sent `count` times
    kReceived = 2,         // the answer that wanted receipt `id` has been read
    kConnectionWanted = 3  // the sender has no connection on which to call the receiver
};

// Element of a kNotices message's data.
struct Notice {
    NoticeType type;
    uint32_t count;
    uint64_t id;
};
static_assert(sizeof(Notice) == 16, "wrong size");

}  // namespace android::hardware::transport::wire
