/** Key and pointer events: messages on the input socket, and refusals. */
#include <stdlib.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <functional>
#include <optional>

#include "support/core_contexts_fixture.h"

namespace {

// The arguments that the functions below received, and their results.
bool gSocketsFail = false;
std::vector<std::pair<std::string, socklen_t>> gConnects;
std::vector<std::pair<size_t, int>> gSends;
std::function<void()> gBeforeSend = [] {};

}  // namespace

extern "C" int socket(int domain, int type, int protocol) {
    if (gSocketsFail) {
        errno = EMFILE;
        return -1;
    }
    return static_cast<int>(syscall(SYS_socket, domain, type, protocol));
}
extern "C" int connect(int fd, const sockaddr* address, socklen_t length) {
    gConnects.emplace_back(reinterpret_cast<const sockaddr_un*>(address)->sun_path, length);
    return static_cast<int>(syscall(SYS_connect, fd, address, length));
}
extern "C" ssize_t send(int fd, const void* data, size_t size, int flags) {
    gSends.emplace_back(size, flags);
    gBeforeSend();
    return syscall(SYS_sendto, fd, data, size, flags, nullptr, 0);
}

namespace {

constexpr char kTag[] = "hh_keyevent";
using Record = std::array<int32_t, 5>;

/** The graphics layer: listens on the socket for as long as the object lives. */
class InputSocket {
  public:
    explicit InputSocket(const std::string& path)
        : mListener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        snprintf(address.sun_path, sizeof(address.sun_path), "%s", path.c_str());
        EXPECT_EQ(bind(mListener, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
        EXPECT_EQ(listen(mListener, 100), 0);
    }
    ~InputSocket() { hangUp(); }
    InputSocket(const InputSocket&) = delete;
    InputSocket& operator=(const InputSocket&) = delete;

    /** What the next connection, which must be there and over, carried. */
    std::vector<uint8_t> nextConnection() {
        const int peer = accept4(mListener, nullptr, nullptr, SOCK_CLOEXEC);
        if (peer < 0) return {0xff};
        std::vector<uint8_t> bytes(100);
        const ssize_t count = recv(peer, bytes.data(), bytes.size(), MSG_WAITALL);
        close(peer);
        bytes.resize(count < 0 ? 0 : static_cast<size_t>(count));
        return bytes;
    }
    std::optional<Record> nextRecord() {
        const std::vector<uint8_t> bytes = nextConnection();
        if (bytes.size() != sizeof(Record)) return std::nullopt;
        Record record;
        memcpy(record.data(), bytes.data(), sizeof(record));
        return record;
    }

    /** Drops the connections that wait, and takes no more. */
    void hangUp() {
        if (mListener >= 0) close(mListener);
        mListener = -1;
    }

  private:
    int mListener;
};

class ServiceInputEvent : public CoreContextsTest {
  protected:
    ServiceInputEvent() {
        gConnects.clear();
        gSends.clear();
    }
    ~ServiceInputEvent() override {
        gBeforeSend = [] {};
    }

    std::string path() const { return folder.path() + "/DFBInput"; }
    int32_t send(int32_t kind, int32_t a5 = 105, uint32_t a2 = 102) {
        return impl->a_hidl_send_key_and_mouse(kind, -101, a2, -103, -104, a5, -106, -107);
    }
    size_t descriptors() const {
        std::filesystem::directory_iterator open("/proc/self/fd");
        return static_cast<size_t>(std::distance(begin(open), end(open)));
    }
};

TEST_F(ServiceInputEvent, carriesTheValuesOfItsKind) {
    InputSocket input(path());
    const size_t before = descriptors();
    EXPECT_EQ(send(0), 0);
    EXPECT_EQ(input.nextRecord(), (Record{0, -101, 102, 0, 0}));
    EXPECT_EQ(send(0, 105, 0xfffffffe), 0);
    EXPECT_EQ(input.nextRecord(), (Record{0, -101, -2, 0, 0}));
    EXPECT_EQ(send(2), 0);
    EXPECT_EQ(input.nextRecord(), (Record{2, -103, -104, -106, -107}));
    for (const auto& [a5, direction] :
         {std::pair{0, 0}, {1, 0}, {2, 1}, {3, 0}, {4, 2}, {5, 0}, {6, 0}, {-2, 0}}) {
        EXPECT_EQ(send(3, a5), 0);
        EXPECT_EQ(input.nextRecord(), (Record{3, -101, direction, 0, 0})) << a5;
    }
    for (const uint32_t a2 : {0u, 1u, 7u, 0x80000000u}) {
        EXPECT_EQ(send(4, 105, a2), 0);
        EXPECT_EQ(input.nextRecord(), (Record{4, a2 != 0, 0, 0, 0})) << a2;
    }
    EXPECT_EQ(descriptors(), before) << "a connection is left open";
    for (const auto& [size, flags] : gSends) {
        EXPECT_EQ(size, 20u) << "one write";
        EXPECT_EQ(flags, MSG_NOSIGNAL);
    }
    EXPECT_EQ(gConnects, decltype(gConnects)(gSends.size(), {path(), 110}));
}

TEST_F(ServiceInputEvent, goesToTheFolderOfADeviceWhereNoOtherIsNamed) {
    const auto connects = [&] {
        gConnects.clear();
        send(1);  // of the kind that only connects
        return gConnects;
    };
    const decltype(gConnects) expected = {{"/mnt/vendor/tmp/DFBInput", 110}};
    setenv("QORTV_VENDOR_TMP", "", 1);
    EXPECT_EQ(connects(), expected);
    unsetenv("QORTV_VENDOR_TMP");
    EXPECT_EQ(connects(), expected);
}

TEST_F(ServiceInputEvent, ofAnotherKindIsRefused) {
    InputSocket input(path());
    const size_t before = descriptors();
    for (const int32_t kind : {1, 5, 6, -1, INT32_MIN, INT32_MAX}) {
        EXPECT_EQ(send(kind), -1) << kind;
        EXPECT_EQ(input.nextConnection(), std::vector<uint8_t>{}) << kind;
    }
    EXPECT_EQ(descriptors(), before);
    EXPECT_TRUE(linesOf(kTag).empty());
}

TEST_F(ServiceInputEvent, withoutAListenerIsAnErrorOfTheConnection) {
    const size_t before = descriptors();
    for (const uint8_t debug : {uint8_t{1}, uint8_t{0}}) {
        mTvApiDebug = debug;
        for (const int32_t kind : {0, 1}) {
            EXPECT_EQ(send(kind), -1);
            EXPECT_EQ(linesOf(kTag), std::vector<LogLine>{debugLine(kTag, "hh_send_key_and_mouse",
                                                                    "connect error \n")});
        }
    }
    EXPECT_EQ(descriptors(), before);
}

TEST_F(ServiceInputEvent, aPathThatNoSocketCanHaveIsAnErrorOfTheConnection) {
    setenv("QORTV_VENDOR_TMP", (folder.path() + std::string(90, 'x')).c_str(), 1);
    EXPECT_EQ(send(0), -1);
    EXPECT_EQ(linesOf(kTag),
              std::vector<LogLine>{debugLine(kTag, "hh_send_key_and_mouse", "connect error \n")});
    EXPECT_TRUE(gConnects.empty()) << "another socket might lie where the path is cut";
}

TEST_F(ServiceInputEvent, aPeerThatHangsUpIsAnErrorInTheLogOnly) {
    for (const uint8_t debug : {uint8_t{1}, uint8_t{0}}) {
        mTvApiDebug = debug;
        std::filesystem::remove(path());
        InputSocket input(path());
        gBeforeSend = [&] { input.hangUp(); };
        EXPECT_EQ(send(0), 0) << "and the process lives on";
        EXPECT_EQ(linesOf(kTag),
                  std::vector<LogLine>{debugLine(kTag, "hh_send_key_and_mouse", "send error \n")});
    }
}

TEST_F(ServiceInputEvent, withoutADescriptorIsAnErrorOfTheSocket) {
    InputSocket input(path());
    for (const uint8_t debug : {uint8_t{1}, uint8_t{0}}) {
        mTvApiDebug = debug;
        gSocketsFail = true;
        const int32_t result = send(0);
        gSocketsFail = false;
        EXPECT_EQ(result, -1);
        EXPECT_EQ(linesOf(kTag), std::vector<LogLine>{debugLine(kTag, "hh_send_key_and_mouse",
                                                                "create socket error ! \n")});
    }
}

TEST_F(ServiceInputEvent, theCallIsADebugLine) {
    InputSocket input(path());
    expectDebugLines({debugLine("QorTvApiImpl(service)", "a_hidl_send_key_and_mouse",
                                "a_hidl_send_key_and_mouse")},
                     [&] { send(0); });
}

}  // namespace
