/** Keeps a listener registered with the television, across deaths of the service. */
#pragma once

#include <chrono>
#include <memory>

#include "qortv/connect.h"
#include "qortv/listener.h"

namespace qortv {

/**
 * As long as it exists, its listener receives every notification. When the service dies, the
 * subscription notifies the listener, looks for the service with growing pauses (50 ms to 2 s) and
 * registers the listener again. Notifications of the time in between are lost.
 *
 * The service removes a callback only when the process of the callback dies. Therefore the
 * destructor ends the calls of the listener, but the service goes on sending notifications to this
 * process. Create one subscription and keep it, rather than many short-lived ones.
 */
class Subscription {
  public:
    /**
     * Registers `listener`, waiting up to `timeout` for the service to appear.
     *
     * @param listener the caller's; must outlive this object
     * @throws Error kNoService, kLost, kTransport
     */
    explicit Subscription(Listener& listener, std::chrono::milliseconds timeout = kConnectTimeout);

    /** Waits for a call of the listener that is running. Must not be called by the listener. */
    ~Subscription();

    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;

    /** Returns whether the listener is registered with a running service. Any thread. */
    bool connected() const;

  private:
    class Impl;
    std::unique_ptr<Impl> mImpl;
};

}  // namespace qortv
