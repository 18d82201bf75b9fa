/** The input socket: receives the key and pointer events that clients send to the set's graphics
 * layer, and keeps the last ones. */
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace television {

/** One event as it was received: its kind, then its four values. */
using InputEvent = std::array<int32_t, 5>;

/**
 * Listens on a local stream socket for records of 20 bytes, host byte order. A connection carries
 * any number of them; an incomplete record at its end is dropped. The events have no effect on the
 * television. Peers are not trusted: at most `kMostPeers` are connected at a time, the oldest
 * connection is closed to make room for a new one, and no read waits.
 *
 * One thread of its own serves all connections, from the constructor to the destructor.
 */
class InputListener {
  public:
    /** How many events are kept: the last ones. */
    static constexpr size_t kKept = 256;
    static constexpr size_t kMostPeers = 16;

    /** `path`: of the socket; a socket that an earlier run left there is removed. When it cannot
     * listen, the log says why and nothing is received. */
    explicit InputListener(std::string path);
    /** Ends the thread and removes the socket. */
    ~InputListener();
    InputListener(const InputListener&) = delete;
    InputListener& operator=(const InputListener&) = delete;

    /** The events that are kept, the oldest first. Any thread. */
    std::vector<InputEvent> events() const;
    /** How many events have been received in all. Any thread. */
    uint64_t count() const;

  private:
    struct Peer {
        int socket;
        std::array<uint8_t, sizeof(InputEvent)> bytes;  ///< of the record being received
        size_t filled;                                  ///< how many of `bytes` are received
    };

    bool listen();
    void run();
    void accept();
    bool receive(Peer& peer);

    const std::string mPath;
    int mSocket = -1;         ///< listens; -1 when it cannot
    int mStop = -1;           ///< event descriptor, readable once the thread is to end
    bool mWarned = false;     ///< a failed accept has been logged; used by the thread only
    std::deque<Peer> mPeers;  ///< the oldest first; used by the thread only
    mutable std::mutex mMutex;
    std::deque<InputEvent> mEvents;  // guarded by mMutex
    uint64_t mCount = 0;             // guarded by mMutex
    std::thread mThread;
};

}  // namespace television
