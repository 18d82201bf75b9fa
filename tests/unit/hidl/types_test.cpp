// The types of HIDL interfaces: layout, ownership, conversions.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstddef>

#include <hidl/HidlSupport.h>
#include <hidl/Status.h>
#include <hidl/TaskRunner.h>
#include <qortv/test/1.0/types.h>

#include "EchoService.h"

namespace qortv::test {
namespace {

using ::android::hardware::hidl_enum_range;
using ::android::hardware::hidl_memory;
using ::android::hardware::Status;
using ::android::hardware::toString;

static_assert(sizeof(hidl_string) == 16 && alignof(hidl_string) == 8, "wire format");
static_assert(sizeof(hidl_vec<uint64_t>) == 16 && alignof(hidl_vec<char>) == 8, "wire format");
static_assert(sizeof(hidl_handle) == 16 && alignof(hidl_handle) == 8, "wire format");
static_assert(sizeof(hidl_memory) == 40 && alignof(hidl_memory) == 8, "wire format");
static_assert(sizeof(hidl_array<uint16_t, 3, 2>) == 12, "wire format");

// Size and ownership are at the offsets where a receiver expects them.
TEST(TypesTest, FieldsHaveTheirOffsets) {
    const hidl_string text("abc");
    const hidl_vec<uint16_t> vec{1, 2, 3, 4};
    uint32_t size;
    memcpy(&size, reinterpret_cast<const char*>(&text) + 8, sizeof(size));
    EXPECT_EQ(size, 3u);
    EXPECT_EQ(reinterpret_cast<const char*>(&text)[12], 1);
    memcpy(&size, reinterpret_cast<const char*>(&vec) + 8, sizeof(size));
    EXPECT_EQ(size, 4u);
    EXPECT_EQ(reinterpret_cast<const char*>(&vec)[12], 1);
    const void* pointer;
    memcpy(&pointer, &vec, sizeof(pointer));
    EXPECT_EQ(pointer, vec.data());
}

TEST(TypesTest, Strings) {
    hidl_string empty;
    EXPECT_STREQ(empty.c_str(), "");
    EXPECT_TRUE(empty.empty());
    EXPECT_EQ(hidl_string(static_cast<const char*>(nullptr)), "");
    hidl_string a("text");
    hidl_string b = a;
    EXPECT_NE(a.c_str(), b.c_str());
    EXPECT_EQ(a, b);
    hidl_string moved = std::move(b);
    EXPECT_EQ(moved, "text");
    EXPECT_TRUE(b.empty());  // NOLINT: a moved-from string is empty
    a = a.c_str();
    EXPECT_EQ(a, "text");
    a = std::string("with\0nul", 8);
    EXPECT_EQ(a.size(), 8u);
    EXPECT_EQ(std::string(a), std::string("with\0nul", 8));
    EXPECT_NE(a, "with");
    EXPECT_EQ(hidl_string("abcdef", 3), "abc");
    EXPECT_LT(hidl_string("a"), hidl_string("b"));
    a.clear();
    EXPECT_EQ(a, "");
}

TEST(TypesTest, ExternalStringsAreBorrowed) {
    const char text[] = "borrowed";
    hidl_string a;
    a.setToExternal(text, 8);
    EXPECT_EQ(a.c_str(), text);
    hidl_string copy = a;
    EXPECT_NE(copy.c_str(), text);
    hidl_string moved = std::move(a);
    EXPECT_EQ(moved.c_str(), text);
    EXPECT_DEATH(moved.setToExternal(text, 4), "NUL");
}

TEST(TypesTest, VectorsOwnTheirElements) {
    hidl_vec<hidl_string> a{"one", "two"};
    hidl_vec<hidl_string> b = a;
    EXPECT_NE(a.data(), b.data());
    EXPECT_EQ(a, b);
    const hidl_string* data = b.data();
    hidl_vec<hidl_string> moved = std::move(b);
    EXPECT_EQ(moved.data(), data);
    EXPECT_EQ(b.size(), 0u);  // NOLINT: a moved-from vector is empty
    moved.resize(3);
    EXPECT_EQ(moved[0], "one");
    EXPECT_EQ(moved[2], "");
    moved.resize(1);
    EXPECT_EQ(moved, (hidl_vec<hidl_string>{"one"}));
    moved.resize(0);
    EXPECT_EQ(moved.data(), nullptr);
    hidl_vec<uint32_t> zeroes;
    zeroes.resize(100);
    for (uint32_t value : zeroes) EXPECT_EQ(value, 0u);
    std::vector<uint32_t> standard{1, 2, 3};
    hidl_vec<uint32_t> from = standard;
    EXPECT_EQ(std::vector<uint32_t>(from), standard);
    hidl_vec<uint32_t> range(standard.begin() + 1, standard.end());
    EXPECT_EQ(range, (hidl_vec<uint32_t>{2, 3}));
}

TEST(TypesTest, ExternalVectorsAreBorrowed) {
    uint16_t numbers[] = {1, 2, 3};
    hidl_vec<uint16_t> a;
    a.setToExternal(numbers, 3);
    EXPECT_EQ(a.data(), numbers);
    hidl_vec<uint16_t> copy = a;
    EXPECT_NE(copy.data(), numbers);
    EXPECT_EQ(copy, a);
    a[0] = 9;
    EXPECT_EQ(numbers[0], 9);
    a.resize(5);
    EXPECT_NE(a.data(), numbers);
    EXPECT_EQ(numbers[0], 9);
    a.setToExternal(new uint16_t[2]{5, 6}, 2, true);  // freed with the vector
    EXPECT_EQ(a.size(), 2u);
    hidl_vec<uint16_t> given{7};
    uint16_t* released = given.releaseData();
    EXPECT_EQ(released[0], 7);
    delete[] released;
}

TEST(TypesTest, Arrays) {
    hidl_array<uint16_t, 3, 2> matrix;
    for (size_t i = 0; i < 3; ++i) {
        for (size_t j = 0; j < 2; ++j) matrix[i][j] = static_cast<uint16_t>(10 * i + j);
    }
    EXPECT_EQ(matrix.data()[5], 21);
    std::array<std::array<uint16_t, 2>, 3> standard = matrix;
    EXPECT_EQ(standard[2][1], 21);
    EXPECT_EQ((hidl_array<uint16_t, 3, 2>(standard)), matrix);
    standard[0][0] = 7;
    EXPECT_NE((hidl_array<uint16_t, 3, 2>(standard)), matrix);
    EXPECT_EQ(matrix.size(), (std::array<size_t, 2>{3, 2}));
    const uint8_t bytes[4] = {1, 2, 3, 4};
    hidl_array<uint8_t, 4> row(bytes);
    EXPECT_EQ(row[3], 4);
    EXPECT_EQ(row.size(), 4u);
}

TEST(TypesTest, HandlesCloseWhatTheyOwn) {
    native_handle_t* native = native_handle_create(1, 1);
    native->data[0] = open("/dev/null", O_RDONLY | O_CLOEXEC);
    native->data[1] = 5;
    const int fd = native->data[0];
    int copied;
    {
        hidl_handle borrowed = native;
        EXPECT_EQ(borrowed.getNativeHandle(), native);
        hidl_handle copy = borrowed;
        copied = copy->data[0];
        EXPECT_NE(copied, fd);
        EXPECT_EQ(copy->data[1], 5);
        hidl_handle moved = std::move(copy);
        EXPECT_EQ(moved->data[0], copied);
        EXPECT_EQ(copy.getNativeHandle(), nullptr);  // NOLINT: a moved-from handle is null
    }
    EXPECT_EQ(fcntl(copied, F_GETFD), -1);
    EXPECT_NE(fcntl(fd, F_GETFD), -1);
    hidl_handle owner;
    owner.setTo(native, true);
    owner = nullptr;
    EXPECT_EQ(fcntl(fd, F_GETFD), -1);
}

TEST(TypesTest, Texts) {
    EXPECT_EQ(toString(hidl_string("x")), "\"x\"");
    EXPECT_EQ(toString(hidl_vec<uint8_t>{1, 2}), "[2]{1, 2}");
    EXPECT_EQ(toString(hidl_array<uint16_t, 2, 2>(
                      std::array<std::array<uint16_t, 2>, 2>{{{1, 2}, {3, 4}}})),
              "[2][2]{{1, 2}, {3, 4}}");
    EXPECT_EQ(::android::hardware::details::toHexString(uint8_t{0xa5}), "0xa5");
    EXPECT_EQ(::android::hardware::details::toHexString(int32_t{-1}), "0xffffffff");
    Leaf leaf{"oak", {}};
    EXPECT_EQ(toString(leaf).substr(0, 16), "{.name = \"oak\", ");
    EXPECT_EQ(toString(Colour::BLUE), "BLUE");
}

TEST(TypesTest, EnumerationsCanBeVisited) {
    std::vector<Colour> colours;
    for (Colour colour : hidl_enum_range<Colour>()) colours.push_back(colour);
    EXPECT_EQ(colours, (std::vector<Colour>{Colour::RED, Colour::GREEN, Colour::BLUE}));
}

TEST(StatusTest, Descriptions) {
    EXPECT_TRUE(Status::ok().isOk());
    EXPECT_TRUE(Status::fromStatusT(::android::OK).isOk());
    const Status dead = Status::fromStatusT(::android::DEAD_OBJECT);
    EXPECT_EQ(dead.exceptionCode(), Status::EX_TRANSACTION_FAILED);
    EXPECT_EQ(dead.transactionError(), ::android::DEAD_OBJECT);
    EXPECT_NE(dead.description().find("DEAD_OBJECT"), std::string::npos);
    const Status illegal = Status::fromExceptionCode(Status::EX_ILLEGAL_ARGUMENT, "no such list");
    EXPECT_STREQ(illegal.exceptionMessage(), "no such list");
    EXPECT_EQ(illegal.transactionError(), ::android::OK);
    EXPECT_EQ(illegal.description(), "Status(EX_ILLEGAL_ARGUMENT): 'no such list'");
}

TEST(StatusTest, Results) {
    Return<int32_t> good = 5;
    EXPECT_TRUE(good.isOk());
    EXPECT_EQ(static_cast<int32_t>(good), 5);
    Return<int32_t> bad = Status::fromStatusT(::android::DEAD_OBJECT);
    EXPECT_FALSE(bad.isOk());
    EXPECT_TRUE(bad.isDeadObject());
    EXPECT_EQ(bad.withDefault(9), 9);
    EXPECT_DEATH(static_cast<void>(static_cast<int32_t>(bad)), "not checked");
    EXPECT_DEATH(bad.assertOk(), "not checked");
    Return<sp<INode>> node = new Node(1);
    sp<INode> taken = node;
    EXPECT_NE(taken, nullptr);
    Return<sp<INode>> none = nullptr;
    EXPECT_EQ(none.withDefault(taken), nullptr);
    static_assert(!std::is_copy_constructible<Return<int32_t>>::value, "a result is taken once");
}

TEST(TaskRunnerTest, RunsInOrderUpToItsLimit) {
    std::vector<int> done;
    std::mutex gate;
    {
        ::android::hardware::details::TaskRunner runner;
        EXPECT_FALSE(runner.push([] {}));
        runner.start(2);
        std::atomic<bool> started{false};
        gate.lock();
        EXPECT_TRUE(runner.push([&] {
            started = true;
            std::lock_guard<std::mutex> wait(gate);
            done.push_back(0);
        }));
        while (!started) std::this_thread::yield();
        EXPECT_TRUE(runner.push([&] { done.push_back(1); }));
        EXPECT_TRUE(runner.push([&] { done.push_back(2); }));
        EXPECT_FALSE(runner.push([&] { done.push_back(3); }));
        gate.unlock();
    }
    EXPECT_EQ(done, (std::vector<int>{0, 1, 2}));
}

}  // namespace
}  // namespace qortv::test
