// The services that are registered in the runtime folder, for tools that list them.
#pragma once

#include <string>
#include <vector>

namespace android::hardware {

// A registered name and the process behind it.
struct ServiceInfo {
    std::string interface;  // "package@1.0::IFoo"
    std::string instance;   // "default"
    int pid = -1;           // process that registered the name
    bool alive = false;     // whether that process still listens
    // What the process replies; -1 if it did not reply within a second.
    int threads = -1;      // threads of its pool
    int busyThreads = -1;  // those of them that serve a call at the moment
    int maxThreads = -1;   // most that its pool may have
    int clients = -1;      // processes that are connected to it
};

// Returns all registered names in alphabetical order, those of dead processes included. Asks each
// process once and waits at most a second for each. Any thread.
std::vector<ServiceInfo> listServices();

}  // namespace android::hardware
