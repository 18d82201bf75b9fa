// Parcels without calls: what is written to one is read from another after it went through a
// socket.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <hidl/HidlBinderSupport.h>
#include <hidl/Limits.h>
#include <hwbinder/Parcel.h>
#include <hwbinder/ParcelContents.h>
#include <transport/FrameReader.h>
#include <transport/FrameSender.h>

namespace qortv::test {
namespace {

using namespace ::android::hardware;
using namespace ::android::hardware::transport;
using ::android::BAD_VALUE;
using ::android::NO_MEMORY;
using ::android::NOT_ENOUGH_DATA;
using ::android::OK;
using ::android::sp;

class ParcelTest : public ::testing::Test {
  protected:
    ParcelTest() {
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, mSockets) != 0) abort();
        const int size = 4 * 1024 * 1024;
        setsockopt(mSockets[0], SOL_SOCKET, SO_SNDBUF, &size, sizeof(size));
    }
    ~ParcelTest() override {
        for (int socket : mSockets) close(socket);
    }

    // Sends `from` and receives it as `to`. Returns false if that fails; mReason tells why it was
    // not accepted.
    bool pass(const Parcel& from, Parcel* to) {
        wire::FrameHeader header{};
        header.type = wire::FrameType::kCall;
        ParcelContents* contents = from.contentsOrNull();
        if (!measureFrame(contents, &header)) return false;
        if (sendFrame(mSockets[0], header, contents) != SendResult::kSent) return false;
        FrameReader reader(false);
        ParcelContentsOwner received = ParcelContents::acquire();
        const ReceiveResult result = reader.receive(mSockets[1], &header, received.get(), &mReason);
        to->adopt(std::move(received));
        return result == ReceiveResult::kFrame;
    }

    int mSockets[2];
    const char* mReason = nullptr;
};

TEST_F(ParcelTest, Scalars) {
    Parcel out;
    out.writeInterfaceToken("a@1.0::IThing");
    out.writeBool(true);
    out.writeInt8(-5);
    out.writeUint8(250);
    out.writeInt16(-300);
    out.writeUint16(65000);
    out.writeInt32(-70000);
    out.writeUint32(4000000000u);
    out.writeInt64(-5000000000);
    out.writeUint64(~uint64_t{0});
    out.writeFloat(0.5f);
    out.writeDouble(0.25);
    out.writeCString("");
    out.writeCString("abc");
    Parcel in;
    ASSERT_TRUE(pass(out, &in));
    EXPECT_TRUE(in.enforceInterface("a@1.0::IThing"));
    bool b = false;
    int8_t i8;
    uint8_t u8;
    int16_t i16;
    uint16_t u16;
    int32_t i32;
    uint32_t u32;
    int64_t i64;
    uint64_t u64;
    float f;
    double d;
    EXPECT_EQ(in.readBool(&b), OK);
    EXPECT_EQ(in.readInt8(&i8), OK);
    EXPECT_EQ(in.readUint8(&u8), OK);
    EXPECT_EQ(in.readInt16(&i16), OK);
    EXPECT_EQ(in.readUint16(&u16), OK);
    EXPECT_EQ(in.readInt32(&i32), OK);
    EXPECT_EQ(in.readUint32(&u32), OK);
    EXPECT_EQ(in.readInt64(&i64), OK);
    EXPECT_EQ(in.readUint64(&u64), OK);
    EXPECT_EQ(in.readFloat(&f), OK);
    EXPECT_EQ(in.readDouble(&d), OK);
    EXPECT_STREQ(in.readCString(), "");
    EXPECT_STREQ(in.readCString(), "abc");
    EXPECT_TRUE(b);
    EXPECT_EQ(i8, -5);
    EXPECT_EQ(u8, 250);
    EXPECT_EQ(i16, -300);
    EXPECT_EQ(u16, 65000);
    EXPECT_EQ(i32, -70000);
    EXPECT_EQ(u32, 4000000000u);
    EXPECT_EQ(i64, -5000000000);
    EXPECT_EQ(u64, ~uint64_t{0});
    EXPECT_EQ(f, 0.5f);
    EXPECT_EQ(d, 0.25);
    EXPECT_EQ(in.malformedReason(), nullptr);
    EXPECT_EQ(in.readInt32(&i32), NOT_ENOUGH_DATA);
    EXPECT_STREQ(in.malformedReason(), "data ends too early");
}

TEST_F(ParcelTest, AnotherTokenIsNoMalformedParcel) {
    Parcel out;
    out.writeInterfaceToken("a@1.0::IThing");
    Parcel in;
    ASSERT_TRUE(pass(out, &in));
    EXPECT_FALSE(in.enforceInterface("a@1.0::IThin"));
    EXPECT_EQ(in.malformedReason(), nullptr);
}

TEST_F(ParcelTest, EmptyParcel) {
    Parcel in;
    int32_t value;
    EXPECT_EQ(in.readInt32(&value), NOT_ENOUGH_DATA);
    EXPECT_EQ(in.readCString(), nullptr);
    EXPECT_FALSE(in.enforceInterface("a"));
    size_t handle;
    const void* buffer;
    EXPECT_EQ(in.readBuffer(1, &handle, &buffer), BAD_VALUE);
}

struct Outer {
    uint64_t number;
    hidl_string text;
    hidl_vec<uint32_t> numbers;
};

// Embedded objects that were read point into the message and own nothing.
TEST_F(ParcelTest, EmbeddedBuffers) {
    Outer outer{7, "inside", {1, 2, 3}};
    Parcel out;
    size_t parent;
    size_t child;
    ASSERT_EQ(out.writeBuffer(&outer, sizeof(outer), &parent), OK);
    ASSERT_EQ(writeEmbeddedToParcel(outer.text, &out, parent, offsetof(Outer, text)), OK);
    ASSERT_EQ(writeEmbeddedToParcel(outer.numbers, &out, parent, offsetof(Outer, numbers), &child),
              OK);
    Parcel in;
    ASSERT_TRUE(pass(out, &in));
    const void* bytes;
    ASSERT_EQ(in.readBuffer(sizeof(Outer), &parent, &bytes), OK);
    const auto& read = *static_cast<const Outer*>(bytes);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(bytes) % 8, 0u);
    ASSERT_EQ(readEmbeddedFromParcel(read.text, in, parent, offsetof(Outer, text)), OK);
    ASSERT_EQ(readEmbeddedFromParcel(read.numbers, in, parent, offsetof(Outer, numbers), &child),
              OK);
    EXPECT_EQ(read.number, 7u);
    EXPECT_EQ(read.text, "inside");
    EXPECT_NE(read.text.c_str(), outer.text.c_str());
    EXPECT_EQ(read.numbers, outer.numbers);
    EXPECT_EQ(reinterpret_cast<const char*>(&read.text)[12], 0);
    EXPECT_EQ(reinterpret_cast<const char*>(&read.numbers)[12], 0);
}

// A buffer cannot be read in another place than it was written, nor with another size.
TEST_F(ParcelTest, BuffersKeepTheirPlaceAndSize) {
    auto make = [&](Parcel* in) {
        Outer outer{7, "inside", {}};
        Parcel out;
        size_t parent;
        out.writeBuffer(&outer, sizeof(outer), &parent);
        writeEmbeddedToParcel(outer.text, &out, parent, offsetof(Outer, text));
        ASSERT_TRUE(pass(out, in));
    };
    size_t handle;
    const void* bytes;
    {
        Parcel in;
        make(&in);
        EXPECT_EQ(in.readBuffer(sizeof(Outer) - 8, &handle, &bytes), BAD_VALUE);
        EXPECT_STREQ(in.malformedReason(), "buffer of another size");
    }
    {
        Parcel in;
        make(&in);
        ASSERT_EQ(in.readBuffer(sizeof(Outer), &handle, &bytes), OK);
        EXPECT_EQ(in.readEmbeddedBuffer(7, &handle, handle, 0, &bytes), BAD_VALUE);
        EXPECT_STREQ(in.malformedReason(), "embedded buffer of another parent");
    }
    {
        Parcel in;
        make(&in);
        ASSERT_EQ(in.readBuffer(sizeof(Outer), &handle, &bytes), OK);
        EXPECT_EQ(in.readBuffer(7, &handle, &bytes), BAD_VALUE);
    }
    {
        Parcel in;
        make(&in);
        sp<IBinder> binder;
        EXPECT_EQ(in.readNullableStrongBinder(&binder), BAD_VALUE);
        const native_handle_t* native;
        EXPECT_NE(in.readNullableNativeHandleNoDup(&native), OK);
    }
}

TEST_F(ParcelTest, HandlesAreDuplicatedAndClosed) {
    native_handle_t* native = native_handle_create(1, 2);
    native->data[0] = open("/dev/null", O_RDONLY | O_CLOEXEC);
    native->data[1] = 11;
    native->data[2] = 22;
    int received;
    {
        Parcel out;
        ASSERT_EQ(out.writeNativeHandleNoDup(native), OK);
        ASSERT_EQ(out.writeNativeHandleNoDup(nullptr), OK);
        Parcel in;
        ASSERT_TRUE(pass(out, &in));
        const native_handle_t* read;
        ASSERT_EQ(in.readNullableNativeHandleNoDup(&read), OK);
        received = read->data[0];
        EXPECT_NE(received, native->data[0]);
        EXPECT_NE(fcntl(received, F_GETFD), -1);
        EXPECT_EQ(read->data[2], 22);
        ASSERT_EQ(in.readNullableNativeHandleNoDup(&read), OK);
        EXPECT_EQ(read, nullptr);
    }
    EXPECT_EQ(fcntl(received, F_GETFD), -1);
    EXPECT_NE(fcntl(native->data[0], F_GETFD), -1);
    native_handle_close(native);
    native_handle_delete(native);
}

TEST_F(ParcelTest, ImpossibleHandleIsNotWritten) {
    native_handle_t* native = native_handle_create(0, 1);
    native->numInts = -1;
    Parcel out;
    EXPECT_EQ(out.writeNativeHandleNoDup(native), BAD_VALUE);
    native_handle_delete(native);
}

TEST_F(ParcelTest, LimitOfBytes) {
    Parcel out;
    std::vector<uint8_t> bytes(limits::kTransactionBytes);
    size_t handle;
    EXPECT_EQ(out.writeBuffer(bytes.data(), bytes.size() + 1, &handle), NO_MEMORY);
    EXPECT_EQ(out.writeBuffer(bytes.data(), bytes.size() / 2, &handle), OK);
    EXPECT_EQ(out.writeBuffer(bytes.data(), bytes.size() / 2, &handle), NO_MEMORY);
}

TEST_F(ParcelTest, ContentsAreReusedClean) {
    for (int i = 0; i < 20; ++i) {
        Parcel out;
        out.writeInt32(i);
        Parcel in;
        ASSERT_TRUE(pass(out, &in));
        int32_t value = -1;
        EXPECT_EQ(in.readInt32(&value), OK);
        EXPECT_EQ(value, i);
        EXPECT_EQ(in.readInt32(&value), NOT_ENOUGH_DATA);
    }
}

TEST_F(ParcelTest, StatusTravels) {
    Parcel out;
    ASSERT_EQ(writeToParcel(Status::ok(), &out), OK);
    ASSERT_EQ(writeToParcel(Status::fromExceptionCode(Status::EX_ILLEGAL_STATE, "asleep"), &out),
              OK);
    EXPECT_EQ(writeToParcel(Status::fromStatusT(::android::DEAD_OBJECT), &out),
              ::android::DEAD_OBJECT);
    Parcel in;
    ASSERT_TRUE(pass(out, &in));
    Status status;
    EXPECT_EQ(readFromParcel(&status, in), OK);
    EXPECT_TRUE(status.isOk());
    EXPECT_EQ(readFromParcel(&status, in), OK);
    EXPECT_EQ(status.exceptionCode(), Status::EX_ILLEGAL_STATE);
    EXPECT_STREQ(status.exceptionMessage(), "asleep");
}

}  // namespace
}  // namespace qortv::test
