/** Keeps a listener registered with the television, across deaths of the service. */
#pragma once

#include <chrono>
#include <memory>

#include "qortv/connect.h"
#include "qortv/listener.h"

namespace qortv {

/**
 * While it lives, the listener hears every notification. When the service dies the subscription
 * tells the listener, waits for the service with growing pauses (50 ms to 2 s) and registers again;
 * what the television said in between is lost.
 *
 * The service knows no way to forget a callback before the death of its process. So the last
 * notification ends here, not there: after the destructor the listener is never called again,
 * while the service goes on sending to this process until it ends. Make one subscription and keep
 * it, rather than many short ones.
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

    /** Waits for a call of the listener that is running. Not to be called from the listener. */
    ~Subscription();

    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;

    /** Whether the listener is registered with a living service. Any thread. */
    bool connected() const;

  private:
    class Impl;
    std::unique_ptr<Impl> mImpl;
};

}  // namespace qortv
