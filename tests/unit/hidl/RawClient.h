// A client that writes its messages byte by byte, so that a test can break the protocol.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <transport/wire.h>

namespace qortv::test {

namespace wire = ::android::hardware::transport::wire;
using Bytes = std::vector<uint8_t>;

// The parts of a message; bytes() puts them together.
struct RawFrame {
    wire::FrameHeader header{};
    Bytes data;
    std::vector<uint64_t> offsets;
    Bytes buffers;

    // Returns a call of method `code` of object `target`, with the interface token in its data.
    static RawFrame call(uint64_t target, uint32_t code, const std::string& token);
    void addInt(uint32_t value);
    // Appends one of the binder driver's object structures to the data, aligned, and its offset.
    template <typename Object>
    void addObject(const Object& object) {
        data.resize((data.size() + 7) & ~size_t{7});
        offsets.push_back(data.size());
        const auto* bytes = reinterpret_cast<const uint8_t*>(&object);
        data.insert(data.end(), bytes, bytes + sizeof(object));
    }
    // Returns the message. Sizes in the header that are 0 are filled in.
    Bytes bytes() const;
};

// Connections to the service whose socket is the only one in the runtime folder.
class RawClient {
  public:
    explicit RawClient(const std::string& folder);
    ~RawClient();
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    // Begin a session, and open a connection for calls in it. These and the next ones return false
    // if the service does not accept that.
    bool openSession();
    bool openCalls();
    // Connects without a greeting.
    bool connectOnly();
    // The two halves of openSession() on such a connection: sends the greeting, reads the reply.
    bool beginSession();
    bool isAccepted();

    int notices() const { return mNotices; }
    int calls() const { return mCalls; }
    // Hands the connection for calls over to the caller.
    int releaseCalls() { return std::exchange(mCalls, -1); }

    // Looks the service "default" up. Returns the number of its object; 0 if that fails.
    uint64_t lookUp();

    static bool send(int socket, const Bytes& bytes, const std::vector<int>& fds = {});
    // Reads one message: its header, and the rest. Returns false if the connection ended.
    static bool receive(int socket, wire::FrameHeader* header, Bytes* rest);
    // Waits until the service closes the connection. Returns false if it sends something, or does
    // not close it in time.
    static bool isClosed(int socket);
    void closeAll();

    // Returns the path of the service's socket in the runtime folder `folder`.
    static std::string socketIn(const std::string& folder);

  private:
    bool sendHello(int socket, wire::Purpose purpose) const;
    int greet(wire::Purpose purpose, wire::HelloReply* reply);

    const std::string mPath;
    uint64_t mSession = 0;
    int mNotices = -1;
    int mCalls = -1;
};

}  // namespace qortv::test
