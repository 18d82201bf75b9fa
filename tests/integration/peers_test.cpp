// Peers that the service must not trust: bytes that are no messages, and processes of other users.
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "support.h"
#include "transport/Trust.h"
#include "transport/wire.h"

namespace integration {
namespace {

namespace wire = android::hardware::transport::wire;

template <typename Message>
std::string bytesOf(const Message& message) {
    return std::string(reinterpret_cast<const char*>(&message), sizeof message);
}

wire::Hello hello(wire::Purpose purpose = wire::Purpose::kSession) {
    wire::Hello message = {};
    message.magic = wire::kMagic;
    message.version = wire::kVersion;
    message.purpose = purpose;
    message.process = 0x1234567890ABCDEF;
    message.pid = getpid();
    return message;
}

/** A well-formed call of the root object, to be spoilt. */
wire::FrameHeader header() {
    wire::FrameHeader message = {};
    message.size = sizeof message;
    message.type = wire::FrameType::kCall;
    message.sequence = 1;
    message.code = wire::kLookUp;
    return message;
}

std::string randomBytes(size_t count, unsigned seed) {
    std::mt19937 random(seed);
    std::string bytes;
    for (size_t i = 0; i < count; ++i) bytes += static_cast<char>(random());
    return bytes;
}

/** A socket to the service that says what it is told. */
class RawPeer {
  public:
    explicit RawPeer(const std::string& folder)
        : mSocket(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        const std::string path = socketIn(folder);
        std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
        EXPECT_EQ(connect(mSocket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0)
                << path;
        const timeval patience = {kPatience.count(), 0};
        setsockopt(mSocket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    }
    ~RawPeer() { close(mSocket); }
    RawPeer(const RawPeer&) = delete;
    RawPeer& operator=(const RawPeer&) = delete;

    void say(const std::string& bytes) {
        // The service may have hung up in the middle: that is its good right.
        [[maybe_unused]] const ssize_t sent =
                send(mSocket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    }

    bool isAccepted() {
        wire::HelloReply reply = {};
        return recv(mSocket, &reply, sizeof reply, MSG_WAITALL) == sizeof reply &&
               reply.accepted != 0;
    }

    void finish() { shutdown(mSocket, SHUT_WR); }

    /** Whether the service hangs up, whatever it says before. */
    bool hungUp() {
        char byte;
        ssize_t got = 0;
        while ((got = recv(mSocket, &byte, 1, 0)) == 1) {
        }
        return got == 0 || errno == ECONNRESET;
    }

  private:
    static std::string socketIn(const std::string& folder) {
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
            if (entry.is_socket()) return entry.path();
        }
        ADD_FAILURE() << "no socket in " << folder;
        return "";
    }

    int mSocket;
};

struct Attack {
    std::string name;
    bool greets;        // says a proper greeting first
    std::string bytes;  // then these
    bool finishes;      // then nothing more, for good
};

std::vector<Attack> attacks() {
    std::vector<Attack> all;
    for (unsigned seed = 0; seed < 10; ++seed) {
        all.push_back({"random greeting", false, randomBytes(sizeof(wire::Hello), seed), false});
        all.push_back({"random greeting and more", false, randomBytes(5000, seed), false});
        all.push_back(
                {"random message", true, randomBytes(sizeof(wire::FrameHeader), seed), false});
        all.push_back({"long random message", true, randomBytes(100'000, seed), false});
    }
    auto greeting = hello();
    greeting.version = 99;
    all.push_back({"greeting of another version", false, bytesOf(greeting), false});
    greeting = hello();
    greeting.purpose = static_cast<wire::Purpose>(77);
    all.push_back({"greeting without a purpose", false, bytesOf(greeting), false});
    all.push_back({"half a greeting", false, bytesOf(hello()).substr(0, 16), true});

    auto message = header();
    message.size = 0xFFFFFFF8;
    all.push_back({"message of four gigabytes", true, bytesOf(message), false});
    message = header();
    message.size = 8;
    all.push_back({"message shorter than its head", true, bytesOf(message), false});
    message = header();
    message.size += 4;
    all.push_back({"message of an odd size", true, bytesOf(message) + "1234", false});
    message = header();
    message.dataSize = 0xFFFFFFF0;
    all.push_back({"data beyond the message", true, bytesOf(message), false});
    message = header();
    message.objectCount = 0x20000000;
    all.push_back({"objects beyond the message", true, bytesOf(message), false});
    message = header();
    message.bufferSize = 16;
    all.push_back({"buffers beyond the message", true, bytesOf(message), false});
    message = header();
    message.type = static_cast<wire::FrameType>(200);
    all.push_back({"message of an unknown type", true, bytesOf(message), false});
    message = header();
    message.descriptorCount = 3;
    all.push_back({"descriptors that do not come", true, bytesOf(message), true});
    message = header();
    message.size += 64;
    message.dataSize = 64;
    all.push_back({"message cut off", true, bytesOf(message) + "only this", true});
    all.push_back({"head cut off", true, bytesOf(header()).substr(0, 20), true});
    return all;
}

class IntegrationPeers : public testing::Test {
  protected:
    void SetUp() override { mStation.startBareAndWait(); }

    /** Lines of the HIDL runtime in the service's log. */
    size_t runtimeLines() { return countOf(" hidl: ", mStation.log()); }

    /**
     * Lines that an attack brings about: the reason is written before the service hangs up. A peer
     * that says its piece and leaves at once may be gone before anybody looked at what it said:
     * then there is none.
     */
    size_t linesAfter(const Attack& attack) {
        const size_t before = runtimeLines();
        RawPeer peer(mStation.runtimeFolder());
        if (attack.greets) {
            peer.say(bytesOf(hello()));
            EXPECT_TRUE(peer.isAccepted());
        }
        peer.say(attack.bytes);
        if (attack.finishes) peer.finish();
        EXPECT_TRUE(peer.hungUp());
        return runtimeLines() - before;
    }

    Station mStation;
};

TEST_F(IntegrationPeers, WhoBreaksTheRulesIsHungUpOnWithOneLine) {
    linesAfter(attacks().front());  // whatever is opened once and kept is open now
    const size_t descriptors = mStation.idleDescriptors();
    for (const auto& attack : attacks()) {
        SCOPED_TRACE(attack.name);
        size_t lines = 0;
        for (int attempt = 0; lines == 0 && attempt < (attack.finishes ? 100 : 1); ++attempt) {
            lines = linesAfter(attack);
        }
        EXPECT_EQ(lines, 1U);
        ASSERT_TRUE(mStation.service().running());
    }
    EXPECT_TRUE(eventually([&] { return mStation.descriptors() == descriptors; }))
            << mStation.descriptors() << " instead of " << descriptors;
    const size_t lines = runtimeLines();
    EXPECT_EQ(mStation.ctl({"channels"}).status, 0);
    EXPECT_EQ(runtimeLines(), lines);
}

TEST_F(IntegrationPeers, HalfMessagesOnEveryThreadAreGivenUp) {
    std::vector<std::unique_ptr<RawPeer>> peers;
    for (int i = 0; i < 30; ++i) {  // more than there are threads
        peers.push_back(std::make_unique<RawPeer>(mStation.runtimeFolder()));
        peers.back()->say(bytesOf(hello()));
        ASSERT_TRUE(peers.back()->isAccepted());
        peers.back()->say(bytesOf(header()).substr(0, 20));
    }
    const auto channels = mStation.ctl({"channels"});
    EXPECT_EQ(channels.status, 0) << channels.err;
}

constexpr uid_t kNobody = 65534;

TEST_F(IntegrationPeers, AnotherUserIsRefusedUnlessAllowed) {
    if (geteuid() != 0) {
        // Only root can start a process of another user. What is left is the rule itself.
        using android::hardware::transport::isTrusted;
        const uid_t stranger = geteuid() + 1;
        EXPECT_TRUE(isTrusted(geteuid(), geteuid(), nullptr));
        EXPECT_FALSE(isTrusted(stranger, geteuid(), nullptr));
        EXPECT_TRUE(isTrusted(stranger, geteuid(), std::to_string(stranger).c_str()));
        GTEST_SKIP() << "not root, so no process of another user: tested the rule without one";
    }
    // The program and the socket within everybody's reach: the credentials alone decide.
    const TemporaryFolder programs;
    const std::string ctl = programs / "qortvctl";
    std::filesystem::copy_file(QORTVCTL, ctl);
    const auto everybody = [](const std::string& path) { chmod(path.c_str(), 0777); };
    everybody(programs.path());
    everybody(ctl);
    everybody(std::filesystem::path(mStation.runtimeFolder()).parent_path());
    const auto open = [&] {
        everybody(mStation.runtimeFolder());
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(mStation.runtimeFolder())) {
            everybody(entry.path());
        }
    };

    open();
    Process refused({ctl, "channels", "--timeout", "0.2"}, mStation.environment, kNobody);
    EXPECT_EQ(refused.wait(), 3) << refused.err();
    EXPECT_EQ(refused.out(), "");
    EXPECT_NE(refused.err().find("does not let this process connect"), std::string::npos)
            << refused.err();
    EXPECT_EQ(mStation.ctl({"channels"}).status, 0);

    mStation.environment["QORTV_ALLOW_UIDS"] = std::to_string(kNobody);
    mStation.startBareAndWait();
    open();
    Process allowed({ctl, "channels", "--timeout", "0.2"}, mStation.environment, kNobody);
    EXPECT_EQ(allowed.wait(), 0) << allowed.err();
    EXPECT_EQ(allowed.out(), mStation.ctl({"channels"}).out);
}

}  // namespace
}  // namespace integration
