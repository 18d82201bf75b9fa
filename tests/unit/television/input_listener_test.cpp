#include "television/input_listener.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "support/eventually.h"
#include "support/log_capture.h"
#include "support/television_test.h"

namespace {

using television::InputEvent;
using television::InputListener;

class Peer {
  public:
    explicit Peer(const std::string& path) {
        mSocket = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        mConnected = connect(mSocket, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    }
    ~Peer() { close(mSocket); }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    bool connected() const { return mConnected; }
    void send(const void* bytes, size_t size) const {
        EXPECT_EQ(::send(mSocket, bytes, size, MSG_NOSIGNAL), static_cast<ssize_t>(size));
    }
    void send(const InputEvent& event) const { send(event.data(), sizeof event); }
    /** Waits until the listener closes the connection; false when it sends something instead. */
    bool hungUp() const {
        char byte;
        return recv(mSocket, &byte, 1, 0) <= 0;
    }

  private:
    int mSocket;
    bool mConnected;
};

class TelevisionInput : public testing::Test {
  protected:
    const TempFolder folder;
    const std::string path = folder / "DFBInput";
};

TEST_F(TelevisionInput, RecordsComeWholeAndInParts) {
    const InputListener listener(path);
    const InputEvent first = {0, 1, -2, 3, 4};
    const InputEvent second = {2, INT32_MIN, 6, 7, INT32_MAX};
    Peer peer(path);
    peer.send(first);
    ASSERT_TRUE(eventually([&] { return listener.count() == 1; }));
    const auto* bytes = reinterpret_cast<const uint8_t*>(second.data());
    for (size_t i = 0; i < sizeof second; ++i) peer.send(bytes + i, 1);
    ASSERT_TRUE(eventually([&] { return listener.count() == 2; }));
    EXPECT_EQ(listener.events(), (std::vector<InputEvent>{first, second}));
    // Two and a half records at once; the rest of the third never comes.
    std::vector<uint8_t> several(50);
    several[20] = 9;
    peer.send(several.data(), several.size());
    ASSERT_TRUE(eventually([&] { return listener.count() == 4; }));
    EXPECT_EQ(listener.events()[3][0], 9);
}

TEST_F(TelevisionInput, APartOfARecordIsNotAnothersBeginning) {
    const InputListener listener(path);
    {
        const Peer broken(path);
        broken.send("garbage", 7);
    }
    const Peer slow(path);
    slow.send("half", 4);
    const Peer good(path);
    good.send(InputEvent{1, 2, 3, 4, 5});
    ASSERT_TRUE(eventually([&] { return listener.count() == 1; }));
    EXPECT_EQ(listener.events()[0], (InputEvent{1, 2, 3, 4, 5}));
}

TEST_F(TelevisionInput, KeepsTheLastOnes) {
    const InputListener listener(path);
    const Peer peer(path);
    constexpr int32_t kSent = 1000;
    for (int32_t i = 0; i < kSent; ++i) peer.send(InputEvent{i, 0, 0, 0, 0});
    ASSERT_TRUE(eventually([&] { return listener.count() == kSent; }));
    const auto events = listener.events();
    ASSERT_EQ(events.size(), InputListener::kKept);
    EXPECT_EQ(events.front()[0], kSent - static_cast<int32_t>(InputListener::kKept));
    EXPECT_EQ(events.back()[0], kSent - 1);
}

TEST_F(TelevisionInput, PeersThatOnlyHoldOnMakeRoom) {
    const InputListener listener(path);
    std::vector<std::unique_ptr<Peer>> idle;
    for (size_t i = 0; i <= InputListener::kMostPeers; ++i) {
        idle.push_back(std::make_unique<Peer>(path));
        ASSERT_TRUE(idle.back()->connected());
    }
    EXPECT_TRUE(idle.front()->hungUp()) << "the oldest makes room";
    idle.back()->send(InputEvent{1, 1, 1, 1, 1});
    EXPECT_TRUE(eventually([&] { return listener.count() == 1; }));
}

TEST_F(TelevisionInput, RemovesItsSocketAndAnOldOne) {
    {
        const InputListener listener(path);
        EXPECT_TRUE(Peer(path).connected());
    }
    EXPECT_FALSE(std::filesystem::exists(path));
    // A process that was killed leaves its socket.
    const int old = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(bind(old, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    close(old);
    ASSERT_TRUE(std::filesystem::exists(path));
    const InputListener listener(path);
    EXPECT_TRUE(Peer(path).connected());
}

TEST_F(TelevisionInput, SaysWhyItCannotListen) {
    const LogCapture lines;
    const std::string tooLong = folder / std::string(100, 'p');
    { const InputListener listener(tooLong); }
    EXPECT_TRUE(lines.has(tooLong, "at most 107"));
    { const InputListener listener(folder / "missing/DFBInput"); }
    EXPECT_TRUE(lines.has("missing/DFBInput", "No such file"));
    // A file that is no socket is not removed.
    folder.write("DFBInput", {1});
    { const InputListener listener(path); }
    EXPECT_TRUE(lines.has(path, "Address already in use"));
    EXPECT_TRUE(std::filesystem::exists(path));
}

class TelevisionInputSocket : public TelevisionTest {};

TEST_F(TelevisionInputSocket, IsThereWhileTheTelevisionRuns) {
    options.readiness = folder() / "vendor";
    options.inputSocket = options.readiness + "/DFBInput";
    start();
    const Peer peer(options.inputSocket);
    peer.send(InputEvent{3, 2, 1, 0, 0});
    ASSERT_TRUE(eventually([&] { return !tv->inputEvents().empty(); }));
    EXPECT_EQ(tv->inputEvents()[0], (InputEvent{3, 2, 1, 0, 0}));
    tv->stop();
    EXPECT_TRUE(tv->inputEvents().empty());
    EXPECT_FALSE(std::filesystem::exists(options.inputSocket));
    EXPECT_TRUE(peer.hungUp());
}

}  // namespace
