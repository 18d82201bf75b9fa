/** The listener on the input socket: takes the key and pointer events that clients send in, as a
 * set's graphics layer does, and keeps the last ones. */
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace television {

/** One event: kind and values, in the order in which they are sent. */
using InputEvent = std::array<int32_t, 5>;

/**
 * Listens on a local stream socket for records of 20 bytes, host byte order. A connection carries
 * any number of them; what is left of a record when it ends is dropped. It acts on nothing. A peer
 * can send what it likes: at most `kMostPeers` are served at once, the one that waits longest makes
 * room for a new one, and none is waited for.
 */
class InputListener {
  public:
    static constexpr size_t kKept = 256;
    static constexpr size_t kMostPeers = 16;

    /** `path`: of the socket; one that an earlier run left there is removed. Where it cannot listen
     * the log says why, and nothing is received. */
    explicit InputListener(std::string path);
    /** Ends the thread and removes the socket. */
    ~InputListener();
    InputListener(const InputListener&) = delete;
    InputListener& operator=(const InputListener&) = delete;

    /** The last events, the oldest first. Any thread. */
    std::vector<InputEvent> events() const;
    /** How many have come in all. Any thread. */
    uint64_t count() const;

  private:
    struct Peer {
        int socket;
        std::array<uint8_t, sizeof(InputEvent)> bytes;  ///< of the record that is coming
        size_t filled;
    };

    bool listen();
    void run();
    void accept();
    bool receive(Peer& peer);

    const std::string mPath;
    int mSocket = -1;
    int mStop = -1;           ///< readable once the thread is to end
    bool mWarned = false;     ///< used by the thread only
    std::deque<Peer> mPeers;  ///< used by the thread only, the oldest first
    mutable std::mutex mMutex;
    std::deque<InputEvent> mEvents;  // guarded by mMutex
    uint64_t mCount = 0;             // guarded by mMutex
    std::thread mThread;
};

}  // namespace television
