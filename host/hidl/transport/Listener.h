// The socket on which this process accepts connections.
#pragma once

#include <deque>
#include <mutex>

#include <transport/ThreadPool.h>
#include <utils/StrongPointer.h>

namespace android::hardware::transport {

class Process;

// Accepts connections, waits for the greeting of each and then hands it to Process::welcome(). When
// the process runs out of descriptors it pauses: callers wait in the socket's queue, and the pool's
// threads do not spin. Lives as long as the process.
class Listener : public Pollable {
  public:
    // Takes over the socket, which must not block.
    Listener(Process* process, int socket);
    ~Listener() override;

    // Adds the listener to the thread pool. Returns false if the kernel refuses.
    bool start();

    void onReady() override;
    int fd() const override { return mSocket; }

  private:
    class Greeting;
    class Pause;

    // If there are too many connections without greeting, closes one that has been silent for too
    // long. Returns false if all of them may have sent one that this process has not read yet.
    bool makeRoom();
    // Takes over an accepted socket: closes it if the peer is not trusted, else waits for its
    // greeting.
    void awaitGreeting(int socket);
    void remove(const sp<Greeting>& greeting);

    Process* const mProcess;
    const int mSocket;
    sp<Pause> mPause;
    bool mOutOfDescriptors = false;  // since the last connection; logged once

    std::mutex mMutex;                    // guards mGreetings
    std::deque<sp<Greeting>> mGreetings;  // oldest first
};

}  // namespace android::hardware::transport
