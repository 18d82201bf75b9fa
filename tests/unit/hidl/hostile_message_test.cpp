// Messages that break the rules: their sender loses its session, with one log line, and other
// clients notice nothing.
#include <cutils/native_handle.h>
#include <fcntl.h>
#include <linux/android/binder.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <cstring>
#include <memory>
#include <random>

#include <hidl/Limits.h>

#include "HostileTest.h"

namespace qortv::test {
namespace {

namespace limits = ::android::hardware::limits;

// Codes of IEcho's methods echoString, echoHandle, and the last one that only returns something.
constexpr uint32_t kEchoString = 10;
constexpr uint32_t kEchoHandle = 21;
constexpr uint32_t kLastEcho = 30;

TEST_F(HostileTest, SoundRawCallIsServed) {
    RawClient client(mFolder + "/run");
    open(&client);
    ASSERT_TRUE(RawClient::send(client.calls(), number().bytes()));
    wire::FrameHeader header;
    Bytes rest;
    ASSERT_TRUE(RawClient::receive(client.calls(), &header, &rest));
    EXPECT_EQ(header.type, wire::FrameType::kReply);
    EXPECT_EQ(header.sequence, 1u);
    EXPECT_EQ(header.code, 0u);
    int32_t results[2];
    ASSERT_EQ(header.dataSize, sizeof(results));
    memcpy(results, rest.data(), sizeof(results));
    EXPECT_EQ(results[0], 0);
    EXPECT_EQ(results[1], 42);
    client.closeAll();
    expectUnharmed(0);
}

TEST_F(HostileTest, MessageCutOff) {
    RawClient client(mFolder + "/run");
    open(&client);
    Bytes bytes = number().bytes();
    bytes.resize(bytes.size() - 8);
    ASSERT_TRUE(RawClient::send(client.calls(), bytes));
    shutdown(client.calls(), SHUT_WR);
    EXPECT_TRUE(RawClient::isClosed(client.notices()));
    client.closeAll();
    expectUnharmed(1);
    ASSERT_EQ(serviceLog().size(), 1u);
    EXPECT_NE(serviceLog()[0].find("cut off"), std::string::npos);
}

// There are more half messages than the service has threads. No thread waits for the other halves,
// and each call is served when its other half comes.
TEST_F(HostileTest, HalfMessages) {
    // Ten calls take far less on any machine; a thread that waited would wait as long at least.
    constexpr auto kHarmless = std::chrono::milliseconds(limits::kMessageMilliseconds);
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int i = 0; i < 12; ++i) {
        clients.push_back(std::make_unique<RawClient>(mFolder + "/run"));
        open(clients.back().get());
    }
    const Bytes call = number().bytes();
    const auto half = call.begin() + static_cast<ptrdiff_t>(call.size() / 2);
    for (auto& client : clients) {
        ASSERT_TRUE(RawClient::send(client->calls(), Bytes(call.begin(), half)));
    }
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 10; ++i) EXPECT_EQ(mEcho->number().withDefault(0), 42);
    EXPECT_LT(std::chrono::steady_clock::now() - start, kHarmless);
    for (auto& client : clients) {
        ASSERT_TRUE(RawClient::send(client->calls(), Bytes(half, call.end())));
        wire::FrameHeader header;
        Bytes rest;
        ASSERT_TRUE(RawClient::receive(client->calls(), &header, &rest));
        EXPECT_EQ(header.code, 0u);
        client->closeAll();
    }
    expectUnharmed(0);
}

TEST_F(HostileTest, ImpossibleSizes) {
    RawFrame frame = number();
    frame.header.size = 39;
    expectSessionEnds(frame.bytes(), "impossible size");
    frame.header.size = 44;
    expectSessionEnds(frame.bytes(), "impossible size");
    frame.header.size =
            static_cast<uint32_t>(sizeof(wire::FrameHeader) + limits::kTransactionBytes + 8);
    expectSessionEnds(frame.bytes(), "longer than allowed");
    frame.header.size = 0xfffffff8;
    expectSessionEnds(frame.bytes(), "longer than allowed");
}

TEST_F(HostileTest, PartsThatDoNotAddUp) {
    RawFrame frame = number();
    frame.header.dataSize = 64;
    expectSessionEnds(frame.bytes(), "do not add up");
    frame = number();
    frame.header.objectCount = 0x20000000;
    expectSessionEnds(frame.bytes(), "do not add up");
    frame = number();
    frame.header.bufferSize = 0xfffffff8;
    expectSessionEnds(frame.bytes(), "do not add up");
}

TEST_F(HostileTest, WrongKindsOfMessages) {
    RawFrame frame = number();
    frame.header.type = static_cast<wire::FrameType>(9);
    expectSessionEnds(frame.bytes(), "unknown type");
    frame.header.type = wire::FrameType::kReply;
    expectSessionEnds(frame.bytes(), "answer to no call");
    frame.header.type = wire::FrameType::kCall;
    frame.header.flags = wire::kOneway;
    expectSessionEnds(frame.bytes(), "wrong connection");
    frame = number();
    frame.header.target = 4711;
    expectSessionEnds(frame.bytes(), "does not have");
    Bytes twice = number().bytes();
    const Bytes once = twice;
    twice.insert(twice.end(), once.begin(), once.end());
    expectSessionEnds(twice, "before the answer");
}

TEST_F(HostileTest, BadObjects) {
    binder_buffer_object buffer{};
    buffer.hdr.type = BINDER_TYPE_PTR;
    buffer.length = 16;

    RawFrame frame = RawFrame::call(mTarget, kEchoString, kToken);
    frame.offsets = {4096};
    expectSessionEnds(frame.bytes(), "outside the data");
    frame.offsets = {~uint64_t{0} - 7};
    expectSessionEnds(frame.bytes(), "outside the data");
    frame.offsets = {4};
    expectSessionEnds(frame.bytes(), "outside the data");
    frame.offsets = {16};  // the object's type is inside the data, its end is not
    frame.data.resize(24);
    const uint32_t type = BINDER_TYPE_PTR;
    memcpy(frame.data.data() + 16, &type, sizeof(type));
    expectSessionEnds(frame.bytes(), "outside the data");

    frame = RawFrame::call(mTarget, kEchoString, kToken);
    frame.addObject(buffer);
    expectSessionEnds(frame.bytes(), "longer than the message");
    frame.buffers.resize(16);
    frame.offsets.push_back(frame.offsets[0]);
    expectSessionEnds(frame.bytes(), "outside the data");

    frame = RawFrame::call(mTarget, kEchoString, kToken);
    buffer.hdr.type = 0x12345678;
    frame.addObject(buffer);
    expectSessionEnds(frame.bytes(), "unknown kind");

    frame = RawFrame::call(mTarget, kEchoString, kToken);
    buffer.hdr.type = BINDER_TYPE_PTR;
    buffer.flags = BINDER_BUFFER_FLAG_HAS_PARENT;
    frame.addObject(buffer);
    frame.buffers.resize(16);
    expectSessionEnds(frame.bytes(), "without its parent");

    frame = RawFrame::call(mTarget, kEchoString, kToken);
    buffer.flags = 0;
    frame.addObject(buffer);
    frame.buffers.resize(24);
    expectSessionEnds(frame.bytes(), "belong to no buffer");

    flat_binder_object object{};
    object.hdr.type = BINDER_TYPE_HANDLE;
    object.cookie = 99;
    frame = RawFrame::call(mTarget, kEchoString, kToken);
    frame.addObject(object);
    expectSessionEnds(frame.bytes(), "does not have");
}

// Messages that are sound but do not hold the arguments of the method.
TEST_F(HostileTest, ArgumentsOfAnotherShape) {
    expectSessionEnds(RawFrame::call(mTarget, kEchoString, kToken).bytes(), "no object");

    // A string of 100 bytes in a buffer of 8.
    RawFrame frame = RawFrame::call(mTarget, kEchoString, kToken);
    binder_buffer_object outer{};
    outer.hdr.type = BINDER_TYPE_PTR;
    outer.length = 16;
    binder_buffer_object inner = outer;
    inner.length = 8;
    inner.flags = BINDER_BUFFER_FLAG_HAS_PARENT;
    frame.addObject(outer);
    frame.addObject(inner);
    frame.buffers.resize(24);
    const uint32_t size = 100;
    memcpy(frame.buffers.data() + 8, &size, sizeof(size));
    expectSessionEnds(frame.bytes(), "another size");

    // A string of 7 bytes without its NUL.
    const uint32_t right = 7;
    memcpy(frame.buffers.data() + 8, &right, sizeof(right));
    memset(frame.buffers.data() + 16, 'x', 8);
    expectSessionEnds(frame.bytes(), "without end");
}

TEST_F(HostileTest, Descriptors) {
    const int fd = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    RawFrame frame = RawFrame::call(mTarget, kEchoHandle, kToken);
    frame.header.descriptorCount = 254;
    expectSessionEnds(frame.bytes(), "more descriptors than allowed");
    frame.header.descriptorCount = 1;
    expectSessionEnds(frame.bytes(), "did not come");
    frame.header.descriptorCount = 0;
    expectSessionEnds(frame.bytes(), "no message mentions", {fd});
    frame.header.descriptorCount = 2;
    expectSessionEnds(frame.bytes(), "belong to no handle", {fd, fd});
    frame.header.descriptorCount = 253;
    expectSessionEnds(frame.bytes(), "belong to no handle", std::vector<int>(253, fd));

    // A handle whose counts do not agree with its size.
    frame = RawFrame::call(mTarget, kEchoHandle, kToken);
    frame.addInt(16);
    frame.addInt(0);
    binder_buffer_object buffer{};
    buffer.hdr.type = BINDER_TYPE_PTR;
    buffer.length = 16;
    frame.addObject(buffer);
    const int32_t handle[] = {12, 1000, -999, 5};
    frame.buffers.resize(16);
    memcpy(frame.buffers.data(), handle, sizeof(handle));
    expectSessionEnds(frame.bytes(), "counts do not agree");
    close(fd);
}

// A message that is sound up to its target: its descriptors go when the session ends.
TEST_F(HostileTest, DescriptorsForAnUnknownObject) {
    const int fd = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    RawFrame frame = RawFrame::call(4711, kEchoHandle, kToken);
    frame.header.descriptorCount = 2;
    constexpr uint64_t kHandleSize = 20;
    frame.data.resize((frame.data.size() + 7) & ~size_t{7});
    frame.addInt(kHandleSize);
    frame.addInt(0);
    binder_buffer_object buffer{};
    buffer.hdr.type = BINDER_TYPE_PTR;
    buffer.length = kHandleSize;
    frame.addObject(buffer);
    binder_fd_array_object array{};
    array.hdr.type = BINDER_TYPE_FDA;
    array.num_fds = 2;
    array.parent_offset = offsetof(native_handle_t, data);
    frame.addObject(array);
    frame.buffers.resize(24);
    expectSessionEnds(frame.bytes(), "object that it does not have", {fd, fd});
    close(fd);
}

// The descriptors of half a message are kept for the other half, and closed when the session ends:
// by the end of that connection, or of another one.
TEST_F(HostileTest, DescriptorsOfHalfAMessage) {
    const int fd = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    for (const bool sameConnection : {true, false}) {
        RawClient client(mFolder + "/run");
        open(&client);
        const Bytes call = number().bytes();
        const auto half = call.begin() + static_cast<ptrdiff_t>(call.size() / 2);
        ASSERT_TRUE(RawClient::send(client.calls(), Bytes(call.begin(), half), {fd, fd}));
        const int32_t connections = 2;
        EXPECT_TRUE(eventually([&] {
            return mEcho->openDescriptors().withDefault(-1) == mDescriptors + connections + 2;
        }));
        const int ended = sameConnection ? client.calls() : client.notices();
        const int other = sameConnection ? client.notices() : client.calls();
        shutdown(ended, SHUT_WR);
        EXPECT_TRUE(RawClient::isClosed(other));
        client.closeAll();
        expectUnharmed(1);  // the connection that was cut off is logged, the other one is not
    }
    close(fd);
}

TEST_F(HostileTest, BadNotices) {
    const auto expectEnds = [&](wire::Notice notice, const std::string& words) {
        const size_t before = serviceLog().size();
        RawClient client(mFolder + "/run");
        open(&client);
        RawFrame frame;
        frame.header.type = wire::FrameType::kNotices;
        frame.data.resize(sizeof(notice));
        memcpy(frame.data.data(), &notice, sizeof(notice));
        ASSERT_TRUE(RawClient::send(client.notices(), frame.bytes()));
        EXPECT_TRUE(RawClient::isClosed(client.notices()));
        client.closeAll();
        expectUnharmed(before + 1);
        ASSERT_EQ(serviceLog().size(), before + 1) << words;
        EXPECT_NE(serviceLog().back().find(words), std::string::npos) << serviceLog().back();
    };
    expectEnds({wire::NoticeType::kReleased, 1, 99}, "does not have");
    expectEnds({wire::NoticeType::kReleased, 0, mTarget}, "does not have");
    expectEnds({wire::NoticeType::kReleased, 2, mTarget}, "does not have");
    expectEnds({wire::NoticeType::kReceived, 0, 5}, "makes no sense");
    expectEnds({wire::NoticeType::kConnectionWanted, 0, 0}, "makes no sense");
    expectEnds({static_cast<wire::NoticeType>(77), 0, 0}, "makes no sense");
}

// Wrong token, unknown method, oneway flag against the declaration: the call fails with one log
// line, and the session goes on.
TEST_F(HostileTest, MistakesThatKeepTheSession) {
    RawClient client(mFolder + "/run");
    open(&client);
    wire::FrameHeader header;
    Bytes rest;
    ASSERT_TRUE(RawClient::send(client.calls(),
                                RawFrame::call(mTarget, kNumber, "another@1.0::IThing").bytes()));
    ASSERT_TRUE(RawClient::receive(client.calls(), &header, &rest));
    EXPECT_EQ(static_cast<int32_t>(header.code), ::android::BAD_TYPE);
    expectLines(1);
    ASSERT_TRUE(RawClient::send(client.calls(), RawFrame::call(mTarget, 5000, kToken).bytes()));
    ASSERT_TRUE(RawClient::receive(client.calls(), &header, &rest));
    EXPECT_EQ(static_cast<int32_t>(header.code), ::android::UNKNOWN_TRANSACTION);
    expectLines(2);
    RawFrame oneway = number();
    oneway.header.flags = wire::kOneway;
    ASSERT_TRUE(RawClient::send(client.notices(), oneway.bytes()));
    expectLines(3);
    ASSERT_TRUE(RawClient::send(client.calls(), number().bytes()));
    ASSERT_TRUE(RawClient::receive(client.calls(), &header, &rest));
    EXPECT_EQ(header.code, 0u);
    client.closeAll();
    expectUnharmed(3);
}

// Messages with random errors: sessions end and calls fail, but no memory or descriptor is leaked.
TEST_F(HostileTest, RandomMessages) {
    std::mt19937 random(20240229);
    auto round = [&](int count) {
        for (int i = 0; i < count; ++i) {
            RawClient client(mFolder + "/run");
            open(&client);
            // A method that ends at once.
            RawFrame frame = RawFrame::call(mTarget, 1 + random() % kLastEcho, kToken);
            binder_buffer_object buffer{};
            buffer.hdr.type = BINDER_TYPE_PTR;
            buffer.length = 16;
            frame.addObject(buffer);
            frame.buffers.resize(16);
            Bytes bytes = frame.bytes();
            for (uint32_t hits = 1 + random() % 4; hits > 0; --hits) {
                const size_t at = random() % bytes.size();
                if (at / 4 == offsetof(wire::FrameHeader, code) / 4) continue;
                bytes[at] ^= static_cast<uint8_t>(1 + random() % 255);
            }
            ASSERT_TRUE(RawClient::send(client.calls(), bytes));
            shutdown(client.calls(), SHUT_WR);
            while (!RawClient::isClosed(client.calls())) {
            }
        }
        EXPECT_TRUE(eventually(
                [&] { return mEcho->openDescriptors().withDefault(-1) == mDescriptors; }));
    };
    round(150);
    const uint64_t before = mEcho->allocatedBytes().withDefault(0);
    round(1000);
    const uint64_t after = mEcho->allocatedBytes().withDefault(0);
    // The memory that threads keep for reuse varies with the sizes of their messages. A thousand
    // leaked sessions would take more than a thousand bytes each.
    EXPECT_LT(after, before + 400 * 1024);
    EXPECT_EQ(mEcho->number().withDefault(0), 42);
}

}  // namespace
}  // namespace qortv::test
