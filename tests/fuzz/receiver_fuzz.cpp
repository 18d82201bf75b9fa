// Feeds mutated messages to the runtime's receiver, the parcel's checks and a generated stub.
//
//   receiver_fuzz [INPUTS]
//
// Built with libFuzzer (QORTV_LIBFUZZER) it takes its inputs from there; otherwise it mutates calls
// that a generated proxy makes, in the same order in each run. The sanitizers report the faults.
//
// The first byte of an input gives the descriptors that come with the message (its lowest three
// bits) and whether the reader accepts several messages at once (its highest bit). The rest is the
// message.
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <utility>
#include <vector>

#include <hidl/FatalCallError.h>
#include <hidl/HidlBinderSupport.h>
#include <qortv/test/1.0/BpHwEcho.h>
#include <transport/FrameReader.h>
#include <transport/FrameSender.h>

#include "EchoService.h"
#include "RawClient.h"

namespace {

using namespace ::qortv::test;
using namespace ::android::hardware;
using namespace ::android::hardware::transport;

// The methods of IEcho up to this one only return their arguments, so any call of them ends.
constexpr uint32_t kLastValueMethod = 24;

// Both ends of a socket. Its buffer takes the longest message.
struct Sockets {
    Sockets() {
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) abort();
        const int size = 4 * 1024 * 1024;
        setsockopt(ends[0], SOL_SOCKET, SO_SNDBUF, &size, sizeof(size));
    }
    ~Sockets() {
        for (int end : ends) {
            if (end >= 0) close(end);
        }
    }
    void finishWriting() { shutdown(ends[0], SHUT_WR); }
    int ends[2];
};

// Calls the stub with a received message. All binders in it are null.
void serve(const sp<IBinder>& stub, const wire::FrameHeader& header, ParcelContentsOwner contents) {
    contents->visitReceivedBinders([&](flat_binder_object* description) {
        contents->binders.emplace_back();
        description->hdr.type = BINDER_TYPE_BINDER;
        return true;
    });
    Parcel data;
    data.adopt(std::move(contents));
    Parcel reply;
    details::ServingScope scope;
    try {
        stub->transact(1 + header.code % kLastValueMethod, data, &reply, header.flags & 1,
                       [](Parcel& answer) {
                           wire::FrameHeader measured{};
                           measureFrame(answer.contentsOrNull(), &measured);
                       });
    } catch (const details::FatalCallError&) {
        // The implementation broke its contract, as a session would reply to the caller.
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size) {
    static const sp<IEcho>& service = *new sp<IEcho>(new EchoService);
    static const sp<IBinder>& stub = *new sp<IBinder>(getOrCreateCachedBinder(service.get()));
    static const int file = open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (size < 2 || size > 64 * 1024) return 0;

    Sockets sockets;
    const Bytes message(input + 1, input + size);
    RawClient::send(sockets.ends[0], message, std::vector<int>(input[0] % 8, file));
    sockets.finishWriting();
    FrameReader reader(input[0] >= 128);
    for (;;) {
        ParcelContentsOwner contents = ParcelContents::acquire();
        wire::FrameHeader header;
        const char* reason = nullptr;
        const ReceiveResult result =
                reader.receive(sockets.ends[1], &header, contents.get(), &reason);
        if (result != ReceiveResult::kFrame) break;
        if (header.type == wire::FrameType::kCall) serve(stub, header, std::move(contents));
    }
    return 0;
}

#ifndef QORTV_LIBFUZZER
namespace {

// Records the messages of the calls that are made on it, and fails them.
class Recorder : public IBinder {
  public:
    ::android::status_t transact(uint32_t code, const Parcel& data, Parcel*, uint32_t flags,
                                 TransactCallback) override {
        wire::FrameHeader header{};
        header.type = wire::FrameType::kCall;
        header.flags = static_cast<uint8_t>(flags);
        header.code = code - 1;
        ParcelContents* contents = data.contentsOrNull();
        Sockets sockets;
        if (!measureFrame(contents, &header) ||
            sendFrame(sockets.ends[0], header, contents) != SendResult::kSent) {
            abort();
        }
        Bytes bytes(1 + header.size);
        bytes[0] = static_cast<uint8_t>(header.descriptorCount);
        if (recv(sockets.ends[1], bytes.data() + 1, header.size, MSG_WAITALL) !=
            static_cast<ssize_t>(header.size)) {
            abort();
        }
        messages.push_back(bytes);
        return ::android::DEAD_OBJECT;
    }
    ::android::status_t linkToDeath(const sp<DeathRecipient>&, void*, uint32_t) override {
        return ::android::DEAD_OBJECT;
    }
    ::android::status_t unlinkToDeath(const wp<DeathRecipient>&, void*, uint32_t,
                                      wp<DeathRecipient>*) override {
        return ::android::DEAD_OBJECT;
    }
    std::vector<Bytes> messages;
};

// Returns a sound call of each method that takes arguments, as inputs.
std::vector<Bytes> makeSeeds() {
    sp<Recorder> recorder = new Recorder;
    sp<IEcho> proxy = new BpHwEcho(recorder);
    auto ignore = [](const auto&...) {};
    native_handle_t* native = native_handle_create(1, 2);
    native->data[0] = open("/dev/null", O_RDONLY | O_CLOEXEC);
    native->data[1] = native->data[2] = 0;
    hidl_handle handle;
    handle.setTo(native, true);
    Tree tree;
    tree.branches = {{"oak", {{"leaf", {}}, {"", {}}}}, {"bare", {}}};
    Groups groups{};
    groups.items[3] = {1, 2, 3};

    proxy->nothing().isOk();
    proxy->echoI64(-1).isOk();
    proxy->echoScalars({}, ignore).isOk();
    proxy->echoString("text", ignore).isOk();
    proxy->echoBytes({1, 2, 3}, ignore).isOk();
    proxy->echoStrings({"a", "", "long enough for more than one unit"}, ignore).isOk();
    proxy->echoNested({{1, 2}, {}, {3}}, ignore).isOk();
    proxy->echoArray({}, ignore).isOk();
    proxy->echoTree(tree, ignore).isOk();
    proxy->echoTrees({tree, tree}, ignore).isOk();
    proxy->echoGroups(groups, ignore).isOk();
    proxy->echoHandle(handle, ignore).isOk();
    proxy->echoHandles({handle, hidl_handle(), handle}, ignore).isOk();
    proxy->echoHolders({{"file", handle}, {"none", hidl_handle()}}, ignore).isOk();
    proxy->several(1, "b", ignore).isOk();
    return recorder->messages;
}

// Changes one thing, so that much of the message stays sound: flips a bit, puts a small or extreme
// number or another word in place of a word, or cuts the end off.
void mutate(Bytes* bytes, std::mt19937* random) {
    static const uint32_t kNumbers[] = {0, 1, 7, 8, 16, 40, 0x7fffffff, 0x80000000, 0xffffffff};
    const size_t at = (*random)() % bytes->size();
    switch ((*random)() % 8) {
        case 0:
        case 1:
        case 2:
            (*bytes)[at] ^= static_cast<uint8_t>(1u << (*random)() % 8);
            return;
        case 3:
        case 4:
        case 5: {
            const uint32_t number = kNumbers[(*random)() % std::size(kNumbers)];
            const size_t word = 1 + (at & ~size_t{3});
            if (word + 4 <= bytes->size()) memcpy(bytes->data() + word, &number, 4);
            return;
        }
        case 6: {
            // One word of the message in place of another: sizes and offsets get mixed up.
            const size_t from = 1 + ((*random)() % bytes->size() & ~size_t{3});
            const size_t to = 1 + (at & ~size_t{3});
            if (std::max(from, to) + 4 <= bytes->size()) {
                memmove(bytes->data() + to, bytes->data() + from, 4);
            }
            return;
        }
        default:
            bytes->resize(std::max<size_t>(2, at));
    }
}

}  // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? atoi(argv[1]) : 100'000;
    const std::vector<Bytes> seeds = makeSeeds();
    for (const Bytes& seed : seeds) LLVMFuzzerTestOneInput(seed.data(), seed.size());
    std::mt19937 random(1);
    for (int i = 0; i < count; ++i) {
        Bytes bytes = seeds[random() % seeds.size()];
        for (uint32_t hits = 1 + random() % 3; hits > 0; --hits) mutate(&bytes, &random);
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    }
    printf("%d messages\n", count);
    return 0;
}
#endif
