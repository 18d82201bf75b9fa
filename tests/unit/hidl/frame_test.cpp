// Messages that are received one after the other into the same memory.
#include <gtest/gtest.h>
#include <linux/android/binder.h>
#include <sys/socket.h>
#include <unistd.h>

#include <hwbinder/ParcelContents.h>
#include <transport/FrameReader.h>

#include "RawClient.h"

namespace qortv::test {
namespace {

using ::android::hardware::padTo8;
using ::android::hardware::ParcelContents;
using ::android::hardware::ParcelContentsOwner;
using ::android::hardware::transport::FrameReader;
using ::android::hardware::transport::ReceiveResult;

class FrameTest : public ::testing::Test {
  protected:
    FrameTest() { EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, mSockets), 0); }
    ~FrameTest() override {
        for (int fd : mSockets) close(fd);
    }

    // Returns a message with one buffer of `length` bytes, all 0xff.
    static Bytes message(size_t length) {
        RawFrame frame;
        frame.header.type = wire::FrameType::kCall;
        binder_buffer_object object{};
        object.hdr.type = BINDER_TYPE_PTR;
        object.length = length;
        frame.addObject(object);
        frame.buffers.assign(length, 0xff);
        frame.buffers.resize(padTo8(length));
        return frame.bytes();
    }

    void send(const Bytes& bytes) { ASSERT_TRUE(RawClient::send(mSockets[0], bytes)); }

    // Expects message(length) as the next message, with at least eight zeros behind its buffer.
    void expectZerosBehind(size_t length) {
        SCOPED_TRACE(length);
        const ParcelContentsOwner contents = ParcelContents::acquire();
        wire::FrameHeader header;
        const char* reason = "";
        ASSERT_EQ(mReader.receive(mSockets[1], &header, contents.get(), &reason),
                  ReceiveResult::kFrame)
                << reason;
        const auto* object = reinterpret_cast<const binder_buffer_object*>(contents->receivedData);
        const auto* buffer = reinterpret_cast<const uint8_t*>(object->buffer);
        const size_t zeros = padTo8(length) - length + 8;
        EXPECT_EQ(Bytes(buffer, buffer + length), Bytes(length, 0xff));
        EXPECT_EQ(Bytes(buffer + length, buffer + length + zeros), Bytes(zeros, 0));
    }

    int mSockets[2] = {-1, -1};
    FrameReader mReader{true};
};

TEST_F(FrameTest, NothingOfALongerMessageLiesBehindAShorterOne) {
    for (const size_t length : {64, 16, 15, 9, 8, 2}) {
        send(message(length));
        expectZerosBehind(length);
    }
}

TEST_F(FrameTest, NothingOfTheNextMessageLiesBehindOneThatCameWithIt) {
    Bytes both = message(8);
    const Bytes next = message(64);
    both.insert(both.end(), next.begin(), next.end());
    send(both);
    expectZerosBehind(8);
    EXPECT_TRUE(mReader.hasMore());
    expectZerosBehind(64);
}

// With the address sanitizer this test also fails if there is no memory for the zeros.
TEST_F(FrameTest, MessagesAsLongAsTheirMemoryHaveZerosBehindThem) {
    constexpr size_t kFirstRead = 4096;
    const size_t rest = message(8).size() - 8;
    for (const size_t size : {kFirstRead - 8, kFirstRead, kFirstRead + 8, 3 * kFirstRead}) {
        send(message(size - rest));
        expectZerosBehind(size - rest);
    }
}

}  // namespace
}  // namespace qortv::test
