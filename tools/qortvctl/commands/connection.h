/** Connections to the service. */
#pragma once

#include <chrono>

#include "qortv/connect.h"

namespace qortvctl {

/**
 * Connects an object of the client library, such as a qortv::Guide, to the service.
 *
 * @param timeout how long to wait for the service
 * @throws qortv::Error as qortv::connect()
 */
template <typename Client>
Client connectTo(std::chrono::milliseconds timeout) {
    return Client(qortv::connect<typename Client::Interface>(timeout));
}

}  // namespace qortvctl
