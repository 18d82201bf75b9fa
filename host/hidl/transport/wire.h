// The whole wire format of the socket transport. docs/host-protocol.md explains it.
//
// Both ends run on one machine, so numbers are in the machine's order. Every structure is a
// multiple of 8 bytes long and free of hidden padding.
#pragma once

#include <cstddef>
#include <cstdint>

#include <hidl/Limits.h>

namespace android::hardware::transport::wire {

constexpr uint32_t kMagic = 0x4c444948;  // "HIDL"
constexpr uint16_t kVersion = 1;

// What a new connection is for. The process that opens it says so in its Hello.
enum class Purpose : uint16_t {
    kSession = 1,  // begin a session; this connection carries its notices and oneway calls
    kCalls = 2,    // the opener makes calls on it
    kServes = 3,   // the opener serves calls on it
    kInquiry = 4,  // the opener only wants the HelloReply
};

// First message of each connection.
struct Hello {
    uint32_t magic;
    uint16_t version;
    Purpose purpose;
    uint64_t process;  // token of the opener's process
    uint64_t session;  // kCalls, kServes: number of the session; else 0
    int32_t pid;
    uint32_t reserved;
};
static_assert(sizeof(Hello) == 32, "wrong size");

// Reply to a Hello.
struct HelloReply {
    uint32_t magic;
    uint16_t version;
    uint16_t accepted;  // 1, or 0 if the accepter takes no further connection of this kind
    uint64_t process;   // token of the accepter's process
    uint64_t session;   // number of the session
    int32_t pid;
    uint32_t threads;      // threads of the accepter's pool
    uint32_t idleThreads;  // those of them that wait for work
    uint32_t maxThreads;   // most that the pool may have
    uint32_t sessions;     // processes connected to the accepter
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

// Head of each message after the greeting. Behind it follow `dataSize` bytes of flat data, padded
// to 8; objectCount offsets into that data, 8 bytes each; `bufferSize` bytes of buffers, each
// padded to 8.
struct FrameHeader {
    uint32_t size;  // of the whole message, this header included; a multiple of 8
    FrameType type;
    uint8_t flags;
    uint16_t descriptorCount;
    uint64_t sequence;  // number of the call; its reply repeats it
    uint64_t target;    // call: number of the receiver's object; reply: number of the receipt that
                        // the sender wants, or 0
    uint32_t code;      // call: method; reply: a status_t
    uint32_t dataSize;
    uint32_t objectCount;
    uint32_t bufferSize;
};
static_assert(sizeof(FrameHeader) == 40, "wrong size");

// Bytes of the longest message.
constexpr size_t kMaxFrameSize = sizeof(FrameHeader) + limits::kTransactionBytes;

// flat_binder_object::cookie is the number of an object: with type BINDER_TYPE_BINDER one of the
// sender (0: null), with BINDER_TYPE_HANDLE one of the receiver.

// Number of the object that each process has from the start, to look up services.
constexpr uint64_t kRootObject = 0;
// Method of the root object: takes a service's name as a text, returns its binder or null.
constexpr uint32_t kLookUp = 1;

enum class NoticeType : uint32_t {
    kReleased = 1,         // the sender dropped object `id`, which it had been sent `count` times
    kReceived = 2,         // the sender has read the reply that wanted receipt `id`
    kConnectionWanted = 3  // the sender has no connection on which to call the receiver
};

// The data of a kNotices message is an array of these.
struct Notice {
    NoticeType type;
    uint32_t count;
    uint64_t id;
};
static_assert(sizeof(Notice) == 16, "wrong size");

}  // namespace android::hardware::transport::wire
