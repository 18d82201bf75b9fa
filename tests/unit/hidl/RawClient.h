// A peer that speaks the wire format by hand, and wrongly where a test wants it.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <transport/wire.h>

namespace qortv::test {

namespace wire = ::android::hardware::transport::wire;
using Bytes = std::vector<uint8_t>;

// A message's parts, put together by bytes().
struct RawFrame {
    wire::FrameHeader header{};
    Bytes data;
    std::vector<uint64_t> offsets;
    Bytes buffers;

    // A call of object `target` with the interface token in its data.
    static RawFrame call(uint64_t target, uint32_t code, const std::string& token);
    void addInt(uint32_t value);
    // Appends an object of the kernel's kind to the data, aligned, and its offset.
    template <typename Object>
    void addObject(const Object& object) {
        data.resize((data.size() + 7) & ~size_t{7});
        offsets.push_back(data.size());
        const auto* bytes = reinterpret_cast<const uint8_t*>(&object);
        data.insert(data.end(), bytes, bytes + sizeof(object));
    }
    // Fills the header's sizes in, except those that are set already.
    Bytes bytes() const;
};

// Connections to the service whose socket is the only one in the runtime folder.
class RawClient {
  public:
    explicit RawClient(const std::string& folder);
    ~RawClient();
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    // Begins a session; opens a connection for calls in it.
    bool openSession();
    bool openCalls();
    // A connection without any greeting.
    bool connectOnly();
    // The two halves of openSession() on such a connection.
    bool beginSession();
    bool isAccepted();

    int notices() const { return mNotices; }
    int calls() const { return mCalls; }
    // The connection for calls becomes the caller's.
    int releaseCalls() { return std::exchange(mCalls, -1); }

    // The service's number for its object "default", asked for properly.
    uint64_t lookUp();

    static bool send(int socket, const Bytes& bytes, const std::vector<int>& fds = {});
    // Reads one message: header and the rest. False if the connection ended.
    static bool receive(int socket, wire::FrameHeader* header, Bytes* rest);
    // Waits until the service closed the connection; false if it sends or waits instead.
    static bool isClosed(int socket);
    void closeAll();

    // Path of the service's socket.
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
