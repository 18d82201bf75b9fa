// What is registered in the runtime folder: for tools that list services.
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
    int threads = -1;       // threads of its pool that exist; -1: did not answer within a second
    int busyThreads = -1;   // those that serve a call at the moment
    int maxThreads = -1;    // most that it may have
    int clients = -1;       // processes that are connected to it
};

// All registered names in alphabetical order, stale ones included. Asks each process once and waits
// for none of them longer than a second. Any thread.
std::vector<ServiceInfo> listServices();

}  // namespace android::hardware
