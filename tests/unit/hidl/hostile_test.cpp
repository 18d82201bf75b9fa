// A peer that breaks the rules loses its session, with one log line; everybody else notices
// nothing.
#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <linux/android/binder.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <random>

#include <hidl/Limits.h>
#include <transport/Trust.h>

#include "RawClient.h"
#include "ServiceProcess.h"

namespace qortv::test {
namespace {

namespace limits = ::android::hardware::limits;

constexpr char kToken[] = "qortv.test@1.0::IEcho";
// Methods by their order in IEcho.hal.
constexpr uint32_t kNumber = 2;
constexpr uint32_t kEchoString = 10;
constexpr uint32_t kEchoHandle = 21;
constexpr uint32_t kLastEcho = 30;

class HostileTest : public ServiceTest {
  protected:
    void SetUp() override {
        startService();
        mEcho = echo();
        ASSERT_NE(mEcho, nullptr);
        ASSERT_TRUE(mEcho->nothing().isOk());
        mDescriptors = mEcho->openDescriptors().withDefault(-1);
    }

    // The service goes on as before, has let go of everything, and wrote so many lines.
    void expectUnharmed(size_t lines) {
        EXPECT_EQ(mEcho->number().withDefault(0), 42);
        int32_t descriptors = 0;
        eventually([&] {
            descriptors = mEcho->openDescriptors().withDefault(-1);
            return descriptors == mDescriptors;
        });
        EXPECT_EQ(descriptors, mDescriptors);
        expectLines(lines);
    }

    void expectLines(size_t lines) {
        EXPECT_TRUE(eventually([&] { return serviceLog().size() >= lines; }));
        EXPECT_EQ(serviceLog().size(), lines) << ::testing::PrintToString(serviceLog());
    }

    // A client with a session, a connection for calls, and the object's number.
    void open(RawClient* client) {
        ASSERT_TRUE(client->openSession());
        ASSERT_TRUE(client->openCalls());
        mTarget = client->lookUp();
        ASSERT_NE(mTarget, 0u);
    }

    // Sends bytes on a good connection for calls: the session ends for a reason with these words.
    void expectSessionEnds(const Bytes& bytes, const std::string& words,
                           const std::vector<int>& fds = {}) {
        const size_t before = serviceLog().size();
        RawClient client(mFolder + "/run");
        open(&client);
        ASSERT_TRUE(RawClient::send(client.calls(), bytes, fds));
        EXPECT_TRUE(RawClient::isClosed(client.calls())) << words;
        EXPECT_TRUE(RawClient::isClosed(client.notices())) << words;
        client.closeAll();
        expectUnharmed(before + 1);
        ASSERT_EQ(serviceLog().size(), before + 1) << words;
        EXPECT_NE(serviceLog().back().find(words), std::string::npos) << serviceLog().back();
        EXPECT_NE(serviceLog().back().find(std::to_string(getpid())), std::string::npos);
    }

    // A call of IEcho::number(), sound.
    RawFrame number() { return RawFrame::call(mTarget, kNumber, kToken); }

    sp<IEcho> mEcho;
    uint64_t mTarget = 1;
    int32_t mDescriptors = 0;
};

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

TEST_F(HostileTest, GarbageInsteadOfAGreeting) {
    RawClient client(mFolder + "/run");
    ASSERT_TRUE(client.connectOnly());
    ASSERT_TRUE(RawClient::send(client.notices(), Bytes(64, 0xa5)));
    EXPECT_TRUE(RawClient::isClosed(client.notices()));
    client.closeAll();
    expectUnharmed(1);
}

TEST_F(HostileTest, HalfAGreeting) {
    RawClient client(mFolder + "/run");
    ASSERT_TRUE(client.connectOnly());
    ASSERT_TRUE(RawClient::send(client.notices(), Bytes(16, 1)));
    client.closeAll();
    expectUnharmed(1);
}

TEST_F(HostileTest, NoGreetingAtAll) {
    RawClient client(mFolder + "/run");
    ASSERT_TRUE(client.connectOnly());
    client.closeAll();
    expectUnharmed(0);
}

// Of a burst that the service comes to late nobody is taken for one that says nothing.
TEST_F(HostileTest, ManyGreetingsAtOnce) {
    ASSERT_EQ(::kill(mService.pid(), SIGSTOP), 0);
    std::vector<std::unique_ptr<RawClient>> clients;
    for (size_t i = 0; i < 2 * limits::kUnknownConnections; ++i) {
        clients.push_back(std::make_unique<RawClient>(mFolder + "/run"));
        ASSERT_TRUE(clients.back()->connectOnly());
        ASSERT_TRUE(clients.back()->beginSession());
    }
    ASSERT_EQ(::kill(mService.pid(), SIGCONT), 0);
    for (const auto& client : clients) EXPECT_TRUE(client->isAccepted());
    clients.clear();
    expectUnharmed(0);
}

// Connections that say nothing cannot fill the service up: the oldest go.
TEST_F(HostileTest, ManyConnectionsWithoutGreeting) {
    std::vector<std::unique_ptr<RawClient>> clients;
    for (size_t i = 0; i < limits::kUnknownConnections + 20; ++i) {
        clients.push_back(std::make_unique<RawClient>(mFolder + "/run"));
        ASSERT_TRUE(clients.back()->connectOnly());
    }
    for (size_t i = 0; i < 20; ++i) EXPECT_TRUE(RawClient::isClosed(clients[i]->notices()));
    RawClient good(mFolder + "/run");
    EXPECT_TRUE(good.openSession());
    good.closeAll();
    clients.clear();
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

// More half messages than the service has threads: nobody waits for the other halves, and nothing
// is lost when they come.
TEST_F(HostileTest, HalfMessages) {
    constexpr auto kHarmless = std::chrono::milliseconds(limits::kMessageMilliseconds) / 5;
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
    frame.offsets = {16};  // in bounds with its type, not with the rest
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

// Sound as a message, but not what the method takes.
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

    // A handle whose counts lie.
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

TEST_F(HostileTest, BadNotices) {
    auto expectEnds = [&](wire::Notice notice, const std::string& words) {
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

// Wrong token, unknown method, oneway against the declaration: an error and a line, and no more.
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

// Sessions end, calls fail, memory and descriptors stay: messages with random errors.
TEST_F(HostileTest, RandomMessages) {
    std::mt19937 random(20240229);
    auto round = [&](int count) {
        for (int i = 0; i < count; ++i) {
            RawClient client(mFolder + "/run");
            open(&client);
            // Methods that take something and end at once.
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
    // What threads keep for reuse varies with the sizes they met; leaking sessions would be more
    // than a thousand bytes each.
    EXPECT_LT(after, before + 400 * 1024);
    EXPECT_EQ(mEcho->number().withDefault(0), 42);
}

// Without free descriptors a service answers those it knows, and takes new ones when it has some
// again.
TEST_F(HostileTest, OutOfDescriptors) {
    rlimit old;
    ASSERT_EQ(prlimit(mService.pid(), RLIMIT_NOFILE, nullptr, &old), 0);
    const rlimit few{static_cast<rlim_t>(mDescriptors), old.rlim_max};
    ASSERT_EQ(prlimit(mService.pid(), RLIMIT_NOFILE, &few, nullptr), 0);
    RawClient client(mFolder + "/run");
    ASSERT_TRUE(client.connectOnly());
    EXPECT_TRUE(eventually([&] { return serviceLog().size() == 1; }));
    for (int i = 0; i < 100; ++i) EXPECT_EQ(mEcho->number().withDefault(0), 42);
    EXPECT_EQ(serviceLog().size(), 1u);
    ASSERT_EQ(prlimit(mService.pid(), RLIMIT_NOFILE, &old, nullptr), 0);
    RawClient next(mFolder + "/run");
    EXPECT_TRUE(next.openSession());
    next.closeAll();
    client.closeAll();
    expectUnharmed(1);
}

// Limits of sessions, and of the connections in one: the next is refused, the others go on.
TEST_F(HostileTest, SessionsUpToTheLimit) {
    std::vector<std::unique_ptr<RawClient>> clients;
    // The test's own session is one of them.
    for (size_t i = 1; i < limits::kSessions; ++i) {
        clients.push_back(std::make_unique<RawClient>(mFolder + "/run"));
        ASSERT_TRUE(clients.back()->openSession()) << i;
    }
    RawClient next(mFolder + "/run");
    EXPECT_FALSE(next.openSession());
    expectLines(1);
    clients.pop_back();
    EXPECT_TRUE(eventually([&] { return next.openSession(); }));
    next.closeAll();
    clients.clear();
    EXPECT_EQ(mEcho->number().withDefault(0), 42);
}

TEST_F(HostileTest, ConnectionsUpToTheLimit) {
    RawClient client(mFolder + "/run");
    ASSERT_TRUE(client.openSession());
    std::vector<int> connections;
    while (client.openCalls()) connections.push_back(client.releaseCalls());
    EXPECT_EQ(connections.size(), limits::kSessionConnections - 1);
    expectLines(1);
    for (int connection : connections) close(connection);
    client.closeAll();
    expectUnharmed(1);
}

// Strangers. As root the test becomes another user; else the service takes itself for one.
class StrangerTest : public ServiceTest {};

TEST_F(StrangerTest, ServiceRefusesAnotherUser) {
    const bool root = geteuid() == 0;
    if (root) {
        startService();
        chmod(mFolder.c_str(), 0755);
        chmod((mFolder + "/run").c_str(), 0755);
        chmod(RawClient::socketIn(mFolder + "/run").c_str(), 0777);
    } else {
        startService(4, {std::to_string(geteuid() + 1)});
    }
    const pid_t stranger = fork();
    if (stranger == 0) {
        if (root && (setgroups(0, nullptr) != 0 || setgid(65534) != 0 || setuid(65534) != 0)) {
            _exit(3);
        }
        RawClient client(mFolder + "/run");
        if (!client.connectOnly()) _exit(2);
        _exit(RawClient::isClosed(client.notices()) ? 0 : 1);
    }
    int status = 0;
    waitpid(stranger, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_TRUE(eventually([&] { return !serviceLog().empty(); }));
    ASSERT_EQ(serviceLog().size(), 1u);
    EXPECT_NE(serviceLog()[0].find("not trusted"), std::string::npos);
    EXPECT_NE(serviceLog()[0].find(root ? "user 65534" : std::to_string(geteuid())),
              std::string::npos);
}

// The test's own service is the stranger: as root a process that gave root up, else one that the
// client takes for a stranger because it takes itself for another user.
TEST_F(StrangerTest, ClientRefusesAnotherUsersService) {
    if (geteuid() == 0) {
        ASSERT_EQ(chown(mFolder.c_str(), 65534, 65534), 0);
        ASSERT_EQ(chown((mFolder + "/run").c_str(), 65534, 65534), 0);
        startService(4, {"-1", "65534"});
    } else {
        startService();
        ::android::hardware::transport::setOwnUidForTest(geteuid() + 1);
    }
    LogCapture log;
    EXPECT_EQ(echo(), nullptr);
    ::android::hardware::transport::setOwnUidForTest(static_cast<uid_t>(-1));
    ASSERT_EQ(log.lines().size(), 1u);
    EXPECT_NE(log.lines()[0].find("not trusted"), std::string::npos);
}

TEST(TrustTest, WhoIsTrusted) {
    using ::android::hardware::transport::isTrusted;
    EXPECT_TRUE(isTrusted(1000, 1000, nullptr));
    EXPECT_TRUE(isTrusted(0, 1000, nullptr));
    EXPECT_FALSE(isTrusted(1001, 1000, nullptr));
    EXPECT_FALSE(isTrusted(1001, 0, ""));
    EXPECT_TRUE(isTrusted(1001, 1000, "1001"));
    EXPECT_TRUE(isTrusted(1001, 1000, "7, 1001"));
    EXPECT_TRUE(isTrusted(1001, 1000, "1001,7"));
    EXPECT_FALSE(isTrusted(1001, 1000, "100,1,10011"));
    EXPECT_FALSE(isTrusted(1001, 1000, "all"));
    EXPECT_FALSE(isTrusted(1001, 1000, "1001x"));
}

}  // namespace
}  // namespace qortv::test
